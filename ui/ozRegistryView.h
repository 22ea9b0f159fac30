// The registry view (display mode 1): the user and the machine registry trees of the loaded
// data as one tree of keys in the registry tree widget. With both trees shown, each stands
// under a group item (host texts 82 and 83); with one, its root keys are the top level. Sub
// keys show by their images whether they are saved, deleted or have their values erased, and
// whether they come from the template. Expanding and collapsing are kept in the keys. The
// user creates keys (Insert, the menu's "New"), deletes them after a question (Delete, the
// menu's "Delete"; deleted keys live on in the view's holding tree, since values and dialogs
// may still point at them), renames sub keys (F2, a double click), marks a sub key's
// operation, opens the legend and imports from the registry or from a profile file through
// the key menu (a right click). Every change marks the control's document modified.
//
// Items carry their ozRootKey or ozSubKey as data (group items none); the view holds no item
// after the trees it shows go (Fill with null empties it).
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "core/registry/ozRegTree.h"
#include "ozMenu.h"
#include "ozTreeWidget.h"

class CADMCtrl;
class ozRegKey;
class ozSubKey;
class ozTreeNode;
class ozViewPlatform;
struct tTreeCodeHandle;

// Host string-table entries of the registry view.
enum : unsigned short {
    HostTextUserKeys = 82,     // the group item of the user registry tree
    HostTextMachineKeys = 83,  // ... of the machine registry tree
    HostTextNewKeyName = 18,   // a new key's name, before a blank and its number
    HostTextKeyNew = 47,       // the key menu's entries
    HostTextKeyDelete = 48,
    HostTextKeyOpSave = 49,
    HostTextKeyOpNotSaved = 50,
    HostTextKeyOpDelete = 51,
    HostTextKeyImportRegistry = 118,
    HostTextKeyImportProfile = 170,
    HostTextDeleteKey = 58,          // the question before deleting a key
    HostTextKeyStateNotSaved = 66,   // the key states the menu's caption names (as the legend)
    HostTextKeyNameRefused = 116,    // a rename to an empty, "\" holding or sibling's name
    HostTextProfileNotLoaded = 171,  // Import from profile could not load the file
};

// The key menu's commands.
enum : unsigned int {
    RegistryCommandNewKey = 32768,
    RegistryCommandDeleteKey = 32769,
    RegistryCommandOpNotSaved = 32772,
    RegistryCommandOpSave = 32775,
    RegistryCommandOpDelete = 32776,
    RegistryCommandLegend = 32782,
    RegistryCommandImportRegistry = 32797,
    RegistryCommandImportProfile = 32799,
};

// The name of a predefined root key by its number (see ozRootNumber): "HKEY_CURRENT_USER", ...
std::string ozRootKeyName(unsigned int number);

class ozRegistryView : public ozTreeEvents {
public:
    explicit ozRegistryView(ozViewPlatform& platform);

    // The control whose host texts the view shows, whose document its changes mark modified
    // and which loads profiles and imports from the registry (not owned; null: none of it).
    void Control(CADMCtrl* control) { m_control = control; }
    // Sets up the tree: its events and images.
    void Create();
    // Rebuilds the tree from code's registry trees (null: empties it): the user tree when
    // showUser, the machine tree when showMachine. Siblings stand sorted by their text, ignoring
    // case; a key whose IsOpen() is set comes expanded, with its children; a collapsed key's
    // children are appended when it is first expanded. The first sub key marked Selected (in
    // display order) is then made visible and selected, and every mark is consumed.
    void Fill(tTreeCodeHandle* code, bool showUser, bool showMachine);
    // Marks the selected sub key (if any) as the one selected, so that the next Fill and a
    // profile saved now select it again; every other mark in both trees is cleared.
    void MarkSelection();
    // The key of the selected item: null for a group item or no selection.
    ozRegKey* SelectedKey() const;

    // The key menu for the selection (a group item counts as nothing selected): the caption
    // entry naming the key's state (choosing it opens the legend), New, Delete, the three
    // operations and the two imports, each with its picture and enabled by the selection's
    // kind. Texts are host texts; an entry whose host text is empty keeps its own caption.
    ozMenu KeyMenu() const;
    // Runs a key menu command on the selection; commands the selection does not allow do
    // nothing.
    void RunCommand(unsigned int command);
    // New key: below the selected key (root or sub key), named by host text 18, a blank and the
    // first number from 1 on that no key has; selected. False when nothing allows a key there.
    bool NewKey();
    // Delete key: after the user's Yes to host text 58, the selected sub key with its subtree
    // moves into the holding tree and its item goes. False when nothing was deleted.
    bool DeleteKey();
    // Sets the selected sub key's Save flag and operation and shows its new images.
    void SetOperation(bool save, int op);
    // Import from profile: asks for a file and loads it as the user data through the control;
    // host text 171 when that fails.
    void ImportProfile();

    // Who shows the values of the selected key (the value list beside the tree): keySelected
    // gets the key of every item the user, or Fill's reselection, selects (its ozRootKey or
    // ozSubKey; null for a group item); keysCleared is called when Fill empties the tree, so
    // that nothing keeps a key that may go. The selections made while filling are not reported.
    void OnKeySelected(std::function<void(ozRegKey* key)> keySelected)
    {
        m_keySelected = std::move(keySelected);
    }
    void OnKeysCleared(std::function<void()> keysCleared)
    {
        m_keysCleared = std::move(keysCleared);
    }

    // ozTreeEvents
    void ItemExpanding(ozTreeItem item, bool expanding) override;
    void IconPressed(ozTreeItem) override {}
    void IconReleased(ozTreeItem) override {}
    bool SelectionChanging(ozTreeItem, ozTreeItem) override { return true; }
    void SelectionChanged(ozTreeItem item) override;
    // A right click shows the key menu for the selection.
    void RightClicked(ozTreeItem item) override;
    void DoubleClicked(ozTreeItem item) override;
    void KeyPressed(int virtualKey) override;
    // Refuses (host text 116, old name kept) an empty name, one holding "\\" and the name of
    // a sibling; otherwise renames the key.
    bool LabelEdited(ozTreeItem item, const std::string* text) override;

private:
    // Appends the keys below `above` (a key, or a registry tree for its root keys) sorted
    // below parent, each expanded key with its subtree, each collapsed one with its children
    // to come (ChildrenLater). While filling, marked receives the item of the first sub key
    // marked selected.
    void AppendChildren(ozTreeItem parent, const ozTreeNode& above, ozTreeItem& marked);
    // Appends the children of item's key when they are still to come.
    void AppendLaterChildren(ozTreeItem item);
    // Expands item's parents, as the user would, and scrolls item into view.
    void Reveal(ozTreeItem item);
    ozRegKey* Key(ozTreeItem item) const;
    ozSubKey* SubKey(ozTreeItem item) const;
    // Starts renaming item when its key is a sub key.
    void Rename(ozTreeItem item);
    // The registry tree the key is in (null when the view shows no tree holding it), and the
    // predefined root handle it stands under.
    ozRegTree* TreeOf(ozRegKey& key, HKEY& root) const;
    // Tells who shows values which key is selected now (after the tree changed quietly).
    void ReportSelection();
    void MarkEdited();
    std::string HostText(unsigned short code) const;

    ozViewPlatform& m_platform;
    CADMCtrl* m_control = nullptr;
    tTreeCodeHandle* m_code = nullptr;
    // Set while Fill rebuilds the tree: its selection events are not the user's.
    bool m_filling = false;
    // While filling: the marked key inside a collapsed key, whose way is being opened.
    const ozSubKey* m_markTarget = nullptr;
    std::function<void(ozRegKey*)> m_keySelected;
    std::function<void()> m_keysCleared;
    // Deleted keys, kept alive for the view's lifetime, and the last one put there.
    ozRegTree m_deleted;
    ozTreeNode* m_lastDeleted = nullptr;
};
