#include <windows.h>

#include "engine/ozActionModule.h"

ozActionModule::ozActionModule(const void* codeAddress)
{
    HMODULE module = nullptr;
    if (GetModuleHandleExA(
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
            static_cast<LPCSTR>(codeAddress), &module))
        m_module = module;
}

ozActionModule::~ozActionModule() = default;

ozEBNFAction ozActionModule::Find(const char* name) const
{
    FARPROC symbol =
        m_module != nullptr ? GetProcAddress(static_cast<HMODULE>(m_module), name) : nullptr;
    if (symbol == nullptr)
        symbol = GetProcAddress(GetModuleHandleA(nullptr), name);
    // Through the generic function pointer type, which any function pointer may be cast to.
    return reinterpret_cast<ozEBNFAction>(reinterpret_cast<void (*)()>(symbol));
}
