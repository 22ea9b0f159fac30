// The dialog "Action list" (dialog 105): edits a copy of a policy's on-list or off-list of
// registry actions. The dialog never touches the policy; the caller takes the edited list
// after OK (TakeList) and drops it on Cancel.
//
// Each entry either has a key of its own or inherits the key of the entry in the row above it
// (the policy's key for the first row): an entry whose key equals the inherited one is shown
// without a key of its own, which is how a template's action list keeps KEYNAME inheritance.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "control/ozControlViews.h"
#include "ozForm.h"

class ozADMActionList;
class ozActionItem;
class ozSubKey;

class ozActionListDialog : public ozDialog {
public:
    // The controls, in tab order.
    enum : int {
        EntryList = 206,
        KeyGroup = 307,
        OwnKeyCheck = 310,
        KeyEdit = 279,
        BrowseButton = 322,
        ValueGroup = 308,
        ValueNameEdit = 243,
        ValueEdit = 280,
        NormalRadio = 316,
        NumericRadio = 317,
        DeleteRadio = 318,
        ListButtonsGroup = 309,
        InsertButton = 320,
        DeleteButton = 321,
    };
    // Browses the registry below the root of `initial` (1 the user's, 2 the machine's) and
    // hands the user's choice to `ended` (null when the user cancels), at once or later.
    using Browser = std::function<void(const ozControlViews::RegistryChoice& initial,
                                       ozControlViews::RegistryAnswer ended)>;

    // Works on list's Copy(), or on a new empty list when list is null. defaultKey (not owned)
    // is the key the first entry inherits: the policy's.
    ozActionListDialog(ozSubKey* defaultKey, const ozADMActionList* list, Browser browse);
    ~ozActionListDialog() override;

    // The edited list; the caller owns it from now on (null after the first call).
    std::unique_ptr<ozADMActionList> TakeList();

    const ozDialogTemplate& Layout() const override;
    void Init(ozForm& form) override;
    void Command(ozForm& form, int id, ozFormEvent event) override;

private:
    // The handlers of the controls' events; each ends by refreshing the fields unless said
    // otherwise.
    void SelectionChanged(ozForm& form);
    void Insert(ozForm& form);
    void Delete(ozForm& form);
    void OwnKeyClicked(ozForm& form);
    // Rebinds the current entry to the key edit's path, in the tree and below the root of its
    // present key; leaves the fields as they are.
    void KeyChanged(ozForm& form);
    void ValueNameChanged(ozForm& form);
    // Sets the current entry's value from the value edit as the radio button `kind` says (0:
    // none checked, read as text).
    void ValueChanged(ozForm& form, int kind);
    void Browse(ozForm& form);
    // Shows every entry's value name, in list order, keeping the selected row.
    void FillList(ozForm& form);
    // Sets every control from the working list, the selected row and the current entry.
    void UpdateFields(ozForm& form);
    // The key the entry at the selected row inherits: the key of the entry above it, or the
    // default key for the first row or no row.
    ozSubKey* InheritedKey(const ozForm& form) const;
    // The current entry's key, or the default key when it has none: where its key is looked up.
    ozSubKey* PresentKey() const;
    static int CheckedRadio(const ozForm& form);

    ozSubKey* m_defaultKey;
    std::unique_ptr<ozADMActionList> m_list;
    ozActionItem* m_current = nullptr;
    Browser m_browse;
};
