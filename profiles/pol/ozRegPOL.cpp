// The entry points of the Registry.pol profile library (see docs/pol-mapping.md).
#include <new>

#include "ozPolExport.h"
#include "ozPolImport.h"
#include "profiles/ozProfileLibrary.h"

OZ_PROFILE_API ozRegExport* InitExportObject()
{
    return new (std::nothrow) ozPolExport();
}

OZ_PROFILE_API bool CompleteExportObject(ozRegExport* exporter, bool complete, const char** problem)
{
    return ozCompleteExporter<ozPolExport>(exporter, complete, problem);
}

OZ_PROFILE_API void DestroyExportObject(ozRegExport* exporter)
{
    ozDestroyExporter<ozPolExport>(exporter, "ozRegPOL");
}

OZ_PROFILE_API ozRegImport* InitImportObject()
{
    return new (std::nothrow) ozPolImport();
}

OZ_PROFILE_API void DestroyImportObject(ozRegImport* importer)
{
    delete importer;
}
