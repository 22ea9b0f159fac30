// Reading one section of an initialisation (.ini) file: the system's private-profile section
// reader, with the Win32 signatures on both builds. Windows supplies it (kernel32); elsewhere it
// is our own implementation with the same results (the rules are in docs/private-profile.md).
#pragma once

#include "ozRegistryApi.h"
#include "ozTextConversion.h"

#ifndef _WIN32

// Copies the lines of section `lpAppName` (matched without regard to ASCII case) of the file
// `lpFileName` into `lpReturnedString` as zero-terminated strings followed by one more zero, and
// returns the number of characters copied without that last zero. When the buffer of `nSize`
// characters is too small the list is cut short and the return value is nSize - 2. A missing
// file or section gives an empty list and 0. The narrow form reads and writes UTF-8.
DWORD GetPrivateProfileSectionA(const char* lpAppName, char* lpReturnedString, DWORD nSize,
                                const char* lpFileName);
// The same with UTF-16 names and result.
DWORD GetPrivateProfileSectionW(const WCHAR* lpAppName, WCHAR* lpReturnedString, DWORD nSize,
                                const WCHAR* lpFileName);
#endif
