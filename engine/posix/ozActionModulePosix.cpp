#include <dlfcn.h>

#include "engine/ozActionModule.h"

ozActionModule::ozActionModule(const void* codeAddress)
{
    Dl_info info{};
    if (dladdr(codeAddress, &info) != 0 && info.dli_fname != nullptr)
        m_module = dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
}

ozActionModule::~ozActionModule()
{
    if (m_module != nullptr)
        dlclose(m_module);
}

ozEBNFAction ozActionModule::Find(const char* name) const
{
    void* symbol = m_module != nullptr ? dlsym(m_module, name) : nullptr;
    if (symbol == nullptr)
        symbol = dlsym(RTLD_DEFAULT, name);
    return reinterpret_cast<ozEBNFAction>(symbol);
}
