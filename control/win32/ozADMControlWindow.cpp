// The control's window: a child of the container's window while the control is active in
// place. It holds the child windows (ozControlWindows) with the views' widgets in them
// (ozWin32Platform), lays them out when it is created and resized, counts itself with the thread's
// message hook while it exists, paints the control and turns key presses into KeyDown events.
#include <windows.h>

#include "ozADMControl.h"
#include "ozComModule.h"

namespace {

const wchar_t WindowClass[] = L"ozADMControlWindow";

// The stock Shift argument of key events: 1 Shift, 2 Ctrl, 4 Alt.
short ShiftState()
{
    short shift = 0;
    if (GetKeyState(VK_SHIFT) < 0)
        shift |= 1;
    if (GetKeyState(VK_CONTROL) < 0)
        shift |= 2;
    if (GetKeyState(VK_MENU) < 0)
        shift |= 4;
    return shift;
}

LRESULT CALLBACK ControlWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* control = reinterpret_cast<ozADMControl*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    switch (message) {
        case WM_NCCREATE: {
            auto* create = reinterpret_cast<CREATESTRUCTW*>(lParam);
            SetWindowLongPtrW(window, GWLP_USERDATA,
                              reinterpret_cast<LONG_PTR>(create->lpCreateParams));
            break;
        }
        case WM_CREATE:
            if (control != nullptr && !control->WindowCreated(window))
                return -1;
            return 0;
        case WM_SIZE:
            if (control != nullptr)
                control->Layout();
            return 0;
        case WM_DESTROY:
            if (control != nullptr)
                control->WindowDestroying();
            break;
        case WM_PAINT:
            if (control != nullptr) {
                PAINTSTRUCT paint;
                HDC dc = BeginPaint(window, &paint);
                RECT bounds;
                GetClientRect(window, &bounds);
                control->Paint(dc, bounds);
                EndPaint(window, &paint);
                return 0;
            }
            break;
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
            // The key handling of the views will skip a key that a sink set to 0.
            if (control != nullptr)
                control->FireKeyDown(static_cast<short>(wParam), ShiftState());
            break;
        case WM_NCDESTROY:
            if (control != nullptr)
                control->WindowDestroyed();
            SetWindowLongPtrW(window, GWLP_USERDATA, 0);
            break;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

bool RegisterWindowClass()
{
    WNDCLASSEXW windowClass = {};
    windowClass.cbSize = sizeof windowClass;
    HINSTANCE instance = ozComModule::Instance();
    if (GetClassInfoExW(instance, WindowClass, &windowClass))
        return true;
    windowClass.style = CS_DBLCLKS;
    windowClass.lpfnWndProc = ControlWindowProc;
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    windowClass.lpszClassName = WindowClass;
    return RegisterClassExW(&windowClass) != 0;
}

}  // namespace

void ozADMControl::UnregisterWindowClass()
{
    UnregisterClassW(WindowClass, ozComModule::Instance());
    ozControlWindows::UnregisterClasses(ozComModule::Instance());
    ozWin32Platform::UnregisterClasses(ozComModule::Instance());
}

HRESULT ozADMControl::CreateControlWindow(HWND parent, const RECT& position)
{
    if (!RegisterWindowClass())
        return HRESULT_FROM_WIN32(GetLastError());
    m_window = CreateWindowExW(0, WindowClass, L"", WS_CHILD | WS_CLIPCHILDREN | WS_TABSTOP,
                               position.left, position.top, position.right - position.left,
                               position.bottom - position.top, parent, nullptr,
                               ozComModule::Instance(), static_cast<ozADMControl*>(this));
    return m_window != nullptr ? S_OK : HRESULT_FROM_WIN32(GetLastError());
}

bool ozADMControl::WindowCreated(HWND window)
{
    m_window = window;
    if (!m_windows.Create(window, ozComModule::Instance()))
        return false;
    if (!m_platform.Attach(window, m_windows.Views(), ozComModule::Instance())) {
        for (HWND child : {m_windows.Frame(), m_windows.View(0), m_windows.View(1),
                           m_windows.View(2), m_windows.Keyboard()})
            DestroyWindow(child);
        m_windows.Forget();
        return false;
    }
    // The policy view set up its tree before the tree's window existed: again, now that it does.
    m_views.PolicyView().Create();
    Layout();
    // Without the hook the control still gets keys from hosts that call TranslateAccelerator.
    ozMessageHook::Attach(*this);
    m_hooked = true;
    return true;
}

void ozADMControl::WindowDestroying()
{
    if (m_hooked)
        ozMessageHook::Detach(*this);
    m_hooked = false;
    m_windows.Forget();
    m_platform.Forget();
}

void ozADMControl::Layout()
{
    m_windows.Layout();
    m_control.Refresh();
}

short ozADMControl::FireKeyDown(short keyCode, short shift)
{
    if (m_frozenEvents > 0)
        return keyCode;
    // The arguments go last first: Shift, then KeyCode by reference.
    VARIANT arguments[2];
    VariantInit(&arguments[0]);
    V_VT(&arguments[0]) = VT_I2;
    V_I2(&arguments[0]) = shift;
    VariantInit(&arguments[1]);
    V_VT(&arguments[1]) = VT_I2 | VT_BYREF;
    V_I2REF(&arguments[1]) = &keyCode;
    DISPPARAMS params = {arguments, nullptr, 2, 0};
    m_events.Fire(DISPID_KEYDOWN, params);
    return keyCode;
}
