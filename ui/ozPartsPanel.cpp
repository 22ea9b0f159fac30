#include "ozPartsPanel.h"

#include "control/CADMCtrl.h"
#include "control/ozApplication.h"
#include "control/ozMessageFormat.h"
#include "control/ozPolicyEdit.h"
#include "core/adm/ozADMPolicy.h"
#include "ozPartEditor.h"
#include "ozValueEditor.h"
#include "ozViewPlatform.h"
#include "platform/ozAsciiCase.h"

namespace {

// Control numbers: each editor owns ten from 1000 + 10 * its part's position on.
constexpr int FirstEditorId = 1000;
constexpr int IdsPerEditor = 10;
// The value editor's controls.
constexpr int ValueEditorId = 900;

}  // namespace

ozPartsPanel::ozPartsPanel(ozViewPlatform& platform) : m_platform(platform) {}

ozPartsPanel::~ozPartsPanel() = default;

void ozPartsPanel::Show(ozADMPolicy* policy)
{
    Clear();
    if (policy == nullptr)
        return;
    m_policy = policy;
    std::vector<ozControlSpec> controls;
    CCollection<ozADMCtrl>& parts = policy->Controls();
    for (int pos = 0; pos < parts.Count(); ++pos) {
        if (parts.At(pos) == nullptr)
            continue;
        auto editor = ozCreatePartEditor(*parts.At(pos), FirstEditorId + IdsPerEditor * pos);
        if (editor == nullptr)
            continue;
        editor->Describe(controls);
        m_editors.push_back(std::move(editor));
    }
    ozPanelWidget& form = m_platform.PartsPanel();
    form.Build(controls, this);
    for (const auto& editor : m_editors)
        editor->Load(form);
    StateChanged();
}

void ozPartsPanel::StateChanged()
{
    bool enabled = m_policy != nullptr && m_policy->State() == PolicyEnabled;
    for (const auto& editor : m_editors)
        editor->Enable(m_platform.PartsPanel(), enabled);
}

void ozPartsPanel::ShowValue(ozRegValue* value)
{
    Clear();
    if (value == nullptr)
        return;
    m_valueEditor = std::make_unique<ozValueEditor>(*value, m_control, m_platform, ValueEditorId,
                                                    m_valuesInHex);
    m_valueEditor->OnChanged([this](ozRegValue& changed) {
        if (m_valueChanged)
            m_valueChanged(changed);
    });
    std::vector<ozControlSpec> controls;
    m_valueEditor->Describe(controls);
    ozPanelWidget& form = m_platform.PartsPanel();
    form.Build(controls, this);
    m_valueEditor->Load(form);
}

ozRegValue* ozPartsPanel::Value() const
{
    return m_valueEditor != nullptr ? &m_valueEditor->Value() : nullptr;
}

bool ozPartsPanel::Commit()
{
    if (m_valueEditor != nullptr)
        return m_valueEditor->Commit(m_platform.PartsPanel());
    if (m_policy == nullptr || m_policy->State() != PolicyEnabled)
        return true;
    ozPanelWidget& form = m_platform.PartsPanel();
    for (const auto& editor : m_editors) {
        if (!editor->HasValue())
            continue;
        ozADMCtrl& part = editor->Part();
        std::string text = editor->Text(form);
        std::string why;
        if (part.Required() && text.empty())
            why = "the part is required and cannot be left empty";
        else if (text == ozPartValueText(part))
            continue;  // unchanged: not stored again, the document stays unmodified
        else if (m_control != nullptr ? ozEditPartValue(*m_control, part, text, why)
                                      : ozSetPartValue(part, text, why))
            continue;
        std::string message =
            m_control != nullptr
                ? m_control->GetString(HostMessagePartValueRefused)
                : ozApplication::Instance().MessageText(HostMessagePartValueRefused);
        m_platform.UI().ShowMessage(HostMessageError,
                                    ozFormatMessage(message, {editor->Label(), why}));
        editor->Focus(form);
        return false;
    }
    return true;
}

void ozPartsPanel::Clear()
{
    m_policy = nullptr;
    m_editors.clear();
    // The number format the user chose stays for the next value.
    if (m_valueEditor != nullptr)
        m_valuesInHex = m_valueEditor->Hex();
    m_valueEditor.reset();
    m_platform.PartsPanel().Clear();
}

std::vector<ozPartsPanel::EditorView> ozPartsPanel::Editors() const
{
    std::vector<EditorView> views;
    const ozPanelWidget& form = m_platform.PartsPanel();
    if (m_valueEditor != nullptr)
        for (const ozValueEditor::FieldView& field : m_valueEditor->Fields(form))
            views.push_back({field.kind, field.label, field.enabled, field.text});
    for (const auto& editor : m_editors)
        views.push_back({ozPartTypeName(editor->Part()), editor->Label(), editor->Enabled(form),
                         editor->Text(form)});
    return views;
}

bool ozPartsPanel::Type(const std::string& partName, const std::string& text)
{
    ozPanelWidget& form = m_platform.PartsPanel();
    if (m_valueEditor != nullptr)
        return m_valueEditor->Type(form, partName, text);
    for (const auto& editor : m_editors)
        if (ozAsciiSameIgnoringCase(editor->Label(), partName))
            return editor->Enabled(form) && editor->Type(form, text);
    return false;
}

void ozPartsPanel::Command(ozForm& form, int id, ozFormEvent event)
{
    if (m_valueEditor != nullptr) {
        m_valueEditor->Command(form, id, event);
        return;
    }
    for (const auto& editor : m_editors)
        if (editor->Owns(id)) {
            editor->Command(form, id, event, m_platform);
            return;
        }
}
