// The parts dialog driven through the headless platform: the buttons' states, Insert of every
// part type, Delete, Up and Down as the written template has them after OK, and Cancel.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "control/ozPolicyEdit.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTemplateLoad.h"
#include "tests/support/ozTestFiles.h"
#include "tests/support/ozTreeDescription.h"
#include "ui/headless/ozHeadlessPlatform.h"
#include "ui/ozPartsDialog.h"

namespace {

const char* const Wallpaper = "USER\\Desktop\\Wallpaper";

class PartsDialogTest : public testing::Test {
protected:
    static void SetUpTestSuite() { ASSERT_TRUE(ozTemplateLoad::LoadGrammar()); }
    static void TearDownTestSuite() { EBNFDestroy(); }
    void SetUp() override
    {
        ASSERT_TRUE(original.Load(ozSourcePath("tests/templates/every-part.adm")));
        policy = ozFindPolicy(original.Code(), Wallpaper);
        ASSERT_NE(policy, nullptr);
        platform.RunDialog(ozCreatePartsDialog(*policy, context), nullptr);
        form = platform.TopForm();
    }
    // Selects row and presses a button of the parts dialog.
    void Press(int id, int row)
    {
        ASSERT_TRUE(form->ChooseRow(PartsDialogList, row));
        ASSERT_TRUE(form->Click(id));
    }
    // Inserts a part of type after row through the question; a part page that opens is
    // cancelled.
    void Insert(unsigned long type, int row)
    {
        Press(PartsDialogInsert, row);
        ASSERT_TRUE(platform.TopForm()->CheckByUser(PartTypeDialogGroup + int(type), true));
        ASSERT_TRUE(platform.EndDialog(true));
        if (platform.TopForm() != form) {
            ASSERT_TRUE(platform.EndDialog(false));
        }
    }
    // The Wallpaper policy's parts as "name TYPE" after writing the template and loading it
    // again; the reloaded tree must equal the edited one.
    std::vector<std::string> PartsAfterReload()
    {
        ozTestFile file("ozadm-parts-dialog.adm");
        FILE* out = std::fopen(file.Path(), "wb");
        EXPECT_TRUE(original.Tree().Save(out));
        std::fclose(out);
        ozTemplateLoad reloaded;
        EXPECT_TRUE(reloaded.Load(file.Path())) << reloaded.Message();
        EXPECT_EQ(
            ozFirstDifference(ozDescribeTree(original.Tree()), ozDescribeTree(reloaded.Tree())),
            "");
        std::vector<std::string> parts;
        const CCollection<ozADMCtrl>& controls =
            ozFindPolicy(reloaded.Code(), Wallpaper)->Controls();
        for (int pos = 0; pos < controls.Count(); ++pos)
            parts.push_back(std::string(controls.At(pos)->Name()) + " " +
                            ozPartTypeName(*controls.At(pos)));
        return parts;
    }

    ozTemplateLoad original;
    ozADMPolicy* policy = nullptr;
    ozRecordingHostUI ui;
    ozHeadlessPlatform platform{ui};
    int edits = 0;
    ozEditorContext context{platform, nullptr, [this] { ++edits; }, nullptr};
    ozHeadlessForm* form = nullptr;
};

TEST_F(PartsDialogTest, ButtonsNeedASelectedRowAndUpAndDownARowToMoveTo)
{
    EXPECT_EQ(
        form->Rows(PartsDialogList),
        (std::vector<std::string>{"Tile the picture (CHECKBOX)", "Center the picture (CHECKBOX)",
                                  "Picture file (EDITTEXT)"}));
    // Delete, Up, Down and Props by the selected row.
    for (auto [row, states] : {std::pair{-1, "----"}, {0, "D-dP"}, {1, "DUdP"}, {2, "DU-P"}}) {
        ASSERT_TRUE(form->ChooseRow(PartsDialogList, row));
        std::string shown;
        for (auto [id, letter] : {std::pair{PartsDialogDelete, 'D'},
                                  {PartsDialogUp, 'U'},
                                  {PartsDialogDown, 'd'},
                                  {PartsDialogProps, 'P'}})
            shown += form->Enabled(id) ? letter : '-';
        EXPECT_EQ(shown, states) << row;
    }
}

TEST_F(PartsDialogTest, InsertAddsEveryTypeAfterTheSelectedRowOrAtTheEnd)
{
    Insert(CtrlNumeric, 0);
    EXPECT_EQ(form->SelectedRow(PartsDialogList), 1);
    for (unsigned long type :
         {CtrlCheckBox, CtrlEditText, CtrlComboBox, CtrlText, CtrlDropdownList, CtrlListBox})
        Insert(type, -1);
    EXPECT_EQ(form->SelectedRow(PartsDialogList), 9);
    ASSERT_TRUE(platform.EndDialog(true));
    EXPECT_EQ(edits, 1);
    EXPECT_EQ(
        PartsAfterReload(),
        (std::vector<std::string>{"Tile the picture CHECKBOX", "Numeric NUMERIC",
                                  "Center the picture CHECKBOX", "Picture file EDITTEXT",
                                  "Check box CHECKBOX", "Edit text EDITTEXT", "Combo box COMBOBOX",
                                  "Text TEXT", "Drop-down list DROPDOWNLIST", "List box LISTBOX"}));
}

TEST_F(PartsDialogTest, DeleteUpAndDownReorderTheWrittenParts)
{
    Press(PartsDialogDelete, 1);
    EXPECT_EQ(form->SelectedRow(PartsDialogList), 1) << "the next part takes the row";
    Press(PartsDialogUp, 1);
    Insert(CtrlText, 1);
    Press(PartsDialogUp, 2);
    Press(PartsDialogDown, 0);
    EXPECT_EQ(form->SelectedRow(PartsDialogList), 1);
    EXPECT_EQ(policy->Controls().Count(), 3) << "nothing stored before OK";
    ASSERT_TRUE(platform.EndDialog(true));
    EXPECT_EQ(PartsAfterReload(), (std::vector<std::string>{"Text TEXT", "Picture file EDITTEXT",
                                                            "Tile the picture CHECKBOX"}));
}

TEST_F(PartsDialogTest, CancelLeavesThePolicyAsItWas)
{
    std::vector<std::string> before = ozDescribeTree(original.Tree());
    Insert(CtrlListBox, 0);
    Press(PartsDialogDelete, 2);
    Press(PartsDialogDown, 0);
    ASSERT_TRUE(platform.EndDialog(false));
    EXPECT_EQ(edits, 0);
    EXPECT_EQ(ozFirstDifference(before, ozDescribeTree(original.Tree())), "");
}

}  // namespace
