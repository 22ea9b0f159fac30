// The text of .reg files: decoding a file's bytes, encoding text to write, and converting
// between the files' UTF-16 and the model's narrow text (UTF-8 on POSIX, the ANSI code page on
// Windows) with the project's text conversion.
#pragma once

#include <string>

#include "platform/ozStatus.h"
#include "platform/ozTextConversion.h"

using ozWideString = std::basic_string<WCHAR>;

// The encoding a file's bytes were found in.
enum class tREGFILEENCODING {
    Utf16,   // UTF-16LE after the byte-order mark FF FE
    Utf8,    // UTF-8 after the byte-order mark EF BB BF
    Narrow,  // no byte-order mark: the narrow encoding
};

// Decodes a whole file into text without the byte-order mark. Fails, saying why, for UTF-16
// big-endian, a UTF-16 file of an odd length, a UTF-32 file, or bytes the narrow encoding
// cannot convert.
ozStatus ozRegDecodeFile(const std::string& bytes, ozWideString& text, tREGFILEENCODING& encoding);
// text as UTF-16LE bytes (no byte-order mark).
std::string ozRegUtf16Bytes(const ozWideString& text);

// Narrow model text of `length` bytes as UTF-16 and back. Zero bytes and units are converted
// like any other, so multi-strings and terminators survive; empty input gives empty output.
ozWideString ozRegWideFromModel(const char* text, size_t length);
std::string ozRegModelFromWide(const WCHAR* text, size_t length);

// ASCII text as wide text (for the fixed words of the format).
ozWideString ozRegAscii(const char* text);
// True when text equals the ASCII word, ignoring the case of ASCII letters.
bool ozRegEqualsAscii(const ozWideString& text, const char* word);
