// The views in the real Windows controls, driven through the controls' messages as a user's
// mouse and keys drive them, with the model checked afterwards: state cycling by clicks on a
// policy's icon, a selection refused while a part's value does not fit, the parts panel's
// editors stored by SaveSelState, the context menu's action list editor, the list box dialog.
// The legend without its images (ShowLegend) and with them. The registry view's key tree. Also
// reports how long filling the tree from a large template takes, and, when OZ_SCREENSHOT_DIR is
// set, saves pictures of the policy view, the registry view and the dialogs there.
//
// Menus and dialogs are modal: a thread timer, dispatched by their message loops, plays the
// user's part in them.
#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "control/CADMCtrl.h"
#include "core/adm/ozADMActionList.h"
#include "core/adm/ozADMPolicy.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozRegTree.h"
#include "core/registry/ozSubKey.h"
#include "ozControlWindows.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTemplateLoad.h"
#include "tests/support/ozTestFiles.h"
#include "ui/ozActionListDialog.h"
#include "ui/ozImages.h"
#include "ui/ozLegendDialog.h"
#include "ui/ozListBoxDialog.h"
#include "ui/ozPartPage.h"
#include "ui/ozPartsDialog.h"
#include "ui/ozPolicyPropertiesDialog.h"
#include "ui/ozPolicyView.h"
#include "ui/ozRegistryView.h"
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

std::wstring WindowText(HWND window)
{
    wchar_t text[256] = {};
    GetWindowTextW(window, text, 256);
    return text;
}

// Saves the screen's area as NAME.bmp into OZ_SCREENSHOT_DIR (nothing without it).
void ScreenshotArea(RECT area, const char* name)
{
    const char* folder = std::getenv("OZ_SCREENSHOT_DIR");
    if (folder == nullptr)
        return;
    const int width = area.right - area.left, height = area.bottom - area.top;
    HDC screen = GetDC(nullptr);
    HDC memory = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
    HGDIOBJ old = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    SelectObject(memory, old);
    BITMAPINFOHEADER info = {};
    info.biSize = sizeof info;
    info.biWidth = width;
    info.biHeight = height;
    info.biPlanes = 1;
    info.biBitCount = 24;
    const DWORD rowBytes = ((width * 3 + 3) / 4) * 4;
    std::string pixels(rowBytes * height, '\0');
    GetDIBits(memory, bitmap, 0, height, pixels.data(), reinterpret_cast<BITMAPINFO*>(&info),
              DIB_RGB_COLORS);
    BITMAPFILEHEADER file = {0x4D42, static_cast<DWORD>(sizeof file + sizeof info + pixels.size()),
                             0, 0, sizeof file + sizeof info};
    std::string path = ozPlatformPath(folder) + "/" + name + ".bmp";
    if (FILE* out = std::fopen(path.c_str(), "wb")) {
        std::fwrite(&file, sizeof file, 1, out);
        std::fwrite(&info, sizeof info, 1, out);
        std::fwrite(pixels.data(), 1, pixels.size(), out);
        std::fclose(out);
    }
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
}

// Saves the window, drawn afresh, as NAME.bmp.
void Screenshot(HWND window, const char* name)
{
    if (window == nullptr)
        return;
    RedrawWindow(window, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    RECT area;
    GetWindowRect(window, &area);
    ScreenshotArea(area, name);
}

// The user inside a modal menu or dialog: called from a thread timer until it returns true.
std::function<bool()> g_user;
int g_ticks = 0;

void CALLBACK UserTimer(HWND, UINT, UINT_PTR timer, DWORD)
{
    // A user who never finds what was expected ends the menus and dialogs, so that the test
    // fails instead of hanging.
    if (++g_ticks > 100) {
        KillTimer(nullptr, timer);
        EndMenu();
        if (HWND dialog = FindWindowW(L"#32770", nullptr))
            EndDialog(dialog, IDCANCEL);
        return;
    }
    if (g_user && g_user())
        g_user = nullptr;
}

// The open popup menu (or submenu) that has an entry captioned caption, and the entry's
// position.
HWND MenuWith(const wchar_t* caption, int& position)
{
    for (HWND window = FindWindowExW(nullptr, nullptr, L"#32768", nullptr); window != nullptr;
         window = FindWindowExW(nullptr, window, L"#32768", nullptr)) {
        auto menu = reinterpret_cast<HMENU>(SendMessageW(window, MN_GETHMENU, 0, 0));
        for (position = 0; IsWindowVisible(window) && position < GetMenuItemCount(menu);
             ++position) {
            wchar_t text[128] = {};
            GetMenuStringW(menu, position, text, 128, MF_BYPOSITION);
            if (lstrcmpW(text, caption) == 0)
                return window;
        }
    }
    return nullptr;
}

// Chooses the entry captioned caption of the open popup menu or submenu, by the keys a user
// presses: down from the highlighted entry (from above the first without one), then Enter,
// which opens a submenu.
bool ChooseFromMenu(const wchar_t* caption)
{
    int target = 0;
    HWND window = MenuWith(caption, target);
    if (window == nullptr)
        return false;
    auto menu = reinterpret_cast<HMENU>(SendMessageW(window, MN_GETHMENU, 0, 0));
    int downs = 0;
    for (int position = 0; position <= target; ++position) {
        const UINT state = GetMenuState(menu, position, MF_BYPOSITION);
        if ((state & MF_SEPARATOR) == 0)
            downs = (state & MF_HILITE) != 0 ? 0 : downs + 1;
    }
    while (downs-- > 0)
        PostMessageW(window, WM_KEYDOWN, VK_DOWN, 0);
    PostMessageW(window, WM_KEYDOWN, VK_RETURN, 0);
    return true;
}

// A user who takes steps one after the other, each tried on every tick until it succeeds.
std::function<bool()> Steps(std::vector<std::function<bool()>> steps)
{
    return [steps = std::move(steps), next = std::size_t{0}]() mutable {
        next += steps[next]() ? 1 : 0;
        return next == steps.size();
    };
}

// A step that chooses the menu entry captioned caption.
std::function<bool()> Menu(const wchar_t* caption)
{
    return [caption] { return ChooseFromMenu(caption); };
}

// A step in the dialog captioned caption, once it is shown and takes input (no dialog of its
// own open above it).
std::function<bool()> InDialog(const wchar_t* caption, std::function<void(HWND)> action)
{
    return [caption, action] {
        HWND dialog = FindWindowW(nullptr, caption);
        if (dialog == nullptr || !IsWindowVisible(dialog) || !IsWindowEnabled(dialog))
            return false;
        action(dialog);
        return true;
    };
}

// Clicks the button id of dialog, posted: a dialog the click opens then runs in the message
// loop, not inside the user's tick.
void Press(HWND dialog, int id)
{
    PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

void Type(HWND dialog, int id, const wchar_t* text)
{
    SetWindowTextW(GetDlgItem(dialog, id), text);
}

class Win32ViewsTest : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        host = CreateWindowExW(0, L"STATIC", L"ozADM views test",
                               WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_VISIBLE, 0, 0, 760, 520,
                               nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    }
    static void TearDownTestSuite() { DestroyWindow(host); }
    void SetUp() override
    {
        ASSERT_NE(host, nullptr);
        HINSTANCE instance = GetModuleHandleW(nullptr);
        ASSERT_TRUE(windows.Create(host, instance));
        ASSERT_TRUE(platform.Attach(host, windows.Views(), instance));
        views.Attach(control);
        control.AddString(HostMessagePartValueRefused, "%s: %s");
        ASSERT_TRUE(control.SetEBNF(ozSourcePath("grammar/adm.bnf").c_str()));
        control.DisplayMode(DisplayPolicies);
        Load(ozSourcePath("tests/templates/every-part.adm"));
    }
    void TearDown() override
    {
        g_user = nullptr;
        control.Cleanup();
        for (HWND child : {windows.Frame(), windows.View(0), windows.View(1), windows.View(2),
                           windows.Keyboard()})
            DestroyWindow(child);
        windows.Forget();
    }
    void Load(const std::string& file)
    {
        ASSERT_TRUE(control.SetADM(file.c_str())) << file;
        windows.Layout();
        control.Refresh();
        Pump();
    }

    HWND Tree() { return platform.Tree().Window(); }
    HWND Panel() { return platform.Panel().Window(); }
    // The item at a path of texts ("MACHINE\Network\Proxy server") in the policy tree, or in
    // the tree given.
    ozTreeItem Item(const std::string& path) { return Item(platform.Tree(), path); }
    ozTreeItem Item(ozWin32Tree& tree, const std::string& path)
    {
        ozTreeItem item = tree.Root();
        std::string::size_type start = 0;
        for (;;) {
            const std::string::size_type end = path.find('\\', start);
            const std::string text = path.substr(start, end - start);
            while (item != ozNoItem && tree.Text(item) != text)
                item = tree.NextSibling(item);
            if (item == ozNoItem || end == std::string::npos)
                return item;
            item = tree.FirstChild(item);
            start = end + 1;
        }
    }
    ozADMPolicy& Policy(ozTreeItem item)
    {
        return *static_cast<ozADMPolicy*>(platform.Tree().Data(item));
    }
    // A point on item's icon (its hit test says so), in the tree's client coordinates.
    POINT IconPoint(ozTreeItem item)
    {
        TreeView_EnsureVisible(Tree(), reinterpret_cast<HTREEITEM>(item));
        // TVM_GETITEMRECT takes the item in the rectangle's place.
        RECT text = {};
        std::memcpy(&text, &item, sizeof item);
        SendMessageW(Tree(), TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&text));
        TVHITTESTINFO hit = {{text.left - 10, (text.top + text.bottom) / 2}, 0, nullptr};
        TreeView_HitTest(Tree(), &hit);
        EXPECT_TRUE((hit.flags & TVHT_ONITEMICON) != 0 &&
                    hit.hItem == reinterpret_cast<HTREEITEM>(item));
        return hit.pt;
    }
    // A click of button with the cursor at point of the tree: the tree waits for the button to
    // come up, so the release is queued first.
    void Click(POINT point, UINT down, UINT up)
    {
        POINT screen = point;
        ClientToScreen(Tree(), &screen);
        SetCursorPos(screen.x, screen.y);
        const LPARAM where = MAKELPARAM(point.x, point.y);
        PostMessageW(Tree(), up, 0, where);
        SendMessageW(Tree(), down, down == WM_LBUTTONDOWN ? MK_LBUTTON : MK_RBUTTON, where);
        Pump();
    }
    void ClickIcon(ozTreeItem item) { Click(IconPoint(item), WM_LBUTTONDOWN, WM_LBUTTONUP); }
    void RightClick(ozTreeItem item)
    {
        POINT point = IconPoint(item);
        Click({point.x + 20, point.y}, WM_RBUTTONDOWN, WM_RBUTTONUP);
    }
    void Select(ozTreeItem item)
    {
        SendMessageW(Tree(), TVM_SELECTITEM, TVGN_CARET, static_cast<LPARAM>(item));
        Pump();
    }
    // The panel's control labelled label: the window after the label, or the check box or
    // button with that caption.
    HWND PanelControl(const wchar_t* label)
    {
        for (HWND child = GetWindow(Panel(), GW_CHILD); child != nullptr;
             child = GetWindow(child, GW_HWNDNEXT))
            if (WindowText(child) == label) {
                wchar_t windowClass[32] = {};
                GetClassNameW(child, windowClass, 32);
                return lstrcmpiW(windowClass, L"Static") == 0 ? GetWindow(child, GW_HWNDNEXT)
                                                              : child;
            }
        ADD_FAILURE() << "no control labelled " << ozWin32Narrow(label);
        return nullptr;
    }
    // The entries the policy at path configures, one a line.
    std::string Configured(const char* path)
    {
        const ozStringArray entries = control.PolicyConfigures(path);
        std::string lines;
        for (const std::string& entry : entries.Elements())
            lines += entry + "\n";
        return lines;
    }
    // Runs action with the user (a thread timer) at work until it is done.
    void WithUser(std::function<bool()> user, const std::function<void()>& action)
    {
        g_user = std::move(user);
        g_ticks = 0;
        UINT_PTR timer = SetTimer(nullptr, 0, 100, UserTimer);
        action();
        KillTimer(nullptr, timer);
        EXPECT_FALSE(g_user) << "the user did not finish";
    }

    static HWND host;
    ozRecordingHostUI ui;
    ozControlWindows windows;
    ozWin32Platform platform{ui};
    ozViews views{platform};
    CADMCtrl control{ui, &views};
};

HWND Win32ViewsTest::host = nullptr;

TEST_F(Win32ViewsTest, ClicksOnAPolicyIconCycleItsStateAndImage)
{
    ozTreeItem proxy = Item("MACHINE\\Network\\Proxy server");
    ASSERT_NE(proxy, ozNoItem);
    const int expected[][2] = {{PolicyEnabled, 6}, {PolicyDisabled, 5}, {PolicyNotConfigured, 7}};
    for (const auto& [state, image] : expected) {
        ClickIcon(proxy);
        EXPECT_EQ(Policy(proxy).State(), state);
        EXPECT_EQ(platform.Tree().Image(proxy), image);
    }
    EXPECT_TRUE(control.ShouldSave());
}

TEST_F(Win32ViewsTest, ASelectionWaitsForPanelValuesThatFit)
{
    ozTreeItem proxy = Item("MACHINE\\Network\\Proxy server");
    Select(proxy);
    ClickIcon(proxy);
    HWND port = PanelControl(L"Port");
    ASSERT_TRUE(IsWindowEnabled(port)) << "the editors of an enabled policy";
    SetWindowTextW(port, L"99999");
    Select(Item("MACHINE\\Network\\Lists\\Host list"));
    EXPECT_EQ(platform.Tree().Selection(), proxy) << "refused: the port is above its MAX";
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_NE(ui.messages[0].text.find("Port"), std::string::npos) << ui.messages[0].text;

    // The spin's up arrow steps within the range, and the value fits again.
    HWND spin = GetWindow(port, GW_HWNDNEXT);
    RECT arrows;
    GetClientRect(spin, &arrows);
    SendMessageW(spin, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(arrows.right / 2, 2));
    SendMessageW(spin, WM_LBUTTONUP, 0, MAKELPARAM(arrows.right / 2, 2));
    EXPECT_EQ(WindowText(port), L"65535");
    Select(Item("MACHINE\\Network\\Lists\\Host list"));
    EXPECT_NE(platform.Tree().Selection(), proxy);
}

TEST_F(Win32ViewsTest, PanelEditorsReachThePolicyOnSaveSelState)
{
    ozTreeItem wallpaper = Item("USER\\Desktop\\Wallpaper");
    Select(wallpaper);
    ClickIcon(wallpaper);
    SendMessageW(PanelControl(L"Center the picture"), BM_CLICK, 0, 0);
    SetWindowTextW(PanelControl(L"Picture file"), L"C:\\wall.bmp");
    ASSERT_TRUE(control.SaveSelState());
    const std::string configured = Configured("USER\\Desktop\\Wallpaper");
    EXPECT_NE(configured.find("Center"), std::string::npos) << configured;
    EXPECT_NE(configured.find("C:\\wall.bmp"), std::string::npos) << configured;
}

TEST_F(Win32ViewsTest, F2RenamesThroughTheTreesLabelEdit)
{
    control.WithADMEdit(true);
    ozTreeItem wallpaper = Item("USER\\Desktop\\Wallpaper");
    Select(wallpaper);
    SendMessageW(Tree(), WM_KEYDOWN, VK_F2, 0);
    HWND edit = TreeView_GetEditControl(Tree());
    ASSERT_NE(edit, nullptr) << "F2 starts the label edit";
    SetWindowTextW(edit, L"Background");
    TreeView_EndEditLabelNow(Tree(), FALSE);
    EXPECT_STREQ(Policy(wallpaper).Name(), "Background");
    EXPECT_EQ(platform.Tree().Text(wallpaper), "Background");
}

TEST_F(Win32ViewsTest, ContextMenuOpensTheActionListEditor)
{
    control.WithADMEdit(true);
    ozTreeItem wallpaper = Item("USER\\Desktop\\Wallpaper");
    ClickIcon(wallpaper);
    int step = 0;
    WithUser(
        [&] {
            if (step == 0) {
                step = ChooseFromMenu(L"Policy Actionlist On") ? 1 : 0;
                return false;
            }
            HWND dialog = FindWindowW(nullptr, L"Action list");
            if (dialog == nullptr)
                return false;
            SendMessageW(GetDlgItem(dialog, ozActionListDialog::InsertButton), BM_CLICK, 0, 0);
            SetWindowTextW(GetDlgItem(dialog, ozActionListDialog::ValueNameEdit), L"Audit");
            SetWindowTextW(GetDlgItem(dialog, ozActionListDialog::ValueEdit), L"on");
            Screenshot(dialog, "actionlist-editor");
            // A key path typed letter by letter binds the whole path once, on OK.
            SendMessageW(GetDlgItem(dialog, ozActionListDialog::OwnKeyCheck), BM_CLICK, 0, 0);
            for (const wchar_t* typed : {L"S", L"So", L"Software\\Typed"})
                SetWindowTextW(GetDlgItem(dialog, ozActionListDialog::KeyEdit), typed);
            SendMessageW(GetDlgItem(dialog, IDOK), BM_CLICK, 0, 0);
            return true;
        },
        [&] { RightClick(wallpaper); });
    ASSERT_NE(Policy(wallpaper).ActionListOn(), nullptr);
    ozSubKey* typedKey = Policy(wallpaper).ActionListOn()->At(0)->RegKey();
    ASSERT_NE(typedKey, nullptr);
    char path[ozSubKey::KeyPathCapacity + 1] = {};
    ASSERT_TRUE(typedKey->GetKeyPath(path));
    EXPECT_STREQ(path, "Software\\Typed");
    EXPECT_EQ(Policy(wallpaper).RegistryTree()->HasKey(HKEY_CURRENT_USER, "S"), nullptr);
    const std::string configured = Configured("USER\\Desktop\\Wallpaper");
    EXPECT_NE(configured.find("Audit"), std::string::npos) << configured;
}

TEST_F(Win32ViewsTest, ARealTemplateWithAProfile)
{
    const std::string corpus = ozCorpusPath("adm/msedge/msedge.adm");
    if (corpus.empty())
        GTEST_SKIP() << "no template corpus";
    control.Cleanup();
    Load(corpus);
    const auto start = std::chrono::steady_clock::now();
    control.Refresh();
    const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now() - start);
    std::printf("filling the policy tree from msedge.adm: %u items in %lld ms\n",
                TreeView_GetCount(Tree()), static_cast<long long>(elapsed.count()));

    // The picture: real templates with a profile, a policy with several parts selected.
    control.Cleanup();
    Load(ozCorpusPath("adm/wpkg-gp/wpkg-gp.adm"));
    Load(ozCorpusPath("adm/chrome73/chrome.adm"));
    control.ozImpExLibrary(ozPlatformPath(OZ_POL_LIBRARY));
    ASSERT_TRUE(control.Load(ozCorpusPath("pol/shb_ie_user.pol").c_str(),
                             ozCorpusPath("pol/shb_chrome_machine.pol").c_str()));
    for (const char* category : {"MACHINE\\Google", "MACHINE\\Google\\Google Chrome"})
        TreeView_Expand(Tree(), reinterpret_cast<HTREEITEM>(Item(category)), TVE_EXPAND);
    ozTreeItem misc = Item("MACHINE\\WPKG\\Wpkg-GP Misc Settings");
    ASSERT_NE(misc, ozNoItem);
    Select(misc);
    ClickIcon(misc);
    for (const wchar_t* label : {L"WPKG-gp Reboot Policy", L"Show an activity indicator"}) {
        HWND dropDown = PanelControl(label);
        SendMessageW(dropDown, CB_SETCURSEL, 1, 0);
        SendMessageW(Panel(), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(dropDown), CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(dropDown));
    }
    TreeView_EnsureVisible(Tree(), reinterpret_cast<HTREEITEM>(Item("MACHINE")));
    Screenshot(host, "policy-view");

    ozTreeItem list = ozNoItem;
    for (ozTreeItem item = platform.Tree().Root(); item != ozNoItem && list == ozNoItem;) {
        if (platform.Tree().Text(item) == "Configure extension installation whitelist")
            list = item;
        ozTreeItem next = platform.Tree().FirstChild(item);
        while (next == ozNoItem && item != ozNoItem) {
            next = platform.Tree().NextSibling(item);
            item = platform.Tree().Parent(item);
        }
        item = next;
    }
    ASSERT_NE(list, ozNoItem);
    Select(list);
    ClickIcon(list);
    ClickIcon(list);
    WithUser(
        [&] {
            HWND dialog = FindWindowW(L"#32770", nullptr);
            if (dialog == nullptr)
                return false;
            for (const wchar_t* entry : {L"*.example.com", L"intranet.example.org"}) {
                SetWindowTextW(GetDlgItem(dialog, ozListBoxDialog::ValueEdit), entry);
                SendMessageW(GetDlgItem(dialog, ozListBoxDialog::AddButton), BM_CLICK, 0, 0);
            }
            Screenshot(dialog, "listbox-dialog");
            SendMessageW(GetDlgItem(dialog, IDCANCEL), BM_CLICK, 0, 0);
            return true;
        },
        [&] { SendMessageW(PanelControl(L"Show..."), BM_CLICK, 0, 0); });
}

TEST_F(Win32ViewsTest, TheTemplateMenuMakesAPolicyWithANumericPart)
{
    control.WithADMEdit(true);
    control.AddString(HostTextNewElementName, "New policy");
    WithUser(Steps({Menu(L"New"), Menu(L"Policy")}), [&] { RightClick(Item("USER\\Desktop")); });
    const ozTreeItem added = Item("USER\\Desktop\\New policy");
    ASSERT_NE(added, ozNoItem);
    EXPECT_EQ(platform.Tree().Selection(), added);

    // A new policy has no key yet, so its parts wait for the policy's properties.
    WithUser(Steps({Menu(L"Policy Properties"),
                    InDialog(L"Policy Properties",
                             [](HWND dialog) {
                                 Type(dialog, ozPolicyPropertiesDialog::KeyEdit,
                                      L"Software\\Policies\\ozADM\\Level");
                                 Type(dialog, ozPolicyPropertiesDialog::ValueNameEdit, L"LevelOn");
                                 Press(dialog, IDOK);
                             })}),
             [&] { RightClick(added); });
    WithUser(
        Steps(
            {Menu(L"Control Properties"),
             InDialog(L"Control Properties", [](HWND dialog) { Press(dialog, PartsDialogInsert); }),
             InDialog(L"New",
                      [](HWND dialog) {
                          SendDlgItemMessageW(dialog, PartTypeDialogGroup + 2, BM_CLICK, 0, 0);
                          Press(dialog, IDOK);
                      }),
             InDialog(L"Numeric properties",
                      [](HWND page) {
                          for (auto [id, text] : {std::pair{ozPartPage::NameEdit, L"Level"},
                                                  {ozPartPage::ValueNameEdit, L"Level"},
                                                  {ozPartPage::MinEdit, L"7"},
                                                  {ozPartPage::MaxEdit, L"77"},
                                                  {ozPartPage::SpinEdit, L"7"},
                                                  {ozPartPage::DefaultNumberEdit, L"14"}})
                              Type(page, id, text);
                      }),
             // The picture once the page has painted what was typed.
             InDialog(L"Numeric properties",
                      [](HWND page) {
                          Screenshot(page, "part-page");
                          Press(page, IDOK);
                      }),
             InDialog(L"Control Properties", [](HWND dialog) { Press(dialog, IDOK); })}),
        [&] { RightClick(added); });

    // The template as written holds the policy with its part, and reads back the same.
    ozTestFile written("template-edit.adm"), again("template-edit-again.adm");
    ASSERT_TRUE(control.WriteADM(written.Path()));
    std::string text = ozReadTestFile(written.Path());
    std::erase(text, '\r');
    const auto policy = text.find("KEYNAME \"Software\\Policies\\ozADM\\Level\"");
    ASSERT_NE(policy, std::string::npos) << text;
    const std::string block = text.substr(policy, text.find("END POLICY", policy) - policy);
    for (const char* line : {" NUMERIC\n", "MIN 7\n", "MAX 77\n", "SPIN 7\n", "DEFAULT 14\n"})
        EXPECT_NE(block.find(line), std::string::npos) << line << " in\n" << block;
    // The value names, as the template's strings.
    for (const char* line : {"=\"LevelOn\"\n", "=\"Level\"\n"})
        EXPECT_NE(text.find(line), std::string::npos) << line << " in\n" << text;
    control.Cleanup();
    Load(written.Path());
    ASSERT_TRUE(control.WriteADM(again.Path()));
    EXPECT_EQ(ozReadTestFile(again.Path()), ozReadTestFile(written.Path()));
}

TEST_F(Win32ViewsTest, ThePartsDialogListsThePolicysParts)
{
    control.WithADMEdit(true);
    const ozTreeItem proxy = Item("MACHINE\\Network\\Proxy server");
    Select(proxy);
    LRESULT rows = 0;
    auto pictureOfTheMenu = [] {
        int position = 0;
        HWND menu = MenuWith(L"Control Properties", position);
        if (menu == nullptr)
            return false;
        RECT area, menuArea;
        GetWindowRect(host, &area);
        GetWindowRect(menu, &menuArea);
        UnionRect(&area, &area, &menuArea);
        ScreenshotArea(area, "template-menu");
        return true;
    };
    WithUser(Steps({pictureOfTheMenu, Menu(L"Control Properties"),
                    InDialog(L"Control Properties",
                             [&](HWND dialog) {
                                 HWND list = GetDlgItem(dialog, PartsDialogList);
                                 rows = SendMessageW(list, LB_GETCOUNT, 0, 0);
                                 SendMessageW(list, LB_SETCURSEL, 1, 0);
                                 SendMessageW(dialog, WM_COMMAND,
                                              MAKEWPARAM(PartsDialogList, LBN_SELCHANGE),
                                              reinterpret_cast<LPARAM>(list));
                                 Screenshot(dialog, "parts-dialog");
                                 Press(dialog, IDCANCEL);
                             })}),
             [&] {
                 // Clicked low on the row, the menu leaves the policy's name seen.
                 POINT point = IconPoint(proxy);
                 Click({point.x + 20, point.y + 6}, WM_RBUTTONDOWN, WM_RBUTTONUP);
             });
    EXPECT_EQ(rows, 6);
}

}  // namespace

TEST_F(Win32ViewsTest, TheLegendOpensWithoutAndWithItsImages)
{
    const char* const texts[] = {"Key not saved",       "Key saved",
                                 "Key deleted",         "Template key not saved",
                                 "Template key saved",  "Template key deleted",
                                 "Key's values erased", "Template key's values erased"};
    for (int text = 0; text < 8; ++text)
        control.AddString(static_cast<unsigned short>(66 + text), texts[text]);
    control.AddString(ozLegendDialog::CaptionText, "Legend");
    bool drawn = false;
    auto pressOK = [&](HWND dialog) {
        HWND rows = GetDlgItem(dialog, ozLegendDialog::Rows);
        drawn = rows != nullptr && (GetWindowLongW(rows, GWL_STYLE) & SS_TYPEMASK) == SS_OWNERDRAW;
        Screenshot(dialog, "legend");
        Press(dialog, IDOK);
    };
    WithUser(InDialog(L"Legend", pressOK), [&] { control.ShowLegend(); });
    EXPECT_TRUE(drawn);
    bool accepted = false;
    WithUser(InDialog(L"Legend", pressOK), [&] {
        platform.RunDialog(std::make_unique<ozLegendDialog>(control, true),
                           [&](ozDialog&, bool ok) { accepted = ok; });
    });
    EXPECT_TRUE(accepted);
}

TEST_F(Win32ViewsTest, TheRegistryViewFillsItsOwnTreeSortedAndInTime)
{
    control.AddString(HostTextUserKeys, "User configuration");
    control.AddString(HostTextMachineKeys, "Machine configuration");
    ozRegTree& machine = control.Code()->tree->MacTree();
    char path[64];
    for (int parent = 999; parent >= 0; --parent)
        for (int child = 99; child >= 0; --child) {
            std::snprintf(path, sizeof path, "Software\\Bulk\\Key %03d\\Sub %02d", parent, child);
            machine.FindKey(HKEY_LOCAL_MACHINE, path)->FindValue("Value");
        }
    control.DisplayMode(DisplayRegistry);
    const auto start = std::chrono::steady_clock::now();
    control.Refresh();
    const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now() - start);
    ozWin32Tree& keys = platform.RegistryTree();
    std::printf("filling the registry view: %u items in %lld ms\n",
                TreeView_GetCount(keys.Window()), static_cast<long long>(elapsed.count()));
    Pump();
    EXPECT_TRUE(IsWindowVisible(keys.Window()));
    EXPECT_FALSE(IsWindowVisible(Tree()));
    EXPECT_EQ(keys.Text(keys.Root()), "Machine configuration");
    ozTreeItem bulk = Item(keys, "Machine configuration\\HKEY_LOCAL_MACHINE\\Software\\Bulk");
    ASSERT_NE(bulk, ozNoItem);
    EXPECT_EQ(keys.Text(keys.FirstChild(bulk)), "Key 000");
    EXPECT_EQ(keys.Image(keys.FirstChild(bulk)), RegKeyImageNotSaved);
    ozTreeItem style =
        Item(keys, "User configuration\\HKEY_CURRENT_USER\\Software\\Policies\\ozADM\\Desktop");
    ASSERT_NE(style, ozNoItem);
    EXPECT_EQ(keys.Image(style), RegKeyImageTemplateNotSaved);
    TreeView_Expand(keys.Window(), reinterpret_cast<HTREEITEM>(keys.Parent(style)), TVE_EXPAND);
    TreeView_EnsureVisible(keys.Window(), reinterpret_cast<HTREEITEM>(style));
    keys.Select(style);
    Pump();
    Screenshot(host, "registry-view");
}
