#include "ozConnectionPoint.h"

#include <olectl.h>

#include "ozComModule.h"

ozConnectionPoint::ozConnectionPoint(IUnknown& owner, IConnectionPointContainer& container,
                                     REFIID events)
    : m_owner(owner), m_container(container), m_events(events)
{
}

ozConnectionPoint::~ozConnectionPoint()
{
    for (auto& [cookie, sink] : m_sinks)
        sink->Release();
}

STDMETHODIMP ozConnectionPoint::QueryInterface(REFIID iid, void** object)
{
    if (object == nullptr)
        return E_POINTER;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IConnectionPoint)) {
        *object = static_cast<IConnectionPoint*>(this);
        AddRef();
        return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
}

STDMETHODIMP_(ULONG) ozConnectionPoint::AddRef()
{
    return m_owner.AddRef();
}

STDMETHODIMP_(ULONG) ozConnectionPoint::Release()
{
    return m_owner.Release();
}

STDMETHODIMP ozConnectionPoint::GetConnectionInterface(IID* iid)
{
    if (iid == nullptr)
        return E_POINTER;
    *iid = m_events;
    return S_OK;
}

STDMETHODIMP ozConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container)
{
    if (container == nullptr)
        return E_POINTER;
    m_container.AddRef();
    *container = &m_container;
    return S_OK;
}

STDMETHODIMP ozConnectionPoint::Advise(IUnknown* sink, DWORD* cookie)
{
    if (cookie == nullptr)
        return E_POINTER;
    *cookie = 0;
    if (sink == nullptr)
        return E_POINTER;
    IDispatch* events = nullptr;
    if (FAILED(sink->QueryInterface(m_events, reinterpret_cast<void**>(&events))) &&
        FAILED(sink->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&events))))
        return CONNECT_E_CANNOTCONNECT;
    try {
        m_sinks.emplace_back(m_nextCookie, events);
    } catch (...) {
        events->Release();
        return E_OUTOFMEMORY;
    }
    *cookie = m_nextCookie++;
    return S_OK;
}

STDMETHODIMP ozConnectionPoint::Unadvise(DWORD cookie)
{
    for (auto entry = m_sinks.begin(); entry != m_sinks.end(); ++entry)
        if (entry->first == cookie) {
            IDispatch* sink = entry->second;
            m_sinks.erase(entry);
            sink->Release();
            return S_OK;
        }
    return CONNECT_E_NOCONNECTION;
}

STDMETHODIMP ozConnectionPoint::EnumConnections(IEnumConnections** connections)
{
    if (connections == nullptr)
        return E_POINTER;
    *connections = nullptr;
    return E_NOTIMPL;
}

void ozConnectionPoint::Fire(DISPID dispid, DISPPARAMS& params)
{
    // A sink may unadvise while it is called: call a copy of the list, each kept alive.
    std::vector<std::pair<DWORD, IDispatch*>> sinks = m_sinks;
    for (auto& [cookie, sink] : sinks)
        sink->AddRef();
    for (auto& [cookie, sink] : sinks) {
        sink->Invoke(dispid, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, nullptr,
                     nullptr, nullptr);
        sink->Release();
    }
}

ozConnectionPointEnumerator::ozConnectionPointEnumerator(std::vector<IConnectionPoint*> points,
                                                         size_t position)
    : m_points(std::move(points)), m_position(position)
{
    for (IConnectionPoint* point : m_points)
        point->AddRef();
    ozComModule::ObjectCreated();
}

ozConnectionPointEnumerator::~ozConnectionPointEnumerator()
{
    for (IConnectionPoint* point : m_points)
        point->Release();
    ozComModule::ObjectDestroyed();
}

STDMETHODIMP ozConnectionPointEnumerator::QueryInterface(REFIID iid, void** object)
{
    if (object == nullptr)
        return E_POINTER;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IEnumConnectionPoints)) {
        *object = static_cast<IEnumConnectionPoints*>(this);
        AddRef();
        return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
}

STDMETHODIMP_(ULONG) ozConnectionPointEnumerator::AddRef()
{
    return static_cast<ULONG>(InterlockedIncrement(&m_references));
}

STDMETHODIMP_(ULONG) ozConnectionPointEnumerator::Release()
{
    LONG references = InterlockedDecrement(&m_references);
    if (references == 0)
        delete this;
    return static_cast<ULONG>(references);
}

STDMETHODIMP ozConnectionPointEnumerator::Next(ULONG count, IConnectionPoint** points,
                                               ULONG* fetched)
{
    if (points == nullptr || (count > 1 && fetched == nullptr))
        return E_POINTER;
    ULONG taken = 0;
    while (taken < count && m_position < m_points.size()) {
        points[taken] = m_points[m_position++];
        points[taken++]->AddRef();
    }
    if (fetched != nullptr)
        *fetched = taken;
    return taken == count ? S_OK : S_FALSE;
}

STDMETHODIMP ozConnectionPointEnumerator::Skip(ULONG count)
{
    size_t left = m_points.size() - m_position;
    m_position += count < left ? count : left;
    return count <= left ? S_OK : S_FALSE;
}

STDMETHODIMP ozConnectionPointEnumerator::Reset()
{
    m_position = 0;
    return S_OK;
}

STDMETHODIMP ozConnectionPointEnumerator::Clone(IEnumConnectionPoints** copy)
{
    if (copy == nullptr)
        return E_POINTER;
    try {
        *copy = new ozConnectionPointEnumerator(m_points, m_position);
    } catch (...) {
        *copy = nullptr;
        return E_OUTOFMEMORY;
    }
    return S_OK;
}
