// Pictures of the Windows tests' windows for the documentation and the artifacts.
#pragma once

#include <windows.h>

// Saves the window, drawn afresh, as NAME.bmp into OZ_SCREENSHOT_DIR (nothing without it).
void ozWin32Screenshot(HWND window, const char* name);
