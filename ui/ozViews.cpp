#include "ozViews.h"

#include "control/CADMCtrl.h"
#include "control/ozApplication.h"
#include "core/registry/ozRegKey.h"
#include "ozImportRegistryDialog.h"
#include "ozLegendDialog.h"
#include "ozViewPlatform.h"

ozViews::ozViews(ozViewPlatform& platform)
    : m_platform(platform),
      m_panel(platform),
      m_policyView(platform, m_panel),
      m_registryView(platform),
      m_valueList(platform, m_panel),
      m_grid(platform)
{
}

void ozViews::Attach(CADMCtrl& control)
{
    m_control = &control;
    m_panel.Control(&control);
    m_policyView.Control(&control);
    m_policyView.Views(this);
    m_policyView.WithADMEdit(control.WithADMEdit());
    m_policyView.Create();
    m_registryView.Control(&control);
    m_registryView.Create();
    // The value list beside the key tree: a new selection empties the parts panel and shows a
    // sub key's values; a root key or group item keeps the list as it is.
    m_valueList.Control(&control);
    m_valueList.Create();
    m_registryView.OnKeySelected([this](ozRegKey* key) {
        m_panel.Clear();
        if (key != nullptr && key->Type() == KeySub)
            m_valueList.ShowKey(key);
    });
    m_grid.Control(&control);
    m_grid.Create();
    m_registryView.OnKeysCleared([this] {
        if (m_panel.Value() != nullptr)
            m_panel.Clear();
        m_valueList.ShowKey(nullptr);
    });
    m_searchSheet = std::make_unique<ozSearchSheet>(m_platform, control,
                                                    [this] { return m_searchState.get(); });
    // One search state for the grid, which lives as long as the views.
    SearchCells(&m_grid);
}

void ozViews::SearchCells(ozGridCells* cells)
{
    if (m_searchSheet != nullptr)
        m_searchSheet->Hide();
    m_searchState = cells != nullptr ? std::make_unique<ozSearchReplace>(*cells) : nullptr;
}

bool ozViews::ShowSearch()
{
    return IsVisible(DisplayValueGrid) && m_searchSheet != nullptr &&
           m_searchSheet->ShowPage(ozSearchSheet::SearchPage);
}

bool ozViews::ShowReplace()
{
    return IsVisible(DisplayValueGrid) && m_searchSheet != nullptr &&
           m_searchSheet->ShowPage(ozSearchSheet::ReplacePage);
}

bool ozViews::HideSearch()
{
    return IsVisible(DisplayValueGrid) && m_searchSheet != nullptr && m_searchSheet->Hide();
}

void ozViews::Show(int displayMode, tTreeCodeHandle* code, bool showUser, bool showMachine)
{
    // Whichever view is shown, the policy view lets go of a code object that goes.
    if (displayMode == DisplayPolicies || code == nullptr)
        m_policyView.Fill(code, showUser, showMachine);
    // The registry view keeps no items while another view is shown: the registry trees may
    // be rebuilt meanwhile (a profile loaded), and it is filled again when shown.
    m_registryView.Fill(displayMode == DisplayRegistry ? code : nullptr, showUser, showMachine);
    // So does the grid, whose rows point into the registry trees.
    m_grid.Fill(displayMode == DisplayValueGrid ? code : nullptr, showUser, showMachine);
    if (m_visibleMode != displayMode && m_visibleMode != -1)
        m_platform.ShowView(m_visibleMode, false);
    // The search sheet belongs to the grid: it goes with it.
    if (displayMode != DisplayValueGrid && m_searchSheet != nullptr)
        m_searchSheet->Hide();
    m_platform.ShowView(displayMode, true);
    m_visibleMode = displayMode;
}

void ozViews::Hide(int displayMode)
{
    m_platform.ShowView(displayMode, false);
    if (m_visibleMode == displayMode)
        m_visibleMode = -1;
    if (displayMode == DisplayValueGrid && m_searchSheet != nullptr)
        m_searchSheet->Hide();
}

bool ozViews::IsVisible(int displayMode) const
{
    return m_visibleMode == displayMode;
}

bool ozViews::CommitPartsPanel()
{
    return m_panel.Commit();
}

void ozViews::ClearPartsPanel()
{
    m_panel.Clear();
}

void ozViews::MarkSelection(int displayMode)
{
    if (displayMode == DisplayPolicies)
        m_policyView.MarkSelection();
}

void ozViews::StorePendingEdit(int displayMode)
{
    if (displayMode == DisplayRegistry && m_visibleMode == DisplayRegistry)
        m_registryView.MarkSelection();
    if (displayMode == DisplayValueGrid && m_visibleMode == DisplayValueGrid)
        m_grid.StorePendingEdit();
}

void ozViews::WithADMEdit(bool withEdit)
{
    m_policyView.WithADMEdit(withEdit);
}

void ozViews::AskRegistryImport(const RegistryImport& request, RegistryAnswer ended)
{
    ozImportRegistryDialog::Texts texts;
    texts.caption = ozApplication::Instance().Name();
    // The host's texts: 1 the machine label, 117 the check box, 11 and 23 the value columns.
    for (auto [number, text] : {std::pair{1, &texts.machineLabel},
                                {117, &texts.recursiveLabel},
                                {11, &texts.nameColumn},
                                {23, &texts.dataColumn}}) {
        std::string host = m_control != nullptr
                               ? m_control->GetString(static_cast<unsigned short>(number))
                               : std::string();
        if (!host.empty())
            *text = host;
    }
    m_platform.RunDialog(std::make_unique<ozImportRegistryDialog>(request, texts),
                         [ended = std::move(ended)](ozDialog& dialog, bool accepted) {
                             auto& import = static_cast<ozImportRegistryDialog&>(dialog);
                             ended(accepted && import.Chosen() ? &import.Answer() : nullptr);
                         });
}

void ozViews::ShowLegend()
{
    if (m_control != nullptr)
        m_platform.RunDialog(std::make_unique<ozLegendDialog>(*m_control, false),
                             [](ozDialog&, bool) {});
}

void ozViews::ShowAbout() {}
