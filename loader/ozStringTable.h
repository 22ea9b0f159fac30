// The [strings] table of the templates loaded into one control: string names (upper-cased) and
// their texts, as a template's [strings] section defines them. A name defined twice, in one
// template or in two loaded one after the other, keeps its first text. Names are hashed into
// a table that grows with them, so filing and finding a name take constant time on average
// however long the section is.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

class ozStringTable {
public:
    ozStringTable() = default;
    ozStringTable(const ozStringTable&) = delete;
    ozStringTable& operator=(const ozStringTable&) = delete;

    // Files value under name (both copied). False, changing nothing, when the name is already
    // there or either is null.
    bool Insert(const char* name, const char* value);
    // The text of name (compared exactly), or null.
    const char* Find(const char* name) const;
    size_t Count() const { return m_entries.size(); }
    // Forgets every entry filed after the first count, so their names can be filed again.
    void Truncate(size_t count);

    // Reads the lines of a [strings] section, a run of zero-terminated lines ending in an empty
    // one, into the table. A line's name is the text before its first '=', upper-cased (ASCII);
    // the rest is the value. A value ending in a backslash drops it and continues with the whole
    // next line, taken as it is. A value beginning with a double quote drops it and ends before
    // its last double quote, when that lies past the first character after the opening one.
    // Returns false when memory runs out.
    bool AddSection(const char* lines);

    // The value a [strings] line gives after the quote rule; exposed for the writer and tests.
    static std::string UnquotedValue(std::string value);

private:
    struct Entry {
        std::string name;
        std::string value;
    };
    // A slot of the open-addressing table over the entries; empty while entry is zero.
    struct Slot {
        size_t hash;
        size_t entry;  // the entry's position plus one
    };

    // The position of name's slot: the one holding it, or the empty one where it would go.
    size_t SlotOf(const char* name, size_t hash) const;
    // Makes room for count entries in all, the table at most half full.
    void Reserve(size_t count);

    // The entries in the order filed, and a table of their names (its size a power of two,
    // probed linearly) that holds only hashes and positions: finding or missing a name mostly
    // touches one slot and, on a match, one entry.
    std::vector<Entry> m_entries;
    std::vector<Slot> m_slots;
};
