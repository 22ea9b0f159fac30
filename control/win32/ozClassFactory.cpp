#include "ozClassFactory.h"

#include "ozComModule.h"

ozClassFactory::ozClassFactory(CreateFunction create) : m_create(create)
{
    ozComModule::ObjectCreated();
}

ozClassFactory::~ozClassFactory()
{
    ozComModule::ObjectDestroyed();
}

STDMETHODIMP ozClassFactory::QueryInterface(REFIID iid, void** object)
{
    if (object == nullptr)
        return E_POINTER;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IClassFactory)) {
        *object = static_cast<IClassFactory*>(this);
        AddRef();
        return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
}

STDMETHODIMP_(ULONG) ozClassFactory::AddRef()
{
    return static_cast<ULONG>(InterlockedIncrement(&m_references));
}

STDMETHODIMP_(ULONG) ozClassFactory::Release()
{
    LONG references = InterlockedDecrement(&m_references);
    if (references == 0)
        delete this;
    return static_cast<ULONG>(references);
}

STDMETHODIMP ozClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object)
{
    if (object == nullptr)
        return E_POINTER;
    *object = nullptr;
    if (outer != nullptr)
        return CLASS_E_NOAGGREGATION;
    return m_create(iid, object);
}

STDMETHODIMP ozClassFactory::LockServer(BOOL lock)
{
    if (lock)
        ozComModule::Lock();
    else
        ozComModule::Unlock();
    return S_OK;
}
