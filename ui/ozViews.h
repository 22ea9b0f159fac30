// The control's views on a platform: the policy view with its parts panel (display mode 0),
// the registry view (1) and the registry-value grid (2). The
// control reaches them through ozControlViews; hosts and tests reach the views themselves to
// drive them as a user does.
#pragma once

#include <memory>

#include "control/ozControlViews.h"
#include "ozPartsPanel.h"
#include "ozPolicyView.h"
#include "ozRegistryValueList.h"
#include "ozRegistryView.h"
#include "ozSearchSheet.h"
#include "ozValueGrid.h"

class CADMCtrl;
class ozViewPlatform;

class ozViews final : public ozControlViews {
public:
    // The widgets are the platform's; they must outlive the views.
    explicit ozViews(ozViewPlatform& platform);

    // The control the views belong to; call once it exists, before it shows anything.
    void Attach(CADMCtrl& control);

    ozPolicyView& PolicyView() { return m_policyView; }
    ozPartsPanel& PartsPanel() { return m_panel; }
    ozRegistryView& RegistryView() { return m_registryView; }
    ozRegistryValueList& ValueList() { return m_valueList; }
    ozValueGrid& ValueGrid() { return m_grid; }
    // The display mode whose view is visible, or -1 for none.
    int VisibleMode() const { return m_visibleMode; }

    // Search and replace: the grid's cells they work on (not owned; null while there is no
    // grid), with the search state kept for them, and the sheet "Suchen" (null before Attach).
    void SearchCells(ozGridCells* cells);
    ozSearchReplace* SearchState() { return m_searchState.get(); }
    ozSearchSheet* SearchSheet() { return m_searchSheet.get(); }

    // ozControlViews
    void Show(int displayMode, tTreeCodeHandle* code, bool showUser, bool showMachine) override;
    void Hide(int displayMode) override;
    bool IsVisible(int displayMode) const override;
    bool CommitPartsPanel() override;
    void ClearPartsPanel() override;
    void MarkSelection(int displayMode) override;
    void StorePendingEdit(int displayMode) override;
    void WithADMEdit(bool withEdit) override;
    bool GridInsert() override { return m_grid.Insert(); }
    bool GridDelete() override { return m_grid.Delete(); }
    bool ShowSearch() override;
    bool ShowReplace() override;
    bool HideSearch() override;
    void AskRegistryImport(const RegistryImport& request, RegistryAnswer ended) override;
    void ShowLegend() override;
    void ShowAbout() override;

private:
    ozViewPlatform& m_platform;
    CADMCtrl* m_control = nullptr;
    ozPartsPanel m_panel;
    ozPolicyView m_policyView;
    ozRegistryView m_registryView;
    ozRegistryValueList m_valueList;
    ozValueGrid m_grid;
    int m_visibleMode = -1;
    std::unique_ptr<ozSearchReplace> m_searchState;
    std::unique_ptr<ozSearchSheet> m_searchSheet;
};
