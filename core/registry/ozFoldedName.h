// Case-insensitive naming of registry keys and values: names compare after folding ASCII
// letters to lower case, byte by byte; other bytes compare as they are.
#pragma once

#include <string>

// The folded form of name, suitable as a hash key; empty for null.
inline std::string ozFoldedName(const char* name)
{
    std::string folded;
    if (name == nullptr)
        return folded;
    for (; *name != '\0'; ++name) {
        char c = *name;
        folded.push_back(c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c);
    }
    return folded;
}

// True when both names are non-null and equal without regard to case.
inline bool ozSameName(const char* a, const char* b)
{
    if (a == nullptr || b == nullptr)
        return false;
    for (;; ++a, ++b) {
        char x = *a >= 'A' && *a <= 'Z' ? static_cast<char>(*a - 'A' + 'a') : *a;
        char y = *b >= 'A' && *b <= 'Z' ? static_cast<char>(*b - 'A' + 'a') : *b;
        if (x != y)
            return false;
        if (x == '\0')
            return true;
    }
}
