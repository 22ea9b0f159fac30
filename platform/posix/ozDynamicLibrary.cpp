#include "platform/ozDynamicLibrary.h"

#include <dlfcn.h>

#include <string_view>

#include "platform/ozAsciiCase.h"

namespace {

// "dir/name.dll" as "dir/libname.so"; empty for a name without the ".dll" ending.
std::string SharedObjectName(const std::string& name)
{
    const std::string dll = ".dll";
    if (name.size() <= dll.size() ||
        !ozAsciiSameIgnoringCase(std::string_view(name).substr(name.size() - dll.size()), dll))
        return {};
    size_t slash = name.find_last_of('/');
    size_t fileStart = slash == std::string::npos ? 0 : slash + 1;
    return name.substr(0, fileStart) + "lib" +
           name.substr(fileStart, name.size() - dll.size() - fileStart) + ".so";
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
    m_handle = dlopen(name, RTLD_NOW | RTLD_LOCAL);
    if (m_handle == nullptr) {
        const char* firstError = dlerror();
        m_error = firstError != nullptr ? firstError : name;
        std::string retry = SharedObjectName(name);
        if (!retry.empty()) {
            m_handle = dlopen(retry.c_str(), RTLD_NOW | RTLD_LOCAL);
            if (m_handle == nullptr) {
                const char* retryError = dlerror();
                m_error += "; ";
                m_error += retryError != nullptr ? retryError : retry;
            }
        }
    }
    if (m_handle != nullptr)
        m_error.clear();
    return m_handle != nullptr;
}

void (*ozDynamicLibrary::Function(const char* name) const)()
{
    if (m_handle == nullptr || name == nullptr)
        return nullptr;
    // Object and function pointers share their representation on every POSIX system.
    return reinterpret_cast<void (*)()>(dlsym(m_handle, name));
}

void ozDynamicLibrary::Release()
{
    if (m_handle != nullptr)
        dlclose(m_handle);
    m_handle = nullptr;
}
