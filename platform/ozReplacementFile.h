// A file written in place of another without ever leaving either half written: the new bytes
// go to a temporary file in the target's folder, which is forced to the disk and renamed over
// the target only when complete. The profile libraries save through it.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

class ozReplacementFile {
public:
    // Nothing happens at `target` until Commit. The temporary file is named after the target,
    // the process and a number of the process's own, so no two replacements share one.
    explicit ozReplacementFile(std::string target);
    // Removes the temporary file unless it was committed.
    ~ozReplacementFile();
    ozReplacementFile(const ozReplacementFile&) = delete;
    ozReplacementFile& operator=(const ozReplacementFile&) = delete;

    // Creates the temporary file. False, with error naming the file and the cause, when it
    // cannot be created (a missing folder, no right to write there, a folder of the target's
    // name).
    bool Open(std::string& error);
    bool IsOpen() const { return m_file != nullptr; }
    // Appends bytes. False, with error set, when the write fails.
    bool Write(std::string_view bytes, std::string& error);
    // Completes the temporary file and forces it to the disk. False, with error set, when that
    // fails; the temporary file is then removed.
    bool Finish(std::string& error);
    // Finishes the temporary file (unless done) and renames it over the target. False, with
    // error set, when any step fails; the target is then as it was.
    bool Commit(std::string& error);
    // Removes the temporary file; the target stays as it was.
    void Discard();

    const std::string& Target() const { return m_target; }

private:
    std::string m_target;
    std::string m_temporary;
    std::FILE* m_file = nullptr;
    bool m_finished = false;
    bool m_committed = false;
};
