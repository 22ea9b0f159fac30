// The import-from-registry dialog in the real Windows controls over keys the test writes into
// the registry: ShowImportReg runs it modally while a thread timer plays the user, who expands
// the keys (read only then), selects one and ends the dialog; OK imports, Cancel does not. With
// OZ_SCREENSHOT_DIR set, a picture of the dialog goes there as import-registry.bmp.
#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

#include "control/CADMCtrl.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozRegTree.h"
#include "core/registry/ozSubKey.h"
#include "ozControlWindows.h"
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

// The child of item whose text is text (the top level for no item), or null.
HTREEITEM Child(HWND tree, HTREEITEM item, const wchar_t* text)
{
    HTREEITEM child = item == nullptr ? TreeView_GetRoot(tree) : TreeView_GetChild(tree, item);
    for (; child != nullptr; child = TreeView_GetNextSibling(tree, child)) {
        wchar_t label[128] = {};
        TVITEMW data = {};
        data.mask = TVIF_TEXT;
        data.hItem = child;
        data.pszText = label;
        data.cchTextMax = 128;
        SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&data));
        if (lstrcmpW(label, text) == 0)
            return child;
    }
    return nullptr;
}

// Expands the keys down to HKEY_CURRENT_USER\Software\ozADM-tests\Tree\A and selects A.
HTREEITEM OpenKeyA(HWND tree)
{
    HTREEITEM item = nullptr;
    for (const wchar_t* name : {L"HKEY_CURRENT_USER", L"Software", L"ozADM-tests", L"Tree", L"A"}) {
        if (item != nullptr)
            TreeView_Expand(tree, item, TVE_EXPAND);
        if ((item = Child(tree, item, name)) == nullptr)
            return nullptr;
    }
    TreeView_SelectItem(tree, item);
    return item;
}

// Saves the window as NAME.bmp into OZ_SCREENSHOT_DIR (nothing without it).
void Screenshot(HWND window, const char* name)
{
    const char* folder = std::getenv("OZ_SCREENSHOT_DIR");
    if (folder == nullptr)
        return;
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    RECT area;
    GetWindowRect(window, &area);
    BITMAPINFOHEADER info = {};
    info.biSize = sizeof info;
    info.biWidth = area.right - area.left;
    info.biHeight = area.bottom - area.top;
    info.biPlanes = 1;
    info.biBitCount = 24;
    HDC screen = GetDC(nullptr);
    HDC memory = CreateCompatibleDC(screen);
    void* bits = nullptr;
    HBITMAP bitmap = CreateDIBSection(screen, reinterpret_cast<BITMAPINFO*>(&info), DIB_RGB_COLORS,
                                      &bits, nullptr, 0);
    HGDIOBJ old = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, info.biWidth, info.biHeight, screen, area.left, area.top, SRCCOPY);
    GdiFlush();
    const DWORD size = ((info.biWidth * 3 + 3) / 4 * 4) * info.biHeight;
    BITMAPFILEHEADER file = {0x4D42, static_cast<DWORD>(sizeof file + sizeof info + size), 0, 0,
                             sizeof file + sizeof info};
    if (FILE* out = std::fopen((ozPlatformPath(folder) + "/" + name + ".bmp").c_str(), "wb")) {
        std::fwrite(&file, sizeof file, 1, out);
        std::fwrite(&info, sizeof info, 1, out);
        std::fwrite(bits, 1, size, out);
        std::fclose(out);
    }
    SelectObject(memory, old);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
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
    void TearDown() override
    {
        control.Cleanup();
        DestroyWindow(host);
    }
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

TEST_F(ImportRegistryWin32Test, OKImportsTheChosenKeyOrValueAndCancelNothing)
{
    // Cancel: nothing. The keys are read as far as the user expanded them.
    EXPECT_FALSE(Import([](HWND dialog) {
        HWND tree = GetDlgItem(dialog, D::KeyTree);
        HTREEITEM a = OpenKeyA(tree);
        if (a == nullptr)
            return false;
        EXPECT_NE(Child(tree, a, L""), nullptr) << "A's sub keys are not read yet";
        EXPECT_EQ(TreeView_GetChild(tree, Child(tree, TreeView_GetParent(tree, a), L"B")), nullptr)
            << "B has no sub keys";
        PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        return true;
    }));
    EXPECT_EQ(Imported("Tree\\A"), nullptr);

    // The whole key, recursively: the tree had the focus last.
    EXPECT_TRUE(Import([](HWND dialog) {
        HWND tree = GetDlgItem(dialog, D::KeyTree);
        if (OpenKeyA(tree) == nullptr)
            return false;
        SetFocus(tree);
        Screenshot(dialog, "import-registry");
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
        return true;
    }));
    ASSERT_NE(Imported("Tree\\A\\Deep"), nullptr);
    EXPECT_NE(Imported("Tree\\A")->HasValue("Number"), nullptr);

    // A value: the list had the focus last.
    control.Cleanup();
    ASSERT_TRUE(control.SetADM(ozSourcePath("tests/templates/every-part.adm").c_str()));
    EXPECT_TRUE(Import([](HWND dialog) {
        HWND list = GetDlgItem(dialog, D::ValueList);
        if (OpenKeyA(GetDlgItem(dialog, D::KeyTree)) == nullptr || ListView_GetItemCount(list) != 2)
            return false;
        SetFocus(list);
        LVFINDINFOW find = {};
        find.flags = LVFI_STRING;
        find.psz = L"Number";
        const auto row = static_cast<int>(SendMessageW(list, LVM_FINDITEMW, static_cast<WPARAM>(-1),
                                                       reinterpret_cast<LPARAM>(&find)));
        ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED,
                              LVIS_SELECTED | LVIS_FOCUSED);
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
        return true;
    }));
    ASSERT_NE(Imported("Tree\\A"), nullptr);
    EXPECT_EQ(Imported("Tree\\A\\Deep"), nullptr);
    EXPECT_NE(Imported("Tree\\A")->HasValue("Number"), nullptr);
    EXPECT_EQ(Imported("Tree\\A")->HasValue("Name"), nullptr);
}

}  // namespace
