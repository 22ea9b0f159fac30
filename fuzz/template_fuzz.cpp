// Fuzzes template loading: any bytes read by the shipped grammar through the loader's actions
// load or fail with a message, never crash, leak or hang. A second load merges into the first
// tree, as a second template of a control does.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "engine/ozEBNF.h"
#include "ozFuzzFile.h"
#include "ozFuzzGrammar.h"

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    ozLoadShippedGrammar();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const ozFuzzFile file("ozadm-template-fuzz");
    file.Write(data, size);

    for (int load = 0; load < 2; ++load) {
        if (FileLoad(file.Path().c_str(), 1) <= 0 && *ErrorMessage() == '\0')
            std::abort();  // a failure always says why
        EBNFSetCodeHandle(EBNFGetCodeHandle());
    }
    EBNFDestroyCode();
    return 0;
}
