// Writes the registry trees as ".ozp" profiles: one file per profile, each key as a section
// with its flags and values. A file is written under a temporary name next to its target and
// renamed into place only when it is complete, so a failed or interrupted save leaves the
// previous profile as it was.
#pragma once

#include <memory>
#include <string>

#include "core/registry/ozRegExport.h"
#include "platform/ozReplacementFile.h"

class ozOZPExporter final : public ozRegExport {
public:
    ozOZPExporter() = default;
    // Completes the file being written.
    ~ozOZPExporter();
    ozOZPExporter(const ozOZPExporter&) = delete;
    ozOZPExporter& operator=(const ozOZPExporter&) = delete;

    // Completes the file begun before and starts `file`. A null or empty name writes no file
    // for this profile: its keys are passed over. The same name as the file being written
    // continues it, so both profiles can share one file. False when the file begun before
    // cannot be completed or the new one cannot be created (a folder of that name included).
    bool BeginMachineProfile(const char* file) override;
    bool BeginUserProfile(const char* file) override;
    // Writes the key's section: path, operation, flags and every value. False when a write
    // fails; the file is then abandoned and the previous profile stays.
    bool ExportKey(ozSubKey* key) override;
    // Completes the file being written (renames it into place). False when that fails.
    bool Flush() override;

private:
    bool Begin(const char* file);
    bool Fail(const std::string& error);

    // The file being written; null while none is (or for a profile without file).
    std::unique_ptr<ozReplacementFile> m_file;
    // A write failed: the save is over and every later call fails.
    bool m_failed = false;
};
