// The [strings] section reader's failures: a file that cannot be opened, a template without the
// section.
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
