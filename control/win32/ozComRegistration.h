// Self-registration of ozADM.ocx: the type library first, then the control class and its
// property page class under HKEY_CLASSES_ROOT (CLSID key with InprocServer32 and threading
// model Apartment, ProgID, version-independent ProgID, type library and version; the control
// also as Control and Insertable, with its MiscStatus). Unregistering removes the class keys and
// the type library.
#pragma once

#include <windows.h>

// S_OK, SELFREG_E_TYPELIB when the type library cannot be (un)registered, SELFREG_E_CLASS
// when the class keys cannot be written or removed.
HRESULT ozRegisterServer();
HRESULT ozUnregisterServer();
