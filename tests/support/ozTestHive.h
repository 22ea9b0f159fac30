// Builds registry hive files for tests: an empty hive written from the format's documentation,
// then keys and values added through libhivex. Test code only: the product never writes hives.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

struct hive_h;

// About 2 s for 10^5 keys with a value each. libhivex grows the hive a page at a time, which
// becomes quadratic where realloc always copies, as under AddressSanitizer (half a minute for
// 3 x 10^4 keys): tests built with sanitizers should stay at a few thousand keys.
class ozTestHive {
public:
    // Writes an empty hive to path and opens it for writing; ok() tells whether that worked.
    explicit ozTestHive(const std::string& path);
    ~ozTestHive();  // closes without committing
    ozTestHive(const ozTestHive&) = delete;
    ozTestHive& operator=(const ozTestHive&) = delete;

    bool ok() const { return hive_ != nullptr; }

    // Creates the key at keyPath (names separated by backslashes, below the root; "" is the
    // root), with any missing parents. Names match keys made earlier whatever the case of their
    // ASCII letters. False when the hive is not open, a name is empty or libhivex fails.
    bool AddKey(const std::string& keyPath);
    // Sets a value of the key at keyPath (created when missing) with the given registry type
    // code and raw bytes; an existing value of that name (matched case-insensitively) is
    // replaced. name "" is the key's default value. True on success.
    bool SetValue(const std::string& keyPath, const std::string& name, unsigned type,
                  const std::string& bytes);
    // REG_SZ (or type given, e.g. 2 REG_EXPAND_SZ) from UTF-8 text, stored as UTF-16LE with its
    // terminator. Malformed UTF-8 becomes U+FFFD.
    bool SetString(const std::string& keyPath, const std::string& name, const std::string& text,
                   unsigned type = 1);
    // REG_MULTI_SZ from UTF-8 strings, UTF-16LE, each terminated, plus the final terminator.
    bool SetMultiString(const std::string& keyPath, const std::string& name,
                        const std::vector<std::string>& strings);
    // REG_DWORD, little-endian.
    bool SetDword(const std::string& keyPath, const std::string& name, uint32_t number);

    // Writes the changes to the file. True on success.
    bool Commit();

    // UTF-16LE bytes of UTF-8 text, without a terminator. Malformed UTF-8 becomes U+FFFD.
    static std::string Utf16le(const std::string& utf8);
    // Replaces every occurrence of `from` in the file at path by `to`, of the same length: how
    // tests craft what libhivex does not write, such as names holding zero characters. False
    // when the lengths differ, `from` does not occur or the file cannot be rewritten.
    static bool ReplaceInFile(const std::string& path, const std::string& from,
                              const std::string& to);

private:
    // The node at keyPath, created with its missing parents; 0 on failure.
    size_t FindOrCreateKey(const std::string& keyPath);

    hive_h* hive_ = nullptr;
    // Node handles of the keys made so far, by path with ASCII letters in lower case (the way
    // libhivex matches names): building large hives would otherwise walk from the root, and
    // scan each parent's children, for every key and value.
    std::unordered_map<std::string, size_t> nodes_;
};
