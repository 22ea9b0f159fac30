// Templates written for the tests: the constructs real templates seldom use, the [strings]
// rules, merging, and every error a template can provoke.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/adm/ozADMCheckBox.h"
#include "core/adm/ozADMComboBox.h"
#include "core/adm/ozADMDropdownList.h"
#include "core/adm/ozADMNumeric.h"
#include "core/adm/ozADMPolicy.h"
#include "core/adm/ozADMText.h"
#include "core/registry/ozSubKey.h"
#include "tests/support/ozTemplateLoad.h"
#include "tests/support/ozTestFiles.h"
#include "tests/support/ozTreeDescription.h"

namespace {

class TemplateLoadTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { ASSERT_TRUE(ozTemplateLoad::LoadGrammar()) << ErrorMessage(); }
    static void TearDownTestSuite() { EBNFDestroy(); }

    bool Load(const std::string& text)
    {
        file.Write(text);
        return load.Load(file.Path());
    }
    ozADMPolicy* Policy(const char* path)
    {
        ozADMNode* node = load.Tree().FindNode(path);
        return node != nullptr && node->NodeType() == NodePolicy ? static_cast<ozADMPolicy*>(node)
                                                                 : nullptr;
    }
    template <class Part>
    Part* PartAt(const char* path, int index)
    {
        ozADMPolicy* policy = Policy(path);
        return policy != nullptr ? static_cast<Part*>(policy->Controls().At(index)) : nullptr;
    }

    ozTestFile file{"ozadm-template-test.adm"};
    ozTemplateLoad load;
};

TEST_F(TemplateLoadTest, PartsAndSettingsRealTemplatesSeldomUse)
{
    ASSERT_TRUE(load.Load(ozSourcePath("tests/templates/seldom-used.adm"))) << load.Message();
    const std::string part = " key 1:Software\\Policies\\Test value name ";
    const std::vector<std::string> expected = {
        "CLASS \"USER\" type 1",
        "  CATEGORY \"Cat\"",
        "    POLICY \"Pol\" key 1:Software\\Policies\\Test value name none client ext none",
        "      explain none supported on none",
        "      PART \"Combo\" type 4" + part + "\"combo\" required yes client ext none",
        "        default \"two\" maxlen 20 expandable no",
        "        nosort yes",
        "        suggestion \"one\"",
        "        suggestion \"two words\"",
        "        suggestion \"referenced\"",
        "      PART \"Label\" type 5",
        // A part's own key name stays in the part.
        "      PART \"Check\" type 1 key 1:Software\\Policies\\Test\\Sub value name \"check\" "
        "required no client ext none",
        "        default yes on STRING \"on\" off DELETE",
        "      PART \"List\" type 7" + part + "\"\" required no client ext none",
        "        prefix none explicit yes additive yes",
        // DEFAULT selects the item it follows; a key name inside an action list applies to the
        // items after it.
        "      PART \"Drop\" type 6" + part + "\"drop\" required no client ext none",
        "        default 1 nosort yes",
        "        item \"first\" value NUMERIC 1",
        "        item \"second\" value STRING \"2\"",
        "          actions 2",
        "            key 1:Software\\Policies\\Test value name \"extra\" value NUMERIC 7",
        "            key 1:Software\\Policies\\Other value name \"gone\" value DELETE",
        "        item \"third\" value DELETE",
        // SPIN without a number steps by 1.
        "      PART \"Number\" type 2" + part + "\"n\" required no client ext none",
        "        default 3 min 0 max 9999 spin 1 txtconvert yes",
    };
    EXPECT_EQ(ozFirstDifference(expected, ozDescribeTree(load.Tree())), "");

    // Parts start with their defaults.
    const char* path = "USER\\Cat\\Pol";
    EXPECT_STREQ(PartAt<ozADMComboBox>(path, 0)->Value(), "two");
    EXPECT_STREQ(PartAt<ozADMText>(path, 1)->ValueName(), "")
        << "a text part ends with an empty value name";
    EXPECT_TRUE(PartAt<ozADMCheckBox>(path, 2)->Checked());
    EXPECT_EQ(PartAt<ozADMDropdownList>(path, 4)->Selected(), 1)
        << "the default selects its item once the items are there";
    EXPECT_EQ(PartAt<ozADMNumeric>(path, 5)->Value(), 3u);
}

TEST_F(TemplateLoadTest, SecondTemplateMergesAndKeepsEarlierStrings)
{
    ASSERT_TRUE(
        Load("CLASS MACHINE\nCATEGORY c\n KEYNAME k\n POLICY !!p\n"
             "  PART x CHECKBOX VALUENAME x END PART\n END POLICY\nEND CATEGORY\n"
             "[strings]\np=first\n"))
        << load.Message();
    ozTestFile second("ozadm-template-test-2.adm",
                      "CLASS MACHINE\nCATEGORY c\n KEYNAME k\n POLICY first\n"
                      "  PART y CHECKBOX VALUENAME y END PART\n END POLICY\n"
                      " POLICY !!p KEYNAME j END POLICY\n POLICY after END POLICY\n"
                      "END CATEGORY\nCLASS USER\n"
                      "[strings]\np=second\n");
    ASSERT_TRUE(load.Load(second.Path())) << load.Message();
    ozADMPolicy* policy = Policy("MACHINE\\c\\first");
    ASSERT_NE(policy, nullptr);
    EXPECT_EQ(policy->Controls().Count(), 2) << "one policy, with the parts of all occurrences";
    EXPECT_EQ(policy->RegKey()->KeyPath(), "j") << "the key name of the last occurrence";
    EXPECT_EQ(load.Tree().FindNode("MACHINE\\c\\second"), nullptr);
    ASSERT_NE(Policy("MACHINE\\c\\after"), nullptr);
    EXPECT_EQ(Policy("MACHINE\\c\\after")->RegKey()->KeyPath(), "k")
        << "a policy's own key name ends with the policy";
    EXPECT_NE(load.Tree().FindNode("USER"), nullptr);
    EXPECT_EQ(load.Tree().Down()->Next()->Next(), nullptr) << "two classes";
}

TEST_F(TemplateLoadTest, Utf16TemplateStrings)
{
    file.Write(
        ozUtf16Bytes(u"CLASS USER\r\nCATEGORY !!c\r\nKEYNAME k\r\n"
                     u"POLICY !!p VALUENAME v END POLICY\r\nEND CATEGORY\r\n"
                     u"[strings]\r\nc=\"Kat\u00e9gorie\"\r\np=\"\u4e2d\"\r\n"));
    ASSERT_TRUE(load.Load(file.Path())) << load.Message();
#if !defined(_WIN32)
    EXPECT_NE(Policy("USER\\Kat\xc3\xa9gorie\\\xe4\xb8\xad"), nullptr);
#else
    EXPECT_NE(load.Tree().FindNode("USER"), nullptr);  // narrowed to the ANSI code page
#endif
}

// Every error a template can provoke, with the line and column where it happens.
TEST_F(TemplateLoadTest, ErrorsCarryTheirNumberAndPlace)
{
    const std::string head = "CLASS MACHINE\nCATEGORY c\n";
    struct Case {
        std::string text;
        const char* expected;  // the message after the file name
    } cases[] = {
        {head + "KEYNAME k\nPOLICY p\n PART x EDITTEXT END PART\nEND POLICY\nEND CATEGORY\n",
         ":5:22: error 1135"},
        {head + "KEYNAME k\nPOLICY p\n PART x LISTBOX VALUEPREFIX a EXPLICITVALUE END PART\n",
         ":5:31: error 1132"},
        {head + "KEYNAME k\nPOLICY p\n PART x LISTBOX EXPLICITVALUE VALUEPREFIX a END PART\n",
         ":5:43: error 1132"},
        {head + "POLICY !!Missing\n", ":3:8: error 1129: MISSING"},
        {head + "KEYNAME k\nPOLICY p\n PART x EDITTEXT KEYNAME " + std::string(2000, 'a') +
             " VALUENAME v END PART\n",
         ":5:2043: error 1112"},  // a key name longer than a registry key name can be
        {head + "KEYNAME k\nPOLICY p\n PART x NUMERIC DEFAULT x\n",
         ":5:25: error 1004: expected a number, found \"x\""},
        {head + "END POLICY\n", ":3:5: error 1004: expected \"CATEGORY\", found \"POLICY\""},
        {head + "#if version >= 4\n", ":3:1: error 1005: #if without #endif"},
        {head + "KEYNAME k\nPOLICY p VALUENAME \"v\n",
         ":4:20: error 1004: a text in quotes is not closed"},
        // The load before failed inside KEYNAME k, which must not become this policy's key.
        {head + "POLICY p VALUENAME v END POLICY\nEND CATEGORY\n", ":3:26: error 1111"},
    };
    for (const Case& each : cases) {
        EXPECT_FALSE(Load(each.text)) << each.text;
        EXPECT_EQ(load.Message().rfind(file.Path() + std::string(each.expected), 0), 0u)
            << "expected " << each.expected << "\n got " << load.Message();
    }
    EXPECT_FALSE(load.Load(file.Path() + std::string(".missing")));
    EXPECT_NE(load.Message().find("error 1015"), std::string::npos) << load.Message();
}

TEST_F(TemplateLoadTest, FailedLoadKeepsWhatWasBuilt)
{
    EXPECT_FALSE(
        Load("CLASS MACHINE\nCATEGORY c\nKEYNAME k\nPOLICY good END POLICY\n"
             "POLICY bad\n PART x EDITTEXT END PART\n"));
    EXPECT_NE(Policy("MACHINE\\c\\good"), nullptr);
    ASSERT_TRUE(
        Load("CLASS MACHINE\nCATEGORY c\nKEYNAME k\nPOLICY later END POLICY\nEND CATEGORY\n"))
        << load.Message();
    EXPECT_NE(Policy("MACHINE\\c\\good"), nullptr) << "the next template merges into the same tree";
    EXPECT_NE(Policy("MACHINE\\c\\later"), nullptr);
}

}  // namespace
