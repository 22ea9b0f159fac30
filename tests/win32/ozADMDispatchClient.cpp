// A C++ client of ozADM.ocx, created by ProgID as any early host creates it: the dispatch ids
// its names resolve to, the array results that script engines under test cannot index, the
// errors Invoke reports, and the event connection point. Arguments: the source folder, the
// full path of ozRegOZP.dll, a scratch folder (Windows paths). Prints every check; the exit
// code is the number of failed checks.
#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include <cstdio>
#include <string>
#include <vector>

#include "ozADM.h"
#include "ozComTestClient.h"

namespace {

struct Argument : Variant {
    explicit Argument(const std::wstring& text)
    {
        vt = VT_BSTR;
        bstrVal = SysAllocString(text.c_str());
    }
    explicit Argument(short number)
    {
        vt = VT_I2;
        iVal = number;
    }
};

bool CallTrue(IDispatch* control, const wchar_t* name, std::vector<VARIANT*> arguments)
{
    Variant result;
    return SUCCEEDED(Call(control, name, arguments, &result)) && result.vt == VT_BOOL &&
           result.boolVal == VARIANT_TRUE;
}

// The elements of a VT_ARRAY | VT_BSTR result with lower bound 0; false for any other form.
bool Strings(const VARIANT& value, std::vector<std::wstring>& elements)
{
    elements.clear();
    if (value.vt != (VT_ARRAY | VT_BSTR) || SafeArrayGetDim(value.parray) != 1)
        return false;
    LONG lower = -1, upper = -1;
    SafeArrayGetLBound(value.parray, 1, &lower);
    SafeArrayGetUBound(value.parray, 1, &upper);
    if (lower != 0)
        return false;
    for (LONG index = 0; index <= upper; ++index) {
        BSTR element = nullptr;
        if (FAILED(SafeArrayGetElement(value.parray, &index, &element)))
            return false;
        elements.emplace_back(element, SysStringLen(element));
        SysFreeString(element);
    }
    return true;
}

void CheckDispatchIds(IDispatch* control)
{
    const wchar_t* names[] = {L"ShowUser",       L"ShowMachine",
                              L"WithADMEdit",    L"ShouldSave",
                              L"ozImpExLibrary", L"ozVariableStart",
                              L"ozVariableEnd",  L"ConfiguredPolicies",
                              L"Reset",          L"Save",
                              L"Load",           L"Cleanup",
                              L"SetEBNF",        L"SetADM",
                              L"LoadOZReg",      L"AddString",
                              L"GetString",      L"GetCode",
                              L"SaveSelState",   L"WriteReport",
                              L"ShowLegend",     L"SendKeyDown",
                              L"SendKeyUp",      L"WriteADM",
                              L"ozInsert",       L"ozDelete",
                              L"ozSRShowSearch", L"ozSRShowReplace",
                              L"ozSRHide",       L"AddFromRegistry",
                              L"ShowImportReg",  L"PolicyConfigures"};
    bool inOrder = true;
    for (DISPID expected = 1; const wchar_t* name : names) {
        DISPID id = Id(control, name);
        if (id != expected++) {
            std::printf("     %ls is %ld\n", name, static_cast<long>(id));
            inOrder = false;
        }
    }
    Check("the dispatch ids follow the declaration order from 1", inOrder);
    Check("Font is DISPID_FONT", Id(control, L"Font") == DISPID_FONT);
    Check("Refresh is DISPID_REFRESH", Id(control, L"Refresh") == DISPID_REFRESH);
    Check("AboutBox is DISPID_ABOUTBOX", Id(control, L"AboutBox") == DISPID_ABOUTBOX);
    Check("names are case-insensitive", Id(control, L"sHoWuSeR") == 1);
    DISPID id = 0;
    auto* unknown = const_cast<LPOLESTR>(L"NoSuchMember");
    Check("an unknown name is DISP_E_UNKNOWNNAME",
          control->GetIDsOfNames(IID_NULL, &unknown, 1, 0, &id) == DISP_E_UNKNOWNNAME);

    UINT count = 0;
    ITypeInfo* info = nullptr;
    TYPEATTR* attributes = nullptr;
    bool described =
        SUCCEEDED(control->GetTypeInfoCount(&count)) && count == 1 &&
        SUCCEEDED(control->GetTypeInfo(0, 0, &info)) && SUCCEEDED(info->GetTypeAttr(&attributes)) &&
        IsEqualGUID(attributes->guid, DIID__DADM) && attributes->typekind == TKIND_DISPATCH;
    if (attributes != nullptr)
        info->ReleaseTypeAttr(attributes);
    if (info != nullptr)
        info->Release();
    Check("the type information is the dispinterface _DADM", described);

    IProvideClassInfo2* classInfo = nullptr;
    GUID source = GUID_NULL;
    bool provided = SUCCEEDED(control->QueryInterface(IID_IProvideClassInfo2,
                                                      reinterpret_cast<void**>(&classInfo))) &&
                    SUCCEEDED(classInfo->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &source)) &&
                    IsEqualGUID(source, DIID__DADMEvents);
    info = nullptr;
    attributes = nullptr;
    provided = provided && SUCCEEDED(classInfo->GetClassInfo(&info)) &&
               SUCCEEDED(info->GetTypeAttr(&attributes)) &&
               IsEqualGUID(attributes->guid, CLSID_ozADMCtrl);
    if (attributes != nullptr)
        info->ReleaseTypeAttr(attributes);
    if (info != nullptr)
        info->Release();
    if (classInfo != nullptr)
        classInfo->Release();
    Check("the class information names the coclass and _DADMEvents", provided);
}

void CheckInvokeErrors(IDispatch* control)
{
    Variant result;
    Check("a missing argument is DISP_E_BADPARAMCOUNT",
          Call(control, L"SetEBNF", {}, &result) == DISP_E_BADPARAMCOUNT);
    Argument notNumber(std::wstring(L"not a number")), text(std::wstring(L"x"));
    UINT argErr = 99;
    Check("an unconvertible argument is DISP_E_TYPEMISMATCH",
          Call(control, L"AddString", {&notNumber, &text}, &result, DISPATCH_METHOD, &argErr) ==
              DISP_E_TYPEMISMATCH);
    Check("argErr counts from the last argument", argErr == 1);
    Argument yes(short(-1));
    Check("ShouldSave cannot be set", Call(control, L"ShouldSave", {&yes}, nullptr,
                                           DISPATCH_PROPERTYPUT) == DISP_E_MEMBERNOTFOUND);
    DISPPARAMS none = {nullptr, nullptr, 0, 0};
    Check("an unknown dispatch id is DISP_E_MEMBERNOTFOUND",
          control->Invoke(999, IID_NULL, 0, DISPATCH_METHOD, &none, &result, nullptr, nullptr) ==
              DISP_E_MEMBERNOTFOUND);

    Variant font;
    IFontDisp* fontDisp = nullptr;
    bool isFont = SUCCEEDED(Call(control, L"Font", {}, &font, DISPATCH_PROPERTYGET)) &&
                  font.vt == VT_DISPATCH && font.pdispVal != nullptr &&
                  SUCCEEDED(font.pdispVal->QueryInterface(IID_IFontDisp,
                                                          reinterpret_cast<void**>(&fontDisp)));
    if (fontDisp != nullptr)
        fontDisp->Release();
    Check("Font is a font object", isFont);
}

void CheckPolicyQueries(IDispatch* control, const std::wstring& source, const std::wstring& library,
                        const std::wstring& scratch)
{
    Variant empty;
    Check("ConfiguredPolicies is VT_EMPTY without templates",
          SUCCEEDED(Call(control, L"ConfiguredPolicies", {}, &empty, DISPATCH_PROPERTYGET)) &&
              empty.vt == VT_EMPTY);

    Argument grammar(source + L"\\grammar\\adm.bnf");
    Argument templateFile(source + L"\\tests\\templates\\every-part.adm");
    Argument libraryPath(library);
    Check("the session starts", CallTrue(control, L"SetEBNF", {&grammar}) &&
                                    CallTrue(control, L"SetADM", {&templateFile}) &&
                                    SUCCEEDED(Call(control, L"ozImpExLibrary", {&libraryPath},
                                                   nullptr, DISPATCH_PROPERTYPUT)));

    std::vector<std::wstring> elements;
    Variant none;
    Check("ConfiguredPolicies is an array without elements when nothing is configured",
          SUCCEEDED(Call(control, L"ConfiguredPolicies", {}, &none, DISPATCH_PROPERTYGET)) &&
              Strings(none, elements) && elements.empty());

    // A user profile that enables one policy.
    std::wstring profile = scratch + L"\\client-user.ozp";
    const char text[] =
        "OZ Registry Profile 1\n"
        "[HKEY_CURRENT_USER\\Software\\Policies\\ozADM\\Desktop\\Colors]\n"
        "key op=I flags=\n"
        "value \"Colors\" type=1 item=r op=D data=\"\"\n";
    HANDLE file = CreateFileW(profile.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    bool saved = file != INVALID_HANDLE_VALUE &&
                 WriteFile(file, text, sizeof text - 1, &written, nullptr) &&
                 written == sizeof text - 1;
    if (file != INVALID_HANDLE_VALUE)
        CloseHandle(file);
    Argument user(profile), machine(std::wstring(L""));
    Check("a profile enabling one policy loads",
          saved && CallTrue(control, L"Load", {&user, &machine}));

    Variant configured;
    Check("ConfiguredPolicies lists the enabled policy",
          SUCCEEDED(Call(control, L"ConfiguredPolicies", {}, &configured, DISPATCH_PROPERTYGET)) &&
              Strings(configured, elements) && elements.size() == 1 &&
              elements[0] == L"+ USER\\Desktop\\High-contrast colors");

    Argument policy(std::wstring(L"USER\\Desktop\\High-contrast colors"));
    Variant entries;
    Check("PolicyConfigures lists the policy's registry entry",
          SUCCEEDED(Call(control, L"PolicyConfigures", {&policy}, &entries)) &&
              Strings(entries, elements) && elements.size() == 1 &&
              elements[0].find(L"Colors") != std::wstring::npos);
    Argument category(std::wstring(L"MACHINE\\Network"));
    Variant nothing;
    Check("PolicyConfigures of a category is VT_EMPTY",
          SUCCEEDED(Call(control, L"PolicyConfigures", {&category}, &nothing)) &&
              nothing.vt == VT_EMPTY);
}

// An event sink that counts its references; it answers for the event interface only when
// asked to.
class Sink final : public IDispatch {
public:
    explicit Sink(bool answersEvents) : m_answersEvents(answersEvents) {}
    LONG References() const { return m_references; }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override
    {
        if (IsEqualIID(iid, IID_IUnknown) ||
            (m_answersEvents &&
             (IsEqualIID(iid, DIID__DADMEvents) || IsEqualIID(iid, IID_IDispatch)))) {
            *object = static_cast<IDispatch*>(this);
            AddRef();
            return S_OK;
        }
        *object = nullptr;
        return E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++m_references); }
    STDMETHODIMP_(ULONG) Release() override { return static_cast<ULONG>(--m_references); }
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
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                        UINT*) override
    {
        return S_OK;
    }

private:
    bool m_answersEvents;
    LONG m_references = 1;
};

void CheckEvents(IDispatch* control)
{
    IConnectionPointContainer* container = nullptr;
    IConnectionPoint* point = nullptr;
    IConnectionPoint* other = nullptr;
    bool found = SUCCEEDED(control->QueryInterface(IID_IConnectionPointContainer,
                                                   reinterpret_cast<void**>(&container))) &&
                 SUCCEEDED(container->FindConnectionPoint(DIID__DADMEvents, &point));
    Check("the container has a connection point for _DADMEvents", found);
    if (!found) {
        if (container != nullptr)
            container->Release();
        return;
    }
    Check(
        "no connection point for another interface",
        container->FindConnectionPoint(IID_IPropertyNotifySink, &other) == CONNECT_E_NOCONNECTION &&
            other == nullptr);
    IID iid = IID_NULL;
    Check("the connection point names _DADMEvents",
          SUCCEEDED(point->GetConnectionInterface(&iid)) && IsEqualIID(iid, DIID__DADMEvents));

    IEnumConnectionPoints* points = nullptr;
    IConnectionPoint* listed[2] = {};
    ULONG fetched = 0;
    bool enumerated = SUCCEEDED(container->EnumConnectionPoints(&points)) &&
                      points->Next(2, listed, &fetched) == S_FALSE && fetched == 1 &&
                      listed[0] == point;
    if (listed[0] != nullptr)
        listed[0]->Release();
    if (points != nullptr)
        points->Release();
    Check("the enumeration lists that one connection point", enumerated);

    Sink sink(true), deaf(false);
    DWORD first = 0, second = 0, refused = 99;
    Check("Advise connects a sink", SUCCEEDED(point->Advise(&sink, &first)) && first != 0);
    Check("a second Advise gets another cookie",
          SUCCEEDED(point->Advise(&sink, &second)) && second != 0 && second != first);
    Check("the connections hold the sink", sink.References() == 3);
    Check("a sink without the event interface is refused",
          point->Advise(&deaf, &refused) == CONNECT_E_CANNOTCONNECT && refused == 0);
    Check("Unadvise disconnects", point->Unadvise(first) == S_OK);
    Check("the same cookie again is CONNECT_E_NOCONNECTION",
          point->Unadvise(first) == CONNECT_E_NOCONNECTION);
    Check("Unadvise of the second cookie", point->Unadvise(second) == S_OK);
    Check("the sink is released", sink.References() == 1 && deaf.References() == 1);
    point->Release();
    container->Release();
}

}  // namespace

int wmain(int argc, wchar_t** argv)
{
    if (argc != 4) {
        std::fprintf(stderr, "usage: ozADMDispatchClient SOURCE_DIR OZP_LIBRARY SCRATCH_DIR\n");
        return 2;
    }
    if (FAILED(CoInitialize(nullptr)))
        return 2;
    CLSID clsid = CLSID_NULL;
    IDispatch* control = nullptr;
    Check("the ProgID names the control class",
          SUCCEEDED(CLSIDFromProgID(L"ozADM.ozADMCtrl.1", &clsid)) &&
              IsEqualCLSID(clsid, CLSID_ozADMCtrl));
    Check("CoCreateInstance creates the control",
          SUCCEEDED(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                     reinterpret_cast<void**>(&control))));
    if (control != nullptr) {
        CheckDispatchIds(control);
        CheckInvokeErrors(control);
        CheckPolicyQueries(control, argv[1], argv[2], argv[3]);
        CheckEvents(control);
        // The module counts its objects: it stays while one lives.
        using CanUnloadFunction = HRESULT(WINAPI*)();
        auto canUnload = reinterpret_cast<CanUnloadFunction>(reinterpret_cast<void (*)()>(
            GetProcAddress(GetModuleHandleW(L"ozADM.ocx"), "DllCanUnloadNow")));
        Check("DllCanUnloadNow is S_FALSE while the control lives",
              canUnload != nullptr && canUnload() == S_FALSE);
        control->Release();
        Check("DllCanUnloadNow is S_OK once it is released",
              canUnload != nullptr && canUnload() == S_OK);
    }
    CoUninitialize();
    std::printf("%d failure(s)\n", g_failures);
    return g_failures;
}
