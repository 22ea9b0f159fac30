// A C++ client of ozADM.ocx, created by ProgID as any early host creates it: the dispatch ids
// its names resolve to, the type and class information, the errors Invoke reports, the array
// results that script engines under test cannot index.
// Arguments: the source folder, the full path of ozRegOZP.dll, a scratch folder (Windows
// paths). Prints every check; the exit code is the number of failed checks.
#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include <cstdio>
#include <vector>

#include "ozComTestClient.h"

namespace {

// The type library's GUID of what info describes, and its kind.
bool Describes(ITypeInfo* info, const GUID& guid, TYPEKIND kind)
{
    TYPEATTR* attributes = nullptr;
    if (info == nullptr || FAILED(info->GetTypeAttr(&attributes)))
        return false;
    bool same = IsEqualGUID(attributes->guid, guid) && attributes->typekind == kind;
    info->ReleaseTypeAttr(attributes);
    return same;
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
    Check("Font, Refresh and AboutBox have the standard dispatch ids",
          Id(control, L"Font") == DISPID_FONT && Id(control, L"Refresh") == DISPID_REFRESH &&
              Id(control, L"AboutBox") == DISPID_ABOUTBOX);
    Check("names are case-insensitive", Id(control, L"sHoWuSeR") == 1);
    DISPID id = 0;
    auto* unknown = const_cast<LPOLESTR>(L"NoSuchMember");
    Check("an unknown name is DISP_E_UNKNOWNNAME",
          control->GetIDsOfNames(IID_NULL, &unknown, 1, 0, &id) == DISP_E_UNKNOWNNAME);

    UINT count = 0;
    Com<ITypeInfo> info, coclass;
    Check("the type information is the dispinterface _DADM",
          SUCCEEDED(control->GetTypeInfoCount(&count)) && count == 1 &&
              SUCCEEDED(control->GetTypeInfo(0, 0, &info.p)) &&
              Describes(info.p, DIID__DADM, TKIND_DISPATCH));
    Com<IProvideClassInfo2> classInfo(control);
    GUID source = GUID_NULL;
    Check("the class information names the coclass and _DADMEvents",
          classInfo && SUCCEEDED(classInfo->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &source)) &&
              IsEqualGUID(source, DIID__DADMEvents) &&
              SUCCEEDED(classInfo->GetClassInfo(&coclass.p)) &&
              Describes(coclass.p, CLSID_ozADMCtrl, TKIND_COCLASS));
}

void CheckInvokeErrors(IDispatch* control)
{
    Variant result;
    Check("a missing argument is DISP_E_BADPARAMCOUNT",
          Call(control, L"SetEBNF", {}, &result) == DISP_E_BADPARAMCOUNT);
    Variant notNumber(L"not a number"), text(L"x");
    UINT argErr = 99;
    Check("an unconvertible argument is DISP_E_TYPEMISMATCH, argErr counting from the last",
          Call(control, L"AddString", {&notNumber, &text}, &result, DISPATCH_METHOD, &argErr) ==
                  DISP_E_TYPEMISMATCH &&
              argErr == 1);
    Variant yes(short(-1));
    Check("ShouldSave cannot be set", Call(control, L"ShouldSave", {&yes}, nullptr,
                                           DISPATCH_PROPERTYPUT) == DISP_E_MEMBERNOTFOUND);
    DISPPARAMS none = {nullptr, nullptr, 0, 0};
    Check("an unknown dispatch id is DISP_E_MEMBERNOTFOUND",
          control->Invoke(999, IID_NULL, 0, DISPATCH_METHOD, &none, &result, nullptr, nullptr) ==
              DISP_E_MEMBERNOTFOUND);
    Variant font;
    Com<IFontDisp> fontDisp;
    Check("Font is a font object",
          SUCCEEDED(Call(control, L"Font", {}, &font, DISPATCH_PROPERTYGET)) &&
              font.vt == VT_DISPATCH && font.pdispVal != nullptr &&
              SUCCEEDED(font.pdispVal->QueryInterface(IID_IFontDisp, fontDisp.Out())));
}

}  // namespace

int wmain(int, wchar_t**)
{
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
