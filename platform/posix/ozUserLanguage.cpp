#include "platform/ozUserLanguage.h"

#include <cstdlib>

std::string ozUserInterfaceLanguage()
{
    const char* locale = nullptr;
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        locale = std::getenv(variable);
        if (locale != nullptr && *locale != '\0')
            break;
    }
    if (locale == nullptr)
        return {};
    // language[_territory][.codeset][@modifier]
    std::string tag(locale);
    tag = tag.substr(0, tag.find_first_of(".@"));
    if (tag == "C" || tag == "POSIX")
        return {};
    if (std::string::size_type underscore = tag.find('_'); underscore != std::string::npos)
        tag[underscore] = '-';
    return tag;
}
