// Reading a template file into the narrow text the engine parses.
#pragma once

#include <string>

#include "platform/ozStatus.h"

// Reads file into text: a file starting with the UTF-16 little-endian byte-order mark is
// converted from UTF-16 to the narrow encoding (the ANSI code page on Windows, UTF-8
// elsewhere); a UTF-8 byte-order mark is dropped; any other file is taken byte for byte.
// Fails, with a readable reason (and errno when the system gave one), when the file cannot be
// opened or read, or is UTF-16 of an odd length or big-endian.
ozStatus ozReadTemplateText(const char* file, std::string& text);
