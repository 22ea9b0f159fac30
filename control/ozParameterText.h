// Reading texts as the control's parameter types: for the views' fields, script lines and
// command options alike. Each reader is strict: the whole text must be read, otherwise false.
#pragma once

#include <cstdint>
#include <string>

// TRUE or FALSE (in any case) or a whole number, nonzero meaning true.
bool ozReadBool(const std::string& text, bool& value);

// A whole number between min and max: decimal with an optional sign, or hexadecimal after
// "0x". Out of range is false.
bool ozReadInteger(const std::string& text, long long min, long long max, long long& value);
// A whole number between min and max without sign, up to 64 bits: decimal, or hexadecimal
// after "0x". Out of range is false.
bool ozReadUnsigned(const std::string& text, std::uint64_t min, std::uint64_t max,
                    std::uint64_t& value);
