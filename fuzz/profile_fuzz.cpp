// Fuzzes the readers of the profile libraries: any bytes read as a user and as a machine
// profile through the library's importer give a result, never a crash, leak or hang. The
// library is named at build time (OZ_PROFILE_LIBRARY), so one source serves every format.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "core/adm/tTreeCodeHandle.h"
#include "ozFuzzFile.h"
#include "platform/ozDynamicLibrary.h"
#include "profiles/ozProfileLibrary.h"

namespace {

ozDynamicLibrary library;
ozInitImportObjectFunction initImport = nullptr;
ozDestroyImportObjectFunction destroyImport = nullptr;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    if (!library.Load(OZ_PROFILE_LIBRARY)) {
        std::fprintf(stderr, "%s\n", library.Error().c_str());
        std::abort();
    }
    initImport = reinterpret_cast<ozInitImportObjectFunction>(library.Function("InitImportObject"));
    destroyImport =
        reinterpret_cast<ozDestroyImportObjectFunction>(library.Function("DestroyImportObject"));
    if (initImport == nullptr || destroyImport == nullptr)
        std::abort();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const ozFuzzFile file("ozadm-profile-fuzz");
    file.Write(data, size);
    tTreeCodeHandle code;
    ozRegImport* importer = initImport();
    importer->CodeHandle(&code);
    importer->ImportUserProfile(file.Path().c_str());
    importer->ImportMachineProfile(file.Path().c_str());
    destroyImport(importer);
    return 0;
}
