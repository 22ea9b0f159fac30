#include "ozRegistryView.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "control/CADMCtrl.h"
#include "core/adm/ozADMTree.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozRegTree.h"
#include "core/registry/ozRootKey.h"
#include "core/registry/ozSubKey.h"
#include "ozImages.h"
#include "ozViewPlatform.h"
#include "platform/ozAsciiCase.h"

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
    tree.DeleteAll();
    if (m_keysCleared)
        m_keysCleared();
    if (code == nullptr || code->tree == nullptr) {
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
    m_filling = false;
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

void ozRegistryView::AppendChildren(ozTreeItem parent, const ozTreeNode& above, ozTreeItem& marked)
{
    // Sorted here and appended in order: a tree control inserting each item sorted among its
    // siblings takes time quadratic in their number.
    std::vector<SortedKey> keys;
    for (ozTreeNode* node = above.Down(); node != nullptr; node = node->Next()) {
        auto* key = static_cast<ozRegKey*>(node);
        std::string text;
        if (key->Type() == KeyRoot) {
            text = RootKeyName(static_cast<ozRootKey*>(key)->HKey());
        } else {
            const char* name = static_cast<ozSubKey*>(key)->Name();
            text = name != nullptr ? name : "";
        }
        keys.push_back({ozAsciiLowerCased(text), std::move(text), key});
    }
    std::stable_sort(keys.begin(), keys.end(), [](const SortedKey& a, const SortedKey& b) {
        return a.order != b.order ? a.order < b.order : a.text < b.text;
    });
    ozTreeWidget& tree = m_platform.RegistryTree();
    for (const SortedKey& sorted : keys) {
        ozRegKey* key = sorted.key;
        int image = 0;
        bool markedKey = false;
        if (key->Type() == KeyRoot) {
            image = RootKeyImage(static_cast<ozRootKey*>(key)->HKey());
        } else {
            auto* subKey = static_cast<ozSubKey*>(key);
            image = SubKeyImage(*subKey);
            // The mark is consumed: only the first marked key is selected again.
            markedKey = subKey->Selected();
            subKey->Selected(false);
        }
        int selectedImage = key->Type() == KeyRoot ? image : image + 1;
        ozTreeItem item =
            tree.Append(parent, sorted.text, image, selectedImage, key->IsOpen(), key);
        if (markedKey && marked == ozNoItem)
            marked = item;
        AppendChildren(item, *key, marked);
    }
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
}
