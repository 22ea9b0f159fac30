#include "ozWin32Menu.h"

#include <string>
#include <vector>

#include "ozWin32Form.h"

namespace {

UINT StateFlags(ozMenuState state)
{
    switch (state) {
        case ozMenuState::Greyed:
            return MF_GRAYED;
        case ozMenuState::Disabled:
            return MF_DISABLED;
        case ozMenuState::Enabled:
            break;
    }
    return MF_ENABLED;
}

// Builds the menu of entries; the bitmaps it loads go into bitmaps (the caller deletes them
// after the menu).
HMENU BuildMenu(const std::vector<ozMenuEntry>& entries, HINSTANCE resources,
                std::vector<HBITMAP>& bitmaps)
{
    HMENU menu = CreatePopupMenu();
    if (menu == nullptr)
        return nullptr;
    for (const ozMenuEntry& entry : entries) {
        if (entry.IsSeparator()) {
            AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
            continue;
        }
        const std::wstring caption = ozWin32Wide(entry.caption);
        UINT_PTR item = entry.command;
        UINT flags = MF_STRING | StateFlags(entry.state);
        if (!entry.submenu.empty()) {
            HMENU submenu = BuildMenu(entry.submenu, resources, bitmaps);
            if (submenu == nullptr)
                continue;
            item = reinterpret_cast<UINT_PTR>(submenu);
            flags |= MF_POPUP;
        }
        AppendMenuW(menu, flags, item, caption.c_str());
        if (entry.bitmap != 0)
            if (auto bitmap =
                    static_cast<HBITMAP>(LoadImageW(resources, MAKEINTRESOURCEW(entry.bitmap),
                                                    IMAGE_BITMAP, 0, 0, LR_DEFAULTCOLOR));
                bitmap != nullptr) {
                bitmaps.push_back(bitmap);
                MENUITEMINFOW info = {};
                info.cbSize = sizeof info;
                info.fMask = MIIM_BITMAP;
                info.hbmpItem = bitmap;
                SetMenuItemInfoW(menu, static_cast<UINT>(GetMenuItemCount(menu) - 1), TRUE, &info);
            }
    }
    return menu;
}

}  // namespace

unsigned int ozWin32TrackMenu(const ozMenu& menu, HWND owner, HINSTANCE resources)
{
    std::vector<HBITMAP> bitmaps;
    HMENU popup = BuildMenu(menu.entries, resources, bitmaps);
    if (popup == nullptr)
        return 0;
    POINT cursor = {};
    GetCursorPos(&cursor);
    auto command = static_cast<unsigned int>(
        TrackPopupMenu(popup, TPM_RETURNCMD | TPM_RIGHTBUTTON | TPM_LEFTALIGN | TPM_TOPALIGN,
                       cursor.x, cursor.y, 0, owner, nullptr));
    DestroyMenu(popup);
    for (HBITMAP bitmap : bitmaps)
        DeleteObject(bitmap);
    return command;
}
