#include "ozValueData.h"

#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

#include "core/registry/ozRegValue.h"
#include "platform/ozAsciiCase.h"

bool ozValueIsNumber(unsigned long type)
{
    return type == RegDword || type == RegDwordBigEndian || type == RegQword;
}

bool ozValueTakesSecondDatum(const ozRegValue& value)
{
    int op = value.Op();
    return (op == OpAppend || op == OpCodeR || op == OpChange) &&
           (value.RIT() == RitR || value.RIT() == RitM);
}

namespace {

bool IsText(unsigned long type)
{
    return type == RegSz || type == RegExpandSz;
}

// The text form's masking of a string: "$" doubled, "~" as "$~".
std::string Masked(const std::string& text)
{
    std::string masked;
    for (char c : text) {
        if (c == '$' || c == '~')
            masked.push_back('$');
        masked.push_back(c);
    }
    return masked;
}

// The lines of text, split at "\r\n" or "\n".
std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::string line;
    for (char c : text) {
        if (c == '\n') {
            lines.push_back(line);
            line.clear();
        } else if (c != '\r') {
            line.push_back(c);
        }
    }
    lines.push_back(line);
    return lines;
}

std::string Trimmed(const std::string& text)
{
    const char* blanks = " \t\r\n";
    std::string::size_type first = text.find_first_not_of(blanks);
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// A whole number from 0 to max, decimal or hexadecimal after "0x".
bool ReadNumber(const std::string& text, std::uint64_t max, std::uint64_t& number)
{
    std::string digits = Trimmed(text);
    int base = 10;
    if (digits.size() > 2 && digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X')) {
        base = 16;
        digits.erase(0, 2);
    }
    if (digits.empty())
        return false;
    number = 0;
    for (char c : digits) {
        int digit = -1;
        if (c >= '0' && c <= '9')
            digit = c - '0';
        else if (base == 16 && ozAsciiLower(c) >= 'a' && ozAsciiLower(c) <= 'f')
            digit = ozAsciiLower(c) - 'a' + 10;
        if (digit < 0 || number > (max - static_cast<std::uint64_t>(digit)) / base)
            return false;
        number = number * base + static_cast<std::uint64_t>(digit);
    }
    return true;
}

std::string NumberText(std::uint64_t number, bool hex, int hexDigits)
{
    char text[32];
    if (hex)
        std::snprintf(text, sizeof text, "0x%0*llX", hexDigits,
                      static_cast<unsigned long long>(number));
    else
        std::snprintf(text, sizeof text, "%llu", static_cast<unsigned long long>(number));
    return text;
}

std::string HexBytes(const unsigned char* bytes, std::size_t count)
{
    std::string text;
    char byte[4];
    for (std::size_t i = 0; i < count; ++i) {
        std::snprintf(byte, sizeof byte, i == 0 ? "%02X" : " %02X", bytes[i]);
        text += byte;
    }
    return text;
}

// The editor's text in the value's text form for type; false with why when it does not fit.
bool FormText(unsigned long type, const std::string& text, std::string& form, std::string& why)
{
    if (IsText(type)) {
        // The terminator written out, so that a text ending in "~" keeps it.
        form = Masked(text) + "~";
        return true;
    }
    if (type == RegMultiSz) {
        std::vector<std::string> lines = Lines(text);
        while (!lines.empty() && lines.back().empty())
            lines.pop_back();
        form.clear();
        for (std::size_t line = 0; line < lines.size(); ++line) {
            if (lines[line].empty()) {
                why = "line " + std::to_string(line + 1) +
                      " is empty, and a multi-string ends at its first empty string";
                return false;
            }
            form += Masked(lines[line]) + "~";
        }
        form += "~";
        return true;
    }
    if (ozValueIsNumber(type)) {
        const bool wide = type == RegQword;
        std::uint64_t number = 0;
        if (!ReadNumber(text, wide ? UINT64_MAX : 0xFFFFFFFFu, number)) {
            why = "\"" + text + "\" is not a whole number from 0 to " +
                  (wide ? "18446744073709551615" : "4294967295") +
                  " (decimal, or hexadecimal after 0x)";
            return false;
        }
        if (!wide) {
            form = NumberText(number, true, 8);
            return true;
        }
        unsigned char bytes[8];
        for (unsigned char& byte : bytes) {
            byte = static_cast<unsigned char>(number & 0xFF);
            number >>= 8;
        }
        form = HexBytes(bytes, sizeof bytes);
        return true;
    }
    for (char c : text)
        if (!std::isxdigit(static_cast<unsigned char>(c)) && c != ' ' && c != ',' && c != '\t' &&
            c != '\r' && c != '\n') {
            why = "\"" + text + "\" is not hexadecimal bytes (pairs of the digits 0-9 and A-F)";
            return false;
        }
    form = text;
    return true;
}

const struct {
    unsigned long type;
    const char* name;
} TypeNames[] = {
    {RegSz, "REG_SZ"},
    {RegExpandSz, "REG_EXPAND_SZ"},
    {RegMultiSz, "REG_MULTI_SZ"},
    {RegDword, "REG_DWORD"},
    {RegQword, "REG_QWORD"},
    {RegBinary, "REG_BINARY"},
    {RegDwordBigEndian, "REG_DWORD_BIG_ENDIAN"},
    {RegNone, "REG_NONE"},
};

constexpr const char* OtherTypePrefix = "TYPE ";

}  // namespace

std::string ozValueTypeName(unsigned long type)
{
    for (const auto& known : TypeNames)
        if (known.type == type)
            return known.name;
    return OtherTypePrefix + std::to_string(type);
}

std::vector<unsigned long> ozNamedValueTypes()
{
    std::vector<unsigned long> types;
    for (const auto& known : TypeNames)
        types.push_back(known.type);
    return types;
}

bool ozValueTypeFromName(const std::string& name, unsigned long& type)
{
    std::string trimmed = Trimmed(name);
    for (const auto& known : TypeNames)
        if (ozAsciiSameIgnoringCase(trimmed, known.name)) {
            type = known.type;
            return true;
        }
    const std::string prefix = OtherTypePrefix;
    std::uint64_t number = 0;
    if (trimmed.size() <= prefix.size() ||
        !ozAsciiSameIgnoringCase(trimmed.substr(0, prefix.size()), prefix) ||
        !ReadNumber(trimmed.substr(prefix.size()), 0xFFFFFFFFu, number))
        return false;
    type = static_cast<unsigned long>(number);
    return true;
}

std::string ozValueDataText(const ozRegValue& value, bool second, bool hex)
{
    const unsigned char* bytes = second ? value.Data2() : value.Data();
    std::size_t size = bytes != nullptr ? (second ? value.Size2() : value.Size()) : 0;
    unsigned long type = value.Type();
    if (IsText(type) || type == RegMultiSz) {
        std::vector<std::string> strings;
        std::size_t start = 0;
        for (std::size_t at = 0; at <= size; ++at) {
            if (at < size && bytes[at] != 0)
                continue;
            if (at == start && (at == size || !strings.empty() || type == RegMultiSz))
                break;
            strings.emplace_back(reinterpret_cast<const char*>(bytes) + start, at - start);
            if (IsText(type))
                break;
            start = at + 1;
        }
        std::string text;
        for (std::size_t line = 0; line < strings.size(); ++line)
            text += (line > 0 ? "\r\n" : "") + strings[line];
        return text;
    }
    if (ozValueIsNumber(type)) {
        if (size == 0)
            return {};
        const bool wide = type == RegQword;
        std::uint64_t number = 0;
        if (wide) {
            for (std::size_t at = size < 8 ? size : 8; at > 0; --at)
                number = (number << 8) | bytes[at - 1];
        } else {
            std::uint32_t narrow = 0;
            std::memcpy(&narrow, bytes, size < 4 ? size : 4);
            number = narrow;
        }
        return NumberText(number, hex, wide ? 16 : 8);
    }
    return value.FormattedValue(second);
}

bool ozSetValueData(ozRegValue& value, unsigned long type, const std::string& text, bool second,
                    std::string& why)
{
    if (second && (!ozValueTakesSecondDatum(value) || type != value.Type())) {
        why = "the operation takes no old data for this value";
        return false;
    }
    std::string form;
    if (!FormText(type, text, form, why))
        return false;
    value.SetFormattedData(type, form.c_str(), second);
    return true;
}
