#include "ozRegFileFormat.h"

#include <cstdint>
#include <cstdio>
#include <cstring>

#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "ozRegRootNames.h"

namespace {

// Hex lists are wrapped before this column, as the files' usual writers do.
constexpr size_t HexLineLimit = 76;

void AppendAscii(ozWideString& out, const char* text)
{
    out += ozRegAscii(text);
}

void AppendQuoted(ozWideString& out, const ozWideString& text)
{
    out.push_back('"');
    for (WCHAR c : text) {
        if (c == '\\' || c == '"')
            out.push_back('\\');
        out.push_back(c);
    }
    out.push_back('"');
}

bool HoldsLineBreak(const ozWideString& text)
{
    return text.find_first_of(ozRegAscii("\r\n")) != ozWideString::npos;
}

// A string the quoted form can carry: one terminator at the end, no other zero byte, and
// no line break (which readers of the quoted form do not all keep).
bool IsPlainString(const ozRegValue& value)
{
    const unsigned char* data = value.Data();
    unsigned long size = value.Size();
    if (data == nullptr || size == 0 || data[size - 1] != 0)
        return false;
    for (unsigned long at = 0; at + 1 < size; ++at)
        if (data[at] == 0 || data[at] == '\r' || data[at] == '\n')
            return false;
    return true;
}

void AppendHexList(ozWideString& out, size_t lineStart, const std::string& bytes)
{
    static const char digits[] = "0123456789abcdef";
    for (size_t at = 0; at < bytes.size(); ++at) {
        if (at > 0 && out.size() - lineStart + 3 > HexLineLimit) {
            AppendAscii(out, "\\\r\n  ");
            lineStart = out.size() - 2;
        }
        auto byte = static_cast<unsigned char>(bytes[at]);
        out.push_back(static_cast<WCHAR>(digits[byte >> 4]));
        out.push_back(static_cast<WCHAR>(digits[byte & 0xF]));
        if (at + 1 < bytes.size())
            out.push_back(',');
    }
}

std::string TypePrefix(unsigned long type)
{
    if (type == RegBinary)
        return "hex:";
    char prefix[32];
    std::snprintf(prefix, sizeof prefix, "hex(%lx):", type);
    return prefix;
}

// The data of an insert: quoted string, dword or hex list.
void AppendData(ozWideString& out, size_t lineStart, const ozRegValue& value)
{
    const unsigned char* data = value.Data();
    unsigned long size = data != nullptr ? value.Size() : 0;
    unsigned long type = value.Type();
    if (type == RegSz && IsPlainString(value)) {
        AppendQuoted(out, ozRegWideFromModel(reinterpret_cast<const char*>(data), size - 1));
        return;
    }
    if (type == RegDword && size == 4) {
        std::uint32_t number;
        std::memcpy(&number, data, sizeof number);
        char text[20];
        std::snprintf(text, sizeof text, "dword:%08x", static_cast<unsigned>(number));
        AppendAscii(out, text);
        return;
    }
    std::string bytes(reinterpret_cast<const char*>(data), size);
    if (type == RegSz || type == RegExpandSz || type == RegMultiSz) {
        // Text types hold narrow text in the model and UTF-16LE in the file.
        bytes = ozRegUtf16Bytes(ozRegWideFromModel(bytes.data(), bytes.size()));
    }
    AppendAscii(out, TypePrefix(type).c_str());
    AppendHexList(out, lineStart, bytes);
}

ozStatus AppendValue(ozWideString& out, const ozRegValue& value, const std::string& keyName)
{
    const char* name = value.Name() != nullptr ? value.Name() : "";
    size_t lineStart = out.size();
    if (*name == '\0')
        out.push_back('@');
    else
        AppendQuoted(out, ozRegWideFromModel(name, std::strlen(name)));
    out.push_back('=');
    switch (value.Op()) {
        case OpDelete:
            out.push_back('-');
            break;
        case OpInsert:
        case OpChange:  // written as what the change leaves: its new datum
            AppendData(out, lineStart, value);
            break;
        default:
            return ozStatus::Error(keyName + ": the value \"" + name + "\" has the operation '" +
                                   static_cast<char>(value.Op()) +
                                   "', which a .reg file cannot hold");
    }
    AppendAscii(out, "\r\n");
    return ozStatus::Ok();
}

}  // namespace

ozStatus ozRegFormatKey(ozSubKey& key, ozWideString& out)
{
    const CCollection<ozRegValue>& values = key.Values();
    // A key that is merely there (along a path, or bound to a template) is not written: a
    // section without values stands for a key saved without values.
    if (key.Op() != KeyOpEraseValues && !key.Save() && values.Count() == 0)
        return ozStatus::Ok();
    std::string rootName = ozRegRootName(key.Root());
    std::string path = key.KeyPath();
    std::string keyName = (rootName.empty() ? "root " + std::to_string(key.Root()) : rootName) +
                          "\\" + (path.empty() ? std::string(key.Name() ? key.Name() : "") : path);
    if (rootName.empty())
        return ozStatus::Error(keyName +
                               ": a .reg file cannot name the predefined key of this key");
    if (path.empty())
        return ozStatus::Error(keyName + ": the key path does not fit " +
                               std::to_string(ozSubKey::KeyPathCapacity - 1) + " bytes");
    ozWideString section = ozRegAscii(rootName.c_str());
    section.push_back('\\');
    section += ozRegWideFromModel(path.data(), path.size());
    if (HoldsLineBreak(section))
        return ozStatus::Error(keyName +
                               ": a key name holds a line break, which a key section cannot");

    ozWideString text;
    if (key.Op() == KeyOpEraseValues) {
        AppendAscii(text, "[-");
        text += section;
        AppendAscii(text, "]\r\n\r\n");
        if (values.Count() == 0) {
            out += text;
            return ozStatus::Ok();
        }
    }
    text.push_back('[');
    text += section;
    AppendAscii(text, "]\r\n");
    for (int at = 0; at < values.Count(); ++at) {
        if (ozStatus appended = AppendValue(text, *values.At(at), keyName); !appended)
            return appended;
    }
    AppendAscii(text, "\r\n");
    out += text;
    return ozStatus::Ok();
}
