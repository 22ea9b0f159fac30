#include "ozWin32Panel.h"

#include <commctrl.h>

#include <algorithm>

namespace {

constexpr int Inset = 4;
constexpr int Gap = 2;
constexpr int LabelGap = 1;

// Default heights in dialog units for specs that give none.
int DefaultHeight(ozControlKind kind)
{
    switch (kind) {
        case ozControlKind::Label:
        case ozControlKind::CheckBox:
        case ozControlKind::Radio:
            return 10;
        case ozControlKind::TextBox:
        case ozControlKind::List:
        case ozControlKind::Tree:
            return 48;
        case ozControlKind::Group:
            return 24;
        default:
            return 14;
    }
}

bool IsWrapped(ozControlKind kind)
{
    return kind == ozControlKind::Label || kind == ozControlKind::CheckBox ||
           kind == ozControlKind::Radio;
}

}  // namespace

ozWin32Panel::~ozWin32Panel()
{
    if (Window() != nullptr)
        SetWindowLongPtrW(Window(), GWLP_USERDATA, 0);
}

bool ozWin32Panel::Create(HWND parent, HINSTANCE instance)
{
    m_instance = instance;
    WNDCLASSEXW windowClass = {};
    windowClass.cbSize = sizeof windowClass;
    if (!GetClassInfoExW(instance, WindowClass, &windowClass)) {
        windowClass.lpfnWndProc = Procedure;
        windowClass.hInstance = instance;
        windowClass.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
        windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
        windowClass.lpszClassName = WindowClass;
        if (RegisterClassExW(&windowClass) == 0)
            return false;
    }
    HWND window = CreateWindowExW(WS_EX_CONTROLPARENT, WindowClass, L"",
                                  WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_VSCROLL, 0, 0, 0, 0,
                                  parent, nullptr, instance, this);
    if (window == nullptr)
        return false;
    m_font = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
    HDC dc = GetDC(window);
    HGDIOBJ old = SelectObject(dc, m_font);
    TEXTMETRICW metrics = {};
    GetTextMetricsW(dc, &metrics);
    SIZE alphabet = {};
    GetTextExtentPoint32W(dc, L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz", 52,
                          &alphabet);
    SelectObject(dc, old);
    ReleaseDC(window, dc);
    m_baseX = std::max(1L, (alphabet.cx / 26 + 1) / 2);
    m_baseY = std::max(1L, metrics.tmHeight);
    ShowScrollBar(window, SB_VERT, FALSE);
    CreateControls();
    return true;
}

void ozWin32Panel::UnregisterClass(HINSTANCE instance)
{
    UnregisterClassW(WindowClass, instance);
}

void ozWin32Panel::Build(const std::vector<ozControlSpec>& controls, ozFormEvents* events)
{
    DestroyControls();
    m_events = events;
    for (const ozControlSpec& spec : controls)
        m_items.push_back({spec});
    CreateControls();
}

void ozWin32Panel::Range(int id, long long min, long long max, long long step)
{
    m_controls.Range(id, min, max, step);
    Layout();
}

void ozWin32Panel::Clear()
{
    DestroyControls();
    m_events = nullptr;
}

void ozWin32Panel::DestroyControls()
{
    for (Item& item : m_items)
        for (HWND window : {item.label, item.control, item.upDown})
            if (window != nullptr && IsWindow(window))
                DestroyWindow(window);
    m_items.clear();
    m_controls.ForgetControls();
    m_scroll = 0;
    if (Window() != nullptr)
        Layout();
}

void ozWin32Panel::CreateControls()
{
    HWND panel = Window();
    if (panel == nullptr)
        return;
    ozWin32FormControls::Quiet quiet(m_controls);
    auto create = [&](const wchar_t* windowClass, const std::string& text, DWORD style,
                      DWORD extendedStyle, int id) {
        HWND window = CreateWindowExW(
            extendedStyle, windowClass, ozWin32Wide(text).c_str(), style, 0, 0, 0, 0, panel,
            reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), m_instance, nullptr);
        SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(m_font), FALSE);
        return window;
    };
    for (Item& item : m_items) {
        const ozWin32ControlStyle style = ozWin32StyleOf(item.spec);
        if (ozControlHasLabel(item.spec)) {
            item.label = create(L"Static", item.spec.caption,
                                WS_CHILD | WS_VISIBLE | SS_LEFT | SS_NOPREFIX, 0, -1);
            m_controls.Companion(item.spec.id, item.label);
        }
        const bool captioned = !ozControlHasLabel(item.spec) &&
                               item.spec.kind != ozControlKind::Edit &&
                               item.spec.kind != ozControlKind::Number;
        item.control = create(style.windowClass, captioned ? item.spec.caption : std::string(),
                              style.style, style.extendedStyle, item.spec.id);
        if (item.spec.kind == ozControlKind::Number) {
            item.upDown = create(UPDOWN_CLASSW, "",
                                 WS_CHILD | WS_VISIBLE | UDS_ALIGNRIGHT | UDS_ARROWKEYS, 0, -1);
            SendMessageW(item.upDown, UDM_SETBUDDY, reinterpret_cast<WPARAM>(item.control), 0);
            m_controls.Companion(item.spec.id, item.upDown);
        }
    }
    Layout();
    for (Item& item : m_items)
        ozWin32PrepareControl(item.control, item.spec);
}

RECT ozWin32Panel::TextArea(const std::string& text, int width, UINT format) const
{
    HWND panel = Window();
    HDC dc = GetDC(panel);
    HGDIOBJ old = SelectObject(dc, m_font);
    RECT area = {0, 0, std::max(width, 1), 0};
    std::wstring wide = ozWin32Wide(text);
    DrawTextW(dc, wide.c_str(), static_cast<int>(wide.size()), &area,
              DT_CALCRECT | DT_NOPREFIX | format);
    SelectObject(dc, old);
    ReleaseDC(panel, dc);
    return area;
}

int ozWin32Panel::TextHeight(const std::string& text, int width) const
{
    RECT area = TextArea(text, width, DT_WORDBREAK);
    return area.bottom - area.top;
}

int ozWin32Panel::TextWidth(const std::string& text) const
{
    RECT area = TextArea(text, 0, DT_SINGLELINE);
    return area.right - area.left;
}

void ozWin32Panel::Layout()
{
    HWND panel = Window();
    if (panel == nullptr)
        return;
    RECT client;
    GetClientRect(panel, &client);
    // The scroll bar's width is always left free, so that its coming and going moves nothing.
    bool scrollBar = (GetWindowLongPtrW(panel, GWL_STYLE) & WS_VSCROLL) != 0;
    const int width = std::max(0, static_cast<int>(client.right) +
                                      (scrollBar ? GetSystemMetrics(SM_CXVSCROLL) : 0) - 2 * Inset -
                                      GetSystemMetrics(SM_CXVSCROLL));
    int y = Inset;
    HDWP positions = BeginDeferWindowPos(static_cast<int>(m_items.size() * 3));
    auto place = [&](HWND window, int left, int top, int w, int h) {
        if (positions != nullptr)
            positions = DeferWindowPos(positions, window, nullptr, left, top - m_scroll, w, h,
                                       SWP_NOZORDER | SWP_NOACTIVATE);
    };
    for (Item& item : m_items) {
        if (item.label != nullptr) {
            int height = TextHeight(item.spec.caption, width);
            place(item.label, Inset, y, width, height);
            y += height + LabelGap;
        }
        const int specHeight =
            item.spec.height > 0 ? item.spec.height : DefaultHeight(item.spec.kind);
        int height = MulDiv(specHeight, m_baseY, 8);
        if (IsWrapped(item.spec.kind)) {
            const int box =
                item.spec.kind == ozControlKind::Label ? 0 : GetSystemMetrics(SM_CXMENUCHECK) + 4;
            height = std::max(height, TextHeight(item.spec.caption, width - box));
        }
        // A drop-down's window includes its list; its field is as high as its font needs.
        const bool combo =
            item.spec.kind == ozControlKind::ComboBox || item.spec.kind == ozControlKind::DropDown;
        if (combo)
            height = std::max(height, static_cast<int>(SendMessageW(item.control, CB_GETITEMHEIGHT,
                                                                    static_cast<WPARAM>(-1), 0)) +
                                          6);
        int controlWidth = width;
        if (item.spec.kind == ozControlKind::Button)
            controlWidth = std::min(width, std::max(MulDiv(50, m_baseX, 4),
                                                    TextWidth(item.spec.caption) + 4 * m_baseX));
        if (item.upDown != nullptr &&
            (GetWindowLongPtrW(item.upDown, GWL_STYLE) & WS_VISIBLE) != 0) {
            controlWidth = std::max(0, width - GetSystemMetrics(SM_CXVSCROLL));
            place(item.upDown, Inset + controlWidth, y, width - controlWidth, height);
        }
        place(item.control, Inset, y, controlWidth, combo ? height + 8 * m_baseY : height);
        y += height + Gap;
    }
    if (positions != nullptr)
        EndDeferWindowPos(positions);
    m_contentHeight = y - Gap + Inset;
    // Scrolls when the controls are taller than the panel.
    SCROLLINFO scroll = {};
    scroll.cbSize = sizeof scroll;
    scroll.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    scroll.nMax = m_contentHeight - 1;
    scroll.nPage = static_cast<UINT>(client.bottom);
    scroll.nPos = m_scroll;
    const bool needed = m_contentHeight > client.bottom && client.bottom > 0;
    if (!needed && m_scroll != 0) {
        m_scroll = 0;
        Layout();
        return;
    }
    ShowScrollBar(panel, SB_VERT, needed);
    if (needed)
        SetScrollInfo(panel, SB_VERT, &scroll, TRUE);
}

void ozWin32Panel::Scroll(int code)
{
    RECT client;
    GetClientRect(Window(), &client);
    int position = m_scroll;
    switch (code) {
        case SB_LINEUP:
            position -= m_baseY;
            break;
        case SB_LINEDOWN:
            position += m_baseY;
            break;
        case SB_PAGEUP:
            position -= client.bottom;
            break;
        case SB_PAGEDOWN:
            position += client.bottom;
            break;
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION: {
            SCROLLINFO scroll = {};
            scroll.cbSize = sizeof scroll;
            scroll.fMask = SIF_TRACKPOS;
            GetScrollInfo(Window(), SB_VERT, &scroll);
            position = scroll.nTrackPos;
            break;
        }
        default:
            return;
    }
    m_scroll =
        std::clamp(position, 0, std::max(0, m_contentHeight - static_cast<int>(client.bottom)));
    Layout();
}

LRESULT CALLBACK ozWin32Panel::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE) {
        auto* create = reinterpret_cast<CREATESTRUCTW*>(lParam);
        auto* panel = static_cast<ozWin32Panel*>(create->lpCreateParams);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(panel));
        panel->m_controls.Parent(window);
    }
    auto* panel = reinterpret_cast<ozWin32Panel*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (panel != nullptr) {
        LRESULT result = 0;
        switch (message) {
            case WM_SIZE:
                panel->Layout();
                return 0;
            case WM_VSCROLL:
                panel->Scroll(LOWORD(wParam));
                return 0;
            case WM_COMMAND:
                if (panel->m_controls.Command(wParam, lParam, *panel, panel->m_events))
                    return 0;
                break;
            case WM_NOTIFY:
                if (panel->m_controls.Notify(lParam, *panel, panel->m_events, result))
                    return result;
                break;
            case WM_NCDESTROY:
                panel->m_controls.Parent(nullptr);
                for (Item& item : panel->m_items)
                    item.label = item.control = item.upDown = nullptr;
                SetWindowLongPtrW(window, GWLP_USERDATA, 0);
                break;
        }
    }
    return DefWindowProcW(window, message, wParam, lParam);
}
