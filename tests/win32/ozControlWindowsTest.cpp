// The control window's children with a CADMCtrl of the test's own, for what a container cannot
// reach: the view of each display mode shown by Refresh (the dispatch interface has no display
// mode), a control too small for the margin, and the thread's message hook counting its control
// windows. Layout, keys and the hook inside a message loop are checked through the embedded
// control (ozADMEmbeddingClient.cpp). Also the policy queries' string arrays as VARIANTs, which
// the script engines under test cannot index.
#include <gtest/gtest.h>

#include <windows.h>

#include "control/CADMCtrl.h"
#include "ozControlWindows.h"
#include "ozMessageHook.h"
#include "ozVariantText.h"
#include "tests/support/ozRecordingHostUI.h"
#include "ui/ozViews.h"
#include "ui/win32/ozWin32Platform.h"

namespace {

struct HookClient final : ozHookClient {
    const CADMCtrl* control = nullptr;
    const CADMCtrl* Control() const override { return control; }
    bool PreTranslateMessage(const MSG&) override { return false; }
};

bool Visible(HWND window)
{
    return (GetWindowLongPtrW(window, GWL_STYLE) & WS_VISIBLE) != 0;
}

// One shown top-level window for all tests (creating and destroying one costs seconds under a
// virtual display), holding the children of each test.
class ControlWindowsTest : public ::testing::Test {
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
        ASSERT_NE(host, nullptr);
        SetWindowPos(host, nullptr, 0, 0, 320, 240, SWP_NOZORDER | SWP_NOMOVE);
        ASSERT_TRUE(windows.Create(host, GetModuleHandleW(nullptr)));
        ASSERT_TRUE(platform.Attach(host, windows.Views(), GetModuleHandleW(nullptr)));
        views.Attach(control);
    }
    void TearDown() override
    {
        for (HWND child : {windows.Frame(), windows.View(0), windows.View(1), windows.View(2),
                           windows.Keyboard()})
            DestroyWindow(child);
        windows.Forget();
    }

    static HWND host;
    ozRecordingHostUI ui;
    ozControlWindows windows;
    ozWin32Platform platform{ui};
    ozViews views{platform};
    CADMCtrl control{ui, &views};
};

HWND ControlWindowsTest::host = nullptr;

TEST_F(ControlWindowsTest, TinyControlGivesTheViewsNoNegativeSize)
{
    SetWindowPos(host, nullptr, 0, 0, 0, 0, SWP_NOZORDER | SWP_NOMOVE);
    windows.Layout();
    RECT area;
    GetWindowRect(windows.View(1), &area);
    EXPECT_GE(area.right, area.left);
    EXPECT_GE(area.bottom, area.top);
}

TEST_F(ControlWindowsTest, RefreshShowsTheViewOfTheDisplayModeOnly)
{
    for (int mode : {0, 1, 2})
        EXPECT_FALSE(Visible(windows.View(mode))) << "before the first layout";
    control.Refresh();
    // The registry view hands its focus on to its key tree.
    HWND registryView = windows.View(DisplayRegistry);
    SetFocus(registryView);
    ASSERT_TRUE(IsChild(registryView, GetFocus()));
    for (int mode : {DisplayPolicies, DisplayValueGrid, DisplayRegistry, DisplayPolicies}) {
        control.DisplayMode(mode);
        control.Refresh();
        for (int other : {0, 1, 2})
            EXPECT_EQ(Visible(windows.View(other)), other == mode) << mode << " " << other;
        EXPECT_FALSE(Visible(windows.Keyboard()));
    }
    EXPECT_FALSE(GetFocus() == registryView || IsChild(registryView, GetFocus()))
        << "a hidden view gives up the focus";
}

TEST_F(ControlWindowsTest, HookCountsItsControlWindows)
{
    ASSERT_FALSE(ozMessageHook::Installed());
    HookClient first, second;
    EXPECT_TRUE(ozMessageHook::Attach(first));
    EXPECT_TRUE(ozMessageHook::Attach(second));
    EXPECT_EQ(ozMessageHook::Users(), 2);
    ozMessageHook::Detach(first);
    EXPECT_TRUE(ozMessageHook::Installed()) << "one control window still uses it";
    ozMessageHook::Detach(second);
    EXPECT_FALSE(ozMessageHook::Installed());
    EXPECT_EQ(ozMessageHook::Users(), 0);
}

TEST(StringArrayVariantTest, NoArrayAnEmptyOneAndStrings)
{
    VARIANT value;
    VariantInit(&value);
    ASSERT_EQ(ozStringArrayVariant(ozStringArray(), &value), S_OK);
    EXPECT_EQ(value.vt, VT_EMPTY);
    for (const std::vector<std::string>& strings :
         {std::vector<std::string>{}, {"+ USER\\Desktop\\High-contrast colors", "- x"}}) {
        ASSERT_EQ(ozStringArrayVariant(ozStringArray(strings), &value), S_OK);
        ASSERT_EQ(value.vt, VT_ARRAY | VT_BSTR);
        LONG lower = -1, upper = -2;
        SafeArrayGetLBound(value.parray, 1, &lower);
        SafeArrayGetUBound(value.parray, 1, &upper);
        EXPECT_EQ(SafeArrayGetDim(value.parray), 1u);
        EXPECT_EQ(lower, 0);
        ASSERT_EQ(upper + 1, static_cast<LONG>(strings.size()));
        for (LONG index = 0; index <= upper; ++index) {
            BSTR element = nullptr;
            ASSERT_EQ(SafeArrayGetElement(value.parray, &index, &element), S_OK);
            EXPECT_EQ(ozTextOf(element), strings[index]);
            SysFreeString(element);
        }
        VariantClear(&value);
    }
}

}  // namespace
