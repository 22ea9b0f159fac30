// Reading .reg files through the library's importer: every form a value can take, where keys
// go, and malformed files refused with a message that names the file and the line.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>

#include "core/registry/ozRegTree.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "ozRegProfileRun.h"
#include "tests/support/ozTestFiles.h"

namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

enum class Encoding { Narrow, Utf16, Utf8 };

// UTF-8 of BMP text, for files written with a UTF-8 byte-order mark.
std::string Utf8(std::u16string_view text)
{
    std::string bytes;
    for (char16_t unit : text) {
        if (unit < 0x80) {
            bytes.push_back(static_cast<char>(unit));
        } else if (unit < 0x800) {
            bytes.push_back(static_cast<char>(0xC0 | unit >> 6));
            bytes.push_back(static_cast<char>(0x80 | (unit & 0x3F)));
        } else {
            bytes.push_back(static_cast<char>(0xE0 | unit >> 12));
            bytes.push_back(static_cast<char>(0x80 | (unit >> 6 & 0x3F)));
            bytes.push_back(static_cast<char>(0x80 | (unit & 0x3F)));
        }
    }
    return bytes;
}

std::string FileBytes(std::u16string_view text, Encoding encoding)
{
    switch (encoding) {
        case Encoding::Utf16:
            return ozUtf16Bytes(std::u16string(text));
        case Encoding::Utf8:
            return "\xEF\xBB\xBF" + Utf8(text);
        default:
            return Utf8(text);  // the narrow rows are ASCII
    }
}

std::string Bytes(const ozRegValue* value)
{
    return std::string(reinterpret_cast<const char*>(value->Data()), value->Size());
}

constexpr std::u16string_view Version5 = u"Windows Registry Editor Version 5.00\r\n";
constexpr std::u16string_view UserKey = u"[HKEY_CURRENT_USER\\Software\\ozADM]\r\n";

struct ValueForm {
    const char* name;
    std::u16string_view body;
    unsigned long type;
    // Text types: the expected text as wide text (terminators included); other types: one
    // byte per unit.
    std::u16string_view data;
    std::u16string_view valueName = u"a";
    char op = 'I';
    Encoding encoding = Encoding::Utf16;
    std::u16string_view header = Version5;
};

// The forms the writer produces come back through the round trip; these are the others.
const ValueForm ValueForms[] = {
    {"unescaped backslash kept", u"\"a\"=\"C:\\Windows\"", 1, u"C:\\Windows\0"sv},
    {"escaped name", u"\"n\\\"m\"=\"v\"", 1, u"v\0"sv, u"n\"m"},
    {"blanks around =", u"\"a\" = \"x\"", 1, u"x\0"sv},
    {"dword with seven digits", u"\"a\"=dword:45D5A58", 4, u"\x58\x5a\x5d\x04"sv},
    {"dword with a leading zero", u"\"a\"=DWORD:0ffffffff", 4, u"\xff\xff\xff\xff"sv},
    {"empty binary", u"\"a\"=hex:", 3, u""sv},
    {"string as hex(1)", u"\"a\"=hex(1):e9,00,00,00", 1, u"\u00e9\0"sv},
    {"comments and blank lines", u"\r\n; note\r\n  ; indented note\r\n\r\n\"a\"=\"x\"", 1,
     u"x\0"sv},
    {"non-ASCII text, UTF-8 with byte-order mark", u"\"a\"=\"\u00e4\u00f6\"", 1,
     u"\u00e4\u00f6\0"sv, u"a", 'I', Encoding::Utf8},
    {"narrow version 5.00 file", u"\"a\"=\"x\"", 1, u"x\0"sv, u"a", 'I', Encoding::Narrow},
    {"REGEDIT4, narrow", u"\"a\"=hex(2):41,42,00", 2, u"AB\0"sv, u"a", 'I', Encoding::Narrow,
     u"REGEDIT4\r\n\r\n"},
    {"REGEDIT4, UTF-16", u"\"a\"=hex(7):41,00,42,00,00", 7, u"A\0B\0\0"sv, u"a", 'I',
     Encoding::Utf16, u"REGEDIT4\r\n"},
    {"LF line ends", u"\"a\"=dword:1\n", 4, u"\x01\0\0\0"sv, u"a", 'I', Encoding::Narrow,
     u"REGEDIT4\n"},
};

class ValueFormTest : public ::testing::TestWithParam<ValueForm> {};

TEST_P(ValueFormTest, ReadsIntoTheUserTree)
{
    const ValueForm& form = GetParam();
    std::u16string text =
        std::u16string(form.header) + std::u16string(UserKey) + std::u16string(form.body) + u"\r\n";
    ozTestFile file("form.reg", FileBytes(text, form.encoding));
    ozRegProfileRun run;
    ASSERT_EQ(run.Load(file.Path()), tPROFILELOAD::Succeeded) << run.Errors();

    ozSubKey* key = run.Code().tree->UsrTree().HasKey(HKEY_CURRENT_USER, "Software\\ozADM");
    ASSERT_NE(key, nullptr);
    std::string name = ozRegNarrow(form.valueName);
    ozRegValue* value = key->HasValue(name.c_str());
    ASSERT_NE(value, nullptr) << "no value \"" << name << "\"";
    EXPECT_EQ(value->RIT(), RitR);
    EXPECT_EQ(value->Op(), form.op);
    EXPECT_EQ(value->Type(), form.type);
    bool textType = form.type == 1 || form.type == 2 || form.type == 7;
    std::string expected = textType ? ozRegNarrow(form.data) : std::string(form.data.size(), '\0');
    if (!textType)
        std::transform(form.data.begin(), form.data.end(), expected.begin(),
                       [](char16_t unit) { return static_cast<char>(unit); });
    EXPECT_EQ(Bytes(value), expected);
}

// A row's name as a test name (failures name the test).
std::string TestName(const char* rowName)
{
    std::string name = rowName;
    for (char& c : name)
        if (!std::isalnum(static_cast<unsigned char>(c)))
            c = '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(Forms, ValueFormTest, ::testing::ValuesIn(ValueForms),
                         [](const auto& info) { return TestName(info.param.name); });

TEST(RegRead, EachKeyGoesToTheTreeItsRootSelects)
{
    // One file, read as the user profile and again as the machine profile: the trees come out
    // the same either way. The full root names come back through the round trip.
    ozTestFile file("roots.reg", FileBytes(u"REGEDIT4\r\n"
                                           u"[HKCU\\Software\\A]\r\n"
                                           u"[HKEY_LOCAL_MACHINE\\Software\\B]\r\n"
                                           u"[hklm\\Software\\C]\r\n"
                                           u"[HKEY_CURRENT_USER\\Software\\F\\]\r\n",
                                           Encoding::Narrow));
    for (bool asMachine : {false, true}) {
        ozRegProfileRun run;
        ozTestFile empty("empty.reg", "REGEDIT4\r\n");
        ASSERT_EQ(asMachine ? run.Load(empty.Path(), file.Path()) : run.Load(file.Path()),
                  tPROFILELOAD::Succeeded)
            << run.Errors();
        ozRegTree& user = run.Code().tree->UsrTree();
        ozRegTree& machine = run.Code().tree->MacTree();
        EXPECT_NE(user.HasKey(HKEY_CURRENT_USER, "Software\\A"), nullptr);
        EXPECT_NE(user.HasKey(HKEY_CURRENT_USER, "Software\\F"), nullptr);
        EXPECT_NE(machine.HasKey(HKEY_LOCAL_MACHINE, "Software\\B"), nullptr);
        EXPECT_NE(machine.HasKey(HKEY_LOCAL_MACHINE, "Software\\C"), nullptr);
        EXPECT_EQ(user.HasKey(HKEY_LOCAL_MACHINE, "Software\\B"), nullptr);
    }
}

TEST(RegRead, DeletedKeyErasesValuesAndLaterSectionsAddToIt)
{
    ozTestFile file("deleted.reg", FileBytes(u"Windows Registry Editor Version 5.00\r\n"
                                             u"[-HKEY_CURRENT_USER\\Software\\Gone]\r\n"
                                             u"[-HKEY_CURRENT_USER\\Software\\Again]\r\n"
                                             u"[HKEY_CURRENT_USER\\Software\\Again]\r\n"
                                             u"\"a\"=\"b\"\r\n"
                                             u"[HKEY_CURRENT_USER\\Software\\Kept]\r\n",
                                             Encoding::Utf16));
    ozRegProfileRun run;
    ASSERT_EQ(run.Load(file.Path()), tPROFILELOAD::Succeeded) << run.Errors();
    ozRegTree& user = run.Code().tree->UsrTree();
    ozSubKey* gone = user.HasKey(HKEY_CURRENT_USER, "Software\\Gone");
    ozSubKey* again = user.HasKey(HKEY_CURRENT_USER, "Software\\Again");
    ozSubKey* kept = user.HasKey(HKEY_CURRENT_USER, "Software\\Kept");
    ASSERT_TRUE(gone && again && kept);
    EXPECT_EQ(gone->Op(), KeyOpEraseValues);
    EXPECT_EQ(again->Op(), KeyOpEraseValues);
    EXPECT_NE(again->HasValue("a"), nullptr);
    EXPECT_EQ(kept->Op(), KeyOpInsert);
}

struct Malformed {
    const char* name;
    std::string bytes;
    // What the message must hold besides the file name: the line and a word of the problem.
    const char* where;
    const char* what;
};

std::string Ansi(const std::string& body)
{
    return std::string("Windows Registry Editor Version 5.00\r\n") +
           "[HKEY_CURRENT_USER\\Software\\ozADM]\r\n" + body;
}

const Malformed MalformedFiles[] = {
    {"no header", "[HKEY_CURRENT_USER\\x]\r\n", ":1:", "first line"},
    {"empty file", "", ":1:", "first line"},
    {"unknown root", "REGEDIT4\r\n[HKEY_NOWHERE\\x]\r\n", ":2:", "not a predefined key"},
    {"section without ]", "REGEDIT4\r\n[HKEY_CURRENT_USER\\x\r\n", ":2:", "closing ']'"},
    {"text after section", "REGEDIT4\r\n[HKEY_CURRENT_USER\\x] y\r\n", ":2:", "after the key"},
    {"empty key name", "REGEDIT4\r\n[HKEY_CURRENT_USER\\a\\\\b]\r\n", ":2:", "empty key name"},
    {"deleting a root", "REGEDIT4\r\n[-HKEY_CURRENT_USER]\r\n", ":2:", "cannot be deleted"},
    {"value below a root", "REGEDIT4\r\n[HKEY_CURRENT_USER]\r\n\"a\"=\"b\"\r\n",
     ":3:", "directly below"},
    {"value before any section", "REGEDIT4\r\n\"a\"=\"b\"\r\n", ":2:", "before the first"},
    {"stray text", Ansi("junk\r\n"), ":3:", "expected a [key] section"},
    {"missing =", Ansi("\"a\" \"b\"\r\n"), ":3:", "expected '='"},
    {"unknown data", Ansi("\"a\"=qword:1\r\n"), ":3:", "unknown value data"},
    {"dword without digits", Ansi("\"a\"=dword:\r\n"), ":3:", "hexadecimal number"},
    {"dword too large", Ansi("\"a\"=dword:100000000\r\n"), ":3:", "32 bits"},
    {"text after dword", Ansi("\"a\"=dword:1x\r\n"), ":3:", "after the value"},
    {"unclosed string", Ansi("\"a\"=\"b\r\n\r\n\"c\"=dword:1\r\n"), ":5:", "after the value"},
    {"string never closed", Ansi("\r\n\"a\"=\"b\r\nc\r\n"), ":4:", "no closing quote"},
    {"unclosed name", Ansi("\"a=1\r\n"), ":3:", "no closing quote"},
    {"byte of three digits", Ansi("\"a\"=hex:123\r\n"), ":3:", "more than two digits"},
    {"hex list with a stray comma", Ansi("\"a\"=hex:,01\r\n"), ":3:", "after the value"},
    {"hex( without )", Ansi("\"a\"=hex(2:00\r\n"), ":3:", "closing ')'"},
    {"hex without :", Ansi("\"a\"=hex 00\r\n"), ":3:", "expected ':'"},
    {"odd UTF-16 text data", Ansi("\"a\"=hex(2):41,00,00\r\n"), ":3:", "even number"},
    {"zero character", Ansi("\"a\"=\"b\0c\"\r\n"s), ":3:", "zero character"},
    {"key path too long", "REGEDIT4\r\n[HKEY_CURRENT_USER\\" + std::string(1100, 'k') + "]\r\n",
     ":2:", "longer than"},
    {"UTF-16 big-endian", "\xFE\xFF\0R\0E"s, "", "big-endian"},
    {"UTF-16 of odd length", "\xFF\xFER\0E"s, "", "half a character"},
};

class MalformedFileTest : public ::testing::TestWithParam<Malformed> {};

TEST_P(MalformedFileTest, FailsWithAMessageNamingFileAndLine)
{
    const Malformed& malformed = GetParam();
    ozTestFile file("malformed.reg", malformed.bytes);
    ozRegProfileRun run;
    EXPECT_EQ(run.Load(file.Path()), tPROFILELOAD::Failed);
    const std::string& errors = run.Errors();
    EXPECT_NE(errors.find(std::string(file.Path()) + malformed.where), std::string::npos) << errors;
    EXPECT_NE(errors.find(malformed.what), std::string::npos) << errors;
}

INSTANTIATE_TEST_SUITE_P(Files, MalformedFileTest, ::testing::ValuesIn(MalformedFiles),
                         [](const auto& info) { return TestName(info.param.name); });

TEST(RegRead, MissingFileFailsWithAMessage)
{
    ozRegProfileRun run;
    std::string path = ozTestFilePath("missing.reg");
    EXPECT_EQ(run.Load(path), tPROFILELOAD::Failed);
    EXPECT_NE(run.Errors().find("cannot open \"" + path + "\": "), std::string::npos)
        << run.Errors();
}

}  // namespace
