// Case folding of names and keywords, the same in every locale: only the ASCII letters A-Z and
// a-z change case; every other byte or code unit (non-ASCII ones included) stays as it is.
// Templates, registry names, file names and the host's words all compare this way, so one
// template reads alike whatever locale the host process runs in.
#pragma once

#include <string>
#include <string_view>

// c in upper case when it is an ASCII letter, else c itself. C is any character type.
template <class C>
constexpr C ozAsciiUpper(C c)
{
    return c >= C('a') && c <= C('z') ? static_cast<C>(c - C('a') + C('A')) : c;
}

// c in lower case when it is an ASCII letter, else c itself.
template <class C>
constexpr C ozAsciiLower(C c)
{
    return c >= C('A') && c <= C('Z') ? static_cast<C>(c - C('A') + C('a')) : c;
}

// True when a and b have the same length and the same characters but for ASCII case.
template <class C>
constexpr bool ozAsciiSameIgnoringCase(std::basic_string_view<C> a, std::basic_string_view<C> b)
{
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (ozAsciiLower(a[i]) != ozAsciiLower(b[i]))
            return false;
    return true;
}

constexpr bool ozAsciiSameIgnoringCase(std::string_view a, std::string_view b)
{
    return ozAsciiSameIgnoringCase<char>(a, b);
}

// The same for zero-terminated names that may be null: false when either is null.
constexpr bool ozAsciiSameIgnoringCase(const char* a, const char* b)
{
    return a != nullptr && b != nullptr &&
           ozAsciiSameIgnoringCase<char>(std::string_view(a), std::string_view(b));
}

// text with its ASCII letters in lower case; the folded form serves as a hash key.
inline std::string ozAsciiLowerCased(std::string_view text)
{
    std::string folded(text);
    for (char& c : folded)
        c = ozAsciiLower(c);
    return folded;
}

// The same for a zero-terminated name that may be null: empty for null.
inline std::string ozAsciiLowerCased(const char* text)
{
    return text != nullptr ? ozAsciiLowerCased(std::string_view(text)) : std::string();
}

// text with its ASCII letters in upper case.
inline std::string ozAsciiUpperCased(std::string_view text)
{
    std::string folded(text);
    for (char& c : folded)
        c = ozAsciiUpper(c);
    return folded;
}

// Turns the ASCII letters of the zero-terminated text in place to upper case.
inline void ozAsciiUpperCase(char* text)
{
    for (; *text != '\0'; ++text)
        *text = ozAsciiUpper(*text);
}
