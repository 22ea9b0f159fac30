#include "ozOZPText.h"

#include <cstdio>
#include <cstring>

#include "core/registry/ozHexDigit.h"

namespace {

const char* const RootNames[] = {
    "HKEY_CLASSES_ROOT",     "HKEY_CURRENT_USER",   "HKEY_LOCAL_MACHINE", "HKEY_USERS",
    "HKEY_PERFORMANCE_DATA", "HKEY_CURRENT_CONFIG", "HKEY_DYN_DATA",
};
constexpr unsigned RootNameCount = sizeof RootNames / sizeof RootNames[0];

// Two hexadecimal digits at text[pos]; -1 when there are none.
int HexByte(const std::string& text, size_t pos)
{
    if (pos + 1 >= text.size())
        return -1;
    int high = ozHexDigitValue(text[pos]), low = ozHexDigitValue(text[pos + 1]);
    return high < 0 || low < 0 ? -1 : high * 16 + low;
}

}  // namespace

std::string ozOZPRootName(unsigned int root)
{
    return root < RootNameCount ? RootNames[root] : "ROOT" + std::to_string(root);
}

std::optional<unsigned int> ozOZPRootNumber(const std::string& name)
{
    for (unsigned root = 0; root < RootNameCount; ++root)
        if (name == RootNames[root])
            return root;
    if (name.size() > 4 && name.compare(0, 4, "ROOT") == 0 && name.size() <= 14 &&
        name.find_first_not_of("0123456789", 4) == std::string::npos)
        return static_cast<unsigned int>(std::stoul(name.substr(4)));
    return std::nullopt;
}

std::string ozOZPQuote(const std::string& text)
{
    std::string quoted = "\"";
    for (unsigned char c : text) {
        switch (c) {
            case '\\':
                quoted += "\\\\";
                break;
            case '"':
                quoted += "\\\"";
                break;
            case '\n':
                quoted += "\\n";
                break;
            case '\r':
                quoted += "\\r";
                break;
            case '\t':
                quoted += "\\t";
                break;
            default:
                if (c < 0x20 || c == 0x7F) {
                    char escape[5];
                    std::snprintf(escape, sizeof escape, "\\x%02X", c);
                    quoted += escape;
                } else {
                    quoted += static_cast<char>(c);
                }
        }
    }
    return quoted + "\"";
}

std::optional<std::string> ozOZPUnquote(const std::string& line, size_t& pos)
{
    if (pos >= line.size() || line[pos] != '"')
        return std::nullopt;
    std::string text;
    for (size_t at = pos + 1; at < line.size(); ++at) {
        char c = line[at];
        if (c == '"') {
            pos = at + 1;
            return text;
        }
        if (c != '\\') {
            text += c;
            continue;
        }
        if (++at >= line.size())
            return std::nullopt;
        switch (line[at]) {
            case '\\':
                text += '\\';
                break;
            case '"':
                text += '"';
                break;
            case 'n':
                text += '\n';
                break;
            case 'r':
                text += '\r';
                break;
            case 't':
                text += '\t';
                break;
            case 'x': {
                int byte = HexByte(line, at + 1);
                if (byte < 0)
                    return std::nullopt;
                text += static_cast<char>(byte);
                at += 2;
                break;
            }
            default:
                return std::nullopt;
        }
    }
    return std::nullopt;
}

std::string ozOZPFormatDatum(const unsigned char* data, unsigned long size, unsigned long type)
{
    if (data == nullptr)
        return "none";
    if (type == 4 && size == 4) {
        char number[20];
        std::snprintf(number, sizeof number, "dword:%02X%02X%02X%02X", data[3], data[2], data[1],
                      data[0]);
        return number;
    }
    if (size > 0 && data[size - 1] == 0 && std::memchr(data, 0, size - 1) == nullptr)
        return ozOZPQuote(std::string(reinterpret_cast<const char*>(data), size - 1));
    std::string hex = "hex:";
    for (unsigned long at = 0; at < size; ++at) {
        char byte[4];
        std::snprintf(byte, sizeof byte, at == 0 ? "%02X" : ",%02X", data[at]);
        hex += byte;
    }
    return hex;
}

std::optional<std::vector<unsigned char>> ozOZPParseDatum(const std::string& line, size_t& pos,
                                                          bool* present)
{
    *present = true;
    if (line.compare(pos, 4, "none") == 0) {
        *present = false;
        pos += 4;
        return std::vector<unsigned char>();
    }
    if (pos < line.size() && line[pos] == '"') {
        std::optional<std::string> text = ozOZPUnquote(line, pos);
        if (!text)
            return std::nullopt;
        std::vector<unsigned char> bytes(text->begin(), text->end());
        bytes.push_back(0);
        return bytes;
    }
    if (line.compare(pos, 6, "dword:") == 0) {
        std::vector<unsigned char> bytes(4);
        for (int at = 0; at < 4; ++at) {
            int byte = HexByte(line, pos + 6 + 2 * at);
            if (byte < 0)
                return std::nullopt;
            bytes[3 - at] = static_cast<unsigned char>(byte);
        }
        pos += 14;
        return bytes;
    }
    if (line.compare(pos, 4, "hex:") != 0)
        return std::nullopt;
    pos += 4;
    std::vector<unsigned char> bytes;
    while (pos < line.size() && line[pos] != ' ') {
        if (!bytes.empty()) {
            if (line[pos] != ',')
                return std::nullopt;
            ++pos;
        }
        int byte = HexByte(line, pos);
        if (byte < 0)
            return std::nullopt;
        bytes.push_back(static_cast<unsigned char>(byte));
        pos += 2;
    }
    return bytes;
}
