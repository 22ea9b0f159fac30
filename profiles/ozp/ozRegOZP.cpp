// The entry points of the ".ozp" profile library.
#include <new>

#include "ozOZPExporter.h"
#include "ozOZPImporter.h"
#include "profiles/ozProfileLibrary.h"

OZ_PROFILE_API ozRegExport* InitExportObject()
{
    return new (std::nothrow) ozOZPExporter;
}

OZ_PROFILE_API bool CompleteExportObject(ozRegExport* exporter, bool complete, const char** problem)
{
    return ozCompleteExporter<ozOZPExporter>(exporter, complete, problem);
}

OZ_PROFILE_API void DestroyExportObject(ozRegExport* exporter)
{
    ozDestroyExporter<ozOZPExporter>(exporter, "ozRegOZP");
}

OZ_PROFILE_API ozRegImport* InitImportObject()
{
    return new (std::nothrow) ozOZPImporter;
}

OZ_PROFILE_API void DestroyImportObject(ozRegImport* importer)
{
    delete importer;
}
