// The control as an embedded object: IOleObject, IOleInPlaceObject and IOleControl. The
// control supports in-place activation only; every showing verb activates it in place, and
// OLEIVERB_UIACTIVATE and OLEIVERB_SHOW make it UI active as well (ozADMControlActive.cpp).
#include <windows.h>

#include "ozADM.h"
#include "ozADMControl.h"

namespace {

// Releases *held and replaces it with value (AddRef'd).
template <typename T>
void Hold(T*& held, T* value)
{
    if (value != nullptr)
        value->AddRef();
    if (held != nullptr)
        held->Release();
    held = value;
}

}  // namespace

STDMETHODIMP ozADMControl::SetClientSite(IOleClientSite* site)
{
    Hold(m_clientSite, site);
    return S_OK;
}

STDMETHODIMP ozADMControl::GetClientSite(IOleClientSite** site)
{
    if (site == nullptr)
        return E_POINTER;
    *site = m_clientSite;
    if (m_clientSite != nullptr)
        m_clientSite->AddRef();
    return S_OK;
}

STDMETHODIMP ozADMControl::SetHostNames(LPCOLESTR, LPCOLESTR)
{
    return S_OK;
}

STDMETHODIMP ozADMControl::Close(DWORD)
{
    // Nothing is saved into the container: the host saves profiles through the methods.
    InPlaceDeactivate();
    if (m_adviseHolder != nullptr)
        m_adviseHolder->SendOnClose();
    return S_OK;
}

STDMETHODIMP ozADMControl::SetMoniker(DWORD, IMoniker*)
{
    return E_NOTIMPL;
}

STDMETHODIMP ozADMControl::GetMoniker(DWORD, DWORD, IMoniker** moniker)
{
    if (moniker != nullptr)
        *moniker = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP ozADMControl::InitFromData(IDataObject*, BOOL, DWORD)
{
    return E_NOTIMPL;
}

STDMETHODIMP ozADMControl::GetClipboardData(DWORD, IDataObject** data)
{
    if (data != nullptr)
        *data = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP ozADMControl::DoVerb(LONG verb, LPMSG, IOleClientSite* site, LONG, HWND,
                                  LPCRECT position)
{
    switch (verb) {
        case OLEIVERB_PRIMARY:
        case OLEIVERB_OPEN:
        case OLEIVERB_INPLACEACTIVATE:
            return ActivateInPlace(site != nullptr ? site : m_clientSite, position);
        case OLEIVERB_SHOW:
        case OLEIVERB_UIACTIVATE: {
            HRESULT hr = ActivateInPlace(site != nullptr ? site : m_clientSite, position);
            return SUCCEEDED(hr) ? ActivateUI() : hr;
        }
        case OLEIVERB_HIDE:
            if (m_window != nullptr)
                ShowWindow(m_window, SW_HIDE);
            return S_OK;
    }
    return OLEOBJ_S_INVALIDVERB;
}

HRESULT ozADMControl::ActivateInPlace(IOleClientSite* site, LPCRECT position)
{
    if (m_window != nullptr) {
        if (position != nullptr)
            SetObjectRects(position, position);
        ShowWindow(m_window, SW_SHOW);
        return S_OK;
    }
    if (site == nullptr)
        return E_UNEXPECTED;
    IOleInPlaceSite* inPlaceSite = nullptr;
    if (FAILED(site->QueryInterface(IID_IOleInPlaceSite, reinterpret_cast<void**>(&inPlaceSite))))
        return E_NOTIMPL;
    HRESULT hr = inPlaceSite->CanInPlaceActivate() == S_OK ? S_OK : E_FAIL;
    HWND parent = nullptr;
    if (SUCCEEDED(hr))
        hr = inPlaceSite->GetWindow(&parent);
    RECT where = {};
    if (SUCCEEDED(hr)) {
        IOleInPlaceFrame* frame = nullptr;
        IOleInPlaceUIWindow* document = nullptr;
        RECT clip = {};
        OLEINPLACEFRAMEINFO frameInfo = {sizeof(OLEINPLACEFRAMEINFO), FALSE, nullptr, nullptr, 0};
        hr = inPlaceSite->GetWindowContext(&frame, &document, &where, &clip, &frameInfo);
        if (frame != nullptr)
            frame->Release();
        if (document != nullptr)
            document->Release();
        if (position != nullptr)
            where = *position;
    }
    if (SUCCEEDED(hr))
        hr = inPlaceSite->OnInPlaceActivate();
    if (SUCCEEDED(hr)) {
        hr = CreateControlWindow(parent, where);
        if (FAILED(hr))
            inPlaceSite->OnInPlaceDeactivate();
    }
    if (FAILED(hr)) {
        inPlaceSite->Release();
        return hr;
    }
    Hold(m_inPlaceSite, inPlaceSite);
    inPlaceSite->Release();
    ShowWindow(m_window, SW_SHOW);
    return S_OK;
}

STDMETHODIMP ozADMControl::EnumVerbs(IEnumOLEVERB** verbs)
{
    if (verbs == nullptr)
        return E_POINTER;
    *verbs = nullptr;
    return OLEOBJ_E_NOVERBS;
}

STDMETHODIMP ozADMControl::Update()
{
    return S_OK;
}

STDMETHODIMP ozADMControl::IsUpToDate()
{
    return S_OK;
}

STDMETHODIMP ozADMControl::GetUserClassID(CLSID* clsid)
{
    if (clsid == nullptr)
        return E_POINTER;
    *clsid = CLSID_ozADMCtrl;
    return S_OK;
}

STDMETHODIMP ozADMControl::GetUserType(DWORD form, LPOLESTR* type)
{
    return OleRegGetUserType(CLSID_ozADMCtrl, form, type);
}

STDMETHODIMP ozADMControl::SetExtent(DWORD aspect, SIZEL* size)
{
    if (aspect != DVASPECT_CONTENT)
        return DV_E_DVASPECT;
    if (size == nullptr)
        return E_POINTER;
    m_extent = *size;
    return S_OK;
}

STDMETHODIMP ozADMControl::GetExtent(DWORD aspect, SIZEL* size)
{
    if (aspect != DVASPECT_CONTENT)
        return DV_E_DVASPECT;
    if (size == nullptr)
        return E_POINTER;
    *size = m_extent;
    return S_OK;
}

STDMETHODIMP ozADMControl::Advise(IAdviseSink* sink, DWORD* connection)
{
    if (m_adviseHolder == nullptr && FAILED(CreateOleAdviseHolder(&m_adviseHolder)))
        return E_OUTOFMEMORY;
    return m_adviseHolder->Advise(sink, connection);
}

STDMETHODIMP ozADMControl::Unadvise(DWORD connection)
{
    return m_adviseHolder != nullptr ? m_adviseHolder->Unadvise(connection) : OLE_E_NOCONNECTION;
}

STDMETHODIMP ozADMControl::EnumAdvise(IEnumSTATDATA** advises)
{
    if (advises == nullptr)
        return E_POINTER;
    *advises = nullptr;
    return m_adviseHolder != nullptr ? m_adviseHolder->EnumAdvise(advises) : S_OK;
}

STDMETHODIMP ozADMControl::GetMiscStatus(DWORD, DWORD* status)
{
    if (status == nullptr)
        return E_POINTER;
    *status = OzMiscStatus;
    return S_OK;
}

STDMETHODIMP ozADMControl::SetColorScheme(LOGPALETTE*)
{
    return E_NOTIMPL;
}

STDMETHODIMP ozADMControl::GetWindow(HWND* window)
{
    if (window == nullptr)
        return E_POINTER;
    *window = m_window;
    return m_window != nullptr ? S_OK : E_FAIL;
}

STDMETHODIMP ozADMControl::ContextSensitiveHelp(BOOL)
{
    return E_NOTIMPL;
}

STDMETHODIMP ozADMControl::InPlaceDeactivate()
{
    UIDeactivate();
    if (m_window != nullptr)
        DestroyWindow(m_window);
    m_window = nullptr;
    if (m_inPlaceSite != nullptr) {
        IOleInPlaceSite* site = m_inPlaceSite;
        m_inPlaceSite = nullptr;
        site->OnInPlaceDeactivate();
        site->Release();
    }
    return S_OK;
}

STDMETHODIMP ozADMControl::SetObjectRects(LPCRECT position, LPCRECT)
{
    if (position == nullptr)
        return E_POINTER;
    if (m_window != nullptr)
        MoveWindow(m_window, position->left, position->top, position->right - position->left,
                   position->bottom - position->top, TRUE);
    return S_OK;
}

STDMETHODIMP ozADMControl::ReactivateAndUndo()
{
    return E_NOTIMPL;
}

STDMETHODIMP ozADMControl::GetControlInfo(CONTROLINFO* info)
{
    if (info == nullptr)
        return E_POINTER;
    info->cb = sizeof(CONTROLINFO);
    info->hAccel = nullptr;
    info->cAccel = 0;
    info->dwFlags = 0;
    return S_OK;
}

STDMETHODIMP ozADMControl::OnMnemonic(MSG*)
{
    return E_NOTIMPL;
}

STDMETHODIMP ozADMControl::OnAmbientPropertyChange(DISPID)
{
    return S_OK;
}

STDMETHODIMP ozADMControl::FreezeEvents(BOOL freeze)
{
    if (freeze)
        ++m_frozenEvents;
    else if (m_frozenEvents > 0)
        --m_frozenEvents;
    return S_OK;
}
