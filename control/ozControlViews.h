// What the control asks of its views: the policy view (display mode 0), the registry view (1)
// and the registry-value grid (2), with the parts panel and the dialogs. The user interface
// implements it; a control without views (the command-line host, tests) leaves these calls
// without effect.
#pragma once

#include <functional>
#include <string>

struct tTreeCodeHandle;

class ozControlViews {
public:
    virtual ~ozControlViews() = default;

    // Fills the view of `displayMode` from the code object (null: empties it), showing the
    // user tree, the machine tree or both, and makes it the visible one.
    virtual void Show(int displayMode, tTreeCodeHandle* code, bool showUser, bool showMachine) = 0;
    // Hides the view of `displayMode` with its companions.
    virtual void Hide(int displayMode) = 0;
    // Whether the view of `displayMode` is visible.
    virtual bool IsVisible(int displayMode) const = 0;
    // Commits the user's pending edit in the parts panel; false when the edit is refused.
    virtual bool CommitPartsPanel() = 0;
    // Forgets what the parts panel shows (before its code object goes).
    virtual void ClearPartsPanel() = 0;
    // After the pending edit of displayMode's view was saved: marks what the view has selected
    // in the registry trees, so that a profile saved now selects it again when loaded.
    virtual void MarkSelection(int /*displayMode*/) {}
    // Has the registry view (mode 1) or the grid (mode 2) store its pending edit.
    virtual void StorePendingEdit(int displayMode) = 0;
    // Whether the policy view offers template editing.
    virtual void WithADMEdit(bool withEdit) = 0;
    // The grid's row operations and the search and replace bar; false when not available.
    virtual bool GridInsert() = 0;
    virtual bool GridDelete() = 0;
    virtual bool ShowSearch() = 0;
    virtual bool ShowReplace() = 0;
    virtual bool HideSearch() = 0;
    // The import-from-registry dialog's answer: a root number (ozRootNumber), a key path below
    // it, and either the whole key or the name of one of its values ("" its default value).
    struct RegistryChoice {
        unsigned int root = 2;
        std::string key;
        std::string value;
        bool wholeKey = true;
        bool recursive = false;
        std::string machine;  // where the key was found; "" the local machine
    };
    // What the dialog offers: the roots of the user (HKEY_CURRENT_USER, on the local machine
    // only) and of the machine (HKEY_LOCAL_MACHINE, HKEY_USERS), or the one root of `initial`
    // when singleRoot is set; the "Recursive" box (checked as initial.recursive) unless hidden.
    struct RegistryImport {
        RegistryChoice initial;
        bool singleRoot = false;
        bool showRecursive = true;
    };
    // Runs the import-from-registry dialog. `ended` gets the user's choice on OK, null on
    // Cancel (or OK without a key selected). Modal platforms call it before returning; headless
    // ones when the dialog ends, which may be never; views that show no dialog, at once with
    // null.
    using RegistryAnswer = std::function<void(const RegistryChoice* chosen)>;
    virtual void AskRegistryImport(const RegistryImport& request, RegistryAnswer ended) = 0;
    virtual void ShowLegend() = 0;
    virtual void ShowAbout() = 0;
};
