// Fuzzes grammar files: any text loads as a grammar or fails with a message naming the place,
// never crashing or hanging. A grammar that loads reads a sample template, calling the
// loader's actions in whatever order it names them.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "engine/ozEBNF.h"
#include "ozFuzzFile.h"

namespace {

const char SampleTemplate[] =
    "CLASS MACHINE\n"
    "CATEGORY \"Cat\" KEYNAME \"Software\\Policies\\X\"\n"
    "  POLICY !!Pol\n"
    "    #if version >= 4\n      SUPPORTED !!Pol\n    #endif\n"
    "    VALUENAME Name VALUEON NUMERIC 1 VALUEOFF DELETE\n"
    "    ACTIONLISTON VALUENAME A VALUE \"x\" END ACTIONLISTON\n"
    "    PART \"n\" NUMERIC DEFAULT 5 MIN 1 MAX \"9\" SPIN 2 VALUENAME N END PART\n"
    "    PART \"d\" DROPDOWNLIST VALUENAME D ITEMLIST NAME a VALUE NUMERIC 1 DEFAULT\n"
    "      NAME b VALUE b ACTIONLIST KEYNAME K VALUENAME v VALUE DELETE END ACTIONLIST\n"
    "    END ITEMLIST END PART\n"
    "    PART \"c\" COMBOBOX VALUENAME C SUGGESTIONS a \"b c\" END SUGGESTIONS NOSORT END PART\n"
    "    PART \"t\" TEXT END PART\n"
    "    PART \"l\" LISTBOX VALUEPREFIX p ADDITIVE END PART\n"
    "  END POLICY\n"
    "END CATEGORY\n"
    "[strings]\nPol=\"A policy\"\n";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const ozFuzzFile grammar("ozadm-grammar-fuzz");
    static const ozFuzzFile sample("ozadm-grammar-fuzz-sample");
    static bool sampleWritten = false;
    if (!sampleWritten) {
        sample.Write(SampleTemplate, sizeof SampleTemplate - 1);
        sampleWritten = true;
    }
    grammar.Write(data, size);
    if (EBNFLoad(grammar.Path().c_str()) == 0) {
        if (*ErrorMessage() == '\0')
            std::abort();  // a refused grammar always says why
        return 0;
    }
    if (FileLoad(sample.Path().c_str(), 1) <= 0 && *ErrorMessage() == '\0')
        std::abort();
    EBNFDestroy();
    return 0;
}
