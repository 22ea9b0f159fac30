#include "ozRegistryView.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "control/CADMCtrl.h"
#include "control/ozHostUI.h"
#include "control/ozPolicyEdit.h"
#include "core/adm/ozADMTree.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozRegTree.h"
#include "core/registry/ozRootKey.h"
#include "core/registry/ozSubKey.h"
#include "ozImages.h"
#include "ozLegendDialog.h"
#include "ozViewPlatform.h"
#include "platform/ozAsciiCase.h"
#include "platform/ozTextConversion.h"

namespace {

// The operation of a key to be deleted; the model's operations name only insert and erase.
constexpr int KeyOpDelete = 'D';

std::string RootKeyName(HKEY root)
{
    return ozRootKeyName(ozRootNumber(root));
}

int RootKeyImage(HKEY root)
{
    switch (ozRootNumber(root)) {
        case 1:
            return RegKeyImageUserRoot;
        case 2:
            return RegKeyImageMachineRoot;
        case 3:
            return RegKeyImageUsersRoot;
        case 4:
            return RegKeyImagePerformanceRoot;
        default:
            return RegKeyImageOtherRoot;
    }
}

// The image of a sub key; its selected image is the next one. The Save flag decides first, then
// the operation, then whether the key comes from the template.
int SubKeyImage(const ozSubKey& key)
{
    bool adm = key.ADM();
    if (!key.Save())
        return adm ? RegKeyImageTemplateNotSaved : RegKeyImageNotSaved;
    if (static_cast<int>(key.Op()) == KeyOpDelete)
        return adm ? RegKeyImageTemplateDelete : RegKeyImageDelete;
    if (key.Op() == KeyOpEraseValues)
        return adm ? RegKeyImageTemplateErase : RegKeyImageErase;
    return adm ? RegKeyImageTemplateSaved : RegKeyImageSaved;
}

// What the key menu is prepared for.
enum MenuSelection { SelectedRoot = 0, SelectedSubKey = 1, SelectedNothing = 2 };

constexpr ozMenuState On = ozMenuState::Enabled;
constexpr ozMenuState Off = ozMenuState::Disabled;

struct KeyMenuRow {
    const char* caption;  // null for a separator
    unsigned int command;
    int bitmap;
    unsigned short text;    // the host text that replaces the caption
    ozMenuState states[3];  // by MenuSelection
};

const KeyMenuRow KeyMenuRows[] = {
    {"Legende", RegistryCommandLegend, 0, 0, {On, On, Off}},
    {"&Neu", RegistryCommandNewKey, 255, HostTextKeyNew, {On, On, Off}},
    {"&L\xc3\xb6schen", RegistryCommandDeleteKey, 256, HostTextKeyDelete, {Off, On, Off}},
    {nullptr, 0, 0, 0, {On, On, Off}},
    {"Operation: &speichern", RegistryCommandOpSave, 227, HostTextKeyOpSave, {Off, On, Off}},
    {"Operation: n&icht speichern",
     RegistryCommandOpNotSaved,
     230,
     HostTextKeyOpNotSaved,
     {Off, On, Off}},
    {"Operation: l\xc3\xb6s&chen",
     RegistryCommandOpDelete,
     228,
     HostTextKeyOpDelete,
     {Off, On, Off}},
    {nullptr, 0, 0, 0, {On, On, Off}},
    {"&Importiere aus Registry",
     RegistryCommandImportRegistry,
     0,
     HostTextKeyImportRegistry,
     {On, On, On}},
    {"Importiere aus Profil",
     RegistryCommandImportProfile,
     0,
     HostTextKeyImportProfile,
     {On, On, On}},
};

// The pictures of the operation entries for a key from the template.
int TemplateOperationBitmap(unsigned int command)
{
    switch (command) {
        case RegistryCommandOpSave:
            return 249;
        case RegistryCommandOpNotSaved:
            return 247;
        default:
            return 251;
    }
}

// The caption entry for a sub key: the host text naming its state (the legend's label) and
// its picture. The operation decides before the Save flag, unlike the tree's images.
void SubKeyCaption(const ozSubKey& key, unsigned short& text, int& bitmap)
{
    struct State {
        unsigned short text, templateText;
        int bitmap, templateBitmap;
    };
    static const State deleted = {68, 71, 228, 251}, erased = {72, 73, 232, 253},
                       saved = {67, 70, 227, 249}, notSaved = {66, 69, 230, 247};
    const State& state = static_cast<int>(key.Op()) == KeyOpDelete ? deleted
                         : key.Op() == KeyOpEraseValues            ? erased
                         : key.Save()                              ? saved
                                                                   : notSaved;
    text = key.ADM() ? state.templateText : state.text;
    bitmap = key.ADM() ? state.templateBitmap : state.bitmap;
}

// A key as it is appended: its text, and the text lower-cased once for sorting.
struct SortedKey {
    std::string order;
    std::string text;
    ozRegKey* key;
};

}  // namespace

std::string ozRootKeyName(unsigned int number)
{
    static const char* const names[] = {
        "HKEY_CLASSES_ROOT",     "HKEY_CURRENT_USER",   "HKEY_LOCAL_MACHINE", "HKEY_USERS",
        "HKEY_PERFORMANCE_DATA", "HKEY_CURRENT_CONFIG", "HKEY_DYNDATA"};
    if (number < std::size(names))
        return names[number];
    // Any other handle by its offset from the first predefined one, negative below it.
    return "HKEY: " + std::to_string(static_cast<long>(static_cast<std::int32_t>(number)));
}

ozRegistryView::ozRegistryView(ozViewPlatform& platform) : m_platform(platform) {}

void ozRegistryView::Create()
{
    ozTreeWidget& tree = m_platform.RegistryTree();
    tree.Events(this);
    tree.Images(ozRegistryViewBitmaps());
}

void ozRegistryView::Fill(tTreeCodeHandle* code, bool showUser, bool showMachine)
{
    ozTreeWidget& tree = m_platform.RegistryTree();
    m_code = code;
    m_filling = true;
    tree.Filling(true);
    tree.DeleteAll();
    if (m_keysCleared)
        m_keysCleared();
    if (code == nullptr || code->tree == nullptr) {
        tree.Filling(false);
        m_filling = false;
        return;
    }
    struct Group {
        unsigned short text;
        int image;
        ozRegTree& keys;
        bool shown;
    };
    Group groups[] = {
        {HostTextUserKeys, RegKeyImageUserRoot, code->tree->UsrTree(), showUser},
        {HostTextMachineKeys, RegKeyImageMachineRoot, code->tree->MacTree(), showMachine}};
    ozTreeItem marked = ozNoItem;
    if (showUser && showMachine) {
        // The group items stand sorted by their texts, as every level of the tree.
        std::string texts[2];
        for (int group = 0; group < 2; ++group)
            texts[group] = m_control != nullptr ? m_control->GetString(groups[group].text) : "";
        bool swap = ozAsciiLowerCased(texts[1]) < ozAsciiLowerCased(texts[0]);
        for (int at = 0; at < 2; ++at) {
            int group = swap ? 1 - at : at;
            ozTreeItem item = tree.Append(ozNoItem, texts[group], groups[group].image,
                                          groups[group].image, true, nullptr);
            AppendChildren(item, groups[group].keys, marked);
        }
    } else {
        for (const Group& group : groups)
            if (group.shown)
                AppendChildren(ozNoItem, group.keys, marked);
    }
    tree.Filling(false);
    m_filling = false;
    m_markTarget = nullptr;
    if (marked != ozNoItem) {
        Reveal(marked);
        tree.Select(marked);
    }
}

void ozRegistryView::SelectionChanged(ozTreeItem item)
{
    if (!m_filling && m_keySelected)
        m_keySelected(Key(item));
}

namespace {

std::string KeyText(const ozRegKey& key)
{
    if (key.Type() == KeyRoot)
        return RootKeyName(static_cast<const ozRootKey&>(key).HKey());
    const char* name = static_cast<const ozSubKey&>(key).Name();
    return name != nullptr ? name : "";
}

// The keys below `above` in display order. Sorted here and appended in order: a tree control
// inserting each item sorted among its siblings takes time quadratic in their number.
std::vector<SortedKey> SortedChildren(const ozTreeNode& above)
{
    std::vector<SortedKey> keys;
    for (ozTreeNode* node = above.Down(); node != nullptr; node = node->Next()) {
        auto* key = static_cast<ozRegKey*>(node);
        std::string text = KeyText(*key);
        keys.push_back({ozAsciiLowerCased(text), std::move(text), key});
    }
    std::stable_sort(keys.begin(), keys.end(), [](const SortedKey& a, const SortedKey& b) {
        return a.order != b.order ? a.order < b.order : a.text < b.text;
    });
    return keys;
}

// Consumes the selection marks of the sub keys below above; true when there were any.
bool ConsumeMarks(const ozTreeNode& above, std::vector<const ozSubKey*>& marked)
{
    std::vector<const ozTreeNode*> pending = {&above};
    while (!pending.empty()) {
        const ozTreeNode* node = pending.back();
        pending.pop_back();
        for (ozTreeNode* child = node->Down(); child != nullptr; child = child->Next()) {
            auto* key = static_cast<ozSubKey*>(child);
            if (key->Type() == KeySub && key->Selected()) {
                marked.push_back(key);
                key->Selected(false);
            }
            pending.push_back(child);
        }
    }
    return !marked.empty();
}

// The first of marked below above in display order, or null.
ozSubKey* FirstInOrder(const ozTreeNode& above, const std::vector<const ozSubKey*>& marked)
{
    for (const SortedKey& sorted : SortedChildren(above)) {
        if (std::find(marked.begin(), marked.end(), sorted.key) != marked.end())
            return static_cast<ozSubKey*>(sorted.key);
        if (ozSubKey* found = FirstInOrder(*sorted.key, marked))
            return found;
    }
    return nullptr;
}

}  // namespace

void ozRegistryView::AppendChildren(ozTreeItem parent, const ozTreeNode& above, ozTreeItem& marked)
{
    ozTreeWidget& tree = m_platform.RegistryTree();
    for (const SortedKey& sorted : SortedChildren(above)) {
        ozRegKey* key = sorted.key;
        int image = 0;
        bool markedKey = false;
        if (key->Type() == KeyRoot) {
            image = RootKeyImage(static_cast<ozRootKey*>(key)->HKey());
        } else {
            auto* subKey = static_cast<ozSubKey*>(key);
            image = SubKeyImage(*subKey);
            // The mark is consumed: only the first marked key is selected again.
            markedKey = m_filling && (subKey->Selected() || subKey == m_markTarget);
            if (m_filling)
                subKey->Selected(false);
        }
        // The keys below a collapsed key come when it is first expanded, so that a large tree
        // fills in the time its visible part takes. Their marks are consumed now; the first
        // (when no key before it was marked) opens the keys on its way.
        if (!key->IsOpen() && key->Down() != nullptr && m_filling) {
            std::vector<const ozSubKey*> marks;
            if (ConsumeMarks(*key, marks) && marked == ozNoItem && !markedKey &&
                m_markTarget == nullptr) {
                m_markTarget = FirstInOrder(*key, marks);
                for (ozTreeNode* open = m_markTarget->Up(); open != key; open = open->Up())
                    static_cast<ozRegKey*>(open)->IsOpen(true);
                key->IsOpen(true);
            }
        }
        int selectedImage = key->Type() == KeyRoot ? image : image + 1;
        ozTreeItem item =
            tree.Append(parent, sorted.text, image, selectedImage, key->IsOpen(), key);
        if (markedKey && marked == ozNoItem)
            marked = item;
        if (key->IsOpen())
            AppendChildren(item, *key, marked);
        else if (key->Down() != nullptr)
            tree.ChildrenLater(item);
    }
}

void ozRegistryView::AppendLaterChildren(ozTreeItem item)
{
    ozTreeWidget& tree = m_platform.RegistryTree();
    ozRegKey* key = Key(item);
    if (key == nullptr || key->Down() == nullptr || tree.FirstChild(item) != ozNoItem)
        return;
    ozTreeItem none = ozNoItem;
    AppendChildren(item, *key, none);
}

void ozRegistryView::Reveal(ozTreeItem item)
{
    ozTreeWidget& tree = m_platform.RegistryTree();
    for (ozTreeItem parent = tree.Parent(item); parent != ozNoItem; parent = tree.Parent(parent)) {
        if (!tree.Expanded(parent)) {
            ItemExpanding(parent, true);
            tree.Expand(parent, true);
        }
    }
    tree.EnsureVisible(item);
}

ozRegKey* ozRegistryView::Key(ozTreeItem item) const
{
    return item != ozNoItem ? static_cast<ozRegKey*>(m_platform.RegistryTree().Data(item))
                            : nullptr;
}

ozRegKey* ozRegistryView::SelectedKey() const
{
    return Key(m_platform.RegistryTree().Selection());
}

void ozRegistryView::MarkSelection()
{
    ozRegKey* key = SelectedKey();
    if (key == nullptr || key->Type() != KeySub)
        return;
    // One key marked: the one selected now.
    if (m_code != nullptr && m_code->tree != nullptr) {
        m_code->tree->UsrTree().ResetSelected();
        m_code->tree->MacTree().ResetSelected();
    }
    static_cast<ozSubKey*>(key)->Selected(true);
}

void ozRegistryView::ItemExpanding(ozTreeItem item, bool expanding)
{
    if (ozRegKey* key = Key(item))
        key->IsOpen(expanding);
    if (expanding)
        AppendLaterChildren(item);
}

ozSubKey* ozRegistryView::SubKey(ozTreeItem item) const
{
    ozRegKey* key = Key(item);
    return key != nullptr && key->Type() == KeySub ? static_cast<ozSubKey*>(key) : nullptr;
}

std::string ozRegistryView::HostText(unsigned short code) const
{
    return m_control != nullptr ? m_control->GetString(code) : std::string();
}

void ozRegistryView::MarkEdited()
{
    if (m_control != nullptr)
        ozMarkDocumentEdited(*m_control);
}

void ozRegistryView::ReportSelection()
{
    if (m_keySelected)
        m_keySelected(SelectedKey());
}

ozRegTree* ozRegistryView::TreeOf(ozRegKey& key, HKEY& root) const
{
    if (m_code == nullptr || m_code->tree == nullptr)
        return nullptr;
    ozTreeNode* node = &key;
    while (static_cast<ozRegKey*>(node)->Type() != KeyRoot)
        node = node->Up();
    root = static_cast<ozRootKey*>(node)->HKey();
    ozTreeNode* tree = node->Up();
    for (ozRegTree* shown : {&m_code->tree->UsrTree(), &m_code->tree->MacTree()})
        if (tree == shown)
            return shown;
    return nullptr;
}

ozMenu ozRegistryView::KeyMenu() const
{
    ozRegKey* key = SelectedKey();
    MenuSelection selection = key == nullptr           ? SelectedNothing
                              : key->Type() == KeyRoot ? SelectedRoot
                                                       : SelectedSubKey;
    ozSubKey* subKey = selection == SelectedSubKey ? static_cast<ozSubKey*>(key) : nullptr;
    ozMenu menu;
    for (const KeyMenuRow& row : KeyMenuRows) {
        ozMenuEntry entry;
        entry.state = row.states[selection];
        if (row.caption != nullptr) {
            entry.command = row.command;
            entry.bitmap = row.bitmap;
            entry.caption = row.text != 0 ? HostText(row.text) : std::string();
            if (entry.caption.empty())
                entry.caption = ozNarrowFromUtf8(row.caption);
        }
        if (subKey != nullptr && subKey->ADM() && row.bitmap != 0 &&
            row.command != RegistryCommandNewKey && row.command != RegistryCommandDeleteKey)
            entry.bitmap = TemplateOperationBitmap(row.command);
        menu.entries.push_back(std::move(entry));
    }
    // The first entry names the selected key's state.
    ozMenuEntry& caption = menu.entries.front();
    if (subKey != nullptr) {
        unsigned short text = 0;
        SubKeyCaption(*subKey, text, caption.bitmap);
        caption.caption = HostText(text);
    } else if (selection == SelectedRoot) {
        unsigned int number = ozRootNumber(static_cast<ozRootKey*>(key)->HKey());
        caption.caption = number == 1   ? "HKEY_CURRENT_USER"
                          : number == 2 ? "HKEY_LOCAL_MACHINE"
                                        : "Unknown HKEY";
        caption.bitmap = number == 1 ? 215 : number == 2 ? 216 : 221;
    } else {
        caption.caption = "Root";
        caption.bitmap = 221;
    }
    if (caption.caption.empty())
        caption.caption = KeyMenuRows[0].caption;
    return menu;
}

void ozRegistryView::RightClicked(ozTreeItem)
{
    // The menu acts on the selection, wherever the click was, as the tree leaves the
    // selection where it is.
    m_platform.PopupMenu(KeyMenu(), [this](unsigned int command) { RunCommand(command); });
}

void ozRegistryView::RunCommand(unsigned int command)
{
    switch (command) {
        case RegistryCommandLegend:
            if (m_control != nullptr && SelectedKey() != nullptr)
                m_platform.RunDialog(std::make_unique<ozLegendDialog>(*m_control, true),
                                     [](ozDialog&, bool) {});
            break;
        case RegistryCommandNewKey:
            NewKey();
            break;
        case RegistryCommandDeleteKey:
            DeleteKey();
            break;
        case RegistryCommandOpSave:
            SetOperation(true, KeyOpInsert);
            break;
        case RegistryCommandOpNotSaved:
            SetOperation(false, KeyOpInsert);
            break;
        case RegistryCommandOpDelete:
            SetOperation(true, KeyOpDelete);
            break;
        case RegistryCommandImportRegistry:
            if (m_control != nullptr)
                m_control->ShowImportReg();
            break;
        case RegistryCommandImportProfile:
            ImportProfile();
            break;
        default:
            break;
    }
}

void ozRegistryView::SetOperation(bool save, int op)
{
    ozTreeItem item = m_platform.RegistryTree().Selection();
    ozSubKey* key = SubKey(item);
    if (key == nullptr)
        return;
    key->Save(save);
    key->Op(static_cast<tOPKEY>(op));
    int image = SubKeyImage(*key);
    m_platform.RegistryTree().Image(item, image, image + 1);
    MarkEdited();
}

bool ozRegistryView::NewKey()
{
    ozTreeWidget& tree = m_platform.RegistryTree();
    ozTreeItem parent = tree.Selection();
    ozRegKey* above = Key(parent);
    HKEY root = nullptr;
    ozRegTree* keys = above != nullptr ? TreeOf(*above, root) : nullptr;
    if (keys == nullptr)
        return false;
    // The new item stands among its siblings' items.
    AppendLaterChildren(parent);
    std::string base = above->Type() == KeySub ? static_cast<ozSubKey*>(above)->KeyPath() : "";
    if (!base.empty())
        base += '\\';
    base += HostText(HostTextNewKeyName) + " ";
    std::string path;
    for (int number = 1;; ++number) {
        path = base + std::to_string(number);
        if (keys->HasKey(root, path.c_str()) == nullptr)
            break;
    }
    ozSubKey* key = keys->FindKey(root, path.c_str());
    if (key == nullptr)
        return false;
    // Among its siblings in the order the fill gives them.
    const std::string name = key->Name(), order = ozAsciiLowerCased(name);
    ozTreeItem after = ozNoItem;
    for (ozTreeItem sibling = tree.FirstChild(parent); sibling != ozNoItem;
         sibling = tree.NextSibling(sibling)) {
        const std::string text = tree.Text(sibling), siblingOrder = ozAsciiLowerCased(text);
        if (siblingOrder > order || (siblingOrder == order && text > name))
            break;
        after = sibling;
    }
    int image = SubKeyImage(*key);
    ozTreeItem item = tree.InsertAfter(parent, after, name, image, image + 1, key);
    Reveal(item);
    tree.Select(item);
    MarkEdited();
    return true;
}

bool ozRegistryView::DeleteKey()
{
    ozTreeWidget& tree = m_platform.RegistryTree();
    ozTreeItem item = tree.Selection();
    ozSubKey* key = SubKey(item);
    HKEY root = nullptr;
    ozRegTree* keys = key != nullptr ? TreeOf(*key, root) : nullptr;
    if (keys == nullptr ||
        !m_platform.UI().ShowMessage(HostMessageQuestion, HostText(HostTextDeleteKey)))
        return false;
    if (!keys->SetCurrentNode(key))
        return false;
    ozTreeNode* cut = keys->IsolateNode();
    if (cut == nullptr)
        return false;
    m_deleted.AppendChild(&m_deleted, m_lastDeleted, cut);
    m_lastDeleted = cut;
    tree.Delete(item);
    // Whoever shows values lets the deleted key go for the key selected now.
    ReportSelection();
    MarkEdited();
    return true;
}

void ozRegistryView::ImportProfile()
{
    ozOpenFileQuestion question;
    question.defaultExtension = "ozp";
    question.filter = "OZ Registry Profile (*.ozp)|*.ozp|All Files (*.*)|*.*||";
    m_platform.AskOpenFile(question, [this](const std::string& file) {
        if (m_control == nullptr)
            return;
        if (!m_control->Load(file.c_str(), nullptr))
            m_platform.UI().ShowMessage(HostMessageError, HostText(HostTextProfileNotLoaded));
        MarkEdited();
    });
}

void ozRegistryView::Rename(ozTreeItem item)
{
    if (SubKey(item) != nullptr)
        m_platform.RegistryTree().EditLabel(item);
}

void ozRegistryView::DoubleClicked(ozTreeItem item)
{
    Rename(item);
}

void ozRegistryView::KeyPressed(int virtualKey)
{
    switch (virtualKey) {
        case ozKeyInsert:
            NewKey();
            break;
        case ozKeyDelete:
            DeleteKey();
            break;
        case ozKeyF2:
            Rename(m_platform.RegistryTree().Selection());
            break;
        default:
            break;
    }
}

bool ozRegistryView::LabelEdited(ozTreeItem item, const std::string* text)
{
    ozSubKey* key = SubKey(item);
    HKEY root = nullptr;
    ozRegTree* keys = key != nullptr ? TreeOf(*key, root) : nullptr;
    if (text == nullptr || keys == nullptr)
        return false;
    bool refused = text->empty() || text->find('\\') != std::string::npos;
    if (!refused) {
        // The sibling path: the old path up to its last backslash and the new name.
        std::string path = key->KeyPath();
        std::string::size_type cut = path.rfind('\\');
        path = cut == std::string::npos ? *text : path.substr(0, cut + 1) + *text;
        ozSubKey* existing = keys->HasKey(root, path.c_str());
        // The key itself (a change of case) is no sibling.
        refused = existing != nullptr && existing != key;
    }
    if (refused) {
        m_platform.UI().ShowMessage(HostMessageError, HostText(HostTextKeyNameRefused));
        return false;
    }
    key->Name(text->c_str());
    MarkEdited();
    return true;
}
