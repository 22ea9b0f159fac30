#include "CADMCtrl.h"

#include <cstdio>
#include <memory>
#include <new>

#include "core/adm/ozADMPolicy.h"
#include "core/adm/ozADMRegEntry.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozVariableMarkers.h"
#include "engine/ozEBNF.h"
#include "loader/ozADMXLoad.h"
#include "loader/ozFailedTemplate.h"
#include "ozApplication.h"
#include "ozMessageFormat.h"
#include "ozProfileBinding.h"
#include "platform/ozReplacementFile.h"
#include "platform/ozSystemMessage.h"

namespace {

ozProfileBinding Binding(ozHostUI& ui)
{
    return ozProfileBinding(
        ui, [](unsigned short number) { return ozApplication::Instance().MessageText(number); });
}

}  // namespace

CADMCtrl::CADMCtrl(ozHostUI& ui, ozControlViews* views) : m_ui(ui), m_views(views)
{
    ozApplication::Instance().ControlCreated(this);
}

CADMCtrl::~CADMCtrl()
{
    if (m_code != nullptr) {
        EBNFSetCodeHandle(m_code);
        EBNFDestroyCode();
        m_code = nullptr;
    }
    ozApplication::Instance().ControlDestroyed(this);
}

void CADMCtrl::ShowMessage(tHOSTMESSAGEKIND kind, const std::string& text) const
{
    m_ui.ShowMessage(kind, text);
}

bool CADMCtrl::SavePoliciesToRegistry()
{
    CCollection<ozADMPolicy> configured(false);
    m_code->tree->GetPolicies(configured);
    for (int pos = 0; pos < configured.Count(); ++pos) {
        const ozADMPolicy* policy = configured.At(pos);
        if (const ozADMCtrl* part = policy->RequiredPartLeftEmpty()) {
            const char* path = policy->Path() != nullptr ? policy->Path() : "";
            const char* partName = part->Name() != nullptr ? part->Name() : "";
            ShowMessage(HostMessageError,
                        ozFormatMessage(GetString(HostMessageRequiredPartEmpty), {path, partName}));
            return false;
        }
    }
    return m_code->tree->SaveToRegistry();
}

void CADMCtrl::ShowCode()
{
    if (m_views != nullptr)
        m_views->Show(m_displayMode, m_code, m_showUser, m_showMachine);
}

void CADMCtrl::ShowUser(bool show)
{
    m_showUser = show;
    m_controlModified = true;
}

void CADMCtrl::ShowMachine(bool show)
{
    m_showMachine = show;
    m_controlModified = true;
}

void CADMCtrl::WithADMEdit(bool withEdit)
{
    m_withADMEdit = withEdit;
    if (m_views != nullptr)
        m_views->WithADMEdit(withEdit);
    m_controlModified = true;
}

bool CADMCtrl::ShouldSave() const
{
    return m_code != nullptr && m_code->modified != 0;
}

void CADMCtrl::ozImpExLibrary(const std::string& name)
{
    m_library = name.substr(0, LibraryNameCapacity);
    m_controlModified = true;
}

std::string CADMCtrl::ozVariableStart() const
{
    return ozVariableMarkers::Start();
}

void CADMCtrl::ozVariableStart(const std::string& marker)
{
    ozVariableMarkers::Start(marker.c_str());
}

std::string CADMCtrl::ozVariableEnd() const
{
    return ozVariableMarkers::End();
}

void CADMCtrl::ozVariableEnd(const std::string& marker)
{
    ozVariableMarkers::End(marker.c_str());
}

ozStringArray CADMCtrl::ConfiguredPolicies() const
{
    if (m_code == nullptr || m_code->tree == nullptr)
        return {};
    CCollection<ozADMPolicy> policies(false);
    if (!m_code->tree->GetPolicies(policies))
        return {};
    std::vector<std::string> elements;
    for (int pos = 0; pos < policies.Count(); ++pos) {
        const ozADMPolicy* policy = policies.At(pos);
        const char* prefix = policy->State() == PolicyDisabled  ? "- "
                             : policy->State() == PolicyEnabled ? "+ "
                                                                : "? ";
        elements.push_back(prefix + std::string(policy->Path()));
    }
    return ozStringArray(std::move(elements));
}

void CADMCtrl::Reset()
{
    if (m_code == nullptr)
        return;
    m_code->tree->SetDefaultValues();
    ShowCode();
}

bool CADMCtrl::Save(const char* UsrReg, const char* MacReg)
{
    if (m_code == nullptr)
        return false;
    if (m_loadFailed != 0 &&
        !m_ui.ShowMessage(HostMessageQuestion, GetString(HostMessageSaveAfterFailedLoad)))
        return false;
    if (m_displayMode == DisplayPolicies) {
        if (m_views != nullptr && !m_views->CommitPartsPanel())
            return false;
        if (!SavePoliciesToRegistry())
            return false;
    }
    ozProfileBinding binding = Binding(m_ui);
    return binding.Save(m_code, m_library.c_str(), UsrReg, MacReg);
}

bool CADMCtrl::Load(const char* UsrReg, const char* MacReg)
{
    if (m_code == nullptr)
        return false;
    ozProfileBinding binding = Binding(m_ui);
    tPROFILELOAD loaded = binding.Load(m_code, m_library.c_str(), UsrReg, MacReg);
    if (loaded == tPROFILELOAD::NoCodeObject || loaded == tPROFILELOAD::LibraryNotLoaded)
        return false;
    m_loadFailed = loaded == tPROFILELOAD::Succeeded ? 0 : 1;
    ShowCode();
    return loaded == tPROFILELOAD::Succeeded;
}

void CADMCtrl::Cleanup()
{
    if (m_code == nullptr)
        return;
    // The views let go of the tree before it is destroyed.
    if (m_views != nullptr) {
        m_views->Show(m_displayMode, nullptr, m_showUser, m_showMachine);
        m_views->ClearPartsPanel();
    }
    EBNFSetCodeHandle(m_code);
    m_code = nullptr;
    EBNFDestroyCode();
}

bool CADMCtrl::SetEBNF(const char* pszFilename)
{
    if (EBNFLoad(pszFilename) != 0)
        return true;
    ShowMessage(HostMessageError, ErrorMessage());
    return false;
}

bool CADMCtrl::SetADM(const char* pszFilename)
{
    // Without a code object of its own the control lends none, so that it starts a new one:
    // the engine may still hold another control's, which must not become shared.
    tTreeCodeHandle* held = m_code;
    EBNFSetCodeHandle(held);
    std::size_t stringsBefore = ozTemplateStringCount();
    // ADMX definitions are XML, read by the loader itself rather than by the grammar; both
    // hand the code object around and report failures through the engine alike.
    bool loaded =
        (ozIsADMXFile(pszFilename) ? ozADMXFileLoad(pszFilename) : FileLoad(pszFilename, 1)) > 0;
    // The loader gives a lent code object back also after a failure, with what the template
    // merged before it failed.
    m_code = static_cast<tTreeCodeHandle*>(EBNFGetCodeHandle());
    if (!loaded && held == nullptr && m_code != nullptr) {
        // Nothing of a failed first template is kept: a half-built tree would pass for a
        // loaded one.
        ShowMessage(HostMessageError, ErrorMessage());
        EBNFDestroyCode();
        m_code = nullptr;
        return false;
    }
    if (!loaded) {
        ShowMessage(HostMessageError, ErrorMessage());
        ozForgetTemplateStringsAfter(stringsBefore);
        return false;
    }
    if (m_code != nullptr) {
        if (m_code->kind != CodeKindPolicyTree) {
            ShowMessage(HostMessageError, GetString(HostMessageWrongCodeKind));
            return false;
        }
        if (m_code->versionMajor < 1 || (m_code->versionMajor == 1 && m_code->versionMinor < 1)) {
            ShowMessage(HostMessageError, GetString(HostMessageOldCodeVersion));
            return false;
        }
    }
    ShowCode();
    return true;
}

bool CADMCtrl::LoadOZReg(const char* OzReg)
{
    if (!Load(OzReg, nullptr))
        return false;
    // Through the application object on purpose: the current control is the one constructed
    // last, which is this one while the process holds one control.
    CADMCtrl* current = ozApplication::Instance().CurrentControl();
    if (current != nullptr && current->m_code != nullptr)
        current->m_code->modified = 1;
    return true;
}

bool CADMCtrl::AddString(unsigned short code, const char* text)
{
    return ozApplication::Instance().AddMessage(code, text);
}

std::string CADMCtrl::GetString(unsigned short code) const
{
    return ozApplication::Instance().MessageText(code);
}

std::uintptr_t CADMCtrl::GetCode() const
{
    return reinterpret_cast<std::uintptr_t>(m_code);
}

void CADMCtrl::Refresh()
{
    if (m_views == nullptr)
        return;
    if (m_shownMode != m_displayMode && m_views->IsVisible(m_shownMode)) {
        if (m_shownMode == DisplayPolicies) {
            if (m_code != nullptr && !SavePoliciesToRegistry())
                return;
        } else {
            m_views->StorePendingEdit(m_shownMode);
        }
        m_views->Hide(m_shownMode);
    }
    if (m_shownMode != m_displayMode)
        m_controlModified = true;
    m_shownMode = m_displayMode;
    ShowCode();
}

bool CADMCtrl::SaveSelState()
{
    if (m_views != nullptr && !m_views->CommitPartsPanel())
        return false;
    if (m_displayMode == DisplayPolicies) {
        if (m_code != nullptr && !SavePoliciesToRegistry())
            return false;
        if (m_views != nullptr)
            m_views->MarkSelection(DisplayPolicies);
        ShowCode();
    } else if (m_views != nullptr) {
        m_views->StorePendingEdit(m_displayMode);
    }
    return true;
}

bool CADMCtrl::WriteReport(const char*, short, bool)
{
    return false;
}

void CADMCtrl::ShowLegend()
{
    if (m_views != nullptr)
        m_views->ShowLegend();
}

bool CADMCtrl::SendKeyDown(short, short)
{
    return true;
}

bool CADMCtrl::SendKeyUp(short Key, short CtrlCode)
{
    return SendKeyDown(Key, CtrlCode);
}

bool CADMCtrl::WriteADM(const char* pszFilename)
{
    m_writeADMLosses.clear();
    if (m_code == nullptr || pszFilename == nullptr)
        return false;
    // Written beside the file and put in its place only when complete: a write that fails
    // leaves the file as it was.
    ozReplacementFile file(pszFilename);
    if (!file.Open(true))
        return false;
    bool written = m_code->tree->Save(file.Stream());
    m_writeADMLosses = m_code->tree->ConversionLosses();
    return written && file.Commit().IsOk();
}

bool CADMCtrl::ozInsert()
{
    return m_views != nullptr && m_views->IsVisible(DisplayValueGrid) && m_views->GridInsert();
}

bool CADMCtrl::ozDelete()
{
    return m_views != nullptr && m_views->IsVisible(DisplayValueGrid) && m_views->GridDelete();
}

bool CADMCtrl::ozSRShowSearch()
{
    return m_views != nullptr && m_views->IsVisible(DisplayValueGrid) && m_views->ShowSearch();
}

bool CADMCtrl::ozSRShowReplace()
{
    return m_views != nullptr && m_views->IsVisible(DisplayValueGrid) && m_views->ShowReplace();
}

bool CADMCtrl::ozSRHide()
{
    return m_views != nullptr && m_views->IsVisible(DisplayValueGrid) && m_views->HideSearch();
}

bool CADMCtrl::AddRegistryKey(unsigned int rootNumber, const char* key, const char* value,
                              bool recursive, const char* machine)
{
    ozRegTree* tree = ozRegTreeOfRoot(m_code, rootNumber);
    if (tree == nullptr)
        return false;
    std::string keyRead = key != nullptr ? key : "";
    unsigned long code = ERROR_NOT_ENOUGH_MEMORY;
    std::string reason;
    // The registry reader throws; its failures end here, as a message to the user.
    try {
        return tree->AddFromRegistry(ozRootHandle(rootNumber), key, value, recursive, machine);
    } catch (const CRegistryKey::Exception& failure) {
        if (!failure.Key().empty())
            keyRead = failure.Key();
        code = failure.GetError();
        reason = failure.Reason();
    } catch (const std::bad_alloc&) {
        reason = ozSystemMessage(code);
    }
    ShowMessage(HostMessageError, ozFormatMessage(GetString(HostMessageRegistryNotRead),
                                                  {keyRead, std::to_string(code), reason}));
    return false;
}

bool CADMCtrl::AddFromRegistry(long theRoot, const char* theKey, const char* theValue,
                               bool bRecursive)
{
    if (m_code == nullptr)
        return false;
    const char* valueName = theValue != nullptr && *theValue != '\0' ? theValue : nullptr;
    bool added = AddRegistryKey(static_cast<unsigned int>(theRoot), theKey, valueName, bRecursive);
    m_code->modified = 1;
    return added;
}

bool CADMCtrl::ShowImportReg()
{
    if (m_code == nullptr || m_views == nullptr)
        return false;
    ozControlViews::RegistryImport request;
    request.initial.recursive = true;
    auto added = std::make_shared<bool>(false);
    m_views->AskRegistryImport(request, [this,
                                         added](const ozControlViews::RegistryChoice* chosen) {
        // A headless dialog may end after the code object went.
        if (chosen == nullptr || m_code == nullptr)
            return;
        *added = AddRegistryKey(
            chosen->root, chosen->key.c_str(), chosen->wholeKey ? nullptr : chosen->value.c_str(),
            chosen->recursive, chosen->machine.empty() ? nullptr : chosen->machine.c_str());
        m_code->modified = 1;
        ShowCode();
    });
    return *added;
}

ozStringArray CADMCtrl::PolicyConfigures(const char* Path) const
{
    if (m_code == nullptr || Path == nullptr)
        return {};
    ozADMNode* node = m_code->tree->FindNode(Path);
    if (node == nullptr || node->NodeType() != NodePolicy)
        return {};
    CCollection<ozADMRegEntry> entries(true);
    if (!static_cast<ozADMPolicy*>(node)->Configures(entries))
        return {};
    std::vector<std::string> elements;
    for (int pos = 0; pos < entries.Count(); ++pos) {
        const char* text = entries.At(pos)->ExportString();
        elements.push_back(text != nullptr ? text : "");
    }
    return ozStringArray(std::move(elements));
}

void CADMCtrl::AboutBox()
{
    if (m_views != nullptr)
        m_views->ShowAbout();
}

void CADMCtrl::DisplayMode(int mode)
{
    if (mode >= DisplayPolicies && mode <= DisplayValueGrid)
        m_displayMode = mode;
}
