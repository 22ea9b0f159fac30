#include "platform/ozDynamicLibrary.h"

#include <windows.h>

#include <cstring>

#include "platform/ozSystemMessage.h"
#include "platform/ozTextConversion.h"
#include "platform/win32/ozModulePath.h"

namespace {

// An object of this module: its address names the module to the system.
const char kModuleAnchor = 0;

// The folder of the module this code is linked into (the control, or the program), with a
// trailing backslash; empty when the system cannot say.
std::wstring OwnModuleFolder()
{
    HMODULE module = nullptr;
    if (!GetModuleHandleExW(
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
            reinterpret_cast<LPCWSTR>(&kModuleAnchor), &module))
        return {};
    std::wstring path = ozModulePath(module);
    size_t separator = path.find_last_of(L"\\/");
    return separator == std::wstring::npos ? std::wstring() : path.substr(0, separator + 1);
}

// The file `name` (without a folder) beside this module, as LoadLibrary would name it: ".dll"
// added when the name has no extension. Empty when no such file is there.
std::wstring BesideOwnModule(const char* name)
{
    std::wstring folder = OwnModuleFolder();
    if (folder.empty())
        return {};
    std::wstring path = folder + ozWideText(name);
    if (std::strchr(name, '.') == nullptr)
        path += L".dll";
    DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return {};
    return path;
}

}  // namespace

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
    // The system searches the folder of the host's executable, not the control's: a library
    // installed beside the control would not be found from a script host.
    std::wstring beside;
    if (std::strpbrk(name, "\\/:") == nullptr)
        beside = BesideOwnModule(name);
    if (!beside.empty())
        m_handle = LoadLibraryExW(beside.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    else
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
