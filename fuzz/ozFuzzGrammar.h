// The shipped template grammar, loaded once by the fuzz targets that read templates.
#pragma once

#include <cstdio>
#include <cstdlib>

#include "engine/ozEBNF.h"

// Loads grammar/adm.bnf of the source tree; a grammar that does not load ends the run.
inline void ozLoadShippedGrammar()
{
    if (EBNFLoad(OZ_SOURCE_DIR "/grammar/adm.bnf") == 0) {
        std::fprintf(stderr, "%s\n", ErrorMessage());
        std::abort();
    }
}
