// ADMX definitions with their ADML files: the mapping of every construct (against the same
// template written in ADM), the language folders, categories of other files, and the errors.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "core/adm/ozADMEditText.h"
#include "core/adm/ozADMMultiText.h"
#include "core/adm/ozADMNumeric.h"
#include "core/adm/ozADMPolicy.h"
#include "core/adm/ozADMTree.h"
#include "loader/ozADMXLoad.h"
#include "platform/ozUserLanguage.h"
#include "tests/support/ozTemplateLoad.h"
#include "tests/support/ozTestFiles.h"
#include "tests/support/ozTreeDescription.h"

namespace {

class ADMXLoadTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { ASSERT_TRUE(ozTemplateLoad::LoadGrammar()) << ErrorMessage(); }
    static void TearDownTestSuite() { EBNFDestroy(); }
    void TearDown() override { ozTemplateLanguage(nullptr); }

    static std::string Template(const std::string& name)
    {
        return ozSourcePath("tests/templates/admx/" + name);
    }
    static std::vector<std::string> TreeOf(const std::vector<std::string>& files)
    {
        ozTemplateLoad load;
        for (const std::string& file : files)
            EXPECT_TRUE(load.Load(file)) << load.Message();
        return load.Code() != nullptr ? ozDescribeTree(load.Tree()) : std::vector<std::string>{};
    }
    bool HasNode(ozTemplateLoad& load, const char* path)
    {
        return load.Code() != nullptr && load.Tree().FindNode(path) != nullptr;
    }
};

// Every construct, field by field: the ADMX tree is the tree of the ADM written by hand, also
// merged with an ADM template loaded before it.
TEST_F(ADMXLoadTest, EveryConstructMapsAsTheADMWrittenByHand)
{
    ozTemplateLanguage("en-US");
    const std::string admx = Template("mapping.admx");
    const std::string adm = Template("mapping.adm");
    EXPECT_EQ(ozFirstDifference(TreeOf({adm}), TreeOf({admx})), "");
    EXPECT_EQ(ozFirstDifference(TreeOf({adm, adm}), TreeOf({adm, admx})), "");
}

// Multi-line texts and 64-bit numbers, which ADM templates cannot express.
TEST_F(ADMXLoadTest, MultiLineTextsAnd64BitNumbers)
{
    ozTemplateLoad load;
    ASSERT_TRUE(load.Load(Template("beyond-adm.admx"))) << load.Message();
    auto* policy = static_cast<ozADMPolicy*>(load.Tree().FindNode("USER\\Big"));
    ASSERT_NE(policy, nullptr);
    EXPECT_EQ(policy->ValueOn().Qword(), UINT64_MAX);
    auto* lines = dynamic_cast<ozADMMultiText*>(policy->Controls().At(0));
    ASSERT_NE(lines, nullptr);
    EXPECT_STREQ(lines->ValueName(), "lines");
    EXPECT_TRUE(lines->Required());
    EXPECT_EQ(lines->MaxLength(), 80u);
    EXPECT_EQ(lines->MaxStrings(), 5u);
    auto* quad = dynamic_cast<ozADMNumeric*>(policy->Controls().At(1));
    ASSERT_NE(quad, nullptr);
    EXPECT_TRUE(quad->Qword());
    EXPECT_EQ(quad->Min(), 5000000000u);
    EXPECT_EQ(quad->Max(), 9000000000u);
    EXPECT_EQ(quad->Default(), 6000000000u);
    EXPECT_EQ(quad->Spin(), 1000);
    auto* asText = dynamic_cast<ozADMEditText*>(policy->Controls().At(2));
    ASSERT_NE(asText, nullptr) << "a number stored as text is an edit text";
    EXPECT_STREQ(asText->Default(), "7");
}

TEST_F(ADMXLoadTest, TextsComeFromTheLanguageFolderThenEnglish)
{
    struct Case {
        const char* language;
        const char* policy;
    } cases[] = {
        {"de-DE", "MACHINE\\Oben\\Innen\\Werte"},
        {"DE-de", "MACHINE\\Oben\\Innen\\Werte"},  // folder names in any case
        {"de-AT", "MACHINE\\Oben\\Innen\\Werte"},  // another region of the language
        {"fr-FR", "MACHINE\\Top\\Inner\\Values"},  // no such folder: en-US
    };
    for (const Case& each : cases) {
        ozTemplateLanguage(each.language);
        ozTemplateLoad load;
        ASSERT_TRUE(load.Load(Template("mapping.admx"))) << load.Message();
        EXPECT_TRUE(HasNode(load, each.policy)) << each.language;
    }
}

#if !defined(_WIN32)
TEST_F(ADMXLoadTest, UserInterfaceLanguageFromTheLocale)
{
    struct Case {
        const char* all;
        const char* lang;
        const char* expected;
    } cases[] = {{"de_DE.UTF-8", "en_US", "de-DE"},
                 {"", "fr_FR@euro", "fr-FR"},
                 {"", "pt", "pt"},
                 {"C", "de_DE", ""},
                 {"", "", ""}};
    for (const Case& each : cases) {
        setenv("LC_ALL", each.all, 1);
        unsetenv("LC_MESSAGES");
        setenv("LANG", each.lang, 1);
        EXPECT_EQ(ozUserInterfaceLanguage(), each.expected) << each.all << " " << each.lang;
    }
    unsetenv("LC_ALL");
}
#endif

// A prefixed category comes from the file beside that declares the namespace, loaded first,
// or from definitions loaded before; found in neither, the load names the namespace.
TEST_F(ADMXLoadTest, CategoriesOfOtherFiles)
{
    {
        ozTemplateLoad load;
        ASSERT_TRUE(load.Load(Template("child.admx"))) << load.Message();
        EXPECT_TRUE(HasNode(load, "USER\\Root\\Sub\\In sub"));
        EXPECT_TRUE(HasNode(load, "USER\\Root\\In root"));
    }
    namespace fs = std::filesystem;
    const fs::path alone = ozTestFilePath("admx-alone");
    fs::create_directories(alone / "en-US");
    fs::copy_file(Template("child.admx"), alone / "child.admx");
    fs::copy_file(Template("en-US/child.adml"), alone / "en-US" / "child.adml");
    {
        ozTemplateLoad load;
        ASSERT_TRUE(load.Load(Template("parent.admx"))) << load.Message();
        EXPECT_TRUE(load.Load((alone / "child.admx").string())) << load.Message();
        EXPECT_TRUE(HasNode(load, "USER\\Root\\Sub\\In sub"));
    }
    {
        ozTemplateLoad load;
        EXPECT_FALSE(load.Load((alone / "child.admx").string()));
        EXPECT_NE(load.Message().find("child.admx:10:"), std::string::npos) << load.Message();
        EXPECT_NE(load.Message().find("error 1145"), std::string::npos) << load.Message();
        EXPECT_NE(load.Message().find("\"Test.Parent\""), std::string::npos) << load.Message();
    }
    fs::remove_all(alone);
}

// Every refusal names its number, the file (the ADMX or the ADML) with line and column, and
// what is missing or wrong.
TEST_F(ADMXLoadTest, ErrorsNameFileLineAndWhat)
{
    const std::string head =
        "<policyDefinitions><policyNamespaces><target prefix='t' namespace='T'/>"
        "</policyNamespaces>\n<policies>\n";
    const std::string tail = "</policies></policyDefinitions>";
    const std::string policy = "<policy name='P' class='User' displayName='$(string.P)' ";
    const std::string adml =
        "<policyDefinitionResources><resources><stringTable><string id='P'>P</string>"
        "</stringTable><presentationTable>\n<presentation id='Shown'>\n"
        "<decimalTextBox refId='gone'>x</decimalTextBox></presentation>\n"
        "</presentationTable></resources></policyDefinitionResources>";
    struct Case {
        std::string admx;
        std::string adml;
        const char* expected;  // "file:line:column: error N" and, after it, a word of what
        const char* what;
    } cases[] = {
        {head + "<policy>\n" + tail, adml, "t.admx:4:", "error 1140"},  // the XML reader's place
        {head + tail, "", "t.admx: error 1141", "t.adml"},
        {head + "<policy name='P' class='User' displayName='$(string.Q)' key='k'/>" + tail, adml,
         "t.admx:3:1: error 1142", "\"Q\""},
        {head + policy + "key='k' presentation='$(presentation.None)'/>" + tail, adml,
         "t.admx:3:1: error 1143", "\"None\""},
        {head + policy + "key='k'>\n<parentCategory ref='x:C'/></policy>" + tail, adml,
         "t.admx:4:1: error 1144", "\"x\""},
        {head + policy + "key='k'>\n<parentCategory ref='C'/></policy>" + tail, adml,
         "t.admx:4:1: error 1145", "\"T:C\""},
        {head + policy + "key='k' presentation='$(presentation.Shown)'/>" + tail, adml,
         "t.adml:3:1: error 1145", "\"gone\""},
        {head + policy + "/>" + tail, adml, "t.admx:3:1: error 1146", "\"key\""},
        {head + "<policy name='P' class='Computer' displayName='P' key='k'/>" + tail, adml,
         "t.admx:3:1: error 1147", "Computer"},
        {head + policy + "key='k'><elements>\n<decimal id='d' valueName='d' maxValue='-1'/>" +
             "</elements></policy>" + tail,
         adml, "t.admx:4:1: error 1147", "\"-1\""},
        {head + policy + "key='k'><elements>\n<longDecimal id='q' valueName='q' maxValue='x'/>" +
             "</elements></policy>" + tail,
         adml, "t.admx:4:1: error 1118", "x"},  // an action's own error, at its element
        {head + tail, "<policyDefinitionResources>", "t.adml:1:", "error 1140"},
    };
    namespace fs = std::filesystem;
    const fs::path folder = ozTestFilePath("admx-errors");
    for (const Case& each : cases) {
        fs::remove_all(folder);
        fs::create_directories(folder / "en-US");
        std::ofstream(folder / "t.admx", std::ios::binary) << each.admx;
        if (!each.adml.empty())
            std::ofstream(folder / "en-US" / "t.adml", std::ios::binary) << each.adml;
        ozTemplateLoad load;
        EXPECT_FALSE(load.Load((folder / "t.admx").string())) << each.admx;
        std::string message = load.Message();
        std::size_t at = message.find(each.expected);
        EXPECT_NE(at, std::string::npos) << message;
        EXPECT_NE(message.find(each.what, at), std::string::npos) << message;
    }
    fs::remove_all(folder);
}

}  // namespace
