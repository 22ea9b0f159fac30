// The views' platform on Windows: the policy tree (left, 55 %) and the parts panel (right,
// 45 %) inside the policy view's window; in the registry view's window the key tree (left,
// 35 %), the value list (right, the upper 40 %) and below it the parts panel, which moves into
// the window of the view shown; the registry-value grid fills the window of display mode 2;
// popup menus tracked at the cursor, dialogs run modally over the control's window, and the
// host's message boxes. The view windows of the three display modes are the control's (it
// creates and places them); the platform puts the widgets into the first two, forwards their
// notifications and shows and hides them.
//
// The object exists before the windows: until Attach and after the windows go, the widgets
// do nothing and no view is visible, so that the control can hold it from construction.
#pragma once

#include <windows.h>

#include <array>

#include "ozWin32Grid.h"
#include "ozWin32List.h"
#include "ozWin32Panel.h"
#include "ozWin32Tree.h"
#include "ui/ozViewPlatform.h"

class ozWin32Platform final : public ozViewPlatform {
public:
    // The control number of the policy tree in the policy view's window.
    static constexpr int PolicyTreeId = 100;
    // The control number of the key tree in the registry view's window.
    static constexpr int RegistryTreeId = 101;
    // The share of the policy view's width the tree takes, in percent.
    static constexpr int TreeShare = 55;
    // The control number of the value list in the registry view's window, the share of the
    // width the key tree takes and the share of the height the value list takes, in percent.
    static constexpr int RegistryValuesId = 102;
    static constexpr int KeyTreeShare = 35;
    static constexpr int ValueListShare = 40;
    // The control number of the registry-value grid in its view's window.
    static constexpr int RegistryGridId = 103;

    // ui shows the messages (not owned; it must outlive the platform).
    explicit ozWin32Platform(ozHostUI& ui) : m_ui(ui) {}
    ~ozWin32Platform() override;
    ozWin32Platform(const ozWin32Platform&) = delete;
    ozWin32Platform& operator=(const ozWin32Platform&) = delete;

    // The control's window and its views (display modes 0 to 2), which must exist; instance is
    // the module with the bitmaps and window classes. Creates the tree and the panel in the
    // policy view and the key tree in the registry view; false, with nothing created, when they
    // cannot be created.
    bool Attach(HWND control, const std::array<HWND, 3>& views, HINSTANCE instance);
    // The windows went.
    void Forget();
    // Places the tree and the panel in the policy view and the key tree in the registry view
    // (after they were resized).
    void Layout();
    // Removes the window classes; a module about to be unloaded calls this.
    static void UnregisterClasses(HINSTANCE instance);

    ozWin32Tree& Tree() { return m_tree; }
    ozWin32Panel& Panel() { return m_panel; }
    ozWin32Tree& RegistryTree() override { return m_registryTree; }
    ozWin32List& RegistryValues() override { return m_registryValues; }
    ozWin32Grid& RegistryGrid() override { return m_registryGrid; }

    // ozViewPlatform
    ozHostUI& UI() override { return m_ui; }
    void ShowView(int displayMode, bool visible) override;
    ozTreeWidget& PolicyTree() override { return m_tree; }
    ozPanelWidget& PartsPanel() override { return m_panel; }
    void PopupMenu(const ozMenu& menu, std::function<void(unsigned int command)> chosen) override;
    void RunDialog(std::unique_ptr<ozDialog> dialog,
                   std::function<void(ozDialog& dialog, bool accepted)> ended) override;
    // The system's file-open dialog over the control's window.
    void AskOpenFile(const ozOpenFileQuestion& question,
                     std::function<void(const std::string& path)> chosen) override;
    // Owned by the view of displayMode (the control's window when it has none).
    std::unique_ptr<ozModelessDialog> OpenModeless(ozDialog& dialog, int displayMode) override;

private:
    // The view windows' subclass; its id is the view's display mode.
    static LRESULT CALLBACK ViewSubclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                         UINT_PTR displayMode, DWORD_PTR self);
    // The window that takes a view's focus, and the view's children's notifications.
    HWND FocusWindow(UINT_PTR displayMode) const;
    bool Notify(UINT_PTR displayMode, const NMHDR& header, LRESULT& result);

    ozHostUI& m_ui;
    HWND m_control = nullptr;
    std::array<HWND, 3> m_views = {};
    HINSTANCE m_instance = nullptr;
    ozWin32Tree m_tree;
    ozWin32Panel m_panel;
    ozWin32Tree m_registryTree;
    ozWin32List m_registryValues;
    ozWin32Grid m_registryGrid;
};
