// One entry of the [strings] section the template writer emits: a number and its text.
#pragma once

#include <memory>

class ozADMStringEntry {
public:
    ozADMStringEntry() = default;
    ozADMStringEntry(const ozADMStringEntry& other);
    ozADMStringEntry& operator=(const ozADMStringEntry& other);
    virtual ~ozADMStringEntry();

    virtual void Number(unsigned long number);
    virtual unsigned long Number() const;
    // Keeps a copy of s.
    virtual void String(const char* s);
    virtual const char* String() const;

private:
    unsigned long m_number = 0;
    std::unique_ptr<char[]> m_string;
};
