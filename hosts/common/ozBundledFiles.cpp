#include "ozBundledFiles.h"

#include <filesystem>
#include <vector>
#if defined(_WIN32)
#include <windows.h>
#endif

namespace {

std::filesystem::path ExecutableFolder()
{
#if defined(_WIN32)
    char path[MAX_PATH * 4];
    DWORD length = GetModuleFileNameA(nullptr, path, sizeof path);
    if (length == 0 || length >= sizeof path)
        return {};
    return std::filesystem::path(std::string(path, length)).parent_path();
#else
    std::error_code error;
    std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::path() : self.parent_path();
#endif
}

}  // namespace

std::string ozBundledFile(const std::string& name)
{
    std::vector<std::filesystem::path> candidates;
    if (std::filesystem::path folder = ExecutableFolder(); !folder.empty()) {
        candidates.push_back(folder / "ozadm-data" / name);
        candidates.push_back(folder.parent_path() / "share" / "ozadm" / name);
    }
    // Neither installed nor beside the executable: the source tree it was built from.
    candidates.push_back(std::filesystem::path(OZADM_SOURCE_DATA) / name);
    candidates.push_back(std::filesystem::path(OZADM_SOURCE_GRAMMAR) / name);
    for (const std::filesystem::path& candidate : candidates) {
        std::error_code error;
        if (std::filesystem::is_regular_file(candidate, error))
            return candidate.string();
    }
    return candidates.back().string();
}

std::string ozTemplatePath(const std::string& file)
{
#if defined(_WIN32)
    std::error_code error;
    std::filesystem::path absolute = std::filesystem::absolute(file, error);
    if (!error && !file.empty())
        return absolute.string();
#endif
    return file;
}
