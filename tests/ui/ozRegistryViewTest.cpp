// The registry view's key tree through the headless widgets: images by root and by a key's
// flags and operation, groups and sorting, expanded states, the selection mark.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "control/CADMCtrl.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozSubKey.h"
#include "tests/support/ozRecordingHostUI.h"
#include "ui/headless/ozHeadlessPlatform.h"
#include "ui/ozRegistryView.h"

namespace {

class RegistryViewTest : public testing::Test {
protected:
    void SetUp() override
    {
        control.AddString(HostTextUserKeys, "User");
        control.AddString(HostTextMachineKeys, "Machine");
        view.Control(&control);
        view.Create();
    }
    ozSubKey& UserKey(const char* path)
    {
        return *code.tree->UsrTree().FindKey(HKEY_CURRENT_USER, path);
    }
    ozHeadlessTree& Tree() { return platform.RegistryTree(); }
    // Every item as "text image/selected image", indented by depth, with " +" when expanded
    // and " *" when selected.
    std::vector<std::string> Shown(ozTreeItem first = ozNoItem, const std::string& indent = "")
    {
        std::vector<std::string> lines;
        if (indent.empty())
            first = Tree().Root();
        for (ozTreeItem item = first; item != ozNoItem; item = Tree().NextSibling(item)) {
            lines.push_back(indent + Tree().Text(item) + " " + std::to_string(Tree().Image(item)) +
                            "/" + std::to_string(Tree().SelectedImage(item)) +
                            (Tree().Expanded(item) ? " +" : "") +
                            (Tree().Selection() == item ? " *" : ""));
            for (const std::string& line : Shown(Tree().FirstChild(item), indent + "  "))
                lines.push_back(line);
        }
        return lines;
    }

    ozRecordingHostUI ui;
    ozHeadlessPlatform platform{ui};
    CADMCtrl control{ui};
    ozRegistryView view{platform};
    tTreeCodeHandle code;
};

TEST_F(RegistryViewTest, KeysShowTheirImagesBySaveFlagOperationAndTemplateOrigin)
{
    const struct {
        bool save;
        char op;
        bool adm;
        int image;
    } rows[] = {
        {false, 'I', false, 6}, {false, 'D', false, 6}, {false, 'E', true, 10},
        {true, 'I', false, 2},  {true, 'D', false, 4},  {true, 'E', false, 8},
        {true, 'X', false, 2},  {true, 'I', true, 12},  {true, 'D', true, 14},
        {true, 'E', true, 16},
    };
    for (std::size_t row = 0; row < std::size(rows); ++row) {
        ozSubKey& key = UserKey(("k" + std::to_string(row)).c_str());
        key.Save(rows[row].save);
        key.Op(static_cast<tOPKEY>(rows[row].op));
        key.ADM(rows[row].adm);
    }
    // The roots by their handles; one below no predefined key is named by its number.
    ozRegTree& machine = code.tree->MacTree();
    for (unsigned int root : {0u, 2u, 3u, 4u, 5u, 9u})
        machine.FindKey(ozRootHandle(root), "k");
    view.Fill(&code, false, true);
    EXPECT_EQ(Shown(),
              (std::vector<std::string>{
                  "HKEY: 9 21/21", "  k 6/7", "HKEY_CLASSES_ROOT 21/21", "  k 6/7",
                  "HKEY_CURRENT_CONFIG 21/21", "  k 6/7", "HKEY_LOCAL_MACHINE 0/0", "  k 6/7",
                  "HKEY_PERFORMANCE_DATA 22/22", "  k 6/7", "HKEY_USERS 20/20", "  k 6/7"}));

    view.Fill(&code, true, false);
    for (std::size_t row = 0; row < std::size(rows); ++row) {
        ozTreeItem item = Tree().Find("HKEY_CURRENT_USER\\k" + std::to_string(row));
        EXPECT_EQ(Tree().Image(item), rows[row].image) << row;
        EXPECT_EQ(Tree().SelectedImage(item), rows[row].image + 1) << row;
    }
    EXPECT_EQ(Tree().Image(Tree().Root()), 1);
}

TEST_F(RegistryViewTest, BothTreesStandUnderSortedGroupsAndSiblingsSortIgnoringCase)
{
    for (const char* path : {"gamma", "Beta\\z", "alpha", "Beta\\A", "beta2"})
        UserKey(path);
    code.tree->MacTree().FindKey(HKEY_LOCAL_MACHINE, "Software")->IsOpen(true);
    UserKey("Beta").IsOpen(true);
    view.Fill(&code, true, true);
    EXPECT_EQ(Shown(),
              (std::vector<std::string>{
                  "Machine 0/0 +", "  HKEY_LOCAL_MACHINE 0/0", "    Software 6/7 +", "User 1/1 +",
                  "  HKEY_CURRENT_USER 1/1", "    alpha 6/7", "    Beta 6/7 +", "      A 6/7",
                  "      z 6/7", "    beta2 6/7", "    gamma 6/7"}));

    // The user's expanding and collapsing is kept in the keys for the next fill.
    Tree().ExpandByUser(Tree().Find("User\\HKEY_CURRENT_USER"), true);
    Tree().ExpandByUser(Tree().Find("User\\HKEY_CURRENT_USER\\Beta"), false);
    view.Fill(&code, true, false);
    EXPECT_EQ(Shown()[0], "HKEY_CURRENT_USER 1/1 +");
    EXPECT_FALSE(UserKey("Beta").IsOpen());
    view.Fill(nullptr, true, true);
    EXPECT_EQ(Tree().Root(), ozNoItem);
}

TEST_F(RegistryViewTest, TheFirstMarkedKeyIsSelectedAndRevealedAndEveryMarkConsumed)
{
    UserKey("b\\deep").Selected(true);
    UserKey("a").Selected(true);
    view.Fill(&code, true, true);
    EXPECT_EQ(Tree().Selection(), Tree().Find("User\\HKEY_CURRENT_USER\\a"));
    EXPECT_FALSE(UserKey("b\\deep").Selected());
    view.Fill(&code, true, true);
    EXPECT_EQ(Tree().Selection(), ozNoItem);

    // Marking the selection marks that key alone; the parents of a marked key open.
    UserKey("a").Selected(true);
    ASSERT_TRUE(Tree().SelectByUser(Tree().Find("User\\HKEY_CURRENT_USER\\b\\deep")));
    view.MarkSelection();
    EXPECT_FALSE(UserKey("a").Selected());
    view.Fill(&code, true, true);
    EXPECT_EQ(Tree().Selection(), Tree().Find("User\\HKEY_CURRENT_USER\\b\\deep"));
    EXPECT_TRUE(UserKey("b").IsOpen());
}

}  // namespace
