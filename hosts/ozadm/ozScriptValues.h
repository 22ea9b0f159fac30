// Reading argument texts as the control's parameter types, for script lines and command
// options alike. Each reader is strict: the whole text must be read, otherwise false.
#pragma once

#include <string>
#include <string_view>

// Whether a and b are equal when ASCII letters are compared without regard to case.
bool ozEqualsIgnoringCase(std::string_view a, std::string_view b);

// TRUE or FALSE (in any case) or a whole number, nonzero meaning true.
bool ozReadBool(const std::string& text, bool& value);

// A whole number between min and max: decimal with an optional sign, or hexadecimal after
// "0x". Out of range is false.
bool ozReadInteger(const std::string& text, long long min, long long max, long long& value);
