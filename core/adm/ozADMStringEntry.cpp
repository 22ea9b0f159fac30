#include "ozADMStringEntry.h"

#include <cstring>

namespace {

std::unique_ptr<char[]> CopyString(const char* s)
{
    if (s == nullptr)
        return nullptr;
    size_t size = std::strlen(s) + 1;
    auto copy = std::make_unique<char[]>(size);
    std::memcpy(copy.get(), s, size);
    return copy;
}

}  // namespace

ozADMStringEntry::ozADMStringEntry(const ozADMStringEntry& other)
    : m_number(other.m_number), m_string(CopyString(other.m_string.get()))
{
}

ozADMStringEntry& ozADMStringEntry::operator=(const ozADMStringEntry& other)
{
    if (this != &other) {
        m_number = other.m_number;
        m_string = CopyString(other.m_string.get());
    }
    return *this;
}

ozADMStringEntry::~ozADMStringEntry() = default;

void ozADMStringEntry::Number(unsigned long number)
{
    m_number = number;
}

unsigned long ozADMStringEntry::Number() const
{
    return m_number;
}

void ozADMStringEntry::String(const char* s)
{
    m_string = CopyString(s);
}

const char* ozADMStringEntry::String() const
{
    return m_string.get();
}
