// Fuzzes template loading: any bytes read by the shipped grammar through the loader's actions
// load or fail with a message, never crash, leak or hang. A second load merges into the first
// tree, as a second template of a control does.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "engine/ozEBNF.h"
#include "loader/tTreeCodeHandle.h"

namespace {

struct TemplateFile {
    TemplateFile()
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "ozadm-template-fuzz-XXXXXX").string();
        int descriptor = mkstemp(pattern.data());
        if (descriptor < 0)
            std::abort();
        close(descriptor);
        path = pattern;
    }
    ~TemplateFile() { std::filesystem::remove(path); }
    std::string path;
};

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    if (EBNFLoad(OZ_SOURCE_DIR "/grammar/adm.bnf") == 0) {
        fprintf(stderr, "%s\n", ErrorMessage());
        std::abort();
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static TemplateFile file;
    FILE* stream = fopen(file.path.c_str(), "wb");
    if (stream == nullptr)
        std::abort();
    fwrite(data, 1, size, stream);
    fclose(stream);

    for (int load = 0; load < 2; ++load) {
        if (FileLoad(file.path.c_str(), 1) <= 0 && *ErrorMessage() == '\0')
            std::abort();  // a failure always says why
        EBNFSetCodeHandle(EBNFGetCodeHandle());
    }
    EBNFDestroyCode();
    return 0;
}
