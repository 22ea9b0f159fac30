#include "ozPolText.h"

#include <climits>

#include "platform/ozTextConversion.h"

static_assert(sizeof(WCHAR) == sizeof(char16_t), "WCHAR holds one UTF-16 unit");

std::string ozPolNarrow(std::u16string_view text)
{
    return ozNarrowText(reinterpret_cast<const WCHAR*>(text.data()), text.size());
}

std::u16string ozPolWide(std::string_view text)
{
    // The explicit length carries zero bytes through, which ozWideText would stop at.
    if (text.empty() || text.size() > static_cast<std::size_t>(INT_MAX))
        return {};
    int length = static_cast<int>(text.size());
    int needed = MultiByteToWideChar(CP_ACP, 0, text.data(), length, nullptr, 0);
    if (needed <= 0)
        return {};
    std::u16string wide(static_cast<std::size_t>(needed), u'\0');
    int written = MultiByteToWideChar(CP_ACP, 0, text.data(), length,
                                      reinterpret_cast<WCHAR*>(wide.data()), needed);
    wide.resize(written > 0 ? static_cast<std::size_t>(written) : 0);
    return wide;
}
