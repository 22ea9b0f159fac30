#include <gtest/gtest.h>

#include "platform/ozAsciiCase.h"

// Only A-Z and a-z change; the neighbours of the letter ranges and every non-ASCII byte or
// code unit stay, whatever the locale says about them.
TEST(AsciiCaseTest, OnlyAsciiLettersFold)
{
    struct Case {
        const char *text, *upper, *lower;
    };
    for (const Case& c : {Case{"Software\\Policies", "SOFTWARE\\POLICIES", "software\\policies"},
                          Case{"@[`{az_AZ09", "@[`{AZ_AZ09", "@[`{az_az09"},
                          Case{"\xE4\xC4\xFF\x80i", "\xE4\xC4\xFF\x80I", "\xE4\xC4\xFF\x80i"}}) {
        EXPECT_EQ(ozAsciiUpperCased(c.text), c.upper) << c.text;
        EXPECT_EQ(ozAsciiLowerCased(c.text), c.lower) << c.text;
        EXPECT_TRUE(ozAsciiSameIgnoringCase(c.upper, c.lower)) << c.text;
    }
    EXPECT_TRUE(ozAsciiSameIgnoringCase<char16_t>(u"KeyName", u"KEYNAME"));
    EXPECT_FALSE(ozAsciiSameIgnoringCase<char16_t>(u"\u00E4", u"\u00C4"));
    EXPECT_FALSE(ozAsciiSameIgnoringCase("Key", "Keys"));
    EXPECT_FALSE(ozAsciiSameIgnoringCase("@", "`"));
    EXPECT_FALSE(ozAsciiSameIgnoringCase(nullptr, "x"));
    EXPECT_EQ(ozAsciiLowerCased(static_cast<const char*>(nullptr)), "");
}
