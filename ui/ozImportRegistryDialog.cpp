#include "ozImportRegistryDialog.h"

#include <algorithm>

#include "core/registry/CRegistryKey.h"
#include "core/registry/ozRegValue.h"
#include "platform/ozAsciiCase.h"

namespace {

constexpr int ImportRegistryDialogResource = 103;
constexpr int UserRoot = 1;
constexpr int MachineRoot = 2;
constexpr int UsersRoot = 3;

// The layout in dialog units: the two panes share the width 55 % to 45 %.
constexpr int Margin = 7;
constexpr int PaneTop = 26;
constexpr int PaneHeight = 140;
constexpr int PaneGap = 4;
constexpr int DialogWidth = 300;
constexpr int PanesWidth = DialogWidth - 2 * Margin - PaneGap;
constexpr int TreeWidth = PanesWidth * 55 / 100;

struct SubKey {
    std::string name;
    bool hasSubKeys;
};

const char* MachineArgument(const std::string& machine)
{
    return machine.empty() ? nullptr : machine.c_str();
}

bool HasSubKeys(const CRegistryKey& key)
{
    DWORD count = 0;
    return RegQueryInfoKeyA(key.Handle(), nullptr, nullptr, nullptr, &count, nullptr, nullptr,
                            nullptr, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS &&
           count > 0;
}

// The sub keys of a key that can be opened for reading, sorted by name as the user expects;
// what cannot be read is left out.
std::vector<SubKey> ReadSubKeys(unsigned int root, const std::string& path,
                                const std::string& machine)
{
    std::vector<SubKey> keys;
    try {
        CRegistryKey key(ozRootHandle(root), path.c_str(), KEY_READ, MachineArgument(machine));
        for (auto at = key.BeginSubkeyIteration(); at != key.EndSubkeyIteration(); ++at) {
            try {
                keys.push_back({at.Name(), HasSubKeys(at.OpenKey(KEY_READ))});
            } catch (const CRegistryKey::Exception&) {
            }
        }
    } catch (const CRegistryKey::Exception&) {
        // A key that cannot be (completely) enumerated shows what was read.
    }
    std::sort(keys.begin(), keys.end(), [](const SubKey& a, const SubKey& b) {
        return ozAsciiLowerCased(a.name) < ozAsciiLowerCased(b.name);
    });
    return keys;
}

// Whether the key at path can be opened and has sub keys.
bool KeyHasSubKeys(unsigned int root, const std::string& path, const std::string& machine)
{
    try {
        return HasSubKeys(
            CRegistryKey(ozRootHandle(root), path.c_str(), KEY_READ, MachineArgument(machine)));
    } catch (const CRegistryKey::Exception&) {
        return false;
    }
}

std::string RootName(unsigned int root)
{
    switch (root) {
        case UserRoot:
            return "HKEY_CURRENT_USER";
        case MachineRoot:
            return "HKEY_LOCAL_MACHINE";
        case UsersRoot:
            return "HKEY_USERS";
        default:
            return "HKEY: " + std::to_string(root);
    }
}

int RootImage(unsigned int root)
{
    return root == UserRoot    ? ozImportRegistryDialog::ImageUserRoot
           : root == UsersRoot ? ozImportRegistryDialog::ImageUsersRoot
                               : ozImportRegistryDialog::ImageMachineRoot;
}

}  // namespace

struct ozImportRegistryDialog::Node {
    unsigned int root;
    std::string path;  // below the root; "" for the root itself
    bool enumerated;
};

const std::vector<int>& ozImportRegistryDialog::Bitmaps()
{
    // Machine, user, a key and a key selected, the users: the registry view's pictures.
    static const std::vector<int> bitmaps = {216, 215, 230, 231, 262};
    return bitmaps;
}

ozImportRegistryDialog::ozImportRegistryDialog(const ozControlViews::RegistryImport& request,
                                               const Texts& texts)
    : m_request(request)
{
    using Kind = ozControlKind;
    m_layout.resource = ImportRegistryDialogResource;
    m_layout.caption = texts.caption;
    m_layout.width = DialogWidth;
    m_layout.height = 190;
    m_layout.controls.emplace_back(MachineEdit, Kind::Edit, texts.machineLabel, Margin, 7, 150, 14);
    m_layout.controls.back().maxLength = MachineNameLength;
    m_layout.controls.emplace_back(SetButton, Kind::Button, "Set", 160, 7, 40, 14);
    if (request.showRecursive)
        m_layout.controls.emplace_back(RecursiveBox, Kind::CheckBox, texts.recursiveLabel, 210, 9,
                                       83, 10);
    m_layout.controls.emplace_back(KeyTree, Kind::Tree, "", Margin, PaneTop, TreeWidth, PaneHeight,
                                   ozControlReportsFocus);
    m_layout.controls.emplace_back(ValueList, Kind::List, "", Margin + TreeWidth + PaneGap, PaneTop,
                                   PanesWidth - TreeWidth, PaneHeight,
                                   ozControlTwoColumns | ozControlReportsFocus);
    m_layout.controls.back().columns = {texts.nameColumn, texts.dataColumn};
    m_layout.controls.emplace_back(ozDialogOK, Kind::Button, "OK", 187, 172, 50, 14,
                                   ozControlDefault);
    m_layout.controls.emplace_back(ozDialogCancel, Kind::Button, "Cancel", 243, 172, 50, 14);
    m_answer.root = 0;
}

ozImportRegistryDialog::~ozImportRegistryDialog() = default;

void ozImportRegistryDialog::Init(ozForm& form)
{
    m_form = &form;
    m_tree = form.TreeControl(KeyTree);
    form.Check(RecursiveBox, m_request.initial.recursive);
    if (m_tree != nullptr) {
        m_tree->Images(Bitmaps());
        m_tree->Events(this);
    }
    Connect();
    form.Focus(KeyTree);
}

void ozImportRegistryDialog::Connect()
{
    if (m_tree == nullptr)
        return;
    m_tree->DeleteAll();
    m_nodes.clear();
    m_valueNames.clear();
    m_form->Rows(ValueList, {});
    std::vector<unsigned int> roots;
    if (m_request.singleRoot)
        roots = {m_request.initial.root};
    else if (m_machine.empty())
        roots = {UserRoot, MachineRoot, UsersRoot};
    else  // another machine has no current user
        roots = {MachineRoot, UsersRoot};
    for (unsigned int root : roots)
        AppendKey(ozNoItem, root, "", RootName(root), RootImage(root),
                  KeyHasSubKeys(root, "", m_machine));
    OpenInitialKey();
}

void ozImportRegistryDialog::OpenInitialKey()
{
    ozTreeItem item = m_tree->Root();
    while (item != ozNoItem && NodeOf(item)->root != m_request.initial.root)
        item = m_tree->NextSibling(item);
    if (item == ozNoItem || m_request.initial.key.empty())
        return;
    const std::string& path = m_request.initial.key;
    for (std::string::size_type start = 0; start <= path.size();) {
        std::string::size_type end = std::min(path.find('\\', start), path.size());
        const std::string name = path.substr(start, end - start);
        Enumerate(item);
        ozTreeItem child = m_tree->FirstChild(item);
        while (child != ozNoItem && !ozAsciiSameIgnoringCase(m_tree->Text(child), name))
            child = m_tree->NextSibling(child);
        if (child == ozNoItem)
            break;
        m_tree->Expand(item, true);
        item = child;
        start = end + 1;
    }
    m_tree->EnsureVisible(item);
    m_tree->Select(item);
}

void ozImportRegistryDialog::AppendKey(ozTreeItem parent, unsigned int root,
                                       const std::string& path, const std::string& text, int image,
                                       bool hasSubKeys)
{
    m_nodes.push_back(std::make_unique<Node>(Node{root, path, false}));
    ozTreeItem item =
        m_tree->Append(parent, text, image, image == ImageKey ? ImageKeySelected : image, false,
                       m_nodes.back().get());
    if (hasSubKeys)
        m_tree->Append(item, "", ImageKey, ImageKeySelected, false, nullptr);
}

ozImportRegistryDialog::Node* ozImportRegistryDialog::NodeOf(ozTreeItem item) const
{
    return item != ozNoItem ? static_cast<Node*>(m_tree->Data(item)) : nullptr;
}

void ozImportRegistryDialog::Enumerate(ozTreeItem item)
{
    Node* node = NodeOf(item);
    if (node == nullptr || node->enumerated)
        return;
    node->enumerated = true;
    if (ozTreeItem placeholder = m_tree->FirstChild(item); placeholder != ozNoItem)
        m_tree->Delete(placeholder);
    const unsigned int root = node->root;
    const std::string path = node->path;
    for (const SubKey& key : ReadSubKeys(root, path, m_machine))
        AppendKey(item, root, path.empty() ? key.name : path + "\\" + key.name, key.name, ImageKey,
                  key.hasSubKeys);
}

void ozImportRegistryDialog::ShowValues(ozTreeItem item)
{
    m_valueNames.clear();
    std::vector<std::string> rows;
    if (const Node* node = NodeOf(item)) {
        try {
            CRegistryKey key(ozRootHandle(node->root), node->path.c_str(), KEY_READ,
                             MachineArgument(m_machine));
            for (auto at = key.BeginValueIteration(); at != key.EndValueIteration(); ++at) {
                ozRegValue value;
                value.SetData(at->Type(), at->Length(), at->Data());
                m_valueNames.push_back(at->Name());
                rows.push_back((at->Name().empty() ? "(Default)" : at->Name()) + "\t" +
                               value.FormattedValue());
            }
        } catch (const CRegistryKey::Exception&) {
            // The values that could be read are shown.
        }
    }
    m_form->Rows(ValueList, rows);
}

void ozImportRegistryDialog::ItemExpanding(ozTreeItem item, bool expanding)
{
    if (expanding)
        Enumerate(item);
}

void ozImportRegistryDialog::SelectionChanged(ozTreeItem item)
{
    ShowValues(item);
}

void ozImportRegistryDialog::Command(ozForm& form, int id, ozFormEvent event)
{
    if (id == SetButton && event == ozFormEvent::Clicked) {
        m_machine = form.Text(MachineEdit);
        Connect();
    } else if (event == ozFormEvent::FocusGained && (id == KeyTree || id == ValueList)) {
        m_valueListLast = id == ValueList;
    }
}

bool ozImportRegistryDialog::Accept(ozForm& form)
{
    const Node* node = m_tree != nullptr ? NodeOf(m_tree->Selection()) : nullptr;
    if (node == nullptr)
        return true;
    const int row = form.SelectedRow(ValueList);
    m_chosen = true;
    m_answer.root = node->root;
    m_answer.key = node->path;
    m_answer.wholeKey = !m_valueListLast || row < 0 || row >= static_cast<int>(m_valueNames.size());
    m_answer.value = m_answer.wholeKey ? "" : m_valueNames[static_cast<std::size_t>(row)];
    m_answer.recursive = m_request.showRecursive && form.Checked(RecursiveBox);
    m_answer.machine = m_machine;
    return true;
}
