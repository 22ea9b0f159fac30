// The views' platform in Qt: inside the host widget, the policy view's window holds the policy
// tree (left, 55 %) and the parts panel; the registry view's window the key tree (left, 35 %)
// and beside it the value list (the upper 40 %) above the parts panel, which moves into the
// window of the view shown; the registry-value grid fills the window of display mode 2. Popup
// menus open at the cursor, dialogs open application-modal over the host widget (or over the
// dialog on top), the file-open question is the Qt file dialog; each ends through its callback
// when the user ends it, as the headless platform's do. Message boxes go to the host user
// interface given.
//
// The platform owns its widgets; the host widget is not owned and must outlive the platform.
#pragma once

#include <QtCore/QPointer>
#include <array>
#include <functional>
#include <memory>
#include <vector>

#include "ozQtDialog.h"
#include "ozQtGrid.h"
#include "ozQtList.h"
#include "ozQtPanel.h"
#include "ozQtTree.h"
#include "ui/ozViewPlatform.h"

class QFileDialog;
class QMenu;
class QSplitter;
class QWidget;

class ozQtPlatform final : public ozViewPlatform {
public:
    // The views' windows go into host's layout (which the platform gives it); ui shows the
    // messages (not owned).
    ozQtPlatform(QWidget& host, ozHostUI& ui);
    ~ozQtPlatform() override;
    ozQtPlatform(const ozQtPlatform&) = delete;
    ozQtPlatform& operator=(const ozQtPlatform&) = delete;

    ozQtTree& Tree() { return m_tree; }
    ozQtPanel& Panel() { return m_panel; }
    // The window of a display mode's view.
    QWidget& ViewWindow(int displayMode) const;
    // The menu open now, the dialog on top and the open file dialog; null when none is open.
    QMenu* OpenMenu() const;
    ozQtDialogWindow* TopDialog() const;
    QFileDialog* OpenFileDialog() const;
    // Called after the user ended a menu, a dialog or a file question (the host checks what
    // changed).
    void AfterUserAction(std::function<void()> action) { m_afterUserAction = std::move(action); }

    // ozViewPlatform
    ozHostUI& UI() override { return m_ui; }
    void ShowView(int displayMode, bool visible) override;
    ozTreeWidget& PolicyTree() override { return m_tree; }
    ozPanelWidget& PartsPanel() override { return m_panel; }
    ozQtTree& RegistryTree() override { return m_registryTree; }
    ozQtList& RegistryValues() override { return m_registryValues; }
    ozQtGrid& RegistryGrid() override { return m_registryGrid; }
    void PopupMenu(const ozMenu& menu, std::function<void(unsigned int command)> chosen) override;
    void RunDialog(std::unique_ptr<ozDialog> dialog,
                   std::function<void(ozDialog& dialog, bool accepted)> ended) override;
    void AskOpenFile(const ozOpenFileQuestion& question,
                     std::function<void(const std::string& path)> chosen) override;
    std::unique_ptr<ozModelessDialog> OpenModeless(ozDialog& dialog, int displayMode) override;

private:
    void UserActed() const;

    QWidget& m_host;
    ozHostUI& m_ui;
    std::array<QWidget*, 3> m_windows{};
    QSplitter* m_policySplitter = nullptr;
    QSplitter* m_valueSplitter = nullptr;
    ozQtTree m_tree;
    ozQtPanel m_panel;
    ozQtTree m_registryTree;
    ozQtList m_registryValues;
    ozQtGrid m_registryGrid;
    QPointer<QMenu> m_menu;
    QPointer<QFileDialog> m_fileDialog;
    // The modal dialogs open now, the last on top.
    std::vector<QPointer<ozQtDialogWindow>> m_dialogs;
    std::function<void()> m_afterUserAction;
};
