// The [strings] table of the templates loaded into one control: string names (upper-cased) and
// their texts, as a template's [strings] section defines them. A name defined twice, in one
// template or in two loaded one after the other, keeps its first text.
#pragma once

#include <memory>
#include <string>
#include <vector>

class ozStringTable {
public:
    static constexpr unsigned BucketCount = 100;

    ozStringTable();
    ozStringTable(const ozStringTable&) = delete;
    ozStringTable& operator=(const ozStringTable&) = delete;
    ~ozStringTable();

    // The bucket of name: h = (h * 2) xor b over its bytes b (signed), h a signed 32-bit
    // number starting at 0, its magnitude taken at the end, modulo the bucket count.
    static unsigned Hash(const char* name);

    // Files value under name (both copied). False, changing nothing, when the name is already
    // there or either is null.
    bool Insert(const char* name, const char* value);
    // The text of name (compared exactly), or null.
    const char* Find(const char* name) const;
    size_t Count() const { return m_count; }

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
        std::unique_ptr<Entry> next;
    };
    std::vector<std::unique_ptr<Entry>> m_buckets;
    size_t m_count = 0;
};
