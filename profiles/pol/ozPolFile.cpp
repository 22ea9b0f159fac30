#include "ozPolFile.h"

#include <cerrno>
#include <cstring>

namespace {

std::string SystemError(const std::string& what, const std::string& path, int number)
{
    return what + " \"" + path + "\": " + std::strerror(number);
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
