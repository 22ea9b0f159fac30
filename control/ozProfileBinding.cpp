#include "ozProfileBinding.h"

#include "core/adm/tTreeCodeHandle.h"
#include "ozMessageFormat.h"
#include "platform/ozDynamicLibrary.h"
#include "profiles/ozProfileLibrary.h"

namespace {

// The entry points of one operation, looked up Init first. A missing one is reported; a
// missing Destroy means nothing may be created, since it could not be given back.
template <class Init, class Destroy>
struct EntryPoints {
    Init init = nullptr;
    Destroy destroy = nullptr;
};

}  // namespace

ozProfileBinding::ozProfileBinding(ozHostUI& ui, MessageText messageText)
    : m_ui(ui), m_messageText(std::move(messageText))
{
}

void ozProfileBinding::Show(unsigned short number, std::initializer_list<std::string> arguments)
{
    m_ui.ShowMessage(HostMessageError, ozFormatMessage(m_messageText(number), arguments));
}

namespace {

template <class Init, class Destroy>
bool LookUp(const ozDynamicLibrary& library, const char* initName, const char* destroyName,
            EntryPoints<Init, Destroy>& entries,
            const std::function<void(const char*)>& reportMissing)
{
    entries.init = reinterpret_cast<Init>(library.Function(initName));
    if (entries.init == nullptr)
        reportMissing(initName);
    entries.destroy = reinterpret_cast<Destroy>(library.Function(destroyName));
    if (entries.destroy == nullptr)
        reportMissing(destroyName);
    return entries.init != nullptr && entries.destroy != nullptr;
}

}  // namespace

bool ozProfileBinding::Save(tTreeCodeHandle* code, const char* library, const char* userFile,
                            const char* machineFile)
{
    if (code == nullptr || code->tree == nullptr)
        return false;
    const std::string libraryName = library != nullptr ? library : "";
    ozDynamicLibrary loaded;
    if (!loaded.Load(libraryName.c_str())) {
        Show(HostMessageLibraryNotLoaded, {libraryName});
        return false;
    }
    EntryPoints<ozInitExportObjectFunction, ozDestroyExportObjectFunction> entries;
    if (!LookUp(loaded, "InitExportObject", "DestroyExportObject", entries,
                [&](const char* missing) {
                    Show(HostMessageEntryPointMissing, {missing, libraryName});
                }))
        return false;
    ozRegExport* exporter = entries.init();
    if (exporter == nullptr) {
        Show(HostMessageNoProfileObject, {});
        return false;
    }
    exporter->Code(code);
    // The machine profile is written before the user profile.
    bool saved = exporter->BeginMachineProfile(machineFile) &&
                 code->tree->MacTree().Save(exporter) && exporter->BeginUserProfile(userFile) &&
                 code->tree->UsrTree().Save(exporter);
    // A library that can say how completing its files went is asked before the exporter goes
    // back; without that entry point the files are completed in DestroyExportObject.
    if (auto complete = reinterpret_cast<ozCompleteExportObjectFunction>(
            loaded.Function("CompleteExportObject"))) {
        const char* problem = nullptr;
        saved = complete(exporter, saved, &problem) && saved;
        if (!saved && problem != nullptr && *problem != '\0')
            Show(HostMessageProfileNotSaved, {problem});
    }
    entries.destroy(exporter);
    loaded.Release();
    if (saved)
        code->modified = 0;
    return saved;
}

tPROFILELOAD ozProfileBinding::Load(tTreeCodeHandle* code, const char* library,
                                    const char* userFile, const char* machineFile)
{
    if (code == nullptr || code->tree == nullptr)
        return tPROFILELOAD::NoCodeObject;
    const std::string libraryName = library != nullptr ? library : "";
    ozDynamicLibrary loaded;
    if (!loaded.Load(libraryName.c_str())) {
        Show(HostMessageLibraryNotLoaded, {libraryName});
        return tPROFILELOAD::LibraryNotLoaded;
    }
    bool imported = false;
    EntryPoints<ozInitImportObjectFunction, ozDestroyImportObjectFunction> entries;
    if (LookUp(loaded, "InitImportObject", "DestroyImportObject", entries,
               [&](const char* missing) {
                   Show(HostMessageEntryPointMissing, {missing, libraryName});
               })) {
        if (ozRegImport* importer = entries.init(); importer == nullptr) {
            Show(HostMessageNoProfileObject, {});
        } else {
            importer->CodeHandle(code);
            // The user profile is read before the machine profile, the reverse of a save.
            imported = importer->ImportUserProfile(userFile);
            if (machineFile != nullptr && *machineFile != '\0' &&
                !importer->ImportMachineProfile(machineFile))
                imported = false;
            entries.destroy(importer);
        }
    }
    loaded.Release();
    code->modified = 0;
    code->tree->Sync();
    return imported ? tPROFILELOAD::Succeeded : tPROFILELOAD::Failed;
}
