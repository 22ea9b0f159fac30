// The [strings] table and the reader of the section: the line rules, which definition wins,
// and the reader's failures; the conversion to and from the system's wide text.
#include <gtest/gtest.h>

#include <string>

#include "loader/ozStringTable.h"
#include "loader/ozStringsSection.h"
#include "platform/ozTextConversion.h"
#include "tests/support/ozTestFiles.h"

namespace {

using namespace std::string_literals;

TEST(StringTableTest, SectionLinesFollowTheNameContinuationAndQuoteRules)
{
    ozStringTable table;
    const std::string section =
        "appName=Sample\0"
        "Quoted=\"abc\"\0"
        "TwoQuotes=\"\"\0"
        "Trailing=abc\"\0"
        "Inner=\"say \"hi\" now\"\0"
        "Open=\"abc\0"
        "Long=first part \\\0"
        "second=part \\\0"
        "after=continuation\0"
        "NoEquals\0"
        "Empty=\0"
        "appname=Second definition\0"
        "\0"s;
    ASSERT_TRUE(table.AddSection(section.c_str()));
    const struct {
        const char* name;
        const char* value;
    } expected[] = {
        {"APPNAME", "Sample"},  // upper-cased, first definition wins
        {"QUOTED", "abc"},
        {"TWOQUOTES", "\""},          // the closing quote is the first character: kept
        {"TRAILING", "abc\""},        // no opening quote: quotes stay
        {"INNER", "say \"hi\" now"},  // cut at the last quote only
        {"OPEN", "abc"},
        {"LONG", "first part second=part \\"},  // the next line, whole and as it is
        {"AFTER", "continuation"},
        {"NOEQUALS", ""},
        {"EMPTY", ""},
    };
    for (const auto& entry : expected) {
        const char* value = table.Find(entry.name);
        ASSERT_NE(value, nullptr) << entry.name;
        EXPECT_STREQ(value, entry.value) << entry.name;
    }
    EXPECT_EQ(table.Find("SECOND"), nullptr);   // consumed as a continuation
    EXPECT_EQ(table.Find("appName"), nullptr);  // lookups are exact
    EXPECT_EQ(table.Count(), 10u);
}

TEST(StringTableTest, FirstDefinitionWinsAcrossSections)
{
    ozStringTable table;
    ASSERT_TRUE(table.AddSection("Cat=First\0\0"));
    ASSERT_TRUE(table.AddSection("CAT=Second\0Other=x\0\0"));
    EXPECT_STREQ(table.Find("CAT"), "First");
    EXPECT_STREQ(table.Find("OTHER"), "x");
    EXPECT_FALSE(table.Insert("CAT", "third"));
    EXPECT_FALSE(table.Insert(nullptr, "x"));
    EXPECT_TRUE(table.AddSection(nullptr));
    EXPECT_TRUE(table.AddSection("\0"));
}

TEST(StringTableTest, ManyNamesAndALongNameAreFound)
{
    ozStringTable table;
    for (int i = 0; i < 5000; ++i) {
        std::string name = "NAME" + std::to_string(i);
        ASSERT_TRUE(table.Insert(name.c_str(), std::to_string(i).c_str()));
    }
    for (int i = 0; i < 5000; i += 499)
        EXPECT_EQ(table.Find(("NAME" + std::to_string(i)).c_str()), std::to_string(i));
    const std::string longName(300, 'Z');
    ASSERT_TRUE(table.Insert(longName.c_str(), "long"));
    EXPECT_STREQ(table.Find(longName.c_str()), "long");
}

class StringsSectionTest : public ::testing::Test {
protected:
    void Write(const std::string& bytes) { file.Write(bytes); }

    ozTestFile file{"ozadm-strings-test.adm"};
    std::string path = file.Path();
    ozStringTable table;
};

TEST_F(StringsSectionTest, MissingFileAndSection)
{
    EXPECT_EQ(ozReadStringsSection((path + ".missing").c_str(), table).Code(),
              StringsErrorCannotOpen);
    EXPECT_EQ(ozReadStringsSection(nullptr, table).Code(), StringsErrorCannotOpen);

    Write("CLASS MACHINE\r\n");
    EXPECT_TRUE(ozReadStringsSection(path.c_str(), table).IsOk());
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
