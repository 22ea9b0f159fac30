// The entry points of the Registry.pol profile library (see docs/pol-mapping.md).
#include <new>

#include "ozPolExport.h"
#include "ozPolImport.h"
#include "profiles/ozProfileLibrary.h"

OZ_PROFILE_API ozRegExport* InitExportObject()
{
    return new (std::nothrow) ozPolExport();
}

OZ_PROFILE_API void DestroyExportObject(ozRegExport* exporter)
{
    // Only objects of this library arrive here: the control gives back what it was given.
    auto* polExporter = static_cast<ozPolExport*>(exporter);
    if (polExporter == nullptr)
        return;
    polExporter->Complete();
    delete polExporter;
}

OZ_PROFILE_API ozRegImport* InitImportObject()
{
    return new (std::nothrow) ozPolImport();
}

OZ_PROFILE_API void DestroyImportObject(ozRegImport* importer)
{
    delete importer;
}
