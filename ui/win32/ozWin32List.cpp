#include "ozWin32List.h"

#include <iterator>
#include <string>

#include "ozWin32Form.h"
#include "ozWin32Tree.h"

ozWin32List::~ozWin32List()
{
    if (m_window != nullptr)
        RemoveWindowSubclass(m_window, Subclass, 0);
    if (m_images != nullptr)
        ImageList_Destroy(m_images);
}

bool ozWin32List::Create(HWND parent, int id, HINSTANCE resources)
{
    m_resources = resources;
    m_window = ozWin32CreateChild(
        WC_LISTVIEWW,
        WS_CLIPSIBLINGS | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS,
        parent, id, resources);
    if (m_window == nullptr)
        return false;
    ListView_SetExtendedListViewStyle(m_window, LVS_EX_FULLROWSELECT);
    SetWindowSubclass(m_window, Subclass, 0, reinterpret_cast<DWORD_PTR>(this));
    // What was given before the window existed comes now.
    if (!m_bitmaps.empty())
        LoadImages();
    if (!m_captions.empty())
        Columns(m_captions);
    return true;
}

void ozWin32List::Images(const std::vector<int>& bitmapResources)
{
    m_bitmaps = bitmapResources;
    if (m_window != nullptr)
        LoadImages();
}

void ozWin32List::LoadImages()
{
    if (m_images != nullptr)
        ImageList_Destroy(m_images);
    m_images = ozWin32ImageList(m_resources, m_bitmaps);
    ListView_SetImageList(m_window, m_images, LVSIL_SMALL);
}

void ozWin32List::Columns(const std::vector<std::string>& captions)
{
    m_captions = captions;
    if (m_window == nullptr)
        return;
    // Widths come with the list's size (ColumnWidth).
    ozWin32ListColumns(m_window, captions, {}, 0);
}

void ozWin32List::ColumnWidth(int column, int width)
{
    if (m_window != nullptr && column >= 0 && column < static_cast<int>(m_captions.size()))
        ListView_SetColumnWidth(m_window, column, width);
}

int ozWin32List::ColumnWidth(int column) const
{
    if (m_window == nullptr || column < 0 || column >= static_cast<int>(m_captions.size()))
        return 0;
    return ListView_GetColumnWidth(m_window, column);
}

int ozWin32List::Width() const
{
    RECT area = {};
    if (m_window != nullptr)
        GetClientRect(m_window, &area);
    return area.right;
}

void ozWin32List::DeleteAll()
{
    if (m_window == nullptr)
        return;
    ozWin32QuietCount quiet(m_quiet);
    ListView_DeleteAllItems(m_window);
}

int ozWin32List::Append(const std::vector<std::string>& texts, int image, void* data)
{
    if (m_window == nullptr)
        return -1;
    ozWin32QuietCount quiet(m_quiet);
    std::wstring first = ozWin32Wide(texts.empty() ? std::string() : texts[0]);
    LVITEMW item = {};
    item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_PARAM;
    item.iItem = Count();
    item.pszText = first.data();
    item.iImage = image;
    item.lParam = reinterpret_cast<LPARAM>(data);
    int row = static_cast<int>(
        SendMessageW(m_window, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
    if (row >= 0)
        SetRow(row, texts, image);
    return row;
}

void ozWin32List::SetRow(int row, const std::vector<std::string>& texts, int image)
{
    if (m_window == nullptr || row < 0 || row >= Count())
        return;
    ozWin32QuietCount quiet(m_quiet);
    for (size_t column = 0; column < texts.size(); ++column) {
        std::wstring wide = ozWin32Wide(texts[column]);
        LVITEMW item = {};
        item.mask = LVIF_TEXT | (column == 0 ? LVIF_IMAGE : 0u);
        item.iItem = row;
        item.iSubItem = static_cast<int>(column);
        item.pszText = wide.data();
        item.iImage = image;
        SendMessageW(m_window, LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
}

void ozWin32List::Delete(int row)
{
    if (m_window == nullptr)
        return;
    ozWin32QuietCount quiet(m_quiet);
    ListView_DeleteItem(m_window, row);
}

void ozWin32List::Select(int row)
{
    if (m_window == nullptr)
        return;
    if (row < 0 || row >= Count()) {
        ozWin32QuietCount quiet(m_quiet);
        ListView_SetItemState(m_window, -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
        return;
    }
    // The list reports the change itself (LVN_ITEMCHANGED), as for the user's click.
    ListView_SetItemState(m_window, row, LVIS_SELECTED | LVIS_FOCUSED,
                          LVIS_SELECTED | LVIS_FOCUSED);
    ListView_EnsureVisible(m_window, row, FALSE);
}

int ozWin32List::Count() const
{
    return m_window != nullptr ? ListView_GetItemCount(m_window) : 0;
}

int ozWin32List::Selection() const
{
    return m_window != nullptr ? ListView_GetNextItem(m_window, -1, LVNI_SELECTED) : -1;
}

std::string ozWin32List::Text(int row, int column) const
{
    if (m_window == nullptr || row < 0 || row >= Count())
        return {};
    wchar_t buffer[1024] = {};
    LVITEMW item = {};
    item.iSubItem = column;
    item.pszText = buffer;
    item.cchTextMax = static_cast<int>(std::size(buffer));
    SendMessageW(m_window, LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&item));
    return ozWin32Narrow(buffer);
}

int ozWin32List::Image(int row) const
{
    LVITEMW item = {};
    item.mask = LVIF_IMAGE;
    item.iItem = row;
    if (m_window == nullptr ||
        !SendMessageW(m_window, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)))
        return 0;
    return item.iImage;
}

void* ozWin32List::Data(int row) const
{
    LVITEMW item = {};
    item.mask = LVIF_PARAM;
    item.iItem = row;
    if (m_window == nullptr || row < 0 ||
        !SendMessageW(m_window, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)))
        return nullptr;
    return reinterpret_cast<void*>(item.lParam);
}

bool ozWin32List::Notify(const NMHDR& header, LRESULT& result)
{
    if (m_window == nullptr || header.hwndFrom != m_window)
        return false;
    result = 0;
    if (m_quiet > 0 || m_events == nullptr)
        return true;
    switch (header.code) {
        case LVN_ITEMCHANGED: {
            const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
            if ((change.uChanged & LVIF_STATE) != 0 && (change.uNewState & LVIS_SELECTED) != 0 &&
                (change.uOldState & LVIS_SELECTED) == 0)
                m_events->RowSelected(change.iItem);
            break;
        }
        case NM_CLICK: {
            // A click on the row selected already is reported too (the list changes nothing).
            const auto& click = reinterpret_cast<const NMITEMACTIVATE&>(header);
            if (click.iItem >= 0 && click.iItem == Selection())
                m_events->RowSelected(click.iItem);
            break;
        }
        case NM_RCLICK:
            // The row under the cursor, -1 for the empty area.
            m_events->RightClicked(reinterpret_cast<const NMITEMACTIVATE&>(header).iItem);
            break;
        case LVN_KEYDOWN:
            m_events->KeyPressed(reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey);
            break;
        default:
            break;
    }
    return true;
}

LRESULT CALLBACK ozWin32List::Subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                       UINT_PTR, DWORD_PTR self)
{
    auto* list = reinterpret_cast<ozWin32List*>(self);
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, Subclass, 0);
        list->m_window = nullptr;
    }
    LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    if (message == WM_SIZE && list->m_events != nullptr && list->m_window != nullptr)
        list->m_events->Resized(LOWORD(lParam));
    return result;
}
