#include "ozTextConversion.h"

std::basic_string<WCHAR> ozWideText(const char* text)
{
    if (text == nullptr)
        return {};
    int needed = MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0);
    if (needed <= 0)
        return {};
    std::basic_string<WCHAR> wide(static_cast<size_t>(needed), WCHAR{0});
    int written = MultiByteToWideChar(CP_ACP, 0, text, -1, wide.data(), needed);
    wide.resize(written > 0 ? static_cast<size_t>(written) - 1 : 0);  // without the terminator
    return wide;
}

std::string ozNarrowText(const WCHAR* text, size_t length)
{
    if (text == nullptr || length == 0 || length > 0x7FFFFFFF)
        return {};
    int units = static_cast<int>(length);
    int needed = WideCharToMultiByte(CP_ACP, 0, text, units, nullptr, 0, nullptr, nullptr);
    if (needed <= 0)
        return {};
    std::string narrow(static_cast<size_t>(needed), '\0');
    int written =
        WideCharToMultiByte(CP_ACP, 0, text, units, narrow.data(), needed, nullptr, nullptr);
    narrow.resize(written > 0 ? static_cast<size_t>(written) : 0);
    return narrow;
}
