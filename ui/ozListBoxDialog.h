// The dialog of a list box part: its entries in a list, an edit to type a new one (and, when
// the part names its values itself, EXPLICITVALUE, a second edit for the value name), Add and
// Remove. It edits a copy of the entries in the list box text form (control/ozPolicyEdit.h);
// the part's editor takes the result after OK (Text) and drops it on Cancel.
//
// Add appends the typed entry and empties the edits. It is enabled only when there is an entry
// to add: a value, and with value names a name without '=' (which the text form separates
// name and value by). With value names, adding a name the list has (without regard to case)
// replaces that entry's value, as the names must differ. Remove is enabled while a row is
// selected and removes it.
#pragma once

#include <string>
#include <vector>

#include "ozForm.h"

class ozListBoxDialog : public ozDialog {
public:
    enum : int {
        Resource = 110,
    };
    // The controls, in tab order (with OK and Cancel last).
    enum : int {
        EntryList = 1001,
        NameEdit = 1002,  // only with value names
        ValueEdit = 1003,
        AddButton = 1004,
        RemoveButton = 1005,
    };

    // caption: the part's name; withNames: the part has EXPLICITVALUE; text: the entries in the
    // list box text form (name=value entries with value names).
    ozListBoxDialog(const std::string& caption, bool withNames, const std::string& text);

    // The edited entries in the list box text form.
    std::string Text() const;

    const ozDialogTemplate& Layout() const override { return m_layout; }
    void Init(ozForm& form) override;
    void Command(ozForm& form, int id, ozFormEvent event) override;

private:
    void Add(ozForm& form);
    void Remove(ozForm& form);
    void ShowRows(ozForm& form, int selectedRow);
    void UpdateButtons(ozForm& form) const;
    bool CanAdd(const ozForm& form) const;

    bool m_withNames;
    ozDialogTemplate m_layout;
    // One per entry: the value, or with value names "name\tvalue" as the list shows it.
    std::vector<std::string> m_rows;
};
