#include "ozRegFileText.h"

#include <climits>

#include "platform/ozAsciiCase.h"

namespace {

// The UTF-8 code page; the POSIX conversion ignores the code page, as its narrow text is UTF-8.
constexpr UINT Utf8CodePage = 65001;

bool Decode(UINT codePage, const char* bytes, size_t length, ozWideString& text)
{
    text.clear();
    if (length == 0)
        return true;
    if (length > static_cast<size_t>(INT_MAX))
        return false;
    int size = static_cast<int>(length);
    int needed = MultiByteToWideChar(codePage, 0, bytes, size, nullptr, 0);
    if (needed <= 0)
        return false;
    text.resize(static_cast<size_t>(needed));
    int written = MultiByteToWideChar(codePage, 0, bytes, size, text.data(), needed);
    text.resize(written > 0 ? static_cast<size_t>(written) : 0);
    return written > 0;
}

bool StartsWith(const std::string& bytes, const char* prefix, size_t length)
{
    return bytes.size() >= length && bytes.compare(0, length, prefix, length) == 0;
}

}  // namespace

ozStatus ozRegDecodeFile(const std::string& bytes, ozWideString& text, tREGFILEENCODING& encoding)
{
    text.clear();
    if (StartsWith(bytes, "\xFF\xFE\x00\x00", 4) || StartsWith(bytes, "\x00\x00\xFE\xFF", 4))
        return ozStatus::Error("UTF-32 files are not read");
    if (StartsWith(bytes, "\xFE\xFF", 2))
        return ozStatus::Error("UTF-16 big-endian files are not read");
    if (StartsWith(bytes, "\xFF\xFE", 2)) {
        encoding = tREGFILEENCODING::Utf16;
        if (bytes.size() % 2 != 0)
            return ozStatus::Error("the UTF-16 file ends in half a character");
        text.reserve(bytes.size() / 2 - 1);
        for (size_t at = 2; at < bytes.size(); at += 2) {
            unsigned low = static_cast<unsigned char>(bytes[at]);
            unsigned high = static_cast<unsigned char>(bytes[at + 1]);
            text.push_back(static_cast<WCHAR>(low | high << 8));
        }
        return ozStatus::Ok();
    }
    bool utf8 = StartsWith(bytes, "\xEF\xBB\xBF", 3);
    encoding = utf8 ? tREGFILEENCODING::Utf8 : tREGFILEENCODING::Narrow;
    size_t skip = utf8 ? 3 : 0;
    if (!Decode(utf8 ? Utf8CodePage : CP_ACP, bytes.data() + skip, bytes.size() - skip, text))
        return ozStatus::Error("the file's text cannot be converted");
    return ozStatus::Ok();
}

std::string ozRegUtf16Bytes(const ozWideString& text)
{
    std::string bytes;
    bytes.reserve(text.size() * 2);
    for (WCHAR unit : text) {
        bytes.push_back(static_cast<char>(unit & 0xFF));
        bytes.push_back(static_cast<char>((unit >> 8) & 0xFF));
    }
    return bytes;
}

ozWideString ozRegWideFromModel(const char* text, size_t length)
{
    ozWideString wide;
    if (text == nullptr || !Decode(CP_ACP, text, length, wide))
        return {};
    return wide;
}

std::string ozRegModelFromWide(const WCHAR* text, size_t length)
{
    return ozNarrowText(text, length);
}

ozWideString ozRegAscii(const char* text)
{
    ozWideString wide;
    for (; *text != '\0'; ++text)
        wide.push_back(static_cast<WCHAR>(static_cast<unsigned char>(*text)));
    return wide;
}

bool ozRegEqualsAscii(const ozWideString& text, const char* word)
{
    size_t at = 0;
    for (; word[at] != '\0'; ++at) {
        if (at >= text.size() ||
            ozAsciiLower(text[at]) != ozAsciiLower(static_cast<WCHAR>(word[at])))
            return false;
    }
    return at == text.size();
}
