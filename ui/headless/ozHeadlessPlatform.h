// The views' platform in memory: a headless policy tree, parts panel and registry key tree,
// the last popup menu waiting for a choice, and the open dialogs (the last one opened on top)
// waiting to be ended. Message boxes go to the host user interface given.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ozHeadlessForm.h"
#include "ozHeadlessGrid.h"
#include "ozHeadlessList.h"
#include "ozHeadlessTree.h"
#include "ui/ozViewPlatform.h"

class ozHeadlessPlatform final : public ozViewPlatform {
public:
    explicit ozHeadlessPlatform(ozHostUI& ui);
    ~ozHeadlessPlatform() override;

    // The policy view's tree.
    ozHeadlessTree& Tree() { return m_tree; }
    ozHeadlessForm& Panel() { return m_panel; }
    // Whether the window of a display mode is shown.
    bool ViewShown(int displayMode) const;

    // The menu shown last and not yet chosen from; null when none is open.
    const ozMenu* OpenMenu() const { return m_menuOpen ? &m_menu : nullptr; }
    // Chooses the entry at captionPath ("New\Policy" for a submenu's entry) of the open menu,
    // which closes. False, leaving the menu open, when there is no such entry or it is not
    // enabled.
    bool Choose(const std::string& captionPath);
    // Closes the open menu without a choice.
    void DismissMenu() { m_menuOpen = false; }

    // The dialog on top and its controls; null when no dialog is open.
    ozDialog* TopDialog() const;
    ozHeadlessForm* TopForm() const;
    // Ends the dialog on top as the OK or Cancel button does: OK asks the dialog to accept and
    // keeps it open when it does not. False when no dialog is open or OK was refused.
    bool EndDialog(bool accept);
    // Presses a push button of the dialog on top; OK and Cancel end it as EndDialog does.
    bool ClickDialogButton(int id);

    // ozViewPlatform
    ozHostUI& UI() override { return m_ui; }
    void ShowView(int displayMode, bool visible) override;
    ozTreeWidget& PolicyTree() override { return m_tree; }
    ozPanelWidget& PartsPanel() override { return m_panel; }
    ozHeadlessTree& RegistryTree() override { return m_registryTree; }
    ozHeadlessList& RegistryValues() override { return m_registryValues; }
    ozHeadlessGrid& RegistryGrid() override { return m_registryGrid; }
    void PopupMenu(const ozMenu& menu, std::function<void(unsigned int command)> chosen) override;
    void RunDialog(std::unique_ptr<ozDialog> dialog,
                   std::function<void(ozDialog& dialog, bool accepted)> ended) override;
    void AskOpenFile(const ozOpenFileQuestion& question,
                     std::function<void(const std::string& path)> chosen) override;
    // A modeless dialog is one of the open dialogs while shown; ending it hides it.
    std::unique_ptr<ozModelessDialog> OpenModeless(ozDialog& dialog, int displayMode) override;

private:
    struct OpenDialog;
    class Modeless;

    ozHostUI& m_ui;
    ozHeadlessTree m_tree;
    ozHeadlessForm m_panel;
    ozHeadlessTree m_registryTree;
    ozHeadlessList m_registryValues;
    ozHeadlessGrid m_registryGrid;
    bool m_shown[3] = {false, false, false};
    ozMenu m_menu;
    bool m_menuOpen = false;
    std::function<void(unsigned int)> m_chosen;
    std::vector<std::unique_ptr<OpenDialog>> m_dialogs;
};
