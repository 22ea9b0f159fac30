// The import-from-registry dialog over a registry the test fills: the roots it offers, keys read
// when first expanded, and its answer by the pane the user worked in last.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTestRegistry.h"
#include "ui/headless/ozHeadlessPlatform.h"
#include "ui/ozImportRegistryDialog.h"

namespace {

using D = ozImportRegistryDialog;
const std::string Tree = std::string(ozTestRegistry::Base) + "\\Tree";

class ImportRegistryDialogTest : public testing::Test {
protected:
    void SetUp() override
    {
        registry.SetString("Tree\\A", "", "d");
        registry.SetDword("Tree\\A", "v", 7);
        registry.AddKey("Tree\\A\\Deep");
        registry.AddKey("Tree\\B");
        registry.Publish();
    }

    void Open(const ozControlViews::RegistryImport& request)
    {
        platform.RunDialog(std::make_unique<D>(request, D::Texts{"Title"}),
                           [this](ozDialog& dialog, bool accepted) {
                               auto& import = static_cast<D&>(dialog);
                               ended = accepted && import.Chosen();
                               answer = import.Answer();
                           });
        form = platform.TopForm();
        tree = form->Tree(D::KeyTree);
    }
    ozControlViews::RegistryImport At(const std::string& key)
    {
        ozControlViews::RegistryImport request;
        request.initial = {1, key, "", true, true, ""};
        return request;
    }
    std::vector<std::string> Children(const std::string& path) const
    {
        std::vector<std::string> texts;
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
    Open(At(""));
    EXPECT_EQ(platform.TopDialog()->Layout().caption, "Title");
    EXPECT_EQ(Children(""), (std::vector<std::string>{"HKEY_CURRENT_USER:1", "HKEY_LOCAL_MACHINE:0",
                                                      "HKEY_USERS:4"}));
    EXPECT_EQ(Children("HKEY_CURRENT_USER"), (std::vector<std::string>{":2"})) << "placeholder";
    const std::string path = "HKEY_CURRENT_USER\\" + Tree;
    for (std::string::size_type at = path.find('\\'); at != std::string::npos;
         at = path.find('\\', at + 1))
        tree->ExpandByUser(tree->Find(path.substr(0, at)), true);
    tree->ExpandByUser(tree->Find(path), true);
    EXPECT_EQ(Children(path), (std::vector<std::string>{"A:2", "B:2"}));
    EXPECT_EQ(Children(path + "\\A"), (std::vector<std::string>{":2"})) << "not read yet";
    EXPECT_EQ(Children(path + "\\B"), (std::vector<std::string>{})) << "no sub keys, no button";
    tree->ExpandByUser(tree->Find(path + "\\A"), true);
    EXPECT_EQ(Children(path + "\\A"), (std::vector<std::string>{"Deep:2"}));

    ASSERT_TRUE(tree->SelectByUser(tree->Find(path + "\\A")));
    EXPECT_EQ(form->Rows(D::ValueList),
              (std::vector<std::string>{"(Default)\td~", "v\t0x00000007"}));
    EXPECT_TRUE(form->Checked(D::RecursiveBox));
    EXPECT_TRUE(form->Type(D::MachineEdit, std::string(40, 'm')));
    EXPECT_EQ(form->Text(D::MachineEdit).size(), std::size_t{D::MachineNameLength});
}

TEST_F(ImportRegistryDialogTest, AnswersTheWholeKeyOrTheValueByThePaneUsedLast)
{
    struct Case {
        std::vector<int> focus;  // panes clicked into, in order
        int row;
        bool wholeKey;
        std::string value;
    } cases[] = {{{}, 1, true, ""},
                 {{D::ValueList}, 1, false, "v"},
                 {{D::ValueList}, 0, false, ""},
                 {{D::ValueList}, -1, true, ""},
                 {{D::ValueList, D::KeyTree}, 1, true, ""}};
    for (const Case& c : cases) {
        Open(At(Tree + "\\A"));
        for (int pane : c.focus)
            ASSERT_TRUE(form->FocusByUser(pane));
        ASSERT_TRUE(form->ChooseRow(D::ValueList, c.row));
        ASSERT_TRUE(form->CheckByUser(D::RecursiveBox, false));
        ASSERT_TRUE(platform.EndDialog(true));
        EXPECT_TRUE(ended);
        EXPECT_EQ(answer.root, 1u);
        EXPECT_EQ(answer.key, Tree + "\\A");
        EXPECT_EQ(answer.wholeKey, c.wholeKey) << c.row;
        EXPECT_EQ(answer.value, c.value) << c.row;
        EXPECT_FALSE(answer.recursive);
    }
    Open(At(Tree + "\\B"));
    ASSERT_TRUE(platform.EndDialog(false));
    EXPECT_FALSE(ended);
    EXPECT_EQ(answer.root, 0u);
    EXPECT_EQ(answer.key + answer.value, "");
    EXPECT_TRUE(answer.wholeKey);
}

TEST_F(ImportRegistryDialogTest, ABrowseOffersOneRootWithoutRecursive)
{
    ozControlViews::RegistryImport request = At(Tree + "\\A\\Deep");
    request.singleRoot = true;
    request.showRecursive = false;
    Open(request);
    EXPECT_EQ(form->Find(D::RecursiveBox), nullptr);
    EXPECT_EQ(Children(""), (std::vector<std::string>{"HKEY_CURRENT_USER:1"}));
    ASSERT_TRUE(platform.EndDialog(true));
    EXPECT_EQ(answer.key, Tree + "\\A\\Deep");
    EXPECT_FALSE(answer.recursive);
}

}  // namespace
