#include "ozWin32Menu.h"

#include <commctrl.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "ozWin32Form.h"
#include "ozWin32Tree.h"

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

// An entry drawn by the menu's owner: its caption, and its picture's index in the menu's image
// list (-1 for none).
struct DrawnEntry {
    std::wstring caption;
    int image = -1;
};

// What a menu with pictures needs while it is shown: the entries' drawing data (their
// addresses are the items' data, so they stay put) and the pictures.
struct MenuPictures {
    std::vector<std::unique_ptr<DrawnEntry>> entries;
    std::vector<int> bitmaps;  // the resources of images, in their order
    HIMAGELIST images = nullptr;

    ~MenuPictures()
    {
        if (images != nullptr)
            ImageList_Destroy(images);
    }
};

constexpr int PictureSize = 16;
constexpr int Margin = 4;

HFONT MenuFont()
{
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    return CreateFontIndirectW(&metrics.lfMenuFont);
}

void MeasureEntry(HWND owner, MEASUREITEMSTRUCT& measure)
{
    const auto& entry = *reinterpret_cast<const DrawnEntry*>(measure.itemData);
    HDC dc = GetDC(owner);
    HFONT font = MenuFont();
    HGDIOBJ old = SelectObject(dc, font);
    RECT text = {};
    DrawTextW(dc, entry.caption.c_str(), -1, &text, DT_SINGLELINE | DT_CALCRECT);
    SelectObject(dc, old);
    DeleteObject(font);
    ReleaseDC(owner, dc);
    measure.itemWidth = static_cast<UINT>(PictureSize + 3 * Margin + text.right + 4 * Margin);
    measure.itemHeight =
        static_cast<UINT>(std::max<LONG>(PictureSize + Margin, text.bottom + Margin));
}

void DrawEntry(const MenuPictures& pictures, const DRAWITEMSTRUCT& draw)
{
    const auto& entry = *reinterpret_cast<const DrawnEntry*>(draw.itemData);
    const bool selected = (draw.itemState & ODS_SELECTED) != 0;
    const bool greyed = (draw.itemState & (ODS_GRAYED | ODS_DISABLED)) != 0;
    FillRect(draw.hDC, &draw.rcItem, GetSysColorBrush(selected ? COLOR_HIGHLIGHT : COLOR_MENU));
    const int top = (draw.rcItem.top + draw.rcItem.bottom - PictureSize) / 2;
    if (entry.image >= 0)
        ImageList_Draw(pictures.images, entry.image, draw.hDC, draw.rcItem.left + Margin, top,
                       ILD_TRANSPARENT);
    HFONT font = MenuFont();
    HGDIOBJ old = SelectObject(draw.hDC, font);
    SetBkMode(draw.hDC, TRANSPARENT);
    SetTextColor(draw.hDC, GetSysColor(greyed     ? COLOR_GRAYTEXT
                                       : selected ? COLOR_HIGHLIGHTTEXT
                                                  : COLOR_MENUTEXT));
    RECT text = draw.rcItem;
    text.left += PictureSize + 3 * Margin;
    DrawTextW(draw.hDC, entry.caption.c_str(), -1, &text, DT_SINGLELINE | DT_VCENTER);
    SelectObject(draw.hDC, old);
    DeleteObject(font);
}

// The owner's measuring and drawing of the entries while the menu is shown.
LRESULT CALLBACK OwnerSubclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                               DWORD_PTR data)
{
    const auto& pictures = *reinterpret_cast<const MenuPictures*>(data);
    if (message == WM_MEASUREITEM) {
        auto& measure = *reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
        if (measure.CtlType == ODT_MENU && measure.itemData != 0) {
            MeasureEntry(window, measure);
            return TRUE;
        }
    } else if (message == WM_DRAWITEM) {
        const auto& draw = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        if (draw.CtlType == ODT_MENU && draw.itemData != 0) {
            DrawEntry(pictures, draw);
            return TRUE;
        }
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

bool HasPictures(const std::vector<ozMenuEntry>& entries)
{
    return std::any_of(entries.begin(), entries.end(),
                       [](const ozMenuEntry& entry) { return entry.bitmap != 0; });
}

// Builds the menu of entries. A menu with pictures is drawn by its owner, every entry with its
// picture (from resources) in a column beside the caption; the drawing data goes to pictures.
HMENU BuildMenu(const std::vector<ozMenuEntry>& entries, HINSTANCE resources,
                MenuPictures& pictures)
{
    HMENU menu = CreatePopupMenu();
    if (menu == nullptr)
        return nullptr;
    const bool drawn = HasPictures(entries);
    for (const ozMenuEntry& entry : entries) {
        if (entry.IsSeparator()) {
            AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
            continue;
        }
        std::wstring caption = ozWin32Wide(entry.caption);
        MENUITEMINFOW info = {};
        info.cbSize = sizeof info;
        info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_STRING;
        info.fType = MFT_STRING;
        info.fState = StateFlags(entry.state);
        info.wID = entry.command;
        info.dwTypeData = caption.data();
        if (!entry.submenu.empty()) {
            info.hSubMenu = BuildMenu(entry.submenu, resources, pictures);
            if (info.hSubMenu == nullptr)
                continue;
            info.fMask |= MIIM_SUBMENU;
        }
        if (drawn) {
            auto drawnEntry = std::make_unique<DrawnEntry>();
            drawnEntry->caption = caption;
            if (entry.bitmap != 0) {
                drawnEntry->image = static_cast<int>(pictures.bitmaps.size());
                pictures.bitmaps.push_back(entry.bitmap);
            }
            info.fType |= MFT_OWNERDRAW;
            info.fMask |= MIIM_DATA;
            info.dwItemData = reinterpret_cast<ULONG_PTR>(drawnEntry.get());
            pictures.entries.push_back(std::move(drawnEntry));
        }
        InsertMenuItemW(menu, static_cast<UINT>(GetMenuItemCount(menu)), TRUE, &info);
    }
    return menu;
}

}  // namespace

unsigned int ozWin32TrackMenu(const ozMenu& menu, HWND owner, HINSTANCE resources)
{
    MenuPictures pictures;
    HMENU popup = BuildMenu(menu.entries, resources, pictures);
    if (popup == nullptr)
        return 0;
    if (!pictures.bitmaps.empty())
        pictures.images = ozWin32ImageList(resources, pictures.bitmaps);
    const bool drawn = !pictures.entries.empty();
    if (drawn)
        SetWindowSubclass(owner, OwnerSubclass, 0, reinterpret_cast<DWORD_PTR>(&pictures));
    POINT cursor = {};
    GetCursorPos(&cursor);
    auto command = static_cast<unsigned int>(
        TrackPopupMenu(popup, TPM_RETURNCMD | TPM_RIGHTBUTTON | TPM_LEFTALIGN | TPM_TOPALIGN,
                       cursor.x, cursor.y, 0, owner, nullptr));
    if (drawn)
        RemoveWindowSubclass(owner, OwnerSubclass, 0);
    DestroyMenu(popup);
    return command;
}
