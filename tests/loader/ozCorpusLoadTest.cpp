// Real templates nobody here wrote: each loads (the damaged one fails cleanly) and gives the
// tree its text declares.
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "core/adm/ozADMCategory.h"
#include "core/adm/ozADMCheckBox.h"
#include "core/adm/ozADMCtrl.h"
#include "core/adm/ozADMNumeric.h"
#include "core/adm/ozADMPolicy.h"
#include "core/registry/ozSubKey.h"
#include "tests/support/ozTemplateLoad.h"

namespace {

// What a loaded tree holds: nodes of each kind and parts of each type.
struct TreeCounts {
    int classes = 0, categories = 0, policies = 0;
    std::map<unsigned long, int> parts;  // by part type
};

void Count(ozTreeNode* node, TreeCounts& counts)
{
    for (; node != nullptr; node = node->Next()) {
        auto* admNode = static_cast<ozADMNode*>(node);
        switch (admNode->NodeType()) {
            case NodeRoot:
                ++counts.classes;
                break;
            case NodeCategory:
                ++counts.categories;
                break;
            case NodePolicy: {
                ++counts.policies;
                auto& parts = static_cast<ozADMPolicy*>(admNode)->Controls();
                for (int i = 0; i < parts.Count(); ++i)
                    ++counts.parts[parts.At(i)->CtrlType()];
                break;
            }
        }
        Count(node->Down(), counts);
    }
}

struct CorpusCase {
    const char* file;
    int classes, categories, policies;
    std::map<unsigned long, int> parts;
    bool chineseNames = false;
};

// The numbers were counted from the templates' text: CLASS, CATEGORY, POLICY and PART lines
// (inside "#if version >= 4", which applies), with categories and policies of the same name at
// the same place counted once, since they merge.
constexpr unsigned long Check = CtrlCheckBox, Drop = CtrlDropdownList, Edit = CtrlEditText,
                        List = CtrlListBox, Num = CtrlNumeric;
const CorpusCase Corpus[] = {
    // clang-format off
    {"chrome37-zhCN/chrome.adm", 2, 38, 338, {{Drop, 24}, {Edit, 70}, {List, 72}, {Num, 8}}, true},
    {"chrome73/chrome.adm", 2, 52, 562, {{Drop, 58}, {Edit, 102}, {List, 96}, {Num, 10}}},
    {"google-omaha-2009/test_gold.adm", 1, 6, 7, {{Check, 1}, {Drop, 3}, {Num, 1}}},
    {"google-omaha/GoogleCloudManagement.adm", 1, 2, 2, {{Edit, 1}}},
    {"google-omaha/test_gold.adm", 1, 7, 19, {{Check, 1}, {Drop, 8}, {Edit, 6}, {Num, 4}}},
    {"msedge/msedge.adm", 2, 72, 1146, {{Drop, 160}, {Edit, 134}, {List, 180}, {Num, 24}}},
    {"sec505/Adobe-Reader-Acrobat.ADM", 2, 4, 22, {}},
    {"sec505/Firefox-FrontMotion.ADM", 2, 2, 14, {{Drop, 4}, {Edit, 18}, {Num, 14}}},
    {"sec505/Google-Chrome.adm", 1, 9, 36, {{Drop, 3}, {Edit, 10}, {List, 8}}},
    {"sec505/REG_DWORD.ADM", 2, 2, 2, {{Num, 2}}},
    {"sec505/REG_EXPAND_SZ.ADM", 2, 2, 2, {{Edit, 2}}},
    {"sec505/SANS_Active_Directory.ADM", 1, 1, 2, {{Num, 2}}},
    {"sec505/SANS_Windows_Explorer_Annoyances.ADM", 1, 1, 4, {}},
    {"sec505/Set_SourcePath_Value.ADM", 1, 1, 1, {{Edit, 1}}},
    {"sec505/Skype-v1.7.adm", 2, 10, 30, {{Drop, 2}, {Edit, 6}, {Num, 2}}},
    {"stealthpuppy/AdobeAcrobatAndReader9.ADM", 1, 2, 19, {{Drop, 2}}},
    {"wpkg-gp/wpkg-gp.adm", 1, 1, 4, {{Drop, 5}, {Edit, 3}, {Num, 2}}},
    // clang-format on
};

class CorpusLoadTest : public ::testing::TestWithParam<CorpusCase> {
protected:
    static void SetUpTestSuite() { ASSERT_TRUE(ozTemplateLoad::LoadGrammar()) << ErrorMessage(); }
    static void TearDownTestSuite() { EBNFDestroy(); }
    void SetUp() override
    {
        if (ozCorpusPath("").empty())
            GTEST_SKIP() << "the template corpus is not there (" << OZ_CORPUS_DIR << ")";
    }
};

TEST_P(CorpusLoadTest, GivesTheTreeItsTextDeclares)
{
    const CorpusCase& expected = GetParam();
    ozTemplateLoad load;
    ASSERT_TRUE(load.Load(ozCorpusPath(std::string("adm/") + expected.file))) << load.Message();
    TreeCounts counts;
    Count(load.Tree().Down(), counts);
    EXPECT_EQ(counts.classes, expected.classes);
    EXPECT_EQ(counts.parts, expected.parts) << "parts never merge away";
    if (expected.chineseNames && !ozNarrowTextHoldsChinese()) {
        // Names become the ANSI code page's text: distinct Chinese names read as the same
        // question marks there, and nodes of the same name merge.
        EXPECT_LE(counts.categories, expected.categories);
        EXPECT_LE(counts.policies, expected.policies);
        return;
    }
    EXPECT_EQ(counts.categories, expected.categories);
    EXPECT_EQ(counts.policies, expected.policies);
}

INSTANTIATE_TEST_SUITE_P(Templates, CorpusLoadTest, ::testing::ValuesIn(Corpus),
                         [](const auto& info) {
                             std::string name;
                             for (const char* c = info.param.file; *c != '\0'; ++c)
                                 name += isalnum(static_cast<unsigned char>(*c)) ? *c : '_';
                             return name;
                         });

class CorpusSpotCheckTest : public CorpusLoadTest {};

TEST_F(CorpusSpotCheckTest, DamagedTemplateFailsWithNumberAndPlace)
{
    ozTemplateLoad load;
    EXPECT_FALSE(load.Load(ozCorpusPath("adm/google-omaha-2011-crlf-mangled/test_gold.adm")));
    // Its line ends lost a byte each, so after the first line the UTF-16 is out of step: the
    // string reference on line 2 names nothing in the (equally garbled) [strings] section.
    EXPECT_NE(load.Message().find("test_gold.adm:2:12: error 1129: "), std::string::npos)
        << load.Message();
}

TEST_F(CorpusSpotCheckTest, NamesKeysAndValuesOfAPolicy)
{
    ozTemplateLoad load;
    ASSERT_TRUE(load.Load(ozCorpusPath("adm/google-omaha/test_gold.adm"))) << load.Message();
    auto* policy = static_cast<ozADMPolicy*>(load.Tree().FindNode(
        "MACHINE\\Google\\Google Update\\Preferences\\Auto-update check period override"));
    ASSERT_NE(policy, nullptr);
    EXPECT_EQ(policy->RegKey()->KeyPath(), "Software\\Policies\\Google\\Update");
    auto* numeric = static_cast<ozADMNumeric*>(policy->Controls().At(0));
    EXPECT_STREQ(numeric->ValueName(), "AutoUpdateCheckPeriodMinutes");
    EXPECT_EQ(std::vector<std::uint64_t>({numeric->Default(), numeric->Min(), numeric->Max()}),
              std::vector<std::uint64_t>({295, 0, 43200}));
    EXPECT_EQ(numeric->Spin(), 60);

    auto* checkBox = static_cast<ozADMCheckBox*>(policy->Controls().At(1));
    ASSERT_EQ(checkBox->ActionListOn()->Count(), 1);
    ozActionItem* item = checkBox->ActionListOn()->At(0);
    EXPECT_STREQ(item->ValueName(), "AutoUpdateCheckPeriodMinutes");
    EXPECT_EQ(item->RegKey(), policy->RegKey()) << "the item takes the part's key";
    EXPECT_EQ(checkBox->ActionListOff()->Count(), 0);
}

}  // namespace
