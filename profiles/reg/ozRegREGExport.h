// The exporter of .reg files: the machine tree goes to the machine file, the user tree to the
// user file, each a version 5.00 file with a section per key. The same name for both writes
// both trees into one file, where the key sections still name their predefined keys; a profile
// without a file name is not written. Each file is written beside its target and both are moved
// into place only when the save is complete, by Complete (the library's CompleteExportObject or
// DestroyExportObject) or Flush;
// after a failed step nothing is moved, so a failed save changes no file.
#pragma once

#include <string>

#include "core/registry/ozRegExport.h"
#include "ozRegFileText.h"
#include "ozRegOutputFile.h"

class ozRegREGExport final : public ozRegExport {
public:
    ozRegREGExport() = default;
    // Abandons files not completed: a save that did not reach its end changes no file.
    ~ozRegREGExport() = default;
    ozRegREGExport(const ozRegREGExport&) = delete;
    ozRegREGExport& operator=(const ozRegREGExport&) = delete;

    // Starts the machine file; null or "" writes no machine file (its keys are passed over).
    // False, with a message (see Problem), when the file cannot be created.
    bool BeginMachineProfile(const char* file) override;
    // Starts the user file (the machine file's name continues the machine file; null or ""
    // writes no user file). False, with a message, when the file cannot be created.
    bool BeginUserProfile(const char* file) override;
    // Writes the key and its values to the current file. False, with a message, before any
    // Begin call, or when the key cannot be written (see ozRegFormatKey) or the write fails.
    bool ExportKey(ozSubKey* key) override;
    // Completes every file begun, all or none: each is finished before any replaces its
    // target. After a failed step, or when a file cannot be completed, the files are
    // abandoned, every target keeps what it had, and false is returned. ExportKey fails after
    // it.
    bool Flush() override;

    // With commit, and when the save got to the user file, Flush; otherwise the files are
    // abandoned. True when the files are in place. Only the first call acts; later ones repeat
    // its result.
    bool Complete(bool commit);
    bool Completed() const { return m_completed; }
    // The first failure of the save, naming the file or key; empty when there was none.
    const std::string& Problem() const { return m_problem; }

private:
    enum class Stage { None, Machine, User, Done };

    bool Fail(const std::string& problem);
    ozRegOutputFile& UserFile() { return m_oneFile ? m_machineFile : m_userFile; }

    Stage m_stage = Stage::None;
    ozRegOutputFile m_machineFile;
    ozRegOutputFile m_userFile;
    // The user file is the machine file.
    bool m_oneFile = false;
    bool m_failed = false;
    bool m_completed = false;
    bool m_inPlace = false;
    std::string m_problem;
};
