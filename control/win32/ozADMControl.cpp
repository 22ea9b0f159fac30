#include "ozADMControl.h"

#include <new>

#include "ozADM.h"
#include "ozComModule.h"

HRESULT ozADMControl::Create(REFIID iid, void** object)
{
    ozADMControl* control = nullptr;
    try {
        control = new ozADMControl();
    } catch (...) {
        return E_OUTOFMEMORY;
    }
    HRESULT hr = control->QueryInterface(iid, object);
    control->Release();
    return hr;
}

ozADMControl::ozADMControl()
    : m_control(m_ui, &m_views), m_events(*static_cast<IDispatch*>(this), *this, DIID__DADMEvents)
{
    m_views.Attach(m_control);
    m_persisted = PersistentState();
    ozComModule::ObjectCreated();
}

ozADMControl::~ozADMControl()
{
    // A container that let go without closing the control leaves its window behind.
    if (m_window != nullptr)
        DestroyWindow(m_window);
    for (IUnknown* held :
         {static_cast<IUnknown*>(m_font), static_cast<IUnknown*>(m_clientSite),
          static_cast<IUnknown*>(m_inPlaceSite), static_cast<IUnknown*>(m_adviseHolder),
          static_cast<IUnknown*>(m_viewSink), static_cast<IUnknown*>(m_frame),
          static_cast<IUnknown*>(m_document)})
        if (held != nullptr)
            held->Release();
    ozComModule::ObjectDestroyed();
}

STDMETHODIMP ozADMControl::QueryInterface(REFIID iid, void** object)
{
    if (object == nullptr)
        return E_POINTER;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) ||
        IsEqualIID(iid, DIID__DADM))
        *object = static_cast<IDispatch*>(this);
    else if (IsEqualIID(iid, IID_IProvideClassInfo) || IsEqualIID(iid, IID_IProvideClassInfo2))
        *object = static_cast<IProvideClassInfo2*>(this);
    else if (IsEqualIID(iid, IID_IConnectionPointContainer))
        *object = static_cast<IConnectionPointContainer*>(this);
    else if (IsEqualIID(iid, IID_IOleObject))
        *object = static_cast<IOleObject*>(this);
    else if (IsEqualIID(iid, IID_IOleWindow) || IsEqualIID(iid, IID_IOleInPlaceObject))
        *object = static_cast<IOleInPlaceObject*>(this);
    else if (IsEqualIID(iid, IID_IOleInPlaceActiveObject))
        *object = static_cast<IOleInPlaceActiveObject*>(this);
    else if (IsEqualIID(iid, IID_IOleControl))
        *object = static_cast<IOleControl*>(this);
    else if (IsEqualIID(iid, IID_IViewObject) || IsEqualIID(iid, IID_IViewObject2))
        *object = static_cast<IViewObject2*>(this);
    else if (IsEqualIID(iid, IID_IPersist) || IsEqualIID(iid, IID_IPersistStreamInit))
        *object = static_cast<IPersistStreamInit*>(this);
    else if (IsEqualIID(iid, IID_ISpecifyPropertyPages))
        *object = static_cast<ISpecifyPropertyPages*>(this);
    else {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) ozADMControl::AddRef()
{
    return static_cast<ULONG>(InterlockedIncrement(&m_references));
}

STDMETHODIMP_(ULONG) ozADMControl::Release()
{
    LONG references = InterlockedDecrement(&m_references);
    if (references == 0)
        delete this;
    return static_cast<ULONG>(references);
}

STDMETHODIMP ozADMControl::GetTypeInfoCount(UINT* count)
{
    if (count == nullptr)
        return E_POINTER;
    *count = 1;
    return S_OK;
}

STDMETHODIMP ozADMControl::GetTypeInfo(UINT index, LCID, ITypeInfo** info)
{
    if (info == nullptr)
        return E_POINTER;
    *info = nullptr;
    if (index != 0)
        return DISP_E_BADINDEX;
    return ozComModule::TypeInfo(DIID__DADM, info);
}

STDMETHODIMP ozADMControl::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID,
                                         DISPID* dispids)
{
    if (!IsEqualIID(iid, IID_NULL))
        return DISP_E_UNKNOWNINTERFACE;
    ITypeInfo* info = nullptr;
    HRESULT hr = ozComModule::TypeInfo(DIID__DADM, &info);
    if (FAILED(hr))
        return hr;
    hr = info->GetIDsOfNames(names, count, dispids);
    info->Release();
    return hr;
}

STDMETHODIMP ozADMControl::GetClassInfo(ITypeInfo** info)
{
    return ozComModule::TypeInfo(CLSID_ozADMCtrl, info);
}

STDMETHODIMP ozADMControl::GetGUID(DWORD kind, GUID* guid)
{
    if (guid == nullptr)
        return E_POINTER;
    if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) {
        *guid = GUID_NULL;
        return E_INVALIDARG;
    }
    *guid = DIID__DADMEvents;
    return S_OK;
}

STDMETHODIMP ozADMControl::EnumConnectionPoints(IEnumConnectionPoints** points)
{
    if (points == nullptr)
        return E_POINTER;
    try {
        *points = new ozConnectionPointEnumerator({&m_events});
    } catch (...) {
        *points = nullptr;
        return E_OUTOFMEMORY;
    }
    return S_OK;
}

STDMETHODIMP ozADMControl::FindConnectionPoint(REFIID iid, IConnectionPoint** point)
{
    if (point == nullptr)
        return E_POINTER;
    if (!IsEqualIID(iid, m_events.Events())) {
        *point = nullptr;
        return CONNECT_E_NOCONNECTION;
    }
    m_events.AddRef();
    *point = &m_events;
    return S_OK;
}
