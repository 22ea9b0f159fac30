#include "ozListBoxDialog.h"

#include <algorithm>

#include "control/ozPolicyEdit.h"
#include "platform/ozAsciiCase.h"

namespace {

// The value name of a row with value names: what stands before the tab.
std::string RowName(const std::string& row)
{
    return row.substr(0, row.find('\t'));
}

}  // namespace

ozListBoxDialog::ozListBoxDialog(const std::string& caption, bool withNames,
                                 const std::string& text)
    : m_withNames(withNames)
{
    for (std::string entry : ozSplitListText(text)) {
        // A name=value entry shows as "name<tab>value"; the first '=' ends the name.
        if (m_withNames && entry.find('=') != std::string::npos)
            entry[entry.find('=')] = '\t';
        m_rows.push_back(std::move(entry));
    }

    m_layout.resource = Resource;
    m_layout.caption = caption;
    m_layout.width = 220;
    m_layout.height = 160;
    ozControlSpec list = ozControlSpec(EntryList, ozControlKind::List, "", 7, 7, 206, 90,
                                       m_withNames ? ozControlTwoColumns : 0u);
    if (m_withNames)
        list.columns = {"Value name", "Value"};
    m_layout.controls.push_back(list);
    if (m_withNames) {
        m_layout.controls.push_back(
            ozControlSpec(NameEdit, ozControlKind::Edit, "Value name", 7, 102, 100, 14));
        m_layout.controls.push_back(
            ozControlSpec(ValueEdit, ozControlKind::Edit, "Value", 113, 102, 100, 14));
    } else {
        m_layout.controls.push_back(
            ozControlSpec(ValueEdit, ozControlKind::Edit, "Value", 7, 102, 206, 14));
    }
    m_layout.controls.push_back(
        ozControlSpec(AddButton, ozControlKind::Button, "Add", 7, 120, 50, 14));
    m_layout.controls.push_back(
        ozControlSpec(RemoveButton, ozControlKind::Button, "Remove", 61, 120, 50, 14));
    m_layout.controls.push_back(
        ozControlSpec(ozDialogOK, ozControlKind::Button, "OK", 109, 140, 50, 14, ozControlDefault));
    m_layout.controls.push_back(
        ozControlSpec(ozDialogCancel, ozControlKind::Button, "Cancel", 163, 140, 50, 14));
}

std::string ozListBoxDialog::Text() const
{
    std::vector<std::string> entries;
    for (std::string row : m_rows) {
        if (m_withNames && row.find('\t') != std::string::npos)
            row[row.find('\t')] = '=';
        entries.push_back(std::move(row));
    }
    return ozJoinListText(entries);
}

void ozListBoxDialog::Init(ozForm& form)
{
    ShowRows(form, -1);
    form.Focus(m_withNames ? NameEdit : ValueEdit);
}

void ozListBoxDialog::Command(ozForm& form, int id, ozFormEvent event)
{
    if (id == AddButton && event == ozFormEvent::Clicked)
        Add(form);
    else if (id == RemoveButton && event == ozFormEvent::Clicked)
        Remove(form);
    else
        UpdateButtons(form);
}

bool ozListBoxDialog::CanAdd(const ozForm& form) const
{
    if (form.Text(ValueEdit).empty())
        return false;
    if (!m_withNames)
        return true;
    std::string name = form.Text(NameEdit);
    return !name.empty() && name.find_first_of("=\t") == std::string::npos;
}

void ozListBoxDialog::Add(ozForm& form)
{
    if (!CanAdd(form))
        return;
    std::string row = form.Text(ValueEdit);
    auto position = m_rows.end();
    if (m_withNames) {
        std::string name = form.Text(NameEdit);
        row = name + '\t' + row;
        position = std::find_if(m_rows.begin(), m_rows.end(), [&](const std::string& other) {
            return ozAsciiSameIgnoringCase(RowName(other), name);
        });
        form.Text(NameEdit, "");
    }
    form.Text(ValueEdit, "");
    if (position == m_rows.end())
        position = m_rows.insert(m_rows.end(), row);
    else
        *position = row;
    ShowRows(form, static_cast<int>(position - m_rows.begin()));
    form.Focus(m_withNames ? NameEdit : ValueEdit);
}

void ozListBoxDialog::Remove(ozForm& form)
{
    int row = form.SelectedRow(EntryList);
    if (row < 0 || row >= static_cast<int>(m_rows.size()))
        return;
    m_rows.erase(m_rows.begin() + row);
    ShowRows(form, std::min(row, static_cast<int>(m_rows.size()) - 1));
}

void ozListBoxDialog::ShowRows(ozForm& form, int selectedRow)
{
    form.Rows(EntryList, m_rows);
    form.SelectRow(EntryList, selectedRow);
    UpdateButtons(form);
}

void ozListBoxDialog::UpdateButtons(ozForm& form) const
{
    form.Enable(AddButton, CanAdd(form));
    form.Enable(RemoveButton, form.SelectedRow(EntryList) >= 0);
}
