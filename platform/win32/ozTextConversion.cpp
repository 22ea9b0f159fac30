#include "platform/ozTextConversion.h"

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
    // One conversion into room for the longest result: three bytes per UTF-16 unit at most.
    if (text == nullptr || length == 0 || length > 0x7FFFFFFF / 3)
        return {};
    int units = static_cast<int>(length);
    std::string narrow(length * 3, '\0');
    int written =
        WideCharToMultiByte(CP_ACP, 0, text, units, narrow.data(), units * 3, nullptr, nullptr);
    narrow.resize(written > 0 ? static_cast<size_t>(written) : 0);
    return narrow;
}

namespace {

// `text` from one code page into another, through UTF-16.
std::string Recode(const std::string& text, UINT from, UINT to)
{
    if (text.empty() || text.size() > 0x7FFFFFFF / 4)
        return {};
    int length = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    int units = MultiByteToWideChar(from, 0, text.data(), length, wide.data(), length);
    // Four bytes per UTF-16 unit at most (UTF-8 needs three, code pages two).
    std::string out(static_cast<size_t>(units) * 4, '\0');
    int written =
        WideCharToMultiByte(to, 0, wide.data(), units, out.data(), units * 4, nullptr, nullptr);
    out.resize(written > 0 ? static_cast<size_t>(written) : 0);
    return out;
}

}  // namespace

std::string ozNarrowFromUtf8(const std::string& text)
{
    return Recode(text, CP_UTF8, CP_ACP);
}

std::string ozUtf8FromNarrow(const std::string& text)
{
    return Recode(text, CP_ACP, CP_UTF8);
}
