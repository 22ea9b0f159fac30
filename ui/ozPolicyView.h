// The policy view (display mode 0): the loaded templates as a tree of roots, categories and
// policies in the policy tree widget, with the parts panel beside it. A click on a policy's
// icon cycles its state (disabled, not configured, enabled, disabled); selecting a policy shows
// its parts, and the selection only moves on when the panel's values are accepted. With
// template editing on, the tree also offers the template-editing menu, renames by F2 or a
// double click, and edits action lists.
//
// Items carry their model node as data; the view holds no item after the tree it shows goes
// (Fill with null empties it).
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "control/ozControlViews.h"
#include "ozElementEditors.h"
#include "ozTreeWidget.h"

class CADMCtrl;
class ozADMNode;
class ozADMPolicy;
class ozPartsPanel;
class ozTreeNode;
struct ozMenu;
class ozViewPlatform;
struct tTreeCodeHandle;

// Host string-table entries the policy view uses.
enum : unsigned short {
    HostTextNoTemplate = 17,      // the placeholder item before the first fill
    HostTextNewElementName = 18,  // the name of a new category or policy
    HostTextDeleteCategory = 79,  // the question before deleting a category
    HostTextDeleteElement = 80,   // ... any other element
};

// The template-editing menu's commands.
enum : unsigned int {
    PolicyCommandDelete = 32783,
    PolicyCommandNewCategory = 32784,
    PolicyCommandNewPolicy = 32785,
    PolicyCommandControlProperties = 32794,
    PolicyCommandRename = 32795,
    PolicyCommandHelp = 32796,
    PolicyCommandPolicyProperties = 32798,
    PolicyCommandActionListOn = 32800,
    PolicyCommandActionListOff = 32801,
};

class ozPolicyView : public ozTreeEvents {
public:
    ozPolicyView(ozViewPlatform& platform, ozPartsPanel& panel);

    // The control whose document edits mark modified and whose host texts the view shows (not
    // owned).
    void Control(CADMCtrl* control) { m_control = control; }
    // The views whose registry import dialog the action list editor browses with (not owned;
    // null: browsing finds nothing).
    void Views(ozControlViews* views) { m_views = views; }
    // Sets up the tree: its images and the placeholder item (host text 17).
    void Create();
    // Rebuilds the tree from code's policy tree (null: empties it), the user root only when
    // showUser, the machine root only when showMachine. The parts panel is emptied first
    // (values not committed are dropped); the first policy marked selected is then made visible
    // and selected again, and every mark is consumed.
    void Fill(tTreeCodeHandle* code, bool showUser, bool showMachine);
    // Marks the selected policy's registry key as selected, so that a profile saved now selects
    // the policy again when loaded, and the policy itself, so that the next Fill (the control
    // refreshes the view after saving) selects it again.
    void MarkSelection();
    void WithADMEdit(bool withEdit) { m_withADMEdit = withEdit; }
    bool WithADMEdit() const { return m_withADMEdit; }
    // Starts renaming item when its node is a category or a policy.
    void Rename(ozTreeItem item);
    // Runs a template-editing menu command on the node of the item last right-clicked; nothing
    // when that item went with a Fill since.
    void RunCommand(unsigned int command);

    // ozTreeEvents
    void ItemExpanding(ozTreeItem item, bool expanding) override;
    void IconPressed(ozTreeItem item) override;
    void IconReleased(ozTreeItem item) override;
    bool SelectionChanging(ozTreeItem from, ozTreeItem to) override;
    void SelectionChanged(ozTreeItem item) override;
    void RightClicked(ozTreeItem item) override;
    void DoubleClicked(ozTreeItem item) override;
    void KeyPressed(int virtualKey) override;
    bool LabelEdited(ozTreeItem item, const std::string* text) override;

private:
    // Appends the items of first and its following siblings with their subtrees below parent;
    // marked receives the item of the first policy marked selected.
    void AppendItems(ozTreeItem parent, ozTreeNode* first, bool showUser, bool showMachine,
                     ozTreeItem& marked);
    // Expands item's parents, as the user would, and scrolls item into view.
    void Reveal(ozTreeItem item);
    ozADMNode* Node(ozTreeItem item) const;
    // The template-editing menu for node, its entries enabled or disabled by the node's kind
    // (root, category, policy with a registry key, policy without one).
    static ozMenu TemplateMenu(ozADMNode& node);
    void ShowHelp(ozADMPolicy& policy);
    void EditActionList(ozADMPolicy& policy, bool actionListOn);
    // "New": names node by host text 18, appends it below the menu's node in the model and
    // below its item in the tree, and selects it. The tree stays as it was when the model
    // refuses the node (which is then destroyed).
    void InsertNew(std::unique_ptr<ozADMNode> node);
    // "Delete": after the user's Yes, removes the menu's node from the model and its item.
    void DeleteMenuNode();
    void EditPolicyProperties(ozADMPolicy& policy);
    void EditParts(ozADMPolicy& policy);
    // What the element editors are given: a finished edit marks the control modified and shows
    // the selected policy's parts again; browsing goes to the registry view's import dialog.
    ozEditorContext EditorContext();
    // Runs an element editor. When the tree it edits goes meanwhile (the view shows another
    // code object), the editor no longer acts and `ended` is not called.
    void RunEditor(std::unique_ptr<ozDialog> dialog,
                   std::function<void(ozDialog& dialog, bool accepted)> ended);
    // The registry key browser of the action list editor and the element editors.
    // It offers the one root of initial, without "Recursive".
    void BrowseRegistry(const ozControlViews::RegistryChoice& initial,
                        ozControlViews::RegistryAnswer ended);

    ozViewPlatform& m_platform;
    ozPartsPanel& m_panel;
    CADMCtrl* m_control = nullptr;
    ozControlViews* m_views = nullptr;
    tTreeCodeHandle* m_code = nullptr;
    ozTreeItem m_pressed = ozNoItem;
    ozTreeItem m_menuItem = ozNoItem;
    ozADMNode* m_menuNode = nullptr;
    // Counts the code objects shown (and the emptyings), so that a dialog still open when its
    // tree goes knows that its policy may be gone.
    unsigned long m_codeGeneration = 0;
    // Element editors open now (headless ones stay open): no node is deleted meanwhile.
    int m_editorsOpen = 0;
    bool m_withADMEdit = false;
};
