#include "ozComModule.h"

#include "platform/win32/ozModulePath.h"

namespace {

HINSTANCE g_instance = nullptr;
LONG g_objects = 0;
LONG g_locks = 0;
ITypeLib* g_typeLibrary = nullptr;

}  // namespace

HINSTANCE ozComModule::Instance()
{
    return g_instance;
}

void ozComModule::Instance(HINSTANCE instance)
{
    g_instance = instance;
}

std::wstring ozComModule::Path()
{
    return ozModulePath(g_instance);
}

void ozComModule::ObjectCreated()
{
    InterlockedIncrement(&g_objects);
}

void ozComModule::ObjectDestroyed()
{
    InterlockedDecrement(&g_objects);
}

void ozComModule::Lock()
{
    InterlockedIncrement(&g_locks);
}

void ozComModule::Unlock()
{
    InterlockedDecrement(&g_locks);
}

bool ozComModule::CanUnload()
{
    if (g_objects != 0 || g_locks != 0)
        return false;
    // The type library is released here rather than on process detach, where calling into
    // other modules is not allowed.
    if (g_typeLibrary != nullptr) {
        g_typeLibrary->Release();
        g_typeLibrary = nullptr;
    }
    return true;
}

HRESULT ozComModule::TypeLibrary(ITypeLib** library)
{
    if (library == nullptr)
        return E_POINTER;
    *library = nullptr;
    if (g_typeLibrary == nullptr) {
        std::wstring path = Path();
        if (path.empty())
            return HRESULT_FROM_WIN32(GetLastError());
        ITypeLib* loaded = nullptr;
        HRESULT hr = LoadTypeLibEx(path.c_str(), REGKIND_NONE, &loaded);
        if (FAILED(hr))
            return hr;
        // Objects of several apartments may get here together: the first one publishes its
        // copy, the others release theirs.
        if (InterlockedCompareExchangePointer(reinterpret_cast<void**>(&g_typeLibrary), loaded,
                                              nullptr) != nullptr)
            loaded->Release();
    }
    g_typeLibrary->AddRef();
    *library = g_typeLibrary;
    return S_OK;
}

HRESULT ozComModule::TypeInfo(REFGUID guid, ITypeInfo** info)
{
    if (info == nullptr)
        return E_POINTER;
    *info = nullptr;
    ITypeLib* library = nullptr;
    HRESULT hr = TypeLibrary(&library);
    if (FAILED(hr))
        return hr;
    hr = library->GetTypeInfoOfGuid(guid, info);
    library->Release();
    return hr;
}
