// The views in the real Windows controls, driven through the controls' messages as a user's
// mouse and keys drive them, with the model checked afterwards: state cycling by clicks on a
// policy's icon, a selection refused while a part's value does not fit, the parts panel's
// editors stored by SaveSelState, the context menu's action list editor, the list box dialog.
// The legend without its images (ShowLegend) and with them. Also reports how long filling the
// tree from a large template takes, and, when OZ_SCREENSHOT_DIR is set, saves pictures of the
// policy view and the dialogs there.
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
#include "ozWin32ViewsFixture.h"
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
