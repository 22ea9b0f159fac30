// The policy view as a user drives it through the headless widgets, inside a control with its
// views: what the tree shows, state cycling, selection through the parts panel, the selection
// kept over a save and a reload, renaming, the template-editing menu and its dialogs.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "control/CADMCtrl.h"
#include "core/adm/ozADMPolicy.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTemplateLoad.h"
#include "tests/support/ozTestFiles.h"
#include "ui/headless/ozHeadlessPlatform.h"
#include "ui/ozActionListDialog.h"
#include "ui/ozHelpDialog.h"
#include "ui/ozImages.h"
#include "ui/ozViews.h"

namespace {

const std::string Template = ozSourcePath("tests/templates/every-part.adm");
const char* const Proxy = "MACHINE\\Network\\Proxy server";
const char* const Wallpaper = "USER\\Desktop\\Wallpaper";

class PolicyViewTest : public testing::Test {
protected:
    void SetUp() override
    {
        control.AddString(HostTextNoTemplate, "No template");
        control.AddString(HostMessagePartValueRefused, "%s: %s");
        views.Attach(control);
        placeholder = Shown();
        ASSERT_TRUE(control.SetEBNF(ozSourcePath("grammar/adm.bnf").c_str()));
        control.ozImpExLibrary(ozPlatformPath(OZ_OZP_LIBRARY));
        control.DisplayMode(DisplayPolicies);
        ASSERT_TRUE(control.SetADM(Template.c_str()));
    }
    ozHeadlessTree& Tree() { return platform.Tree(); }
    ozTreeItem Item(const std::string& path) { return Tree().Find(path); }
    ozADMNode& Node(const std::string& path)
    {
        EXPECT_NE(Item(path), ozNoItem) << path;
        return *static_cast<ozADMNode*>(Tree().Data(Item(path)));
    }
    ozADMPolicy& Policy(const std::string& path) { return static_cast<ozADMPolicy&>(Node(path)); }
    // Every item as "text image", indented by depth, with " +" when expanded and " *" when
    // selected.
    std::vector<std::string> Shown(ozTreeItem first, const std::string& indent)
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
    std::vector<std::string> Shown() { return Shown(Tree().Root(), ""); }

    ozRecordingHostUI ui;
    ozHeadlessPlatform platform{ui};
    ozViews views{platform};
    CADMCtrl control{ui, &views};
    std::vector<std::string> placeholder;
};

TEST_F(PolicyViewTest, FillShowsTheRootsAskedForWithTheirImages)
{
    EXPECT_EQ(placeholder, std::vector<std::string>{"No template 0"});
    EXPECT_EQ(Tree().ImageBitmaps(), ozPolicyTreeBitmaps());
    EXPECT_EQ(Shown(),
              (std::vector<std::string>{"MACHINE 2", "  Network 0", "    Proxy server 7",
                                        "    Lists 0", "      Host list 7", "USER 3", "  Desktop 0",
                                        "    Wallpaper 7", "    High-contrast colors 7"}));
    control.ShowUser(false);
    control.Refresh();
    EXPECT_EQ(Shown().size(), 5u) << "the machine root alone";
    control.ShowMachine(false);
    control.Refresh();
    EXPECT_TRUE(Shown().empty());
    control.Cleanup();
    EXPECT_EQ(Tree().Root(), ozNoItem);
}

TEST_F(PolicyViewTest, TheSelectionMarkIsConsumedByTheFillWhichOpensItsParents)
{
    Policy("USER\\Desktop\\High-contrast colors").Selected(true);
    Policy(Wallpaper).Selected(true);
    control.Refresh();
    EXPECT_EQ(Shown()[5], "USER 3 +");
    EXPECT_EQ(Shown()[6], "  Desktop 1 +");
    EXPECT_EQ(Shown()[7], "    Wallpaper 7 *");
    EXPECT_EQ(views.PartsPanel().Policy(), &Policy(Wallpaper));
    EXPECT_FALSE(Policy("USER\\Desktop\\High-contrast colors").Selected());
    Tree().ExpandByUser(Item("USER\\Desktop"), false);
    control.Refresh();
    EXPECT_EQ(Tree().Selection(), ozNoItem);
    EXPECT_EQ(Shown()[5], "USER 3 +") << "what was open stays open";
    EXPECT_EQ(Shown()[6], "  Desktop 0");
}

TEST_F(PolicyViewTest, ClicksOnTheIconCycleTheState)
{
    ASSERT_TRUE(Tree().SelectByUser(Item(Proxy)));
    EXPECT_FALSE(control.ShouldSave());
    for (auto [state, image] : {std::pair{PolicyEnabled, 6}, std::pair{PolicyDisabled, 5},
                                std::pair{PolicyNotConfigured, 7}}) {
        Tree().Click(Item(Proxy));
        EXPECT_EQ(Policy(Proxy).State(), state);
        EXPECT_EQ(Tree().Image(Item(Proxy)), image);
        EXPECT_EQ(Tree().SelectedImage(Item(Proxy)), image);
        EXPECT_EQ(views.PartsPanel().Editors().at(0).enabled, state == PolicyEnabled);
    }
    EXPECT_TRUE(control.ShouldSave());

    Tree().Press(Item(Proxy));
    Tree().Release(Item(Wallpaper));
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
    ASSERT_TRUE(control.SetADM(Template.c_str()));
    ASSERT_TRUE(control.Load(user.Path(), machine.Path()));
    EXPECT_EQ(Tree().Selection(), Item(Wallpaper));
    control.Refresh();
    EXPECT_EQ(Tree().Selection(), ozNoItem);
}

TEST_F(PolicyViewTest, HelpShowsTheExplainTextWithItsLineBreaks)
{
    EXPECT_EQ(ozHelpDialog::DisplayText("One\\nTwo\\n"), "One\r\nTwo\r\n");
    EXPECT_EQ(ozHelpDialog::DisplayText("Ends in \\"), "Ends in \\");
    EXPECT_EQ(ozHelpDialog(ozADMPolicy()).Layout().caption, "Help");
    ozADMPolicy supported;
    supported.SupportedOn("At least 2");
    EXPECT_EQ(ozHelpDialog::ShownText(supported), "At least 2");
    supported.Explain("Does\\nthis");
    EXPECT_EQ(ozHelpDialog::ShownText(supported), "Does\r\nthis\r\n\r\nAt least 2");
    control.WithADMEdit(true);
    Tree().RightClick(Item(Proxy));
    ASSERT_TRUE(platform.Choose("Help"));
    ASSERT_NE(platform.TopDialog(), nullptr);
    EXPECT_EQ(platform.TopDialog()->Layout().caption, "Proxy server");
    EXPECT_EQ(platform.TopForm()->Text(ozHelpDialog::ExplainText), Policy(Proxy).Explain());
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
        bool withEdit, byKey, edits;
    } cases[] = {{"MACHINE", true, true, false}, {"USER", true, false, false},
                 {Proxy, false, true, false},    {Proxy, false, false, false},
                 {Proxy, true, true, true},      {"USER\\Desktop", true, false, true}};
    for (const Case& c : cases) {
        control.WithADMEdit(c.withEdit);
        ASSERT_TRUE(Tree().SelectByUser(Item(c.path)));
        c.byKey ? Tree().Key(ozKeyF2) : Tree().DoubleClick(Item(c.path));
        EXPECT_EQ(Tree().EditedItem(), c.edits ? Item(c.path) : ozNoItem) << c.path;
        Tree().CancelLabelEdit();
    }
    EXPECT_STREQ(Policy(Proxy).Name(), "Proxy server") << "cancelled";
    EXPECT_STREQ(Policy(Proxy).Path(), Proxy);
    Tree().DoubleClick(Item("MACHINE\\Network"));
    ASSERT_TRUE(Tree().EndLabelEdit("Net"));
    EXPECT_STREQ(Node("MACHINE\\Net").Name(), "Net");
    EXPECT_STREQ(Policy("MACHINE\\Net\\Proxy server").Path(), "MACHINE\\Net\\Proxy server");
}

// The entries' states in menu order, submenus after their entry: Delete, New, Category,
// Policy, Policy Properties, Control Properties, Rename, Help, Actionlist On, Actionlist Off.
std::string States(const std::vector<ozMenuEntry>& entries)
{
    std::string digits;
    for (const ozMenuEntry& entry : entries)
        if (!entry.IsSeparator())
            digits += std::to_string(static_cast<int>(entry.state)) + States(entry.submenu);
    return digits;
}

TEST_F(PolicyViewTest, MenuEntryStatesFollowTheNodesKind)
{
    Tree().RightClick(Item(Proxy));
    EXPECT_EQ(platform.OpenMenu(), nullptr) << "only with template editing";
    control.WithADMEdit(true);
    ozADMPolicy keyless;
    Tree().Append(ozNoItem, "Keyless", 7, 7, false, &keyless);
    for (auto [path, states] :
         {std::pair{"MACHINE", "2002222222"}, std::pair{"MACHINE\\Network", "0000220222"},
          std::pair{Proxy, "0222000000"}, std::pair{"Keyless", "0222020022"}}) {
        Tree().RightClick(Item(path));
        ASSERT_NE(platform.OpenMenu(), nullptr);
        EXPECT_EQ(States(platform.OpenMenu()->entries), states) << path;
    }
    views.PolicyView().RunCommand(PolicyCommandActionListOn);
    ASSERT_FALSE(ui.messages.empty());
    EXPECT_EQ(ui.messages.back().text, "You have to set a key first!");
    EXPECT_EQ(platform.TopDialog(), nullptr);
}

}  // namespace
