// Writes the registry trees as ".ozp" profiles: one file per profile, each key as a section
// with its flags and values. A file is written under a temporary name next to its target and
// renamed into place only when the whole save is complete, so a failed or interrupted save
// leaves every previous profile as it was.
#pragma once

#include <memory>
#include <string>

#include "core/registry/ozRegExport.h"
#include "platform/ozReplacementFile.h"

class ozOZPExporter final : public ozRegExport {
public:
    ozOZPExporter() = default;
    ozOZPExporter(const ozOZPExporter&) = delete;
    ozOZPExporter& operator=(const ozOZPExporter&) = delete;

    // Starts `file`; the file begun before stays open until the save is complete. A null or
    // empty name writes no file for this profile: its keys are passed over. The same name as
    // the file being written continues it, so both profiles can share one file. False when
    // the file cannot be created (a folder of that name or a read-only file included).
    bool BeginMachineProfile(const char* file) override;
    bool BeginUserProfile(const char* file) override;
    // Writes the key's section: path, operation, flags and every value. False when a write
    // fails; the save is then over and every previous profile stays.
    bool ExportKey(ozSubKey* key) override;
    // Complete(true).
    bool Flush() override;

    // With commit, puts every file of the save in place, or none of them when one cannot be
    // completed; without, drops them all. True when the files are in place. Only the first
    // call acts; later ones repeat its result.
    bool Complete(bool commit);
    bool Completed() const { return m_completed; }
    // The first failure of the save, naming the file; empty when there was none.
    const std::string& Problem() const { return m_problem; }

private:
    bool Begin(const char* file);
    bool Fail(const std::string& error);

    // The files of the save, in the order they were begun (a profile without file has none).
    std::unique_ptr<ozReplacementFile> m_first;
    std::unique_ptr<ozReplacementFile> m_second;
    // The file being written; null while none is (or for a profile without file).
    ozReplacementFile* m_current = nullptr;
    // A step failed: the save is over and every later call fails.
    bool m_failed = false;
    bool m_completed = false;
    bool m_inPlace = false;
    std::string m_problem;
};
