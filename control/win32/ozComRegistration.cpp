#include "ozComRegistration.h"

#include <olectl.h>

#include <string>

#include "ozADM.h"
#include "ozADMControl.h"
#include "ozComModule.h"

namespace {

struct ozClassEntry {
    const CLSID* clsid;
    const wchar_t* name;
    const wchar_t* progId;
    const wchar_t* versionIndependentProgId;
    bool control;  // shown to containers as an insertable ActiveX control
};

const ozClassEntry g_classes[] = {
    {&CLSID_ozADMCtrl, L"OZ ADM Control", L"ozADM.ozADMCtrl.1", L"ozADM.ozADMCtrl", true},
    {&CLSID_ozADMPropPage, L"OZ ADM Property Page", L"ozADM.ozADMPropPage.1",
     L"ozADM.ozADMPropPage", false},
};

const WORD TypeLibraryMajor = 1;
const WORD TypeLibraryMinor = 0;

std::wstring GuidText(REFGUID guid)
{
    wchar_t text[40] = {};
    StringFromGUID2(guid, text, 40);
    return text;
}

// Creates key (and the keys above it) under HKEY_CLASSES_ROOT and sets its value name (the
// default value when null) to text.
bool SetText(const std::wstring& key, const wchar_t* name, const std::wstring& text)
{
    HKEY handle = nullptr;
    if (RegCreateKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                        KEY_SET_VALUE, nullptr, &handle, nullptr) != ERROR_SUCCESS)
        return false;
    auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    LSTATUS status =
        RegSetValueExW(handle, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), bytes);
    RegCloseKey(handle);
    return status == ERROR_SUCCESS;
}

bool CreateKey(const std::wstring& key)
{
    HKEY handle = nullptr;
    if (RegCreateKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                        KEY_SET_VALUE, nullptr, &handle, nullptr) != ERROR_SUCCESS)
        return false;
    RegCloseKey(handle);
    return true;
}

// Removes key with everything below it; a key that is not there is removed already.
bool RemoveKey(const std::wstring& key)
{
    LSTATUS status = RegDeleteTreeW(HKEY_CLASSES_ROOT, key.c_str());
    if (status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND)
        status = RegDeleteKeyW(HKEY_CLASSES_ROOT, key.c_str());
    return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}

bool KeyExists(const std::wstring& key)
{
    HKEY handle = nullptr;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, KEY_READ, &handle) != ERROR_SUCCESS)
        return false;
    RegCloseKey(handle);
    return true;
}

bool WriteClassKeys(const ozClassEntry& entry, const std::wstring& modulePath)
{
    std::wstring clsid = GuidText(*entry.clsid);
    std::wstring key = L"CLSID\\" + clsid;
    // Apartment-threaded: COM calls a control only from the thread that created it, which is
    // what the control and its trees need, for nothing in them is synchronised (CADMCtrl.h).
    bool written =
        SetText(key, nullptr, entry.name) &&
        SetText(key + L"\\InprocServer32", nullptr, modulePath) &&
        SetText(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment") &&
        SetText(key + L"\\ProgID", nullptr, entry.progId) &&
        SetText(key + L"\\VersionIndependentProgID", nullptr, entry.versionIndependentProgId) &&
        SetText(key + L"\\TypeLib", nullptr, GuidText(LIBID_ozADM)) &&
        SetText(key + L"\\Version", nullptr, L"1.0") &&
        SetText(entry.progId, nullptr, entry.name) &&
        SetText(std::wstring(entry.progId) + L"\\CLSID", nullptr, clsid) &&
        SetText(entry.versionIndependentProgId, nullptr, entry.name) &&
        SetText(std::wstring(entry.versionIndependentProgId) + L"\\CLSID", nullptr, clsid) &&
        SetText(std::wstring(entry.versionIndependentProgId) + L"\\CurVer", nullptr, entry.progId);
    if (written && entry.control)
        written = CreateKey(key + L"\\Control") && CreateKey(key + L"\\Insertable") &&
                  CreateKey(std::wstring(entry.progId) + L"\\Insertable") &&
                  SetText(key + L"\\MiscStatus", nullptr, L"0") &&
                  SetText(key + L"\\MiscStatus\\1", nullptr, std::to_wstring(OzMiscStatus));
    return written;
}

bool RemoveClassKeys(const ozClassEntry& entry)
{
    bool removed = RemoveKey(L"CLSID\\" + GuidText(*entry.clsid));
    removed = RemoveKey(entry.progId) && removed;
    return RemoveKey(entry.versionIndependentProgId) && removed;
}

}  // namespace

HRESULT ozRegisterServer()
{
    std::wstring path = ozComModule::Path();
    if (path.empty())
        return SELFREG_E_TYPELIB;
    ITypeLib* library = nullptr;
    if (FAILED(ozComModule::TypeLibrary(&library)))
        return SELFREG_E_TYPELIB;
    // The help file is expected beside the control.
    std::wstring folder = path.substr(0, path.find_last_of(L"\\/") + 1);
    HRESULT hr = RegisterTypeLib(library, path.data(), folder.data());
    library->Release();
    if (FAILED(hr))
        return SELFREG_E_TYPELIB;
    for (const ozClassEntry& entry : g_classes)
        if (!WriteClassKeys(entry, path))
            return SELFREG_E_CLASS;
    return S_OK;
}

HRESULT ozUnregisterServer()
{
    bool removed = true;
    for (const ozClassEntry& entry : g_classes)
        removed = RemoveClassKeys(entry) && removed;
    // Only a registered type library needs removing; asking the system to remove one that is
    // not there is an error.
    std::wstring version = L"TypeLib\\" + GuidText(LIBID_ozADM) + L"\\1.0";
    if (KeyExists(version)) {
        SYSKIND kind = sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32;
        if (FAILED(UnRegisterTypeLib(LIBID_ozADM, TypeLibraryMajor, TypeLibraryMinor,
                                     LOCALE_NEUTRAL, kind)))
            return SELFREG_E_TYPELIB;
    }
    return removed ? S_OK : SELFREG_E_CLASS;
}
