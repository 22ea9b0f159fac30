// The embedded control's child windows and keys, seen from its container: the children are
// found by their window classes, and keys are posted to the control's windows and taken from
// the queue as a host's message loop takes them.
#include <utility>

#include "ozADMEmbedding.h"

namespace {

const wchar_t FrameClass[] = L"ozADMFrame";
const wchar_t PolicyViewClass[] = L"ozADMPolicyView";
const wchar_t RegistryViewClass[] = L"ozADMRegistryView";
const wchar_t ValueGridClass[] = L"ozADMValueGrid";
const wchar_t KeyboardClass[] = L"ozADMKeyboard";

using Key = std::pair<UINT, WPARAM>;

HWND Child(HWND window, const wchar_t* windowClass)
{
    return FindWindowExW(window, nullptr, windowClass, nullptr);
}

bool Visible(HWND window)
{
    return (GetWindowLongPtrW(window, GWL_STYLE) & WS_VISIBLE) != 0;
}

bool Placed(HWND child, const RECT& expected)
{
    RECT area;
    GetWindowRect(child, &area);
    MapWindowPoints(HWND_DESKTOP, GetParent(child), reinterpret_cast<POINT*>(&area), 2);
    return area.left == expected.left && area.top == expected.top && area.right == expected.right &&
           area.bottom == expected.bottom;
}

// The frame fills the control's client area; the views and the keyboard window leave 6
// pixels free on the right and at the bottom.
bool LaidOut(HWND window)
{
    RECT client;
    GetClientRect(window, &client);
    RECT inner = {0, 0, client.right - 6, client.bottom - 6};
    bool placed = Placed(Child(window, FrameClass), client);
    for (const wchar_t* windowClass :
         {PolicyViewClass, RegistryViewClass, ValueGridClass, KeyboardClass})
        placed = placed && Placed(Child(window, windowClass), inner);
    return placed;
}

bool Refresh(IUnknown* control)
{
    IDispatch* dispatch = nullptr;
    if (FAILED(control->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&dispatch))))
        return false;
    DISPPARAMS none = {nullptr, nullptr, 0, 0};
    HRESULT hr = dispatch->Invoke(DISPID_REFRESH, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr,
                                  nullptr, nullptr);
    dispatch->Release();
    return SUCCEEDED(hr);
}

void CheckUIActivation(IUnknown* control, HWND window)
{
    HWND registry = Child(window, RegistryViewClass);
    HWND host = GetParent(window);
    IOleObject* object = nullptr;
    IOleClientSite* site = nullptr;
    IOleInPlaceObject* inPlace = nullptr;
    RECT area;
    GetClientRect(host, &area);
    SetFocus(host);
    bool activated =
        SUCCEEDED(control->QueryInterface(IID_IOleObject, reinterpret_cast<void**>(&object))) &&
        SUCCEEDED(object->GetClientSite(&site)) &&
        SUCCEEDED(object->DoVerb(OLEIVERB_UIACTIVATE, nullptr, site, 0, host, &area));
    Check("UI activation takes the focus to the visible view", activated && GetFocus() == registry);
    SetFocus(host);
    Check("OLEIVERB_SHOW activates the UI as well",
          object != nullptr &&
              SUCCEEDED(object->DoVerb(OLEIVERB_SHOW, nullptr, site, 0, host, &area)) &&
              GetFocus() == registry && IsWindowVisible(window));
    Check("the control leaves UI activation on request",
          SUCCEEDED(
              control->QueryInterface(IID_IOleInPlaceObject, reinterpret_cast<void**>(&inPlace))) &&
              SUCCEEDED(inPlace->UIDeactivate()) && IsWindow(window) && LaidOut(window));
    if (inPlace != nullptr)
        inPlace->Release();
    if (site != nullptr)
        site->Release();
    if (object != nullptr)
        object->Release();
}

}  // namespace

KeyRecorder::KeyRecorder(HWND window) : m_window(window), m_original(nullptr)
{
    SetPropW(window, L"ozKeyRecorder", this);
    m_original = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure)));
}

KeyRecorder::~KeyRecorder()
{
    if (!IsWindow(m_window))
        return;
    SetWindowLongPtrW(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_original));
    RemovePropW(m_window, L"ozKeyRecorder");
}

LRESULT CALLBACK KeyRecorder::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* recorder = static_cast<KeyRecorder*>(GetPropW(window, L"ozKeyRecorder"));
    if (message == WM_KEYDOWN || message == WM_KEYUP)
        recorder->m_keys.emplace_back(message, wParam);
    return CallWindowProcW(recorder->m_original, window, message, wParam, lParam);
}

UINT PostAndTake(HWND window, UINT message, WPARAM key)
{
    PostMessageW(window, message, key, 0);
    MSG taken = {};
    if (!PeekMessageW(&taken, window, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE))
        return WM_APP;  // lost: no key message can be that
    if (taken.message != WM_NULL) {
        TranslateMessage(&taken);
        DispatchMessageW(&taken);
    }
    return taken.message;
}

void CheckChildWindows(IUnknown* control, HWND window)
{
    HWND frame = Child(window, FrameClass), policies = Child(window, PolicyViewClass),
         registry = Child(window, RegistryViewClass), grid = Child(window, ValueGridClass),
         keyboard = Child(window, KeyboardClass);
    Check("the control's window holds a frame, three views and a keyboard window",
          frame != nullptr && policies != nullptr && registry != nullptr && grid != nullptr &&
              keyboard != nullptr);
    if (frame == nullptr || policies == nullptr || registry == nullptr || grid == nullptr ||
        keyboard == nullptr)
        return;
    Check("the frame fills the control, the others leave 6 pixels right and below",
          LaidOut(window));
    Check("at first the registry view is the one visible view",
          IsWindowVisible(registry) && IsWindowVisible(frame) && !Visible(policies) &&
              !Visible(grid) && !Visible(keyboard));

    IOleInPlaceObject* inPlace = nullptr;
    RECT host;
    GetClientRect(GetParent(window), &host);
    RECT smaller = {0, 0, host.right - 50, host.bottom - 30};
    bool resized = SUCCEEDED(control->QueryInterface(IID_IOleInPlaceObject,
                                                     reinterpret_cast<void**>(&inPlace))) &&
                   SUCCEEDED(inPlace->SetObjectRects(&smaller, &smaller));
    RECT client;
    GetClientRect(window, &client);
    Check("the children follow the size the container gives the control",
          resized && client.right == smaller.right && client.bottom == smaller.bottom &&
              LaidOut(window));
    if (inPlace != nullptr) {
        inPlace->SetObjectRects(&host, &host);
        inPlace->Release();
    }

    // What a host or a user left out of place, Refresh lays out again.
    ShowWindow(registry, SW_HIDE);
    MoveWindow(registry, 10, 10, 20, 20, TRUE);
    Check("Refresh shows the view of the display mode again, in its place",
          Refresh(control) && Visible(registry) && LaidOut(window) && !Visible(policies) &&
              !Visible(grid));
}

void CheckKeys(IUnknown* control, HWND window)
{
    HWND keyboard = Child(window, KeyboardClass), registry = Child(window, RegistryViewClass);
    if (keyboard == nullptr || registry == nullptr)
        return;
    {
        KeyRecorder recorder(keyboard);
        UINT taken = PostAndTake(window, WM_KEYDOWN, VK_TAB);
        Check("the hook hands a Tab for the control to the keyboard window, not dispatched",
              taken == WM_NULL && recorder.Keys() == std::vector<Key>{{WM_KEYDOWN, VK_TAB}});
        Check("the keyboard window brings the focus to the visible view", GetFocus() == registry);
    }
    {
        KeyRecorder recorder(registry);
        SetFocus(registry);
        // Posted to the control's window: the focus gets it instead.
        UINT down = PostAndTake(window, WM_KEYDOWN, VK_LEFT);
        UINT up = PostAndTake(window, WM_KEYUP, VK_HOME);
        Check("arrow, End and Home keys for the control go to the focused view",
              down == WM_NULL && up == WM_NULL &&
                  recorder.Keys() == std::vector<Key>{{WM_KEYDOWN, VK_LEFT}, {WM_KEYUP, VK_HOME}});
        UINT other = PostAndTake(window, WM_KEYDOWN, VK_NEXT);
        Check("other keys are dispatched as they came",
              other == WM_KEYDOWN && recorder.Keys().size() == 2);
    }

    IOleInPlaceActiveObject* active = nullptr;
    if (FAILED(control->QueryInterface(IID_IOleInPlaceActiveObject,
                                       reinterpret_cast<void**>(&active)))) {
        Check("the control is an IOleInPlaceActiveObject", false);
        return;
    }
    {
        KeyRecorder recorder(keyboard);
        MSG tab = {window, WM_KEYDOWN, VK_TAB, 0, 0, {0, 0}};
        MSG letter = {window, WM_KEYDOWN, 'A', 0, 0, {0, 0}};
        HRESULT tabResult = active->TranslateAccelerator(&tab);
        HRESULT letterResult = active->TranslateAccelerator(&letter);
        Check("TranslateAccelerator takes Tab to the keyboard window and leaves other keys",
              tabResult == S_OK && letterResult == S_FALSE &&
                  recorder.Keys() == std::vector<Key>{{WM_KEYDOWN, VK_TAB}});
    }
    HWND activeWindow = nullptr;
    Check("the active object answers the container",
          SUCCEEDED(active->GetWindow(&activeWindow)) && activeWindow == window &&
              active->OnFrameWindowActivate(TRUE) == S_OK &&
              active->OnDocWindowActivate(FALSE) == S_OK &&
              active->ResizeBorder(nullptr, nullptr, TRUE) == S_OK &&
              active->EnableModeless(TRUE) == S_OK);
    active->Release();
    CheckUIActivation(control, window);
}

void CheckSecondControl(HWND firstWindow, HWND secondWindow)
{
    KeyRecorder first(Child(firstWindow, KeyboardClass));
    KeyRecorder second(Child(secondWindow, KeyboardClass));
    UINT toSecond = PostAndTake(secondWindow, WM_KEYDOWN, VK_TAB);
    UINT toFirst = PostAndTake(firstWindow, WM_KEYDOWN, VK_TAB);
    Check("with two controls the hook serves the one created last",
          toSecond == WM_NULL && second.Keys().size() == 1 && toFirst == WM_KEYDOWN &&
              first.Keys().empty());
}
