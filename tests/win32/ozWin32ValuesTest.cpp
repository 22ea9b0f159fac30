// The registry view's value list and the value editor in the real Windows controls, driven
// through the controls' messages as a user's mouse and keys drive them: the list filled beside
// the selected key, a row's editor in the parts panel, an edit taken when the user leaves the
// field, new values (Insert and menu 244 on the empty area) and a deleted one. With
// OZ_SCREENSHOT_DIR set, saves a picture of it.
#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <string>

#include "control/CADMCtrl.h"
#include "core/adm/ozADMTree.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "ozControlWindows.h"
#include "ozWin32Screenshot.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTemplateLoad.h"
#include "tests/support/ozTestFiles.h"
#include "ui/ozRegistryValueList.h"
#include "ui/ozViews.h"
#include "ui/win32/ozWin32Platform.h"

namespace {

void Pump()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

// The host texts the test gives. They are the process's: TearDown takes them back, so that
// the tests after it see none.
const std::pair<unsigned short, const char*> Texts[] = {
    {11, "Name"},   {23, "Data"},   {18, "New value"}, {36, "Registry (r)"},
    {40, "Insert"}, {41, "Delete"}, {45, "Change"},    {59, "Delete this value?"}};

// The user in menu 244, once it is open: Down and Enter choose its first entry, "New".
void CALLBACK ChooseFirstEntry(HWND, UINT, UINT_PTR timer, DWORD)
{
    HWND menu = FindWindowW(L"#32768", nullptr);
    if (menu == nullptr || !IsWindowVisible(menu))
        return;
    KillTimer(nullptr, timer);
    PostMessageW(menu, WM_KEYDOWN, VK_DOWN, 0);
    PostMessageW(menu, WM_KEYDOWN, VK_RETURN, 0);
}

class Win32ValuesTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        host = CreateWindowExW(0, L"STATIC", L"ozADM registry values",
                               WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_VISIBLE, 0, 0, 820, 560,
                               nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
        ASSERT_NE(host, nullptr);
        HINSTANCE instance = GetModuleHandleW(nullptr);
        ASSERT_TRUE(windows.Create(host, instance));
        ASSERT_TRUE(platform.Attach(host, windows.Views(), instance));
        for (auto [number, text] : Texts)
            control.AddString(number, text);
        views.Attach(control);
        ASSERT_TRUE(control.SetEBNF(ozSourcePath("grammar/adm.bnf").c_str()));
        ASSERT_TRUE(control.SetADM(ozSourcePath("tests/templates/every-part.adm").c_str()));
        ozSubKey& key = *control.Code()->tree->UsrTree().FindKey(HKEY_CURRENT_USER,
                                                                 "Software\\Example\\Desktop");
        key.FindValue("")->SetString("C:\\Users\\Public\\wall.jpg");
        key.FindValue("TileWallpaper")->SetDWORD(1);
        key.FindValue("Paths")->SetFormattedData(RegMultiSz, "C:\\one~D:\\two~~", false);
        ozRegValue& old = *key.FindValue("Banner");
        old.SetString("Welcome");
        old.Op(OpChange);
        old.SetFormattedData(RegSz, "Hello~", true);
        key.FindValue("Obsolete")->SetDelete();
        key.FindValue("Colours")->SetFormattedData(RegBinary, "00 80 FF", false);
        control.DisplayMode(DisplayRegistry);
        control.ShowMachine(false);
        windows.Layout();
        control.Refresh();
        Pump();
        control.Code()->modified = 0;
    }
    void TearDown() override
    {
        control.Cleanup();
        DestroyWindow(host);
        for (auto [number, text] : Texts)
            control.AddString(number, "");
    }
    HWND List() { return platform.RegistryValues().Window(); }
    // Selects the key at path below HKEY_CURRENT_USER as the user's click does.
    void SelectKey(const std::string& path)
    {
        ozWin32Tree& tree = platform.RegistryTree();
        ozTreeItem item = tree.Root();
        for (std::string::size_type start = 0, end = 0; end != std::string::npos; start = end + 1) {
            end = path.find('\\', start);
            item = tree.FirstChild(item);
            while (item != ozNoItem && tree.Text(item) != path.substr(start, end - start))
                item = tree.NextSibling(item);
            ASSERT_NE(item, ozNoItem) << path;
        }
        TreeView_EnsureVisible(tree.Window(), reinterpret_cast<HTREEITEM>(item));
        SendMessageW(tree.Window(), TVM_SELECTITEM, TVGN_CARET, static_cast<LPARAM>(item));
        Pump();
    }
    void SelectRow(int row)
    {
        ListView_SetItemState(List(), row, LVIS_SELECTED | LVIS_FOCUSED,
                              LVIS_SELECTED | LVIS_FOCUSED);
        Pump();
    }
    void Key(WPARAM key)
    {
        SetFocus(List());
        SendMessageW(List(), WM_KEYDOWN, key, 0);
        Pump();
    }
    // The panel's control labelled label (the window after its label).
    HWND PanelControl(const wchar_t* label)
    {
        for (HWND child = GetWindow(platform.Panel().Window(), GW_CHILD); child != nullptr;
             child = GetWindow(child, GW_HWNDNEXT)) {
            wchar_t text[64] = {};
            GetWindowTextW(child, text, 64);
            if (lstrcmpW(text, label) == 0)
                return GetWindow(child, GW_HWNDNEXT);
        }
        return nullptr;
    }

    HWND host = nullptr;
    ozRecordingHostUI ui;
    ozControlWindows windows;
    ozWin32Platform platform{ui};
    ozViews views{platform};
    CADMCtrl control{ui, &views};
};

TEST_F(Win32ValuesTest, ValuesBesideTheKeyEditedInThePanelNewAndDeleted)
{
    ozWin32List& list = platform.RegistryValues();
    SelectKey("Software\\Example\\Desktop");
    ASSERT_EQ(list.Count(), 6);
    EXPECT_EQ(list.Text(0, 0), "(Default)");
    EXPECT_EQ(list.Text(1, 1), "0x00000001");
    EXPECT_EQ(list.Image(3), RegValueImageStringChange);
    EXPECT_EQ(list.Image(4), RegValueImageStringDelete);
    EXPECT_EQ(list.Selection(), 0);
    EXPECT_TRUE(IsWindowVisible(List()));
    EXPECT_EQ(GetParent(platform.Panel().Window()), windows.View(DisplayRegistry));

    // The user's click on a row shows its editor; typing a number and leaving the field takes
    // it and redraws the row (a multi-line edit reports only typing, not WM_SETTEXT).
    SelectRow(1);
    HWND data = PanelControl(L"Data");
    ASSERT_NE(data, nullptr);
    SetFocus(data);
    SendMessageW(data, EM_SETSEL, 0, -1);
    for (wchar_t typed : std::wstring(L"0x2A"))
        SendMessageW(data, WM_CHAR, typed, 0);
    SetFocus(List());
    Pump();
    EXPECT_EQ(list.Text(1, 1), "0x0000002A");
    EXPECT_TRUE(control.ShouldSave());

    Key(VK_INSERT);
    ASSERT_EQ(list.Count(), 7);
    EXPECT_EQ(list.Text(6, 0), "New value 1");
    EXPECT_EQ(list.Selection(), 6);
    ui.answerYes = true;
    Key(VK_DELETE);
    EXPECT_EQ(list.Count(), 6);
    EXPECT_EQ(ui.messages.back().text, "Delete this value?");

    // A right click on the empty area below the rows: menu 244's "New" adds a value.
    const LPARAM below = MAKELPARAM(40, 140);
    UINT_PTR timer = SetTimer(nullptr, 0, 100, ChooseFirstEntry);
    PostMessageW(List(), WM_RBUTTONUP, 0, below);
    SendMessageW(List(), WM_RBUTTONDOWN, MK_RBUTTON, below);
    Pump();
    KillTimer(nullptr, timer);
    EXPECT_EQ(list.Count(), 7);

    SelectRow(3);
    ozWin32Screenshot(host, "registry-values");
}

}  // namespace
