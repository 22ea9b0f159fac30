#include <windows.h>

#include <atomic>

#include "platform/ozSystemMessage.h"
#include "profiles/reg/ozRegOutputFile.h"

std::string ozRegTemporaryPathFor(const std::string& path)
{
    static std::atomic<unsigned> counter{0};
    return path + "." + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++counter) +
           ".tmp";
}

bool ozRegReplaceFile(const std::string& from, const std::string& to, std::string& problem)
{
    // The C library's rename() refuses an existing target; MoveFileEx replaces it.
    if (!MoveFileExA(from.c_str(), to.c_str(),
                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        problem = "cannot replace the file (" + ozSystemMessage(GetLastError()) + ")";
        return false;
    }
    return true;
}
