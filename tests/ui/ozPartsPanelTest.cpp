// The parts panel through the headless widgets, on the template with every part type: what
// each editor shows, what a commit stores and refuses, and the list box dialog.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "control/CADMCtrl.h"
#include "control/ozPolicyEdit.h"
#include "core/adm/ozADMDropdownList.h"
#include "core/adm/ozADMMultiText.h"
#include "core/adm/ozADMNumeric.h"
#include "core/adm/tTreeCodeHandle.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTemplateLoad.h"
#include "ui/headless/ozHeadlessPlatform.h"
#include "ui/ozListBoxDialog.h"
#include "ui/ozPartsPanel.h"

namespace {

const char* const Proxy = "MACHINE\\Network\\Proxy server";
const char* const Hosts = "MACHINE\\Network\\Lists\\Host list";

class PartsPanelTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(control.SetEBNF(ozSourcePath("grammar/adm.bnf").c_str()));
        ASSERT_TRUE(control.SetADM(ozSourcePath("tests/templates/every-part.adm").c_str()));
        control.AddString(HostMessagePartValueRefused, "%s: %s");
        panel.Control(&control);
    }
    // Shows the policy at path in state; the document starts unmodified.
    ozADMPolicy& Show(const char* path, tPOLICYSTATE state = PolicyEnabled)
    {
        ozADMPolicy* policy = ozFindPolicy(control.Code(), path);
        EXPECT_NE(policy, nullptr) << path;
        policy->State(state);
        control.Code()->modified = 0;
        panel.Show(policy);
        return *policy;
    }
    std::string Value(const char* part) const
    {
        return ozPartValueText(*ozFindPart(*panel.Policy(), part));
    }
    const ozHeadlessForm::Control& Control(ozHeadlessForm& form, const std::string& caption)
    {
        const ozHeadlessForm::Control* found = form.Find(caption);
        EXPECT_NE(found, nullptr) << caption;
        return found != nullptr ? *found : form.Controls().front();
    }

    ozRecordingHostUI ui;
    CADMCtrl control{ui};
    ozHeadlessPlatform platform{ui};
    ozPartsPanel panel{platform};
};

std::string Describe(const std::vector<ozPartsPanel::EditorView>& editors)
{
    std::string text;
    for (const auto& editor : editors)
        text += editor.type + " \"" + editor.label + "\" " +
                (editor.enabled ? "enabled" : "disabled") + " = \"" + editor.value + "\"\n";
    return text;
}

TEST_F(PartsPanelTest, EditorsShowEveryPartTypeEnabledExactlyWhenThePolicyIs)
{
    struct Case {
        const char* policy;
        tPOLICYSTATE state;
        const char* editors;
    } cases[] = {
        {Proxy, PolicyEnabled,
         "EDITTEXT \"Server name\" enabled = \"proxy.example.com\"\n"
         "NUMERIC \"Port\" enabled = \"8080\"\n"
         "NUMERIC \"Timeout in seconds\" enabled = \"\"\n"
         "COMBOBOX \"Bypass the proxy for\" enabled = \"<local>\"\n"
         "TEXT \"This text explains the settings below.\" enabled = \"\"\n"
         "DROPDOWNLIST \"Authentication\" enabled = \"Basic\"\n"},
        {"USER\\Desktop\\Wallpaper", PolicyDisabled,
         "CHECKBOX \"Tile the picture\" disabled = \"TRUE\"\n"
         "CHECKBOX \"Center the picture\" disabled = \"FALSE\"\n"
         "EDITTEXT \"Picture file\" disabled = \"\"\n"},
        {Hosts, PolicyNotConfigured,
         "LISTBOX \"Hosts\" disabled = \"\"\nLISTBOX \"Mapping\" disabled = \"\"\n"},
    };
    for (const Case& c : cases) {
        Show(c.policy, c.state);
        EXPECT_EQ(Describe(panel.Editors()), c.editors) << c.policy;
    }

    ozADMPolicy& proxy = Show(Proxy, PolicyDisabled);
    EXPECT_FALSE(panel.Type("Port", "1"));
    proxy.State(PolicyEnabled);
    panel.StateChanged();
    EXPECT_TRUE(panel.Type("port", "1"));
    EXPECT_FALSE(panel.Type("This text explains the settings below.", "x"));
    const auto& port = Control(platform.Panel(), "Port");
    EXPECT_EQ(port.spec.kind, ozControlKind::Number);
    EXPECT_EQ(std::vector<long long>({port.min, port.max, port.step}),
              std::vector<long long>({1, 65535, 10}));
    EXPECT_EQ(Control(platform.Panel(), "Bypass the proxy for").rows,
              std::vector<std::string>({"<local>", "*.intranet", "*.example.com"}));
    panel.Clear();
    EXPECT_TRUE(platform.Panel().Controls().empty());
}

// NOSORT keeps the template's order; without it the rows are sorted and the selection follows
// the item, not the position.
TEST_F(PartsPanelTest, DropDownRowsKeepTemplateOrderOnlyWithNoSort)
{
    ozADMPolicy& proxy = Show(Proxy);
    EXPECT_EQ(Control(platform.Panel(), "Authentication").rows,
              std::vector<std::string>({"None", "Basic", "Negotiate", "Remove the setting"}));
    static_cast<ozADMDropdownList*>(ozFindPart(proxy, "Authentication"))->NoSort(false);
    panel.Show(&proxy);
    EXPECT_EQ(Control(platform.Panel(), "Authentication").rows,
              std::vector<std::string>({"Basic", "Negotiate", "None", "Remove the setting"}));
    EXPECT_FALSE(panel.Type("Authentication", "Kerberos"));
    EXPECT_TRUE(panel.Type("Authentication", "none"));
    EXPECT_EQ(panel.Editors()[5].value, "None");
    EXPECT_TRUE(panel.Commit());
    EXPECT_EQ(Value("Authentication"), "None");
}

TEST_F(PartsPanelTest, CommitStoresOnlyChangedValuesOfAnEnabledPolicy)
{
    ozADMPolicy& proxy = Show(Proxy);
    EXPECT_TRUE(panel.Commit());
    EXPECT_FALSE(control.ShouldSave()) << "selecting a policy is no edit";

    EXPECT_TRUE(panel.Type("Port", "3128"));
    EXPECT_TRUE(panel.Type("Bypass the proxy for", "*.lan"));
    EXPECT_EQ(Value("Port"), "8080") << "nothing is stored before the commit";
    EXPECT_TRUE(panel.Commit());
    EXPECT_EQ(Value("Port"), "3128");
    EXPECT_EQ(Value("Bypass the proxy for"), "*.lan");
    EXPECT_TRUE(control.ShouldSave());

    EXPECT_TRUE(panel.Type("Port", "80"));
    proxy.State(PolicyDisabled);
    EXPECT_TRUE(panel.Commit());
    EXPECT_EQ(Value("Port"), "3128") << "a policy that is not enabled stores nothing";

    Show("USER\\Desktop\\Wallpaper");
    EXPECT_FALSE(panel.Type("Tile the picture", "maybe"));
    EXPECT_TRUE(panel.Type("Tile the picture", "false"));
    EXPECT_TRUE(panel.Commit());
    EXPECT_EQ(Value("Tile the picture"), "FALSE");
}

TEST_F(PartsPanelTest, CommitRefusesTheFirstValueThatDoesNotFitAndNamesThePart)
{
    struct Case {
        const char* part;
        std::string text;
        const char* message;
    } cases[] = {
        {"Port", "70000", "Port: \"70000\" is not a whole number from 1 to 65535"},
        {"Server name", "", "Server name: the part is required and cannot be left empty"},
        {"Server name", std::string(256, 'x'),
         "Server name: the text is longer than the part's 255 characters"},
        {"Port", "", "Port: the part is required and cannot be left empty"},
    };
    for (const Case& c : cases) {
        Show(Proxy);
        ui.messages.clear();
        std::string before = Value(c.part);
        EXPECT_TRUE(panel.Type(c.part, c.text));
        EXPECT_FALSE(panel.Commit()) << c.part;
        ASSERT_EQ(ui.messages.size(), 1u) << c.part;
        EXPECT_EQ(ui.messages[0].kind, HostMessageError);
        EXPECT_EQ(ui.messages[0].text, c.message);
        EXPECT_EQ(Value(c.part), before);
        EXPECT_EQ(platform.Panel().Focused(), Control(platform.Panel(), c.part).spec.id);
        EXPECT_FALSE(control.ShouldSave());
    }
}

TEST_F(PartsPanelTest, ListBoxDialogEditsEntriesThatACommitStores)
{
    Show(Hosts);
    // The two-column dialog of a list box with value names.
    int mappingShow = Control(platform.Panel(), "Mapping").spec.id + 1;
    ASSERT_TRUE(platform.Panel().Click(mappingShow));
    ozHeadlessForm& dialog = *platform.TopForm();
    EXPECT_EQ(platform.TopDialog()->Layout().caption, "Mapping");
    EXPECT_EQ(dialog.Find(ozListBoxDialog::EntryList)->spec.columns,
              std::vector<std::string>({"Value name", "Value"}));
    EXPECT_FALSE(dialog.Enabled(ozListBoxDialog::AddButton));
    for (auto [name, value] : {std::pair{"a", "1"}, {"b", "2"}, {"A", "3"}}) {
        dialog.Type(ozListBoxDialog::NameEdit, name);
        dialog.Type(ozListBoxDialog::ValueEdit, value);
        EXPECT_TRUE(dialog.Click(ozListBoxDialog::AddButton)) << name;
    }
    EXPECT_EQ(dialog.Rows(ozListBoxDialog::EntryList), std::vector<std::string>({"A\t3", "b\t2"}));
    dialog.Type(ozListBoxDialog::NameEdit, "c=d");
    EXPECT_FALSE(dialog.Enabled(ozListBoxDialog::AddButton)) << "'=' ends a value name";
    EXPECT_TRUE(dialog.ChooseRow(ozListBoxDialog::EntryList, 1));
    EXPECT_TRUE(dialog.Click(ozListBoxDialog::RemoveButton));
    EXPECT_TRUE(platform.EndDialog(true));
    EXPECT_EQ(panel.Editors()[1].value, "A=3");
    EXPECT_EQ(Value("Mapping"), "");

    // Cancel keeps the entries; a one-column list.
    ASSERT_TRUE(platform.Panel().Click(Control(platform.Panel(), "Hosts").spec.id + 1));
    EXPECT_TRUE(platform.TopForm()->Find(ozListBoxDialog::EntryList)->spec.columns.empty());
    platform.TopForm()->Type(ozListBoxDialog::ValueEdit, "x;y");
    EXPECT_TRUE(platform.TopForm()->Click(ozListBoxDialog::AddButton));
    EXPECT_TRUE(platform.EndDialog(false));
    EXPECT_EQ(panel.Editors()[0].value, "");

    ASSERT_TRUE(panel.Commit());
    EXPECT_EQ(Value("Mapping"), "A=3");
    EXPECT_TRUE(control.ShouldSave());
}

// The parts of XML templates: lines in a multi-line edit, a 64-bit number in the number editor.
TEST_F(PartsPanelTest, MultiLineTextAndWideNumberEditors)
{
    auto* lines = new ozADMMultiText;
    auto* wide = new ozADMNumeric;
    lines->Name("Lines");
    lines->Lines({"a", "b"});
    wide->Name("Wide");
    wide->Qword(true);
    wide->Max(UINT64_MAX);
    ozFindPolicy(control.Code(), Proxy)->AddControl(lines);
    ozFindPolicy(control.Code(), Proxy)->AddControl(wide);
    Show(Proxy);
    const auto& edit = Control(platform.Panel(), "Lines");
    EXPECT_EQ(platform.Panel().Text(edit.spec.id), "a\r\nb");
    EXPECT_EQ(Control(platform.Panel(), "Wide").max, INT64_MAX) << "the spin's own limit";
    platform.Panel().Text(edit.spec.id, "x;y\r\n\r\nz\n");
    EXPECT_TRUE(panel.Type("Wide", "18446744073709551615"));
    ASSERT_TRUE(panel.Commit());
    EXPECT_EQ(lines->Lines(), std::vector<std::string>({"x;y", "z"}));
    EXPECT_EQ(wide->Value(), UINT64_MAX);
}

}  // namespace
