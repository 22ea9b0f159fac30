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

}  // namespace

ozReplacementFile::ozReplacementFile(std::string target) : m_target(std::move(target))
{
    static std::atomic<unsigned long> counter{0};
    m_temporary =
        m_target + ".~" + std::to_string(ProcessId()) + "-" + std::to_string(++counter) + ".tmp";
}

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
    if (!m_committed)
        std::remove(m_temporary.c_str());
}

bool ozReplacementFile::Open(std::string& error)
{
    Discard();
    m_finished = false;
    m_committed = false;
    std::error_code folderError;
    if (std::filesystem::is_directory(m_target, folderError)) {
        error = "cannot replace \"" + m_target + "\": it is a folder";
        return false;
    }
    m_file = std::fopen(m_temporary.c_str(), "wb");
    if (m_file == nullptr) {
        error = SystemError("cannot create", m_temporary, errno);
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
    if (!RenameOver(m_temporary, m_target, error)) {
        Discard();
        return false;
    }
    m_committed = true;
    return true;
}
