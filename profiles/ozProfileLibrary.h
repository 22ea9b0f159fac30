// The entry points a profile library exports, by these names, for the control to find at run
// time: four that every library has and one that a library may add. Objects are created and
// destroyed only inside the library.
//
// Every library treats a null or empty file name as "no file for this profile": the importer
// reads nothing and succeeds (the control always reads the user profile first, so a machine
// profile is read alone after an empty user name), and the exporter writes no file for that
// profile, passes its tree's keys over and succeeds.
#pragma once

#include <cstdio>
#include <string>

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
using ozCompleteExportObjectFunction = bool (*)(ozRegExport*, bool, const char**);
using ozInitImportObjectFunction = ozRegImport* (*)();
using ozDestroyImportObjectFunction = void (*)(ozRegImport*);

// A new exporter, or null when none can be made.
OZ_PROFILE_API ozRegExport* InitExportObject();
// Completes the files the exporter began, unless CompleteExportObject did, and destroys it.
OZ_PROFILE_API void DestroyExportObject(ozRegExport* exporter);
// Optional. The control calls it once after the steps of a save and before giving the exporter
// back. With `complete` true (every step succeeded) the library puts all files of the save in
// place, or, when one of them cannot be, none; with false it drops them all. The result says
// whether the files are in place. `problem` receives null or the library's description of what
// failed in the save, for the control to show; the text belongs to the exporter and lives until
// the exporter is given back. A library without this entry point completes its files in
// DestroyExportObject, and the control cannot learn how that went.
OZ_PROFILE_API bool CompleteExportObject(ozRegExport* exporter, bool complete,
                                         const char** problem);
// A new importer, or null when none can be made.
OZ_PROFILE_API ozRegImport* InitImportObject();
OZ_PROFILE_API void DestroyImportObject(ozRegImport* importer);

// CompleteExportObject for an exporter class that offers Complete(bool commit) (whether its
// files are in place; only the first call acts), Completed() (whether it was called) and
// Problem() (the first failure of the save, empty when none).
template <class Exporter>
bool ozCompleteExporter(ozRegExport* exporter, bool complete, const char** problem)
{
    auto* own = static_cast<Exporter*>(exporter);
    bool completed = own != nullptr && own->Complete(complete);
    if (problem != nullptr)
        *problem = own != nullptr && !own->Problem().empty() ? own->Problem().c_str() : nullptr;
    return completed;
}

// DestroyExportObject for such a class. A save the control did not complete through
// CompleteExportObject is completed here as far as the exporter got; a failure can then only
// be told on the standard error stream, as "<library>: <problem>".
template <class Exporter>
void ozDestroyExporter(ozRegExport* exporter, const char* library)
{
    auto* own = static_cast<Exporter*>(exporter);
    if (own == nullptr)
        return;
    if (!own->Completed() && !own->Complete(true) && !own->Problem().empty())
        std::fprintf(stderr, "%s: %s\n", library, own->Problem().c_str());
    delete own;
}
