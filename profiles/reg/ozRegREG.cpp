// The entry points of the .reg profile library.
#include <new>

#include "ozRegREGExport.h"
#include "ozRegREGImport.h"
#include "profiles/ozProfileLibrary.h"

OZ_PROFILE_API ozRegExport* InitExportObject()
{
    return new (std::nothrow) ozRegREGExport();
}

OZ_PROFILE_API bool CompleteExportObject(ozRegExport* exporter, bool complete, const char** problem)
{
    return ozCompleteExporter<ozRegREGExport>(exporter, complete, problem);
}

OZ_PROFILE_API void DestroyExportObject(ozRegExport* exporter)
{
    ozDestroyExporter<ozRegREGExport>(exporter, "ozRegREG");
}

OZ_PROFILE_API ozRegImport* InitImportObject()
{
    return new (std::nothrow) ozRegREGImport();
}

OZ_PROFILE_API void DestroyImportObject(ozRegImport* importer)
{
    delete static_cast<ozRegREGImport*>(importer);
}
