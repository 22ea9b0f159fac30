// ozADM.ocx embedded in a window by the system's ActiveX host (atl.dll's AtlAxCreateControl,
// as dialog-based hosts embed it): in-place activation creates the control's window inside the
// shown host window with its child windows laid out (ozADMEmbeddingWindows.cpp), keys go where
// the control sends them, key presses in its window fire KeyDown to an advised sink unless
// events are frozen, the properties survive a stream, the property page is named and
// creatable, a second control on the thread takes the keys over, and destroying the host
// windows takes the controls' windows with them, after which the module unloads. Prints every
// check; the exit code is the number of failed checks.
//
// Usage: ozADMEmbeddingClient [SIGNAL_FILE]
// With SIGNAL_FILE, once the first control is shown the client creates that file and waits,
// drawing, until it is deleted (at most 60 s), so that a screenshot can be taken meanwhile.
#include <cstdio>

#include "ozADMEmbedding.h"

namespace {

using AtlAxWinInitFunction = BOOL(WINAPI*)();
using AtlAxCreateControlFunction = HRESULT(WINAPI*)(LPCOLESTR, HWND, IStream*, IUnknown**);
using AtlAxGetControlFunction = HRESULT(WINAPI*)(HWND, IUnknown**);

template <typename T>
T Function(HMODULE module, const char* name)
{
    return reinterpret_cast<T>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

void CheckEvents(IUnknown* control, HWND window)
{
    IConnectionPointContainer* container = nullptr;
    IConnectionPoint* point = nullptr;
    KeySink sink;
    DWORD cookie = 0;
    if (FAILED(control->QueryInterface(IID_IConnectionPointContainer,
                                       reinterpret_cast<void**>(&container))) ||
        FAILED(container->FindConnectionPoint(DIID__DADMEvents, &point)) ||
        FAILED(point->Advise(&sink, &cookie))) {
        Check("a sink is advised on the events", false);
        if (point != nullptr)
            point->Release();
        if (container != nullptr)
            container->Release();
        return;
    }
    SendMessageW(window, WM_KEYDOWN, 'A', 0);
    Check("a key press fires KeyDown with the key code and no shift",
          sink.calls == 1 && sink.keyCode == 'A' && sink.shift == 0);

    IOleControl* oleControl = nullptr;
    if (SUCCEEDED(
            control->QueryInterface(IID_IOleControl, reinterpret_cast<void**>(&oleControl)))) {
        oleControl->FreezeEvents(TRUE);
        SendMessageW(window, WM_KEYDOWN, 'B', 0);
        bool frozen = sink.calls == 1;
        oleControl->FreezeEvents(FALSE);
        SendMessageW(window, WM_KEYDOWN, 'C', 0);
        Check("frozen events are not fired, thawed ones are",
              frozen && sink.calls == 2 && sink.keyCode == 'C');
        oleControl->Release();
    } else {
        Check("the control is an IOleControl", false);
    }
    point->Unadvise(cookie);
    SendMessageW(window, WM_KEYDOWN, 'D', 0);
    Check("after Unadvise the sink hears nothing", sink.calls == 2);
    point->Release();
    container->Release();
}

void CheckPersistence(IUnknown* control)
{
    IDispatch* dispatch = nullptr;
    IPersistStreamInit* persist = nullptr;
    IStream* stream = nullptr;
    control->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&dispatch));
    control->QueryInterface(IID_IPersistStreamInit, reinterpret_cast<void**>(&persist));
    if (dispatch == nullptr || persist == nullptr ||
        FAILED(CreateStreamOnHGlobal(nullptr, TRUE, &stream))) {
        Check("the control persists into a stream", false);
        return;
    }
    IStream* first = nullptr;
    Check("Save clears the dirty state", SUCCEEDED(CreateStreamOnHGlobal(nullptr, TRUE, &first)) &&
                                             SUCCEEDED(persist->Save(first, TRUE)) &&
                                             persist->IsDirty() == S_FALSE);
    if (first != nullptr)
        first->Release();
    VARIANT no;
    V_VT(&no) = VT_BOOL;
    V_BOOL(&no) = VARIANT_FALSE;
    VARIANT library;
    V_VT(&library) = VT_BSTR;
    V_BSTR(&library) = SysAllocString(L"C:\\Program Files\\ozADM\\ozRegPOL.dll");
    bool changed =
        SUCCEEDED(Call(dispatch, L"ShowMachine", {&no}, nullptr, DISPATCH_PROPERTYPUT)) &&
        SUCCEEDED(Call(dispatch, L"ozImpExLibrary", {&library}, nullptr, DISPATCH_PROPERTYPUT));
    Check("a changed property makes it dirty", changed && persist->IsDirty() == S_OK);
    Check("Save without clearing leaves it dirty",
          SUCCEEDED(persist->Save(stream, FALSE)) && persist->IsDirty() == S_OK);

    IPersistStreamInit* copy = nullptr;
    IDispatch* copyDispatch = nullptr;
    LARGE_INTEGER start = {};
    VARIANT showMachine, copiedLibrary, showUser;
    VariantInit(&showMachine);
    VariantInit(&copiedLibrary);
    VariantInit(&showUser);
    bool loaded =
        SUCCEEDED(CoCreateInstance(CLSID_ozADMCtrl, nullptr, CLSCTX_INPROC_SERVER,
                                   IID_IPersistStreamInit, reinterpret_cast<void**>(&copy))) &&
        SUCCEEDED(stream->Seek(start, STREAM_SEEK_SET, nullptr)) && SUCCEEDED(copy->Load(stream)) &&
        SUCCEEDED(copy->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&copyDispatch)));
    for (auto [name, value] : {std::pair{L"ShowMachine", &showMachine},
                               {L"ozImpExLibrary", &copiedLibrary},
                               {L"ShowUser", &showUser}})
        loaded = loaded && SUCCEEDED(Call(copyDispatch, name, {}, value, DISPATCH_PROPERTYGET));
    Check("another control loads the saved properties",
          loaded && V_VT(&showMachine) == VT_BOOL && V_BOOL(&showMachine) == VARIANT_FALSE &&
              V_VT(&showUser) == VT_BOOL && V_BOOL(&showUser) == VARIANT_TRUE &&
              V_VT(&copiedLibrary) == VT_BSTR &&
              wcscmp(V_BSTR(&copiedLibrary), V_BSTR(&library)) == 0);
    Check("a control just loaded is not dirty", copy != nullptr && copy->IsDirty() == S_FALSE);

    IStream* garbage = nullptr;
    const char junk[] = "not the control's properties";
    ULONG written = 0;
    bool refused = copy != nullptr && SUCCEEDED(CreateStreamOnHGlobal(nullptr, TRUE, &garbage)) &&
                   SUCCEEDED(garbage->Write(junk, sizeof junk, &written)) &&
                   SUCCEEDED(garbage->Seek(start, STREAM_SEEK_SET, nullptr)) &&
                   FAILED(copy->Load(garbage));
    Check("a stream of something else is refused", refused);

    if (garbage != nullptr)
        garbage->Release();
    VariantClear(&showMachine);
    VariantClear(&copiedLibrary);
    VariantClear(&library);
    if (copyDispatch != nullptr)
        copyDispatch->Release();
    if (copy != nullptr)
        copy->Release();
    stream->Release();
    persist->Release();
    dispatch->Release();
}

void CheckPropertyPage(IUnknown* control)
{
    ISpecifyPropertyPages* specify = nullptr;
    CAUUID pages = {0, nullptr};
    bool named = SUCCEEDED(control->QueryInterface(IID_ISpecifyPropertyPages,
                                                   reinterpret_cast<void**>(&specify))) &&
                 SUCCEEDED(specify->GetPages(&pages)) && pages.cElems == 1 &&
                 IsEqualCLSID(pages.pElems[0], CLSID_ozADMPropPage);
    CoTaskMemFree(pages.pElems);
    if (specify != nullptr)
        specify->Release();
    Check("the control names its property page", named);

    IPropertyPage* page = nullptr;
    PROPPAGEINFO info = {};
    bool created =
        SUCCEEDED(CoCreateInstance(CLSID_ozADMPropPage, nullptr, CLSCTX_INPROC_SERVER,
                                   IID_IPropertyPage, reinterpret_cast<void**>(&page))) &&
        SUCCEEDED(page->GetPageInfo(&info)) && info.pszTitle != nullptr &&
        page->IsPageDirty() == S_FALSE;
    CoTaskMemFree(info.pszTitle);
    if (page != nullptr)
        page->Release();
    Check("the property page is created and describes itself", created);
}

// Gives the host window a size, shows it and hosts the control in it; null on failure.
struct Embedded {
    HWND host = nullptr;
    IUnknown* control = nullptr;
    HWND window = nullptr;
};

Embedded Embed(AtlAxCreateControlFunction create, AtlAxGetControlFunction get, int x)
{
    Embedded embedded;
    embedded.host =
        CreateWindowExW(0, L"STATIC", L"ozADM host", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, x, 0,
                        480, 360, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (embedded.host == nullptr)
        return embedded;
    ShowWindow(embedded.host, SW_SHOW);
    UpdateWindow(embedded.host);
    IUnknown* container = nullptr;
    if (FAILED(create(L"ozADM.ozADMCtrl.1", embedded.host, nullptr, &container)) ||
        FAILED(get(embedded.host, &embedded.control))) {
        if (container != nullptr)
            container->Release();
        return embedded;
    }
    container->Release();
    IOleWindow* oleWindow = nullptr;
    if (SUCCEEDED(embedded.control->QueryInterface(IID_IOleWindow,
                                                   reinterpret_cast<void**>(&oleWindow)))) {
        oleWindow->GetWindow(&embedded.window);
        oleWindow->Release();
    }
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
    Check("the signal for the screenshot is given", file != INVALID_HANDLE_VALUE);
    if (file == INVALID_HANDLE_VALUE)
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

}  // namespace

int wmain(int argc, wchar_t** argv)
{
    if (FAILED(OleInitialize(nullptr)))
        return 2;
    HMODULE atl = LoadLibraryW(L"atl.dll");
    auto atlAxWinInit = Function<AtlAxWinInitFunction>(atl, "AtlAxWinInit");
    auto atlAxCreateControl = Function<AtlAxCreateControlFunction>(atl, "AtlAxCreateControl");
    auto atlAxGetControl = Function<AtlAxGetControlFunction>(atl, "AtlAxGetControl");
    if (atlAxWinInit == nullptr || atlAxCreateControl == nullptr || atlAxGetControl == nullptr ||
        !atlAxWinInit()) {
        std::printf("FAIL atl.dll offers no ActiveX host\n");
        return 1;
    }

    Embedded first = Embed(atlAxCreateControl, atlAxGetControl, 0);
    Check("AtlAxCreateControl hosts the control by ProgID in a shown window",
          first.control != nullptr && IsWindowVisible(first.host));
    if (first.control == nullptr) {
        std::printf("%d failure(s)\n", g_failures);
        return g_failures;
    }
    HWND window = first.window;
    Check("the control is active in place with a visible window",
          IsWindow(window) && IsWindowVisible(window));
    RECT hostArea = {}, controlArea = {};
    GetClientRect(first.host, &hostArea);
    GetClientRect(window, &controlArea);
    Check("the control's window is a child of the host window filling it",
          GetParent(window) == first.host && controlArea.right == hostArea.right &&
              controlArea.bottom == hostArea.bottom);

    CheckChildWindows(first.control, window);
    if (argc > 1)
        WaitForScreenshot(argv[1]);
    CheckKeys(first.control, window);
    CheckEvents(first.control, window);
    CheckPersistence(first.control);
    CheckPropertyPage(first.control);

    Embedded second = Embed(atlAxCreateControl, atlAxGetControl, 500);
    Check("a second control is hosted on the same thread",
          second.control != nullptr && IsWindow(second.window));
    if (second.control != nullptr)
        CheckSecondControl(window, second.window);

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
    std::printf("%d failure(s)\n", g_failures);
    return g_failures;
}
