// The class object DllGetClassObject hands out: it creates instances of one class through a
// creation function and counts server locks for DllCanUnloadNow.
#pragma once

#include <windows.h>

#include <unknwn.h>

class ozClassFactory final : public IClassFactory {
public:
    // Creates an object and returns its interface iid (AddRef'd) in *object.
    using CreateFunction = HRESULT (*)(REFIID iid, void** object);

    explicit ozClassFactory(CreateFunction create);
    ozClassFactory(const ozClassFactory&) = delete;
    ozClassFactory& operator=(const ozClassFactory&) = delete;

    // IUnknown
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;
    // IClassFactory: aggregation is not supported.
    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
    STDMETHODIMP LockServer(BOOL lock) override;

private:
    ~ozClassFactory();

    LONG m_references = 1;
    CreateFunction m_create;
};
