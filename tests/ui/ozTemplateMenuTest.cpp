// The template-editing menu's commands on model and view (New, Delete), and the Policy
// Properties dialog: what it stores, what it refuses, and each field through WriteADM and a
// reload.
#include <gtest/gtest.h>

#include <string>

#include "control/CADMCtrl.h"
#include "core/adm/ozADMPolicy.h"
#include "core/adm/ozADMTree.h"
#include "core/registry/ozSubKey.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTemplateLoad.h"
#include "tests/support/ozTestFiles.h"
#include "ui/headless/ozHeadlessPlatform.h"
#include "ui/ozPolicyPropertiesDialog.h"
#include "ui/ozViews.h"

namespace {

using D = ozPolicyPropertiesDialog;
const char* const Proxy = "MACHINE\\Network\\Proxy server";

class TemplateMenuTest : public testing::Test {
protected:
    void SetUp() override
    {
        // Each text its number, the checks' messages with their arguments.
        for (int n : {18, 79, 80, 190, 191, 192})
            control.AddString(static_cast<unsigned short>(n),
                              (std::to_string(n) + (n >= 190 ? " %s %s" : "")).c_str());
        views.Attach(control);
        ASSERT_TRUE(control.SetEBNF(ozSourcePath("grammar/adm.bnf").c_str()));
        control.DisplayMode(DisplayPolicies);
        ASSERT_TRUE(control.SetADM(ozSourcePath("tests/templates/every-part.adm").c_str()));
        control.WithADMEdit(true);
    }
    // The host texts are the process's: other tests run after this one expect none.
    void TearDown() override
    {
        for (int n : {18, 79, 80, 190, 191, 192})
            control.AddString(static_cast<unsigned short>(n), "");
    }
    ozTreeItem Item(const std::string& path) { return platform.Tree().Find(path); }
    ozADMTree& Model()
    {
        return *static_cast<ozADMNode*>(platform.Tree().Data(Item("USER")))->ADMTree();
    }
    ozADMPolicy& Policy(const char* path)
    {
        return *static_cast<ozADMPolicy*>(Model().FindNode(path));
    }
    bool Choose(const std::string& path, const std::string& entry)
    {
        platform.Tree().RightClick(Item(path));
        return platform.Choose(entry);
    }
    ozHeadlessForm& Form() { return *platform.TopForm(); }

    ozRecordingHostUI ui;
    ozHeadlessPlatform platform{ui};
    ozViews views{platform};
    CADMCtrl control{ui, &views};
};

TEST_F(TemplateMenuTest, NewAppendsANamedNodeWhereTheMenuAllowsIt)
{
    struct Case {
        const char* parent;
        tNODETYPE type;
        bool added;
    } cases[] = {{"MACHINE", NodeCategory, true},
                 {"MACHINE\\Network", NodeCategory, true},
                 {"USER\\Desktop", NodePolicy, true},
                 {"USER", NodePolicy, false},
                 {Proxy, NodeCategory, false}};
    for (const Case& c : cases) {
        bool policy = c.type == NodePolicy;
        EXPECT_EQ(Choose(c.parent, policy ? "New\\Policy" : "New\\Category"), c.added);
        // Called directly, the command keeps to the menu's table too.
        views.PolicyView().RunCommand(policy ? PolicyCommandNewPolicy : PolicyCommandNewCategory);
        std::string path = std::string(c.parent) + "\\18";
        ozADMNode* node = Model().FindNode(path.c_str());
        ASSERT_EQ(node != nullptr, c.added) << path;
        ASSERT_EQ(Item(path) != ozNoItem, c.added) << path;
        if (!c.added)
            continue;
        EXPECT_EQ(node->NodeType(), c.type);
        ASSERT_NE(node->Next(), nullptr) << "the second follows";
        EXPECT_STREQ(static_cast<ozADMNode*>(node->Next())->Name(), "18 2")
            << "a sibling's name is not taken: the two would merge when read back";
        EXPECT_EQ(node->Next()->Next(), nullptr) << "appended as the last children";
        EXPECT_EQ(platform.Tree().Image(Item(path)), policy ? 7 : 0);
        EXPECT_EQ(platform.Tree().Data(platform.Tree().Selection()), node->Next());
        EXPECT_TRUE(platform.Tree().Expanded(Item(c.parent)));
        EXPECT_TRUE(control.ShouldSave());
    }
}

TEST_F(TemplateMenuTest, DeleteAsksAndRemovesOnYesMarkingModifiedEitherWay)
{
    struct Case {
        const char* path;
        bool yes;
        const char* question;
    } cases[] = {{"USER\\Desktop\\Wallpaper", false, "80"},
                 {"USER\\Desktop\\Wallpaper", true, "80"},
                 {"MACHINE\\Network", false, "79"},
                 {"MACHINE\\Network", true, "79"}};
    for (const Case& c : cases) {
        ASSERT_TRUE(platform.Tree().SelectByUser(Item(Proxy)));
        ui.answerYes = c.yes;
        ASSERT_TRUE(Choose(c.path, "Delete"));
        EXPECT_EQ(views.PartsPanel().Policy(), nullptr) << "the panel is cleared";
        EXPECT_EQ(ui.messages.back().kind, HostMessageQuestion);
        EXPECT_EQ(ui.messages.back().text, c.question);
        EXPECT_EQ(Model().FindNode(c.path) == nullptr, c.yes) << c.path;
        EXPECT_EQ(Item(c.path) == ozNoItem, c.yes) << c.path;
        EXPECT_TRUE(control.ShouldSave());
    }
}

TEST_F(TemplateMenuTest, PolicyPropertiesRefuseWhatCannotBeStoredNamingTheField)
{
    struct Case {
        int edit;
        std::string text;
        const char* message;
    } cases[] = {{D::KeyEdit, "", "190 Key "},
                 {D::KeyEdit, "Software\\\\Pol", "190 Key Software\\\\Pol"},
                 {D::KeyEdit, "Software\\", "190 Key Software\\"},
                 {D::KeyEdit, std::string(1100, 'k'), "191 Key kkk"},
                 {D::OnValueEdit, "12a", "192 On value 12a"},
                 {D::OffValueEdit, "4294967296", "192 Off value 4294967296"},
                 {D::OffValueEdit, "-1", "192 Off value -1"}};
    std::string keyBefore = Policy(Proxy).RegKey()->KeyPath();
    ASSERT_TRUE(Choose(Proxy, "Policy Properties"));
    ASSERT_EQ(platform.TopDialog()->Layout().resource, DialogPolicyProperties);
    ASSERT_TRUE(Form().ChooseRow(D::OnKindList, D::KindNumeric));
    ASSERT_TRUE(Form().ChooseRow(D::OffKindList, D::KindNumeric));
    for (const Case& c : cases) {
        ASSERT_TRUE(Form().Type(c.edit, c.text));
        EXPECT_FALSE(platform.EndDialog(true)) << c.text;
        EXPECT_EQ(ui.messages.back().text.substr(0, std::string(c.message).size()), c.message);
        ASSERT_TRUE(Form().Type(c.edit, c.edit == D::KeyEdit ? "Software\\Pol" : "4294967295"));
    }
    ASSERT_TRUE(Form().Click(D::BrowseButton));
    ASSERT_EQ(platform.TopDialog()->Layout().resource, 103) << "the import dialog browses";
    ASSERT_TRUE(platform.EndDialog(false));
    EXPECT_EQ(Form().Text(D::KeyEdit), "Software\\Pol") << "a cancelled browse changes nothing";
    ASSERT_TRUE(platform.EndDialog(false));
    EXPECT_EQ(Policy(Proxy).RegKey()->KeyPath(), keyBefore) << "Cancel changes nothing";
    EXPECT_FALSE(control.ShouldSave());
}

TEST_F(TemplateMenuTest, ControlPropertiesHideThePanelWhileThePartsDialogRuns)
{
    ASSERT_TRUE(platform.Tree().SelectByUser(Item("USER\\Desktop\\Wallpaper")));
    ASSERT_TRUE(Choose(Proxy, "Control Properties"));
    EXPECT_EQ(platform.TopDialog()->Layout().resource, DialogParts);
    EXPECT_EQ(views.PartsPanel().Policy(), nullptr);
    ASSERT_TRUE(platform.EndDialog(false));
    EXPECT_EQ(views.PartsPanel().Policy(), &Policy(Proxy)) << "the node's parts, as it ends";
}

TEST_F(TemplateMenuTest, AnOpenEditorKeepsItsPolicyAndStoresNothingOnceItsTreeWent)
{
    ASSERT_TRUE(Choose(Proxy, "Policy Properties"));
    ui.answerYes = true;
    ASSERT_TRUE(Choose(Proxy, "Delete"));
    EXPECT_NE(Model().FindNode(Proxy), nullptr);
    control.Cleanup();
    ASSERT_TRUE(Form().Type(D::KeyEdit, "Software\\Gone"));
    EXPECT_TRUE(platform.EndDialog(true));
}

TEST_F(TemplateMenuTest, PolicyPropertiesComeBackAfterWriteADMAndReload)
{
    EXPECT_EQ(D::ExplainFromEditing("a\r\nb\nc\rd"), "a\\nb\\nc\\nd");
    ASSERT_TRUE(platform.Tree().SelectByUser(Item(Proxy)));
    ASSERT_TRUE(Choose(Proxy, "Policy Properties"));
    ASSERT_TRUE(Form().ChooseRow(D::OnKindList, D::KindString));
    ASSERT_TRUE(Form().ChooseRow(D::OffKindList, D::KindNumeric));
    for (auto [id, text] : {std::pair{D::KeyEdit, "Software\\Edited\\Key"},
                            {D::ValueNameEdit, "Switch"},
                            {D::OnValueEdit, "On text"},
                            {D::OffValueEdit, "4294967295"},
                            {D::ClientExtEdit, "{0E28E245-9368-4853-AD84-6DA3BA35BB75}"},
                            {D::ExplainEdit, "First line\r\nSecond line"}})
        ASSERT_TRUE(Form().Type(id, text)) << id;
    ASSERT_TRUE(platform.EndDialog(true));
    EXPECT_TRUE(control.ShouldSave());
    EXPECT_EQ(views.PartsPanel().Policy(), &Policy(Proxy)) << "its parts shown again";
    EXPECT_EQ(Policy(Proxy).Controls().At(0)->Key(), Policy(Proxy).RegKey())
        << "a part that used the policy's key follows it";

    ozTestFile written{"template-menu.adm"};
    ASSERT_TRUE(control.WriteADM(written.Path()));
    ozTemplateLoad reloaded;
    ASSERT_TRUE(reloaded.Load(written.Path())) << reloaded.Message();
    auto& policy = *static_cast<ozADMPolicy*>(reloaded.Tree().FindNode(Proxy));
    EXPECT_EQ(policy.RegKey()->KeyPath(), "Software\\Edited\\Key");
    EXPECT_STREQ(policy.Valuename(), "Switch");
    EXPECT_EQ(policy.ValueOn().Type(), ozADMValue::ValueString);
    EXPECT_STREQ(static_cast<const char*>(policy.ValueOn()), "On text");
    EXPECT_EQ(policy.ValueOff().Type(), ozADMValue::ValueNumeric);
    EXPECT_EQ(static_cast<unsigned long>(policy.ValueOff()), 4294967295UL);
    EXPECT_STREQ(policy.ClientExt(), "{0E28E245-9368-4853-AD84-6DA3BA35BB75}");
    EXPECT_STREQ(policy.Explain(), "First line\\nSecond line");
    EXPECT_EQ(policy.Controls().At(0)->Key(), policy.RegKey());
}

}  // namespace
