// Templates written back and read again: every template of the corpus that loads and every
// template of the tests gives, after a write and a second load, the same tree field by field,
// and the second tree writes the same bytes as the first.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "core/adm/ozADMEditText.h"
#include "core/adm/ozADMMultiText.h"
#include "core/adm/ozADMNumeric.h"
#include "core/adm/ozADMPolicy.h"
#include "core/adm/ozADMTree.h"
#include "loader/ozADMXLoad.h"
#include "platform/ozAsciiCase.h"
#include "tests/support/ozTemplateLoad.h"
#include "tests/support/ozTestFiles.h"
#include "tests/support/ozTreeDescription.h"

namespace {

struct TemplateFile {
    std::string path;
    bool mustLoad;  // ours must; a corpus or fuzz seed template may be damaged on purpose
};

void PrintTo(const TemplateFile& file, std::ostream* out)
{
    *out << file.path;
}

void AddTemplates(const std::string& folder, bool mustLoad, std::vector<TemplateFile>& files)
{
    std::error_code error;
    if (folder.empty() || !std::filesystem::is_directory(folder, error))
        return;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder, error)) {
        if (entry.is_regular_file() &&
            ozAsciiSameIgnoringCase(entry.path().extension().string(), ".adm"))
            files.push_back({entry.path().generic_string(), mustLoad});
    }
}

std::vector<TemplateFile> AllTemplates()
{
    std::vector<TemplateFile> files;
    AddTemplates(ozSourcePath("tests/templates"), true, files);
    AddTemplates(ozSourcePath("fuzz/seeds/template"), false, files);
    AddTemplates(ozCorpusPath("adm"), false, files);
    std::sort(files.begin(), files.end(),
              [](const TemplateFile& a, const TemplateFile& b) { return a.path < b.path; });
    return files;
}

// A test name from the file's last two path components.
std::string NameOf(const ::testing::TestParamInfo<TemplateFile>& info)
{
    std::filesystem::path path(info.param.path);
    std::string name = path.parent_path().filename().string() + "_" + path.stem().string();
    for (char& c : name)
        if (!std::isalnum(static_cast<unsigned char>(c)))
            c = '_';
    return name + "_" + std::to_string(info.index);
}

// Writes the tree into path; false when the file cannot be opened or the save fails.
bool SaveTree(ozADMTree& tree, const std::string& path)
{
    FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr)
        return false;
    bool saved = tree.Save(file);
    return std::fclose(file) == 0 && saved;
}

class RoundTripTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { ASSERT_TRUE(ozTemplateLoad::LoadGrammar()) << ErrorMessage(); }
    static void TearDownTestSuite() { EBNFDestroy(); }

    // Writes original's tree, loads the file again, and checks both trees and both writes.
    void WriteAndReload(ozTemplateLoad& original)
    {
        ozTestFile first("ozadm-round-trip-1.adm");
        ozTestFile second("ozadm-round-trip-2.adm");
        ASSERT_TRUE(SaveTree(original.Tree(), first.Path()));
        ozTemplateLoad reloaded;
        ASSERT_TRUE(reloaded.Load(first.Path())) << reloaded.Message();
        std::string difference =
            ozFirstDifference(ozDescribeTree(original.Tree()), ozDescribeTree(reloaded.Tree()));
        EXPECT_TRUE(difference.empty())
            << "the written template reads back to another tree, " << difference;
        ASSERT_TRUE(SaveTree(reloaded.Tree(), second.Path()));
        EXPECT_EQ(ozReadTestFile(second.Path()), ozReadTestFile(first.Path()))
            << "the tree read back writes other bytes";
    }
};

class RoundTrip : public RoundTripTest, public ::testing::WithParamInterface<TemplateFile> {};

TEST_P(RoundTrip, WriteReadWrite)
{
    ozTemplateLoad original;
    if (!original.Load(GetParam().path)) {
        ASSERT_FALSE(GetParam().mustLoad) << original.Message();
        GTEST_SKIP() << "does not load: " << original.Message();
    }
    if (GetParam().path.find("zhCN") != std::string::npos && !ozNarrowTextHoldsChinese())
        GTEST_SKIP() << "the narrow code page has no Chinese: distinct names became question "
                        "marks, and equal names of siblings merge when the template is read back";
    WriteAndReload(original);
}

INSTANTIATE_TEST_SUITE_P(Templates, RoundTrip, ::testing::ValuesIn(AllTemplates()), NameOf);

TEST_F(RoundTripTest, TwoTemplatesWriteOneFileOfTheMergedTree)
{
    ozTemplateLoad merged;
    ASSERT_TRUE(merged.Load(ozSourcePath("tests/templates/every-part.adm"))) << merged.Message();
    ASSERT_TRUE(merged.Load(ozSourcePath("tests/templates/seldom-used.adm"))) << merged.Message();
    ASSERT_NE(merged.Tree().FindNode("USER\\Desktop\\Wallpaper"), nullptr);
    ASSERT_NE(merged.Tree().FindNode("USER\\Cat\\Pol"), nullptr);
    WriteAndReload(merged);
}

// The parts of XML templates that the template language lacks are written in their nearest
// form, each reported with its policy, and the file loads again.
TEST_F(RoundTripTest, PartsWithoutTemplateKeywordWriteTheirNearestFormAndSaySo)
{
    const char* const path = "USER\\Desktop\\Wallpaper";
    ozTemplateLoad original;
    ASSERT_TRUE(original.Load(ozSourcePath("tests/templates/every-part.adm")));
    auto* policy = static_cast<ozADMPolicy*>(original.Tree().FindNode(path));
    auto* lines = new ozADMMultiText;
    auto* wide = new ozADMNumeric;
    lines->MaxLength(10);
    wide->Qword(true);
    wide->Max(1ULL << 40);
    for (ozADMCtrl* part : {static_cast<ozADMCtrl*>(lines), static_cast<ozADMCtrl*>(wide)}) {
        part->Name(part == wide ? "Wide" : "Lines");
        part->Key(policy->RegKey());
        part->ValueName(part->Name());
        policy->AddControl(part);
    }
    ozTestFile written("ozadm-round-trip-extensions.adm");
    ASSERT_TRUE(SaveTree(original.Tree(), written.Path()));
    EXPECT_EQ(
        original.Tree().ConversionLosses(),
        std::vector<std::string>(
            {"USER\\Desktop\\Wallpaper: the multi-line text \"Lines\" is written as a one-line "
             "EDITTEXT (REG_SZ, not REG_MULTI_SZ)",
             "USER\\Desktop\\Wallpaper: the 64-bit number part \"Wide\" is written as a 32-bit "
             "NUMERIC (REG_DWORD)"}));
    ozTemplateLoad reloaded;
    ASSERT_TRUE(reloaded.Load(written.Path())) << reloaded.Message();
    const auto& parts = static_cast<ozADMPolicy*>(reloaded.Tree().FindNode(path))->Controls();
    auto* edit = dynamic_cast<ozADMEditText*>(parts.At(parts.Count() - 2));
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(std::string(edit->ValueName()) + " " + std::to_string(edit->MaxLen()), "Lines 10");
    EXPECT_EQ(static_cast<ozADMNumeric*>(parts.At(parts.Count() - 1))->Max(), 4294967295u);
}

// Every ADMX file of the corpus in each of its languages, converted: the written template
// reports each part it has no keyword for, with its policy, and loads again to the same
// classes, categories and policies.
struct ADMXCase {
    std::string path;
    std::string language;
};

void PrintTo(const ADMXCase& file, std::ostream* out)
{
    *out << file.path << " in " << file.language;
}

std::vector<ADMXCase> CorpusADMX()
{
    std::vector<ADMXCase> cases;
    std::error_code error;
    std::string folder = ozCorpusPath("admx");
    if (folder.empty() || !std::filesystem::is_directory(folder, error))
        return cases;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder, error))
        if (entry.path().extension() == ".admx")
            for (const char* language : {"en-US", "de-DE"})
                cases.push_back({entry.path().generic_string(), language});
    std::sort(cases.begin(), cases.end(), [](const ADMXCase& a, const ADMXCase& b) {
        return a.path + a.language < b.path + b.language;
    });
    return cases;
}

// The path of every class, category and policy, and how many parts have no template keyword.
struct TreeOutline {
    std::vector<std::string> paths;
    size_t partsWithoutKeyword = 0;
};

void Outline(ozTreeNode* node, TreeOutline& outline)
{
    for (; node != nullptr; node = node->Next()) {
        auto* admNode = static_cast<ozADMNode*>(node);
        outline.paths.push_back(admNode->Path());
        if (admNode->NodeType() == NodePolicy) {
            auto& parts = static_cast<ozADMPolicy*>(admNode)->Controls();
            for (int i = 0; i < parts.Count(); ++i) {
                auto* numeric = dynamic_cast<ozADMNumeric*>(parts.At(i));
                if (parts.At(i)->CtrlType() == CtrlMultiText || (numeric && numeric->Qword()))
                    ++outline.partsWithoutKeyword;
            }
        }
        Outline(node->Down(), outline);
    }
}

class ADMXConversion : public RoundTripTest, public ::testing::WithParamInterface<ADMXCase> {};

TEST_P(ADMXConversion, WrittenTemplateLoadsAgainAndNamesWhatItLacks)
{
    ozTemplateLanguage(GetParam().language.c_str());
    ozTemplateLoad original;
    bool loaded = original.Load(GetParam().path);
    ozTemplateLanguage("");
    ASSERT_TRUE(loaded) << original.Message();
    ozTestFile written("ozadm-converted.adm");
    ASSERT_TRUE(SaveTree(original.Tree(), written.Path()));
    TreeOutline before;
    Outline(original.Tree().Down(), before);
    EXPECT_EQ(original.Tree().ConversionLosses().size(), before.partsWithoutKeyword);
    ozTemplateLoad reloaded;
    ASSERT_TRUE(reloaded.Load(written.Path())) << reloaded.Message();
    TreeOutline after;
    Outline(reloaded.Tree().Down(), after);
    EXPECT_EQ(ozFirstDifference(before.paths, after.paths), "");
}

INSTANTIATE_TEST_SUITE_P(Corpus, ADMXConversion, ::testing::ValuesIn(CorpusADMX()));

}  // namespace
