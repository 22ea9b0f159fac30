// The [strings] section of a template read from its file, narrow and UTF-16, on both builds.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "loader/ozStringsSection.h"
#include "platform/ozTextConversion.h"
#include "tests/support/ozTestFiles.h"

namespace {

using namespace std::string_literals;

class StringsSectionTest : public ::testing::Test {
protected:
    void Write(const std::string& bytes) { file.Write(bytes); }

    ozTestFile file{"ozadm-strings-test.adm"};
    std::string path = file.Path();
    ozStringTable table;
};

TEST_F(StringsSectionTest, NarrowTemplate)
{
    Write(
        "CLASS MACHINE\r\n\r\n[Strings]\r\ncat=Category\r\nQuoted=\"a \"\"b\"\"\"\r\n"
        "Long=one \\\r\ntwo\r\n; a comment\r\n[other]\r\nx=y\r\n");
    int error = 0;
    ASSERT_TRUE(ozReadStringsSection(path.c_str(), table, &error));
    EXPECT_STREQ(table.Find("CAT"), "Category");
    EXPECT_STREQ(table.Find("QUOTED"), "a \"\"b\"\"");
    EXPECT_STREQ(table.Find("LONG"), "one two");
    EXPECT_EQ(table.Find("X"), nullptr);
    EXPECT_EQ(table.Count(), 3u);
}

TEST_F(StringsSectionTest, Utf16TemplateIsReadWideAndNarrowed)
{
    Write(ozUtf16Bytes(u"CLASS USER\r\n[strings]\r\nName=Gr\u00FC\u00DFe\r\nPlain=text\r\n"));
    ASSERT_TRUE(ozReadStringsSection(path.c_str(), table, nullptr));
    const WCHAR greeting[] = {'G', 'r', 0x00FC, 0x00DF, 'e'};
    EXPECT_EQ(std::string(table.Find("NAME")), ozNarrowText(greeting, 5));
    EXPECT_STREQ(table.Find("PLAIN"), "text");
}

TEST_F(StringsSectionTest, MissingFileAndSection)
{
    int error = 0;
    EXPECT_FALSE(ozReadStringsSection((path + ".missing").c_str(), table, &error));
    EXPECT_EQ(error, StringsErrorCannotOpen);
    EXPECT_FALSE(ozReadStringsSection(nullptr, table, &error));

    Write("CLASS MACHINE\r\n");
    EXPECT_TRUE(ozReadStringsSection(path.c_str(), table, &error));
    EXPECT_EQ(table.Count(), 0u);
}

TEST(TextConversionTest, RoundTripAndSizes)
{
    std::basic_string<WCHAR> wide = ozWideText("abc");
    ASSERT_EQ(wide.size(), 3u);
    EXPECT_EQ(ozNarrowText(wide.c_str(), wide.size()), "abc");
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "abc", -1, nullptr, 0), 4);  // with terminator
    WCHAR small[2];
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "abc", -1, small, 2), 0);
    EXPECT_TRUE(ozWideText(nullptr).empty());
    EXPECT_TRUE(ozNarrowText(nullptr, 3).empty());
}

}  // namespace
