// Fuzzes the template writer: any template the loader accepts is written back, and the
// written file loads again to the same tree, field by field.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "core/adm/ozADMTree.h"
#include "core/adm/tTreeCodeHandle.h"
#include "engine/ozEBNF.h"
#include "ozFuzzFile.h"
#include "ozFuzzGrammar.h"
#include "tests/support/ozTreeDescription.h"

namespace {

// Loads file into a fresh code object; null, with the code destroyed, when it does not load.
tTreeCodeHandle* Load(const std::string& file)
{
    EBNFSetCodeHandle(nullptr);
    if (FileLoad(file.c_str(), 1) > 0)
        return static_cast<tTreeCodeHandle*>(EBNFGetCodeHandle());
    EBNFSetCodeHandle(EBNFGetCodeHandle());
    EBNFDestroyCode();
    return nullptr;
}

void Destroy(tTreeCodeHandle* code)
{
    EBNFSetCodeHandle(code);
    EBNFDestroyCode();
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    ozLoadShippedGrammar();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const ozFuzzFile input("ozadm-write-fuzz-in");
    static const ozFuzzFile written("ozadm-write-fuzz-out");
    input.Write(data, size);
    tTreeCodeHandle* original = Load(input.Path());
    if (original == nullptr)
        return 0;
    FILE* file = fopen(written.Path().c_str(), "wb");
    if (file == nullptr)
        std::abort();
    bool saved = original->tree->Save(file);
    fclose(file);
    if (saved) {
        tTreeCodeHandle* reloaded = Load(written.Path());
        if (reloaded == nullptr) {
            fprintf(stderr, "the written template does not load: %s\n", ErrorMessage());
            std::abort();
        }
        std::string difference =
            ozFirstDifference(ozDescribeTree(*original->tree), ozDescribeTree(*reloaded->tree));
        if (!difference.empty()) {
            fprintf(stderr, "the written template reads back to another tree, %s\n",
                    difference.c_str());
            std::abort();
        }
        Destroy(reloaded);
    }
    Destroy(original);
    return 0;
}
