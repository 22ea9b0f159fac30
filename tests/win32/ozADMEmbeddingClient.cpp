// ozADM.ocx embedded in a window by the system's ActiveX host (atl.dll's AtlAxCreateControl,
// as dialog-based hosts embed it): in-place activation creates the control's window inside the
// host window, key presses in it fire KeyDown to an advised sink unless events are frozen, the
// properties survive a stream, the property page is named and creatable, and destroying the
// host window takes the control's window with it. Prints every check; the exit code is the
// number of failed checks.
#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include <cstdio>

#include "ozADM.h"

namespace {

int g_failures = 0;

void Check(const char* name, bool condition)
{
    std::printf("%s %s\n", condition ? "ok  " : "FAIL", name);
    if (!condition)
        ++g_failures;
}

// Records the KeyDown events it receives.
class KeySink final : public IDispatch {
public:
    int calls = 0;
    short keyCode = 0;
    short shift = -1;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override
    {
        if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) ||
            IsEqualIID(iid, DIID__DADMEvents)) {
            *object = static_cast<IDispatch*>(this);
            return S_OK;
        }
        *object = nullptr;
        return E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override
    {
        *count = 0;
        return S_OK;
    }
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
        ++calls;
        keyCode = *V_I2REF(&params->rgvarg[1]);
        shift = V_I2(&params->rgvarg[0]);
        return S_OK;
    }
};

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

// Sets a property through the dispatch interface.
bool Put(IDispatch* control, const wchar_t* name, VARIANT value)
{
    DISPID id = 0;
    auto* text = const_cast<LPOLESTR>(name);
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS params = {&value, &put, 1, 1};
    return SUCCEEDED(control->GetIDsOfNames(IID_NULL, &text, 1, 0, &id)) &&
           SUCCEEDED(control->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYPUT, &params, nullptr,
                                     nullptr, nullptr));
}

bool Get(IDispatch* control, const wchar_t* name, VARIANT* value)
{
    DISPID id = 0;
    auto* text = const_cast<LPOLESTR>(name);
    DISPPARAMS none = {nullptr, nullptr, 0, 0};
    return SUCCEEDED(control->GetIDsOfNames(IID_NULL, &text, 1, 0, &id)) &&
           SUCCEEDED(control->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, value, nullptr,
                                     nullptr));
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
    bool changed = Put(dispatch, L"ShowMachine", no) && Put(dispatch, L"ozImpExLibrary", library);
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
    loaded = loaded && Get(copyDispatch, L"ShowMachine", &showMachine) &&
             Get(copyDispatch, L"ozImpExLibrary", &copiedLibrary) &&
             Get(copyDispatch, L"ShowUser", &showUser);
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

}  // namespace

int main()
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

    HWND host = CreateWindowExW(0, L"STATIC", L"ozADM host", WS_OVERLAPPEDWINDOW, 0, 0, 400, 300,
                                nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    IUnknown* container = nullptr;
    Check("AtlAxCreateControl hosts the control by ProgID",
          host != nullptr &&
              SUCCEEDED(atlAxCreateControl(L"ozADM.ozADMCtrl.1", host, nullptr, &container)));
    IUnknown* control = nullptr;
    Check("the host hands out the control", SUCCEEDED(atlAxGetControl(host, &control)));
    if (control == nullptr) {
        std::printf("%d failure(s)\n", g_failures);
        return g_failures;
    }

    IOleWindow* oleWindow = nullptr;
    HWND window = nullptr;
    Check(
        "the control is active in place with a window",
        SUCCEEDED(control->QueryInterface(IID_IOleWindow, reinterpret_cast<void**>(&oleWindow))) &&
            SUCCEEDED(oleWindow->GetWindow(&window)) && IsWindow(window));
    if (oleWindow != nullptr)
        oleWindow->Release();
    RECT hostArea = {}, controlArea = {};
    GetClientRect(host, &hostArea);
    GetClientRect(window, &controlArea);
    Check("the control's window is a child of the host window filling it",
          GetParent(window) == host && controlArea.right == hostArea.right &&
              controlArea.bottom == hostArea.bottom);

    CheckEvents(control, window);
    CheckPersistence(control);
    CheckPropertyPage(control);

    control->Release();
    if (container != nullptr)
        container->Release();
    DestroyWindow(host);
    Check("the control's window goes with the host window", !IsWindow(window));
    OleUninitialize();
    std::printf("%d failure(s)\n", g_failures);
    return g_failures;
}
