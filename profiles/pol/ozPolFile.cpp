#include "ozPolFile.h"

#include <cerrno>
#include <cstring>

#if defined(_WIN32)
#include <io.h>
#include <process.h>
#include <windows.h>
#define OZ_POL_PROCESS_ID _getpid()
#else
#include <unistd.h>
#define OZ_POL_PROCESS_ID getpid()
#endif

namespace {

std::string SystemError(const std::string& what, const std::string& path, int number)
{
    return what + " \"" + path + "\": " + std::strerror(number);
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

// Renames from over to; false with error set on failure.
bool RenameOver(const std::string& from, const std::string& to, std::string& error)
{
#if defined(_WIN32)
    // The ANSI function takes the narrow path as the model keeps it.
    if (MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return true;
    error = "cannot replace \"" + to + "\": system error " + std::to_string(GetLastError());
    return false;
#else
    if (std::rename(from.c_str(), to.c_str()) == 0)
        return true;
    error = SystemError("cannot replace", to, errno);
    return false;
#endif
}

}  // namespace

tPOLREAD ozPolReadFile(const char* path, std::string& bytes, std::string& error)
{
    bytes.clear();
    std::FILE* file = std::fopen(path, "rb");
    if (file == nullptr) {
        if (errno == ENOENT)
            return tPOLREAD::Missing;
        error = SystemError("cannot open", path, errno);
        return tPOLREAD::Failed;
    }
    char buffer[65536];
    for (;;) {
        std::size_t read = std::fread(buffer, 1, sizeof buffer, file);
        bytes.append(buffer, read);
        if (read < sizeof buffer)
            break;
    }
    bool failed = std::ferror(file) != 0;
    int number = errno;
    std::fclose(file);
    if (failed) {
        error = SystemError("cannot read", path, number);
        return tPOLREAD::Failed;
    }
    return tPOLREAD::Read;
}

ozPolReplacement::ozPolReplacement(std::string target, const char* tag)
    : m_target(std::move(target)),
      m_temporary(m_target + ".~" + tag + std::to_string(OZ_POL_PROCESS_ID) + ".tmp")
{
}

ozPolReplacement::~ozPolReplacement()
{
    Discard();
}

void ozPolReplacement::Discard()
{
    if (m_file != nullptr) {
        std::fclose(m_file);
        m_file = nullptr;
    }
    if (!m_committed)
        std::remove(m_temporary.c_str());
}

bool ozPolReplacement::Open(std::string& error)
{
    Discard();
    m_finished = false;
    m_committed = false;
    m_file = std::fopen(m_temporary.c_str(), "wb");
    if (m_file == nullptr) {
        error = SystemError("cannot create", m_temporary, errno);
        return false;
    }
    return true;
}

bool ozPolReplacement::Write(std::string_view bytes, std::string& error)
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

bool ozPolReplacement::Finish(std::string& error)
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

bool ozPolReplacement::Commit(std::string& error)
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
