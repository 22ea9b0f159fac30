#include "platform/ozDynamicLibrary.h"

#include <windows.h>

#include "platform/ozSystemMessage.h"

ozDynamicLibrary::~ozDynamicLibrary()
{
    Release();
}

bool ozDynamicLibrary::Load(const char* name)
{
    Release();
    m_error.clear();
    if (name == nullptr || *name == '\0') {
        m_error = "no library name";
        return false;
    }
    m_handle = LoadLibraryA(name);
    if (m_handle == nullptr)
        m_error = ozSystemMessage(GetLastError());
    return m_handle != nullptr;
}

void (*ozDynamicLibrary::Function(const char* name) const)()
{
    if (m_handle == nullptr || name == nullptr)
        return nullptr;
    // void (*)() is the type any function pointer converts to without a warning.
    return reinterpret_cast<void (*)()>(GetProcAddress(static_cast<HMODULE>(m_handle), name));
}

void ozDynamicLibrary::Release()
{
    if (m_handle != nullptr)
        FreeLibrary(static_cast<HMODULE>(m_handle));
    m_handle = nullptr;
}
