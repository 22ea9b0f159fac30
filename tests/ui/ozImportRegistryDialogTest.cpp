// The import-from-registry dialog over a registry the test fills: the roots it offers, keys read
// when first expanded, and its answer by the pane the user worked in last.
#include <gtest/gtest.h>

#include <memory>

#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTestRegistry.h"
#include "ui/headless/ozHeadlessPlatform.h"
#include "ui/ozImportRegistryDialog.h"

namespace {

using D = ozImportRegistryDialog;
using Strings = std::vector<std::string>;
const std::string KeyA = std::string(ozTestRegistry::Base) + "\\A";

class ImportRegistryDialogTest : public testing::Test {
protected:
    void SetUp() override
    {
        registry.SetString("A", "", "d");
        registry.SetDword("A", "v", 7);
        registry.AddKey("A\\Deep");
        registry.AddKey("B");
        registry.Publish();
    }
    void Open(const std::string& key, bool browse = false)
    {
        ozControlViews::RegistryImport request{{1, key, "", true, true, ""}, browse, !browse};
        platform.RunDialog(std::make_unique<D>(request, D::Texts{"Title"}),
                           [this](ozDialog& dialog, bool accepted) {
                               ended = accepted && static_cast<D&>(dialog).Chosen();
                               answer = static_cast<D&>(dialog).Answer();
                           });
        form = platform.TopForm();
        tree = form->Tree(D::KeyTree);
    }
    // The texts and images of the children of the item at path ("": the top level).
    Strings Children(const std::string& path) const
    {
        Strings texts;
        for (ozTreeItem item = path.empty() ? tree->Root() : tree->FirstChild(tree->Find(path));
             item != ozNoItem; item = tree->NextSibling(item))
            texts.push_back(tree->Text(item) + ":" + std::to_string(tree->Image(item)));
        return texts;
    }

    ozTestRegistry registry;
    ozRecordingHostUI ui;
    ozHeadlessPlatform platform{ui};
    ozHeadlessForm* form = nullptr;
    ozHeadlessTree* tree = nullptr;
    bool ended = false;
    ozControlViews::RegistryChoice answer;
};

TEST_F(ImportRegistryDialogTest, OffersTheRootsAndReadsAKeyWhenFirstExpanded)
{
    Open(KeyA);
    EXPECT_EQ(Children(""),
              (Strings{"HKEY_CURRENT_USER:1", "HKEY_LOCAL_MACHINE:0", "HKEY_USERS:4"}));
    const std::string base = "HKEY_CURRENT_USER\\" + std::string(ozTestRegistry::Base);
    EXPECT_EQ(Children(base), (Strings{"A:2", "B:2"})) << "opened down to the key given";
    EXPECT_EQ(Children(base + "\\A"), (Strings{":2"})) << "a placeholder: not read yet";
    EXPECT_EQ(Children(base + "\\B"), (Strings{})) << "no sub keys, no placeholder";
    tree->ExpandByUser(tree->Find(base + "\\A"), true);
    EXPECT_EQ(Children(base + "\\A"), (Strings{"Deep:2"}));
    EXPECT_EQ(form->Rows(D::ValueList), (Strings{"(Default)\td~", "v\t0x00000007"}));
    EXPECT_TRUE(form->Type(D::MachineEdit, std::string(40, 'm')));
    EXPECT_EQ(form->Text(D::MachineEdit).size(), std::size_t{D::MachineNameLength});

    Open(KeyA + "\\Deep", true);
    EXPECT_EQ(form->Find(D::RecursiveBox), nullptr);
    EXPECT_EQ(Children(""), (Strings{"HKEY_CURRENT_USER:1"}));
    ASSERT_TRUE(platform.EndDialog(true));
    EXPECT_EQ(answer.key, KeyA + "\\Deep");
    EXPECT_FALSE(answer.recursive);
}

TEST_F(ImportRegistryDialogTest, AnswersTheWholeKeyOrTheValueByThePaneUsedLast)
{
    struct Case {
        std::vector<int> panes;  // clicked into, in order
        int row;
        bool wholeKey;
    } cases[] = {{{}, 1, true},
                 {{D::ValueList}, 0, false},
                 {{D::ValueList}, -1, true},
                 {{D::ValueList, D::KeyTree}, 1, true}};
    for (const Case& c : cases) {
        Open(KeyA);
        for (int pane : c.panes)
            ASSERT_TRUE(form->FocusByUser(pane));
        ASSERT_TRUE(form->ChooseRow(D::ValueList, c.row));
        ASSERT_TRUE(platform.EndDialog(true));
        EXPECT_TRUE(ended && answer.root == 1 && answer.key == KeyA && answer.recursive);
        EXPECT_EQ(answer.wholeKey, c.wholeKey) << c.row;
        EXPECT_EQ(answer.value, "") << "the default value's name, or none";
    }
    Open(KeyA);
    ASSERT_TRUE(platform.EndDialog(false));
    EXPECT_FALSE(ended);
    EXPECT_TRUE(answer.root == 0 && answer.key.empty() && answer.wholeKey && !answer.recursive);
}

}  // namespace
