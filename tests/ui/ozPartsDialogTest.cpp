// The parts dialog through the headless platform: the buttons' states, Insert of every type,
// Delete, Up and Down as the written template has them after OK, and Cancel after part pages.
#include <gtest/gtest.h>

#include <cstdio>

#include "control/ozPolicyEdit.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTemplateLoad.h"
#include "tests/support/ozTestFiles.h"
#include "tests/support/ozTreeDescription.h"
#include "ui/headless/ozHeadlessPlatform.h"
#include "ui/ozPartPage.h"
#include "ui/ozPartsDialog.h"

namespace {

using Strings = std::vector<std::string>;
const char* const Wallpaper = "USER\\Desktop\\Wallpaper";

class PartsDialogTest : public testing::Test {
protected:
    static void SetUpTestSuite() { ASSERT_TRUE(ozTemplateLoad::LoadGrammar()); }
    static void TearDownTestSuite() { EBNFDestroy(); }
    void SetUp() override
    {
        ASSERT_TRUE(original.Load(ozSourcePath("tests/templates/every-part.adm")));
        policy = ozFindPolicy(original.Code(), Wallpaper);
        platform.RunDialog(ozCreatePartsDialog(*policy, context), nullptr);
        form = platform.TopForm();
    }
    // Selects row, presses button id (0: none) and tells which of Delete, Up, Down and Props
    // are enabled then.
    std::string Press(int id, int row)
    {
        EXPECT_TRUE(form->ChooseRow(PartsDialogList, row) && (id == 0 || form->Click(id)));
        std::string states;
        for (int button : {PartsDialogDelete, PartsDialogUp, PartsDialogDown, PartsDialogProps})
            states += form->Enabled(button) ? '+' : '-';
        return states;
    }
    // Inserts a part of type after row; a part page that opens is cancelled.
    void Insert(unsigned long type, int row)
    {
        Press(PartsDialogInsert, row);
        ASSERT_TRUE(platform.TopForm()->CheckByUser(PartTypeDialogGroup + int(type), true));
        ASSERT_TRUE(platform.EndDialog(true));
        if (platform.TopForm() != form)
            platform.EndDialog(false);
    }
    // The policy's parts as "name TYPE", once writing the template and loading it again gave
    // the edited tree.
    Strings PartsAfterReload()
    {
        ozTestFile file("ozadm-parts-dialog.adm");
        FILE* out = std::fopen(file.Path(), "wb");
        EXPECT_TRUE(original.Tree().Save(out) && std::fclose(out) == 0);
        ozTemplateLoad reloaded;
        EXPECT_TRUE(reloaded.Load(file.Path())) << reloaded.Message();
        EXPECT_EQ(
            ozFirstDifference(ozDescribeTree(original.Tree()), ozDescribeTree(reloaded.Tree())),
            "");
        Strings parts;
        for (int pos = 0; ozADMCtrl* part = policy->Controls().At(pos); ++pos)
            parts.push_back(std::string(part->Name()) + " " + ozPartTypeName(*part));
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
    for (auto [row, states] : {std::pair{-1, "----"}, {0, "+-++"}, {1, "++++"}, {2, "++-+"}})
        EXPECT_EQ(Press(0, row), states) << row;
}

TEST_F(PartsDialogTest, InsertDeleteUpAndDownGiveTheWrittenPartsOnOk)
{
    Insert(CtrlNumeric, 0);
    EXPECT_EQ(form->Rows(PartsDialogList)[1], "Numeric (NUMERIC)");
    for (unsigned long type :
         {CtrlCheckBox, CtrlEditText, CtrlComboBox, CtrlText, CtrlDropdownList, CtrlListBox})
        Insert(type, -1);
    EXPECT_EQ(form->SelectedRow(PartsDialogList), 9);
    EXPECT_EQ(Press(PartsDialogDelete, 2), "++++") << "the next part takes the row";
    EXPECT_EQ(Press(PartsDialogUp, 8), "++++");
    EXPECT_EQ(Press(PartsDialogDown, 0), "++++");
    EXPECT_EQ(policy->Controls().Count(), 3) << "nothing stored before OK";
    ASSERT_TRUE(platform.EndDialog(true));
    EXPECT_EQ(edits, 1);
    EXPECT_EQ(PartsAfterReload(),
              (Strings{"Numeric NUMERIC", "Tile the picture CHECKBOX", "Picture file EDITTEXT",
                       "Check box CHECKBOX", "Edit text EDITTEXT", "Combo box COMBOBOX",
                       "Text TEXT", "List box LISTBOX", "Drop-down list DROPDOWNLIST"}));
}

TEST_F(PartsDialogTest, CancelDropsEveryChangeEvenThoseOfAcceptedPages)
{
    Strings before = ozDescribeTree(original.Tree());
    Press(PartsDialogProps, 0);
    ASSERT_TRUE(platform.TopForm()->Type(ozPartPage::NameEdit, "Tiled"));
    ASSERT_TRUE(platform.EndDialog(true));
    EXPECT_EQ(form->Rows(PartsDialogList)[0], "Tiled (CHECKBOX)");
    Insert(CtrlListBox, 0);
    Press(PartsDialogDelete, 2);
    Press(PartsDialogDown, 0);
    ASSERT_TRUE(platform.EndDialog(false));
    EXPECT_EQ(edits, 0);
    EXPECT_EQ(ozFirstDifference(before, ozDescribeTree(original.Tree())), "");
}

}  // namespace
