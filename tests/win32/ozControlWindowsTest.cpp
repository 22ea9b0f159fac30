// The control window's children with a CADMCtrl of the test's own: their layout, the view of
// the display mode shown by Refresh (the dispatch interface has no display mode), the keys the
// pre-translation takes and where it sends them, and the thread's message hook counting its
// control windows. The embedded control's test (ozADMEmbeddingWindows.cpp) finds the children
// by their classes and checks Tab through the hook.
#include <gtest/gtest.h>

#include <windows.h>

#include <map>
#include <utility>
#include <vector>

#include "control/CADMCtrl.h"
#include "control/ozApplication.h"
#include "ozControlWindows.h"
#include "ozMessageHook.h"

namespace {

class SilentUI final : public ozHostUI {
public:
    bool ShowMessage(tHOSTMESSAGEKIND, const std::string&) override { return false; }
};

// The key messages each subclassed window received, as (message, key).
std::map<HWND, std::vector<std::pair<UINT, WPARAM>>> g_keys;
std::map<HWND, WNDPROC> g_originals;

LRESULT CALLBACK RecordingProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_KEYDOWN || message == WM_KEYUP)
        g_keys[window].emplace_back(message, wParam);
    return CallWindowProcW(g_originals[window], window, message, wParam, lParam);
}

void Record(HWND window)
{
    g_originals[window] = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(RecordingProc)));
}

bool Visible(HWND window)
{
    return (GetWindowLongPtrW(window, GWL_STYLE) & WS_VISIBLE) != 0;
}

RECT Placement(HWND window)
{
    RECT area;
    GetWindowRect(window, &area);
    MapWindowPoints(HWND_DESKTOP, GetParent(window), reinterpret_cast<POINT*>(&area), 2);
    return area;
}

bool Same(const RECT& a, const RECT& b)
{
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

MSG Message(HWND window, UINT message, WPARAM key)
{
    MSG result = {};
    result.hwnd = window;
    result.message = message;
    result.wParam = key;
    return result;
}

// The control window of the test: one top-level window for all tests (creating and
// destroying a shown top-level window costs seconds under a virtual display), holding the
// children of each test, with a control.
class ControlWindowsTest : public ::testing::Test, public ozHookClient {
protected:
    static void SetUpTestSuite()
    {
        host = CreateWindowExW(0, L"STATIC", L"ozADM windows test",
                               WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_VISIBLE, 0, 0, 320, 240,
                               nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    }
    static void TearDownTestSuite() { DestroyWindow(host); }
    void SetUp() override
    {
        g_keys.clear();
        g_originals.clear();
        ASSERT_NE(host, nullptr);
        SetWindowPos(host, nullptr, 0, 0, 320, 240, SWP_NOZORDER | SWP_NOMOVE);
        ASSERT_TRUE(windows.Create(host, GetModuleHandleW(nullptr)));
    }
    void TearDown() override
    {
        for (auto& [window, original] : g_originals)
            SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(original));
        for (HWND child : {windows.Frame(), windows.View(0), windows.View(1), windows.View(2),
                           windows.Keyboard()})
            DestroyWindow(child);
        windows.Forget();
        MSG message;
        while (PeekMessageW(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE))
            ;
    }

    const CADMCtrl* Control() const override { return &control; }
    bool PreTranslateMessage(const MSG& message) override
    {
        return windows.PreTranslateMessage(message);
    }

    static HWND host;
    SilentUI ui;
    ozControlWindows windows;
    CADMCtrl control{ui, &windows};
};

HWND ControlWindowsTest::host = nullptr;

TEST_F(ControlWindowsTest, FrameFillsTheClientAreaAndTheOthersLeaveAMargin)
{
    for (int size : {0, 1}) {
        if (size == 1) {
            SetWindowPos(host, nullptr, 0, 0, 500, 400, SWP_NOZORDER | SWP_NOMOVE);
            windows.Layout();
        }
        RECT client;
        GetClientRect(host, &client);
        EXPECT_TRUE(Same(Placement(windows.Frame()), client));
        RECT inner = {0, 0, client.right - 6, client.bottom - 6};
        for (HWND child : {windows.View(0), windows.View(1), windows.View(2), windows.Keyboard()})
            EXPECT_TRUE(Same(Placement(child), inner)) << size;
    }
}

TEST_F(ControlWindowsTest, TinyControlGivesTheViewsNoNegativeSize)
{
    SetWindowPos(host, nullptr, 0, 0, 0, 0, SWP_NOZORDER | SWP_NOMOVE);
    windows.Layout();
    RECT area = Placement(windows.View(1));
    EXPECT_GE(area.right, 0);
    EXPECT_GE(area.bottom, 0);
}

TEST_F(ControlWindowsTest, RefreshShowsTheViewOfTheDisplayModeOnly)
{
    EXPECT_TRUE(Visible(windows.Frame()));
    EXPECT_FALSE(Visible(windows.Keyboard()));
    for (int mode : {0, 1, 2})
        EXPECT_FALSE(windows.IsVisible(mode)) << "before the first layout";

    control.Refresh();
    EXPECT_TRUE(windows.IsVisible(DisplayRegistry));
    EXPECT_FALSE(windows.IsVisible(DisplayPolicies));
    EXPECT_FALSE(windows.IsVisible(DisplayValueGrid));

    for (int mode : {DisplayPolicies, DisplayValueGrid, DisplayRegistry, DisplayPolicies}) {
        control.DisplayMode(mode);
        control.Refresh();
        for (int other : {0, 1, 2})
            EXPECT_EQ(windows.IsVisible(other), other == mode) << mode << " " << other;
        EXPECT_EQ(Visible(windows.View(mode)), true);
    }
    EXPECT_FALSE(Visible(windows.Keyboard()));
}

TEST_F(ControlWindowsTest, AHiddenViewGivesUpTheFocus)
{
    control.Refresh();
    SetFocus(windows.View(DisplayRegistry));
    ASSERT_EQ(GetFocus(), windows.View(DisplayRegistry));
    control.DisplayMode(DisplayValueGrid);
    control.Refresh();
    EXPECT_NE(GetFocus(), windows.View(DisplayRegistry));
}

TEST_F(ControlWindowsTest, ViewsWithoutWindowsAreLeftAlone)
{
    ozControlWindows none;
    EXPECT_EQ(none.View(1), nullptr);
    none.Show(1, nullptr, true, true);
    none.Hide(1);
    none.Layout();
    EXPECT_FALSE(none.IsVisible(1));
    EXPECT_FALSE(none.PreTranslateMessage(Message(host, WM_KEYDOWN, VK_TAB)));
}

TEST_F(ControlWindowsTest, EndHomeAndArrowsGoToTheFocus)
{
    control.Refresh();
    HWND view = windows.View(DisplayRegistry);
    Record(view);
    Record(host);
    SetFocus(view);
    ASSERT_EQ(GetFocus(), view);
    for (WPARAM key = VK_END; key <= VK_DOWN; ++key) {
        EXPECT_TRUE(windows.PreTranslateMessage(Message(host, WM_KEYDOWN, key))) << key;
        EXPECT_TRUE(windows.PreTranslateMessage(Message(host, WM_KEYUP, key))) << key;
    }
    ASSERT_EQ(g_keys[view].size(), 12u);
    EXPECT_EQ(g_keys[view][0], std::make_pair(UINT{WM_KEYDOWN}, WPARAM{VK_END}));
    EXPECT_EQ(g_keys[view][11], std::make_pair(UINT{WM_KEYUP}, WPARAM{VK_DOWN}));
    EXPECT_TRUE(g_keys[host].empty());
}

TEST_F(ControlWindowsTest, OtherKeysAndOtherWindowsAreNotTaken)
{
    control.Refresh();
    SetFocus(windows.View(DisplayRegistry));
    for (WPARAM key :
         {WPARAM{'A'}, WPARAM{VK_PRIOR}, WPARAM{VK_NEXT}, WPARAM{VK_INSERT}, WPARAM{VK_RETURN}})
        EXPECT_FALSE(windows.PreTranslateMessage(Message(host, WM_KEYDOWN, key))) << key;
    EXPECT_FALSE(windows.PreTranslateMessage(Message(host, WM_CHAR, VK_TAB)));
    EXPECT_FALSE(windows.PreTranslateMessage(Message(host, WM_SYSKEYDOWN, VK_LEFT)));

    HWND stranger = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPED, 0, 0, 10, 10, nullptr,
                                    nullptr, GetModuleHandleW(nullptr), nullptr);
    EXPECT_FALSE(windows.PreTranslateMessage(Message(stranger, WM_KEYDOWN, VK_TAB)));
    EXPECT_FALSE(windows.PreTranslateMessage(Message(nullptr, WM_KEYDOWN, VK_TAB)));
    DestroyWindow(stranger);
}

TEST_F(ControlWindowsTest, HookCountsItsControlWindows)
{
    ASSERT_FALSE(ozMessageHook::Installed());
    ASSERT_EQ(ozMessageHook::Users(), 0);
    ControlWindowsTest& first = *this;
    SilentUI otherUI;
    CADMCtrl other(otherUI);
    struct OtherClient final : ozHookClient {
        const CADMCtrl* control;
        const CADMCtrl* Control() const override { return control; }
        bool PreTranslateMessage(const MSG&) override { return false; }
    } second;
    second.control = &other;

    EXPECT_TRUE(ozMessageHook::Attach(first));
    EXPECT_TRUE(ozMessageHook::Installed());
    EXPECT_TRUE(ozMessageHook::Attach(second));
    EXPECT_EQ(ozMessageHook::Users(), 2);
    ozMessageHook::Detach(first);
    EXPECT_TRUE(ozMessageHook::Installed()) << "one control window still uses it";
    EXPECT_EQ(ozMessageHook::Users(), 1);
    ozMessageHook::Detach(second);
    EXPECT_FALSE(ozMessageHook::Installed());
    EXPECT_EQ(ozMessageHook::Users(), 0);
}

// Messages taken from the queue: the hook offers them to the current control only.
TEST_F(ControlWindowsTest, HookTurnsWhatTheCurrentControlHandledIntoNothing)
{
    control.Refresh();
    Record(windows.Keyboard());
    ASSERT_TRUE(ozMessageHook::Attach(*this));
    MSG message = {};

    // This fixture's control was constructed last: it is the current one.
    ASSERT_EQ(ozApplication::Instance().CurrentControl(), &control);
    PostMessageW(host, WM_KEYDOWN, VK_TAB, 0);
    ASSERT_TRUE(PeekMessageW(&message, host, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_NULL));
    EXPECT_EQ(g_keys[windows.Keyboard()].size(), 1u);

    PostMessageW(host, WM_KEYDOWN, 'A', 0);
    ASSERT_TRUE(PeekMessageW(&message, host, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_KEYDOWN)) << "not handled: left as it was";

    // Looking without removing leaves the message for later.
    PostMessageW(host, WM_KEYDOWN, VK_TAB, 0);
    ASSERT_TRUE(PeekMessageW(&message, host, WM_KEYFIRST, WM_KEYLAST, PM_NOREMOVE));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_KEYDOWN));
    EXPECT_EQ(g_keys[windows.Keyboard()].size(), 1u);
    PeekMessageW(&message, host, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE);
    EXPECT_EQ(g_keys[windows.Keyboard()].size(), 2u);

    {
        // Another control constructed later is the current one: this one's keys pass.
        SilentUI otherUI;
        CADMCtrl later(otherUI);
        PostMessageW(host, WM_KEYDOWN, VK_TAB, 0);
        ASSERT_TRUE(PeekMessageW(&message, host, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE));
        EXPECT_EQ(message.message, static_cast<UINT>(WM_KEYDOWN));
    }
    ozMessageHook::Detach(*this);
    EXPECT_FALSE(ozMessageHook::Installed());
}

}  // namespace
