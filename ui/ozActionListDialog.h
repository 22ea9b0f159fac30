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
    // Browses the registry for a key below the root numbered root (1 the user's, 2 the
    // machine's); true with the choice filled in, false when the user cancels.
    using Browser = std::function<bool(unsigned int root, ozControlViews::RegistryChoice& choice)>;

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
    ozSubKey* m_defaultKey;
    std::unique_ptr<ozADMActionList> m_list;
    ozActionItem* m_current = nullptr;
    Browser m_browse;
};
