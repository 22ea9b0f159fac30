#include "profiles/ozProfileLibrary.h"

OZ_PROFILE_API ozRegExport* InitExportObject()
{
    return nullptr;
}

OZ_PROFILE_API void DestroyExportObject(ozRegExport*) {}

OZ_PROFILE_API ozRegImport* InitImportObject()
{
    return nullptr;
}

OZ_PROFILE_API void DestroyImportObject(ozRegImport*) {}
