// A file written in place of another without ever leaving either half written: the new bytes
// go to a temporary file in the target's folder, which is forced to the disk and renamed over
// the target only when complete. The profile libraries save through it.
//
// What is replaced: a target that is a symbolic link stays a link; the file it leads to is
// replaced. The new file gets the previous file's permission bits and, where the process may
// give it away, its owner and group. A read-only target is refused, not replaced: on POSIX a
// target whose mode grants writing to no one (no w bit at all), even to a process that could
// override the mode, or one this process may not write; on Windows a target with the
// read-only attribute.
#pragma once

#include <cstdio>
#include <initializer_list>
#include <string>
#include <string_view>

class ozReplacementFile {
public:
    // Nothing happens at `target` until Commit.
    explicit ozReplacementFile(std::string target);
    // Removes the temporary file unless it was committed.
    ~ozReplacementFile();
    ozReplacementFile(const ozReplacementFile&) = delete;
    ozReplacementFile& operator=(const ozReplacementFile&) = delete;

    // Creates the temporary file, named after the file to replace, the process and a number of
    // the process's own, so no two replacements share one. False, with error naming the file
    // and the cause, when the target is read-only or a folder, or the temporary file cannot be
    // created (a missing folder, no right to write there).
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

    // The files of one save: every one is finished before any replaces its target, so that a
    // file that cannot be completed leaves all targets as they were. Null entries are skipped.
    // False, with error set, at the first failure; the files not yet committed are discarded.
    static bool CommitAll(std::initializer_list<ozReplacementFile*> files, std::string& error);

    const std::string& Target() const { return m_target; }

private:
    std::string m_target;
    // The file that is replaced: the target, or the file its links lead to.
    std::string m_replaced;
    std::string m_temporary;
    std::FILE* m_file = nullptr;
    bool m_finished = false;
    bool m_committed = false;
};
