// What the Windows test clients of ozADM.ocx share: the check report whose failures make the
// exit code, a VARIANT that clears itself, and calls through the control's dispatch interface.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cstdio>
#include <vector>

// The number of failed checks: the client's exit code.
inline int g_failures = 0;

// Prints the check; failures are counted.
inline void Check(const char* name, bool condition)
{
    std::printf("%s %s\n", condition ? "ok  " : "FAIL", name);
    std::fflush(stdout);
    if (!condition)
        ++g_failures;
}

// A VARIANT that clears itself.
struct Variant : VARIANT {
    Variant() { VariantInit(this); }
    ~Variant() { VariantClear(this); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
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
