#include "ozWin32Platform.h"

#include <commdlg.h>

#include <string>

#include "ozWin32Dialog.h"
#include "ozWin32Form.h"
#include "ozWin32Menu.h"

ozWin32Platform::~ozWin32Platform()
{
    if (m_views[0] != nullptr)
        RemoveWindowSubclass(m_views[0], PolicyViewSubclass, 0);
    if (m_views[1] != nullptr)
        RemoveWindowSubclass(m_views[1], RegistryViewSubclass, 0);
    if (m_views[2] != nullptr)
        RemoveWindowSubclass(m_views[2], ValueGridSubclass, 0);
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
    SetWindowSubclass(views[0], PolicyViewSubclass, 0, reinterpret_cast<DWORD_PTR>(this));
    SetWindowSubclass(views[1], RegistryViewSubclass, 0, reinterpret_cast<DWORD_PTR>(this));
    SetWindowSubclass(views[2], ValueGridSubclass, 0, reinterpret_cast<DWORD_PTR>(this));
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

LRESULT CALLBACK ozWin32Platform::PolicyViewSubclass(HWND window, UINT message, WPARAM wParam,
                                                     LPARAM lParam, UINT_PTR, DWORD_PTR self)
{
    auto* platform = reinterpret_cast<ozWin32Platform*>(self);
    switch (message) {
        case WM_SIZE:
            platform->Layout();
            break;
        case WM_SETFOCUS:
            // The view's focus is its tree's.
            if (platform->m_tree.Window() != nullptr) {
                SetFocus(platform->m_tree.Window());
                return 0;
            }
            break;
        case WM_NOTIFY: {
            LRESULT result = 0;
            if (platform->m_tree.Notify(*reinterpret_cast<const NMHDR*>(lParam), result))
                return result;
            break;
        }
        case WM_NCDESTROY:
            RemoveWindowSubclass(window, PolicyViewSubclass, 0);
            platform->Forget();
            break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

LRESULT CALLBACK ozWin32Platform::RegistryViewSubclass(HWND window, UINT message, WPARAM wParam,
                                                       LPARAM lParam, UINT_PTR, DWORD_PTR self)
{
    auto* platform = reinterpret_cast<ozWin32Platform*>(self);
    switch (message) {
        case WM_SIZE:
            platform->Layout();
            break;
        case WM_SETFOCUS:
            // The view's focus is its key tree's.
            if (platform->m_registryTree.Window() != nullptr) {
                SetFocus(platform->m_registryTree.Window());
                return 0;
            }
            break;
        case WM_NOTIFY: {
            LRESULT result = 0;
            const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
            if (platform->m_registryTree.Notify(header, result) ||
                platform->m_registryValues.Notify(header, result))
                return result;
            break;
        }
        case WM_NCDESTROY:
            RemoveWindowSubclass(window, RegistryViewSubclass, 0);
            platform->m_registryTree.Forget();
            platform->m_registryValues.Forget();
            break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

LRESULT CALLBACK ozWin32Platform::ValueGridSubclass(HWND window, UINT message, WPARAM wParam,
                                                    LPARAM lParam, UINT_PTR, DWORD_PTR self)
{
    auto* platform = reinterpret_cast<ozWin32Platform*>(self);
    switch (message) {
        case WM_SIZE:
            platform->Layout();
            break;
        case WM_SETFOCUS:
            // The view's focus is its grid's.
            if (platform->m_registryGrid.Window() != nullptr) {
                SetFocus(platform->m_registryGrid.Window());
                return 0;
            }
            break;
        case WM_NOTIFY: {
            LRESULT result = 0;
            if (platform->m_registryGrid.Notify(*reinterpret_cast<const NMHDR*>(lParam), result))
                return result;
            break;
        }
        case WM_NCDESTROY:
            RemoveWindowSubclass(window, ValueGridSubclass, 0);
            platform->m_registryGrid.Forget();
            break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}
