// The registry handle type and the predefined root keys, the same on both builds. Windows
// takes them from its own headers; elsewhere they are defined here with the same values, so
// that root numbers (a handle value minus 0x80000000) agree on every platform.
#pragma once

#include <cstdint>

#ifdef _WIN32
#include <windows.h>
#else
typedef struct HKEY__* HKEY;

#define OZ_PREDEFINED_HKEY(number) ((HKEY)(std::intptr_t)(std::int32_t)(0x80000000u + (number)))
#define HKEY_CLASSES_ROOT OZ_PREDEFINED_HKEY(0)
#define HKEY_CURRENT_USER OZ_PREDEFINED_HKEY(1)
#define HKEY_LOCAL_MACHINE OZ_PREDEFINED_HKEY(2)
#define HKEY_USERS OZ_PREDEFINED_HKEY(3)
#define HKEY_PERFORMANCE_DATA OZ_PREDEFINED_HKEY(4)
#define HKEY_CURRENT_CONFIG OZ_PREDEFINED_HKEY(5)
#define HKEY_DYN_DATA OZ_PREDEFINED_HKEY(6)
#endif

// The root number of a predefined key: its handle value minus 0x80000000, in 32-bit
// arithmetic (64-bit Windows sign-extends the predefined handles).
inline unsigned int ozRootNumber(HKEY root)
{
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(root)) - 0x80000000u;
}

// The predefined key of a root number, with the sign extension the platform uses.
inline HKEY ozRootHandle(unsigned int rootNumber)
{
    return reinterpret_cast<HKEY>(
        static_cast<std::intptr_t>(static_cast<std::int32_t>(0x80000000u + rootNumber)));
}
