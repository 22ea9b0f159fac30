// Raising the versions in GPT.INI's bytes: only the number changes, whatever the spelling,
// line ends and encoding; a missing Version line is added where it belongs.
#include <gtest/gtest.h>

#include "ozGroupPolicyFolder.h"
#include "tests/support/ozTestFiles.h"

namespace {

TEST(GptVersion, RaisesTheVersionOfEachChangedProfile)
{
    const struct {
        const char* what;
        std::string before;
        bool machine, user;
        std::string after;
    } cases[] = {
        {"machine: low 16 bits", "[General]\r\nVersion=65538\r\ndisplayName=x\r\n", true, false,
         "[General]\r\nVersion=65539\r\ndisplayName=x\r\n"},
        {"user: high 16 bits, names in any case", "[general]\nVERSION = 7 \n", false, true,
         "[general]\nVERSION = 65543 \n"},
        {"both; a 16-bit version wraps", "[General]\nVersion=65535\n", true, true,
         "[General]\nVersion=65536\n"},
        {"only [General] counts", "[Other]\rVersion=5\r[General]\rVersion=5", true, false,
         "[Other]\rVersion=5\r[General]\rVersion=6"},
        {"UTF-16 stays UTF-16", ozUtf16Bytes(u"[General]\r\nVersion=9\r\n"), true, false,
         ozUtf16Bytes(u"[General]\r\nVersion=10\r\n")},
        {"a missing line is added below [General]", "[General]\r\nx=1\r\n", true, false,
         "[General]\r\nVersion=1\r\nx=1\r\n"},
        {"a missing section is added at the end", "[Other]\nx=1", false, true,
         "[Other]\nx=1\n[General]\nVersion=65536\n"},
    };
    for (const auto& c : cases) {
        std::string bytes = c.before;
        EXPECT_TRUE(ozRaiseGptVersion(bytes, c.machine, c.user).IsOk()) << c.what;
        EXPECT_EQ(bytes, c.after) << c.what;
    }
    for (const char* bad :
         {"[General]\nVersion=\n", "[General]\nVersion=4294967296\n", "[General]\nVersion=1x\n"}) {
        std::string bytes = bad;
        ozStatus raised = ozRaiseGptVersion(bytes, true, false);
        EXPECT_FALSE(raised.IsOk()) << bad;
        EXPECT_EQ(bytes, bad);
        EXPECT_NE(raised.Message().find("Version"), std::string::npos);
    }
}

}  // namespace
