// The action list editor driven through the headless form as a user would: what the fields
// show, what each handler does to the working list, and that the caller's list stays as it was.
#include <gtest/gtest.h>

#include "core/adm/ozADMActionList.h"
#include "core/registry/ozRegTree.h"
#include "core/registry/ozSubKey.h"
#include "ui/headless/ozHeadlessForm.h"
#include "ui/ozActionListDialog.h"

namespace {

using D = ozActionListDialog;

class ActionListDialogTest : public ::testing::Test {
protected:
    // Rows 0 and 1 have keys of their own; row 2 is in the user tree, row 3 inherits its key.
    void SetUp() override
    {
        ozSubKey* two = user.FindKey(HKEY_CURRENT_USER, "Software\\Two");
        ozSubKey* keys[] = {machine.FindKey(HKEY_LOCAL_MACHINE, "Software\\Zero"),
                            machine.FindKey(HKEY_LOCAL_MACHINE, "Software\\One"), two, two};
        const char* names[] = {"Row1", "Row2", "Row3", "Row4"};
        for (int row = 0; row < 4; ++row) {
            list.Add(new ozActionItem);
            list.At(row)->RegKey(keys[row]);
            list.At(row)->ValueName(names[row]);
        }
        list.At(0)->Value().SetString("z");
        list.At(1)->Value().SetNumeric(7);
        list.At(2)->Value().SetDelete();
    }
    void Open(const ozADMActionList* from, D::Browser browse = nullptr)
    {
        dialog = std::make_unique<D>(policyKey, from, std::move(browse));
        form.Build(dialog->Layout().controls, dialog.get());
        dialog->Init(form);
    }
    ozActionItem& Taken(int pos) { return *(taken ? taken : taken = dialog->TakeList())->At(pos); }
    // The fields as a line: "[own ]key[ locked] | name=value[ locked][ radio][ | Delete]".
    std::string Fields() const
    {
        std::string text = form.Checked(D::OwnKeyCheck) ? "own " : "";
        text += form.Text(D::KeyEdit) + (form.Enabled(D::KeyEdit) ? "" : " locked");
        text += form.Enabled(D::BrowseButton) != form.Enabled(D::KeyEdit) ? " browse?" : "";
        text += " | " + form.Text(D::ValueNameEdit) + "=" + form.Text(D::ValueEdit);
        text += form.Enabled(D::ValueEdit) ? "" : " locked";
        for (const char* radio : {"Normal", "Numeric", "Delete"})
            if (form.Find(radio, {ozControlKind::Radio})->checked)
                text += std::string(" ") + radio;
        return text + (form.Enabled(D::DeleteButton) ? " | Delete" : "");
    }

    ozRegTree machine, user;
    ozSubKey* policyKey = machine.FindKey(HKEY_LOCAL_MACHINE, "Software\\Policy");
    ozADMActionList list;
    ozHeadlessForm form;
    std::unique_ptr<D> dialog;
    std::unique_ptr<ozADMActionList> taken;
};

TEST_F(ActionListDialogTest, FieldsShowTheSelectedEntryAndAreClearedWithoutOne)
{
    Open(&list);
    const char* shown[] = {
        "own Software\\Zero | Row1=z Normal | Delete",
        "own Software\\One | Row2=7 Numeric | Delete",
        "own Software\\Two | Row3= locked Delete | Delete",
        // An empty value leaves the radio buttons as the row before left them.
        "Software\\Two locked | Row4= Delete | Delete",
    };
    for (int row = 0; row < 4; ++row) {
        ASSERT_TRUE(form.ChooseRow(D::EntryList, row));
        EXPECT_EQ(Fields(), shown[row]);
    }
    ASSERT_TRUE(form.ChooseRow(D::EntryList, -1));
    EXPECT_EQ(Fields(), " locked | = locked");
    EXPECT_FALSE(form.Enabled(D::OwnKeyCheck) || form.Enabled(D::NormalRadio));
}

TEST_F(ActionListDialogTest, InsertAppendsAnItemKeyedLikeTheSelectedEntryAndDeleteRemovesIt)
{
    Open(nullptr);
    ASSERT_TRUE(form.Click(D::InsertButton));
    EXPECT_EQ(Fields(), "Software\\Policy locked | New Item= Normal | Delete");
    ASSERT_TRUE(form.Click(D::DeleteButton));
    EXPECT_EQ(Fields(), " locked | = locked");
    EXPECT_EQ(dialog->TakeList()->Count(), 0);

    Open(&list);
    ASSERT_TRUE(form.ChooseRow(D::EntryList, 1));
    ASSERT_TRUE(form.Click(D::InsertButton));
    EXPECT_EQ(Fields(), "own Software\\One | New Item= Normal | Delete");
}

TEST_F(ActionListDialogTest, ClearingHasOwnKeyGivesTheInheritedKeyAndCheckingOnlyUnlocks)
{
    Open(&list);
    for (auto [row, shown] : {std::pair{2, "Software\\One locked | Row3= locked Delete | Delete"},
                              {0, "Software\\Policy locked | Row1=z Normal | Delete"}}) {
        ASSERT_TRUE(form.ChooseRow(D::EntryList, row));
        ASSERT_TRUE(form.CheckByUser(D::OwnKeyCheck, false));
        EXPECT_EQ(Fields(), shown);
    }
    ASSERT_TRUE(form.CheckByUser(D::OwnKeyCheck, true));
    EXPECT_EQ(Fields(), "own Software\\Policy | Row1=z Normal | Delete");
}

TEST_F(ActionListDialogTest, TypingAndBrowsingRebindInTheKeysTreeAndRenameOnlyTheCopy)
{
    std::string chosenValue;
    Open(&list,
         [&](const ozControlViews::RegistryChoice& initial, ozControlViews::RegistryAnswer ended) {
             ozControlViews::RegistryChoice choice = initial;
             choice.key = "Software\\Browsed" + std::to_string(initial.root);
             choice.value = chosenValue;
             choice.wholeKey = chosenValue.empty();
             ended(&choice);
         });
    for (int row : {1, 2}) {
        ASSERT_TRUE(form.ChooseRow(D::EntryList, row));
        ASSERT_TRUE(form.Type(D::KeyEdit, "Software\\Typed"));
        ASSERT_TRUE(form.Type(D::ValueNameEdit, "Renamed"));
        EXPECT_EQ(form.Rows(D::EntryList)[row], "Renamed");
        EXPECT_EQ(form.SelectedRow(D::EntryList), row);
    }
    // Browsing in row 2: a whole key leaves the name as it was; a value names the entry.
    for (const char* value : {"", "Chosen"}) {
        chosenValue = value;
        ASSERT_TRUE(form.Click(D::BrowseButton));
        EXPECT_EQ(form.Rows(D::EntryList)[2], *value != 0 ? value : "Renamed");
    }
    EXPECT_STREQ(list.At(1)->ValueName(), "Row2");
    EXPECT_EQ(Taken(1).RegKey(), machine.HasKey(HKEY_LOCAL_MACHINE, "Software\\Typed"));
    EXPECT_EQ(Taken(2).RegKey(), user.HasKey(HKEY_CURRENT_USER, "Software\\Browsed1"));
    EXPECT_EQ(dialog->TakeList(), nullptr);
}

TEST_F(ActionListDialogTest, ValuesFollowTheCheckedRadioButton)
{
    Open(&list);
    ASSERT_TRUE(form.ChooseRow(D::EntryList, 0));
    ASSERT_TRUE(form.CheckByUser(D::DeleteRadio, true));
    EXPECT_EQ(Fields(), "own Software\\Zero | Row1= locked Delete | Delete");
    ASSERT_TRUE(form.CheckByUser(D::NormalRadio, true));
    ASSERT_TRUE(form.ChooseRow(D::EntryList, 1));
    for (auto [typed, shown] : {std::pair{"12abc", "12"}, {"abc", "0"}, {" 42", "42"}}) {
        ASSERT_TRUE(form.Type(D::ValueEdit, typed));
        EXPECT_EQ(form.Text(D::ValueEdit), shown) << typed;
    }
    EXPECT_STREQ(static_cast<const char*>(Taken(0).Value()), "");
    EXPECT_EQ(static_cast<unsigned long>(Taken(1).Value()), 42ul);
}

}  // namespace
