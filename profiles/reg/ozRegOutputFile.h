// A .reg file being written: the text goes to a temporary file beside the target, which
// replaces the target only when the file is complete, so that a failed save leaves the target
// as it was and no half-written file behind.
#pragma once

#include <memory>
#include <string>

#include "ozRegFileText.h"
#include "platform/ozReplacementFile.h"

class ozRegOutputFile {
public:
    ozRegOutputFile() = default;
    // Abandons a file that was not committed.
    ~ozRegOutputFile();
    ozRegOutputFile(const ozRegOutputFile&) = delete;
    ozRegOutputFile& operator=(const ozRegOutputFile&) = delete;

    // Starts the file for target `path` with the byte-order mark and the version 5.00 header.
    // Fails, with the file's name and the system's reason and error number, when the temporary
    // file cannot be created or written.
    ozStatus Open(const std::string& path);
    bool IsOpen() const { return m_file != nullptr && m_file->IsOpen(); }
    const std::string& Path() const { return m_path; }
    // Appends text as UTF-16LE; fails as Open does, or when no file is open.
    ozStatus Write(const ozWideString& text);
    // The file for committing together with the others of the save (ozReplacementFile's
    // CommitAll); null when none is open.
    ozReplacementFile* Replacement() { return IsOpen() ? m_file.get() : nullptr; }
    // Closes and removes the temporary file; the target is untouched.
    void Abandon();

private:
    std::unique_ptr<ozReplacementFile> m_file;
    std::string m_path;
};
