// Popup menus on Windows: a menu built from an ozMenu (greyed and disabled entries by their
// state, submenus as popups, separators, bitmaps from resources) and tracked at the cursor.
#pragma once

#include <windows.h>

#include "ui/ozMenu.h"

// Shows menu at the cursor, owned by owner, until the user chooses or dismisses it; returns the
// chosen entry's command, 0 when dismissed or when the menu cannot be built.
unsigned int ozWin32TrackMenu(const ozMenu& menu, HWND owner, HINSTANCE resources);
