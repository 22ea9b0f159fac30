// IDispatch::Invoke of the control: each dispatch id of _DADM mapped to its CADMCtrl member.
#include <exception>
#include <new>

#include "ozADMControl.h"
#include "ozDispatchCall.h"

namespace {

// A read-write property: get returns get(), put converts its value to T and calls put.
template <typename T, typename Get, typename Put>
HRESULT Property(ozDispatchCall& call, Get get, Put put)
{
    if (call.IsPut()) {
        T value{};
        HRESULT hr = call.PutValue(value);
        if (SUCCEEDED(hr))
            put(value);
        return hr;
    }
    if (call.IsGet()) {
        HRESULT hr = call.Arguments();
        return SUCCEEDED(hr) ? call.Return(get()) : hr;
    }
    return DISP_E_MEMBERNOTFOUND;
}

template <typename Get>
HRESULT ReadOnlyProperty(ozDispatchCall& call, Get get)
{
    if (!call.IsGet() || call.IsPut())
        return DISP_E_MEMBERNOTFOUND;
    HRESULT hr = call.Arguments();
    return SUCCEEDED(hr) ? call.Return(get()) : hr;
}

}  // namespace

STDMETHODIMP ozADMControl::Invoke(DISPID dispid, REFIID iid, LCID, WORD flags, DISPPARAMS* params,
                                  VARIANT* result, EXCEPINFO*, UINT* argErr)
{
    if (!IsEqualIID(iid, IID_NULL))
        return DISP_E_UNKNOWNINTERFACE;
    if (params == nullptr)
        return E_POINTER;
    ozDispatchCall call(flags, params, result, argErr);
    // Nothing may leave through the COM boundary as a C++ exception.
    try {
        if (dispid == DISPID_FONT)
            return InvokeFont(call);
        if (dispid >= DispidShowUser && dispid <= DispidConfiguredPolicies)
            return InvokeProperty(dispid, call);
        if (!call.IsMethod())
            return DISP_E_MEMBERNOTFOUND;
        return InvokeMethod(dispid, call);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_UNEXPECTED;
    }
}

HRESULT ozADMControl::InvokeProperty(DISPID dispid, ozDispatchCall& call)
{
    CADMCtrl& c = m_control;
    switch (dispid) {
        case DispidShowUser:
            return Property<bool>(
                call, [&] { return c.ShowUser(); }, [&](bool v) { c.ShowUser(v); });
        case DispidShowMachine:
            return Property<bool>(
                call, [&] { return c.ShowMachine(); }, [&](bool v) { c.ShowMachine(v); });
        case DispidWithADMEdit:
            return Property<bool>(
                call, [&] { return c.WithADMEdit(); }, [&](bool v) { c.WithADMEdit(v); });
        case DispidShouldSave:
            return ReadOnlyProperty(call, [&] { return c.ShouldSave(); });
        case DispidImpExLibrary:
            return Property<std::string>(
                call, [&] { return c.ozImpExLibrary(); },
                [&](const std::string& v) { c.ozImpExLibrary(v); });
        case DispidVariableStart:
            return Property<std::string>(
                call, [&] { return c.ozVariableStart(); },
                [&](const std::string& v) { c.ozVariableStart(v); });
        case DispidVariableEnd:
            return Property<std::string>(
                call, [&] { return c.ozVariableEnd(); },
                [&](const std::string& v) { c.ozVariableEnd(v); });
        case DispidConfiguredPolicies:
            return ReadOnlyProperty(call, [&] { return c.ConfiguredPolicies(); });
    }
    return DISP_E_MEMBERNOTFOUND;
}

HRESULT ozADMControl::InvokeMethod(DISPID dispid, ozDispatchCall& call)
{
    CADMCtrl& c = m_control;
    HRESULT hr = S_OK;
    std::string text, other;
    short number = 0, more = 0;
    bool flag = false;
    switch (dispid) {
        case DispidReset:
            if (FAILED(hr = call.Arguments()))
                return hr;
            c.Reset();
            return call.ReturnNothing();
        case DispidSave:
            if (FAILED(hr = call.Arguments(text, other)))
                return hr;
            return call.Return(c.Save(text.c_str(), other.c_str()));
        case DispidLoad:
            if (FAILED(hr = call.Arguments(text, other)))
                return hr;
            return call.Return(c.Load(text.c_str(), other.c_str()));
        case DispidCleanup:
            if (FAILED(hr = call.Arguments()))
                return hr;
            c.Cleanup();
            return call.ReturnNothing();
        case DispidSetEBNF:
            if (FAILED(hr = call.Arguments(text)))
                return hr;
            return call.Return(c.SetEBNF(text.c_str()));
        case DispidSetADM:
            if (FAILED(hr = call.Arguments(text)))
                return hr;
            return call.Return(c.SetADM(text.c_str()));
        case DispidLoadOZReg:
            if (FAILED(hr = call.Arguments(text)))
                return hr;
            return call.Return(c.LoadOZReg(text.c_str()));
        case DispidAddString:
            if (FAILED(hr = call.Arguments(number, text)))
                return hr;
            return call.Return(c.AddString(static_cast<unsigned short>(number), text.c_str()));
        case DispidGetString:
            if (FAILED(hr = call.Arguments(number)))
                return hr;
            return call.Return(c.GetString(static_cast<unsigned short>(number)));
        case DispidGetCode:
            if (FAILED(hr = call.Arguments()))
                return hr;
            // The dispatch interface has a long here: the address is truncated to its low 32 bits.
            // Hosts may compare it with 0 and with earlier results, never use it as a pointer.
            return call.Return(static_cast<long>(static_cast<std::uint32_t>(c.GetCode())));
        case DISPID_REFRESH:
            if (FAILED(hr = call.Arguments()))
                return hr;
            Layout();
            return call.ReturnNothing();
        case DispidSaveSelState:
            if (FAILED(hr = call.Arguments()))
                return hr;
            return call.Return(c.SaveSelState());
        case DispidWriteReport:
            if (FAILED(hr = call.Arguments(text, number, flag)))
                return hr;
            return call.Return(c.WriteReport(text.c_str(), number, flag));
        case DispidShowLegend:
            if (FAILED(hr = call.Arguments()))
                return hr;
            c.ShowLegend();
            return call.ReturnNothing();
        case DispidSendKeyDown:
            if (FAILED(hr = call.Arguments(number, more)))
                return hr;
            return call.Return(c.SendKeyDown(number, more));
        case DispidSendKeyUp:
            if (FAILED(hr = call.Arguments(number, more)))
                return hr;
            return call.Return(c.SendKeyUp(number, more));
        case DispidWriteADM:
            if (FAILED(hr = call.Arguments(text)))
                return hr;
            return call.Return(c.WriteADM(text.c_str()));
        case DispidInsert:
            if (FAILED(hr = call.Arguments()))
                return hr;
            return call.Return(c.ozInsert());
        case DispidDelete:
            if (FAILED(hr = call.Arguments()))
                return hr;
            return call.Return(c.ozDelete());
        case DispidSRShowSearch:
            if (FAILED(hr = call.Arguments()))
                return hr;
            return call.Return(c.ozSRShowSearch());
        case DispidSRShowReplace:
            if (FAILED(hr = call.Arguments()))
                return hr;
            return call.Return(c.ozSRShowReplace());
        case DispidSRHide:
            if (FAILED(hr = call.Arguments()))
                return hr;
            return call.Return(c.ozSRHide());
        case DispidAddFromRegistry: {
            long root = 0;
            if (FAILED(hr = call.Arguments(root, text, other, flag)))
                return hr;
            return call.Return(c.AddFromRegistry(root, text.c_str(), other.c_str(), flag));
        }
        case DispidShowImportReg:
            if (FAILED(hr = call.Arguments()))
                return hr;
            return call.Return(c.ShowImportReg());
        case DispidPolicyConfigures:
            if (FAILED(hr = call.Arguments(text)))
                return hr;
            return call.Return(c.PolicyConfigures(text.c_str()));
        case DISPID_ABOUTBOX:
            if (FAILED(hr = call.Arguments()))
                return hr;
            c.AboutBox();
            return call.ReturnNothing();
    }
    return DISP_E_MEMBERNOTFOUND;
}

HRESULT ozADMControl::InvokeFont(ozDispatchCall& call)
{
    if (call.IsPut()) {
        IDispatch* object = nullptr;
        HRESULT hr = call.PutValue(object);
        if (FAILED(hr))
            return hr;
        IFontDisp* font = nullptr;
        if (object != nullptr) {
            hr = object->QueryInterface(IID_IFontDisp, reinterpret_cast<void**>(&font));
            object->Release();
            if (FAILED(hr))
                return DISP_E_TYPEMISMATCH;
        }
        if (m_font != nullptr)
            m_font->Release();
        m_font = font;
        return S_OK;
    }
    if (!call.IsGet())
        return DISP_E_MEMBERNOTFOUND;
    if (HRESULT hr = call.Arguments(); FAILED(hr))
        return hr;
    if (m_font == nullptr) {
        // The ambient default of dialogs: 8 point MS Sans Serif.
        wchar_t face[] = L"MS Sans Serif";
        FONTDESC description = {sizeof(FONTDESC), face,  {{80000, 0}}, FW_NORMAL,
                                ANSI_CHARSET,     FALSE, FALSE,        FALSE};
        HRESULT hr =
            OleCreateFontIndirect(&description, IID_IFontDisp, reinterpret_cast<void**>(&m_font));
        if (FAILED(hr))
            return hr;
    }
    m_font->AddRef();
    return call.Return(static_cast<IDispatch*>(m_font));
}
