// The search sheet as a real modeless dialog over the grid view, driven through its controls'
// messages as the user's typing and clicks drive them: find, replace, replace all and the
// selected range over a table of cells, and the page switch.
// With OZ_SCREENSHOT_DIR set, saves a picture of the replace page.
#include <gtest/gtest.h>

#include <windows.h>

#include "control/CADMCtrl.h"
#include "ozControlWindows.h"
#include "ozWin32ViewsFixture.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTableGridCells.h"
#include "ui/ozViews.h"
#include "ui/win32/ozWin32Platform.h"

namespace {

const std::pair<unsigned short, const char*> Texts[] = {{4, "Cancel"},
                                                        {105, "\"%s\" was not found."},
                                                        {107, "Replace"},
                                                        {108, "Find what:"},
                                                        {109, "Replace with:"},
                                                        {110, "Search backwards"},
                                                        {111, "Selected range"},
                                                        {112, "Match case"},
                                                        {113, "Whole word only"},
                                                        {114, "Find next"},
                                                        {115, "Replace all"}};

HWND Sheet()
{
    return FindWindowW(L"#32770", L"Suchen");
}

void Type(int id, const wchar_t* text)
{
    SetWindowTextW(GetDlgItem(Sheet(), id), text);
    Pump();
}

void Click(int id)
{
    SendMessageW(GetDlgItem(Sheet(), id), BM_CLICK, 0, 0);
    Pump();
}

}  // namespace

TEST(Win32SearchSheetTest, FindReplaceAndReplaceAllOverTheGrid)
{
    HWND host = CreateWindowExW(0, L"STATIC", L"ozADM grid", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                640, 400, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    ASSERT_NE(host, nullptr);
    HINSTANCE instance = GetModuleHandleW(nullptr);
    ozRecordingHostUI ui;
    ozControlWindows windows;
    ozWin32Platform platform{ui};
    {
        ozViews views{platform};
        CADMCtrl control{ui, &views};
        ASSERT_TRUE(windows.Create(host, instance));
        ASSERT_TRUE(platform.Attach(host, windows.Views(), instance));
        for (auto [number, text] : Texts)
            control.AddString(number, text);
        views.Attach(control);
        ozTableGridCells table;
        table.rows.resize(3);
        for (auto& row : table.rows)
            row[GridColumnData] = "C:\\Program Files\\App";
        views.SearchCells(&table);

        views.Show(DisplayValueGrid, nullptr, true, true);
        ASSERT_TRUE(control.ozSRShowSearch());
        ASSERT_NE(Sheet(), nullptr);
        EXPECT_EQ(GetWindow(Sheet(), GW_OWNER), host);
        Type(ozSearchSheet::SearchEdit, L"program");

        Click(ozSearchSheet::ReplacePageButton);
        Type(ozSearchSheet::ReplaceEdit, L"Programs");
        Click(ozSearchSheet::FindNextButton);
        EXPECT_EQ(table.currentRow, 0);
        EXPECT_TRUE(IsWindowEnabled(GetDlgItem(Sheet(), ozSearchSheet::ReplaceButton)));
        Click(ozSearchSheet::ReplaceButton);
        EXPECT_EQ(table.rows[0][GridColumnData], "C:\\Programs Files\\App");
        EXPECT_EQ(table.currentRow, 1);

        // Only the selected row: the third.
        table.selection = {2, GridColumnDataOld, 2, GridColumnCounter};
        Click(ozSearchSheet::SelectedRangeBox);
        Type(ozSearchSheet::ReplaceEdit, L"Apps");
        Click(ozSearchSheet::ReplaceAllButton);
        EXPECT_EQ(table.rows[1][GridColumnData], "C:\\Program Files\\App");
        EXPECT_EQ(table.rows[2][GridColumnData], "C:\\Apps Files\\App");

        // Wine paints the buttons of a modeless dialog a moment later.
        for (int round = 0; round < 10; ++round, Sleep(50))
            Pump();
        Screenshot(Sheet(), "search-sheet");
        ASSERT_TRUE(control.ozSRHide());
        EXPECT_FALSE(IsWindowVisible(Sheet()));
        // Escape hides it as well: the sheet has the keys of a dialog.
        ASSERT_TRUE(control.ozSRShowSearch());
        PostMessageW(GetDlgItem(Sheet(), ozSearchSheet::SearchEdit), WM_KEYDOWN, VK_ESCAPE, 0);
        Pump();
        EXPECT_FALSE(IsWindowVisible(Sheet()));
        for (auto [number, text] : Texts)
            control.AddString(number, "");
    }
    DestroyWindow(host);
}
