#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "profiles/reg/ozRegOutputFile.h"

std::string ozRegTemporaryPathFor(const std::string& path)
{
    static std::atomic<unsigned> counter{0};
    return path + "." + std::to_string(getpid()) + "-" + std::to_string(++counter) + ".tmp";
}

bool ozRegReplaceFile(const std::string& from, const std::string& to, std::string& problem)
{
    // rename() replaces the target in one step.
    if (std::rename(from.c_str(), to.c_str()) != 0) {
        problem = std::string("cannot replace the file (") + std::strerror(errno) + ")";
        return false;
    }
    return true;
}
