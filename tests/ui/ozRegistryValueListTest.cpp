// The registry view's value list and the value editor in the parts panel, through the headless
// widgets: rows and images, the key tree's selection, new and deleted values, menu 244, and what
// the editor stores and refuses by type.
#include <gtest/gtest.h>

#include "control/CADMCtrl.h"
#include "core/adm/ozADMTree.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTemplateLoad.h"
#include "ui/headless/ozHeadlessPlatform.h"
#include "ui/ozValueData.h"
#include "ui/ozViews.h"

namespace {

// The host texts the test gives. They are the process's: TearDown takes them back, so that
// the tests after it see none.
const std::pair<unsigned short, const char*> Texts[] = {
    {11, "Name"}, {23, "Data"}, {18, "New"}, {59, "Delete?"}, {180, "%s: %s"}};

class RegistryValueListTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        // The host's texts come after the views exist, as a host adds them to a control shown.
        views.Attach(control);
        ASSERT_TRUE(control.SetEBNF(ozSourcePath("grammar/adm.bnf").c_str()));
        ASSERT_TRUE(control.SetADM(ozSourcePath("tests/templates/every-part.adm").c_str()));
        for (auto [number, text] : Texts)
            control.AddString(number, text);
    }
    void TearDown() override
    {
        for (auto [number, text] : Texts)
            control.AddString(number, "");
    }
    ozSubKey& Key(const char* path)
    {
        return *control.Code()->tree->UsrTree().FindKey(HKEY_CURRENT_USER, path);
    }
    // Shows the registry view with the user tree and selects the key at path below
    // HKEY_CURRENT_USER; the document starts unmodified.
    void ShowKey(const char* path)
    {
        views.Show(DisplayRegistry, control.Code(), true, false);
        ozHeadlessTree& tree = platform.RegistryTree();
        // A collapsed key's sub keys come when the user opens it.
        tree.ExpandByUser(tree.Find("HKEY_CURRENT_USER"), true);
        ASSERT_TRUE(tree.SelectByUser(tree.Find(std::string("HKEY_CURRENT_USER\\") + path)));
        control.Code()->modified = 0;
    }
    ozHeadlessList& List() { return platform.RegistryValues(); }
    // Every row as "name image data", " *" marking the selected one.
    std::vector<std::string> Rows()
    {
        std::vector<std::string> rows;
        for (int row = 0; row < List().Count(); ++row)
            rows.push_back(List().Text(row, 0) + " " + std::to_string(List().Image(row)) + " " +
                           List().Text(row, 1) + (List().Selection() == row ? " *" : ""));
        return rows;
    }
    ozPartsPanel& Panel() { return views.PartsPanel(); }

    ozRecordingHostUI ui;
    CADMCtrl control{ui};
    ozHeadlessPlatform platform{ui};
    ozViews views{platform};
};

TEST_F(RegistryValueListTest, RowsShowNameImageByTypeAndOperationAndTextForm)
{
    const struct {
        unsigned long type;
        char op;
        int image;
    } rows[] = {{1, 'I', 1}, {2, 'C', 5}, {7, 'D', 3}, {4, 'I', 0},
                {3, 'C', 4}, {5, 'D', 2}, {0, 'A', 0}, {7, 'L', 1}};
    ozSubKey& key = Key("K");
    std::vector<std::string> expected;
    for (std::size_t at = 0; at < std::size(rows); ++at) {
        ozRegValue& value = *key.FindValue(at == 0 ? "" : ("v" + std::to_string(at)).c_str());
        value.SetFormattedData(rows[at].type, rows[at].type < 3 ? "ab" : "01", false);
        value.Op(static_cast<tOPVALUE>(rows[at].op));
        expected.push_back((at == 0 ? std::string("(Default)") : "v" + std::to_string(at)) + " " +
                           std::to_string(rows[at].image) + " " + value.FormattedValue() +
                           (at == 0 ? " *" : ""));
    }
    ShowKey("K");
    EXPECT_EQ(Rows(), expected);
    EXPECT_EQ(List().ColumnCaptions(), (std::vector<std::string>{"Name", "Data"}));
    EXPECT_EQ(List().ImageBitmaps(), (std::vector<int>{235, 236, 258, 259, 260, 261}));
    EXPECT_EQ(List().ColumnWidth(0), List().Width() / 4);
    EXPECT_EQ(Panel().Value(), nullptr);  // the fill's own selection shows no editor
    // A resize narrows only the name column, to the width less 10.
    List().Resize(80);
    EXPECT_EQ(List().ColumnWidth(0), 70);
    EXPECT_EQ(List().ColumnWidth(1), 100);

    // A root key keeps the list; another sub key replaces it and empties the panel.
    List().SelectByUser(1);
    EXPECT_EQ(Panel().Value(), key.HasValue("v1"));
    ASSERT_TRUE(
        platform.RegistryTree().SelectByUser(platform.RegistryTree().Find("HKEY_CURRENT_USER")));
    EXPECT_EQ(List().Count(), static_cast<int>(std::size(rows)));
    EXPECT_EQ(Panel().Value(), nullptr);
    Key("K\\Empty");
    ShowKey("K\\Empty");
    EXPECT_EQ(List().Count(), 0);
}

TEST_F(RegistryValueListTest, NewValuesTakeTheFirstFreeNumberAndDeleteAsks)
{
    Key("K").FindValue("New 2")->SetString("x");
    ShowKey("K");
    List().Key(ozKeyInsert);
    List().Key(ozKeyInsert);
    EXPECT_EQ(Rows(), (std::vector<std::string>{"New 2 1 x~", "New 1 1 ~", "New 3 1 ~ *"}));
    EXPECT_EQ(Panel().Value(), Key("K").HasValue("New 3"));
    EXPECT_TRUE(control.ShouldSave());

    // No keeps the value; Yes empties the panel and removes row and value; the freed number is
    // taken again.
    control.Code()->modified = 0;
    List().SelectByUser(1);
    List().Key(ozKeyDelete);
    EXPECT_EQ(List().Count(), 3);
    EXPECT_FALSE(control.ShouldSave());
    ui.answerYes = true;
    List().Key(ozKeyDelete);
    EXPECT_EQ(ui.messages.back().text, "Delete?");
    EXPECT_EQ(Panel().Value(), nullptr);
    EXPECT_EQ(Key("K").HasValue("New 1"), nullptr);
    EXPECT_TRUE(control.ShouldSave());
    List().Key(ozKeyInsert);
    EXPECT_EQ(List().Text(2, 0), "New 1");
}

TEST_F(RegistryValueListTest, MenuGreysNewWithoutKeyAndDeleteWithoutRow)
{
    Key("K").FindValue("v")->SetString("x");
    ShowKey("K");
    const struct {
        bool keyShown;
        int row;
        ozMenuState newState, deleteState;
    } cases[] = {{true, 0, ozMenuState::Enabled, ozMenuState::Enabled},
                 {true, -1, ozMenuState::Enabled, ozMenuState::Greyed},
                 {false, -1, ozMenuState::Greyed, ozMenuState::Greyed}};
    for (const auto& menuCase : cases) {
        if (!menuCase.keyShown)
            views.ValueList().ShowKey(nullptr);
        List().RightClick(menuCase.row);
        const ozMenu& menu = *platform.OpenMenu();
        ASSERT_EQ(menu.entries.size(), 2u);
        EXPECT_EQ(menu.entries[0].command, 32779u);
        EXPECT_EQ(menu.entries[0].bitmap, 255);
        EXPECT_EQ(menu.entries[0].state, menuCase.newState);
        EXPECT_EQ(menu.entries[1].command, 32780u);
        EXPECT_EQ(menu.entries[1].bitmap, 256);
        EXPECT_EQ(menu.entries[1].state, menuCase.deleteState);
    }
    views.ValueList().ShowKey(&Key("K"));
    List().RightClick(0);
    ui.answerYes = true;
    ASSERT_TRUE(platform.Choose(platform.OpenMenu()->entries[1].caption));
    EXPECT_EQ(Key("K").Values().Count(), 0);
}

TEST_F(RegistryValueListTest, EditorStoresByTypeThroughTheTextFormAndRefreshesTheRow)
{
    const struct {
        const char* type;
        const char* format;
        const char* text;
        const char* stored;  // the text form after the edit; null: refused
    } cases[] = {
        {"REG_SZ", "Hexadecimal", "a$b~c", "a$$b$~c~"},
        {"REG_SZ", "Hexadecimal", "b~", "b$~~"},
        {"REG_EXPAND_SZ", "Hexadecimal", "%x%", "%x%~"},
        {"REG_MULTI_SZ", "Hexadecimal", "a\r\nb\n", "a~b~~"},
        {"REG_MULTI_SZ", "Hexadecimal", "a\n\nb", nullptr},
        {"REG_DWORD", "Decimal", "4294967295", "0xFFFFFFFF"},
        {"REG_DWORD", "Hexadecimal", "0x10", "0x00000010"},
        {"REG_DWORD", "Decimal", "4294967296", nullptr},
        {"REG_DWORD", "Decimal", "12a", nullptr},
        {"REG_QWORD", "Decimal", "4294967296", "00 00 00 00 01 00 00 00"},
        {"REG_BINARY", "Hexadecimal", "01 ab,FF", "01 AB FF"},
        {"REG_BINARY", "Hexadecimal", "0g", nullptr},
    };
    ozRegValue& value = *Key("K").FindValue("v");
    value.SetString("old");
    ShowKey("K");
    List().SelectByUser(0);
    ozHeadlessForm& form = platform.Panel();
    for (const auto& edit : cases) {
        SCOPED_TRACE(std::string(edit.type) + " " + edit.text);
        std::string before = value.FormattedValue();
        ui.messages.clear();
        ASSERT_TRUE(Panel().Type("Type", edit.type));
        ASSERT_TRUE(Panel().Type("Data", edit.text));
        EXPECT_EQ(Panel().Commit(), edit.stored != nullptr);
        // Numbers show in the format chosen; it is offered for numbers only.
        EXPECT_EQ(Panel().Type("Number format", edit.format),
                  value.Type() == 4 || value.Type() == 11);
        EXPECT_TRUE(Panel().Commit());
        EXPECT_EQ(value.FormattedValue(), edit.stored != nullptr ? edit.stored : before);
        EXPECT_EQ(List().Text(0, 1), value.FormattedValue());
        EXPECT_EQ(ui.messages.size(), edit.stored != nullptr ? 0u : 1u);
        // The editor shows the stored value again, in the editor's form.
        EXPECT_EQ(form.Text(form.Find("Data")->spec.id),
                  ozValueDataText(value, false, edit.format[0] == 'H'));
    }
    EXPECT_EQ(ui.messages.back().text.rfind("Data: ", 0), 0u);

    // The operation: a change takes the old data; the row's image follows.
    ASSERT_TRUE(Panel().Type("Type", "REG_SZ"));
    ASSERT_TRUE(Panel().Type("Data", "new"));
    ASSERT_TRUE(Panel().Type("Operation", "C"));
    EXPECT_TRUE(Panel().Commit());
    ASSERT_TRUE(Panel().Type("Old data", "was"));
    EXPECT_TRUE(Panel().Commit());
    EXPECT_EQ(value.FormattedValue(true), "was~");
    EXPECT_EQ(List().Image(0), RegValueImageStringChange);
    // A name another value has is refused; a free one renames the row.
    Key("K").FindValue("w");
    ASSERT_TRUE(Panel().Type("Name", "W"));
    EXPECT_FALSE(Panel().Commit());
    ASSERT_TRUE(Panel().Type("Name", ""));
    EXPECT_TRUE(Panel().Commit());
    EXPECT_EQ(List().Text(0, 0), "(Default)");
    EXPECT_TRUE(control.ShouldSave());
}

}  // namespace
