#include "ozActionListDialog.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "core/adm/ozADMActionList.h"
#include "core/registry/ozRegTree.h"
#include "core/registry/ozSubKey.h"

namespace {

const char NewItemName[] = "New Item";

// The controls that show the current entry, enabled exactly while there is one.
const int EntryControls[] = {
    ozActionListDialog::KeyGroup,     ozActionListDialog::OwnKeyCheck,
    ozActionListDialog::KeyEdit,      ozActionListDialog::BrowseButton,
    ozActionListDialog::ValueGroup,   ozActionListDialog::ValueNameEdit,
    ozActionListDialog::ValueEdit,    ozActionListDialog::NormalRadio,
    ozActionListDialog::NumericRadio, ozActionListDialog::DeleteRadio,
};

ozDialogTemplate BuildLayout()
{
    using D = ozActionListDialog;
    using K = ozControlKind;
    // The entries on the left with their two buttons below them; the key and value fields of
    // the selected entry on the right; OK and Cancel at the bottom right.
    return ozDialogTemplate{
        105,
        "Action list",
        282,
        162,
        {
            ozControlSpec(D::EntryList, K::List, "", 7, 7, 92, 118),
            ozControlSpec(D::KeyGroup, K::Group, "Key", 106, 7, 169, 50),
            ozControlSpec(D::OwnKeyCheck, K::CheckBox, "Has own key", 114, 18, 90, 10),
            ozControlSpec(D::KeyEdit, K::Edit, "Key", 114, 34, 136, 14, ozControlReportOnLeave),
            ozControlSpec(D::BrowseButton, K::Button, "...", 254, 34, 14, 14),
            ozControlSpec(D::ValueGroup, K::Group, "Value", 106, 62, 169, 66),
            ozControlSpec(D::ValueNameEdit, K::Edit, "Valuename", 114, 74, 154, 14),
            ozControlSpec(D::ValueEdit, K::Edit, "Value", 114, 92, 154, 14),
            ozControlSpec(D::NormalRadio, K::Radio, "Normal", 114, 112, 46, 10),
            ozControlSpec(D::NumericRadio, K::Radio, "Numeric", 164, 112, 50, 10),
            ozControlSpec(D::DeleteRadio, K::Radio, "Delete", 218, 112, 46, 10),
            ozControlSpec(D::ListButtonsGroup, K::Group, "", 7, 128, 92, 27),
            ozControlSpec(D::InsertButton, K::Button, "Insert", 12, 138, 40, 14),
            ozControlSpec(D::DeleteButton, K::Button, "Delete", 55, 138, 40, 14),
            ozControlSpec(ozDialogOK, K::Button, "OK", 171, 141, 50, 14, ozControlDefault),
            ozControlSpec(ozDialogCancel, K::Button, "Cancel", 225, 141, 50, 14),
        },
    };
}

// Checks the radio button of `checked` (0: none) and clears the others.
void CheckRadio(ozForm& form, int checked)
{
    for (int id : {ozActionListDialog::NormalRadio, ozActionListDialog::NumericRadio,
                   ozActionListDialog::DeleteRadio})
        form.Check(id, id == checked);
}

}  // namespace

ozActionListDialog::ozActionListDialog(ozSubKey* defaultKey, const ozADMActionList* list,
                                       Browser browse)
    : m_defaultKey(defaultKey),
      m_list(list != nullptr ? list->Copy() : new ozADMActionList),
      m_browse(std::move(browse))
{
}

ozActionListDialog::~ozActionListDialog() = default;

std::unique_ptr<ozADMActionList> ozActionListDialog::TakeList()
{
    m_current = nullptr;
    return std::move(m_list);
}

const ozDialogTemplate& ozActionListDialog::Layout() const
{
    static const ozDialogTemplate layout = BuildLayout();
    return layout;
}

void ozActionListDialog::Init(ozForm& form)
{
    FillList(form);
    UpdateFields(form);
}

void ozActionListDialog::Command(ozForm& form, int id, ozFormEvent event)
{
    switch (id) {
        case EntryList:
            if (event == ozFormEvent::SelectionChanged)
                SelectionChanged(form);
            break;
        case InsertButton:
            Insert(form);
            break;
        case DeleteButton:
            Delete(form);
            break;
        case OwnKeyCheck:
            OwnKeyClicked(form);
            break;
        case KeyEdit:
            if (event == ozFormEvent::TextChanged)
                KeyChanged(form);
            break;
        case ValueNameEdit:
            if (event == ozFormEvent::TextChanged)
                ValueNameChanged(form);
            break;
        case ValueEdit:
            if (event == ozFormEvent::TextChanged)
                ValueChanged(form, CheckedRadio(form));
            break;
        case NormalRadio:
        case NumericRadio:
        case DeleteRadio:
            ValueChanged(form, id);
            break;
        case BrowseButton:
            Browse(form);
            break;
        default:
            break;
    }
}

void ozActionListDialog::SelectionChanged(ozForm& form)
{
    m_current = m_list != nullptr ? m_list->At(form.SelectedRow(EntryList)) : nullptr;
    UpdateFields(form);
}

void ozActionListDialog::Insert(ozForm& form)
{
    if (m_list == nullptr) {
        UpdateFields(form);
        return;
    }
    ozActionItem* selected = m_list->At(form.SelectedRow(EntryList));
    auto* item = new ozActionItem;
    item->RegKey(selected != nullptr ? selected->RegKey() : m_defaultKey);
    item->ValueName(NewItemName);
    item->Value().SetString("");
    // The list owns the item from here on, even when it refuses it.
    m_current = m_list->Add(item) ? item : nullptr;
    if (m_current != nullptr) {
        std::vector<std::string> rows = form.Rows(EntryList);
        rows.push_back(NewItemName);
        form.Rows(EntryList, rows);
        form.SelectRow(EntryList, static_cast<int>(rows.size()) - 1);
    }
    FillList(form);
    UpdateFields(form);
}

void ozActionListDialog::Delete(ozForm& form)
{
    std::vector<std::string> rows = form.Rows(EntryList);
    int row = form.SelectedRow(EntryList);
    if (m_list != nullptr && row >= 0 && row < static_cast<int>(rows.size())) {
        m_list->RemoveAt(row);
        rows.erase(rows.begin() + row);
        form.Rows(EntryList, rows);
        form.SelectRow(EntryList, -1);
        m_current = nullptr;
    }
    UpdateFields(form);
}

void ozActionListDialog::OwnKeyClicked(ozForm& form)
{
    if (m_current != nullptr && m_list != nullptr) {
        if (form.Checked(OwnKeyCheck)) {
            // The entry keeps its key until the user types or browses another.
            form.Enable(KeyEdit, true);
            form.Enable(BrowseButton, true);
            return;
        }
        m_current->RegKey(InheritedKey(form));
    }
    UpdateFields(form);
}

void ozActionListDialog::KeyChanged(ozForm& form)
{
    if (m_current == nullptr) {
        UpdateFields(form);
        return;
    }
    // The fields stay as they are: refreshing them would rewrite the edit being typed in.
    // An entry whose key could not be bound looks the key up beside the policy's.
    ozSubKey* present = PresentKey();
    auto* tree = present != nullptr ? dynamic_cast<ozRegTree*>(present->GetTree()) : nullptr;
    if (tree == nullptr)
        return;
    std::string path = form.Text(KeyEdit);
    m_current->RegKey(*tree, ozRootHandle(present->Root()), path.c_str());
}

void ozActionListDialog::ValueNameChanged(ozForm& form)
{
    if (m_current != nullptr)
        m_current->ValueName(form.Text(ValueNameEdit).c_str());
    UpdateFields(form);
    if (m_current != nullptr)
        FillList(form);
}

void ozActionListDialog::ValueChanged(ozForm& form, int kind)
{
    if (m_current != nullptr) {
        std::string text = form.Text(ValueEdit);
        ozADMValue& value = m_current->Value();
        if (kind == NumericRadio && value.Type() == ozADMValue::ValueQword)
            value.SetQword(std::strtoull(text.c_str(), nullptr, 10));
        else if (kind == NumericRadio)
            value.SetNumeric(static_cast<unsigned long>(std::atol(text.c_str())));
        else if (kind == DeleteRadio)
            value.SetDelete();
        else
            value.SetString(text.c_str());
    }
    UpdateFields(form);
}

void ozActionListDialog::Browse(ozForm& form)
{
    if (m_current == nullptr || !m_browse) {
        UpdateFields(form);
        return;
    }
    ozControlViews::RegistryChoice choice;
    if (ozSubKey* present = PresentKey()) {
        choice.root = present->Root();
        choice.key = present->KeyPath();
    }
    // The browser ends while this dialog is open below it: form and entry are still there.
    m_browse(choice, [this, &form](const ozControlViews::RegistryChoice* chosen) {
        if (chosen != nullptr && m_current != nullptr) {
            form.Text(KeyEdit, chosen->key);
            // A key alone keeps the value name; a chosen value names the entry.
            if (!chosen->wholeKey)
                form.Text(ValueNameEdit, chosen->value);
            KeyChanged(form);
            ValueNameChanged(form);
        }
        UpdateFields(form);
    });
}

void ozActionListDialog::FillList(ozForm& form)
{
    int row = form.SelectedRow(EntryList);
    std::vector<std::string> rows;
    if (m_list != nullptr)
        for (int pos = 0; pos < m_list->Count(); ++pos) {
            const char* name = m_list->At(pos)->ValueName();
            rows.emplace_back(name != nullptr ? name : "");
        }
    form.Rows(EntryList, rows);
    form.SelectRow(EntryList, row);
}

void ozActionListDialog::UpdateFields(ozForm& form)
{
    form.Enable(ListButtonsGroup, m_list != nullptr);
    form.Enable(InsertButton, m_list != nullptr);
    form.Enable(DeleteButton, m_list != nullptr && form.SelectedRow(EntryList) >= 0);

    for (int id : EntryControls)
        form.Enable(id, m_current != nullptr);
    if (m_current == nullptr) {
        form.Text(KeyEdit, "");
        form.Text(ValueNameEdit, "");
        form.Text(ValueEdit, "");
        CheckRadio(form, 0);
        return;
    }

    ozSubKey* key = m_current->RegKey();
    bool ownKey = key != InheritedKey(form);
    form.Check(OwnKeyCheck, ownKey);
    form.Enable(KeyEdit, ownKey);
    form.Enable(BrowseButton, ownKey);
    form.Text(KeyEdit, key != nullptr ? key->KeyPath() : "");
    const char* valueName = m_current->ValueName();
    form.Text(ValueNameEdit, valueName != nullptr ? valueName : "");

    const ozADMValue& value = m_current->Value();
    switch (value.Type()) {
        case ozADMValue::ValueDelete:
            CheckRadio(form, DeleteRadio);
            form.Enable(ValueEdit, false);
            form.Text(ValueEdit, "");
            break;
        case ozADMValue::ValueNumeric:
        case ozADMValue::ValueQword:
            CheckRadio(form, NumericRadio);
            form.Text(ValueEdit, std::to_string(value.Qword()));
            break;
        case ozADMValue::ValueString: {
            const char* text = value;
            CheckRadio(form, NormalRadio);
            form.Text(ValueEdit, text != nullptr ? text : "");
            break;
        }
        default:
            // An empty value says nothing about its kind: the radio buttons stay as they are.
            form.Text(ValueEdit, "");
            break;
    }
}

ozSubKey* ozActionListDialog::InheritedKey(const ozForm& form) const
{
    int row = form.SelectedRow(EntryList);
    ozActionItem* above = m_list != nullptr && row > 0 ? m_list->At(row - 1) : nullptr;
    return above != nullptr ? above->RegKey() : m_defaultKey;
}

ozSubKey* ozActionListDialog::PresentKey() const
{
    return m_current->RegKey() != nullptr ? m_current->RegKey() : m_defaultKey;
}

int ozActionListDialog::CheckedRadio(const ozForm& form)
{
    for (int id : {NormalRadio, NumericRadio, DeleteRadio})
        if (form.Checked(id))
            return id;
    return 0;
}
