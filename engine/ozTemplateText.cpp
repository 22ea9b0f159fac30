#include "ozTemplateText.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "platform/ozTextConversion.h"
#include "platform/ozWholeFile.h"

ozStatus ozReadTemplateText(const char* file, std::string& text)
{
    std::string bytes;
    if (ozStatus read = ozReadWholeFile(file, bytes); !read)
        return read;
    auto startsWith = [&](const char* mark) { return bytes.compare(0, strlen(mark), mark) == 0; };
    if (startsWith("\xFF\xFE")) {
        size_t byteCount = bytes.size() - 2;
        if (byteCount % 2 != 0)
            return ozStatus::Error("UTF-16 text of an odd number of bytes");
        std::basic_string<WCHAR> wide(byteCount / 2, WCHAR{0});
        const auto* data = reinterpret_cast<const unsigned char*>(bytes.data()) + 2;
        for (size_t i = 0; i < wide.size(); ++i)
            wide[i] = static_cast<WCHAR>(data[2 * i] | (data[2 * i + 1] << 8));
        text = ozNarrowText(wide.data(), wide.size());
        if (text.empty() && !wide.empty())
            return ozStatus::Error("UTF-16 text that cannot be converted");
        return ozStatus::Ok();
    }
    if (startsWith("\xFE\xFF"))
        return ozStatus::Error(
            "UTF-16 big-endian text is not supported; save the file as UTF-16 little-endian");
    if (startsWith("\xEF\xBB\xBF"))
        bytes.erase(0, 3);
    text = std::move(bytes);
    return ozStatus::Ok();
}
