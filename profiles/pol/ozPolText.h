// Text between a Registry.pol file (UTF-16LE) and the registry model (narrow text: UTF-8 on
// Linux, the ANSI code page on Windows), through the project's text conversion. Every
// character is converted, zero characters included, so that multi-strings and data without a
// terminator keep their length. Characters the narrow encoding cannot hold (on Windows, those
// outside the ANSI code page) and lone surrogates come back as substitutes.
#pragma once

#include <string>
#include <string_view>

std::string ozPolNarrow(std::u16string_view text);
std::u16string ozPolWide(std::string_view text);
