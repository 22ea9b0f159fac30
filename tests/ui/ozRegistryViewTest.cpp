// The registry view's key tree through the headless widgets inside a control: images, groups,
// sorting, expanded states and the selection mark; the key menu by the selection, new keys,
// deleting, renaming, the operations and the import from a profile file.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "control/CADMCtrl.h"
#include "core/adm/ozADMTree.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozSubKey.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTemplateLoad.h"
#include "tests/support/ozTestFiles.h"
#include "ui/headless/ozHeadlessPlatform.h"
#include "ui/ozViews.h"

namespace {

class RegistryViewTest : public testing::Test {
protected:
    static constexpr unsigned short Texts[] = {18, 58, 66, 67, 68, 69,  70,
                                               71, 72, 73, 82, 83, 116, 171};

    void SetUp() override
    {
        for (unsigned short text : Texts)
            control.AddString(text, ("t" + std::to_string(text)).c_str());
        views.Attach(control);
        ASSERT_TRUE(control.SetEBNF(ozSourcePath("grammar/adm.bnf").c_str()));
        control.ozImpExLibrary(ozPlatformPath(OZ_OZP_LIBRARY));
        ASSERT_TRUE(control.SetADM(ozSourcePath("tests/templates/classes-only.adm").c_str()));
    }
    // The host texts are the process's: the tests after these do not see them.
    void TearDown() override
    {
        for (unsigned short text : Texts)
            control.AddString(text, "");
    }
    ozSubKey& UserKey(const char* path)
    {
        return *Code().tree->UsrTree().FindKey(HKEY_CURRENT_USER, path);
    }
    tTreeCodeHandle& Code() { return *control.Code(); }
    ozHeadlessTree& Tree() { return platform.RegistryTree(); }
    ozRegistryView& View() { return views.RegistryView(); }
    void Fill(bool user = true, bool machine = false) { View().Fill(&Code(), user, machine); }
    // Expands the items on the way to path, as the user does, and returns its item.
    ozTreeItem Open(const std::string& path)
    {
        for (std::size_t end = path.find('\\'); end != std::string::npos;
             end = path.find('\\', end + 1))
            Tree().ExpandByUser(Tree().Find(path.substr(0, end)), true);
        return Tree().Find(path);
    }
    void Select(const std::string& path) { ASSERT_TRUE(Tree().SelectByUser(Open(path))); }
    // Every item as "text image/selected image", indented by depth, " +" when expanded, " >"
    // with children to come and " *" when selected.
    std::vector<std::string> Shown(ozTreeItem item = ozNoItem, const std::string& indent = "")
    {
        std::vector<std::string> lines;
        for (item = indent.empty() ? Tree().Root() : item; item != ozNoItem;
             item = Tree().NextSibling(item)) {
            lines.push_back(indent + Tree().Text(item) + " " + std::to_string(Tree().Image(item)) +
                            "/" + std::to_string(Tree().SelectedImage(item)) +
                            (Tree().Expanded(item) ? " +" : "") +
                            (Tree().ChildrenToCome(item) ? " >" : "") +
                            (Tree().Selection() == item ? " *" : ""));
            for (const std::string& line : Shown(Tree().FirstChild(item), indent + "  "))
                lines.push_back(line);
        }
        return lines;
    }

    ozRecordingHostUI ui;
    ozHeadlessPlatform platform{ui};
    ozViews views{platform};
    CADMCtrl control{ui, &views};
};

TEST_F(RegistryViewTest, KeysShowTheirImagesBySaveFlagOperationAndTemplateOrigin)
{
    const struct {
        bool save;
        char op;
        bool adm;
        int image;
    } rows[] = {{false, 'I', false, 6}, {false, 'D', false, 6}, {false, 'E', true, 10},
                {true, 'I', false, 2},  {true, 'D', false, 4},  {true, 'E', false, 8},
                {true, 'X', false, 2},  {true, 'I', true, 12},  {true, 'D', true, 14},
                {true, 'E', true, 16}};
    for (std::size_t row = 0; row < std::size(rows); ++row) {
        ozSubKey& key = UserKey(("k" + std::to_string(row)).c_str());
        key.Save(rows[row].save);
        key.Op(static_cast<tOPKEY>(rows[row].op));
        key.ADM(rows[row].adm);
    }
    // The roots by their handles; one below no predefined key is named by its number.
    for (unsigned int root : {0u, 3u, 4u, 5u, 9u})
        Code().tree->MacTree().FindKey(ozRootHandle(root), "k");
    Fill(false, true);
    EXPECT_EQ(Shown(),
              (std::vector<std::string>{"HKEY: 9 21/21 >", "HKEY_CLASSES_ROOT 21/21 >",
                                        "HKEY_CURRENT_CONFIG 21/21 >",
                                        "HKEY_PERFORMANCE_DATA 22/22 >", "HKEY_USERS 20/20 >"}));
    Fill();
    Open("HKEY_CURRENT_USER\\k0");
    for (std::size_t row = 0; row < std::size(rows); ++row) {
        ozTreeItem item = Tree().Find("HKEY_CURRENT_USER\\k" + std::to_string(row));
        EXPECT_EQ(Tree().Image(item) * 100 + Tree().SelectedImage(item), rows[row].image * 101 + 1)
            << row;
    }
}

TEST_F(RegistryViewTest, GroupsSortingExpandedStatesAndTheSelectionMark)
{
    for (const char* path : {"gamma", "Beta\\z", "alpha", "Beta\\A", "b\\deep"})
        UserKey(path);
    Code().tree->MacTree().FindKey(HKEY_LOCAL_MACHINE, "S")->IsOpen(true);
    UserKey("Beta").IsOpen(true);
    UserKey("b\\deep").Selected(true);
    UserKey("alpha").Selected(true);
    Fill(true, true);
    EXPECT_EQ(Shown(), (std::vector<std::string>{"t82 1/1 +", "  HKEY_CURRENT_USER 1/1 +",
                                                 "    alpha 6/7 *", "    b 6/7 >", "    Beta 6/7 +",
                                                 "      A 6/7", "      z 6/7", "    gamma 6/7",
                                                 "t83 0/0 +", "  HKEY_LOCAL_MACHINE 0/0 >"}));
    // The mark went with the fill; expanding is kept in the keys; the selection is marked.
    EXPECT_FALSE(UserKey("b\\deep").Selected());
    Tree().ExpandByUser(Tree().Find("t82\\HKEY_CURRENT_USER\\Beta"), false);
    Fill();
    EXPECT_EQ(Shown()[0], "HKEY_CURRENT_USER 1/1 +");
    EXPECT_FALSE(UserKey("Beta").IsOpen());
    // A marked key below a collapsed one opens its way.
    Select("HKEY_CURRENT_USER\\b\\deep");
    View().MarkSelection();
    Tree().ExpandByUser(Tree().Find("HKEY_CURRENT_USER\\b"), false);
    Fill();
    EXPECT_EQ(Tree().Selection(), Tree().Find("HKEY_CURRENT_USER\\b\\deep"));
    EXPECT_TRUE(UserKey("b").IsOpen());
    View().Fill(nullptr, true, true);
    EXPECT_EQ(Tree().Root(), ozNoItem);
}

TEST_F(RegistryViewTest, TheKeyMenuFollowsTheSelection)
{
    UserKey("plain");
    UserKey("deleted").Op(static_cast<tOPKEY>('D'));
    UserKey("erased").Op(KeyOpEraseValues);
    UserKey("erased").ADM(true);
    UserKey("saved").ADM(true);
    UserKey("saved").Save(true);
    Code().tree->UsrTree().FindKey(HKEY_USERS, "k");
    Code().tree->MacTree().FindKey(HKEY_LOCAL_MACHINE, "k");
    Fill(true, true);
    // Per selection: the caption entry and its picture, the entries' states (E enabled, D
    // disabled, in menu order) and the operations' pictures.
    const std::pair<const char*, const char*> rows[] = {
        {nullptr, "Root 221 DDDDDDDDEE 227 230 228"},
        {"t82", "Root 221 DDDDDDDDEE 227 230 228"},
        {"t83\\HKEY_LOCAL_MACHINE", "HKEY_LOCAL_MACHINE 216 EEDEDDDEEE 227 230 228"},
        {"t82\\HKEY_CURRENT_USER", "HKEY_CURRENT_USER 215 EEDEDDDEEE 227 230 228"},
        {"t82\\HKEY_USERS", "Unknown HKEY 221 EEDEDDDEEE 227 230 228"},
        {"t82\\HKEY_CURRENT_USER\\plain", "t66 230 EEEEEEEEEE 227 230 228"},
        {"t82\\HKEY_CURRENT_USER\\deleted", "t68 228 EEEEEEEEEE 227 230 228"},
        {"t82\\HKEY_CURRENT_USER\\erased", "t73 253 EEEEEEEEEE 249 247 251"},
        {"t82\\HKEY_CURRENT_USER\\saved", "t70 249 EEEEEEEEEE 249 247 251"}};
    for (const auto& [selected, expected] : rows) {
        if (selected != nullptr)
            Select(selected);
        ozMenu menu = View().KeyMenu();
        std::string shown =
            menu.entries[0].caption + " " + std::to_string(menu.entries[0].bitmap) + " ";
        for (const ozMenuEntry& entry : menu.entries)
            shown += entry.state == ozMenuState::Enabled ? 'E' : 'D';
        for (int at : {4, 5, 6})
            shown += " " + std::to_string(menu.entries[at].bitmap);
        EXPECT_EQ(shown, expected);
    }
    EXPECT_EQ(View().KeyMenu().entries[1].caption, "&Neu");
}

TEST_F(RegistryViewTest, NewKeysAreNumberedBelowTheSelection)
{
    UserKey("a\\t18 1");
    UserKey("a\\zeta");
    Fill();
    for (const char* expected : {"a\\t18 2", "a\\t18 3"}) {
        Select("HKEY_CURRENT_USER\\a");
        Code().modified = 0;
        Tree().Key(ozKeyInsert);
        EXPECT_EQ(Tree().Selection(), Tree().Find(std::string("HKEY_CURRENT_USER\\") + expected));
        EXPECT_EQ(Tree().Text(Tree().NextSibling(Tree().Selection())), "zeta");  // sorted in
        EXPECT_TRUE(control.ShouldSave());
    }
    Select("HKEY_CURRENT_USER");
    View().RunCommand(RegistryCommandNewKey);
    EXPECT_EQ(Tree().Text(Tree().Selection()), "t18 1");
}

TEST_F(RegistryViewTest, DeletingAsksAndKeepsTheKeyInTheHoldingTree)
{
    ozSubKey& doomed = UserKey("a\\doomed");
    UserKey("a\\doomed\\child");
    Fill();
    std::vector<ozRegKey*> reported;
    View().OnKeySelected([&](ozRegKey* key) { reported.push_back(key); });
    for (bool yes : {false, true}) {
        ui.answerYes = yes;
        Select("HKEY_CURRENT_USER\\a\\doomed");
        Tree().Key(ozKeyDelete);
        EXPECT_EQ(ui.messages.back().text, "t58");
        EXPECT_EQ(Tree().Find("HKEY_CURRENT_USER\\a\\doomed") == ozNoItem, yes);
    }
    EXPECT_EQ(Code().tree->UsrTree().HasKey(HKEY_CURRENT_USER, "a\\doomed"), nullptr);
    EXPECT_STREQ(doomed.Down() != nullptr ? doomed.Name() : "", "doomed");  // held, with its child
    EXPECT_NE(reported.back(), &doomed);
    EXPECT_EQ(reported.back(), View().SelectedKey());
    EXPECT_TRUE(control.ShouldSave());
    Select("HKEY_CURRENT_USER");  // a root key is not deleted
    Tree().Key(ozKeyDelete);
    EXPECT_EQ(ui.messages.size(), 2u);
}

TEST_F(RegistryViewTest, RenamingRefusesEmptyBackslashAndSiblingNames)
{
    UserKey("a\\other");
    UserKey("a\\old");
    Fill();
    Select("HKEY_CURRENT_USER\\a\\old");
    for (const char* text : {"", "x\\y", "OTHER", "OLD", "new"}) {
        const bool renamed = text == std::string("OLD") || text == std::string("new");
        ui.messages.clear();
        Tree().Key(ozKeyF2);
        ASSERT_TRUE(Tree().EndLabelEdit(text));
        EXPECT_EQ(Tree().Text(Tree().Selection()) == text, renamed) << text;
        EXPECT_EQ(ui.messages.empty() ? "" : ui.messages[0].text, renamed ? "" : "t116");
    }
    EXPECT_NE(Code().tree->UsrTree().HasKey(HKEY_CURRENT_USER, "a\\new"), nullptr);
    Tree().DoubleClick(Tree().Selection());
    EXPECT_TRUE(Tree().CancelLabelEdit());
    Tree().DoubleClick(Tree().Find("HKEY_CURRENT_USER"));
    EXPECT_EQ(Tree().EditedItem(), ozNoItem);
}

TEST_F(RegistryViewTest, OperationsAndAFailedProfileImportMarkTheDocument)
{
    UserKey("k").ADM(true);
    Fill();
    Select("HKEY_CURRENT_USER\\k");
    const struct {
        unsigned int command;
        bool save;
        int op, image;
    } rows[] = {{RegistryCommandOpDelete, true, 'D', 14},
                {RegistryCommandOpNotSaved, false, 'I', 10},
                {RegistryCommandOpSave, true, 'I', 12}};
    for (const auto& row : rows) {
        Code().modified = 0;
        View().RunCommand(row.command);
        EXPECT_TRUE(UserKey("k").Save() == row.save && UserKey("k").Op() == row.op);
        EXPECT_EQ(Tree().Image(Tree().Selection()), row.image);
        EXPECT_TRUE(control.ShouldSave());
    }
    Code().modified = 0;
    View().RunCommand(RegistryCommandImportProfile);
    ASSERT_TRUE(platform.TopForm()->Type(10, "missing-profile"));
    ASSERT_TRUE(platform.EndDialog(true));
    EXPECT_EQ(ui.messages.back().text, "t171");
    EXPECT_TRUE(control.ShouldSave());
}

}  // namespace
