#include "ozControlWindows.h"

#include <iterator>

namespace {

// The frame shows in the margin the views leave free.
LRESULT CALLBACK FrameProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_ERASEBKGND) {
        RECT area;
        GetClientRect(window, &area);
        FillRect(reinterpret_cast<HDC>(wParam), &area, GetSysColorBrush(COLOR_BTNFACE));
        return 1;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

// Until the views have contents they show their title, so that a screenshot tells them apart.
LRESULT CALLBACK ViewProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_PAINT) {
        PAINTSTRUCT paint;
        HDC dc = BeginPaint(window, &paint);
        RECT area;
        GetClientRect(window, &area);
        FillRect(dc, &area, GetSysColorBrush(COLOR_WINDOW));
        wchar_t title[64] = {};
        int length = GetWindowTextW(window, title, static_cast<int>(std::size(title)));
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, GetSysColor(COLOR_GRAYTEXT));
        InflateRect(&area, -8, -8);
        DrawTextW(dc, title, length, &area, DT_LEFT | DT_TOP | DT_SINGLELINE | DT_NOPREFIX);
        EndPaint(window, &paint);
        return 0;
    }
    if (message == WM_LBUTTONDOWN)
        SetFocus(window);
    return DefWindowProcW(window, message, wParam, lParam);
}

// Tab brings the focus to the visible view, the one part of the control that takes keys
// while the views have no contents of their own.
LRESULT CALLBACK KeyboardProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_GETDLGCODE)
        return DLGC_WANTTAB | DLGC_WANTARROWS;
    if (message == WM_KEYDOWN && wParam == VK_TAB) {
        for (HWND child = GetWindow(GetParent(window), GW_CHILD); child != nullptr;
             child = GetWindow(child, GW_HWNDNEXT))
            if (child != window && (GetWindowLongPtrW(child, GWL_STYLE) & WS_TABSTOP) != 0 &&
                IsWindowVisible(child)) {
                SetFocus(child);
                break;
            }
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

struct ChildClass {
    const wchar_t* name;
    WNDPROC procedure;
};

const ChildClass ChildClasses[] = {
    {ozControlWindows::FrameClass, FrameProc},       {ozControlWindows::PolicyViewClass, ViewProc},
    {ozControlWindows::RegistryViewClass, ViewProc}, {ozControlWindows::ValueGridClass, ViewProc},
    {ozControlWindows::KeyboardClass, KeyboardProc},
};

bool RegisterClasses(HINSTANCE instance)
{
    for (const ChildClass& child : ChildClasses) {
        WNDCLASSEXW windowClass = {};
        windowClass.cbSize = sizeof windowClass;
        if (GetClassInfoExW(instance, child.name, &windowClass))
            continue;
        windowClass.style = CS_DBLCLKS;
        windowClass.lpfnWndProc = child.procedure;
        windowClass.hInstance = instance;
        windowClass.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
        windowClass.lpszClassName = child.name;
        if (RegisterClassExW(&windowClass) == 0)
            return false;
    }
    return true;
}

HWND CreateChild(HWND parent, HINSTANCE instance, const wchar_t* windowClass, const wchar_t* title,
                 DWORD style)
{
    return CreateWindowExW(0, windowClass, title, WS_CHILD | WS_CLIPSIBLINGS | style, 0, 0, 0, 0,
                           parent, nullptr, instance, nullptr);
}

bool IsKeySentToFocus(WPARAM key)
{
    return key >= VK_END && key <= VK_DOWN;
}

}  // namespace

bool ozControlWindows::Create(HWND control, HINSTANCE instance)
{
    if (!RegisterClasses(instance))
        return false;
    m_control = control;
    m_frame = CreateChild(control, instance, FrameClass, L"", WS_VISIBLE);
    m_views[0] =
        CreateChild(control, instance, PolicyViewClass, L"Policies", WS_TABSTOP | WS_CLIPCHILDREN);
    m_views[1] = CreateChild(control, instance, RegistryViewClass, L"Registry",
                             WS_TABSTOP | WS_CLIPCHILDREN);
    m_views[2] = CreateChild(control, instance, ValueGridClass, L"Registry values",
                             WS_TABSTOP | WS_CLIPCHILDREN);
    m_keyboard = CreateChild(control, instance, KeyboardClass, L"", 0);
    bool created = m_frame != nullptr && m_keyboard != nullptr;
    for (HWND view : m_views)
        created = created && view != nullptr;
    if (!created) {
        for (HWND child : {m_frame, m_views[0], m_views[1], m_views[2], m_keyboard})
            if (child != nullptr)
                DestroyWindow(child);
        Forget();
        return false;
    }
    // New windows go to the top of their siblings: the frame belongs below the views.
    SetWindowPos(m_frame, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    Layout();
    return true;
}

void ozControlWindows::Forget()
{
    m_control = m_frame = m_keyboard = nullptr;
    for (HWND& view : m_views)
        view = nullptr;
}

void ozControlWindows::Layout() const
{
    if (m_control == nullptr)
        return;
    RECT area;
    GetClientRect(m_control, &area);
    const int width = area.right - area.left, height = area.bottom - area.top;
    MoveWindow(m_frame, 0, 0, width, height, TRUE);
    const int innerWidth = width > Margin ? width - Margin : 0;
    const int innerHeight = height > Margin ? height - Margin : 0;
    for (HWND child : {m_views[0], m_views[1], m_views[2], m_keyboard})
        MoveWindow(child, 0, 0, innerWidth, innerHeight, TRUE);
}

void ozControlWindows::UnregisterClasses(HINSTANCE instance)
{
    for (const ChildClass& child : ChildClasses)
        UnregisterClassW(child.name, instance);
}

HWND ozControlWindows::View(int displayMode) const
{
    if (displayMode < 0 || displayMode >= static_cast<int>(std::size(m_views)))
        return nullptr;
    return m_views[displayMode];
}

bool ozControlWindows::PreTranslateMessage(const MSG& message) const
{
    if (m_control == nullptr || message.hwnd == nullptr ||
        (message.hwnd != m_control && !IsChild(m_control, message.hwnd)))
        return false;
    if (message.message == WM_KEYDOWN && message.wParam == VK_TAB) {
        SendMessageW(m_keyboard, message.message, message.wParam, message.lParam);
        return true;
    }
    if ((message.message == WM_KEYDOWN || message.message == WM_KEYUP) &&
        IsKeySentToFocus(message.wParam)) {
        HWND focus = GetFocus();
        if (focus == nullptr)
            return false;
        SendMessageW(focus, message.message, message.wParam, message.lParam);
        return true;
    }
    return false;
}
