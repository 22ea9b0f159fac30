#include "ozWin32Grid.h"

#include <algorithm>

#include "ozWin32Form.h"

namespace {

// The colour of the range's cells other than the current one.
constexpr COLORREF RangeColour = RGB(204, 228, 247);

bool Between(int value, int a, int b)
{
    return value >= std::min(a, b) && value <= std::max(a, b);
}

}  // namespace

ozWin32Grid::~ozWin32Grid()
{
    if (m_editor != nullptr)
        RemoveWindowSubclass(m_editor, EditorProc, 0);
}

bool ozWin32Grid::Create(HWND parent, int id, HINSTANCE instance)
{
    m_window = ozWin32CreateChild(WC_LISTVIEWW,
                                  WS_CLIPCHILDREN | LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL,
                                  parent, id, instance);
    if (m_window == nullptr)
        return false;
    ListView_SetExtendedListViewStyle(m_window, LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES);
    // What was given before the window existed comes now.
    if (!m_captions.empty())
        Columns(m_captions, m_widths);
    RowCount(m_rows);
    return true;
}

void ozWin32Grid::Forget()
{
    m_window = nullptr;
    m_editor = nullptr;
}

void ozWin32Grid::Columns(const std::vector<std::string>& captions, const std::vector<int>& widths)
{
    m_captions = captions;
    m_widths = widths;
    m_cachedRow = -1;
    if (m_window == nullptr)
        return;
    ozWin32ListColumns(m_window, captions, widths, 100);
}

bool ozWin32Grid::Inside(int row, int column) const
{
    return row >= 0 && row < m_rows && column >= 0 && column < static_cast<int>(m_captions.size());
}

void ozWin32Grid::RowCount(int rows)
{
    CloseEditor(false);
    m_rows = rows;
    m_cachedRow = -1;
    if (!Inside(m_row, m_column))
        m_row = m_column = -1;
    if (!Inside(m_range.firstRow, m_range.firstColumn) ||
        !Inside(m_range.lastRow, m_range.lastColumn))
        m_range = {m_row, m_column, m_row, m_column};
    if (m_window == nullptr)
        return;
    ozWin32QuietCount quiet(m_quiet);
    ListView_SetItemCountEx(m_window, rows, LVSICF_NOSCROLL);
    InvalidateRect(m_window, nullptr, TRUE);
}

void ozWin32Grid::RowsChanged(int first, int last)
{
    m_cachedRow = -1;
    if (m_window != nullptr)
        ListView_RedrawItems(m_window, first, last);
}

void ozWin32Grid::Current(int row, int column)
{
    if (!Inside(row, column))
        row = column = -1;
    m_row = row;
    m_column = column;
    m_range = {row, column, row, column};
    if (m_window == nullptr)
        return;
    ozWin32QuietCount quiet(m_quiet);
    if (row >= 0) {
        ListView_SetItemState(m_window, row, LVIS_FOCUSED | LVIS_SELECTED,
                              LVIS_FOCUSED | LVIS_SELECTED);
        ListView_EnsureVisible(m_window, row, FALSE);
    }
    InvalidateRect(m_window, nullptr, FALSE);
}

void ozWin32Grid::SelectRange(const ozGridRange& range)
{
    if (!Inside(range.firstRow, range.firstColumn) || !Inside(range.lastRow, range.lastColumn))
        return;
    m_range = range;
    if (m_window != nullptr)
        InvalidateRect(m_window, nullptr, FALSE);
}

const std::wstring& ozWin32Grid::CellText(int row, int column)
{
    static const std::wstring none;
    if (row != m_cachedRow) {
        m_cached.clear();
        if (m_events != nullptr && row >= 0 && row < m_rows)
            for (const std::string& text : m_events->RowCells(row))
                m_cached.push_back(ozWin32Wide(text));
        m_cachedRow = row;
    }
    return column >= 0 && column < static_cast<int>(m_cached.size())
               ? m_cached[static_cast<size_t>(column)]
               : none;
}

LRESULT ozWin32Grid::CustomDraw(NMLVCUSTOMDRAW& draw) const
{
    switch (draw.nmcd.dwDrawStage) {
        case CDDS_PREPAINT:
            return CDRF_NOTIFYITEMDRAW;
        case CDDS_ITEMPREPAINT:
            // The list's own row selection stays unseen: the cells show the grid's.
            draw.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED | CDIS_FOCUS);
            return CDRF_NOTIFYSUBITEMDRAW;
        case CDDS_ITEMPREPAINT | CDDS_SUBITEM: {
            const int row = static_cast<int>(draw.nmcd.dwItemSpec), column = draw.iSubItem;
            draw.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED | CDIS_FOCUS);
            if (row == m_row && column == m_column) {
                draw.clrText = GetSysColor(COLOR_HIGHLIGHTTEXT);
                draw.clrTextBk = GetSysColor(COLOR_HIGHLIGHT);
            } else if (Between(row, m_range.firstRow, m_range.lastRow) &&
                       Between(column, m_range.firstColumn, m_range.lastColumn)) {
                draw.clrText = GetSysColor(COLOR_WINDOWTEXT);
                draw.clrTextBk = RangeColour;
            } else {
                draw.clrText = GetSysColor(COLOR_WINDOWTEXT);
                draw.clrTextBk = GetSysColor(COLOR_WINDOW);
            }
            return CDRF_NEWFONT;
        }
        default:
            return CDRF_DODEFAULT;
    }
}

void ozWin32Grid::MoveByUser(int row, int column)
{
    if (!Inside(row, column))
        return;
    Current(row, column);
    if (m_events != nullptr)
        m_events->CurrentChanged(row, column);
}

void ozWin32Grid::Clicked(const NMITEMACTIVATE& click, bool open)
{
    LVHITTESTINFO hit = {};
    hit.pt = click.ptAction;
    if (ListView_SubItemHitTest(m_window, &hit) < 0 || !Inside(hit.iItem, hit.iSubItem))
        return;
    if (!open && (click.uKeyFlags & LVKF_SHIFT) != 0 && m_row >= 0) {
        SelectRange({m_row, m_column, hit.iItem, hit.iSubItem});
        return;
    }
    MoveByUser(hit.iItem, hit.iSubItem);
    if (open)
        OpenEditor();
}

bool ozWin32Grid::Notify(const NMHDR& header, LRESULT& result)
{
    if (m_window == nullptr || header.hwndFrom != m_window)
        return false;
    result = 0;
    switch (header.code) {
        case LVN_GETDISPINFOW: {
            auto& info = const_cast<NMLVDISPINFOW&>(reinterpret_cast<const NMLVDISPINFOW&>(header));
            if ((info.item.mask & LVIF_TEXT) != 0 && info.item.cchTextMax > 0) {
                const std::wstring& text = CellText(info.item.iItem, info.item.iSubItem);
                size_t count = std::min(text.size(), static_cast<size_t>(info.item.cchTextMax - 1));
                text.copy(info.item.pszText, count);
                info.item.pszText[count] = L'\0';
            }
            return true;
        }
        case NM_CUSTOMDRAW:
            result = CustomDraw(
                const_cast<NMLVCUSTOMDRAW&>(reinterpret_cast<const NMLVCUSTOMDRAW&>(header)));
            return true;
        default:
            break;
    }
    if (m_quiet > 0)
        return true;
    switch (header.code) {
        case NM_CLICK:
        case NM_DBLCLK:
            Clicked(reinterpret_cast<const NMITEMACTIVATE&>(header), header.code == NM_DBLCLK);
            break;
        case LVN_ITEMCHANGED: {
            // Up, Down and the page keys move the list's focus: the current cell follows. A
            // click moves it too, but the click itself (NM_CLICK) says which cell, and with
            // Shift only spans the range.
            const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
            if (change.iItem >= 0 && change.iItem != m_row && GetKeyState(VK_LBUTTON) >= 0 &&
                (change.uNewState & LVIS_FOCUSED) != 0 && (change.uOldState & LVIS_FOCUSED) == 0)
                MoveByUser(change.iItem, m_column < 0 ? 0 : m_column);
            break;
        }
        case LVN_KEYDOWN: {
            const WORD key = reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey;
            if (key == VK_LEFT || key == VK_RIGHT)
                MoveByUser(m_row, m_column + (key == VK_LEFT ? -1 : 1));
            else if (key == VK_F2 || key == VK_RETURN)
                OpenEditor();
            else if (m_events != nullptr)
                m_events->KeyPressed(key);
            break;
        }
        default:
            break;
    }
    return true;
}

void ozWin32Grid::EditCell(int row, int column, std::size_t begin, std::size_t end)
{
    Current(row, column);
    OpenEditor();
    if (m_editor == nullptr)
        return;
    // The characters selected count in the cell's text; the editor counts wide characters.
    std::string text = ozWin32Narrow(CellText(m_row, m_column));
    begin = std::min(begin, text.size());
    end = std::min(std::max(begin, end), text.size());
    SendMessageW(m_editor, EM_SETSEL, ozWin32Wide(text.substr(0, begin)).size(),
                 ozWin32Wide(text.substr(0, end)).size());
}

void ozWin32Grid::OpenEditor()
{
    CloseEditor(true);
    if (m_window == nullptr || !Inside(m_row, m_column) || m_events == nullptr ||
        !m_events->CellEditable(m_row, m_column))
        return;
    RECT cell = {};
    ListView_EnsureVisible(m_window, m_row, FALSE);
    ListView_GetSubItemRect(m_window, m_row, m_column, m_column == 0 ? LVIR_LABEL : LVIR_BOUNDS,
                            &cell);
    m_editRow = m_row;
    m_editColumn = m_column;
    m_editor = CreateWindowExW(0, L"EDIT", CellText(m_row, m_column).c_str(),
                               WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, cell.left,
                               cell.top, cell.right - cell.left, cell.bottom - cell.top, m_window,
                               nullptr, nullptr, nullptr);
    if (m_editor == nullptr)
        return;
    SendMessageW(m_editor, WM_SETFONT, SendMessageW(m_window, WM_GETFONT, 0, 0), FALSE);
    SetWindowSubclass(m_editor, EditorProc, 0, reinterpret_cast<DWORD_PTR>(this));
    SendMessageW(m_editor, EM_SETSEL, 0, -1);
    SetFocus(m_editor);
}

void ozWin32Grid::CloseEditor(bool take)
{
    if (m_editor == nullptr)
        return;
    // Forgotten first: destroying the editor moves the focus, which would close it again.
    HWND editor = m_editor;
    m_editor = nullptr;
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(editor)) + 1, L'\0');
    GetWindowTextW(editor, text.data(), static_cast<int>(text.size()));
    text.resize(text.size() - 1);
    RemoveWindowSubclass(editor, EditorProc, 0);
    const bool hadFocus = GetFocus() == editor;
    DestroyWindow(editor);
    if (hadFocus && m_window != nullptr)
        SetFocus(m_window);
    if (take && m_events != nullptr)
        m_events->CellEdited(m_editRow, m_editColumn, ozWin32Narrow(text));
    RowsChanged(m_editRow, m_editRow);
}

LRESULT CALLBACK ozWin32Grid::EditorProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                         UINT_PTR, DWORD_PTR self)
{
    auto* grid = reinterpret_cast<ozWin32Grid*>(self);
    switch (message) {
        case WM_GETDLGCODE:
            return DLGC_WANTALLKEYS;
        case WM_KEYDOWN:
            if (wParam == VK_RETURN || wParam == VK_ESCAPE) {
                grid->CloseEditor(wParam == VK_RETURN);
                return 0;
            }
            break;
        case WM_CHAR:
            // Enter and Escape were taken at key-down; the edit would beep at them.
            if (wParam == L'\r' || wParam == 27)
                return 0;
            break;
        case WM_KILLFOCUS:
            if (grid->m_editor == window) {
                LRESULT result = DefSubclassProc(window, message, wParam, lParam);
                grid->CloseEditor(true);
                return result;
            }
            break;
        default:
            break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}
