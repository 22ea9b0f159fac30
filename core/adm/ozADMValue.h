// A value written in a template (after VALUE, VALUEON, VALUEOFF, in an ITEMLIST or an
// ACTIONLIST): nothing yet, a deletion, a number or a string; from XML templates also a 64-bit
// number (REG_QWORD) and, from a multi-line text part, a list of strings (REG_MULTI_SZ). It
// compares itself with and writes itself into registry values, and lists itself as a registry
// entry.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "core/tree/CCollection.h"

class ozADMRegEntry;
class ozADMTree;
class ozRegValue;

class ozADMValue {
public:
    enum Kind : unsigned int {
        ValueEmpty = 0,
        ValueDelete = 1,
        ValueNumeric = 2,
        ValueString = 3,
        ValueQword = 4,        // a 64-bit number, written as REG_QWORD
        ValueMultiString = 5,  // strings written as one REG_MULTI_SZ
    };

    ozADMValue() = default;
    ozADMValue(const ozADMValue& other);
    virtual ~ozADMValue();

    virtual unsigned int Type() const;
    // Each setter clears the value first; all return true.
    virtual bool SetInit();
    virtual bool SetDelete();
    virtual bool SetNumeric(unsigned long number);
    // Keeps a copy of s (null is kept as a string value without text).
    virtual bool SetString(const char* s);
    bool SetQword(std::uint64_t number);
    // Keeps a copy of the lines; a REG_MULTI_SZ cannot hold an empty string, so empty lines
    // are left out.
    bool SetMultiString(const std::vector<std::string>& lines);
    // The number of a number of either width; 0 for other kinds.
    std::uint64_t Qword() const;
    // The lines of a multi-string value; empty for other kinds.
    const std::vector<std::string>& Lines() const;
    // The number (a 64-bit one cut to unsigned long); for a string its decimal reading (atol,
    // 0 for none); 0 for other kinds.
    virtual operator unsigned long() const;
    // The string of a string value (null if none); null for every other kind.
    virtual operator const char*() const;
    // Whether the registry value already holds what this value would write: only inserts and
    // deletions of item type 'r' or 'm' can match; a deletion matches operation 'D', a number
    // a REG_DWORD insert with that number, a string a REG_SZ or REG_EXPAND_SZ insert with the
    // same bytes (case-sensitive), a 64-bit number a REG_QWORD insert with that number, a
    // multi-string a REG_MULTI_SZ insert with the same strings.
    virtual bool IsEqualWith(ozRegValue& value) const;
    // Writes this value into the registry value (SetDelete, SetDWORD, SetString, SetQWORD or
    // SetMultiString) and returns that result; an empty value writes nothing and returns false.
    virtual bool SaveToRegistry(ozRegValue& value) const;
    // Writes the value's template text without line end: DELETE, NUMERIC n, or the string
    // through the tree's WriteString. The template language has no 64-bit number and no
    // multi-string: a 64-bit number is written as NUMERIC with its lower 32 bits, lines as one
    // string joined by blanks, each reported to the tree as a conversion loss. False for a
    // null stream, an empty value or a failed write.
    virtual bool SaveADM(FILE* file, ozADMTree& tree) const;
    virtual ozADMValue& operator=(const ozADMValue& other);
    // Appends a new registry entry (root number, key path, value name, this value, expand
    // flag) to the collection, which takes it. False, adding nothing, for a null key or name.
    virtual bool SaveToCollection(unsigned int root, const char* key, const char* valueName,
                                  CCollection<ozADMRegEntry>& collection, bool expand) const;

protected:
    // Frees the string and makes the value empty.
    void _Clear();

private:
    Kind m_kind = ValueEmpty;
    std::uint64_t m_number = 0;
    std::unique_ptr<char[]> m_string;
    std::vector<std::string> m_lines;
};
