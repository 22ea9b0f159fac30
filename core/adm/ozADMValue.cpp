#include "ozADMValue.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "core/registry/ozRegValue.h"
#include "core/tree/ozOwnedText.h"
#include "ozADMRegEntry.h"
#include "ozADMTree.h"

namespace {

// Only what a profile or a policy inserts or deletes ('r' and 'm' items) can already hold an
// ADM value; the other item types stand for operations a template never writes.
bool IsComparableItemType(tREGITEMTYPE itemType)
{
    return itemType == RitR || itemType == RitM;
}

}  // namespace

ozADMValue::ozADMValue(const ozADMValue& other)
    : m_kind(other.m_kind),
      m_number(other.m_number),
      m_string(ozCopyText(other.m_string.get())),
      m_lines(other.m_lines)
{
}

ozADMValue::~ozADMValue()
{
    _Clear();
}

unsigned int ozADMValue::Type() const
{
    return m_kind;
}

bool ozADMValue::SetInit()
{
    _Clear();
    return true;
}

bool ozADMValue::SetDelete()
{
    _Clear();
    m_kind = ValueDelete;
    return true;
}

bool ozADMValue::SetNumeric(unsigned long number)
{
    _Clear();
    m_kind = ValueNumeric;
    m_number = number;
    return true;
}

bool ozADMValue::SetString(const char* s)
{
    // Copied before clearing, so that a value can be set from its own string.
    std::unique_ptr<char[]> copy = ozCopyText(s);
    _Clear();
    m_kind = ValueString;
    m_string = std::move(copy);
    return true;
}

bool ozADMValue::SetQword(std::uint64_t number)
{
    _Clear();
    m_kind = ValueQword;
    m_number = number;
    return true;
}

bool ozADMValue::SetMultiString(const std::vector<std::string>& lines)
{
    std::vector<std::string> kept;
    for (const std::string& line : lines)
        if (!line.empty())
            kept.push_back(line);
    _Clear();
    m_kind = ValueMultiString;
    m_lines = std::move(kept);
    return true;
}

std::uint64_t ozADMValue::Qword() const
{
    return m_kind == ValueNumeric || m_kind == ValueQword ? m_number : 0;
}

const std::vector<std::string>& ozADMValue::Lines() const
{
    return m_lines;
}

ozADMValue::operator unsigned long() const
{
    switch (m_kind) {
        case ValueNumeric:
        case ValueQword:
            return static_cast<unsigned long>(m_number);
        case ValueString:
            // atol's reading; strtol gives the same number and clamps where atol's overflow
            // would be undefined.
            return m_string == nullptr
                       ? 0
                       : static_cast<unsigned long>(std::strtol(m_string.get(), nullptr, 10));
        default:
            return 0;
    }
}

ozADMValue::operator const char*() const
{
    return m_kind == ValueString ? m_string.get() : nullptr;
}

bool ozADMValue::IsEqualWith(ozRegValue& value) const
{
    if (!IsComparableItemType(value.RIT()))
        return false;
    if (!value.IsInsert() && !value.IsDelete())
        return false;
    switch (m_kind) {
        case ValueDelete:
            return value.Op() == OpDelete;
        case ValueNumeric: {
            if (!value.IsInsert() || value.Type() != RegDword)
                return false;
            // A number datum shorter than its 32-bit word cannot hold the number.
            if (value.Data() == nullptr || value.Size() < sizeof(std::uint32_t))
                return false;
            std::uint32_t word;
            std::memcpy(&word, value.Data(), sizeof word);
            return word == m_number;
        }
        case ValueQword: {
            if (!value.IsInsert() || value.Type() != RegQword)
                return false;
            if (value.Data() == nullptr || value.Size() < sizeof(std::uint64_t))
                return false;
            std::uint64_t number;
            std::memcpy(&number, value.Data(), sizeof number);
            return number == m_number;
        }
        case ValueMultiString:
            return value.IsInsert() && value.Type() == RegMultiSz &&
                   value.MultiStringLines() == m_lines;
        case ValueString: {
            if (!value.IsInsert() || m_string == nullptr)
                return false;
            if (value.Type() != RegSz && value.Type() != RegExpandSz)
                return false;
            // Equal through the terminator; a datum too short for it cannot match, and is not
            // read beyond its size.
            size_t size = std::strlen(m_string.get()) + 1;
            return value.Data() != nullptr && value.Size() >= size &&
                   std::memcmp(value.Data(), m_string.get(), size) == 0;
        }
        default:
            return false;
    }
}

bool ozADMValue::SaveToRegistry(ozRegValue& value) const
{
    switch (m_kind) {
        case ValueDelete:
            return value.SetDelete();
        case ValueNumeric:
            return value.SetDWORD(m_number);
        case ValueString:
            // Always a plain string: the parts that want an expandable one write it themselves.
            return value.SetString(m_string.get());
        case ValueQword:
            return value.SetQWORD(m_number);
        case ValueMultiString:
            return value.SetMultiString(m_lines);
        default:
            return false;
    }
}

bool ozADMValue::SaveADM(FILE* file, ozADMTree& tree) const
{
    if (file == nullptr)
        return false;
    switch (m_kind) {
        case ValueDelete:
            return std::fprintf(file, "DELETE") >= 0;
        case ValueNumeric:
            return std::fprintf(file, "%s %lu", "NUMERIC", static_cast<unsigned long>(m_number)) >=
                   0;
        case ValueString:
            return tree.WriteString(file, m_string.get());
        case ValueQword:
            tree.ReportConversionLoss("the 64-bit number " + std::to_string(m_number) +
                                      " is written as a 32-bit NUMERIC (REG_DWORD)");
            return std::fprintf(file, "%s %lu", "NUMERIC",
                                static_cast<unsigned long>(static_cast<std::uint32_t>(m_number))) >=
                   0;
        case ValueMultiString: {
            tree.ReportConversionLoss(
                "a list of strings (REG_MULTI_SZ) is written as one string (REG_SZ)");
            std::string joined;
            for (const std::string& line : m_lines)
                joined += (joined.empty() ? "" : " ") + line;
            return tree.WriteString(file, joined.c_str());
        }
        default:
            return false;
    }
}

ozADMValue& ozADMValue::operator=(const ozADMValue& other)
{
    if (this == &other)
        return *this;
    _Clear();
    m_kind = other.m_kind;
    m_number = other.m_number;
    if (m_kind == ValueString)
        m_string = ozCopyText(other.m_string.get());
    m_lines = other.m_lines;
    return *this;
}

bool ozADMValue::SaveToCollection(unsigned int root, const char* key, const char* valueName,
                                  CCollection<ozADMRegEntry>& collection, bool expand) const
{
    if (key == nullptr || valueName == nullptr)
        return false;
    auto entry = std::make_unique<ozADMRegEntry>();
    entry->Root(root);
    entry->Key(key);
    entry->Valuename(valueName);
    entry->Expand(expand);
    entry->Value() = *this;
    return collection.Add(entry.release());
}

void ozADMValue::_Clear()
{
    m_string.reset();
    m_lines.clear();
    m_number = 0;
    m_kind = ValueEmpty;
}
