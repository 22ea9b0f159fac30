// One IDispatch::Invoke call as the control's dispatch code sees it: which form it has
// (property get, property put, method), its positional arguments converted to the parameter
// types with VariantChangeType (by-reference arguments, as VBScript passes variables, are
// read through), and the result. Failures are the HRESULTs Invoke returns: a wrong argument
// count is DISP_E_BADPARAMCOUNT, named arguments on a method DISP_E_NONAMEDARGS, an argument
// that cannot be converted DISP_E_TYPEMISMATCH with its index in *argErr.
#pragma once

#include <windows.h>

#include <oaidl.h>
#include <string>

#include "control/ozStringArray.h"

class ozDispatchCall {
public:
    ozDispatchCall(WORD flags, DISPPARAMS* params, VARIANT* result, UINT* argErr);

    // A property read: scripts may also read a property with the method flag set.
    bool IsGet() const;
    bool IsPut() const;
    // A method call; "x = obj.Method" arrives as a property get, which is accepted too.
    bool IsMethod() const;

    // Converts the positional arguments, first parameter first; their number must match.
    template <typename... T>
    HRESULT Arguments(T&... values)
    {
        HRESULT hr = CheckCount(sizeof...(T));
        UINT index = 0;
        (void)index;  // unused when there are no parameters
        ((hr = SUCCEEDED(hr) ? Argument(index++, values) : hr), ...);
        return hr;
    }
    // The value of a property put (one argument named DISPID_PROPERTYPUT).
    template <typename T>
    HRESULT PutValue(T& value)
    {
        HRESULT hr = CheckPut();
        return SUCCEEDED(hr) ? Argument(0, value) : hr;
    }

    // The result (ignored when the caller wants none). BOOL results are VARIANT_BOOL.
    HRESULT Return(bool value);
    HRESULT Return(long value);
    HRESULT Return(const std::string& value);
    HRESULT Return(const ozStringArray& value);
    // Takes over the reference of value (released when there is no result to take it).
    HRESULT Return(IDispatch* value);
    HRESULT ReturnNothing();

    HRESULT Argument(UINT index, bool& value);
    HRESULT Argument(UINT index, short& value);
    HRESULT Argument(UINT index, long& value);
    HRESULT Argument(UINT index, std::string& value);
    // An object argument, AddRef'd (null for Nothing).
    HRESULT Argument(UINT index, IDispatch*& value);

private:
    HRESULT CheckCount(UINT count) const;
    HRESULT CheckPut() const;
    // The argument at index (0 is the first parameter) converted to type in *converted,
    // which the caller clears.
    HRESULT Convert(UINT index, VARTYPE type, VARIANT* converted);

    WORD m_flags;
    DISPPARAMS* m_params;
    VARIANT* m_result;
    UINT* m_argErr;
};
