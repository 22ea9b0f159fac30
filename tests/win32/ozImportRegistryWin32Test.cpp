// The import-from-registry dialog in the real Windows controls over keys the test writes into
// the registry: ShowImportReg runs it modally while a thread timer plays the user, who expands
// the keys (read only then), selects one and ends the dialog; OK imports, Cancel does not. With
// OZ_SCREENSHOT_DIR set, a picture of the dialog goes there as import-registry.bmp.
#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <string>

#include "control/CADMCtrl.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozRegTree.h"
#include "core/registry/ozSubKey.h"
#include "ozControlWindows.h"
#include "ozWin32Screenshot.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTemplateLoad.h"
#include "tests/support/ozTestFiles.h"
#include "tests/support/ozTestRegistry.h"
#include "ui/ozImportRegistryDialog.h"
#include "ui/ozViews.h"
#include "ui/win32/ozWin32Platform.h"

namespace {

using D = ozImportRegistryDialog;

// The user's part, tried on every tick of a thread timer until it returns true; a user who
// never gets there cancels the dialog, so that the test fails instead of hanging.
std::function<bool(HWND dialog)> g_user;
int g_ticks = 0;

void CALLBACK UserTick(HWND, UINT, UINT_PTR timer, DWORD)
{
    HWND dialog = FindWindowW(L"#32770", nullptr);
    if (++g_ticks > 100) {
        KillTimer(nullptr, timer);
        if (dialog != nullptr)
            EndDialog(dialog, IDCANCEL);
    } else if (dialog != nullptr && IsWindowVisible(dialog) && g_user && g_user(dialog)) {
        g_user = nullptr;
    }
}

// Expands the keys down to HKEY_CURRENT_USER\Software\ozADM-tests\Tree\A, as far as the user can
// see them, and selects A; null when a key is not there.
HTREEITEM OpenKeyA(HWND tree)
{
    HTREEITEM item = TreeView_GetRoot(tree);
    for (const wchar_t* name : {L"HKEY_CURRENT_USER", L"Software", L"ozADM-tests", L"Tree", L"A"}) {
        wchar_t label[128] = {};
        TVITEMW data = {};
        data.mask = TVIF_TEXT;
        data.pszText = label;
        data.cchTextMax = 128;
        for (; item != nullptr; item = TreeView_GetNextSibling(tree, item)) {
            data.hItem = item;
            SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&data));
            if (lstrcmpW(label, name) == 0)
                break;
        }
        if (item == nullptr || lstrcmpW(name, L"A") == 0)
            break;
        TreeView_Expand(tree, item, TVE_EXPAND);
        item = TreeView_GetChild(tree, item);
    }
    TreeView_SelectItem(tree, item);
    return item;
}

class ImportRegistryWin32Test : public ::testing::Test {
protected:
    void SetUp() override
    {
        registry.SetString("Tree\\A", "Name", "a");
        registry.SetDword("Tree\\A", "Number", 7);
        registry.AddKey("Tree\\A\\Deep");
        registry.AddKey("Tree\\B");
        host = CreateWindowExW(0, L"STATIC", L"ozADM import test",
                               WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_VISIBLE, 0, 0, 640, 480,
                               nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
        HINSTANCE instance = GetModuleHandleW(nullptr);
        ASSERT_TRUE(windows.Create(host, instance));
        ASSERT_TRUE(platform.Attach(host, windows.Views(), instance));
        views.Attach(control);
        ASSERT_TRUE(control.SetEBNF(ozSourcePath("grammar/adm.bnf").c_str()));
        ASSERT_TRUE(control.SetADM(ozSourcePath("tests/templates/every-part.adm").c_str()));
    }
    void TearDown() override { DestroyWindow(host); }
    // ShowImportReg with the user at work; its result.
    bool Import(std::function<bool(HWND dialog)> user)
    {
        g_user = std::move(user);
        g_ticks = 0;
        UINT_PTR timer = SetTimer(nullptr, 0, 100, UserTick);
        bool imported = control.ShowImportReg();
        KillTimer(nullptr, timer);
        EXPECT_FALSE(g_user) << "the user did not finish";
        g_user = nullptr;
        return imported;
    }
    ozSubKey* Imported(const std::string& path)
    {
        return control.Code()->tree->UsrTree().HasKey(
            HKEY_CURRENT_USER, (std::string(ozTestRegistry::Base) + "\\" + path).c_str());
    }

    ozTestRegistry registry;
    HWND host = nullptr;
    ozRecordingHostUI ui;
    ozControlWindows windows;
    ozWin32Platform platform{ui};
    ozViews views{platform};
    CADMCtrl control{ui, &views};
};

// The user: opens key A, clicks into the tree or into the value list choosing the value
// "Number", and presses button.
std::function<bool(HWND)> Choose(bool value, int button)
{
    return [value, button](HWND dialog) {
        HWND tree = GetDlgItem(dialog, D::KeyTree), list = GetDlgItem(dialog, D::ValueList);
        HTREEITEM a = OpenKeyA(tree);
        if (a == nullptr || ListView_GetItemCount(list) != 2)
            return false;
        EXPECT_NE(TreeView_GetChild(tree, a), nullptr) << "A's placeholder until expanded";
        EXPECT_EQ(TreeView_GetChild(tree, TreeView_GetNextSibling(tree, a)), nullptr) << "B";
        SetFocus(value ? list : tree);
        LVFINDINFOW find = {};
        find.flags = LVFI_STRING;
        find.psz = L"Number";
        ListView_SetItemState(list,
                              SendMessageW(list, LVM_FINDITEMW, static_cast<WPARAM>(-1),
                                           reinterpret_cast<LPARAM>(&find)),
                              LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
        ozWin32Screenshot(dialog, "import-registry");
        PostMessageW(dialog, WM_COMMAND, button, 0);
        return true;
    };
}

TEST_F(ImportRegistryWin32Test, OKImportsTheChosenKeyOrValueAndCancelNothing)
{
    EXPECT_FALSE(Import(Choose(false, IDCANCEL)));
    EXPECT_EQ(Imported("Tree\\A"), nullptr);

    // The tree had the focus last: the whole key, recursively.
    EXPECT_TRUE(Import(Choose(false, IDOK)));
    ASSERT_NE(Imported("Tree\\A\\Deep"), nullptr);
    EXPECT_NE(Imported("Tree\\A")->HasValue("Number"), nullptr);

    // The value list had it: the value alone.
    control.Cleanup();
    ASSERT_TRUE(control.SetADM(ozSourcePath("tests/templates/every-part.adm").c_str()));
    EXPECT_TRUE(Import(Choose(true, IDOK)));
    ASSERT_NE(Imported("Tree\\A"), nullptr);
    EXPECT_EQ(Imported("Tree\\A\\Deep"), nullptr);
    EXPECT_NE(Imported("Tree\\A")->HasValue("Number"), nullptr);
    EXPECT_EQ(Imported("Tree\\A")->HasValue("Name"), nullptr);
}

}  // namespace
