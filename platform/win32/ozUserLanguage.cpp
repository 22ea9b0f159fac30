#include "platform/ozUserLanguage.h"

#include <windows.h>

std::string ozUserInterfaceLanguage()
{
    wchar_t name[LOCALE_NAME_MAX_LENGTH] = {};
    if (LCIDToLocaleName(MAKELCID(GetUserDefaultUILanguage(), SORT_DEFAULT), name,
                         LOCALE_NAME_MAX_LENGTH, 0) == 0 &&
        GetUserDefaultLocaleName(name, LOCALE_NAME_MAX_LENGTH) == 0)
        return {};
    // Locale names are ASCII ("de-DE").
    std::string tag;
    for (const wchar_t* at = name; *at != L'\0'; ++at)
        tag += static_cast<char>(*at);
    return tag;
}
