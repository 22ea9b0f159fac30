#include "ozStringTable.h"

#include <cstdint>
#include <cstring>
#include <new>

ozStringTable::ozStringTable() : m_buckets(BucketCount) {}

ozStringTable::~ozStringTable()
{
    // Chains are unlinked one entry at a time, so that a long chain cannot exhaust the stack.
    for (std::unique_ptr<Entry>& bucket : m_buckets) {
        while (bucket != nullptr)
            bucket = std::move(bucket->next);
    }
}

unsigned ozStringTable::Hash(const char* name)
{
    // Unsigned arithmetic gives the two's complement results of the signed rule without
    // overflowing; the magnitude of the most negative number is 2^31.
    std::uint32_t hash = 0;
    for (const char* c = name; *c != '\0'; ++c)
        hash = (hash * 2u) ^
               static_cast<std::uint32_t>(static_cast<std::int32_t>(static_cast<signed char>(*c)));
    std::uint32_t magnitude = (hash & 0x80000000u) != 0 ? 0u - hash : hash;
    return magnitude % BucketCount;
}

bool ozStringTable::Insert(const char* name, const char* value)
{
    if (name == nullptr || value == nullptr)
        return false;
    std::unique_ptr<Entry>* link = &m_buckets[Hash(name)];
    for (; *link != nullptr; link = &(*link)->next) {
        if ((*link)->name == name)
            return false;
    }
    *link = std::make_unique<Entry>(Entry{name, value, nullptr});
    ++m_count;
    return true;
}

const char* ozStringTable::Find(const char* name) const
{
    if (name == nullptr)
        return nullptr;
    for (const Entry* entry = m_buckets[Hash(name)].get(); entry != nullptr;
         entry = entry->next.get()) {
        if (entry->name == name)
            return entry->value.c_str();
    }
    return nullptr;
}

std::string ozStringTable::UnquotedValue(std::string value)
{
    if (value.empty() || value[0] != '"')
        return value;
    value.erase(0, 1);
    size_t lastQuote = value.rfind('"');
    if (lastQuote != std::string::npos && lastQuote > 0)
        value.resize(lastQuote);
    return value;
}

bool ozStringTable::AddSection(const char* lines)
{
    if (lines == nullptr)
        return true;
    try {
        for (const char* line = lines; *line != '\0'; line += std::strlen(line) + 1) {
            const char* equals = std::strchr(line, '=');
            std::string name = equals != nullptr ? std::string(line, equals) : std::string(line);
            for (char& c : name)
                if (c >= 'a' && c <= 'z')
                    c = static_cast<char>(c - 'a' + 'A');
            std::string value = equals != nullptr ? std::string(equals + 1) : std::string();
            if (!value.empty() && value.back() == '\\') {
                value.pop_back();
                const char* next = line + std::strlen(line) + 1;
                if (*next != '\0') {
                    value += next;
                    line = next;  // the continuation line is consumed
                }
            }
            Insert(name.c_str(), UnquotedValue(std::move(value)).c_str());
        }
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}
