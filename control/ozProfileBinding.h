// Binding a profile library for one save or load: the library is loaded by name, its two
// entry points for the operation are looked up, the exporter or importer it makes is driven
// over the code object's registry trees and handed back, and the library is released, on every
// path. Problems are shown through the host's user interface with the host's message texts.
#pragma once

#include <functional>
#include <string>

#include "ozHostUI.h"

struct tTreeCodeHandle;

// The host message numbers the binding shows.
enum : unsigned short {
    HostMessageLibraryNotLoaded = 94,   // formatted with the library name
    HostMessageEntryPointMissing = 95,  // formatted with the entry point and the library name
    HostMessageNoProfileObject = 96,
    HostMessageProfileNotSaved = 97,  // formatted with the library's description
};

// What a load came to: the control needs to know whether the library could be loaded at all.
enum class tPROFILELOAD {
    NoCodeObject,      // no code object (or tree) to load into: nothing happened
    LibraryNotLoaded,  // nothing else happened
    Failed,            // what was imported before the failure stays
    Succeeded,
};

class ozProfileBinding {
public:
    // The host's text of a message number (empty when the host gave none).
    using MessageText = std::function<std::string(unsigned short number)>;

    ozProfileBinding(ozHostUI& ui, MessageText messageText);

    // Writes the machine tree to machineFile, then the user tree to userFile, through the
    // exporter of `library`: BeginMachineProfile, every machine key, BeginUserProfile, every
    // user key; the first step that fails ends the save. On success the code object's modified
    // flag is cleared. False without code object, when the library or an entry point is
    // missing (messages 94, 95), when no exporter is made (96), when a step fails, or when the
    // library's CompleteExportObject says its files are not in place; the library's
    // description of the failure is then shown (97) and the modified flag stays.
    bool Save(tTreeCodeHandle* code, const char* library, const char* userFile,
              const char* machineFile);
    // Reads userFile and then, only when machineFile is named and not empty, machineFile,
    // through the importer of `library`. Unless there is no code object or the library cannot
    // be loaded, the code object's modified flag is then cleared and the policy states are
    // synced from the trees, whatever the import's result.
    tPROFILELOAD Load(tTreeCodeHandle* code, const char* library, const char* userFile,
                      const char* machineFile);

private:
    void Show(unsigned short number, std::initializer_list<std::string> arguments);

    ozHostUI& m_ui;
    MessageText m_messageText;
};
