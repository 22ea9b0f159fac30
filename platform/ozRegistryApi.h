// Reading a registry: the handful of registry functions the model uses, with the Win32
// signatures, error codes and access rights on both builds. Windows supplies them (advapi32).
// Elsewhere they read offline registry hive files (see docs/registry-hives.md): a "machine" is
// a folder holding a Windows installation or its hive files, and nothing is ever written.
#pragma once

#include "ozRegistryTypes.h"

#ifndef _WIN32
#include <cstdint>

typedef std::uint32_t DWORD;
typedef std::int32_t LONG;
typedef unsigned char BYTE;
typedef DWORD REGSAM;
struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};

#define ERROR_SUCCESS ((LONG)0)
#define ERROR_FILE_NOT_FOUND ((LONG)2)
#define ERROR_ACCESS_DENIED ((LONG)5)
#define ERROR_INVALID_HANDLE ((LONG)6)
#define ERROR_NOT_ENOUGH_MEMORY ((LONG)8)
#define ERROR_BAD_NETPATH ((LONG)53)
#define ERROR_INVALID_PARAMETER ((LONG)87)
#define ERROR_INVALID_NAME ((LONG)123)
#define ERROR_FILENAME_EXCED_RANGE ((LONG)206)
#define ERROR_MORE_DATA ((LONG)234)
#define ERROR_NO_MORE_ITEMS ((LONG)259)
#define ERROR_BADDB ((LONG)1009)
#define ERROR_CANTOPEN ((LONG)1011)
#define ERROR_CANTREAD ((LONG)1012)
#define ERROR_REGISTRY_CORRUPT ((LONG)1015)

#define KEY_QUERY_VALUE 0x0001
#define KEY_SET_VALUE 0x0002
#define KEY_CREATE_SUB_KEY 0x0004
#define KEY_ENUMERATE_SUB_KEYS 0x0008
#define KEY_NOTIFY 0x0010
#define KEY_CREATE_LINK 0x0020
#define KEY_READ 0x20019
#define KEY_WRITE 0x20006

#define REG_NONE 0
#define REG_SZ 1
#define REG_EXPAND_SZ 2
#define REG_BINARY 3
#define REG_DWORD 4
#define REG_DWORD_BIG_ENDIAN 5
#define REG_LINK 6
#define REG_MULTI_SZ 7

// Connects to the registry of `machineName`, a folder holding a Windows installation (with
// Windows\System32\config) or hive files, and returns its predefined key `hKey`. A null name
// is the local machine. ERROR_BAD_NETPATH for a folder that does not exist.
LONG RegConnectRegistryA(const char* machineName, HKEY hKey, HKEY* phkResult);
// Opens the sub key `lpSubKey` (null or empty: the key itself) read-only. ERROR_FILE_NOT_FOUND
// for a missing key, ERROR_ACCESS_DENIED when write access is asked for, ERROR_CANTOPEN when no
// local registry is configured or a hive file cannot be opened, ERROR_BADDB for a hive file
// that is not a valid hive.
LONG RegOpenKeyExA(HKEY hKey, const char* lpSubKey, DWORD ulOptions, REGSAM samDesired,
                   HKEY* phkResult);
// Counts and longest lengths of a key's sub keys and values; every pointer may be null.
// Lengths of names are in characters without the terminator; the longest data length is
// large enough for the converted text of every string value.
LONG RegQueryInfoKeyA(HKEY hKey, char* lpClass, DWORD* lpcchClass, DWORD* lpReserved,
                      DWORD* lpcSubKeys, DWORD* lpcbMaxSubKeyLen, DWORD* lpcbMaxClassLen,
                      DWORD* lpcValues, DWORD* lpcbMaxValueNameLen, DWORD* lpcbMaxValueLen,
                      DWORD* lpcbSecurityDescriptor, FILETIME* lpftLastWriteTime);
// The name of sub key number dwIndex, whole: *lpcchName counts every character, zero
// characters within the name included. ERROR_NO_MORE_ITEMS past the last one, ERROR_MORE_DATA
// when the name does not fit *lpcchName characters with its terminator.
LONG RegEnumKeyExA(HKEY hKey, DWORD dwIndex, char* lpName, DWORD* lpcchName, DWORD* lpReserved,
                   char* lpClass, DWORD* lpcchClass, FILETIME* lpftLastWriteTime);
// Name (whole, as for RegEnumKeyExA), type and data of value number dwIndex. String data is
// converted to the narrow encoding as stored: zero characters stay and no terminator is added
// (a hive keeps the terminator in the data when the writer stored one). ERROR_NO_MORE_ITEMS past
// the last value, ERROR_MORE_DATA when the name or the data does not fit (then *lpcbData holds the
// size needed).
LONG RegEnumValueA(HKEY hKey, DWORD dwIndex, char* lpValueName, DWORD* lpcchValueName,
                   DWORD* lpReserved, DWORD* lpType, BYTE* lpData, DWORD* lpcbData);
// Releases a key opened or connected above; predefined keys need no closing.
LONG RegCloseKey(HKEY hKey);
#endif

// Chooses the local machine's registry on builds that read hive files: `folder` as for
// RegConnectRegistryA and `user`, the profile whose NTUSER.DAT is HKEY_CURRENT_USER (null:
// the only one, or NTUSER.DAT in the folder itself). A null folder restores the default, taken
// from the environment variables OZADM_REGISTRY and OZADM_REGISTRY_USER. Returns false on
// Windows, whose registry is always the live one.
bool ozRegistryUseLocalMachine(const char* folder, const char* user);
