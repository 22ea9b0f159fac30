// Reading a whole Registry.pol file, and replacing one without ever leaving it half written:
// the new contents go to a temporary file in the same folder, which is renamed over the
// target only when complete.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

// How reading a file went.
enum class tPOLREAD {
    Read,     // bytes holds the whole file
    Missing,  // there is no file of that name
    Failed,   // error says why
};

tPOLREAD ozPolReadFile(const char* path, std::string& bytes, std::string& error);

// A file being written in place of `target`. Nothing changes at target until Commit; an
// object destroyed without a successful Commit removes its temporary file.
class ozPolReplacement {
public:
    // `tag` keeps the temporary files of two replacements of one process apart.
    ozPolReplacement(std::string target, const char* tag);
    ~ozPolReplacement();
    ozPolReplacement(const ozPolReplacement&) = delete;
    ozPolReplacement& operator=(const ozPolReplacement&) = delete;

    // Creates the temporary file. False, with error set, when it cannot be created (for
    // instance a missing folder or no right to write there).
    bool Open(std::string& error);
    // Appends bytes. False, with error set, when the write fails.
    bool Write(std::string_view bytes, std::string& error);
    // Completes the temporary file and forces it to the disk. False, with error set, when
    // that fails; the target is as it was.
    bool Finish(std::string& error);
    // Finishes the temporary file (unless done) and renames it over the target. False, with
    // error set, when any step fails; the target is then as it was.
    bool Commit(std::string& error);

    const std::string& Target() const { return m_target; }

private:
    void Discard();

    std::string m_target;
    std::string m_temporary;
    std::FILE* m_file = nullptr;
    bool m_finished = false;
    bool m_committed = false;
};
