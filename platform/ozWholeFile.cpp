#include "ozWholeFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

namespace {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

ozStatus Failed(const char* what, const char* path, int number, std::string& bytes)
{
    bytes.clear();
    return ozStatus::Error(std::string(what) + " \"" + path + "\": " + std::strerror(number),
                           number);
}

}  // namespace

ozStatus ozReadWholeFile(const char* path, std::string& bytes)
{
    if (path == nullptr)
        path = "";
    errno = 0;
    std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path, "rb"));
    if (file == nullptr) {
        return Failed("cannot open", path, errno, bytes);
    }
    try {
        bytes.clear();
        // One read when the size is known (a regular file); then whatever more there is.
        if (std::fseek(file.get(), 0, SEEK_END) == 0) {
            long size = std::ftell(file.get());
            if (size > 0 && std::fseek(file.get(), 0, SEEK_SET) == 0) {
                bytes.resize(static_cast<size_t>(size));
                bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
            }
        }
        char chunk[65536];
        for (size_t got; (got = std::fread(chunk, 1, sizeof chunk, file.get())) > 0;)
            bytes.append(chunk, got);
    } catch (const std::bad_alloc&) {
        return Failed("cannot read", path, ENOMEM, bytes);
    }
    if (std::ferror(file.get()) != 0)
        return Failed("cannot read", path, errno != 0 ? errno : EIO, bytes);
    return ozStatus::Ok();
}
