// The exports of ozADM.ocx that COM and regsvr32 call, by the plain names in ozADM.def.
#include <windows.h>

#include <olectl.h>

#include "ozADM.h"
#include "ozADMControl.h"
#include "ozADMPropPage.h"
#include "ozClassFactory.h"
#include "ozComModule.h"
#include "ozComRegistration.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID)
{
    if (reason == DLL_PROCESS_ATTACH) {
        ozComModule::Instance(instance);
        DisableThreadLibraryCalls(instance);
    }
    return TRUE;
}

extern "C" HRESULT WINAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** object)
{
    if (object == nullptr)
        return E_POINTER;
    *object = nullptr;
    ozClassFactory::CreateFunction create = nullptr;
    if (IsEqualCLSID(clsid, CLSID_ozADMCtrl))
        create = &ozADMControl::Create;
    else if (IsEqualCLSID(clsid, CLSID_ozADMPropPage))
        create = &ozADMPropPage::Create;
    else
        return CLASS_E_CLASSNOTAVAILABLE;
    auto* factory = new (std::nothrow) ozClassFactory(create);
    if (factory == nullptr)
        return E_OUTOFMEMORY;
    HRESULT hr = factory->QueryInterface(iid, object);
    factory->Release();
    return hr;
}

extern "C" HRESULT WINAPI DllCanUnloadNow()
{
    if (!ozComModule::CanUnload())
        return S_FALSE;
    ozADMControl::UnregisterWindowClass();
    return S_OK;
}

extern "C" HRESULT WINAPI DllRegisterServer()
{
    return ozRegisterServer();
}

extern "C" HRESULT WINAPI DllUnregisterServer()
{
    return ozUnregisterServer();
}
