#include "ozReplacementFile.h"

#include <algorithm>
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

ozStatus SystemError(const std::string& what, const std::string& path, int number)
{
    return ozStatus::Error(what + " \"" + path + "\": " + std::strerror(number), number);
}

unsigned long ProcessId()
{
#if defined(_WIN32)
    return GetCurrentProcessId();
#else
    return static_cast<unsigned long>(getpid());
#endif
}

// A name beside `path` that no other file of this process or another one takes: the process
// and a number of the process's own.
std::string UniqueBeside(const std::string& path, const char* ending)
{
    static std::atomic<unsigned long> counter{0};
    return path + ".~" + std::to_string(ProcessId()) + "-" + std::to_string(++counter) + ending;
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

// Renames from over to in one step.
ozStatus RenameOver(const std::string& from, const std::string& to)
{
#if defined(_WIN32)
    // The C library's rename refuses an existing target; MoveFileEx replaces it.
    if (MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return ozStatus::Ok();
    DWORD code = GetLastError();
    return ozStatus::Error("cannot replace \"" + to + "\": " + ozSystemMessage(code),
                           static_cast<int>(code));
#else
    if (std::rename(from.c_str(), to.c_str()) == 0)
        return ozStatus::Ok();
    return SystemError("cannot replace", to, errno);
#endif
}

// The file a target leads to through its symbolic links: the target itself when it is none.
// A link that leads nowhere leads to the file it names, which the save then creates.
ozStatus FollowLinks(const std::string& target, std::string& replaced)
{
    namespace fs = std::filesystem;
    replaced = target;
    std::error_code code;
    if (!fs::is_symlink(fs::symlink_status(target, code)))
        return ozStatus::Ok();  // the usual case keeps the name exactly as given
    fs::path path = target;
    for (int hops = 0; fs::is_symlink(fs::symlink_status(path, code)); ++hops) {
        fs::path next = fs::read_symlink(path, code);
        if (code || hops == 40)
            return ozStatus::Error("cannot follow the link \"" + target + "\": " +
                                       (code ? code.message() : std::string("too many links")),
                                   code ? code.value() : ELOOP);
        path = next.is_absolute() ? next : path.parent_path() / next;
    }
    replaced = path.string();
    return ozStatus::Ok();
}

// Refuses a read-only file and gives the new file the permissions (and, where the process
// may, the owner) of the file it replaces. Nothing to do when there is no file yet.
ozStatus TakeOverPermissions(const std::string& target, const std::string& replaced,
                             std::FILE* file)
{
#if defined(_WIN32)
    (void)file;
    DWORD attributes = GetFileAttributesA(replaced.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0)
        return ozStatus::Error("\"" + target + "\" is read-only; it is not replaced",
                               ERROR_ACCESS_DENIED);
    return ozStatus::Ok();
#else
    struct stat info;
    if (stat(replaced.c_str(), &info) != 0)
        return ozStatus::Ok();
    // The mode is checked by itself: a process that may override it (the administrator) would
    // otherwise replace a profile that was made read-only on purpose.
    if ((info.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0)
        return ozStatus::Error("\"" + target + "\" is read-only; it is not replaced", EACCES);
    if (access(replaced.c_str(), W_OK) != 0)
        return SystemError("cannot replace", target, errno);
    if (file == nullptr)
        return ozStatus::Ok();
    // Only the administrator may give a file away; anyone else keeps the file as their own.
    if (fchown(fileno(file), info.st_uid, info.st_gid) != 0) {
    }
    if (fchmod(fileno(file), info.st_mode & 07777) != 0)
        return SystemError("cannot set the permissions of", target, errno);
    return ozStatus::Ok();
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

ozStatus ozReplacementFile::Open(bool lineEnds)
{
    Discard();
    m_finished = false;
    m_committed = false;
    if (ozStatus followed = FollowLinks(m_target, m_replaced); !followed)
        return followed;
    m_temporary = UniqueBeside(m_replaced, ".tmp");
    std::error_code folderError;
    if (std::filesystem::is_directory(m_replaced, folderError))
        return ozStatus::Error("cannot replace \"" + m_target + "\": it is a folder", EISDIR);
    if (ozStatus allowed = TakeOverPermissions(m_target, m_replaced, nullptr); !allowed)
        return allowed;
    m_file = std::fopen(m_temporary.c_str(), lineEnds ? "w" : "wb");
    if (m_file == nullptr)
        return SystemError("cannot create", m_target, errno);
    if (ozStatus taken = TakeOverPermissions(m_target, m_replaced, m_file); !taken) {
        Discard();
        return taken;
    }
    return ozStatus::Ok();
}

ozStatus ozReplacementFile::Write(std::string_view bytes)
{
    if (m_file == nullptr)
        return ozStatus::Error("\"" + m_target + "\" is not open for writing", EBADF);
    if (std::fwrite(bytes.data(), 1, bytes.size(), m_file) != bytes.size())
        return SystemError("cannot write", m_temporary, errno);
    return ozStatus::Ok();
}

ozStatus ozReplacementFile::Finish()
{
    if (m_finished)
        return ozStatus::Ok();
    if (m_file == nullptr)
        return ozStatus::Error("\"" + m_target + "\" is not open for writing", EBADF);
    bool written = std::fflush(m_file) == 0 && Synchronize(m_file);
    int number = errno;
    written = std::fclose(m_file) == 0 && written;
    m_file = nullptr;
    if (!written) {
        Discard();
        return SystemError("cannot complete", m_temporary, number);
    }
    m_finished = true;
    return ozStatus::Ok();
}

ozStatus ozReplacementFile::Commit()
{
    if (ozStatus finished = Finish(); !finished)
        return finished;
    if (ozStatus renamed = RenameOver(m_temporary, m_replaced); !renamed) {
        Discard();
        return renamed;
    }
    m_committed = true;
    return ozStatus::Ok();
}

ozStatus ozReplacementFile::KeepPrevious()
{
    namespace fs = std::filesystem;
    std::error_code code;
    m_previous.clear();
    if (!fs::exists(m_replaced, code))
        return ozStatus::Ok();
    // A second name for the same file costs nothing; where the file system has none, a copy.
    std::string kept = UniqueBeside(m_replaced, ".old");
    fs::create_hard_link(m_replaced, kept, code);
    if (code && !fs::copy_file(m_replaced, kept, code))
        return ozStatus::Error("cannot keep the previous \"" + m_target + "\": " + code.message(),
                               code.value());
    m_previous = kept;
    return ozStatus::Ok();
}

ozStatus ozReplacementFile::CommitAll(std::initializer_list<ozReplacementFile*> files)
{
    ozStatus status;
    for (ozReplacementFile* file : files)
        if (status && file != nullptr)
            status = file->Finish();
    // With more than one file, each keeps what it replaces until all are committed, so that a
    // rename that fails after others succeeded can still leave every target as it was.
    bool several = std::count(files.begin(), files.end(), nullptr) + 1 < std::ssize(files);
    for (ozReplacementFile* file : files)
        if (status && file != nullptr && several)
            status = file->KeepPrevious();
    for (ozReplacementFile* file : files)
        if (status && file != nullptr)
            status = file->Commit();
    for (ozReplacementFile* file : files) {
        if (file == nullptr)
            continue;
        std::string previous = std::move(file->m_previous);
        file->m_previous.clear();
        if (!status && file->m_committed) {
            file->m_committed = false;
            if (previous.empty())
                std::remove(file->m_replaced.c_str());
            else if (RenameOver(previous, file->m_replaced))
                previous.clear();
            else
                continue;  // what cannot be put back stays beside the target, not lost
        }
        if (!status)
            file->Discard();
        if (!previous.empty())
            std::remove(previous.c_str());
    }
    return status;
}
