#include "ozWin32Tree.h"

#include <string>

#include "ozWin32Form.h"

namespace {

HTREEITEM Handle(ozTreeItem item)
{
    return reinterpret_cast<HTREEITEM>(item);
}

ozTreeItem Item(HTREEITEM handle)
{
    return reinterpret_cast<ozTreeItem>(handle);
}

constexpr int ImageSize = 16;
const COLORREF MaskColour = RGB(255, 0, 255);

// A picture of the mask colour only, standing in for a bitmap the module lacks so that the
// image indexes stay where the views expect them.
HBITMAP BlankBitmap()
{
    HDC screen = GetDC(nullptr);
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, ImageSize, ImageSize);
    HGDIOBJ old = SelectObject(dc, bitmap);
    HBRUSH mask = CreateSolidBrush(MaskColour);
    RECT area = {0, 0, ImageSize, ImageSize};
    FillRect(dc, &area, mask);
    DeleteObject(mask);
    SelectObject(dc, old);
    DeleteDC(dc);
    ReleaseDC(nullptr, screen);
    return bitmap;
}

}  // namespace

ozWin32Tree::~ozWin32Tree()
{
    if (m_window != nullptr)
        RemoveWindowSubclass(m_window, Subclass, 0);
    if (m_images != nullptr)
        ImageList_Destroy(m_images);
}

bool ozWin32Tree::Create(HWND parent, int id, HINSTANCE resources)
{
    m_resources = resources;
    m_window = ozWin32CreateChild(WC_TREEVIEWW,
                                  WS_CLIPSIBLINGS | TVS_HASBUTTONS | TVS_HASLINES |
                                      TVS_LINESATROOT | TVS_SHOWSELALWAYS | TVS_EDITLABELS,
                                  parent, id, resources);
    if (m_window == nullptr)
        return false;
    SetWindowSubclass(m_window, Subclass, 0, reinterpret_cast<DWORD_PTR>(this));
    // Images given before the window existed are loaded now, from the module's resources.
    if (!m_bitmaps.empty())
        LoadImages();
    return true;
}

void ozWin32Tree::Attach(HWND window, HINSTANCE resources)
{
    m_window = window;
    m_resources = resources;
    SetWindowSubclass(m_window, Subclass, 0, reinterpret_cast<DWORD_PTR>(this));
    if (!m_bitmaps.empty())
        LoadImages();
}

void ozWin32Tree::Forget()
{
    m_window = nullptr;
    m_buttonDown = m_editRequested = false;
}

void ozWin32Tree::Images(const std::vector<int>& bitmapResources)
{
    m_bitmaps = bitmapResources;
    if (m_window != nullptr)
        LoadImages();
}

HIMAGELIST ozWin32ImageList(HINSTANCE resources, const std::vector<int>& bitmaps)
{
    HIMAGELIST images = ImageList_Create(ImageSize, ImageSize, ILC_COLOR24 | ILC_MASK, 8, 8);
    for (int resource : bitmaps) {
        auto bitmap = static_cast<HBITMAP>(
            LoadImageW(resources, MAKEINTRESOURCEW(resource), IMAGE_BITMAP, 0, 0, LR_DEFAULTCOLOR));
        if (bitmap == nullptr)
            bitmap = BlankBitmap();
        ImageList_AddMasked(images, bitmap, MaskColour);
        DeleteObject(bitmap);
    }
    return images;
}

void ozWin32Tree::LoadImages()
{
    if (m_images != nullptr)
        ImageList_Destroy(m_images);
    m_images = ozWin32ImageList(m_resources, m_bitmaps);
    TreeView_SetImageList(m_window, m_images, TVSIL_NORMAL);
}

void ozWin32Tree::DeleteAll()
{
    if (m_window == nullptr)
        return;
    ozWin32QuietCount quiet(m_quiet);
    TreeView_DeleteAllItems(m_window);
}

void ozWin32Tree::Filling(bool filling)
{
    if (m_window == nullptr)
        return;
    if (filling) {
        SendMessageW(m_window, WM_SETREDRAW, FALSE, 0);
        RemoveWindowSubclass(m_window, Subclass, 0);
        return;
    }
    SetWindowSubclass(m_window, Subclass, 0, reinterpret_cast<DWORD_PTR>(this));
    SendMessageW(m_window, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(m_window, nullptr, TRUE);
}

ozTreeItem ozWin32Tree::Append(ozTreeItem parent, const std::string& text, int image,
                               int selectedImage, bool expanded, void* data)
{
    return Insert(parent, TVI_LAST, text, image, selectedImage, expanded, data);
}

ozTreeItem ozWin32Tree::InsertAfter(ozTreeItem parent, ozTreeItem after, const std::string& text,
                                    int image, int selectedImage, void* data)
{
    return Insert(parent, after == ozNoItem ? TVI_FIRST : Handle(after), text, image, selectedImage,
                  false, data);
}

ozTreeItem ozWin32Tree::Insert(ozTreeItem parent, HTREEITEM after, const std::string& text,
                               int image, int selectedImage, bool expanded, void* data)
{
    if (m_window == nullptr)
        return ozNoItem;
    ozWin32QuietCount quiet(m_quiet);
    std::wstring wide = ozWin32Wide(text);
    TVINSERTSTRUCTW insert = {};
    insert.hParent = parent == ozNoItem ? TVI_ROOT : Handle(parent);
    insert.hInsertAfter = after;
    // A negative image shows none (a text-only item).
    insert.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_STATE | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    insert.item.pszText = wide.data();
    insert.item.iImage = image;
    insert.item.iSelectedImage = selectedImage;
    insert.item.lParam = reinterpret_cast<LPARAM>(data);
    insert.item.stateMask = TVIS_EXPANDED;
    insert.item.state = expanded ? TVIS_EXPANDED : 0;
    return Item(reinterpret_cast<HTREEITEM>(
        SendMessageW(m_window, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert))));
}

void ozWin32Tree::ChildrenLater(ozTreeItem item)
{
    if (m_window == nullptr || item == ozNoItem)
        return;
    TVITEMW data = {};
    data.mask = TVIF_CHILDREN;
    data.hItem = Handle(item);
    data.cChildren = 1;
    SendMessageW(m_window, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&data));
}

void ozWin32Tree::Delete(ozTreeItem item)
{
    if (m_window == nullptr || item == ozNoItem)
        return;
    ozWin32QuietCount quiet(m_quiet);
    TreeView_DeleteItem(m_window, Handle(item));
}

void ozWin32Tree::Text(ozTreeItem item, const std::string& text)
{
    if (m_window == nullptr || item == ozNoItem)
        return;
    std::wstring wide = ozWin32Wide(text);
    TVITEMW data = {};
    data.mask = TVIF_TEXT;
    data.hItem = Handle(item);
    data.pszText = wide.data();
    SendMessageW(m_window, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&data));
}

void ozWin32Tree::Image(ozTreeItem item, int image, int selectedImage)
{
    if (m_window == nullptr || item == ozNoItem)
        return;
    TVITEMW data = {};
    data.mask = TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    data.hItem = Handle(item);
    data.iImage = image;
    data.iSelectedImage = selectedImage;
    SendMessageW(m_window, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&data));
}

void ozWin32Tree::Expand(ozTreeItem item, bool expanded)
{
    if (m_window == nullptr || item == ozNoItem)
        return;
    ozWin32QuietCount quiet(m_quiet);
    TreeView_Expand(m_window, Handle(item), expanded ? TVE_EXPAND : TVE_COLLAPSE);
}

bool ozWin32Tree::Select(ozTreeItem item)
{
    if (m_window == nullptr)
        return false;
    // The tree asks and reports through TVN_SELCHANGING and TVN_SELCHANGED, as for the user.
    TreeView_SelectItem(m_window, Handle(item));
    return Selection() == item;
}

void ozWin32Tree::EnsureVisible(ozTreeItem item)
{
    if (m_window == nullptr || item == ozNoItem)
        return;
    ozWin32QuietCount quiet(m_quiet);
    TreeView_EnsureVisible(m_window, Handle(item));
}

void ozWin32Tree::EditLabel(ozTreeItem item)
{
    if (m_window == nullptr || item == ozNoItem)
        return;
    SetFocus(m_window);
    m_editRequested = true;
    SendMessageW(m_window, TVM_EDITLABELW, 0, reinterpret_cast<LPARAM>(Handle(item)));
    m_editRequested = false;
}

bool ozWin32Tree::GetItem(ozTreeItem item, UINT mask, TVITEMW& data) const
{
    if (m_window == nullptr || item == ozNoItem)
        return false;
    data.mask = mask;
    data.hItem = Handle(item);
    return SendMessageW(m_window, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&data)) != FALSE;
}

ozTreeItem ozWin32Tree::Selection() const
{
    return m_window == nullptr ? ozNoItem : Item(TreeView_GetSelection(m_window));
}

void* ozWin32Tree::Data(ozTreeItem item) const
{
    TVITEMW data = {};
    return GetItem(item, TVIF_PARAM, data) ? reinterpret_cast<void*>(data.lParam) : nullptr;
}

std::string ozWin32Tree::Text(ozTreeItem item) const
{
    wchar_t text[1024] = {};
    TVITEMW data = {};
    data.pszText = text;
    data.cchTextMax = 1024;
    return GetItem(item, TVIF_TEXT, data) ? ozWin32Narrow(text) : std::string();
}

int ozWin32Tree::Image(ozTreeItem item) const
{
    TVITEMW data = {};
    return GetItem(item, TVIF_IMAGE, data) ? data.iImage : -1;
}

bool ozWin32Tree::Expanded(ozTreeItem item) const
{
    TVITEMW data = {};
    data.stateMask = TVIS_EXPANDED;
    return GetItem(item, TVIF_STATE, data) && (data.state & TVIS_EXPANDED) != 0;
}

ozTreeItem ozWin32Tree::Root() const
{
    return m_window == nullptr ? ozNoItem : Item(TreeView_GetRoot(m_window));
}

ozTreeItem ozWin32Tree::Parent(ozTreeItem item) const
{
    return m_window == nullptr || item == ozNoItem
               ? ozNoItem
               : Item(TreeView_GetParent(m_window, Handle(item)));
}

ozTreeItem ozWin32Tree::FirstChild(ozTreeItem item) const
{
    return m_window == nullptr || item == ozNoItem
               ? ozNoItem
               : Item(TreeView_GetChild(m_window, Handle(item)));
}

ozTreeItem ozWin32Tree::NextSibling(ozTreeItem item) const
{
    return m_window == nullptr || item == ozNoItem
               ? ozNoItem
               : Item(TreeView_GetNextSibling(m_window, Handle(item)));
}

ozTreeItem ozWin32Tree::IconAt(POINT point) const
{
    TVHITTESTINFO hit = {};
    hit.pt = point;
    HTREEITEM item = TreeView_HitTest(m_window, &hit);
    return (hit.flags & TVHT_ONITEMICON) != 0 ? Item(item) : ozNoItem;
}

ozTreeItem ozWin32Tree::ItemAtMessage(bool onIcon) const
{
    DWORD position = GetMessagePos();
    POINT point = {static_cast<short>(LOWORD(position)), static_cast<short>(HIWORD(position))};
    ScreenToClient(m_window, &point);
    if (onIcon)
        return IconAt(point);
    TVHITTESTINFO hit = {};
    hit.pt = point;
    HTREEITEM item = TreeView_HitTest(m_window, &hit);
    return (hit.flags & TVHT_ONITEM) != 0 ? Item(item) : ozNoItem;
}

void ozWin32Tree::ButtonReleased(ozTreeItem item)
{
    if (!m_buttonDown)
        return;
    m_buttonDown = false;
    if (m_events != nullptr)
        m_events->IconReleased(item);
}

LRESULT CALLBACK ozWin32Tree::Subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                       UINT_PTR, DWORD_PTR self)
{
    auto* tree = reinterpret_cast<ozWin32Tree*>(self);
    if (message == WM_LBUTTONDOWN) {
        POINT point = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
        tree->m_buttonDown = true;
        if (tree->m_events != nullptr)
            tree->m_events->IconPressed(tree->IconAt(point));
        // The tree's own handling follows; while it waits for the button to come up it takes
        // WM_LBUTTONUP from the queue itself and reports NM_CLICK instead.
    } else if (message == WM_LBUTTONUP) {
        POINT point = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
        tree->ButtonReleased(tree->IconAt(point));
    } else if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, Subclass, 0);
        tree->Forget();
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

bool ozWin32Tree::Notify(const NMHDR& header, LRESULT& result)
{
    if (m_window == nullptr || header.hwndFrom != m_window)
        return false;
    result = 0;
    if (m_events == nullptr) {
        // Nobody to rename the item: the tree's own label edit does not start either.
        result = header.code == TVN_BEGINLABELEDITW ? TRUE : FALSE;
        return true;
    }
    switch (header.code) {
        case TVN_ITEMEXPANDINGW: {
            const auto& change = reinterpret_cast<const NMTREEVIEWW&>(header);
            if (m_quiet == 0 && (change.action & (TVE_EXPAND | TVE_COLLAPSE)) != 0)
                m_events->ItemExpanding(Item(change.itemNew.hItem),
                                        (change.action & TVE_EXPAND) != 0);
            break;
        }
        case NM_CLICK:
            ButtonReleased(ItemAtMessage(true));
            break;
        case TVN_SELCHANGINGW: {
            const auto& change = reinterpret_cast<const NMTREEVIEWW&>(header);
            if (m_quiet == 0 && !m_events->SelectionChanging(Item(change.itemOld.hItem),
                                                             Item(change.itemNew.hItem)))
                result = TRUE;
            break;
        }
        case TVN_SELCHANGEDW:
            if (m_quiet == 0)
                m_events->SelectionChanged(
                    Item(reinterpret_cast<const NMTREEVIEWW&>(header).itemNew.hItem));
            break;
        case NM_RCLICK:
            m_events->RightClicked(ItemAtMessage(false));
            // Handled: the tree sends no WM_CONTEXTMENU of its own.
            result = TRUE;
            break;
        case NM_DBLCLK:
            m_events->DoubleClicked(ItemAtMessage(false));
            break;
        case TVN_KEYDOWN:
            m_events->KeyPressed(reinterpret_cast<const NMTVKEYDOWN&>(header).wVKey);
            break;
        case TVN_BEGINLABELEDITW:
            result = m_editRequested ? FALSE : TRUE;
            m_editRequested = false;
            break;
        case TVN_ENDLABELEDITW: {
            const auto& edit = reinterpret_cast<const NMTVDISPINFOW&>(header);
            std::string text;
            if (edit.item.pszText != nullptr)
                text = ozWin32Narrow(edit.item.pszText);
            result = m_events->LabelEdited(Item(edit.item.hItem),
                                           edit.item.pszText != nullptr ? &text : nullptr)
                         ? TRUE
                         : FALSE;
            break;
        }
    }
    return true;
}
