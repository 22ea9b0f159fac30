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

#include "ozStatus.h"

class ozReplacementFile {
public:
    // Nothing happens at `target` until Commit.
    explicit ozReplacementFile(std::string target);
    // Removes the temporary file unless it was committed.
    ~ozReplacementFile();
    ozReplacementFile(const ozReplacementFile&) = delete;
    ozReplacementFile& operator=(const ozReplacementFile&) = delete;

    // Failures carry a message naming the file and the system's reason, and the system's error
    // number (errno; on Windows the Win32 code where the system call was one) or 0.
    //
    // Creates the temporary file, named after the file to replace, the process and a number of
    // the process's own, so no two replacements share one. Fails when the target is read-only
    // or a folder, or the temporary file cannot be created (a missing folder, no right to
    // write there).
    // With lineEnds, the file is written as text in the system's line ends (on Windows "\n"
    // becomes CR LF); otherwise bytes go as they are.
    ozStatus Open(bool lineEnds = false);
    bool IsOpen() const { return m_file != nullptr; }
    // The temporary file, for writers that write through stdio; null unless open.
    std::FILE* Stream() const { return m_file; }
    // Appends bytes.
    ozStatus Write(std::string_view bytes);
    // Completes the temporary file and forces it to the disk; on failure the temporary file
    // is removed.
    ozStatus Finish();
    // Finishes the temporary file (unless done) and renames it over the target; on failure
    // the target is as it was.
    ozStatus Commit();
    // Removes the temporary file; the target stays as it was.
    void Discard();

    // The files of one save: every one is finished before any replaces its target, and each
    // keeps the file it replaces under a second name until all are committed, so that a file
    // that cannot be completed or renamed leaves all targets as they were (a target that did
    // not exist is removed again). Null entries are skipped. Stops at the first failure; the
    // files not yet committed are then discarded.
    static ozStatus CommitAll(std::initializer_list<ozReplacementFile*> files);

    const std::string& Target() const { return m_target; }

private:
    // With CommitAll: keeps the file about to be replaced under a second name (nothing when
    // there is none), to be put back when a later file of the save fails.
    ozStatus KeepPrevious();

    std::string m_target;
    // The file that is replaced: the target, or the file its links lead to.
    std::string m_replaced;
    std::string m_temporary;
    // The previous file under its second name while CommitAll runs; empty when none.
    std::string m_previous;
    std::FILE* m_file = nullptr;
    bool m_finished = false;
    bool m_committed = false;
};
