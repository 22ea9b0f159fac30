// The value of a hexadecimal digit, for the readers of the registry's text forms (value texts,
// profile files) in narrow or wide characters.
#pragma once

// 0 to 15 for '0'-'9', 'a'-'f' and 'A'-'F'; -1 for any other character.
template <class Char>
int ozHexDigitValue(Char c)
{
    if (c >= '0' && c <= '9')
        return static_cast<int>(c - '0');
    if (c >= 'a' && c <= 'f')
        return static_cast<int>(c - 'a') + 10;
    if (c >= 'A' && c <= 'F')
        return static_cast<int>(c - 'A') + 10;
    return -1;
}
