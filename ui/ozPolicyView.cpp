#include "ozPolicyView.h"

#include <functional>
#include <memory>
#include <utility>

#include "control/CADMCtrl.h"
#include "control/ozControlViews.h"
#include "control/ozPolicyEdit.h"
#include "core/adm/ozADMCategory.h"
#include "core/adm/ozADMPolicy.h"
#include "core/adm/ozADMRoot.h"
#include "core/adm/ozADMTree.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozSubKey.h"
#include "ozActionListDialog.h"
#include "ozHelpDialog.h"
#include "ozImages.h"
#include "ozMenu.h"
#include "ozPartsPanel.h"
#include "ozViewPlatform.h"
#include "platform/ozAsciiCase.h"

namespace {

int PolicyImage(tPOLICYSTATE state)
{
    switch (state) {
        case PolicyDisabled:
            return PolicyImageDisabled;
        case PolicyEnabled:
            return PolicyImageEnabled;
        default:
            return PolicyImageNotConfigured;
    }
}

// A click on a policy's icon moves its state on in this order: disabled, not configured,
// enabled, disabled.
tPOLICYSTATE NextState(tPOLICYSTATE state)
{
    switch (state) {
        case PolicyDisabled:
            return PolicyNotConfigured;
        case PolicyEnabled:
            return PolicyDisabled;
        default:
            return PolicyEnabled;
    }
}

ozADMPolicy* AsPolicy(ozADMNode* node)
{
    return node != nullptr && node->NodeType() == NodePolicy ? static_cast<ozADMPolicy*>(node)
                                                             : nullptr;
}

// The kinds of node the template-editing menu tells apart, as the columns of its table.
enum MenuNodeKind { MenuRoot, MenuCategory, MenuKeyedPolicy, MenuKeylessPolicy };

MenuNodeKind KindOf(ozADMNode& node)
{
    switch (node.NodeType()) {
        case NodeRoot:
            return MenuRoot;
        case NodeCategory:
            return MenuCategory;
        default:
            return static_cast<ozADMPolicy&>(node).RegKey() != nullptr ? MenuKeyedPolicy
                                                                       : MenuKeylessPolicy;
    }
}

constexpr ozMenuState On = ozMenuState::Enabled;
constexpr ozMenuState Off = ozMenuState::Disabled;

struct MenuRow {
    const char* caption;  // null for a separator
    unsigned int command;
    ozMenuState states[4];  // by MenuNodeKind
};

// The template-editing menu, its "New" submenu after the row that opens it.
const MenuRow TemplateMenuRows[] = {
    {"Delete", PolicyCommandDelete, {Off, On, On, On}},
    {"New", 0, {On, On, Off, Off}},
    {nullptr, 0, {}},
    {"Policy Properties", PolicyCommandPolicyProperties, {Off, Off, On, On}},
    {"Control Properties", PolicyCommandControlProperties, {Off, Off, On, Off}},
    {"Rename", PolicyCommandRename, {Off, On, On, On}},
    {nullptr, 0, {}},
    {"Help", PolicyCommandHelp, {Off, Off, On, On}},
    {nullptr, 0, {}},
    {"Policy Actionlist On", PolicyCommandActionListOn, {Off, Off, On, Off}},
    {"Policy Actionlist Off", PolicyCommandActionListOff, {Off, Off, On, Off}},
};
const MenuRow NewSubmenuRows[] = {
    {"Category", PolicyCommandNewCategory, {On, On, Off, Off}},
    {"Policy", PolicyCommandNewPolicy, {Off, On, Off, Off}},
};

ozMenuEntry Entry(const MenuRow& row, MenuNodeKind kind)
{
    ozMenuEntry entry;
    if (row.caption != nullptr) {
        entry.caption = row.caption;
        entry.command = row.command;
        entry.state = row.states[kind];
    }
    return entry;
}

// Forgets the paths worked out for node and everything below it (after a rename).
void ClearPaths(ozADMNode& node)
{
    node.ClearPath();
    if (node.Down() != nullptr)
        node.Down()->Execute([](ozTreeNode* below) {
            static_cast<ozADMNode*>(below)->ClearPath();
            return true;
        });
}

// An element editor as the view runs it: once the tree it edits has gone (the view shows
// another code object), its controls do nothing and OK closes it without storing.
class EditorGuard : public ozDialog {
public:
    EditorGuard(std::unique_ptr<ozDialog> editor, std::function<bool()> treeKept)
        : m_editor(std::move(editor)), m_treeKept(std::move(treeKept))
    {
    }
    ozDialog& Editor() { return *m_editor; }
    const ozDialogTemplate& Layout() const override { return m_editor->Layout(); }
    void Init(ozForm& form) override { m_editor->Init(form); }
    void Command(ozForm& form, int id, ozFormEvent event) override
    {
        if (m_treeKept())
            m_editor->Command(form, id, event);
    }
    bool Accept(ozForm& form) override { return !m_treeKept() || m_editor->Accept(form); }

private:
    std::unique_ptr<ozDialog> m_editor;
    std::function<bool()> m_treeKept;
};

}  // namespace

ozPolicyView::ozPolicyView(ozViewPlatform& platform, ozPartsPanel& panel)
    : m_platform(platform), m_panel(panel)
{
}

void ozPolicyView::Create()
{
    ozTreeWidget& tree = m_platform.PolicyTree();
    tree.Events(this);
    tree.Images(ozPolicyTreeBitmaps());
    tree.DeleteAll();
    std::string placeholder = m_control != nullptr ? m_control->GetString(HostTextNoTemplate) : "";
    tree.Append(ozNoItem, placeholder, PolicyImageCategory, PolicyImageCategory, false, nullptr);
}

void ozPolicyView::Fill(tTreeCodeHandle* code, bool showUser, bool showMachine)
{
    ozTreeWidget& tree = m_platform.PolicyTree();
    // The panel and the menu may hold nodes of the tree shown so far, which may be gone.
    m_panel.Show(nullptr);
    m_pressed = ozNoItem;
    m_menuItem = ozNoItem;
    m_menuNode = nullptr;
    if (code != m_code || code == nullptr)
        ++m_codeGeneration;
    m_code = code;
    tree.DeleteAll();
    if (code == nullptr || code->tree == nullptr)
        return;
    ozTreeItem marked = ozNoItem;
    AppendItems(ozNoItem, code->tree->Down(), showUser, showMachine, marked);
    if (marked != ozNoItem) {
        Reveal(marked);
        tree.Select(marked);
    }
}

void ozPolicyView::AppendItems(ozTreeItem parent, ozTreeNode* first, bool showUser,
                               bool showMachine, ozTreeItem& marked)
{
    ozTreeWidget& tree = m_platform.PolicyTree();
    for (ozTreeNode* treeNode = first; treeNode != nullptr; treeNode = treeNode->Next()) {
        auto* node = static_cast<ozADMNode*>(treeNode);
        int image = PolicyImageCategory;
        bool markedPolicy = false;
        switch (node->NodeType()) {
            case NodeRoot: {
                unsigned long rootType = static_cast<ozADMRoot*>(node)->RootType();
                if ((rootType == RootUser && !showUser) ||
                    (rootType == RootMachine && !showMachine))
                    continue;
                image = rootType == RootUser      ? PolicyImageUserRoot
                        : rootType == RootMachine ? PolicyImageMachineRoot
                                                  : PolicyImageOtherRoot;
                break;
            }
            case NodeCategory:
                image = node->Open() ? PolicyImageCategoryOpen : PolicyImageCategory;
                break;
            case NodePolicy: {
                auto* policy = static_cast<ozADMPolicy*>(node);
                image = PolicyImage(policy->State());
                // The mark is consumed: only the first marked policy is selected again.
                markedPolicy = policy->Selected();
                policy->Selected(false);
                break;
            }
        }
        const char* name = node->Name();
        ozTreeItem item =
            tree.Append(parent, name != nullptr ? name : "", image, image, node->Open(), node);
        if (markedPolicy && marked == ozNoItem)
            marked = item;
        AppendItems(item, node->Down(), showUser, showMachine, marked);
    }
}

void ozPolicyView::Reveal(ozTreeItem item)
{
    ozTreeWidget& tree = m_platform.PolicyTree();
    for (ozTreeItem parent = tree.Parent(item); parent != ozNoItem; parent = tree.Parent(parent)) {
        if (!tree.Expanded(parent)) {
            ItemExpanding(parent, true);
            tree.Expand(parent, true);
        }
    }
    tree.EnsureVisible(item);
}

ozADMNode* ozPolicyView::Node(ozTreeItem item) const
{
    return item != ozNoItem ? static_cast<ozADMNode*>(m_platform.PolicyTree().Data(item)) : nullptr;
}

void ozPolicyView::MarkSelection()
{
    ozADMPolicy* policy = AsPolicy(Node(m_platform.PolicyTree().Selection()));
    if (policy == nullptr)
        return;
    // One key marked: the one of the policy selected now.
    if (m_code != nullptr && m_code->tree != nullptr) {
        m_code->tree->UsrTree().ResetSelected();
        m_code->tree->MacTree().ResetSelected();
    }
    if (ozSubKey* key = policy->RegKey())
        key->Selected(true);
    policy->Selected(true);
}

void ozPolicyView::Rename(ozTreeItem item)
{
    ozADMNode* node = Node(item);
    if (node != nullptr && node->NodeType() != NodeRoot)
        m_platform.PolicyTree().EditLabel(item);
}

void ozPolicyView::ItemExpanding(ozTreeItem item, bool expanding)
{
    ozADMNode* node = Node(item);
    if (node == nullptr)
        return;
    if (node->NodeType() == NodeCategory) {
        int image = expanding ? PolicyImageCategoryOpen : PolicyImageCategory;
        m_platform.PolicyTree().Image(item, image, image);
    }
    node->Open(expanding);
}

void ozPolicyView::IconPressed(ozTreeItem item)
{
    m_pressed = item;
}

void ozPolicyView::IconReleased(ozTreeItem item)
{
    ozTreeItem pressed = m_pressed;
    m_pressed = ozNoItem;
    if (item == ozNoItem || item != pressed)
        return;
    ozADMPolicy* policy = AsPolicy(Node(item));
    if (policy == nullptr)
        return;
    tPOLICYSTATE next = NextState(policy->State());
    if (m_control != nullptr)
        ozEditPolicyState(*m_control, *policy, next);
    else
        policy->State(next);
    m_platform.PolicyTree().Image(item, PolicyImage(next), PolicyImage(next));
    m_panel.StateChanged();
}

bool ozPolicyView::SelectionChanging(ozTreeItem, ozTreeItem)
{
    return m_panel.Commit();
}

void ozPolicyView::SelectionChanged(ozTreeItem item)
{
    m_panel.Show(AsPolicy(Node(item)));
}

void ozPolicyView::RightClicked(ozTreeItem item)
{
    ozADMNode* node = Node(item);
    if (!m_withADMEdit || node == nullptr)
        return;
    m_menuItem = item;
    m_menuNode = node;
    m_platform.PopupMenu(TemplateMenu(*node),
                         [this](unsigned int command) { RunCommand(command); });
}

ozMenu ozPolicyView::TemplateMenu(ozADMNode& node)
{
    MenuNodeKind kind = KindOf(node);
    ozMenu menu;
    for (const MenuRow& row : TemplateMenuRows) {
        menu.entries.push_back(Entry(row, kind));
        if (row.caption != nullptr && row.command == 0)
            for (const MenuRow& subRow : NewSubmenuRows)
                menu.entries.back().submenu.push_back(Entry(subRow, kind));
    }
    return menu;
}

void ozPolicyView::DoubleClicked(ozTreeItem item)
{
    if (m_withADMEdit)
        Rename(item);
}

void ozPolicyView::KeyPressed(int virtualKey)
{
    if (m_withADMEdit && virtualKey == ozKeyF2)
        Rename(m_platform.PolicyTree().Selection());
}

bool ozPolicyView::LabelEdited(ozTreeItem item, const std::string* text)
{
    ozADMNode* node = Node(item);
    if (text == nullptr || node == nullptr)
        return false;
    node->Name(text->c_str());
    ClearPaths(*node);
    if (m_control != nullptr)
        ozMarkDocumentEdited(*m_control);
    return true;
}

void ozPolicyView::RunCommand(unsigned int command)
{
    if (m_menuNode == nullptr)
        return;
    ozADMPolicy* policy = AsPolicy(m_menuNode);
    MenuNodeKind kind = KindOf(*m_menuNode);
    switch (command) {
        case PolicyCommandNewCategory:
            if (kind == MenuRoot || kind == MenuCategory)
                InsertNew(std::make_unique<ozADMCategory>());
            break;
        case PolicyCommandNewPolicy:
            if (kind == MenuCategory)
                InsertNew(std::make_unique<ozADMPolicy>());
            break;
        case PolicyCommandDelete:
            if (kind != MenuRoot)
                DeleteMenuNode();
            break;
        case PolicyCommandRename:
            Rename(m_menuItem);
            break;
        case PolicyCommandHelp:
            if (policy != nullptr)
                ShowHelp(*policy);
            break;
        case PolicyCommandPolicyProperties:
            if (policy != nullptr)
                EditPolicyProperties(*policy);
            break;
        case PolicyCommandControlProperties:
            if (kind == MenuKeyedPolicy)
                EditParts(*policy);
            break;
        case PolicyCommandActionListOn:
        case PolicyCommandActionListOff:
            if (policy != nullptr)
                EditActionList(*policy, command == PolicyCommandActionListOn);
            break;
        default:
            break;
    }
}

namespace {

// The name for a new element under parent: base, or base followed by a number when a sibling
// has that name already. A template read back merges siblings of the same name, so a second
// element left with the first one's name would vanish into it.
std::string UnusedChildName(ozADMNode& parent, const std::string& base)
{
    for (int number = 1;; ++number) {
        std::string name = number == 1 ? base : base + " " + std::to_string(number);
        bool taken = false;
        for (ozTreeNode* child = parent.Down(); child != nullptr && !taken; child = child->Next()) {
            const char* childName = static_cast<ozADMNode*>(child)->Name();
            taken = childName != nullptr && ozAsciiSameIgnoringCase(childName, name.c_str());
        }
        if (!taken)
            return name;
    }
}

}  // namespace

void ozPolicyView::InsertNew(std::unique_ptr<ozADMNode> node)
{
    ozADMNode& parent = *m_menuNode;
    std::string name = UnusedChildName(
        parent, m_control != nullptr ? m_control->GetString(HostTextNewElementName) : "");
    node->Name(name.c_str());
    ozADMTree* model = parent.ADMTree();
    if (model == nullptr || !model->AppendChild(&parent, parent.LastChild(), node.get()))
        return;
    ozADMNode* added = node.release();
    int image =
        added->NodeType() == NodePolicy ? PolicyImage(PolicyNotConfigured) : PolicyImageCategory;
    ozTreeWidget& tree = m_platform.PolicyTree();
    ozTreeItem item = tree.Append(m_menuItem, name, image, image, false, added);
    Reveal(item);
    tree.Select(item);
    if (m_control != nullptr)
        ozMarkDocumentEdited(*m_control);
}

void ozPolicyView::DeleteMenuNode()
{
    if (m_editorsOpen > 0)
        return;
    m_panel.Show(nullptr);
    unsigned short question =
        m_menuNode->NodeType() == NodeCategory ? HostTextDeleteCategory : HostTextDeleteElement;
    std::string text = m_control != nullptr ? m_control->GetString(question) : "";
    if (m_platform.UI().ShowMessage(HostMessageQuestion, text)) {
        ozADMTree* model = m_menuNode->ADMTree();
        if (model != nullptr && model->SetCurrentNode(m_menuNode) && model->Delete()) {
            m_platform.PolicyTree().Delete(m_menuItem);
            m_pressed = ozNoItem;
            m_menuItem = ozNoItem;
            m_menuNode = nullptr;
        }
    }
    // Marked even when the user answers No, as the control always has.
    if (m_control != nullptr)
        ozMarkDocumentEdited(*m_control);
}

void ozPolicyView::ShowHelp(ozADMPolicy& policy)
{
    m_platform.RunDialog(std::make_unique<ozHelpDialog>(policy), [](ozDialog&, bool) {});
}

void ozPolicyView::BrowseRegistry(const ozControlViews::RegistryChoice& initial,
                                  ozControlViews::RegistryAnswer ended)
{
    if (m_views == nullptr) {
        ended(nullptr);
        return;
    }
    ozControlViews::RegistryImport request;
    request.initial = initial;
    request.singleRoot = true;
    request.showRecursive = false;
    m_views->AskRegistryImport(request, std::move(ended));
}

ozEditorContext ozPolicyView::EditorContext()
{
    ozEditorContext context{m_platform, m_control, {}, {}};
    context.edited = [this] {
        if (m_control != nullptr)
            ozMarkDocumentEdited(*m_control);
        if (m_panel.Policy() != nullptr)
            m_panel.Show(AsPolicy(Node(m_platform.PolicyTree().Selection())));
    };
    context.browse = [this](const ozControlViews::RegistryChoice& initial,
                            ozControlViews::RegistryAnswer ended) {
        BrowseRegistry(initial, std::move(ended));
    };
    return context;
}

void ozPolicyView::RunEditor(std::unique_ptr<ozDialog> dialog,
                             std::function<void(ozDialog& dialog, bool accepted)> ended)
{
    ++m_editorsOpen;
    unsigned long generation = m_codeGeneration;
    auto treeKept = [this, generation] { return generation == m_codeGeneration; };
    m_platform.RunDialog(std::make_unique<EditorGuard>(std::move(dialog), treeKept),
                         [this, treeKept, ended](ozDialog& dialog, bool accepted) {
                             --m_editorsOpen;
                             if (treeKept())
                                 ended(static_cast<EditorGuard&>(dialog).Editor(), accepted);
                         });
}

void ozPolicyView::EditPolicyProperties(ozADMPolicy& policy)
{
    RunEditor(ozCreatePolicyPropertiesDialog(policy, EditorContext()), [](ozDialog&, bool) {});
}

void ozPolicyView::EditParts(ozADMPolicy& policy)
{
    m_panel.Show(nullptr);
    ozADMPolicy* edited = &policy;
    RunEditor(ozCreatePartsDialog(policy, EditorContext()),
              [this, edited](ozDialog&, bool) { m_panel.Show(edited); });
}

void ozPolicyView::EditActionList(ozADMPolicy& policy, bool actionListOn)
{
    ozSubKey* key = policy.RegKey();
    if (key == nullptr) {
        m_platform.UI().ShowMessage(HostMessageError, "You have to set a key first!");
        return;
    }
    auto browse = [this](const ozControlViews::RegistryChoice& initial,
                         ozControlViews::RegistryAnswer ended) {
        BrowseRegistry(initial, std::move(ended));
    };
    const ozADMActionList* list = actionListOn ? policy.ActionListOn() : policy.ActionListOff();
    ozADMPolicy* edited = &policy;
    RunEditor(std::make_unique<ozActionListDialog>(key, list, browse),
              [this, edited, actionListOn](ozDialog& dialog, bool accepted) {
                  if (!accepted)
                      return;
                  std::unique_ptr<ozADMActionList> list =
                      static_cast<ozActionListDialog&>(dialog).TakeList();
                  if (actionListOn)
                      edited->ActionListOn(list.release());
                  else
                      edited->ActionListOff(list.release());
                  if (m_control != nullptr)
                      ozMarkDocumentEdited(*m_control);
              });
}
