// ozADM.ocx embedded in a window by the system's ActiveX host (atl.dll's AtlAxCreateControl, as
// dialog-based hosts embed it): in-place activation creates the control's window inside the shown
// host window with its child windows (found by their window classes) laid out and the policy view's
// tree and parts panel in place, keys taken from the queue as a host's message loop takes them go
// where the control sends them, key presses fire KeyDown to an advised sink unless events are
// frozen, the properties survive a stream, the property page is named and creatable, a second
// control on the thread takes the keys over, and destroying the host windows takes the controls'
// windows with them, after which the module unloads. Prints every check; the exit code is the
// number of failed checks.
//
// Usage: ozADMEmbeddingClient [SIGNAL_FILE]
// With SIGNAL_FILE, once the first control is shown the client creates that file and waits,
// drawing, until it is deleted (at most 60 s), so that a screenshot can be taken meanwhile.
#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include <utility>
#include <vector>

#include "ozComTestClient.h"

namespace {

// The window classes of the control's children: a frame, three views, a keyboard window.
const wchar_t FrameClass[] = L"ozADMFrame";
const wchar_t RegistryViewClass[] = L"ozADMRegistryView";
const wchar_t KeyboardClass[] = L"ozADMKeyboard";
const wchar_t* const AllClasses[] = {FrameClass, L"ozADMPolicyView", RegistryViewClass,
                                     L"ozADMValueGrid", KeyboardClass};

// An event sink that counts its references and records the KeyDown events it receives.
class Sink final : public IDispatch {
public:
    LONG references = 1;
    int keyDowns = 0;
    short keyCode = 0;
    short shift = -1;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override
    {
        bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) ||
                     IsEqualIID(iid, DIID__DADMEvents);
        *object = known ? static_cast<IDispatch*>(this) : nullptr;
        return known ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++references); }
    STDMETHODIMP_(ULONG) Release() override { return static_cast<ULONG>(--references); }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override
    {
        return E_NOTIMPL;
    }
    STDMETHODIMP Invoke(DISPID dispid, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*, EXCEPINFO*,
                        UINT*) override
    {
        if (dispid != DISPID_KEYDOWN || params->cArgs != 2 ||
            V_VT(&params->rgvarg[1]) != (VT_I2 | VT_BYREF) || V_VT(&params->rgvarg[0]) != VT_I2)
            return DISP_E_MEMBERNOTFOUND;
        ++keyDowns;
        keyCode = *V_I2REF(&params->rgvarg[1]);
        shift = V_I2(&params->rgvarg[0]);
        return S_OK;
    }
};

using Key = std::pair<UINT, WPARAM>;

HWND Child(HWND window, const wchar_t* windowClass)
{
    return FindWindowExW(window, nullptr, windowClass, nullptr);
}

bool Visible(HWND window)
{
    return (GetWindowLongPtrW(window, GWL_STYLE) & WS_VISIBLE) != 0;
}

// All children are there; the frame fills the control's client area, the others leave the
// margin; only the registry view (the display mode at first) and the frame are visible.
bool LaidOut(HWND window)
{
    RECT client;
    GetClientRect(window, &client);
    bool placed = true;
    for (const wchar_t* windowClass : AllClasses) {
        HWND child = Child(window, windowClass);
        LONG margin = windowClass == FrameClass ? 0 : 6;
        RECT area = {-1, -1, -1, -1};
        placed = placed && child != nullptr && GetWindowRect(child, &area);
        MapWindowPoints(HWND_DESKTOP, window, reinterpret_cast<POINT*>(&area), 2);
        placed = placed && area.left == 0 && area.top == 0 && area.right == client.right - margin &&
                 area.bottom == client.bottom - margin &&
                 Visible(child) == (windowClass == FrameClass || windowClass == RegistryViewClass);
    }
    return placed;
}

// The key messages (message, key) the subclassed window received: a client may subclass the
// windows of an in-process server.
std::vector<Key> g_keys;
WNDPROC g_original = nullptr;

LRESULT CALLBACK Recording(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_KEYDOWN || message == WM_KEYUP)
        g_keys.emplace_back(message, wParam);
    return CallWindowProcW(g_original, window, message, wParam, lParam);
}

// Posts a key message to window and takes it from the queue as a message loop would, which is
// where the control's message hook sees it; dispatches it unless it became WM_NULL, and
// returns the message as taken.
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
    if (!Check("the control's window holds a frame filling it, three views and a keyboard "
               "window leaving 6 pixels, of which the registry view shows",
               LaidOut(window)))
        return;

    HWND policyView = Child(window, L"ozADMPolicyView");
    Check("the policy view holds the policy tree and the parts panel",
          Child(policyView, L"SysTreeView32") != nullptr &&
              Child(policyView, L"ozADMPartsPanel") != nullptr);

    Com<IOleInPlaceObject> inPlace(control);
    RECT host, client;
    GetClientRect(GetParent(window), &host);
    RECT smaller = {0, 0, host.right - 50, host.bottom - 30};
    bool resized = inPlace && SUCCEEDED(inPlace->SetObjectRects(&smaller, &smaller));
    GetClientRect(window, &client);
    Check("the children follow the size the container gives the control",
          resized && client.right == smaller.right && client.bottom == smaller.bottom &&
              LaidOut(window));
    if (inPlace)
        inPlace->SetObjectRects(&host, &host);

    // What a host or a user left out of place, Refresh lays out again.
    HWND registry = Child(window, RegistryViewClass);
    ShowWindow(registry, SW_HIDE);
    MoveWindow(registry, 10, 10, 20, 20, TRUE);
    Com<IDispatch> dispatch(control);
    Check("Refresh shows the view of the display mode again, in its place",
          dispatch && SUCCEEDED(Call(dispatch.p, L"Refresh", {}, nullptr)) && LaidOut(window));
}

// Keys through the message hook and TranslateAccelerator, and UI activation.
void CheckKeys(IUnknown* control, HWND window)
{
    // The visible view hands its focus to its key tree (control number 101).
    HWND registry = GetDlgItem(Child(window, RegistryViewClass), 101), host = GetParent(window);
    SetFocus(host);
    Check(
        "the hook hands a Tab for the control to the keyboard window, not dispatched, which "
        "brings the focus to the visible view",
        PostAndTake(window, WM_KEYDOWN, VK_TAB) == WM_NULL && GetFocus() == registry);

    g_original = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(registry, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Recording)));
    // Posted to the control's window: the focus gets them instead.
    UINT down = PostAndTake(window, WM_KEYDOWN, VK_LEFT);
    UINT up = PostAndTake(window, WM_KEYUP, VK_HOME);
    Check("arrow, End and Home keys for the control go to the focused view",
          down == WM_NULL && up == WM_NULL &&
              g_keys == std::vector<Key>{{WM_KEYDOWN, VK_LEFT}, {WM_KEYUP, VK_HOME}});
    Check("other keys are dispatched as they came",
          PostAndTake(window, WM_KEYDOWN, VK_NEXT) == WM_KEYDOWN && g_keys.size() == 2);
    SetWindowLongPtrW(registry, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(g_original));

    Com<IOleInPlaceActiveObject> active(control);
    MSG tab = {window, WM_KEYDOWN, VK_TAB, 0, 0, {0, 0}};
    MSG letter = {window, WM_KEYDOWN, 'A', 0, 0, {0, 0}};
    SetFocus(host);
    Check("TranslateAccelerator takes Tab to the keyboard window and leaves other keys",
          active && active->TranslateAccelerator(&tab) == S_OK && GetFocus() == registry &&
              active->TranslateAccelerator(&letter) == S_FALSE);

    Com<IOleObject> object(control);
    RECT area;
    GetClientRect(host, &area);
    for (LONG verb : {OLEIVERB_UIACTIVATE, OLEIVERB_SHOW}) {
        Com<IOleClientSite> site;
        SetFocus(host);
        Check("UI activation (and OLEIVERB_SHOW) takes the focus to the visible view",
              object && SUCCEEDED(object->GetClientSite(&site.p)) && site &&
                  SUCCEEDED(object->DoVerb(verb, nullptr, site.p, 0, host, &area)) &&
                  GetFocus() == registry);
    }
    Com<IOleInPlaceObject> inPlace(control);
    Check("the control leaves UI activation on request",
          inPlace && SUCCEEDED(inPlace->UIDeactivate()) && IsWindow(window) && LaidOut(window));
}

// The connection point, and KeyDown fired from key presses in the control's window.
void CheckEvents(IUnknown* control, HWND window)
{
    Com<IConnectionPointContainer> container(control);
    Com<IOleControl> oleControl(control);
    Com<IConnectionPoint> point;
    IID iid = IID_NULL;
    if (!Check("the connection point for _DADMEvents is found and names it",
               container && oleControl &&
                   SUCCEEDED(container->FindConnectionPoint(DIID__DADMEvents, &point.p)) &&
                   SUCCEEDED(point->GetConnectionInterface(&iid)) &&
                   IsEqualIID(iid, DIID__DADMEvents)))
        return;
    Sink sink;
    Com<IStream> deaf;  // an object without the event interface
    DWORD first = 0, second = 0, refused = 99;
    Check("two Advise calls get two cookies and hold the sink",
          SUCCEEDED(point->Advise(&sink, &first)) && SUCCEEDED(point->Advise(&sink, &second)) &&
              first != 0 && second != 0 && second != first && sink.references == 3);
    Check("a sink without the event interface is refused",
          SUCCEEDED(CreateStreamOnHGlobal(nullptr, TRUE, &deaf.p)) &&
              point->Advise(deaf.p, &refused) == CONNECT_E_CANNOTCONNECT && refused == 0);
    Check("Unadvise disconnects once per cookie",
          point->Unadvise(second) == S_OK && point->Unadvise(second) == CONNECT_E_NOCONNECTION);

    SendMessageW(window, WM_KEYDOWN, 'A', 0);
    Check("a key press fires KeyDown with the key code and no shift",
          sink.keyDowns == 1 && sink.keyCode == 'A' && sink.shift == 0);
    oleControl->FreezeEvents(TRUE);
    SendMessageW(window, WM_KEYDOWN, 'B', 0);
    bool frozen = sink.keyDowns == 1;
    oleControl->FreezeEvents(FALSE);
    SendMessageW(window, WM_KEYDOWN, 'C', 0);
    Check("frozen events are not fired, thawed ones are",
          frozen && sink.keyDowns == 2 && sink.keyCode == 'C');
    point->Unadvise(first);
    SendMessageW(window, WM_KEYDOWN, 'D', 0);
    Check("after the last Unadvise the sink hears nothing and is released",
          sink.keyDowns == 2 && sink.references == 1);
}

void CheckPersistence(IUnknown* control)
{
    Com<IDispatch> dispatch(control);
    Com<IPersistStreamInit> persist(control), copy;
    Com<IStream> stream, garbage;
    LARGE_INTEGER start = {};
    if (!dispatch || !persist || FAILED(CreateStreamOnHGlobal(nullptr, TRUE, &stream.p)) ||
        FAILED(CreateStreamOnHGlobal(nullptr, TRUE, &garbage.p)))
        return (void)Check("the control persists into a stream", false);
    Check("Save clears the dirty state",
          SUCCEEDED(persist->Save(garbage.p, TRUE)) && persist->IsDirty() == S_FALSE &&
              SUCCEEDED(garbage->Seek(start, STREAM_SEEK_SET, nullptr)));
    Variant no, library(L"C:\\Program Files\\ozADM\\ozRegPOL.dll");
    no.vt = VT_BOOL;
    no.boolVal = VARIANT_FALSE;
    Check("a changed property makes it dirty, Save without clearing leaves it so",
          SUCCEEDED(Call(dispatch.p, L"ShowMachine", {&no}, nullptr, DISPATCH_PROPERTYPUT)) &&
              SUCCEEDED(
                  Call(dispatch.p, L"ozImpExLibrary", {&library}, nullptr, DISPATCH_PROPERTYPUT)) &&
              persist->IsDirty() == S_OK && SUCCEEDED(persist->Save(stream.p, FALSE)) &&
              persist->IsDirty() == S_OK);

    Variant showMachine, copied;
    bool loaded = SUCCEEDED(CoCreateInstance(CLSID_ozADMCtrl, nullptr, CLSCTX_INPROC_SERVER,
                                             IID_IPersistStreamInit, copy.Out())) &&
                  SUCCEEDED(stream->Seek(start, STREAM_SEEK_SET, nullptr)) &&
                  SUCCEEDED(copy->Load(stream.p));
    Com<IDispatch> copyDispatch(copy.p);
    Check(
        "another control loads the saved properties and is not dirty",
        loaded && copyDispatch &&
            SUCCEEDED(
                Call(copyDispatch.p, L"ShowMachine", {}, &showMachine, DISPATCH_PROPERTYGET)) &&
            SUCCEEDED(Call(copyDispatch.p, L"ozImpExLibrary", {}, &copied, DISPATCH_PROPERTYGET)) &&
            VarCmp(&showMachine, &no, LOCALE_USER_DEFAULT, 0) == VARCMP_EQ &&
            VarCmp(&copied, &library, LOCALE_USER_DEFAULT, 0) == VARCMP_EQ &&
            copy->IsDirty() == S_FALSE);
    const char junk[] = "not the control's properties";
    Check("a stream of something else is refused",
          loaded && SUCCEEDED(garbage->Write(junk, sizeof junk, nullptr)) &&
              SUCCEEDED(garbage->Seek(start, STREAM_SEEK_SET, nullptr)) &&
              FAILED(copy->Load(garbage.p)));
}

void CheckPropertyPage(IUnknown* control)
{
    Com<ISpecifyPropertyPages> specify(control);
    CAUUID pages = {0, nullptr};
    Check("the control names its property page",
          specify && SUCCEEDED(specify->GetPages(&pages)) && pages.cElems == 1 &&
              IsEqualCLSID(pages.pElems[0], CLSID_ozADMPropPage));
    CoTaskMemFree(pages.pElems);
    Com<IPropertyPage> page;
    PROPPAGEINFO info = {};
    Check("the property page is created and describes itself",
          SUCCEEDED(CoCreateInstance(CLSID_ozADMPropPage, nullptr, CLSCTX_INPROC_SERVER,
                                     IID_IPropertyPage, page.Out())) &&
              SUCCEEDED(page->GetPageInfo(&info)) && info.pszTitle != nullptr &&
              page->IsPageDirty() == S_FALSE);
    CoTaskMemFree(info.pszTitle);
}

using AtlAxCreateControlFunction = HRESULT(WINAPI*)(LPCOLESTR, HWND, IStream*, IUnknown**);
using AtlAxGetControlFunction = HRESULT(WINAPI*)(HWND, IUnknown**);

template <typename T>
T Function(HMODULE module, const char* name)
{
    return reinterpret_cast<T>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

// A shown host window with the control in it; control null on failure.
struct Embedded {
    HWND host = nullptr;
    IUnknown* control = nullptr;
    HWND window = nullptr;
};

Embedded Embed(HMODULE atl, int x)
{
    Embedded embedded;
    embedded.host =
        CreateWindowExW(0, L"STATIC", L"ozADM host", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, x, 0,
                        480, 360, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    auto create = Function<AtlAxCreateControlFunction>(atl, "AtlAxCreateControl");
    auto get = Function<AtlAxGetControlFunction>(atl, "AtlAxGetControl");
    if (embedded.host == nullptr || create == nullptr || get == nullptr)
        return embedded;
    ShowWindow(embedded.host, SW_SHOW);
    UpdateWindow(embedded.host);
    Com<IUnknown> container;
    if (SUCCEEDED(create(L"ozADM.ozADMCtrl.1", embedded.host, nullptr, &container.p)) &&
        SUCCEEDED(get(embedded.host, &embedded.control)))
        if (Com<IOleWindow> oleWindow(embedded.control); oleWindow)
            oleWindow->GetWindow(&embedded.window);
    return embedded;
}

void Pump()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

// Signals that the control is on the screen and waits, drawing, for the screenshot.
void WaitForScreenshot(const wchar_t* signal)
{
    RedrawWindow(GetDesktopWindow(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
    Pump();
    HANDLE file = CreateFileW(signal, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (!Check("the signal for the screenshot is given", file != INVALID_HANDLE_VALUE))
        return;
    CloseHandle(file);
    for (int waited = 0; waited < 600 && GetFileAttributesW(signal) != INVALID_FILE_ATTRIBUTES;
         ++waited) {
        Pump();
        Sleep(100);
    }
    Check("the screenshot was taken meanwhile",
          GetFileAttributesW(signal) == INVALID_FILE_ATTRIBUTES);
}

int Report()
{
    std::printf("%d failure(s)\n", g_failures);
    return g_failures;
}

}  // namespace

int wmain(int argc, wchar_t** argv)
{
    if (FAILED(OleInitialize(nullptr)))
        return 2;
    HMODULE atl = LoadLibraryW(L"atl.dll");
    auto atlAxWinInit = Function<BOOL(WINAPI*)()>(atl, "AtlAxWinInit");
    if (!Check("atl.dll offers an ActiveX host", atlAxWinInit != nullptr && atlAxWinInit()))
        return Report();
    Embedded first = Embed(atl, 0);
    if (!Check("AtlAxCreateControl hosts the control by ProgID in a shown window",
               first.control != nullptr && IsWindowVisible(first.host)))
        return Report();
    HWND window = first.window;
    RECT hostArea = {}, controlArea = {};
    GetClientRect(first.host, &hostArea);
    GetClientRect(window, &controlArea);
    Check("the control is active in place in a visible child window filling the host",
          IsWindow(window) && IsWindowVisible(window) && GetParent(window) == first.host &&
              controlArea.right == hostArea.right && controlArea.bottom == hostArea.bottom);

    CheckChildWindows(first.control, window);
    if (argc > 1)
        WaitForScreenshot(argv[1]);
    CheckKeys(first.control, window);
    CheckEvents(first.control, window);
    CheckPersistence(first.control);
    CheckPropertyPage(first.control);

    // With two controls on the thread the hook serves the current (last created) one only,
    // and stays while a control window remains.
    Embedded second = Embed(atl, 500);
    if (Check("a second control is hosted on the same thread",
              second.control != nullptr && IsWindow(second.window))) {
        UINT toSecond = PostAndTake(second.window, WM_KEYDOWN, VK_TAB);
        UINT toFirst = PostAndTake(window, WM_KEYDOWN, VK_TAB);
        Check("with two controls the hook serves the one created last",
              toSecond == WM_NULL && toFirst == WM_KEYDOWN);
    }
    first.control->Release();
    DestroyWindow(first.host);
    Check("the control's window goes with the host window", !IsWindow(window));
    if (second.control != nullptr) {
        Check("the message hook stays while the second control's window remains",
              PostAndTake(second.window, WM_KEYDOWN, VK_TAB) == WM_NULL);
        second.control->Release();
    }
    DestroyWindow(second.host);

    // Nothing of the controls is left to keep the module: objects, windows, window classes.
    Pump();
    CoFreeUnusedLibrariesEx(0, 0);
    Check("with the last control gone the module unloads",
          GetModuleHandleW(L"ozADM.ocx") == nullptr);
    OleUninitialize();
    return Report();
}
