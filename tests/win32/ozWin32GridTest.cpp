// The registry-value grid in the real Windows list control, driven through its messages: cells
// drawn from the model, a double click opening the editor over a cell, an edit taken and one
// refused, Insert and Delete, and the grid's calls refused while another view shows. Opening
// the grid on 100000 values is timed and printed. With OZ_SCREENSHOT_DIR set, saves a picture.
#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <chrono>
#include <cstdio>
#include <string>

#include "control/CADMCtrl.h"
#include "core/adm/ozADMTree.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "ozControlWindows.h"
#include "ozWin32ViewsFixture.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTemplateLoad.h"
#include "tests/support/ozTestFiles.h"
#include "ui/ozSearchSheet.h"
#include "ui/ozValueData.h"
#include "ui/ozViews.h"
#include "ui/win32/ozWin32Form.h"
#include "ui/win32/ozWin32Platform.h"

namespace {

class Win32GridTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        host = CreateWindowExW(0, L"STATIC", L"ozADM registry-value grid",
                               WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_VISIBLE, 0, 0, 980, 420,
                               nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
        ASSERT_NE(host, nullptr);
        HINSTANCE instance = GetModuleHandleW(nullptr);
        ASSERT_TRUE(windows.Create(host, instance));
        ASSERT_TRUE(platform.Attach(host, windows.Views(), instance));
        control.AddString(180, "%s: %s");
        control.AddString(18, "New value");
        views.Attach(control);
        ASSERT_TRUE(control.SetEBNF(ozSourcePath("grammar/adm.bnf").c_str()));
        ASSERT_TRUE(control.SetADM(ozSourcePath("tests/templates/every-part.adm").c_str()));
        ozADMTree& tree = *control.Code()->tree;
        ozSubKey& key = *tree.UsrTree().FindKey(HKEY_CURRENT_USER, "Software\\Example\\Desktop");
        key.FindValue("Wallpaper")->SetString("C:\\Users\\Public\\wall.jpg");
        key.FindValue("TileWallpaper")->SetDWORD(1);
        key.FindValue("Paths")->SetFormattedData(RegMultiSz, "C:\\one~D:\\two~~", false);
        ozRegValue& banner = *key.FindValue("Banner");
        banner.SetString("Welcome");
        banner.Op(OpChange);
        banner.SetFormattedData(RegSz, "Hello~", true);
        tree.MacTree()
            .FindKey(HKEY_LOCAL_MACHINE, "Software\\Example\\Browser")
            ->FindValue("Colours")
            ->SetFormattedData(RegBinary, "00 80 FF", false);
        control.DisplayMode(DisplayValueGrid);
        windows.Layout();
        control.Refresh();
        Pump();
        control.Code()->modified = 0;
    }
    void TearDown() override
    {
        control.Cleanup();
        DestroyWindow(host);
        control.AddString(180, "");
        control.AddString(18, "");
    }
    HWND List() { return platform.RegistryGrid().Window(); }
    std::string Text(int row, int column)
    {
        wchar_t buffer[256] = {};
        LVITEMW item = {};
        item.iSubItem = column;
        item.pszText = buffer;
        item.cchTextMax = 256;
        SendMessageW(List(), LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&item));
        return ozWin32Narrow(buffer);
    }
    // The user's double click on a cell, as the list reports it to its parent.
    void DoubleClick(int row, int column)
    {
        RECT cell = {};
        ListView_GetSubItemRect(List(), row, column, LVIR_BOUNDS, &cell);
        NMITEMACTIVATE click = {};
        click.hdr = {List(), static_cast<UINT_PTR>(GetDlgCtrlID(List())),
                     static_cast<UINT>(NM_DBLCLK)};
        click.iItem = row;
        click.ptAction = {cell.left + 4, (cell.top + cell.bottom) / 2};
        SendMessageW(GetParent(List()), WM_NOTIFY, click.hdr.idFrom,
                     reinterpret_cast<LPARAM>(&click));
        Pump();
    }
    // Types text into the open editor and presses Enter; false when no editor is open.
    bool Type(const wchar_t* text)
    {
        HWND editor = platform.RegistryGrid().Editor();
        if (editor == nullptr)
            return false;
        SetWindowTextW(editor, text);
        SendMessageW(editor, WM_KEYDOWN, VK_RETURN, 0);
        Pump();
        return platform.RegistryGrid().Editor() == nullptr;
    }
    ozRegValue* Value(const char* name)
    {
        return control.Code()
            ->tree->UsrTree()
            .FindKey(HKEY_CURRENT_USER, "Software\\Example\\Desktop")
            ->HasValue(name);
    }

    HWND host = nullptr;
    ozRecordingHostUI ui;
    ozControlWindows windows;
    ozWin32Platform platform{ui};
    ozViews views{platform};
    CADMCtrl control{ui, &views};
};

TEST_F(Win32GridTest, CellsEditedInPlaceInsertAndDelete)
{
    const int rows = ListView_GetItemCount(List());
    ASSERT_GE(rows, 5);
    // The user tree's rows come first, the machine tree's last.
    EXPECT_EQ(Text(0, GridColumnSubkey), "HKEY_CURRENT_USER\\Software\\Example\\Desktop");
    EXPECT_EQ(Text(rows - 1, GridColumnData), "00 80 FF");

    DoubleClick(1, GridColumnData);
    ASSERT_TRUE(Type(L"0x2A"));
    EXPECT_EQ(ozValueDataText(*Value("TileWallpaper"), false, false), "42");
    EXPECT_EQ(Text(1, GridColumnData), "0x0000002A");
    DoubleClick(1, GridColumnData);
    ASSERT_TRUE(Type(L"many"));
    EXPECT_EQ(ui.messages.back().text.rfind("Data: ", 0), 0u);
    EXPECT_EQ(Text(1, GridColumnData), "0x0000002A");
    DoubleClick(3, GridColumnDataOld);
    ASSERT_TRUE(Type(L"Hi"));
    EXPECT_EQ(Value("Banner")->FormattedValue(true), "Hi~");

    EXPECT_TRUE(control.ozInsert());
    EXPECT_EQ(ListView_GetItemCount(List()), rows + 1);
    EXPECT_EQ(Text(4, GridColumnValueName), "New value 1");
    EXPECT_TRUE(control.ozDelete());
    EXPECT_EQ(Value("New value 1"), nullptr);
    platform.RegistryGrid().SelectRange({0, GridColumnValueName, 2, GridColumnData});
    Screenshot(host, "value-grid");

    control.DisplayMode(DisplayRegistry);
    control.Refresh();
    EXPECT_FALSE(control.ozInsert());
    EXPECT_FALSE(control.ozDelete());
    EXPECT_FALSE(control.ozSRShowSearch());
}

TEST_F(Win32GridTest, SearchSheetReplacesInTheGridsEditableCells)
{
    ASSERT_TRUE(control.ozSRShowReplace());
    HWND sheet = FindWindowW(L"#32770", L"Suchen");
    ASSERT_NE(sheet, nullptr);
    // Typed as the user types: every change reaches the sheet.
    SetWindowTextW(GetDlgItem(sheet, ozSearchSheet::SearchEdit), L"WALL");
    SetWindowTextW(GetDlgItem(sheet, ozSearchSheet::ReplaceEdit), L"Tile");
    SendMessageW(GetDlgItem(sheet, ozSearchSheet::ReplaceAllButton), BM_CLICK, 0, 0);
    Pump();
    // Names and data change, ignoring case; the key paths are not the user's to edit.
    EXPECT_NE(Value("TileTilepaper"), nullptr);
    ASSERT_NE(Value("Tilepaper"), nullptr);
    EXPECT_EQ(Value("Tilepaper")->FormattedValue(false), "C:\\Users\\Public\\Tile.jpg~");
    EXPECT_EQ(Text(0, GridColumnData), "C:\\Users\\Public\\Tile.jpg");
    EXPECT_TRUE(control.ShouldSave());
    // The grid with the sheet over it, as the user sees them.
    SetWindowPos(sheet, nullptr, 300, 200, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    for (int round = 0; round < 10; ++round, Sleep(50))
        Pump();
    RECT area;
    GetWindowRect(host, &area);
    ScreenshotArea(area, "value-grid-search");
    EXPECT_TRUE(control.ozSRHide());
}

TEST_F(Win32GridTest, OpensOnAHundredThousandValues)
{
    ozSubKey& key =
        *control.Code()->tree->UsrTree().FindKey(HKEY_CURRENT_USER, "Software\\Example\\Many");
    for (int at = 0; at < 100000; ++at)
        key.FindValue(("v" + std::to_string(at)).c_str())->SetDWORD(static_cast<unsigned>(at));
    const auto start = std::chrono::steady_clock::now();
    control.Refresh();
    Pump();
    const auto took =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start);
    std::printf("grid opened on %d rows in %.1f ms\n", ListView_GetItemCount(List()), took.count());
    EXPECT_GE(ListView_GetItemCount(List()), 100000);
}

}  // namespace
