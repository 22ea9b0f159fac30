#include "platform/win32/ozModulePath.h"

std::wstring ozModulePath(HMODULE module)
{
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
        if (length == 0)
            return {};
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        // Truncated: long paths are allowed, so try again with more room, up to their limit.
        if (path.size() >= 32768)
            return {};
        path.resize(path.size() * 2);
    }
}
