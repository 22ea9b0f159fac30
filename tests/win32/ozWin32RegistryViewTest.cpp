// The registry view's key tree in the real tree control, driven through its messages: a large
// tree filled (how long it takes is reported) with its images, real profiles of both trees
// (a picture), the key menu drawn with its pictures, the operations, the legend with the view's
// images (a picture), New, Rename with a refusal, and Delete after the question.
#include <chrono>
#include <cstdio>
#include <utility>

#include "core/adm/ozADMTree.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozSubKey.h"
#include "ozWin32ViewsFixture.h"
#include "ui/ozImages.h"
#include "ui/ozLegendDialog.h"
#include "ui/ozRegistryView.h"

namespace {

class Win32RegistryViewTest : public Win32ViewsTest {
protected:
    void SetUp() override
    {
        Win32ViewsTest::SetUp();
        for (const auto& [number, text] : Texts)
            control.AddString(number, text);
    }
    // Host texts are the process's: the tests after these see none.
    void TearDown() override
    {
        for (const auto& [number, text] : Texts)
            control.AddString(number, "");
        Win32ViewsTest::TearDown();
    }
    // The legend's labels (66 to 73) and the texts the menu and the view show; the operation
    // entries keep their own captions.
    static constexpr std::pair<unsigned short, const char*> Texts[] = {
        {66, "Key not saved"},
        {67, "Key saved"},
        {68, "Key deleted"},
        {69, "Template key not saved"},
        {70, "Template key saved"},
        {71, "Template key deleted"},
        {72, "Key's values erased"},
        {73, "Template key's values erased"},
        {HostTextUserKeys, "User configuration"},
        {HostTextMachineKeys, "Machine configuration"},
        {HostTextNewKeyName, "New key"},
        {HostTextKeyNameRefused, "refused"},
        {ozLegendDialog::CaptionText, "Legend"},
        {11, "Name"},
        {23, "Data"}};
    ozWin32Tree& Keys() { return platform.RegistryTree(); }
    HWND KeysWindow() { return Keys().Window(); }
    void ShowKeys()
    {
        control.DisplayMode(DisplayRegistry);
        control.Refresh();
        Pump();
    }
    // Expands the items on the way to path, as the user's clicks do, and selects its item.
    ozTreeItem SelectKey(const std::string& path)
    {
        for (std::size_t end = path.find('\\'); end != std::string::npos;
             end = path.find('\\', end + 1))
            TreeView_Expand(KeysWindow(),
                            reinterpret_cast<HTREEITEM>(Item(Keys(), path.substr(0, end))),
                            TVE_EXPAND);
        ozTreeItem item = Item(Keys(), path);
        TreeView_SelectItem(KeysWindow(), reinterpret_cast<HTREEITEM>(item));
        TreeView_EnsureVisible(KeysWindow(), reinterpret_cast<HTREEITEM>(item));
        Pump();
        return item;
    }
    void KeyDown(WPARAM key)
    {
        SendMessageW(KeysWindow(), WM_KEYDOWN, key, 0);
        Pump();
    }
    // A right click on the selected item's label, with the user choosing from the menu.
    void ChooseFromKeyMenu(std::function<bool()> user)
    {
        RECT label = {};
        ozTreeItem item = Keys().Selection();
        std::memcpy(&label, &item, sizeof item);
        SendMessageW(KeysWindow(), TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&label));
        POINT point = {label.left + 4, (label.top + label.bottom) / 2}, screen = point;
        ClientToScreen(KeysWindow(), &screen);
        SetCursorPos(screen.x, screen.y);
        WithUser(std::move(user), [&] {
            PostMessageW(KeysWindow(), WM_RBUTTONUP, 0, MAKELPARAM(point.x, point.y));
            SendMessageW(KeysWindow(), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(point.x, point.y));
            Pump();
        });
    }
    // Renames the item being edited to text.
    void EndEdit(const wchar_t* text)
    {
        HWND edit = TreeView_GetEditControl(KeysWindow());
        ASSERT_NE(edit, nullptr);
        SetWindowTextW(edit, text);
        TreeView_EndEditLabelNow(KeysWindow(), FALSE);
        Pump();
    }
    ozSubKey& UserKey(const char* path)
    {
        return *control.Code()->tree->UsrTree().FindKey(HKEY_CURRENT_USER, path);
    }
};

TEST_F(Win32RegistryViewTest, ALargeTreeFillsInTimeWithItsImages)
{
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
    std::printf("filling the registry view with 100000 keys: %lld ms\n",
                static_cast<long long>(elapsed.count()));
    Pump();
    EXPECT_TRUE(IsWindowVisible(KeysWindow()));
    EXPECT_EQ(Keys().Text(Keys().Root()), "Machine configuration");
    ozTreeItem sub =
        SelectKey("Machine configuration\\HKEY_LOCAL_MACHINE\\Software\\Bulk\\Key 999\\Sub 99");
    ASSERT_NE(sub, ozNoItem);
    EXPECT_EQ(Keys().Image(sub), RegKeyImageNotSaved);
    EXPECT_EQ(Keys().Text(Keys().FirstChild(Keys().Parent(Keys().Parent(sub)))), "Key 000");
}

TEST_F(Win32RegistryViewTest, RealProfilesOfBothTrees)
{
    control.ozImpExLibrary(ozPlatformPath(OZ_POL_LIBRARY));
    ASSERT_TRUE(control.Load(ozCorpusPath("pol/shb_ie_user.pol").c_str(),
                             ozCorpusPath("pol/shb_chrome_machine.pol").c_str()));
    ShowKeys();
    SelectKey(
        "User configuration\\HKEY_CURRENT_USER\\Software\\Policies\\Microsoft\\Internet "
        "Explorer\\Main");
    SelectKey(
        "Machine configuration\\HKEY_LOCAL_MACHINE\\Software\\Policies\\Google\\Chrome\\"
        "URLBlacklist");
    SetFocus(KeysWindow());
    Screenshot(host, "registry-view");
}

TEST_F(Win32RegistryViewTest, TheKeyMenuLegendNewRenameDeleteAndOperations)
{
    UserKey("Software\\Policies\\ozADM\\Desktop").ADM(true);
    ShowKeys();
    SelectKey("User configuration\\HKEY_CURRENT_USER\\Software\\Policies\\ozADM\\Desktop");
    const struct {
        const wchar_t* entry;
        bool save;
        char op;
        int image;
    } operations[] = {{L"Operation: l\u00f6s&chen", true, 'D', RegKeyImageTemplateDelete},
                      {L"Operation: n&icht speichern", false, 'I', RegKeyImageTemplateNotSaved},
                      {L"Operation: &speichern", true, 'I', RegKeyImageTemplateSaved}};
    for (const auto& operation : operations) {
        ChooseFromKeyMenu(Steps({[&] {
                                     int at = 0;
                                     HWND menu = MenuWith(operation.entry, at);
                                     if (menu != nullptr && operation.op == 'I' && operation.save)
                                         Screenshot(menu, "key-menu");
                                     return menu != nullptr;
                                 },
                                 Menu(operation.entry)}));
        ozSubKey& desktop = UserKey("Software\\Policies\\ozADM\\Desktop");
        EXPECT_TRUE(desktop.Save() == operation.save && desktop.Op() == operation.op);
        EXPECT_EQ(Keys().Image(Keys().Selection()), operation.image);
    }
    // The caption names the key's state and opens the legend with the view's images.
    ChooseFromKeyMenu(Steps({Menu(L"Template key saved"), InDialog(L"Legend", [](HWND dialog) {
                                 Screenshot(dialog, "legend-images");
                                 Press(dialog, IDOK);
                             })}));

    // Insert makes "New key 1" below the selection; F2 renames it, not to a sibling's name.
    KeyDown(VK_INSERT);
    ozTreeItem made = Keys().Selection();
    EXPECT_EQ(Keys().Text(made), "New key 1");
    KeyDown(VK_F2);
    EndEdit(L"style");
    EXPECT_EQ(ui.messages.back().text, "refused");
    EXPECT_EQ(Keys().Text(made), "New key 1");
    KeyDown(VK_F2);
    EndEdit(L"Fonts");
    EXPECT_EQ(Keys().Text(made), "Fonts");
    EXPECT_NE(control.Code()->tree->UsrTree().HasKey(HKEY_CURRENT_USER,
                                                     "Software\\Policies\\ozADM\\Desktop\\Fonts"),
              nullptr);

    // Delete asks first; the key goes on Yes.
    ui.answerYes = true;
    KeyDown(VK_DELETE);
    EXPECT_EQ(ui.messages.back().kind, HostMessageQuestion);
    EXPECT_EQ(Item(Keys(),
                   "User configuration\\HKEY_CURRENT_USER\\Software\\Policies\\ozADM\\"
                   "Desktop\\Fonts"),
              ozNoItem);
    EXPECT_TRUE(control.ShouldSave());
}

}  // namespace
