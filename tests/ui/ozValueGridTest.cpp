// The registry-value grid through the headless grid: rows in tree order, cells and in-place
// edits over every value type and operation, refusals, and inserted and deleted values.
#include <gtest/gtest.h>

#include "control/CADMCtrl.h"
#include "core/adm/ozADMTree.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTemplateLoad.h"
#include "ui/headless/ozHeadlessPlatform.h"
#include "ui/ozViews.h"

namespace {

class ValueGridTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        views.Attach(control);
        ASSERT_TRUE(control.SetEBNF(ozSourcePath("grammar/adm.bnf").c_str()));
        ASSERT_TRUE(control.SetADM(ozSourcePath("tests/templates/every-part.adm").c_str()));
        control.AddString(180, "%s: %s");
        control.AddString(18, "New");
    }
    void TearDown() override
    {
        control.AddString(180, "");
        control.AddString(18, "");
    }
    ozSubKey& Key(HKEY root, const char* path)
    {
        ozADMTree& tree = *control.Code()->tree;
        return *(root == HKEY_CURRENT_USER ? tree.UsrTree() : tree.MacTree()).FindKey(root, path);
    }
    // Shows the grid over both trees; the document starts unmodified.
    void Show()
    {
        views.Show(DisplayValueGrid, control.Code(), true, true);
        control.Code()->modified = 0;
    }
    // The rows of the keys below "Z" (which the test makes), cells joined by "|".
    std::vector<std::string> Rows()
    {
        std::vector<std::string> rows;
        for (int row = 0; row < Grid().RowCount(); ++row) {
            std::string line;
            for (const std::string& cell : Grid().Cells(row))
                line += (line.empty() ? "" : "|") + cell;
            if (line.find("\\Z") != std::string::npos)
                rows.push_back(line);
        }
        return rows;
    }
    ozHeadlessGrid& Grid() { return platform.RegistryGrid(); }
    ozValueGrid& Cells() { return views.ValueGrid(); }

    ozRecordingHostUI ui;
    ozHeadlessPlatform platform{ui};
    ozViews views{platform};
    CADMCtrl control{ui, &views};
};

TEST_F(ValueGridTest, CellsAndEditsByTypeAndOperation)
{
    // type, item type and operation, data; the cells shown; an edit of the data and of the old
    // data (where the operation has them) taken, and one refused.
    const struct {
        unsigned long type;
        tREGITEMTYPE itemType;
        char op;
        const char* data;
        const char* cells;  // Type|Size|Data|Size Old|Data Old
        const char* edit;
        const char* shownAfter;
        const char* refused;
    } rows[] = {
        {1, RitR, 'I', "ab~", "REG_SZ|3|ab||", "x$y", "x$y", nullptr},
        {2, RitR, 'C', "%a%~", "REG_EXPAND_SZ|4|%a%|4|%a%", "%b%", "%b%", nullptr},
        {7, RitM, 'A', "a~b~~", "REG_MULTI_SZ|5|a\r\nb|5|a\r\nb", "c\r\nd", "c\r\nd", "c\r\n\r\nd"},
        {4, RitR, 'R', "0x0000002A", "REG_DWORD|4|0x0000002A|4|0x0000002A", "7", "0x00000007",
         "-1"},
        {5, RitR, 'D', "0x00000001", "REG_DWORD_BIG_ENDIAN|4|0x00000001||", "0x10", "0x00000010",
         "x"},
        {11, RitR, 'L', "01 00 00 00 00 00 00 00", "REG_QWORD|8|0x0000000000000001||",
         "18446744073709551615", "0xFFFFFFFFFFFFFFFF", "18446744073709551616"},
        {3, RitF, 'I', "01 02", "REG_BINARY|2|01 02||", "0a0b", "0A 0B", "0x"},
        {0, RitR, 'I', "", "REG_NONE|0|||", "ff", "FF", "zz"},
    };
    ozSubKey& key = Key(HKEY_CURRENT_USER, "Z");
    for (std::size_t at = 0; at < std::size(rows); ++at) {
        ozRegValue& value = *key.FindValue(("v" + std::to_string(at)).c_str());
        value.RIT(rows[at].itemType);
        value.Op(static_cast<tOPVALUE>(rows[at].op));
        value.SetFormattedData(rows[at].type, rows[at].data, false);
        if (value.Op() == OpAppend || value.Op() == OpCodeR || value.Op() == OpChange)
            value.SetFormattedData(rows[at].type, rows[at].data, true);
    }
    Show();
    std::vector<std::string> shown = Rows();
    ASSERT_EQ(shown.size(), std::size(rows));
    const int first = Grid().RowCount() - static_cast<int>(std::size(rows));
    for (std::size_t at = 0; at < std::size(rows); ++at) {
        SCOPED_TRACE(rows[at].cells);
        const int row = first + static_cast<int>(at);
        EXPECT_EQ(shown[at], std::to_string(row + 1) + "|HKEY_CURRENT_USER\\Z|v" +
                                 std::to_string(at) + "|" + rows[at].cells);
        const bool second = std::string(rows[at].cells).back() != '|';
        for (int column = 0; column < GridColumnCount; ++column)
            EXPECT_EQ(Cells().Editable(row, column),
                      column == GridColumnValueName || column == GridColumnType ||
                          column == GridColumnData || (second && column == GridColumnDataOld));
        for (int column : {GridColumnData, GridColumnDataOld}) {
            if (column == GridColumnDataOld && !second)
                continue;
            control.Code()->modified = 0;
            EXPECT_TRUE(Grid().EditByUser(row, column, rows[at].edit));
            EXPECT_EQ(Grid().Cells(row)[column], rows[at].shownAfter);
            EXPECT_TRUE(control.ShouldSave());
            if (rows[at].refused == nullptr)
                continue;
            control.Code()->modified = 0;
            EXPECT_FALSE(Grid().EditByUser(row, column, rows[at].refused));
            const char* caption = column == GridColumnData ? "Data: " : "Data Old: ";
            EXPECT_EQ(ui.messages.back().text.rfind(caption, 0), 0u);
            EXPECT_EQ(Grid().Cells(row)[column], rows[at].shownAfter);
            EXPECT_FALSE(control.ShouldSave());
        }
    }
    // A name taken by another value and a type the data do not fit are refused; a type they
    // fit retypes the data, a free name renames.
    std::string why;
    EXPECT_FALSE(Cells().SetCellText(first, GridColumnValueName, "V1", why));
    EXPECT_FALSE(Cells().SetCellText(first, GridColumnType, "REG_DWORD", why));
    EXPECT_FALSE(Cells().SetCellText(first, GridColumnType, "REG_TEXT", why));
    EXPECT_FALSE(Cells().SetCellText(first, GridColumnSize, "1", why));
    EXPECT_TRUE(Cells().SetCellText(first + 3, GridColumnType, "reg_sz", why));
    EXPECT_TRUE(Cells().SetCellText(first, GridColumnValueName, "w", why));
    EXPECT_EQ(Rows()[3].substr(Rows()[3].find("|v3|")), "|v3|REG_SZ|11|0x00000007|11|0x00000007");
    EXPECT_STREQ(key.Values().At(0)->Name(), "w");
}

TEST_F(ValueGridTest, RowsInTreeOrderWithInsertAndDelete)
{
    Key(HKEY_LOCAL_MACHINE, "Z").FindValue("m")->SetString("1");
    Key(HKEY_CURRENT_USER, "Z\\b").FindValue("b1")->SetString("1");
    Key(HKEY_CURRENT_USER, "Z\\A").FindValue("a1")->SetString("1");
    Key(HKEY_CURRENT_USER, "Z").FindValue("z2")->SetString("1");
    Key(HKEY_CURRENT_USER, "Z").FindValue("z1")->SetString("1");
    Show();
    auto names = [this] {
        std::string names;
        for (const std::string& row : Rows()) {
            std::size_t name = row.find('|', row.find('|') + 1) + 1;
            names += row.substr(name, row.find('|', name) - name) + " ";
        }
        return names;
    };
    EXPECT_EQ(names(), "z2 z1 a1 b1 m ");
    // Insert adds to the current row's key after its values; Delete removes the current row.
    const int z2 = Grid().RowCount() - 5;
    ASSERT_TRUE(Grid().SelectByUser(z2, GridColumnData));
    EXPECT_TRUE(control.ozInsert());
    EXPECT_TRUE(control.ozInsert());
    EXPECT_EQ(names(), "z2 z1 New 1 New 2 a1 b1 m ");
    EXPECT_EQ(Grid().CurrentRow(), z2 + 3);
    ASSERT_TRUE(Grid().SelectByUser(z2 + 1, GridColumnData));
    Grid().Key(ozKeyDelete);
    EXPECT_EQ(names(), "z2 New 1 New 2 a1 b1 m ");
    EXPECT_EQ(Key(HKEY_CURRENT_USER, "Z").HasValue("z1"), nullptr);
    // Another view shown: the grid lets go of its rows and refuses both.
    views.Show(DisplayRegistry, control.Code(), true, true);
    EXPECT_EQ(Cells().RowCount(), 0);
    EXPECT_FALSE(control.ozInsert());
    EXPECT_FALSE(control.ozDelete());
}

}  // namespace
