#include "ozPolicyPropertiesDialog.h"

#include <utility>

#include "control/ozHostUI.h"
#include "control/ozMessageFormat.h"
#include "core/adm/ozADMPolicy.h"
#include "core/registry/ozRegTree.h"
#include "core/registry/ozSubKey.h"
#include "ozEditorFields.h"
#include "ozHelpDialog.h"
#include "ozViewPlatform.h"
#include "platform/ozRegistryTypes.h"

namespace {

ozDialogTemplate BuildLayout()
{
    using D = ozPolicyPropertiesDialog;
    using K = ozControlKind;
    return ozDialogTemplate{
        DialogPolicyProperties,
        "Policy Properties",
        300,
        236,
        {
            // A label takes the front of its control's area (the top of the explain text).
            ozControlSpec(D::KeyEdit, K::Edit, "Key", 7, 7, 268, 14),
            ozControlSpec(D::BrowseButton, K::Button, "...", 279, 7, 14, 14),
            ozControlSpec(D::ValueNameEdit, K::Edit, "Valuename", 7, 25, 286, 14),
            ozControlSpec(D::OnKindList, K::DropDown, "On value kind", 7, 43, 140, 60),
            ozControlSpec(D::OnValueEdit, K::Edit, "On value", 153, 43, 140, 14),
            ozControlSpec(D::OffKindList, K::DropDown, "Off value kind", 7, 61, 140, 60),
            ozControlSpec(D::OffValueEdit, K::Edit, "Off value", 153, 61, 140, 14),
            ozControlSpec(D::ClientExtEdit, K::Edit, "Client extension", 7, 79, 286, 14),
            ozControlSpec(D::ExplainEdit, K::Edit, "Explain text", 7, 97, 286, 112,
                          ozControlMultiLine),
            ozControlSpec(ozDialogOK, K::Button, "OK", 189, 215, 50, 14, ozControlDefault),
            ozControlSpec(ozDialogCancel, K::Button, "Cancel", 243, 215, 50, 14),
        },
    };
}

void ShowValue(ozForm& form, int kindList, int edit, const ozADMValue& value)
{
    form.Rows(kindList, ozValueKindRows(true));
    form.SelectRow(kindList, ozValueKindRow(value, true));
    form.Text(edit, ozValueKindText(value));
}

// What an optional text field stores: an empty field removes the text, except an empty text
// the policy had, so that a template's VALUENAME "" survives unchanged.
const char* Stored(const char* before, const std::string& text)
{
    if (!text.empty())
        return text.c_str();
    return before != nullptr && *before == '\0' ? "" : nullptr;
}

std::string Shown(const char* text)
{
    return text != nullptr ? text : "";
}

// Gives the parts and action-list entries that used the policy's key the new one, so that
// they keep inheriting it as their KEYNAME-less lines in the template did.
void MoveInheritedKeys(ozADMPolicy& policy, ozSubKey* oldKey, ozSubKey* newKey)
{
    if (oldKey == nullptr || oldKey == newKey)
        return;
    CCollection<ozADMCtrl>& parts = policy.Controls();
    for (int pos = 0; pos < parts.Count(); ++pos)
        if (parts.At(pos)->Key() == oldKey)
            parts.At(pos)->Key(newKey);
    for (ozADMActionList* list : {policy.ActionListOn(), policy.ActionListOff()})
        for (int pos = 0; list != nullptr && pos < list->Count(); ++pos)
            if (list->At(pos)->RegKey() == oldKey)
                list->At(pos)->RegKey(newKey);
}

}  // namespace

ozPolicyPropertiesDialog::ozPolicyPropertiesDialog(ozADMPolicy& policy, ozEditorContext context)
    : m_policy(policy), m_context(std::move(context))
{
}

std::string ozPolicyPropertiesDialog::ExplainForEditing(const char* explain)
{
    return ozHelpDialog::DisplayText(explain);
}

std::string ozPolicyPropertiesDialog::ExplainFromEditing(const std::string& text)
{
    std::string explain;
    for (size_t pos = 0; pos < text.size(); ++pos) {
        if (text[pos] == '\r' || text[pos] == '\n') {
            explain += "\\n";
            if (text[pos] == '\r' && pos + 1 < text.size() && text[pos + 1] == '\n')
                ++pos;
        } else {
            explain += text[pos];
        }
    }
    return explain;
}

const ozDialogTemplate& ozPolicyPropertiesDialog::Layout() const
{
    static const ozDialogTemplate layout = BuildLayout();
    return layout;
}

void ozPolicyPropertiesDialog::Init(ozForm& form)
{
    ozSubKey* key = m_policy.RegKey();
    form.Text(KeyEdit, key != nullptr ? key->KeyPath() : "");
    form.Enable(BrowseButton, static_cast<bool>(m_context.browse));
    form.Text(ValueNameEdit, Shown(m_policy.Valuename()));
    ShowValue(form, OnKindList, OnValueEdit, m_policy.ValueOn());
    ShowValue(form, OffKindList, OffValueEdit, m_policy.ValueOff());
    form.Text(ClientExtEdit, Shown(m_policy.ClientExt()));
    form.Text(ExplainEdit, ExplainForEditing(m_policy.Explain()));
    EnableValueEdits(form);
}

void ozPolicyPropertiesDialog::Command(ozForm& form, int id, ozFormEvent event)
{
    if (id == BrowseButton)
        Browse(form);
    else if ((id == OnKindList || id == OffKindList) && event == ozFormEvent::SelectionChanged)
        EnableValueEdits(form);
}

void ozPolicyPropertiesDialog::EnableValueEdits(ozForm& form)
{
    for (auto [list, edit] : {std::pair{OnKindList, OnValueEdit}, {OffKindList, OffValueEdit}}) {
        int kind = form.SelectedRow(list);
        form.Enable(edit, kind == KindNumeric || kind == KindString);
    }
}

void ozPolicyPropertiesDialog::Browse(ozForm& form)
{
    ozControlViews::RegistryChoice choice;
    choice.root = ozRootNumber(m_policy.RootKey());
    choice.key = form.Text(KeyEdit);
    if (!m_context.browse)
        return;
    // The browser ends while this dialog is open below it.
    m_context.browse(choice, [&form](const ozControlViews::RegistryChoice* chosen) {
        if (chosen == nullptr)
            return;
        form.Text(KeyEdit, chosen->key);
        if (!chosen->wholeKey)
            form.Text(ValueNameEdit, chosen->value);
    });
}

void ozPolicyPropertiesDialog::Refuse(ozForm& form, int id, unsigned short number,
                                      const std::string& text) const
{
    std::string message = ozEditorMessageText(m_context, number);
    std::string label;
    for (const ozControlSpec& spec : Layout().controls)
        if (spec.id == id)
            label = spec.caption;
    m_context.platform.UI().ShowMessage(HostMessageError, ozFormatMessage(message, {label, text}));
    form.Focus(id);
}

bool ozPolicyPropertiesDialog::Accept(ozForm& form)
{
    std::string path = form.Text(KeyEdit);
    if (!ozWellFormedKeyPath(path)) {
        Refuse(form, KeyEdit, HostMessageKeyPathHasEmptyPart, path);
        return false;
    }
    // Bound as the policy will bind it: the key found (or made) in its class's registry tree.
    ozRegTree* tree = m_policy.RegistryTree();
    ozSubKey* key = tree != nullptr && path.size() < ozSubKey::KeyPathCapacity
                        ? tree->FindKey(m_policy.RootKey(), path.c_str())
                        : nullptr;
    if (key == nullptr || key->KeyPath().empty()) {
        Refuse(form, KeyEdit, HostMessageKeyPathUnbound, path);
        return false;
    }
    unsigned long number = 0;
    for (auto [list, edit] : {std::pair{OnKindList, OnValueEdit}, {OffKindList, OffValueEdit}}) {
        std::string text = form.Text(edit);
        if (form.SelectedRow(list) == KindNumeric && !ozParseWholeNumber(text, number)) {
            Refuse(form, edit, HostMessageNotAWholeNumber, text);
            return false;
        }
    }

    ozSubKey* oldKey = m_policy.RegKey();
    m_policy.RegKey(path.c_str());
    MoveInheritedKeys(m_policy, oldKey, m_policy.RegKey());
    m_policy.Valuename(Stored(m_policy.Valuename(), form.Text(ValueNameEdit)));
    ozStoreValueKind(m_policy.ValueOn(), form.SelectedRow(OnKindList), true,
                     form.Text(OnValueEdit));
    ozStoreValueKind(m_policy.ValueOff(), form.SelectedRow(OffKindList), true,
                     form.Text(OffValueEdit));
    m_policy.ClientExt(Stored(m_policy.ClientExt(), form.Text(ClientExtEdit)));
    std::string explain = ExplainFromEditing(form.Text(ExplainEdit));
    m_policy.Explain(Stored(m_policy.Explain(), explain));
    if (m_context.edited)
        m_context.edited();
    return true;
}

std::unique_ptr<ozDialog> ozCreatePolicyPropertiesDialog(ozADMPolicy& policy,
                                                         const ozEditorContext& context)
{
    return std::make_unique<ozPolicyPropertiesDialog>(policy, context);
}
