#include "ozWin32Platform.h"

#include <commdlg.h>

#include <string>

#include "ozWin32Dialog.h"
#include "ozWin32Form.h"
#include "ozWin32Menu.h"

ozWin32Platform::~ozWin32Platform()
{
    for (UINT_PTR mode = 0; mode < m_views.size(); ++mode)
        if (m_views[mode] != nullptr)
            RemoveWindowSubclass(m_views[mode], ViewSubclass, mode);
}

bool ozWin32Platform::Attach(HWND control, const std::array<HWND, 3>& views, HINSTANCE instance)
{
    INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_TREEVIEW_CLASSES | ICC_LISTVIEW_CLASSES |
                                                        ICC_UPDOWN_CLASS | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&classes);
    m_instance = instance;
    if (!m_tree.Create(views[0], PolicyTreeId, instance))
        return false;
    if (!m_registryTree.Create(views[1], RegistryTreeId, instance)) {
        DestroyWindow(m_tree.Window());
        m_tree.Forget();
        return false;
    }
    if (!m_registryValues.Create(views[1], RegistryValuesId, instance)) {
        DestroyWindow(m_registryTree.Window());
        m_registryTree.Forget();
        DestroyWindow(m_tree.Window());
        m_tree.Forget();
        return false;
    }
    if (!m_registryGrid.Create(views[2], RegistryGridId, instance)) {
        DestroyWindow(m_registryValues.Window());
        m_registryValues.Forget();
        DestroyWindow(m_registryTree.Window());
        m_registryTree.Forget();
        DestroyWindow(m_tree.Window());
        m_tree.Forget();
        return false;
    }
    if (!m_panel.Create(views[0], instance)) {
        DestroyWindow(m_registryGrid.Window());
        m_registryGrid.Forget();
        DestroyWindow(m_registryValues.Window());
        m_registryValues.Forget();
        DestroyWindow(m_registryTree.Window());
        m_registryTree.Forget();
        DestroyWindow(m_tree.Window());
        m_tree.Forget();
        return false;
    }
    m_control = control;
    m_views = views;
    // Each view window's subclass knows its display mode by its id.
    for (UINT_PTR mode = 0; mode < views.size(); ++mode)
        SetWindowSubclass(views[mode], ViewSubclass, mode, reinterpret_cast<DWORD_PTR>(this));
    Layout();
    return true;
}

void ozWin32Platform::Forget()
{
    m_control = nullptr;
    m_views = {};
    m_tree.Forget();
    m_registryTree.Forget();
    m_registryValues.Forget();
    m_registryGrid.Forget();
}

void ozWin32Platform::UnregisterClasses(HINSTANCE instance)
{
    ozWin32Panel::UnregisterClass(instance);
}

void ozWin32Platform::Layout()
{
    if (m_views[0] == nullptr)
        return;
    RECT area;
    GetClientRect(m_views[0], &area);
    const int treeWidth = MulDiv(area.right, TreeShare, 100);
    MoveWindow(m_tree.Window(), 0, 0, treeWidth, area.bottom, TRUE);
    if (GetParent(m_panel.Window()) == m_views[0])
        MoveWindow(m_panel.Window(), treeWidth, 0, area.right - treeWidth, area.bottom, TRUE);
    GetClientRect(m_views[1], &area);
    const int keyTreeWidth = MulDiv(area.right, KeyTreeShare, 100);
    const int listHeight = MulDiv(area.bottom, ValueListShare, 100);
    MoveWindow(m_registryTree.Window(), 0, 0, keyTreeWidth, area.bottom, TRUE);
    MoveWindow(m_registryValues.Window(), keyTreeWidth, 0, area.right - keyTreeWidth, listHeight,
               TRUE);
    if (GetParent(m_panel.Window()) == m_views[1])
        MoveWindow(m_panel.Window(), keyTreeWidth, listHeight, area.right - keyTreeWidth,
                   area.bottom - listHeight, TRUE);
    GetClientRect(m_views[2], &area);
    MoveWindow(m_registryGrid.Window(), 0, 0, area.right, area.bottom, TRUE);
}

void ozWin32Platform::ShowView(int displayMode, bool visible)
{
    if (displayMode < 0 || displayMode >= static_cast<int>(m_views.size()) ||
        m_views[static_cast<size_t>(displayMode)] == nullptr)
        return;
    HWND view = m_views[static_cast<size_t>(displayMode)];
    if (!visible) {
        // The focus must not stay in a hidden window, where keys would go unseen.
        HWND focus = GetFocus();
        if (focus != nullptr && (focus == view || IsChild(view, focus)))
            SetFocus(m_control);
    }
    // The parts panel belongs to the policy view and to the registry view: it goes into the
    // window of the one shown.
    if (visible && displayMode != 2 && m_panel.Window() != nullptr &&
        GetParent(m_panel.Window()) != view)
        SetParent(m_panel.Window(), view);
    ShowWindow(view, visible ? SW_SHOW : SW_HIDE);
    if (visible)
        Layout();
}

void ozWin32Platform::PopupMenu(const ozMenu& menu,
                                std::function<void(unsigned int command)> chosen)
{
    HWND owner = m_views[0] != nullptr ? m_views[0] : m_control;
    if (owner == nullptr)
        return;
    unsigned int command = ozWin32TrackMenu(menu, owner, m_instance);
    if (command != 0 && chosen)
        chosen(command);
}

void ozWin32Platform::RunDialog(std::unique_ptr<ozDialog> dialog,
                                std::function<void(ozDialog& dialog, bool accepted)> ended)
{
    if (!dialog)
        return;
    bool accepted = ozWin32RunDialog(*dialog, m_control, m_instance);
    if (ended)
        ended(*dialog, accepted);
}

void ozWin32Platform::AskOpenFile(const ozOpenFileQuestion& question,
                                  std::function<void(const std::string& path)> chosen)
{
    // The filter's separators become the terminators the dialog expects.
    std::wstring filter = ozWin32Wide(question.filter);
    for (wchar_t& character : filter)
        if (character == L'|')
            character = L'\0';
    const std::wstring extension = ozWin32Wide(question.defaultExtension);
    wchar_t file[MAX_PATH] = {};
    OPENFILENAMEW open = {};
    open.lStructSize = sizeof open;
    open.hwndOwner = m_control;
    open.lpstrFilter = filter.c_str();
    open.nFilterIndex = 1;
    open.lpstrFile = file;
    open.nMaxFile = MAX_PATH;
    open.lpstrDefExt = extension.empty() ? nullptr : extension.c_str();
    open.Flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT | OFN_EXPLORER;
    if (GetOpenFileNameW(&open) && chosen)
        chosen(ozWin32Narrow(file));
}

std::unique_ptr<ozModelessDialog> ozWin32Platform::OpenModeless(ozDialog& dialog, int displayMode)
{
    HWND owner = displayMode >= 0 && displayMode < 3 && m_views[displayMode] != nullptr
                     ? m_views[displayMode]
                     : m_control;
    if (owner == nullptr)
        return nullptr;
    return ozWin32OpenModeless(dialog, owner, m_instance);
}

HWND ozWin32Platform::FocusWindow(UINT_PTR displayMode) const
{
    // A view's focus is its tree's (the registry view's: its key tree's), or its grid's.
    switch (displayMode) {
        case 0:
            return m_tree.Window();
        case 1:
            return m_registryTree.Window();
        default:
            return m_registryGrid.Window();
    }
}

bool ozWin32Platform::Notify(UINT_PTR displayMode, const NMHDR& header, LRESULT& result)
{
    switch (displayMode) {
        case 0:
            return m_tree.Notify(header, result);
        case 1:
            return m_registryTree.Notify(header, result) || m_registryValues.Notify(header, result);
        default:
            return m_registryGrid.Notify(header, result);
    }
}

LRESULT CALLBACK ozWin32Platform::ViewSubclass(HWND window, UINT message, WPARAM wParam,
                                               LPARAM lParam, UINT_PTR displayMode, DWORD_PTR self)
{
    auto* platform = reinterpret_cast<ozWin32Platform*>(self);
    switch (message) {
        case WM_SIZE:
            platform->Layout();
            break;
        case WM_SETFOCUS:
            if (HWND focus = platform->FocusWindow(displayMode)) {
                SetFocus(focus);
                return 0;
            }
            break;
        case WM_NOTIFY: {
            LRESULT result = 0;
            if (platform->Notify(displayMode, *reinterpret_cast<const NMHDR*>(lParam), result))
                return result;
            break;
        }
        case WM_NCDESTROY:
            RemoveWindowSubclass(window, ViewSubclass, displayMode);
            if (displayMode == 0) {
                platform->Forget();
            } else if (displayMode == 1) {
                platform->m_registryTree.Forget();
                platform->m_registryValues.Forget();
            } else {
                platform->m_registryGrid.Forget();
            }
            break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}
