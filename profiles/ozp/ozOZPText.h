// The text forms of the ".ozp" profile format (docs/ozp-format.md): root key names, quoted
// texts and data. Writing and reading are exact inverses, so a profile keeps every byte.
#pragma once

#include <optional>
#include <string>
#include <vector>

// "HKEY_LOCAL_MACHINE" for root number 2 and so on; "ROOT<n>" for numbers without a name.
std::string ozOZPRootName(unsigned int root);
// The root number of such a name; nothing for any other text.
std::optional<unsigned int> ozOZPRootNumber(const std::string& name);

// text in double quotes: backslash, double quote and bytes below 0x20 or 0x7F escaped
// (\\, \", \n, \r, \t, \xHH); other bytes as they are.
std::string ozOZPQuote(const std::string& text);
// Reads a quoted text starting at line[pos] (the opening quote) and moves pos past the closing
// one. Nothing for a missing quote, an unknown escape or an unfinished text.
std::optional<std::string> ozOZPUnquote(const std::string& line, size_t& pos);

// A datum: "none" for no data; "dword:XXXXXXXX" for the four bytes of a number (type 4,
// little-endian); a quoted text for bytes that are a text with its single terminating zero;
// otherwise
// "hex:" followed by the bytes as two-digit hexadecimal numbers separated by commas.
std::string ozOZPFormatDatum(const unsigned char* data, unsigned long size, unsigned long type);
// Reads a datum starting at line[pos], moving pos past it. Nothing when it is malformed;
// *present is false for "none".
std::optional<std::vector<unsigned char>> ozOZPParseDatum(const std::string& line, size_t& pos,
                                                          bool* present);
