#include "ozReplacementFile.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#if defined(_WIN32)
#include <io.h>
#include <windows.h>

#include "ozSystemMessage.h"
#else
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

std::string SystemError(const std::string& what, const std::string& path, int number)
{
    return what + " \"" + path + "\": " + std::strerror(number);
}

unsigned long ProcessId()
{
#if defined(_WIN32)
    return GetCurrentProcessId();
#else
    return static_cast<unsigned long>(getpid());
#endif
}

// Forces the file's written bytes to the disk, so that the rename never publishes a file
// whose contents are still in flight.
bool Synchronize(std::FILE* file)
{
#if defined(_WIN32)
    return _commit(_fileno(file)) == 0;
#else
    return fsync(fileno(file)) == 0;
#endif
}

// Renames from over to in one step; false with error set on failure.
bool RenameOver(const std::string& from, const std::string& to, std::string& error)
{
#if defined(_WIN32)
    // The C library's rename refuses an existing target; MoveFileEx replaces it.
    if (MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return true;
    error = "cannot replace \"" + to + "\": " + ozSystemMessage(GetLastError());
    return false;
#else
    if (std::rename(from.c_str(), to.c_str()) == 0)
        return true;
    error = SystemError("cannot replace", to, errno);
    return false;
#endif
}

// The file a target leads to through its symbolic links: the target itself when it is none.
// A link that leads nowhere leads to the file it names, which the save then creates.
bool FollowLinks(const std::string& target, std::string& replaced, std::string& error)
{
    namespace fs = std::filesystem;
    replaced = target;
    std::error_code code;
    if (!fs::is_symlink(fs::symlink_status(target, code)))
        return true;  // the usual case keeps the name exactly as given
    fs::path path = target;
    for (int hops = 0; fs::is_symlink(fs::symlink_status(path, code)); ++hops) {
        fs::path next = fs::read_symlink(path, code);
        if (code || hops == 40) {
            error = "cannot follow the link \"" + target +
                    "\": " + (code ? code.message() : std::string("too many links"));
            return false;
        }
        path = next.is_absolute() ? next : path.parent_path() / next;
    }
    replaced = path.string();
    return true;
}

// Refuses a read-only file and gives the new file the permissions (and, where the process
// may, the owner) of the file it replaces. Nothing to do when there is no file yet.
bool TakeOverPermissions(const std::string& target, const std::string& replaced, std::FILE* file,
                         std::string& error)
{
#if defined(_WIN32)
    (void)file;
    DWORD attributes = GetFileAttributesA(replaced.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        error = "\"" + target + "\" is read-only; it is not replaced";
        return false;
    }
    return true;
#else
    struct stat info;
    if (stat(replaced.c_str(), &info) != 0)
        return true;
    // The mode is checked by itself: a process that may override it (the administrator) would
    // otherwise replace a profile that was made read-only on purpose.
    if ((info.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) {
        error = "\"" + target + "\" is read-only; it is not replaced";
        return false;
    }
    if (access(replaced.c_str(), W_OK) != 0) {
        error = SystemError("cannot replace", target, errno);
        return false;
    }
    if (file == nullptr)
        return true;
    // Only the administrator may give a file away; anyone else keeps the file as their own.
    if (fchown(fileno(file), info.st_uid, info.st_gid) != 0) {
    }
    if (fchmod(fileno(file), info.st_mode & 07777) != 0) {
        error = SystemError("cannot set the permissions of", target, errno);
        return false;
    }
    return true;
#endif
}

}  // namespace

ozReplacementFile::ozReplacementFile(std::string target) : m_target(std::move(target)) {}

ozReplacementFile::~ozReplacementFile()
{
    Discard();
}

void ozReplacementFile::Discard()
{
    if (m_file != nullptr) {
        std::fclose(m_file);
        m_file = nullptr;
    }
    if (!m_committed && !m_temporary.empty())
        std::remove(m_temporary.c_str());
}

bool ozReplacementFile::Open(std::string& error)
{
    Discard();
    m_finished = false;
    m_committed = false;
    if (!FollowLinks(m_target, m_replaced, error))
        return false;
    static std::atomic<unsigned long> counter{0};
    m_temporary =
        m_replaced + ".~" + std::to_string(ProcessId()) + "-" + std::to_string(++counter) + ".tmp";
    std::error_code folderError;
    if (std::filesystem::is_directory(m_replaced, folderError)) {
        error = "cannot replace \"" + m_target + "\": it is a folder";
        return false;
    }
    if (!TakeOverPermissions(m_target, m_replaced, nullptr, error))
        return false;
    m_file = std::fopen(m_temporary.c_str(), "wb");
    if (m_file == nullptr) {
        error = SystemError("cannot create", m_target, errno);
        return false;
    }
    if (!TakeOverPermissions(m_target, m_replaced, m_file, error)) {
        Discard();
        return false;
    }
    return true;
}

bool ozReplacementFile::Write(std::string_view bytes, std::string& error)
{
    if (m_file == nullptr) {
        error = "\"" + m_target + "\" is not open for writing";
        return false;
    }
    if (std::fwrite(bytes.data(), 1, bytes.size(), m_file) != bytes.size()) {
        error = SystemError("cannot write", m_temporary, errno);
        return false;
    }
    return true;
}

bool ozReplacementFile::Finish(std::string& error)
{
    if (m_finished)
        return true;
    if (m_file == nullptr) {
        error = "\"" + m_target + "\" is not open for writing";
        return false;
    }
    bool written = std::fflush(m_file) == 0 && Synchronize(m_file);
    int number = errno;
    written = std::fclose(m_file) == 0 && written;
    m_file = nullptr;
    if (!written) {
        error = SystemError("cannot complete", m_temporary, number);
        Discard();
        return false;
    }
    m_finished = true;
    return true;
}

bool ozReplacementFile::Commit(std::string& error)
{
    if (!Finish(error))
        return false;
    if (!RenameOver(m_temporary, m_replaced, error)) {
        Discard();
        return false;
    }
    m_committed = true;
    return true;
}

bool ozReplacementFile::CommitAll(std::initializer_list<ozReplacementFile*> files,
                                  std::string& error)
{
    bool committed = true;
    for (ozReplacementFile* file : files)
        committed = committed && (file == nullptr || file->Finish(error));
    for (ozReplacementFile* file : files)
        committed = committed && (file == nullptr || file->Commit(error));
    if (!committed)
        for (ozReplacementFile* file : files)
            if (file != nullptr)
                file->Discard();
    return committed;
}
