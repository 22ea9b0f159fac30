// The four entry points every profile library exports, by these names, for the control to
// find at run time. Objects are created and destroyed only inside the library.
//
// Every library treats a null or empty file name as "no file for this profile": the importer
// reads nothing and succeeds (the control always reads the user profile first, so a machine
// profile is read alone after an empty user name), and the exporter writes no file for that
// profile, passes its tree's keys over and succeeds.
#pragma once

#include "core/registry/ozRegExport.h"
#include "core/registry/ozRegImport.h"

#if defined(_WIN32)
#define OZ_PROFILE_API extern "C" __declspec(dllexport)
#else
#define OZ_PROFILE_API extern "C" __attribute__((visibility("default")))
#endif

// The signatures the control looks the entry points up with.
using ozInitExportObjectFunction = ozRegExport* (*)();
using ozDestroyExportObjectFunction = void (*)(ozRegExport*);
using ozInitImportObjectFunction = ozRegImport* (*)();
using ozDestroyImportObjectFunction = void (*)(ozRegImport*);

// A new exporter, or null when none can be made.
OZ_PROFILE_API ozRegExport* InitExportObject();
// Completes the files the exporter began and destroys it.
OZ_PROFILE_API void DestroyExportObject(ozRegExport* exporter);
// A new importer, or null when none can be made.
OZ_PROFILE_API ozRegImport* InitImportObject();
OZ_PROFILE_API void DestroyImportObject(ozRegImport* importer);
