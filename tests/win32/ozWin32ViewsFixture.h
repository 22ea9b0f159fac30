// What the Windows view tests share: a host window with the control's child windows, the views
// over the real Windows controls and a control with a template loaded (Win32ViewsTest), and the
// user who plays their part inside modal menus and dialogs from a thread timer.
#pragma once

#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "control/CADMCtrl.h"
#include "core/adm/ozADMPolicy.h"
#include "ozControlWindows.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTemplateLoad.h"
#include "tests/support/ozTestFiles.h"
#include "ui/ozViews.h"
#include "ui/win32/ozWin32Platform.h"

// Dispatches the messages waiting.
void Pump();
std::wstring WindowText(HWND window);
// Saves the screen's area as NAME.bmp into OZ_SCREENSHOT_DIR (nothing without it).
void ScreenshotArea(RECT area, const char* name);
// Saves the window, drawn afresh, as NAME.bmp.
void Screenshot(HWND window, const char* name);

// The user inside a modal menu or dialog: called from a thread timer until it returns true.
extern std::function<bool()> g_user;
extern int g_ticks;
void CALLBACK UserTimer(HWND, UINT, UINT_PTR timer, DWORD);
// The open popup menu (or submenu) that has an entry captioned caption, and the entry's
// position.
HWND MenuWith(const wchar_t* caption, int& position);
// Chooses the entry captioned caption of the open popup menu or submenu, by the keys a user
// presses.
bool ChooseFromMenu(const wchar_t* caption);
// A user who takes steps one after the other, each tried on every tick until it succeeds.
std::function<bool()> Steps(std::vector<std::function<bool()>> steps);
// A step that chooses the menu entry captioned caption.
std::function<bool()> Menu(const wchar_t* caption);
// A step in the dialog captioned caption, once it is shown and takes input.
std::function<bool()> InDialog(const wchar_t* caption, std::function<void(HWND)> action);
// Clicks the button id of dialog, posted.
void Press(HWND dialog, int id);
void Type(HWND dialog, int id, const wchar_t* text);

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
