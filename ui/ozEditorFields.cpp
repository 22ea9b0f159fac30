#include "ozEditorFields.h"

#include <cstdlib>

#include "control/CADMCtrl.h"
#include "control/ozApplication.h"
#include "core/adm/ozADMValue.h"
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

// The kind lists: "None" (only where a value may be left out), then the kinds a value has.
std::vector<std::string> ozValueKindRows(bool withNone)
{
    std::vector<std::string> rows = {"Numeric", "String", "Delete"};
    if (withNone)
        rows.insert(rows.begin(), "None");
    return rows;
}

int ozValueKindRow(const ozADMValue& value, bool withNone)
{
    int offset = withNone ? 1 : 0;
    switch (value.Type()) {
        case ozADMValue::ValueNumeric:
        case ozADMValue::ValueQword:
            return offset;
        case ozADMValue::ValueString:
            return offset + 1;
        case ozADMValue::ValueDelete:
            return offset + 2;
        default:
            return withNone ? 0 : 1;
    }
}

std::string ozValueKindText(const ozADMValue& value)
{
    if (value.Type() == ozADMValue::ValueNumeric || value.Type() == ozADMValue::ValueQword)
        return std::to_string(value.Qword());
    return value.Type() == ozADMValue::ValueString
               ? std::string(static_cast<const char*>(value) != nullptr
                                 ? static_cast<const char*>(value)
                                 : "")
               : "";
}

void ozStoreValueKind(ozADMValue& value, int row, bool withNone, const std::string& text)
{
    switch (row - (withNone ? 1 : 0)) {
        case 0:
            if (value.Type() == ozADMValue::ValueQword)
                value.SetQword(std::strtoull(text.c_str(), nullptr, 10));
            else
                value.SetNumeric(
                    static_cast<unsigned long>(std::strtoul(text.c_str(), nullptr, 10)));
            break;
        case 1:
            value.SetString(text.c_str());
            break;
        case 2:
            value.SetDelete();
            break;
        default:
            value.SetInit();
            break;
    }
}
