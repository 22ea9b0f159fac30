#include "ozEditorFields.h"

#include <cstdlib>

#include "control/CADMCtrl.h"
#include "control/ozApplication.h"
#include "ozElementEditors.h"

bool ozParseWholeNumber(const std::string& text, unsigned long& number)
{
    // Ten digits at most, so that the value below cannot overflow before it is compared.
    if (text.empty() || text.size() > 10 ||
        text.find_first_not_of("0123456789") != std::string::npos)
        return false;
    unsigned long long value = std::strtoull(text.c_str(), nullptr, 10);
    if (value > 4294967295ULL)
        return false;
    number = static_cast<unsigned long>(value);
    return true;
}

bool ozWellFormedKeyPath(const std::string& path)
{
    return !path.empty() && path.front() != '\\' && path.back() != '\\' &&
           path.find("\\\\") == std::string::npos;
}

std::string ozEditorMessageText(const ozEditorContext& context, unsigned short number)
{
    return context.control != nullptr ? context.control->GetString(number)
                                      : ozApplication::Instance().MessageText(number);
}
