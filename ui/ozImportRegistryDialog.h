// The import-from-registry dialog (dialog 103): browses a machine's registry (the live one on
// Windows, a folder of hive files elsewhere, see docs/registry-hives.md) as a tree of keys
// beside the values of the selected key, and answers with a root, a key and either the whole
// key or one of its values. It only reads, with read access.
//
// The tree is filled lazily: a key with sub keys gets a placeholder child and is read when the
// user first expands it; keys that cannot be opened are left out. The answer follows the pane
// the user worked in last: the key tree gives the whole key, the value list the selected value.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "control/ozControlViews.h"
#include "ozForm.h"
#include "ozTreeWidget.h"

class ozImportRegistryDialog final : public ozDialog, private ozTreeEvents {
public:
    enum : int {
        MachineEdit = 1030,
        SetButton = 1031,
        RecursiveBox = 1032,
        KeyTree = 1033,
        ValueList = 1034,
    };
    // The images of the key tree, by index; Bitmaps() holds their bitmap resources.
    enum : int {
        ImageMachineRoot = 0,
        ImageUserRoot = 1,
        ImageKey = 2,
        ImageKeySelected = 3,
        ImageUsersRoot = 4,
    };
    static const std::vector<int>& Bitmaps();
    // The most characters a machine name takes.
    static constexpr int MachineNameLength = 16;

    // The texts the host gives the dialog; an empty one keeps the default.
    struct Texts {
        std::string caption;
        std::string machineLabel = "Machine";
        std::string recursiveLabel = "Recursive";
        std::string nameColumn = "Name";
        std::string dataColumn = "Data";
    };

    // The dialog for request (roots offered, initial key and "Recursive"), on the local
    // machine until the user sets another.
    ozImportRegistryDialog(const ozControlViews::RegistryImport& request, const Texts& texts);
    ~ozImportRegistryDialog() override;

    // After the dialog ended: whether OK chose a key, and the answer. Until OK, and when OK
    // found no key selected, the answer is the Cancel answer: root 0 (the first predefined
    // key, standing for none), empty key and value, the whole key, not recursive.
    bool Chosen() const { return m_chosen; }
    const ozControlViews::RegistryChoice& Answer() const { return m_answer; }

    const ozDialogTemplate& Layout() const override { return m_layout; }
    void Init(ozForm& form) override;
    void Command(ozForm& form, int id, ozFormEvent event) override;
    bool Accept(ozForm& form) override;

private:
    struct Node;

    // Shows the roots of the machine named in m_machine, then opens the path of the initial
    // key as far as it exists.
    void Connect();
    void OpenInitialKey();
    // Replaces item's placeholder by its sub keys, once.
    void Enumerate(ozTreeItem item);
    void AppendKey(ozTreeItem parent, unsigned int root, const std::string& path,
                   const std::string& text, int image, bool hasSubKeys);
    void ShowValues(ozTreeItem item);
    // The key of item; null for a placeholder or no item.
    Node* NodeOf(ozTreeItem item) const;

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

    ozControlViews::RegistryImport m_request;
    ozDialogTemplate m_layout;
    ozForm* m_form = nullptr;
    ozTreeWidget* m_tree = nullptr;
    std::string m_machine;
    // The keys of the tree's items, owned here; an item without one is a placeholder.
    std::vector<std::unique_ptr<Node>> m_nodes;
    // The value names of the list's rows ("" the default value).
    std::vector<std::string> m_valueNames;
    bool m_valueListLast = false;
    bool m_chosen = false;
    ozControlViews::RegistryChoice m_answer;
};
