// The in-process server's module state: its instance handle (for its own path and its
// resources), the live objects and server locks that decide DllCanUnloadNow, and the type
// library, read from the module's own resources so that the objects work whether or not it
// is registered.
#pragma once

#include <windows.h>

#include <oaidl.h>
#include <string>

namespace ozComModule {

HINSTANCE Instance();
void Instance(HINSTANCE instance);
// The module's full path; empty when the system cannot tell.
std::wstring Path();

// Every COM object of the module counts itself for its lifetime; IClassFactory::LockServer
// counts locks.
void ObjectCreated();
void ObjectDestroyed();
void Lock();
void Unlock();
// True when neither objects nor locks remain; the cached type library is released then.
bool CanUnload();

// The module's type library (resource 1 TYPELIB), loaded once; the caller releases it.
HRESULT TypeLibrary(ITypeLib** library);
// The type information of guid in that library; the caller releases it.
HRESULT TypeInfo(REFGUID guid, ITypeInfo** info);

}  // namespace ozComModule
