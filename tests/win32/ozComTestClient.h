// What the Windows test clients of ozADM.ocx share: the check report whose failures make the
// exit code, a VARIANT and an interface pointer that release themselves, calls through the
// control's dispatch interface.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cstdio>
#include <vector>

#include "ozADM.h"

// The number of failed checks: the client's exit code.
inline int g_failures = 0;

// Prints the check; failures are counted.
inline bool Check(const char* name, bool condition)
{
    std::printf("%s %s\n", condition ? "ok  " : "FAIL", name);
    std::fflush(stdout);
    if (!condition)
        ++g_failures;
    return condition;
}

// A VARIANT that clears itself.
struct Variant : VARIANT {
    Variant() { VariantInit(this); }
    explicit Variant(const wchar_t* text) : Variant()
    {
        vt = VT_BSTR;
        bstrVal = SysAllocString(text);
    }
    explicit Variant(short number) : Variant()
    {
        vt = VT_I2;
        iVal = number;
    }
    ~Variant() { VariantClear(this); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
};

// An interface pointer that releases itself: the interface T of from (null when from has none),
// or one that Out() receives from a COM call.
template <typename T>
struct Com {
    T* p = nullptr;
    Com() = default;
    explicit Com(IUnknown* from)
    {
        if (from != nullptr)
            from->QueryInterface(__uuidof(T), Out());
    }
    Com(const Com&) = delete;
    Com& operator=(const Com&) = delete;
    ~Com()
    {
        if (p != nullptr)
            p->Release();
    }
    T* operator->() const { return p; }
    explicit operator bool() const { return p != nullptr; }
    void** Out() { return reinterpret_cast<void**>(&p); }
};

// The dispatch id name resolves to; DISPID_UNKNOWN when the control does not know it.
inline DISPID Id(IDispatch* control, const wchar_t* name)
{
    DISPID id = DISPID_UNKNOWN;
    auto* text = const_cast<LPOLESTR>(name);
    if (FAILED(control->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id)))
        return DISPID_UNKNOWN;
    return id;
}

// Invokes name with arguments given first parameter first: a method, or with flags a
// property's get or put (the put's value as the one argument).
inline HRESULT Call(IDispatch* control, const wchar_t* name, std::vector<VARIANT*> arguments,
                    VARIANT* result, WORD flags = DISPATCH_METHOD, UINT* argErr = nullptr)
{
    std::vector<VARIANT> reversed;
    for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument)
        reversed.push_back(**argument);
    DISPPARAMS params = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    DISPID put = DISPID_PROPERTYPUT;
    if (flags == DISPATCH_PROPERTYPUT) {
        params.rgdispidNamedArgs = &put;
        params.cNamedArgs = 1;
    }
    return control->Invoke(Id(control, name), IID_NULL, LOCALE_USER_DEFAULT, flags, &params, result,
                           nullptr, argErr);
}
