#include "platform/ozTextConversion.h"

#include <cstdint>
#include <cstring>

#include "ozUtf8.h"

namespace {

// Copies the converted text out, or tells its length for a size of 0.
template <class C>
int Deliver(const std::basic_string<C>& converted, C* out, int outSize)
{
    if (converted.size() > static_cast<size_t>(INT32_MAX))
        return 0;
    int length = static_cast<int>(converted.size());
    if (outSize == 0)
        return length;
    if (out == nullptr || length > outSize)
        return 0;
    std::memcpy(out, converted.data(), converted.size() * sizeof(C));
    return length;
}

}  // namespace

int MultiByteToWideChar(UINT, DWORD, const char* lpMultiByteStr, int cbMultiByte,
                        WCHAR* lpWideCharStr, int cchWideChar)
{
    if (lpMultiByteStr == nullptr || cbMultiByte == 0 || cbMultiByte < -1 || cchWideChar < 0)
        return 0;
    size_t length =
        cbMultiByte == -1 ? std::strlen(lpMultiByteStr) + 1 : static_cast<size_t>(cbMultiByte);
    return Deliver(ozDecodeUtf8(std::string_view(lpMultiByteStr, length)), lpWideCharStr,
                   cchWideChar);
}

int WideCharToMultiByte(UINT, DWORD, const WCHAR* lpWideCharStr, int cchWideChar,
                        char* lpMultiByteStr, int cbMultiByte, const char*, int*)
{
    if (lpWideCharStr == nullptr || cchWideChar == 0 || cchWideChar < -1 || cbMultiByte < 0)
        return 0;
    size_t length = static_cast<size_t>(cchWideChar);
    if (cchWideChar == -1)
        length = std::char_traits<char16_t>::length(lpWideCharStr) + 1;
    return Deliver(ozEncodeUtf8(std::u16string_view(lpWideCharStr, length)), lpMultiByteStr,
                   cbMultiByte);
}

// The wrappers convert directly, without the copy into a caller's buffer.
std::basic_string<WCHAR> ozWideText(const char* text)
{
    return text != nullptr ? ozDecodeUtf8(text) : std::basic_string<WCHAR>();
}

std::string ozNarrowText(const WCHAR* text, size_t length)
{
    if (text == nullptr || length == 0 || length > 0x7FFFFFFF)
        return {};
    return ozEncodeUtf8(std::u16string_view(text, length));
}

std::string ozNarrowFromUtf8(const std::string& text)
{
    return text;
}

std::string ozUtf8FromNarrow(const std::string& text)
{
    return text;
}
