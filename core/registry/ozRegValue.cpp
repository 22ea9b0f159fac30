#include "ozRegValue.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <vector>

#include "core/tree/ozOwnedText.h"
#include "ozAppendedTextDialog.h"
#include "ozHexDigit.h"
#include "ozSubKey.h"
#include "ozVariableMarkers.h"

namespace {

constexpr char kZeroMark = '~';
constexpr char kMaskMark = '$';

bool IsStringType(unsigned long type)
{
    return type == RegSz || type == RegExpandSz || type == RegMultiSz;
}

bool IsNumberType(unsigned long type)
{
    return type == RegDword || type == RegDwordBigEndian;
}

// A buffer of at least one byte, so that an empty datum still has data; null when the memory
// cannot be had.
std::unique_ptr<unsigned char[]> AllocateDatum(unsigned long size)
{
    size_t length = size > 0 ? static_cast<size_t>(size) : 1;
    std::unique_ptr<unsigned char[]> bytes(new (std::nothrow) unsigned char[length]);
    if (bytes != nullptr)
        bytes[0] = 0;
    return bytes;
}

std::string FormatString(const unsigned char* bytes, unsigned long size)
{
    std::string text;
    text.reserve(static_cast<size_t>(size) + 1);
    for (unsigned long i = 0; i < size; ++i) {
        char c = static_cast<char>(bytes[i]);
        if (c == '\0') {
            text.push_back(kZeroMark);
            continue;
        }
        if (c == kMaskMark || c == kZeroMark)
            text.push_back(kMaskMark);
        text.push_back(c);
    }
    return text;
}

std::string FormatNumber(const unsigned char* bytes, unsigned long size)
{
    // Shorter data reads as a number whose missing bytes are zero; big-endian numbers are
    // shown as stored.
    std::uint32_t number = 0;
    std::memcpy(&number, bytes, size < sizeof number ? static_cast<size_t>(size) : sizeof number);
    char text[16];
    std::snprintf(text, sizeof text, "0x%08X", static_cast<unsigned int>(number));
    return text;
}

std::string FormatHexBytes(const unsigned char* bytes, unsigned long size)
{
    static const char kDigits[] = "0123456789ABCDEF";
    std::string text;
    text.reserve(static_cast<size_t>(size) * 3);
    for (unsigned long i = 0; i < size; ++i) {
        if (i > 0)
            text.push_back(' ');
        text.push_back(kDigits[bytes[i] >> 4]);
        text.push_back(kDigits[bytes[i] & 0x0F]);
    }
    return text;
}

// Reads "0x" followed by a hexadecimal number, else a decimal number, and keeps the low 32
// bits. The 64-bit conversions read alike whatever the width of long, and saturate rather
// than overflow.
bool ParseNumber(const char* text, std::uint32_t& number)
{
    char* end = nullptr;
    if (text[0] == '0' && text[1] == 'x') {
        const char* digits = text + 2;
        unsigned long long hex = std::strtoull(digits, &end, 16);
        if (end != digits) {
            number = static_cast<std::uint32_t>(hex);
            return true;
        }
    }
    long long decimal = std::strtoll(text, &end, 10);
    if (end == text)
        return false;
    number = static_cast<std::uint32_t>(static_cast<unsigned long long>(decimal));
    return true;
}

// Every run of hexadecimal digits gives one byte per two digits (a final single digit gives
// a byte of its own); everything else separates.
std::vector<unsigned char> ParseHexGroups(const char* text)
{
    std::vector<unsigned char> bytes;
    for (const char* p = text; *p != '\0';) {
        int high = ozHexDigitValue(*p++);
        if (high < 0)
            continue;
        int low = ozHexDigitValue(*p);
        if (low < 0) {
            bytes.push_back(static_cast<unsigned char>(high));
            continue;
        }
        ++p;
        bytes.push_back(static_cast<unsigned char>(high << 4 | low));
    }
    return bytes;
}

// Ends a string datum with a zero byte and, for a multi-string, with two.
void TerminateStringBytes(std::string& bytes, unsigned long type)
{
    if (bytes.empty() || bytes.back() != '\0')
        bytes.push_back('\0');
    if (type == RegMultiSz && (bytes.size() < 2 || bytes[bytes.size() - 2] != '\0'))
        bytes.push_back('\0');
}

// Whether position `at` of the old datum is where it ends: the terminator of a string, the
// second zero of a multi-string's closing pair, or past the last byte.
bool IsEndOfOldDatum(const unsigned char* old, unsigned long size, unsigned long at,
                     unsigned long type)
{
    if (at >= size)
        return true;
    if (old[at] != 0)
        return false;
    return type != RegMultiSz || (at > 0 && old[at - 1] == 0);
}

}  // namespace

ozRegValue::ozRegValue() : ozRegItem(ItemValue) {}

ozRegValue::ozRegValue(const ozRegValue& other)
    : ozRegItem(ItemValue),
      m_type(other.m_type),
      m_itemType(other.m_itemType),
      m_op(other.m_op),
      m_holdsVariable(other.m_holdsVariable),
      m_root(other.m_root),
      m_key(other.m_key),
      m_lineNumber(other.m_lineNumber)
{
    if (other.m_name != nullptr)
        m_name = ozCopyText(other.m_name.get());
    CopyDatum(m_data, other.m_data);
    CopyDatum(m_data2, other.m_data2);
}

ozRegValue& ozRegValue::operator=(const ozRegValue& other)
{
    if (this == &other)
        return *this;
    ozRegValue copy(other);
    ozSubKey* formerKey = m_key;
    m_type = copy.m_type;
    m_itemType = copy.m_itemType;
    m_name = std::move(copy.m_name);
    m_op = copy.m_op;
    m_holdsVariable = copy.m_holdsVariable;
    m_root = copy.m_root;
    m_key = copy.m_key;
    m_lineNumber = copy.m_lineNumber;
    m_data = std::move(copy.m_data);
    m_data2 = std::move(copy.m_data2);
    // The name may have changed under the key that holds this value.
    if (formerKey != nullptr)
        formerKey->_ValueRenamed();
    return *this;
}

ozRegValue::~ozRegValue() = default;

bool ozRegValue::StoreDatum(Datum& datum, unsigned long size, const unsigned char* data)
{
    std::unique_ptr<unsigned char[]> bytes = AllocateDatum(size);
    if (bytes == nullptr)
        return false;
    if (size > 0)
        std::memcpy(bytes.get(), data, static_cast<size_t>(size));
    // Assigned only now: data may point into the datum being replaced.
    datum.bytes = std::move(bytes);
    datum.size = size;
    return true;
}

void ozRegValue::CopyDatum(Datum& to, const Datum& from)
{
    to.size = from.size;
    to.bytes.reset();
    if (from.bytes == nullptr)
        return;
    size_t length = from.size > 0 ? static_cast<size_t>(from.size) : 1;
    to.bytes = std::make_unique<unsigned char[]>(length);
    std::memcpy(to.bytes.get(), from.bytes.get(), length);
}

void ozRegValue::MakeInsertLike()
{
    if (!IsInsert())
        m_op = OpInsert;
}

void ozRegValue::Type(unsigned long type)
{
    m_type = type;
}

unsigned long ozRegValue::Type() const
{
    return m_type;
}

void ozRegValue::RIT(tREGITEMTYPE itemType)
{
    m_itemType = itemType;
}

tREGITEMTYPE ozRegValue::RIT() const
{
    return m_itemType;
}

void ozRegValue::Name(const char* name)
{
    if (name == nullptr)
        return;
    m_name = ozCopyText(name);
    if (m_key != nullptr)
        m_key->_ValueRenamed();
    RefreshVariablesFlag(true, false);
}

const char* ozRegValue::Name() const
{
    return m_name.get();
}

void ozRegValue::Op(tOPVALUE op)
{
    m_op = op;
    if (op == OpChange && m_data2.size == 0)
        SetFormattedData(RegSz, "", true);
}

tOPVALUE ozRegValue::Op() const
{
    return m_op;
}

void ozRegValue::WVar(bool holdsVariable)
{
    m_holdsVariable = holdsVariable;
}

bool ozRegValue::WVar() const
{
    return m_holdsVariable;
}

void ozRegValue::Root(unsigned int root)
{
    m_root = root;
}

unsigned int ozRegValue::Root() const
{
    return m_root;
}

void ozRegValue::SubKey(ozSubKey* key)
{
    m_key = key;
    if (key != nullptr)
        m_root = key->Root();
}

ozSubKey* ozRegValue::SubKey() const
{
    return m_key;
}

void ozRegValue::LineNumber(unsigned long line)
{
    m_lineNumber = line;
}

unsigned long ozRegValue::LineNumber() const
{
    return m_lineNumber;
}

unsigned long ozRegValue::Size() const
{
    return m_data.size;
}

const unsigned char* ozRegValue::Data() const
{
    return m_data.bytes.get();
}

unsigned long ozRegValue::Size2() const
{
    return m_data2.size;
}

const unsigned char* ozRegValue::Data2() const
{
    return m_data2.bytes.get();
}

bool ozRegValue::SetDelete()
{
    bool stored = SetString("");
    m_op = OpDelete;
    return stored;
}

bool ozRegValue::SetString(const char* s)
{
    if (s == nullptr)
        return false;
    unsigned long size = static_cast<unsigned long>(std::strlen(s) + 1);
    if (!StoreDatum(m_data, size, reinterpret_cast<const unsigned char*>(s)))
        return false;
    m_type = RegSz;
    MakeInsertLike();
    RefreshVariablesFlag(true, false);
    return true;
}

bool ozRegValue::SetExpandString(const char* s)
{
    bool stored = SetString(s);
    if (stored) {
        m_type = RegExpandSz;
        RefreshVariablesFlag(true, false);
    }
    return stored;
}

bool ozRegValue::SetDWORD(unsigned long d)
{
    std::uint32_t number = static_cast<std::uint32_t>(d);
    unsigned char bytes[sizeof number];
    std::memcpy(bytes, &number, sizeof number);
    if (!StoreDatum(m_data, sizeof bytes, bytes))
        return false;
    m_type = RegDword;
    MakeInsertLike();
    return true;
}

bool ozRegValue::SetQWORD(std::uint64_t number)
{
    unsigned char bytes[sizeof number];
    std::memcpy(bytes, &number, sizeof number);
    if (!StoreDatum(m_data, sizeof bytes, bytes))
        return false;
    m_type = RegQword;
    MakeInsertLike();
    return true;
}

bool ozRegValue::SetMultiString(const std::vector<std::string>& lines)
{
    std::string bytes;
    for (const std::string& line : lines)
        if (!line.empty())
            bytes.append(line.c_str(), line.size() + 1);
    bytes.push_back('\0');
    if (!StoreDatum(m_data, static_cast<unsigned long>(bytes.size()),
                    reinterpret_cast<const unsigned char*>(bytes.data())))
        return false;
    m_type = RegMultiSz;
    MakeInsertLike();
    return true;
}

bool ozRegValue::SetData(unsigned long type, unsigned long size, const unsigned char* data)
{
    if (data == nullptr)
        return false;
    if (!StoreDatum(m_data, size, data))
        return false;
    m_type = type;
    return RefreshVariablesFlag(true, false);
}

bool ozRegValue::SetData2(unsigned long type, unsigned long size, const unsigned char* data)
{
    if (!_IsOp2() || type != m_type || data == nullptr)
        return false;
    if (m_itemType != RitR && m_itemType != RitM)
        return false;
    if (!StoreDatum(m_data2, size, data))
        return false;
    return RefreshVariablesFlag(true, false);
}

bool ozRegValue::IsDelete() const
{
    return m_op == OpDelete;
}

bool ozRegValue::IsInsert() const
{
    return m_op == OpInsert || m_op == OpChange;
}

bool ozRegValue::_IsOp2() const
{
    return m_op == OpAppend || m_op == OpCodeR || m_op == OpChange;
}

tNUMVALUE ozRegValue::GetNumValue(tREGITEMTYPE itemType, tOPVALUE op)
{
    if (itemType != RitR && itemType != RitM && itemType != RitF && itemType != RitA)
        return NumNone;
    switch (op) {
        case OpInsert:
        case OpDelete:
        case OpCodeL:
            return NumOne;
        case OpAppend:
        case OpCodeR:
            return NumTwo;
        case OpChange:
            return itemType == RitR || itemType == RitM ? NumTwo : NumNone;
    }
    return NumNone;
}

tNUMVALUE ozRegValue::GetNumValue(tOPVALUE op) const
{
    return GetNumValue(m_itemType, op == 0 ? m_op : op);
}

bool ozRegValue::SwitchChange2Append(bool ask)
{
    if (m_op != OpChange || m_data.bytes == nullptr || m_data2.bytes == nullptr)
        return false;
    if (!IsStringType(m_type))
        return false;

    // Drop the bytes of the new datum that match the old one in order; what is left is the
    // text that was added.
    const unsigned char* changed = m_data.bytes.get();
    const unsigned char* old = m_data2.bytes.get();
    std::string kept;
    unsigned long oldAt = 0;
    for (unsigned long i = 0; i < m_data.size; ++i) {
        if (!IsEndOfOldDatum(old, m_data2.size, oldAt, m_type) && changed[i] == old[oldAt]) {
            ++oldAt;
            continue;
        }
        kept.push_back(static_cast<char>(changed[i]));
    }
    TerminateStringBytes(kept, m_type);

    if (ask) {
        ozAppendedTextDialog* dialog = ozAppendedTextDialog::Current();
        if (dialog == nullptr)
            return false;
        std::string text = kept;
        while (!text.empty() && text.back() == '\0')
            text.pop_back();
        if (!dialog->Confirm(text))
            return false;
        kept = text;
        TerminateStringBytes(kept, m_type);
    }

    m_op = OpAppend;
    return SetData(m_type, static_cast<unsigned long>(kept.size()),
                   reinterpret_cast<const unsigned char*>(kept.data()));
}

char* ozRegValue::FormatValue(bool second) const
{
    const Datum& datum = second ? m_data2 : m_data;
    std::string text;
    if (datum.bytes != nullptr && datum.size > 0) {
        if (IsStringType(m_type))
            text = FormatString(datum.bytes.get(), datum.size);
        else if (IsNumberType(m_type))
            text = FormatNumber(datum.bytes.get(), datum.size);
        else
            text = FormatHexBytes(datum.bytes.get(), datum.size);
    }
    char* result = new char[text.size() + 1];
    std::memcpy(result, text.c_str(), text.size() + 1);
    return result;
}

std::string ozRegValue::FormattedValue(bool second) const
{
    std::unique_ptr<char[]> text(FormatValue(second));
    return text.get();
}

std::string ozRegValue::DataText() const
{
    const char* text = reinterpret_cast<const char*>(m_data.bytes.get());
    if (text == nullptr)
        return std::string();
    const void* terminator = std::memchr(text, 0, m_data.size);
    size_t length = terminator != nullptr ? static_cast<const char*>(terminator) - text
                                          : static_cast<size_t>(m_data.size);
    return std::string(text, length);
}

bool ozRegValue::SetFormattedData(unsigned long type, const char* text, bool second)
{
    if (text == nullptr)
        return true;
    auto store = [&](unsigned long size, const unsigned char* bytes) {
        if (second)
            SetData2(type, size, bytes);
        else
            SetData(type, size, bytes);
    };
    size_t length = std::strlen(text);

    if (type == RegSz || type == RegExpandSz) {
        // A final "~" is the terminator the text form shows.
        size_t size = length > 0 && text[length - 1] == kZeroMark ? length : length + 1;
        std::vector<char> buffer(text, text + length + 1);
        size -= static_cast<size_t>(_RemoveMasking(buffer.data()));
        store(static_cast<unsigned long>(size), reinterpret_cast<unsigned char*>(buffer.data()));
    } else if (IsNumberType(type)) {
        std::uint32_t number = 0;
        if (!ParseNumber(text, number))
            return true;
        unsigned char bytes[sizeof number];
        std::memcpy(bytes, &number, sizeof number);
        store(sizeof bytes, bytes);
    } else if (type == RegMultiSz) {
        // The datum ends in the two zero bytes of a closing "~~", which the text may show in
        // full, in half or not at all.
        size_t size = length;
        if (length == 0 || text[length - 1] != kZeroMark)
            size += 2;
        else if (length == 1 || text[length - 2] != kZeroMark)
            size += 1;
        size_t copied = size - 2;  // never more than length
        std::vector<char> buffer(size + 1, '\0');
        std::memcpy(buffer.data(), text, copied);
        size -= static_cast<size_t>(_RemoveMasking(buffer.data()));
        buffer[size - 2] = '\0';
        buffer[size - 1] = '\0';
        store(static_cast<unsigned long>(size), reinterpret_cast<unsigned char*>(buffer.data()));
    } else {
        std::vector<unsigned char> bytes = ParseHexGroups(text);
        unsigned char none = 0;
        store(static_cast<unsigned long>(bytes.size()), bytes.empty() ? &none : bytes.data());
    }
    return true;
}

int ozRegValue::_RemoveMasking(char* s) const
{
    if (s == nullptr)
        return 0;
    int removed = 0;
    char* out = s;
    for (const char* in = s; *in != '\0'; ++in) {
        if (*in == kMaskMark && (in[1] == kMaskMark || in[1] == kZeroMark)) {
            *out++ = *++in;
            ++removed;
        } else {
            *out++ = *in == kZeroMark ? '\0' : *in;
        }
    }
    *out = '\0';
    return removed;
}

bool ozRegValue::HasVariables(const char* text)
{
    if (text == nullptr || !ozVariableMarkers::AreSet())
        return false;
    const char* start = std::strstr(text, ozVariableMarkers::Start());
    if (start == nullptr)
        return false;
    return std::strstr(start + std::strlen(ozVariableMarkers::Start()), ozVariableMarkers::End()) !=
           nullptr;
}

bool ozRegValue::RefreshVariablesFlag(bool full, bool parentHasVariables)
{
    if (!ozVariableMarkers::AreSet())
        return true;
    if (!full && parentHasVariables) {
        m_holdsVariable = true;
        return true;
    }
    bool holdsVariable = false;
    if (full && m_key != nullptr)
        holdsVariable = HasVariables(m_key->KeyPath().c_str());
    if (!holdsVariable)
        holdsVariable = HasVariables(m_name.get());
    if (!holdsVariable && IsStringType(m_type)) {
        holdsVariable = HasVariables(FormattedValue(false).c_str()) ||
                        (_IsOp2() && HasVariables(FormattedValue(true).c_str()));
    }
    m_holdsVariable = holdsVariable;
    return true;
}

std::vector<std::string> ozRegValue::MultiStringLines() const
{
    std::vector<std::string> lines;
    const char* at = reinterpret_cast<const char*>(Data());
    const char* end = at + (at != nullptr ? Size() : 0);
    while (at < end && *at != '\0') {
        const char* stop = static_cast<const char*>(std::memchr(at, '\0', end - at));
        if (stop == nullptr)
            stop = end;
        lines.emplace_back(at, stop);
        at = stop + 1;
    }
    return lines;
}
