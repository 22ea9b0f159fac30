// Converting between the narrow encoding (the ANSI code page on Windows, UTF-8 elsewhere) and
// UTF-16, with the Win32 signatures on both builds. Windows supplies them (kernel32).
#pragma once

#include <string>

#include "ozRegistryApi.h"

#ifndef _WIN32
typedef char16_t WCHAR;
typedef unsigned int UINT;

#define CP_ACP 0

// Converts cbMultiByte bytes of narrow text (-1: up to and including its terminator) into
// lpWideCharStr, which holds cchWideChar units. Returns the number of units written, or,
// for cchWideChar 0, the number needed; 0 when they do not fit or the input is null.
// Malformed UTF-8 becomes U+FFFD.
int MultiByteToWideChar(UINT CodePage, DWORD dwFlags, const char* lpMultiByteStr, int cbMultiByte,
                        WCHAR* lpWideCharStr, int cchWideChar);
// The reverse; lpDefaultChar and lpUsedDefaultChar are not used. A lone surrogate becomes
// U+FFFD.
int WideCharToMultiByte(UINT CodePage, DWORD dwFlags, const WCHAR* lpWideCharStr, int cchWideChar,
                        char* lpMultiByteStr, int cbMultiByte, const char* lpDefaultChar,
                        int* lpUsedDefaultChar);
#endif

// The text converted with the functions above (CP_ACP); empty for null or unconvertible text.
std::basic_string<WCHAR> ozWideText(const char* text);
std::string ozNarrowText(const WCHAR* text, size_t length);

// Text between UTF-8 and the narrow encoding: on Windows converted from or to the ANSI code
// page (a character the code page lacks becomes its default character), elsewhere returned as
// it is, the narrow encoding being UTF-8 there.
std::string ozNarrowFromUtf8(const std::string& text);
std::string ozUtf8FromNarrow(const std::string& text);
