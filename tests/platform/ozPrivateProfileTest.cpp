// The private-profile section reader: one table of file contents and section names with the
// buffer the system's reader fills. It runs natively against our implementation and under Wine
// against the system's, so both must give these results.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ozPrivateProfile.h"

namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

using WideString = std::basic_string<WCHAR>;

// UTF-16 of valid UTF-8 text.
WideString Wide(std::string_view text)
{
    WideString out;
    for (size_t i = 0; i < text.size();) {
        unsigned char lead = static_cast<unsigned char>(text[i]);
        int extra = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
        char32_t code = extra == 0 ? lead : lead & (0x3F >> extra);
        for (int k = 1; k <= extra; ++k)
            code = (code << 6) | (static_cast<unsigned char>(text[i + k]) & 0x3F);
        i += extra + 1;
        if (code >= 0x10000) {
            out += static_cast<WCHAR>(0xD800 + ((code - 0x10000) >> 10));
            out += static_cast<WCHAR>(0xDC00 + ((code - 0x10000) & 0x3FF));
        } else {
            out += static_cast<WCHAR>(code);
        }
    }
    return out;
}

// The narrow form of text: UTF-8 itself, or the ANSI code page on Windows.
std::string Narrow(std::string_view text)
{
#ifdef _WIN32
    WideString wide = Wide(text);
    int length = static_cast<int>(wide.size());
    std::string out(
        WideCharToMultiByte(CP_ACP, 0, wide.data(), length, nullptr, 0, nullptr, nullptr), '\0');
    WideCharToMultiByte(CP_ACP, 0, wide.data(), length, out.data(), static_cast<int>(out.size()),
                        nullptr, nullptr);
    return out;
#else
    return std::string(text);
#endif
}

// A UTF-16LE file with byte-order mark.
std::string Utf16File(std::u16string_view text)
{
    std::string bytes = "\xFF\xFE";
    for (char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

enum Forms { kBoth, kNarrowBytes, kWideOnly };
constexpr DWORD kLarge = 200000;
constexpr DWORD kSame = 0x7FFFFFFF;
const std::string kNoFile = "\x01no file";
const std::string kShort = "[s]\r\nab=1\r\ncd=22\r\n";
const std::string kEmpty = "[s]\r\n[t]\r\na=1\r\n";

// `result` is the buffer from its start as UTF-8 text ('#': left untouched); kBoth checks the
// narrow form with its narrow text and the wide form with its UTF-16, kNarrowBytes checks the
// narrow form with the bytes themselves. `returned` counts UTF-16 units. Where the wide form
// differs, `wide` and `wideReturned` give its result.
struct Row {
    const char* what;
    std::string file;
    const char* section;
    std::string result;
    DWORD returned;
    DWORD size = kLarge;
    Forms forms = kBoth;
    std::string wide = "";
    DWORD wideReturned = kSame;
};

const Row kRows[] = {
    {"lines keep their order, blanks go around lines and '='",
     "[s]\r\n  a  =  1  \r\n\tb\t=\t2\t\r\n\v\f\x1A c d \x1A= e  f\r\n", "s",
     "a=1\0b=2\0c d=e  f\0\0#"s, 17},
    {"other control characters are not blanks", "[s]\r\n\1a\x1F=\x7F\x1C\r\n", "s",
     "\1a\x1F=\x7F\x1C\0\0#"s, 7},
    {"section names match without regard to ASCII case", "[SeC]\r\na=1\r\n", "sEc", "a=1\0\0#"s, 4},
    {"other letters match only in the same case", Utf16File(u"[\u00E4]\r\na=1\r\n"), "Ä", "\0\0#"s,
     0},
    {"other letters match themselves", Utf16File(u"[\u00E4]\r\na=1\r\n"), "ä", "a=1\0\0#"s, 4},
    {"comments start with ';' only", "[s]\r\n;c=1\r\n  ;d\r\na=1 ;x\r\n#h=2\r\n", "s",
     "a=1 ;x\0#h=2\0\0#"s, 12},
    {"lines without '=' are kept", "[s]\r\nplain\r\n  two  words  \r\n[\r\n]\r\n[x\r\n", "s",
     "plain\0two  words\0[\0]\0[x\0\0#"s, 24},
    {"CR, LF and both end lines; empty lines vanish", "[s]\n\na=1\r\rb=2\n\rc=3\r\n \r\nd=4", "s",
     "a=1\0b=2\0c=3\0d=4\0\0#"s, 16},
    {"a line starting with '=' after a line with an empty name is dropped",
     "[s]\r\nk=\r\n=v\r\n = w\r\n\r\n=\r\n;c\r\n=x\r\na==b\r\n  =  \r\n", "s",
     "k=\0=v\0=x\0a==b\0=\0\0#"s, 16},
    {"a header starts the chain of empty names afresh", "=1\r\n[s]\r\n=2\r\n", "s", "=2\0\0#"s, 3},
    {"only the first section of a name counts", "[s]\r\na=1\r\n[t]\r\nx=9\r\n[S]\r\nb=2\r\n", "s",
     "a=1\0\0#"s, 4},
    {"repeated keys all stay", "[s]\r\na=1\r\nA=2\r\na=3\r\n", "s", "a=1\0A=2\0a=3\0\0#"s, 12},
    {"header names are trimmed and end at the last ']'", "  [ s ] junk\r\na=1\r\n", "s",
     "a=1\0\0#"s, 4},
    {"a ']' inside a header name", "[a]b]\r\nk=1\r\n", "a]b", "k=1\0\0#"s, 4},
    {"the asked name is not trimmed", "[s]\r\na=1\r\n", " s ", "\0\0#"s, 0},
    {"lines before the first header form the nameless section", "a=1\r\n[s]\r\nb=2\r\n", "",
     "a=1\0\0#"s, 4},
    {"a file with text always has a nameless section", "[]\r\na=1\r\n", "", "\0\0#"s, 0, kLarge,
     kBoth, "\0##"s, 0},
    {"an empty file has no sections", "", "", "\0\0#"s, 0},
    {"a section without lines", kEmpty, "s", "\0\0#"s, 0, kLarge, kBoth, "\0##"s, 0},
    {"a missing section", kEmpty, "q", "\0\0#"s, 0},
    {"a missing file", kNoFile, "s", "\0\0#"s, 0},
    {"no section name", kEmpty, nullptr, "###"s, 0},
    {"names and values end at a zero character",
     "[s]\r\na=1\0x\r\n\0b=2\r\n\0x\r\n=3\r\n  \0=4\r\nk \0=\0\r\n"s, "s", "a=1\0=2\0=4\0k =\0\0#"s,
     14},
    {"header names are trimmed before a zero character ends them",
     "[s \0]\r\na=1\r\n[t\0u]\r\nb=2"s, "s", "\0\0#"s, 0},
    {"header names end at a zero character", "[s \0]\r\na=1\r\n[t\0u]\r\nb=2"s, "t", "b=2\0\0#"s,
     4},
    {"UTF-8 with byte-order mark", "\xEF\xBB\xBF[s]\r\na=\xC3\xA9\r\n", "s", "a=é\0\0#"s, 4},
    {"only the first byte-order mark is skipped", "\xEF\xBB\xBF\xEF\xBB\xBF[s]\r\na=1\r\n", "s",
     "\0\0#"s, 0},
    {"UTF-16LE with byte-order mark", Utf16File(u"[s]\r\na=\u00E9\r\nb=\u20AC\r\n"), "S",
     "a=é\0b=€\0\0#"s, 8},
    {"UTF-16BE with byte-order mark", "\xFE\xFF\0[\0s\0]\0\r\0\n\0a\0=\0\xE9\0\r\0\n\0b\0=\0\x32"s,
     "s", "a=é\0b=2\0\0#"s, 8},
    {"UTF-16 without byte-order mark is read as bytes", "[\0s\0]\0\r\0\n\0a\0=\0\x31\0"s, "s",
     "\0\0#"s, 0},
    {"a UTF-16 file of just the byte-order mark", "\xFF\xFE", "", "\0\0#"s, 0, kLarge, kBoth,
     "\0##"s, 0},
    {"the narrow form keeps bytes as they are", "[s]\r\na=\xC3\xA9\x80\xFF\r\n", "s",
     "a=\xC3\xA9\x80\xFF\0\0#"s, 7, kLarge, kNarrowBytes},
    {"malformed UTF-8",
     "\xEF\xBB\xBF[s]\r\na=\xFF\x80\xC3|\xE2\x82|\xF0\x9F\x98\x80|\xED\xA0\x80|\xE0\x80\x80|"
     "\xF4\x90\x80\x80|\xF0\x80|\xC0\xAF|\xED\x9F\xBF\r\n",
     "s",
     "a=\uFFFD\uFFFD\uFFFD|\uFFFD|😀|\uFFFD\uFFFD|\uFFFD\uFFFD|\uFFFD\uFFFD\uFFFD|\uFFFD|"
     "\uFFFD\uFFFD|\uD7FF\0\0#"s,
     28, kLarge, kWideOnly},
    {"very long lines",
     "[" + std::string(70000, 'h') + "]\r\n[s]\r\n" + std::string(70000, 'y') + "=" +
         std::string(70000, 'v') + "\r\n",
     "s", std::string(70000, 'y') + "=" + std::string(70000, 'v') + "\0\0#"s, 140002},
    {"a buffer of 1", kShort, "s", "\0"s, 0, 1, kBoth, "\0"s, 0xFFFFFFFF},
    {"a buffer of 2", kShort, "s", "\0\0"s, 0, 2, kBoth, "\0#"s, 0},
    {"a buffer of 3", kShort, "s", "a\0\0"s, 1, 3},
    {"a buffer with room for the first line only", kShort, "s", "ab=1\0\0\0"s, 5, 7, kBoth,
     "ab=1\0\0#"s, 5},
    {"a line cut short", kShort, "s", "ab=1\0c\0\0"s, 6, 8},
    {"a result that fills the buffer counts as cut short", kShort, "s", "ab=1\0cd=22\0\0"s, 10, 12},
    {"one character to spare", kShort, "s", "ab=1\0cd=22\0\0#"s, 11, 13},
    {"an empty section in a buffer of 1", kEmpty, "s", "\0"s, 0, 1, kBoth, "\0"s, 0xFFFFFFFF},
    {"a missing section in a buffer of 1", kEmpty, "q", "\0"s, 0, 1},
};

class PrivateProfileTest : public ::testing::Test {
protected:
    void TearDown() override
    {
        std::error_code error;
        for (const auto& path : written)
            fs::remove(path, error);
    }

    // A new file each time: the system may keep a file it read in memory.
    fs::path Write(const std::string& bytes)
    {
        static const std::string stamp =
            std::to_string(std::chrono::steady_clock::now().time_since_epoch().count());
        fs::path path = fs::temp_directory_path() /
                        ("ozadm-profile-" + stamp + "-" + std::to_string(written.size()) + ".ini");
        if (bytes != kNoFile) {
            std::ofstream(path, std::ios::binary) << bytes;
            written.push_back(path);
        }
        return path;
    }

    std::vector<fs::path> written;
};

#ifdef _WIN32
constexpr DWORD kSlack = 8;  // the system writes past small buffers
#else
constexpr DWORD kSlack = 0;
#endif

TEST_F(PrivateProfileTest, SectionsAsTheSystemReadsThem)
{
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.what);
        fs::path path = Write(row.file);
        std::string wideResult = row.wide.empty() ? row.result : row.wide;
        DWORD wideReturned = row.wideReturned == kSame ? row.returned : row.wideReturned;

        if (row.forms != kWideOnly) {
            std::string expected = row.forms == kBoth ? Narrow(row.result) : row.result;
            std::vector<char> buffer(row.size + kSlack, '#');
            std::string section = row.section ? Narrow(row.section) : "";
            DWORD returned =
                GetPrivateProfileSectionA(row.section ? section.c_str() : nullptr, buffer.data(),
                                          row.size, path.string().c_str());
            // Narrow text may be longer or shorter than its UTF-16.
            DWORD adjust = static_cast<DWORD>(Narrow(row.result).size() - Wide(row.result).size());
            EXPECT_EQ(returned, row.returned + (row.forms == kBoth ? adjust : 0));
            EXPECT_EQ(std::string(buffer.data(), expected.size()), expected);
        }
        if (row.forms != kNarrowBytes) {
            WideString expected = Wide(wideResult);
            std::vector<WCHAR> buffer(row.size + kSlack, '#');
            WideString section = row.section ? Wide(row.section) : WideString();
#ifdef _WIN32
            WideString file = path.wstring();
#else
            WideString file = Wide(path.string());
#endif
            DWORD returned = GetPrivateProfileSectionW(row.section ? section.c_str() : nullptr,
                                                       buffer.data(), row.size, file.c_str());
            EXPECT_EQ(returned, wideReturned);
            EXPECT_EQ(WideString(buffer.data(), expected.size()), expected);
        }
    }
}

}  // namespace
