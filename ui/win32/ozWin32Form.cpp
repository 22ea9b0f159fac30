#include "ozWin32Form.h"

#include <commctrl.h>

#include <algorithm>
#include <cstdlib>

#include "ozWin32Tree.h"
#include "platform/ozTextConversion.h"
#include "ui/ozImages.h"
#include "ui/ozSpinStep.h"

namespace {

bool IsClass(HWND window, const wchar_t* windowClass)
{
    wchar_t name[32] = {};
    GetClassNameW(window, name, 32);
    return lstrcmpiW(name, windowClass) == 0;
}

bool IsListView(HWND window)
{
    return IsClass(window, WC_LISTVIEWW);
}

bool IsComboBox(HWND window)
{
    return IsClass(window, L"ComboBox");
}

bool IsListBox(HWND window)
{
    return IsClass(window, L"ListBox");
}

bool IsTree(HWND window)
{
    return IsClass(window, WC_TREEVIEWW);
}

std::vector<std::wstring> Columns(const std::string& row)
{
    std::vector<std::wstring> columns;
    std::string::size_type start = 0;
    for (;;) {
        std::string::size_type tab = row.find('\t', start);
        columns.push_back(ozWin32Wide(row.substr(start, tab - start)));
        if (tab == std::string::npos)
            return columns;
        start = tab + 1;
    }
}

std::string ListViewText(HWND list, int row, int column)
{
    wchar_t text[1024] = {};
    LVITEMW item = {};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = 1024;
    SendMessageW(list, LVM_GETITEMTEXTW, row, reinterpret_cast<LPARAM>(&item));
    return ozWin32Narrow(text);
}

std::string ListText(HWND list, UINT lengthMessage, UINT textMessage, int row)
{
    LRESULT length = SendMessageW(list, lengthMessage, row, 0);
    if (length < 0)
        return {};
    std::wstring text(static_cast<size_t>(length) + 1, L'\0');
    SendMessageW(list, textMessage, row, reinterpret_cast<LPARAM>(text.data()));
    text.resize(wcslen(text.c_str()));
    return ozWin32Narrow(text);
}

std::vector<HTREEITEM> TopLevelItems(HWND tree)
{
    std::vector<HTREEITEM> items;
    for (auto item = TreeView_GetRoot(tree); item != nullptr;
         item = TreeView_GetNextSibling(tree, item))
        items.push_back(item);
    return items;
}

}  // namespace

std::wstring ozWin32Wide(const std::string& text)
{
    return ozWideText(text.c_str());
}

std::string ozWin32Narrow(const std::wstring& text)
{
    return ozNarrowText(text.c_str(), text.size());
}

HWND ozWin32CreateChild(const wchar_t* windowClass, DWORD style, HWND parent, int id,
                        HINSTANCE instance)
{
    HWND window = CreateWindowExW(
        WS_EX_CLIENTEDGE, windowClass, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, 0, 0, 0, 0,
        parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), instance, nullptr);
    if (window != nullptr)
        SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)),
                     FALSE);
    return window;
}

void ozWin32ListColumns(HWND list, const std::vector<std::string>& captions,
                        const std::vector<int>& widths, int otherWidth)
{
    HWND header = ListView_GetHeader(list);
    for (int count = header != nullptr ? Header_GetItemCount(header) : 0; count > 0; --count)
        ListView_DeleteColumn(list, count - 1);
    for (size_t column = 0; column < captions.size(); ++column) {
        std::wstring wide = ozWin32Wide(captions[column]);
        LVCOLUMNW data = {};
        data.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
        data.pszText = wide.data();
        data.cx = column < widths.size() ? widths[column] : otherWidth;
        data.iSubItem = static_cast<int>(column);
        SendMessageW(list, LVM_INSERTCOLUMNW, column, reinterpret_cast<LPARAM>(&data));
    }
}

std::string ozWin32WindowText(HWND window)
{
    int length = GetWindowTextLengthW(window);
    std::wstring text(static_cast<size_t>(length) + 1, L'\0');
    text.resize(static_cast<size_t>(GetWindowTextW(window, text.data(), length + 1)));
    return ozWin32Narrow(text);
}

ozWin32ControlStyle ozWin32StyleOf(const ozControlSpec& spec)
{
    const bool sorted = (spec.style & ozControlSorted) != 0;
    const DWORD child = WS_CHILD | WS_VISIBLE;
    switch (spec.kind) {
        case ozControlKind::Label:
            return {L"Static", child | SS_LEFT | SS_NOPREFIX, 0};
        case ozControlKind::Edit:
        case ozControlKind::Number: {
            DWORD style = child | WS_TABSTOP;
            if ((spec.style & ozControlMultiLine) != 0)
                style |= ES_MULTILINE | ES_WANTRETURN | ES_AUTOVSCROLL | WS_VSCROLL;
            else
                style |= ES_AUTOHSCROLL;
            if ((spec.style & ozControlReadOnly) != 0)
                style |= ES_READONLY;
            return {L"Edit", style, WS_EX_CLIENTEDGE};
        }
        case ozControlKind::TextBox:
            return {L"Edit",
                    child | WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL,
                    WS_EX_CLIENTEDGE};
        case ozControlKind::CheckBox:
            return {L"Button", child | WS_TABSTOP | BS_AUTOCHECKBOX | BS_MULTILINE, 0};
        case ozControlKind::Radio:
            return {L"Button", child | BS_AUTORADIOBUTTON, 0};
        case ozControlKind::Button:
            return {L"Button",
                    child | WS_TABSTOP |
                        ((spec.style & ozControlDefault) != 0 ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON),
                    0};
        case ozControlKind::Group:
            return {L"Button", child | BS_GROUPBOX, 0};
        case ozControlKind::ComboBox:
        case ozControlKind::DropDown: {
            DWORD style = child | WS_TABSTOP | WS_VSCROLL | CBS_AUTOHSCROLL |
                          (spec.kind == ozControlKind::ComboBox ? CBS_DROPDOWN : CBS_DROPDOWNLIST);
            return {L"ComboBox", sorted ? style | CBS_SORT : style, 0};
        }
        case ozControlKind::List:
            if ((spec.style & ozControlTwoColumns) != 0)
                return {WC_LISTVIEWW,
                        child | WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS |
                            (sorted ? LVS_SORTASCENDING : 0),
                        WS_EX_CLIENTEDGE};
            return {L"ListBox",
                    child | WS_TABSTOP | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT |
                        (sorted ? LBS_SORT : 0),
                    WS_EX_CLIENTEDGE};
        case ozControlKind::ImageRows:
            return {L"Static", child | SS_OWNERDRAW, 0};
        case ozControlKind::Tree:
            return {WC_TREEVIEWW,
                    child | WS_TABSTOP | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT |
                        TVS_SHOWSELALWAYS,
                    WS_EX_CLIENTEDGE};
    }
    return {L"Static", child, 0};
}

namespace {

// What an edit with ozControlReportOnLeave keeps in its user data: the style, and whether the
// user has typed since the edit last reported.
constexpr LONG_PTR ReportsOnLeave = 1;
constexpr LONG_PTR TypedSinceReport = 2;
// What a list or tree with ozControlReportsFocus keeps there.
constexpr LONG_PTR ReportsFocus = 4;

}  // namespace

void ozWin32PrepareControl(HWND control, const ozControlSpec& spec)
{
    if ((spec.style & ozControlReportOnLeave) != 0 && IsClass(control, L"Edit"))
        SetWindowLongPtrW(control, GWLP_USERDATA, ReportsOnLeave);
    if ((spec.style & ozControlReportsFocus) != 0)
        SetWindowLongPtrW(control, GWLP_USERDATA, ReportsFocus);
    if (spec.maxLength > 0 && IsClass(control, L"Edit"))
        SendMessageW(control, EM_LIMITTEXT, static_cast<WPARAM>(spec.maxLength), 0);
    if (!IsListView(control))
        return;
    SendMessageW(control, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, LVS_EX_FULLROWSELECT);
    RECT area;
    GetClientRect(control, &area);
    const int count = std::max<int>(1, static_cast<int>(spec.columns.size()));
    for (int index = 0; index < count; ++index) {
        std::wstring caption =
            index < static_cast<int>(spec.columns.size()) ? ozWin32Wide(spec.columns[index]) : L"";
        LVCOLUMNW column = {};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
        column.cx = (area.right - GetSystemMetrics(SM_CXVSCROLL)) / count;
        column.pszText = caption.data();
        column.iSubItem = index;
        SendMessageW(control, LVM_INSERTCOLUMNW, index, reinterpret_cast<LPARAM>(&column));
    }
}

void ozWin32FormControls::ForgetControls()
{
    m_companions.clear();
    m_ranges.clear();
}

HWND ozWin32FormControls::Control(int id) const
{
    return m_parent != nullptr ? GetDlgItem(m_parent, id) : nullptr;
}

void ozWin32FormControls::Text(int id, const std::string& text)
{
    HWND control = Control(id);
    if (control == nullptr)
        return;
    Quiet quiet(*this);
    if (IsComboBox(control) && (GetWindowLongPtrW(control, GWL_STYLE) & 3) == CBS_DROPDOWNLIST) {
        std::wstring wide = ozWin32Wide(text);
        LRESULT row = SendMessageW(control, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                   reinterpret_cast<LPARAM>(wide.c_str()));
        SendMessageW(control, CB_SETCURSEL, row == CB_ERR ? static_cast<WPARAM>(-1) : row, 0);
        return;
    }
    SetWindowTextW(control, ozWin32Wide(text).c_str());
}

std::string ozWin32FormControls::Text(int id) const
{
    HWND control = Control(id);
    if (control == nullptr)
        return {};
    if (IsListBox(control)) {
        LRESULT row = SendMessageW(control, LB_GETCURSEL, 0, 0);
        return row == LB_ERR ? std::string()
                             : ListText(control, LB_GETTEXTLEN, LB_GETTEXT, static_cast<int>(row));
    }
    if (IsListView(control)) {
        int row = SelectedRow(id);
        return row < 0 ? std::string() : ListViewText(control, row, 0);
    }
    return ozWin32WindowText(control);
}

void ozWin32FormControls::Enable(int id, bool enabled)
{
    HWND control = Control(id);
    if (control == nullptr)
        return;
    EnableWindow(control, enabled);
    if (auto found = m_companions.find(id); found != m_companions.end())
        for (HWND companion : found->second)
            EnableWindow(companion, enabled);
}

bool ozWin32FormControls::Enabled(int id) const
{
    HWND control = Control(id);
    return control != nullptr && IsWindowEnabled(control);
}

void ozWin32FormControls::Check(int id, bool checked)
{
    HWND control = Control(id);
    if (control == nullptr)
        return;
    Quiet quiet(*this);
    // A radio button checked from here unchecks the others of its set, as a click does.
    if (checked && (GetWindowLongPtrW(control, GWL_STYLE) & BS_TYPEMASK) == BS_AUTORADIOBUTTON)
        for (HWND other = GetNextDlgGroupItem(m_parent, control, FALSE);
             other != nullptr && other != control;
             other = GetNextDlgGroupItem(m_parent, other, FALSE))
            SendMessageW(other, BM_SETCHECK, BST_UNCHECKED, 0);
    SendMessageW(control, BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED, 0);
}

bool ozWin32FormControls::Checked(int id) const
{
    HWND control = Control(id);
    return control != nullptr && SendMessageW(control, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void ozWin32FormControls::Rows(int id, const std::vector<std::string>& rows)
{
    HWND control = Control(id);
    if (control == nullptr)
        return;
    Quiet quiet(*this);
    if (IsListView(control)) {
        SendMessageW(control, LVM_DELETEALLITEMS, 0, 0);
        int index = 0;
        for (const std::string& row : rows) {
            std::vector<std::wstring> columns = Columns(row);
            LVITEMW item = {};
            item.mask = LVIF_TEXT;
            item.iItem = index++;
            item.pszText = columns[0].data();
            auto inserted = static_cast<int>(
                SendMessageW(control, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
            for (size_t column = 1; column < columns.size(); ++column) {
                item.iSubItem = static_cast<int>(column);
                item.pszText = columns[column].data();
                SendMessageW(control, LVM_SETITEMTEXTW, inserted, reinterpret_cast<LPARAM>(&item));
            }
        }
        return;
    }
    if (IsTree(control)) {
        TreeView_DeleteAllItems(control);
        for (const std::string& row : rows) {
            std::wstring text = ozWin32Wide(row);
            TVINSERTSTRUCTW insert = {};
            insert.hParent = TVI_ROOT;
            insert.hInsertAfter = TVI_LAST;
            insert.item.mask = TVIF_TEXT;
            insert.item.pszText = text.data();
            SendMessageW(control, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert));
        }
        return;
    }
    const bool combo = IsComboBox(control);
    if (!combo && !IsListBox(control))
        return;
    SendMessageW(control, combo ? CB_RESETCONTENT : LB_RESETCONTENT, 0, 0);
    for (const std::string& row : rows)
        SendMessageW(control, combo ? CB_ADDSTRING : LB_ADDSTRING, 0,
                     reinterpret_cast<LPARAM>(ozWin32Wide(row).c_str()));
}

std::vector<std::string> ozWin32FormControls::Rows(int id) const
{
    std::vector<std::string> rows;
    HWND control = Control(id);
    if (control == nullptr)
        return rows;
    if (IsListView(control)) {
        const int count = static_cast<int>(SendMessageW(control, LVM_GETITEMCOUNT, 0, 0));
        HWND header = reinterpret_cast<HWND>(SendMessageW(control, LVM_GETHEADER, 0, 0));
        const int columns =
            std::max(1, static_cast<int>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0)));
        for (int row = 0; row < count; ++row) {
            std::string text = ListViewText(control, row, 0);
            for (int column = 1; column < columns; ++column)
                text += '\t' + ListViewText(control, row, column);
            rows.push_back(text);
        }
    } else if (IsTree(control)) {
        for (HTREEITEM item : TopLevelItems(control)) {
            wchar_t text[1024] = {};
            TVITEMW data = {};
            data.mask = TVIF_TEXT;
            data.hItem = item;
            data.pszText = text;
            data.cchTextMax = 1024;
            SendMessageW(control, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&data));
            rows.push_back(ozWin32Narrow(text));
        }
    } else if (IsComboBox(control) || IsListBox(control)) {
        const bool combo = IsComboBox(control);
        const auto count = SendMessageW(control, combo ? CB_GETCOUNT : LB_GETCOUNT, 0, 0);
        for (int row = 0; row < count; ++row)
            rows.push_back(combo ? ListText(control, CB_GETLBTEXTLEN, CB_GETLBTEXT, row)
                                 : ListText(control, LB_GETTEXTLEN, LB_GETTEXT, row));
    }
    return rows;
}

void ozWin32FormControls::SelectRow(int id, int row)
{
    HWND control = Control(id);
    if (control == nullptr)
        return;
    Quiet quiet(*this);
    if (IsListView(control)) {
        LVITEMW state = {};
        state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        SendMessageW(control, LVM_SETITEMSTATE, static_cast<WPARAM>(-1),
                     reinterpret_cast<LPARAM>(&state));
        if (row < 0)
            return;
        state.state = LVIS_SELECTED | LVIS_FOCUSED;
        SendMessageW(control, LVM_SETITEMSTATE, row, reinterpret_cast<LPARAM>(&state));
        SendMessageW(control, LVM_ENSUREVISIBLE, row, FALSE);
    } else if (IsTree(control)) {
        std::vector<HTREEITEM> items = TopLevelItems(control);
        TreeView_SelectItem(control, row >= 0 && row < static_cast<int>(items.size())
                                         ? items[static_cast<size_t>(row)]
                                         : nullptr);
    } else if (IsComboBox(control)) {
        SendMessageW(control, CB_SETCURSEL, static_cast<WPARAM>(row), 0);
    } else if (IsListBox(control)) {
        SendMessageW(control, LB_SETCURSEL, static_cast<WPARAM>(row), 0);
    }
}

int ozWin32FormControls::SelectedRow(int id) const
{
    HWND control = Control(id);
    if (control == nullptr)
        return -1;
    if (IsListView(control))
        return static_cast<int>(
            SendMessageW(control, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    if (IsTree(control)) {
        std::vector<HTREEITEM> items = TopLevelItems(control);
        auto found = std::find(items.begin(), items.end(), TreeView_GetSelection(control));
        return found == items.end() ? -1 : static_cast<int>(found - items.begin());
    }
    if (IsComboBox(control) || IsListBox(control)) {
        LRESULT row =
            SendMessageW(control, IsComboBox(control) ? CB_GETCURSEL : LB_GETCURSEL, 0, 0);
        return row < 0 ? -1 : static_cast<int>(row);
    }
    return -1;
}

void ozWin32FormControls::Range(int id, long long min, long long max, long long step)
{
    m_ranges[id] = {min, max, step > 0 ? step : 1};
    // A step of 0 asks for no spin control.
    if (auto found = m_companions.find(id); found != m_companions.end())
        for (HWND companion : found->second)
            if (IsClass(companion, UPDOWN_CLASSW))
                ShowWindow(companion, step > 0 ? SW_SHOWNA : SW_HIDE);
}

void ozWin32FormControls::Focus(int id)
{
    if (HWND control = Control(id); control != nullptr)
        SetFocus(control);
}

void ozWin32FormControls::StepNumber(HWND upDown, int delta)
{
    HWND edit = reinterpret_cast<HWND>(SendMessageW(upDown, UDM_GETBUDDY, 0, 0));
    if (edit == nullptr || !IsWindowEnabled(edit))
        return;
    const int id = GetDlgCtrlID(edit);
    const NumberRange range = m_ranges.count(id) != 0 ? m_ranges.at(id) : NumberRange{};
    const long long stepped =
        ozSpinStep(ozWin32WindowText(edit), range.min, range.max, range.step, delta);
    // The edit reports the change as typing does.
    SetWindowTextW(edit, std::to_wstring(stepped).c_str());
}

bool ozWin32FormControls::Command(WPARAM wParam, LPARAM lParam, ozForm& form, ozFormEvents* events)
{
    HWND control = reinterpret_cast<HWND>(lParam);
    if (control == nullptr || GetParent(control) != m_parent)
        return false;
    const int id = LOWORD(wParam);
    ozFormEvent event;
    switch (HIWORD(wParam)) {
        case BN_CLICKED:
            if (!IsClass(control, L"Button"))
                return false;
            event = ozFormEvent::Clicked;
            break;
        case EN_CHANGE:
            if (!IsClass(control, L"Edit"))
                return false;
            if ((GetWindowLongPtrW(control, GWLP_USERDATA) & ReportsOnLeave) != 0) {
                if (m_quiet == 0)
                    SetWindowLongPtrW(control, GWLP_USERDATA, ReportsOnLeave | TypedSinceReport);
                return true;
            }
            event = ozFormEvent::TextChanged;
            break;
        case EN_KILLFOCUS:
            if (!IsClass(control, L"Edit") ||
                GetWindowLongPtrW(control, GWLP_USERDATA) != (ReportsOnLeave | TypedSinceReport))
                return false;
            SetWindowLongPtrW(control, GWLP_USERDATA, ReportsOnLeave);
            event = ozFormEvent::TextChanged;
            break;
        case CBN_EDITCHANGE:
            if (!IsComboBox(control))
                return false;
            event = ozFormEvent::TextChanged;
            break;
        case CBN_SELCHANGE:  // the same number as LBN_SELCHANGE
            if (!IsComboBox(control) && !IsListBox(control))
                return false;
            event = ozFormEvent::SelectionChanged;
            break;
        default:
            return false;
    }
    if (m_quiet == 0 && events != nullptr)
        events->Command(form, id, event);
    return true;
}

void ozWin32FormControls::ReportTyping(ozForm& form, ozFormEvents* events)
{
    for (HWND child = GetWindow(m_parent, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT))
        if (IsClass(child, L"Edit") &&
            GetWindowLongPtrW(child, GWLP_USERDATA) == (ReportsOnLeave | TypedSinceReport)) {
            SetWindowLongPtrW(child, GWLP_USERDATA, ReportsOnLeave);
            if (events != nullptr)
                events->Command(form, GetDlgCtrlID(child), ozFormEvent::TextChanged);
        }
}

bool ozWin32FormControls::Notify(LPARAM lParam, ozForm& form, ozFormEvents* events, LRESULT& result)
{
    const auto* header = reinterpret_cast<const NMHDR*>(lParam);
    if (header == nullptr || GetParent(header->hwndFrom) != m_parent)
        return false;
    result = 0;
    if (header->code == UDN_DELTAPOS) {
        // The delta counts towards the up-down's maximum, which may lie below its minimum.
        int minimum = 0, maximum = 0;
        SendMessageW(header->hwndFrom, UDM_GETRANGE32, reinterpret_cast<WPARAM>(&minimum),
                     reinterpret_cast<LPARAM>(&maximum));
        const int delta = reinterpret_cast<const NMUPDOWN*>(lParam)->iDelta;
        StepNumber(header->hwndFrom, maximum < minimum ? -delta : delta);
        // The up-down control keeps no position of its own.
        result = TRUE;
        return true;
    }
    if (header->code == NM_SETFOCUS) {
        if (GetWindowLongPtrW(header->hwndFrom, GWLP_USERDATA) != ReportsFocus)
            return false;
        if (m_quiet == 0 && events != nullptr)
            events->Command(form, static_cast<int>(header->idFrom), ozFormEvent::FocusGained);
        return true;
    }
    bool selection = false;
    if (header->code == LVN_ITEMCHANGED) {
        const auto* change = reinterpret_cast<const NMLISTVIEW*>(lParam);
        selection = (change->uChanged & LVIF_STATE) != 0 &&
                    ((change->uNewState ^ change->uOldState) & LVIS_SELECTED) != 0 &&
                    (change->uNewState & LVIS_SELECTED) != 0;
    } else if (header->code == TVN_SELCHANGEDW) {
        selection = true;
    }
    if (!selection)
        return false;
    if (m_quiet == 0 && events != nullptr)
        events->Command(form, static_cast<int>(header->idFrom), ozFormEvent::SelectionChanged);
    return true;
}

void ozWin32FormControls::ImageRows(int id, const std::vector<std::pair<int, std::string>>& rows,
                                    bool withImages)
{
    m_imageRows[id] = {rows, withImages};
    if (HWND control = Control(id))
        InvalidateRect(control, nullptr, TRUE);
}

bool ozWin32FormControls::DrawItem(LPARAM lParam)
{
    const auto* item = reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
    const auto found = m_imageRows.find(static_cast<int>(item->CtlID));
    if (item->CtlType != ODT_STATIC || found == m_imageRows.end())
        return false;
    FillRect(item->hDC, &item->rcItem, GetSysColorBrush(COLOR_BTNFACE));
    if (!found->second.withImages)
        return true;
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof(metrics);
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
    HFONT font = CreateFontIndirectW(&metrics.lfStatusFont);
    HGDIOBJ oldFont = SelectObject(item->hDC, font);
    SetBkColor(item->hDC, GetSysColor(COLOR_BTNFACE));
    SetTextColor(item->hDC, GetSysColor(COLOR_BTNTEXT));
    HMODULE module = nullptr;
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<LPCWSTR>(&ozWin32WindowText), &module);
    HIMAGELIST images = ozWin32ImageList(module, ozRegistryViewBitmaps());
    const auto& rows = found->second.rows;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        // The image area of a row: 11 by 10 dialog units, one row every 15.
        RECT place = {0, static_cast<LONG>(row) * 15, 11, static_cast<LONG>(row) * 15 + 10};
        MapDialogRect(m_parent, &place);
        const int top = item->rcItem.top + place.top;
        ImageList_Draw(images, rows[row].first, item->hDC, item->rcItem.left, top, ILD_TRANSPARENT);
        const std::wstring label = ozWin32Wide(rows[row].second);
        TextOutW(item->hDC, item->rcItem.left + place.right + 10, top, label.c_str(),
                 static_cast<int>(label.size()));
    }
    ImageList_Destroy(images);
    SelectObject(item->hDC, oldFont);
    DeleteObject(font);
    return true;
}
