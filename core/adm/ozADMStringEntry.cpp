#include "ozADMStringEntry.h"

#include "core/tree/ozOwnedText.h"

ozADMStringEntry::ozADMStringEntry(const ozADMStringEntry& other)
    : m_number(other.m_number), m_string(ozCopyText(other.m_string.get()))
{
}

ozADMStringEntry& ozADMStringEntry::operator=(const ozADMStringEntry& other)
{
    if (this != &other) {
        m_number = other.m_number;
        m_string = ozCopyText(other.m_string.get());
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
    m_string = ozCopyText(s);
}

const char* ozADMStringEntry::String() const
{
    return m_string.get();
}
