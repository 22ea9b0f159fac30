// The headless widgets stand for the real ones in every view test and in ozadm: their user
// actions must raise the events a real control raises, and refuse what a user cannot do.
#include <gtest/gtest.h>

#include "ui/headless/ozHeadlessForm.h"
#include "ui/headless/ozHeadlessTree.h"

namespace {

struct RecordingEvents : ozTreeEvents, ozFormEvents {
    std::vector<std::string> seen;
    bool allowSelection = true;

    void ItemExpanding(ozTreeItem, bool expanding) override
    {
        seen.push_back(expanding ? "expanding" : "collapsing");
    }
    void IconPressed(ozTreeItem) override { seen.push_back("pressed"); }
    void IconReleased(ozTreeItem) override { seen.push_back("released"); }
    bool SelectionChanging(ozTreeItem, ozTreeItem) override
    {
        seen.push_back("changing");
        return allowSelection;
    }
    void SelectionChanged(ozTreeItem) override { seen.push_back("changed"); }
    void RightClicked(ozTreeItem) override {}
    void DoubleClicked(ozTreeItem) override {}
    void KeyPressed(int) override {}
    bool LabelEdited(ozTreeItem, const std::string* text) override
    {
        seen.push_back(text != nullptr ? "edited " + *text : "cancelled");
        return text != nullptr;
    }
    void Command(ozForm&, int id, ozFormEvent) override { seen.push_back(std::to_string(id)); }
};

TEST(HeadlessTree, SelectionAndLabelEditsRaiseTheirEventsAndHonourRefusals)
{
    ozHeadlessTree tree;
    RecordingEvents events;
    tree.Events(&events);
    ozTreeItem root = tree.Append(ozNoItem, "User", 3, 3, false, nullptr);
    ozTreeItem child = tree.Append(root, "Child", 0, 0, false, nullptr);
    EXPECT_EQ(tree.Find("User\\Child"), child);
    EXPECT_EQ(tree.Find("User\\None"), ozNoItem);

    events.allowSelection = false;
    EXPECT_FALSE(tree.SelectByUser(child));
    EXPECT_EQ(tree.Selection(), ozNoItem);
    events.allowSelection = true;
    EXPECT_TRUE(tree.SelectByUser(child));
    EXPECT_EQ(tree.Selection(), child);

    tree.EditLabel(child);
    EXPECT_TRUE(tree.CancelLabelEdit());
    EXPECT_EQ(tree.Text(child), "Child");
    tree.EditLabel(child);
    EXPECT_TRUE(tree.EndLabelEdit("Renamed"));
    EXPECT_EQ(tree.Text(child), "Renamed");
    EXPECT_FALSE(tree.EndLabelEdit("again"));

    tree.Delete(root);
    EXPECT_EQ(tree.Selection(), ozNoItem);
    EXPECT_EQ(events.seen, (std::vector<std::string>{"changing", "changing", "changed", "cancelled",
                                                     "edited Renamed"}));
}

TEST(HeadlessForm, RadioGroupsSortedRowsAndDisabledControls)
{
    ozHeadlessForm form;
    RecordingEvents events;
    form.Build({{1, ozControlKind::Group, "A"},
                {2, ozControlKind::Radio, "a1"},
                {3, ozControlKind::Radio, "a2"},
                {4, ozControlKind::Group, "B"},
                {5, ozControlKind::Radio, "b1"},
                {6, ozControlKind::DropDown, "Items", 0, 0, 0, 0, ozControlSorted},
                {7, ozControlKind::Edit, "Name"}},
               &events);
    EXPECT_TRUE(form.CheckByUser(5, true));
    EXPECT_TRUE(form.CheckByUser(2, true));
    EXPECT_TRUE(form.CheckByUser(3, true));
    EXPECT_FALSE(form.Checked(2));
    EXPECT_TRUE(form.Checked(5));

    form.Rows(6, {"beta", "Alpha", "gamma"});
    EXPECT_EQ(form.Rows(6), (std::vector<std::string>{"Alpha", "beta", "gamma"}));
    EXPECT_TRUE(form.ChooseRow(6, 1));
    EXPECT_EQ(form.Text(6), "beta");
    EXPECT_FALSE(form.ChooseRow(6, 3));

    form.Enable(7, false);
    EXPECT_FALSE(form.Type(7, "x"));
    EXPECT_FALSE(form.Click(7));
    EXPECT_EQ(events.seen, (std::vector<std::string>{"5", "2", "3", "6"}));
}

}  // namespace
