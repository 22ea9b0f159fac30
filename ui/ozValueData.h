// A registry value's data as the value editor shows and takes them: a string or expandable
// string as its text, a multi-string one string a line, a 32- or 64-bit number in decimal or
// hexadecimal, anything else as hexadecimal bytes. What is taken is checked, turned into the
// value's text form and stored through the value's own parsing (SetFormattedData).
#pragma once

#include <string>
#include <vector>

#include "core/registry/ozRegValue.h"

// Types 4, 5 and 11: the editor shows them as numbers.
bool ozValueIsNumber(unsigned long type);
// The value's operation takes a second datum (A, R, C) that its item type (r, m) can hold.
bool ozValueTakesSecondDatum(const ozRegValue& value);

// The type's name as the editor lists it ("REG_SZ", ...; "TYPE n" for a type without a name),
// and the type a name stands for (either form, without regard to case); false for neither.
std::string ozValueTypeName(unsigned long type);
bool ozValueTypeFromName(const std::string& name, unsigned long& type);
// The types with a name, in the order the editor lists them.
std::vector<unsigned long> ozNamedValueTypes();

// The data of value (Data, or Data2 when second) as the editor shows them; numbers in
// hexadecimal when hex, else in decimal. A multi-string's strings are joined by "\r\n".
std::string ozValueDataText(const ozRegValue& value, bool second, bool hex);
// Stores text, in the editor's form for type, as the value's data of that type (Data2 when
// second). False, with why saying what is wrong and the value unchanged, when the text does not
// fit the type, or when second is set and the value does not take a second datum.
bool ozSetValueData(ozRegValue& value, unsigned long type, const std::string& text, bool second,
                    std::string& why);
