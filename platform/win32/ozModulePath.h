// The full path of a loaded module (an executable or a DLL), however long it is.
#pragma once

#include <windows.h>

#include <string>

// The path of `module` (null: the executable of the process); empty when the system cannot
// tell.
std::wstring ozModulePath(HMODULE module);
