// The outgoing side of the control: one connection point per event interface, kept inside
// the control (its references are the control's), and the enumerator of a container's
// connection points. Sinks are held as IDispatch; a sink is asked for the event interface
// first and, as many script and container sinks answer only that, for IDispatch second.
#pragma once

#include <windows.h>

#include <ocidl.h>
#include <utility>
#include <vector>

class ozConnectionPoint final : public IConnectionPoint {
public:
    // owner supplies the reference counting; container is what GetConnectionPointContainer
    // returns. Both outlive the connection point.
    ozConnectionPoint(IUnknown& owner, IConnectionPointContainer& container, REFIID events);
    ~ozConnectionPoint();
    ozConnectionPoint(const ozConnectionPoint&) = delete;
    ozConnectionPoint& operator=(const ozConnectionPoint&) = delete;

    // IUnknown
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;
    // IConnectionPoint; cookies start at 1 and are never reused. Connections are not
    // enumerated (E_NOTIMPL, which the interface allows).
    STDMETHODIMP GetConnectionInterface(IID* iid) override;
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override;
    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
    STDMETHODIMP Unadvise(DWORD cookie) override;
    STDMETHODIMP EnumConnections(IEnumConnections** connections) override;

    REFIID Events() const { return m_events; }
    // Calls dispid on every sink; a sink's failure does not stop the others.
    void Fire(DISPID dispid, DISPPARAMS& params);

private:
    IUnknown& m_owner;
    IConnectionPointContainer& m_container;
    IID m_events;
    DWORD m_nextCookie = 1;
    std::vector<std::pair<DWORD, IDispatch*>> m_sinks;
};

// Enumerates a fixed list of connection points (each AddRef'd while enumerated).
class ozConnectionPointEnumerator final : public IEnumConnectionPoints {
public:
    ozConnectionPointEnumerator(std::vector<IConnectionPoint*> points, size_t position = 0);
    ozConnectionPointEnumerator(const ozConnectionPointEnumerator&) = delete;
    ozConnectionPointEnumerator& operator=(const ozConnectionPointEnumerator&) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;
    STDMETHODIMP Next(ULONG count, IConnectionPoint** points, ULONG* fetched) override;
    STDMETHODIMP Skip(ULONG count) override;
    STDMETHODIMP Reset() override;
    STDMETHODIMP Clone(IEnumConnectionPoints** copy) override;

private:
    ~ozConnectionPointEnumerator();

    LONG m_references = 1;
    std::vector<IConnectionPoint*> m_points;
    size_t m_position;
};
