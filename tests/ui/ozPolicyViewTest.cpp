// The policy view as a user drives it through the headless widgets, inside a control with its
// views: what the tree shows, state cycling, selection through the parts panel, the selection
// kept over a save and a reload, renaming, the template-editing menu and the Help dialog.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "control/CADMCtrl.h"
#include "core/adm/ozADMCategory.h"
#include "core/adm/ozADMPolicy.h"
#include "core/adm/ozADMRoot.h"
#include "core/adm/tTreeCodeHandle.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTemplateLoad.h"
#include "tests/support/ozTestFiles.h"
#include "ui/headless/ozHeadlessPlatform.h"
#include "ui/ozActionListDialog.h"
#include "ui/ozHelpDialog.h"
#include "ui/ozImages.h"
#include "ui/ozViews.h"

namespace {

const char* const Proxy = "MACHINE\\Network\\Proxy server";
const char* const Wallpaper = "USER\\Desktop\\Wallpaper";

class PolicyViewTest : public testing::Test {
protected:
    void SetUp() override
    {
        control.AddString(HostTextNoTemplate, "No template");
        control.AddString(HostMessagePartValueRefused, "%s: %s");
        views.Attach(control);
        ASSERT_TRUE(control.SetEBNF(ozSourcePath("grammar/adm.bnf").c_str()));
        control.ozImpExLibrary(ozPlatformPath(OZ_OZP_LIBRARY));
        control.DisplayMode(DisplayPolicies);
        ASSERT_TRUE(control.SetADM(ozSourcePath("tests/templates/every-part.adm").c_str()));
    }
    ozHeadlessTree& Tree() { return platform.Tree(); }
    ozTreeItem Item(const std::string& path)
    {
        ozTreeItem item = Tree().Find(path);
        EXPECT_NE(item, ozNoItem) << path;
        return item;
    }
    ozADMPolicy& Policy(const std::string& path)
    {
        return *static_cast<ozADMPolicy*>(Tree().Data(Item(path)));
    }
    // Every item as "text image", indented by depth, with " +" when expanded and " *" when
    // selected.
    std::vector<std::string> Shown(ozTreeItem first, const std::string& indent = "")
    {
        std::vector<std::string> lines;
        for (ozTreeItem item = first; item != ozNoItem; item = Tree().NextSibling(item)) {
            lines.push_back(indent + Tree().Text(item) + " " + std::to_string(Tree().Image(item)) +
                            (Tree().Expanded(item) ? " +" : "") +
                            (Tree().Selection() == item ? " *" : ""));
            for (const std::string& line : Shown(Tree().FirstChild(item), indent + "  "))
                lines.push_back(line);
        }
        return lines;
    }
    std::vector<std::string> Shown() { return Shown(Tree().Root()); }

    ozRecordingHostUI ui;
    ozHeadlessPlatform platform{ui};
    ozViews views{platform};
    CADMCtrl control{ui, &views};
};

TEST_F(PolicyViewTest, FillShowsTheRootsAskedForWithTheirImages)
{
    EXPECT_EQ(Tree().ImageBitmaps(), ozPolicyTreeBitmaps());
    EXPECT_EQ(Shown(),
              (std::vector<std::string>{"MACHINE 2", "  Network 0", "    Proxy server 7",
                                        "    Lists 0", "      Host list 7", "USER 3", "  Desktop 0",
                                        "    Wallpaper 7", "    High-contrast colors 7"}));
    struct Case {
        bool showUser, showMachine;
        std::vector<std::string> roots;
    };
    for (const Case& c :
         {Case{true, false, {"USER"}}, Case{false, true, {"MACHINE"}}, Case{false, false, {}}}) {
        control.ShowUser(c.showUser);
        control.ShowMachine(c.showMachine);
        control.Refresh();
        std::vector<std::string> roots;
        for (ozTreeItem item = Tree().Root(); item != ozNoItem; item = Tree().NextSibling(item))
            roots.push_back(Tree().Text(item));
        EXPECT_EQ(roots, c.roots) << c.showUser << c.showMachine;
    }
    control.Cleanup();
    EXPECT_EQ(Tree().Root(), ozNoItem);
}

TEST(PolicyViewCreate, ShowsThePlaceholderUntilTheFirstFill)
{
    ozRecordingHostUI ui;
    ozHeadlessPlatform platform{ui};
    ozViews views{platform};
    CADMCtrl control{ui, &views};
    control.AddString(HostTextNoTemplate, "No template");
    views.Attach(control);
    ASSERT_NE(platform.Tree().Root(), ozNoItem);
    EXPECT_EQ(platform.Tree().Text(platform.Tree().Root()), "No template");
    EXPECT_EQ(platform.Tree().NextSibling(platform.Tree().Root()), ozNoItem);
}

TEST_F(PolicyViewTest, ExpandingShowsTheOpenCategoryAndOutlivesARefill)
{
    Tree().ExpandByUser(Item("MACHINE"), true);
    Tree().ExpandByUser(Item("MACHINE\\Network"), true);
    EXPECT_TRUE(Policy("MACHINE\\Network").Open());
    control.Refresh();
    EXPECT_EQ(Shown()[0], "MACHINE 2 +");
    EXPECT_EQ(Shown()[1], "  Network 1 +");
    Tree().ExpandByUser(Item("MACHINE\\Network"), false);
    EXPECT_EQ(Shown()[1], "  Network 0");
    EXPECT_FALSE(Policy("MACHINE\\Network").Open());
}

TEST_F(PolicyViewTest, TheSelectionMarkIsConsumedByTheFill)
{
    Policy("USER\\Desktop\\High-contrast colors").Selected(true);
    Policy(Wallpaper).Selected(true);
    control.Refresh();
    EXPECT_EQ(Tree().Selection(), Item("USER\\Desktop\\Wallpaper"));
    EXPECT_EQ(Shown()[6], "  Desktop 1 +") << "made visible";
    EXPECT_EQ(views.PartsPanel().Policy(), &Policy(Wallpaper));
    EXPECT_FALSE(Policy(Wallpaper).Selected());
    EXPECT_FALSE(Policy("USER\\Desktop\\High-contrast colors").Selected());
    control.Refresh();
    EXPECT_EQ(Tree().Selection(), ozNoItem);
}

TEST_F(PolicyViewTest, ClicksOnTheIconCycleTheState)
{
    ASSERT_TRUE(Tree().SelectByUser(Item(Proxy)));
    EXPECT_FALSE(control.ShouldSave());
    struct Step {
        tPOLICYSTATE state;
        int image;
        bool editorsEnabled;
    };
    for (const Step& step : {Step{PolicyEnabled, 6, true}, Step{PolicyDisabled, 5, false},
                             Step{PolicyNotConfigured, 7, false}}) {
        Tree().Click(Item(Proxy));
        EXPECT_EQ(Policy(Proxy).State(), step.state);
        EXPECT_EQ(Tree().Image(Item(Proxy)), step.image);
        EXPECT_EQ(Tree().SelectedImage(Item(Proxy)), step.image);
        EXPECT_EQ(views.PartsPanel().Editors().front().enabled, step.editorsEnabled);
    }
    EXPECT_TRUE(control.ShouldSave());

    Tree().Press(Item(Proxy));
    Tree().Release(Item(Wallpaper));
    Tree().Click(Item("MACHINE\\Network"));
    EXPECT_EQ(Policy(Proxy).State(), PolicyNotConfigured);
    EXPECT_EQ(Policy(Wallpaper).State(), PolicyNotConfigured);
}

TEST_F(PolicyViewTest, SelectionStaysWhileThePanelRefusesItsValues)
{
    ASSERT_TRUE(Tree().SelectByUser(Item(Proxy)));
    Tree().Click(Item(Proxy));
    ASSERT_TRUE(views.PartsPanel().Type("Port", "70000"));
    EXPECT_FALSE(Tree().SelectByUser(Item(Wallpaper)));
    EXPECT_EQ(Tree().Selection(), Item(Proxy));
    ASSERT_FALSE(ui.messages.empty());
    EXPECT_NE(ui.messages.back().text.find("Port"), std::string::npos) << ui.messages.back().text;
    ASSERT_TRUE(views.PartsPanel().Type("Port", "8080"));
    EXPECT_TRUE(Tree().SelectByUser(Item(Wallpaper)));
    EXPECT_EQ(views.PartsPanel().Policy(), &Policy(Wallpaper));
}

TEST_F(PolicyViewTest, SaveSelStateSelectsTheSamePolicyAfterAReload)
{
    ozTestFile user{"policy-view-user.ozp"};
    ozTestFile machine{"policy-view-machine.ozp"};
    ASSERT_TRUE(Tree().SelectByUser(Item(Wallpaper)));
    ASSERT_TRUE(control.SaveSelState());
    EXPECT_EQ(Tree().Selection(), Item(Wallpaper)) << "the refill selects it again";
    ASSERT_TRUE(control.Save(user.Path(), machine.Path()));

    control.Cleanup();
    ASSERT_TRUE(control.SetADM(ozSourcePath("tests/templates/every-part.adm").c_str()));
    EXPECT_EQ(Tree().Selection(), ozNoItem);
    ASSERT_TRUE(control.Load(user.Path(), machine.Path()));
    EXPECT_EQ(Tree().Selection(), Item(Wallpaper));
    control.Refresh();
    EXPECT_EQ(Tree().Selection(), ozNoItem);
}

TEST(HelpDialog, ShowsTheExplainTextWithItsLineBreaks)
{
    EXPECT_EQ(ozHelpDialog::DisplayText("One\\nTwo\\n"), "One\r\nTwo\r\n");
    EXPECT_EQ(ozHelpDialog::DisplayText("Ends in \\"), "Ends in \\");
    EXPECT_EQ(ozHelpDialog::DisplayText(nullptr), "");
    ozADMPolicy unnamed;
    EXPECT_EQ(ozHelpDialog(unnamed).Layout().caption, "Help");
}

TEST_F(PolicyViewTest, HelpFromTheMenuShowsThePolicysExplainText)
{
    control.WithADMEdit(true);
    Tree().RightClick(Item(Proxy));
    ASSERT_TRUE(platform.Choose("Help"));
    ASSERT_NE(platform.TopDialog(), nullptr);
    EXPECT_EQ(platform.TopDialog()->Layout().caption, "Proxy server");
    EXPECT_EQ(platform.TopForm()->Text(ozHelpDialog::ExplainText), Policy(Proxy).Explain());
    EXPECT_TRUE(platform.EndDialog(true));
}

TEST_F(PolicyViewTest, AnActionListEditedTakesEffectOnOkOnly)
{
    control.WithADMEdit(true);
    for (bool accept : {false, true}) {
        Tree().RightClick(Item(Proxy));
        ASSERT_TRUE(platform.Choose("Policy Actionlist On"));
        ASSERT_TRUE(platform.ClickDialogButton(ozActionListDialog::InsertButton));
        ASSERT_TRUE(platform.EndDialog(accept));
        EXPECT_EQ(Policy(Proxy).ActionListOn()->Count(), accept ? 3 : 2);
        EXPECT_EQ(control.ShouldSave(), accept);
    }
}

TEST_F(PolicyViewTest, RenamingTakesTemplateEditingAndNeverARoot)
{
    struct Case {
        const char* path;
        bool withEdit;
        bool byKey;
        bool edits;
    };
    for (const Case& c :
         {Case{"MACHINE", true, true, false}, Case{"USER", true, false, false},
          Case{Proxy, false, true, false}, Case{Proxy, false, false, false},
          Case{Proxy, true, true, true}, Case{"USER\\Desktop", true, false, true}}) {
        control.WithADMEdit(c.withEdit);
        ASSERT_TRUE(Tree().SelectByUser(Item(c.path)));
        if (c.byKey)
            Tree().Key(ozKeyF2);
        else
            Tree().DoubleClick(Item(c.path));
        EXPECT_EQ(Tree().EditedItem(), c.edits ? Item(c.path) : ozNoItem) << c.path;
        Tree().CancelLabelEdit();
    }
    Tree().DoubleClick(Item(Proxy));
    ASSERT_TRUE(Tree().CancelLabelEdit());
    EXPECT_STREQ(Policy(Proxy).Name(), "Proxy server");
    EXPECT_STREQ(Policy(Proxy).Path(), Proxy);
    Tree().DoubleClick(Item("MACHINE\\Network"));
    ASSERT_TRUE(Tree().EndLabelEdit("Net"));
    EXPECT_STREQ(Policy("MACHINE\\Net").Name(), "Net");
    EXPECT_STREQ(Policy("MACHINE\\Net\\Proxy server").Path(), "MACHINE\\Net\\Proxy server");
}

TEST_F(PolicyViewTest, MenuEntryStatesFollowTheNodesKind)
{
    const char* const entries[] = {"Delete",
                                   "New",
                                   "New\\Category",
                                   "New\\Policy",
                                   "Policy Properties",
                                   "Control Properties",
                                   "Rename",
                                   "Help",
                                   "Policy Actionlist On",
                                   "Policy Actionlist Off"};
    auto states = [&entries](const ozMenu& menu) {
        std::string digits;
        for (const char* entry : entries) {
            const ozMenuEntry* found = ozFindMenuEntry(menu, entry);
            digits += found != nullptr ? std::to_string(static_cast<int>(found->state)) : "?";
        }
        return digits;
    };
    Tree().RightClick(Item(Proxy));
    EXPECT_EQ(platform.OpenMenu(), nullptr) << "only with template editing";
    control.WithADMEdit(true);
    Tree().RightClick(Item("MACHINE"));
    ASSERT_NE(platform.OpenMenu(), nullptr);
    EXPECT_EQ(states(*platform.OpenMenu()), "2002222222");
    Tree().RightClick(Item("MACHINE\\Network"));
    EXPECT_EQ(states(*platform.OpenMenu()), "0000220222");
    Tree().RightClick(Item(Proxy));
    EXPECT_EQ(states(*platform.OpenMenu()), "0222000000");

    ozADMPolicy keyless;
    EXPECT_EQ(states(ozPolicyView::TemplateMenu(keyless)), "0222020022");
    Tree().RightClick(Tree().Append(ozNoItem, "Keyless", 7, 7, false, &keyless));
    views.PolicyView().RunCommand(PolicyCommandActionListOn);
    ASSERT_FALSE(ui.messages.empty());
    EXPECT_EQ(ui.messages.back().text, "You have to set a key first!");
    EXPECT_EQ(platform.TopDialog(), nullptr);
}

}  // namespace
