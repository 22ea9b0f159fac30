// Reading a template file into the narrow text the engine parses.
#pragma once

#include <string>

// Reads file into text: a file starting with the UTF-16 little-endian byte-order mark is
// converted from UTF-16 to the narrow encoding (the ANSI code page on Windows, UTF-8
// elsewhere); a UTF-8 byte-order mark is dropped; any other file is taken byte for byte.
// False with a readable reason in *error when the file cannot be opened or read, or is
// UTF-16 of an odd length or big-endian.
bool ozReadTemplateText(const char* file, std::string& text, std::string* error);
