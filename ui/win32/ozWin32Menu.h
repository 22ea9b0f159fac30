// Popup menus on Windows: a menu built from an ozMenu (greyed and disabled entries by their
// state, submenus as popups, separators) and tracked at the cursor. A menu whose entries have
// bitmaps is drawn by its owner (subclassed while the menu is shown): each entry with its
// bitmap from resources, magenta transparent, in a column beside the caption.
#pragma once

#include <windows.h>

#include "ui/ozMenu.h"

// Shows menu at the cursor, owned by owner, until the user chooses or dismisses it; returns the
// chosen entry's command, 0 when dismissed or when the menu cannot be built.
unsigned int ozWin32TrackMenu(const ozMenu& menu, HWND owner, HINSTANCE resources);
