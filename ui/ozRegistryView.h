// The registry view (display mode 1): the user and the machine registry trees of the loaded
// data as one tree of keys in the registry tree widget. With both trees shown, each stands
// under a group item (host texts 82 and 83); with one, its root keys are the top level. Sub
// keys show by their images whether they are saved, deleted or have their values erased, and
// whether they come from the template. Of the user's actions in the tree the view keeps the
// expanding and collapsing (in the keys) and the selection; it offers no menu, keys or renaming.
//
// Items carry their ozRootKey or ozSubKey as data (group items none); the view holds no item
// after the trees it shows go (Fill with null empties it).
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "ozTreeWidget.h"

class CADMCtrl;
class ozRegKey;
class ozTreeNode;
class ozViewPlatform;
struct tTreeCodeHandle;

// Host string-table entries of the registry view.
enum : unsigned short {
    HostTextUserKeys = 82,     // the group item of the user registry tree
    HostTextMachineKeys = 83,  // ... of the machine registry tree
};

// The name of a predefined root key by its number (see ozRootNumber): "HKEY_CURRENT_USER", ...
std::string ozRootKeyName(unsigned int number);

class ozRegistryView : public ozTreeEvents {
public:
    explicit ozRegistryView(ozViewPlatform& platform);

    // The control whose host texts the view shows (not owned).
    void Control(CADMCtrl* control) { m_control = control; }
    // Sets up the tree: its events and images.
    void Create();
    // Rebuilds the tree from code's registry trees (null: empties it): the user tree when
    // showUser, the machine tree when showMachine. Siblings stand sorted by their text, ignoring
    // case; a key whose IsOpen() is set comes expanded. The first sub key marked Selected (in
    // display order) is then made visible and selected, and every mark is consumed.
    void Fill(tTreeCodeHandle* code, bool showUser, bool showMachine);
    // Marks the selected sub key (if any) as the one selected, so that the next Fill and a
    // profile saved now select it again; every other mark in both trees is cleared.
    void MarkSelection();
    // The key of the selected item: null for a group item or no selection.
    ozRegKey* SelectedKey() const;

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
    void RightClicked(ozTreeItem) override {}
    void DoubleClicked(ozTreeItem) override {}
    void KeyPressed(int) override {}
    bool LabelEdited(ozTreeItem, const std::string*) override { return false; }

private:
    // Appends the keys below `above` (a key, or a registry tree for its root keys) sorted,
    // each with its subtree, below parent; marked receives the item of the first sub key
    // marked selected.
    void AppendChildren(ozTreeItem parent, const ozTreeNode& above, ozTreeItem& marked);
    // Expands item's parents, as the user would, and scrolls item into view.
    void Reveal(ozTreeItem item);
    ozRegKey* Key(ozTreeItem item) const;

    ozViewPlatform& m_platform;
    CADMCtrl* m_control = nullptr;
    tTreeCodeHandle* m_code = nullptr;
    // Set while Fill rebuilds the tree: its selection events are not the user's.
    bool m_filling = false;
    std::function<void(ozRegKey*)> m_keySelected;
    std::function<void()> m_keysCleared;
};
