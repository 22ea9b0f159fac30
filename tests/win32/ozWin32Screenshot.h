// The pictures the Windows view tests take of their windows.
#pragma once

#include <windows.h>

// Saves the window, drawn afresh, as NAME.bmp into OZ_SCREENSHOT_DIR (nothing without it).
void ozWin32Screenshot(HWND window, const char* name);
