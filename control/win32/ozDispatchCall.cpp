#include "ozDispatchCall.h"

#include "ozVariantText.h"

ozDispatchCall::ozDispatchCall(WORD flags, DISPPARAMS* params, VARIANT* result, UINT* argErr)
    : m_flags(flags), m_params(params), m_result(result), m_argErr(argErr)
{
    if (m_result != nullptr)
        VariantInit(m_result);
}

bool ozDispatchCall::IsGet() const
{
    return (m_flags & DISPATCH_PROPERTYGET) != 0;
}

bool ozDispatchCall::IsPut() const
{
    return (m_flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
}

bool ozDispatchCall::IsMethod() const
{
    return (m_flags & (DISPATCH_METHOD | DISPATCH_PROPERTYGET)) != 0;
}

HRESULT ozDispatchCall::CheckCount(UINT count) const
{
    if (m_params->cNamedArgs != 0)
        return DISP_E_NONAMEDARGS;
    return m_params->cArgs == count ? S_OK : DISP_E_BADPARAMCOUNT;
}

HRESULT ozDispatchCall::CheckPut() const
{
    if (m_params->cArgs != 1)
        return DISP_E_BADPARAMCOUNT;
    if (m_params->cNamedArgs != 1 || m_params->rgdispidNamedArgs[0] != DISPID_PROPERTYPUT)
        return DISP_E_PARAMNOTOPTIONAL;
    return S_OK;
}

HRESULT ozDispatchCall::Convert(UINT index, VARTYPE type, VARIANT* converted)
{
    // The arguments are stored last parameter first.
    UINT position = m_params->cArgs - 1 - index;
    VARIANT direct;
    VariantInit(&direct);
    HRESULT hr = VariantCopyInd(&direct, &m_params->rgvarg[position]);
    if (SUCCEEDED(hr))
        hr = VariantChangeType(converted, &direct, 0, type);
    VariantClear(&direct);
    if (FAILED(hr)) {
        if (m_argErr != nullptr)
            *m_argErr = position;
        return hr == E_OUTOFMEMORY ? hr : DISP_E_TYPEMISMATCH;
    }
    return S_OK;
}

HRESULT ozDispatchCall::Argument(UINT index, bool& value)
{
    VARIANT converted;
    VariantInit(&converted);
    HRESULT hr = Convert(index, VT_BOOL, &converted);
    if (SUCCEEDED(hr))
        value = V_BOOL(&converted) != VARIANT_FALSE;
    return hr;
}

HRESULT ozDispatchCall::Argument(UINT index, short& value)
{
    VARIANT converted;
    VariantInit(&converted);
    HRESULT hr = Convert(index, VT_I2, &converted);
    if (SUCCEEDED(hr))
        value = V_I2(&converted);
    return hr;
}

HRESULT ozDispatchCall::Argument(UINT index, long& value)
{
    VARIANT converted;
    VariantInit(&converted);
    HRESULT hr = Convert(index, VT_I4, &converted);
    if (SUCCEEDED(hr))
        value = V_I4(&converted);
    return hr;
}

HRESULT ozDispatchCall::Argument(UINT index, std::string& value)
{
    VARIANT converted;
    VariantInit(&converted);
    HRESULT hr = Convert(index, VT_BSTR, &converted);
    if (SUCCEEDED(hr))
        value = ozTextOf(V_BSTR(&converted));
    VariantClear(&converted);
    return hr;
}

HRESULT ozDispatchCall::Argument(UINT index, IDispatch*& value)
{
    VARIANT converted;
    VariantInit(&converted);
    HRESULT hr = Convert(index, VT_DISPATCH, &converted);
    if (SUCCEEDED(hr)) {
        value = V_DISPATCH(&converted);
        if (value != nullptr)
            value->AddRef();
    }
    VariantClear(&converted);
    return hr;
}

HRESULT ozDispatchCall::Return(bool value)
{
    if (m_result != nullptr) {
        V_VT(m_result) = VT_BOOL;
        V_BOOL(m_result) = value ? VARIANT_TRUE : VARIANT_FALSE;
    }
    return S_OK;
}

HRESULT ozDispatchCall::Return(long value)
{
    if (m_result != nullptr) {
        V_VT(m_result) = VT_I4;
        V_I4(m_result) = value;
    }
    return S_OK;
}

HRESULT ozDispatchCall::Return(const std::string& value)
{
    if (m_result == nullptr)
        return S_OK;
    BSTR text = ozNewBstr(value);
    if (text == nullptr)
        return E_OUTOFMEMORY;
    V_VT(m_result) = VT_BSTR;
    V_BSTR(m_result) = text;
    return S_OK;
}

HRESULT ozDispatchCall::Return(const ozStringArray& value)
{
    return m_result != nullptr ? ozStringArrayVariant(value, m_result) : S_OK;
}

HRESULT ozDispatchCall::Return(IDispatch* value)
{
    if (m_result == nullptr) {
        if (value != nullptr)
            value->Release();
        return S_OK;
    }
    V_VT(m_result) = VT_DISPATCH;
    V_DISPATCH(m_result) = value;
    return S_OK;
}

HRESULT ozDispatchCall::ReturnNothing()
{
    return S_OK;
}
