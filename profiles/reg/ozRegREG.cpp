// The entry points of the .reg profile library.
#include <new>

#include "ozRegREGExport.h"
#include "ozRegREGImport.h"
#include "profiles/ozProfileLibrary.h"

OZ_PROFILE_API ozRegExport* InitExportObject()
{
    return new (std::nothrow) ozRegREGExport();
}

OZ_PROFILE_API void DestroyExportObject(ozRegExport* exporter)
{
    // The control never flushes: the files of a save are completed here.
    auto* regExporter = static_cast<ozRegREGExport*>(exporter);
    if (regExporter == nullptr)
        return;
    regExporter->Flush();
    delete regExporter;
}

OZ_PROFILE_API ozRegImport* InitImportObject()
{
    return new (std::nothrow) ozRegREGImport();
}

OZ_PROFILE_API void DestroyImportObject(ozRegImport* importer)
{
    delete static_cast<ozRegREGImport*>(importer);
}
