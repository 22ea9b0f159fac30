// A profile library for the binding's tests, built in variants that lack entry points or fail
// on purpose. It records the calls it receives; the test reads them through
// "TestProfileCalls" while it keeps the library loaded.
#include <string>

#include "core/registry/ozSubKey.h"
#include "profiles/ozProfileLibrary.h"

namespace {

std::string calls;

void Record(const std::string& call)
{
    calls += (calls.empty() ? "" : " ") + call;
}

std::string Text(const char* text)
{
    return text != nullptr ? text : "null";
}

class RecordingExporter final : public ozRegExport {
public:
    bool BeginMachineProfile(const char* file) override
    {
        Record("BeginMachineProfile(" + Text(file) + (Code() != nullptr ? ",code)" : ")"));
#if defined(OZ_TEST_MACHINE_FAILS)
        return false;
#else
        return true;
#endif
    }
    bool BeginUserProfile(const char* file) override
    {
        Record("BeginUserProfile(" + Text(file) + ")");
        return true;
    }
    bool ExportKey(ozSubKey* key) override
    {
        Record("ExportKey(" + std::to_string(key->Root()) + ":" + key->KeyPath() + ")");
        return true;
    }
    bool Flush() override
    {
        return true;
    }
};

class RecordingImporter : public ozRegImport {
public:
    bool ImportUserProfile(const char* file) override
    {
        Record("ImportUserProfile(" + Text(file) + (CodeHandle() != nullptr ? ",code)" : ")"));
        return Text(file) != "failing";
    }
    bool ImportMachineProfile(const char* file) override
    {
        Record("ImportMachineProfile(" + Text(file) + ")");
        return Text(file) != "failing";
    }
};

}  // namespace

OZ_PROFILE_API const char* TestProfileCalls()
{
    return calls.c_str();
}

OZ_PROFILE_API void TestProfileReset()
{
    calls.clear();
}

#if !defined(OZ_TEST_NO_ENTRY_POINTS)
OZ_PROFILE_API ozRegExport* InitExportObject()
{
    Record("InitExportObject");
#if defined(OZ_TEST_INIT_NONE)
    return nullptr;
#else
    return new RecordingExporter;
#endif
}

#if defined(OZ_TEST_COMPLETE_FAILS)
OZ_PROFILE_API bool CompleteExportObject(ozRegExport*, bool complete, const char** problem)
{
    Record(complete ? "CompleteExportObject(complete)" : "CompleteExportObject(drop)");
    *problem = "machine.ozp cannot be replaced";
    return false;
}
#endif

#if !defined(OZ_TEST_NO_DESTROY_EXPORT)
OZ_PROFILE_API void DestroyExportObject(ozRegExport* exporter)
{
    Record("DestroyExportObject");
    delete static_cast<RecordingExporter*>(exporter);
}
#endif

OZ_PROFILE_API ozRegImport* InitImportObject()
{
    Record("InitImportObject");
#if defined(OZ_TEST_INIT_NONE)
    return nullptr;
#else
    return new RecordingImporter;
#endif
}

OZ_PROFILE_API void DestroyImportObject(ozRegImport* importer)
{
    Record("DestroyImportObject");
    delete importer;
}
#endif
