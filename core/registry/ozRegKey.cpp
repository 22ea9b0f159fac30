#include "ozRegKey.h"

#include <cstring>
#include <string>
#include <unordered_map>

#include "core/tree/ozTree.h"
#include "ozSubKey.h"
#include "platform/ozAsciiCase.h"

char ozRegKey::m_vBuf[ozRegKey::MaxNameLength];

// The sub keys by folded name (the first in child order for each name) and what the index
// was built from. It is trusted while the key's generation is the one it was built at;
// children appended at the end since then are caught up from the last indexed child.
struct ozRegKey::ChildIndex {
    std::unordered_map<std::string, ozSubKey*> byName;
    ozTreeNode* firstChild = nullptr;
    ozTreeNode* lastChild = nullptr;
    unsigned long keyGeneration = 0;

    void Add(ozTreeNode* child)
    {
        auto* key = static_cast<ozRegKey*>(child);
        if (key->Type() == KeySub) {
            auto* subKey = static_cast<ozSubKey*>(key);
            if (subKey->Name() != nullptr)
                byName.emplace(ozAsciiLowerCased(subKey->Name()), subKey);
        }
        lastChild = child;
    }
};

ozRegKey::ozRegKey() : ozRegItem(ItemKey) {}

ozRegKey::~ozRegKey() = default;

void ozRegKey::IsOpen(bool open)
{
    m_isOpen = open;
}

bool ozRegKey::IsOpen() const
{
    return m_isOpen;
}

const char* ozRegKey::_CutName(const char* path)
{
    const char* end = std::strchr(path, '\\');
    size_t length = end != nullptr ? static_cast<size_t>(end - path) : std::strlen(path);
    if (length >= sizeof m_vBuf)
        return nullptr;
    std::memcpy(m_vBuf, path, length);
    m_vBuf[length] = '\0';
    return path + length;
}

ozRegKey::ChildIndex& ozRegKey::UpToDateIndex()
{
    bool trusted = m_childIndex != nullptr && m_childIndex->keyGeneration == Generation() &&
                   (m_childIndex->lastChild == nullptr || m_childIndex->firstChild == Down());
    if (!trusted) {
        m_childIndex = std::make_unique<ChildIndex>();
        m_childIndex->keyGeneration = Generation();
    }
    ChildIndex& index = *m_childIndex;
    ozTreeNode* unindexed = index.lastChild != nullptr ? index.lastChild->Next() : Down();
    for (; unindexed != nullptr; unindexed = unindexed->Next())
        index.Add(unindexed);
    index.firstChild = Down();
    return index;
}

namespace {

ozSubKey* AsSubKeyNamed(ozTreeNode* child, const char* name)
{
    auto* key = static_cast<ozRegKey*>(child);
    if (key->Type() != KeySub)
        return nullptr;
    auto* subKey = static_cast<ozSubKey*>(key);
    return ozAsciiSameIgnoringCase(subKey->Name(), name) ? subKey : nullptr;
}

}  // namespace

ozSubKey* ozRegKey::FindChild(ozTreeNode** lastChild)
{
    if (m_childIndex == nullptr) {
        // A few children are searched directly; the index pays off only beyond that.
        int scanned = 0;
        ozTreeNode* last = nullptr;
        for (ozTreeNode* child = Down(); child != nullptr && scanned < IndexThreshold;
             child = child->Next(), ++scanned) {
            if (ozSubKey* match = AsSubKeyNamed(child, m_vBuf))
                return match;
            last = child;
        }
        if (last == nullptr || last->Next() == nullptr) {
            *lastChild = last;
            return nullptr;
        }
    }
    ChildIndex& index = UpToDateIndex();
    *lastChild = index.lastChild;
    auto found = index.byName.find(ozAsciiLowerCased(m_vBuf));
    return found != index.byName.end() ? found->second : nullptr;
}

ozTreeNode* ozRegKey::CachedUp()
{
    // A key gets another parent only by being moved, which changes its generation, so a
    // parent found once stays valid until then. No parent is not cached.
    if (m_cachedParent == nullptr || m_cachedParentGeneration != Generation()) {
        m_cachedParent = Up();
        m_cachedParentGeneration = Generation();
    }
    return m_cachedParent;
}

void ozRegKey::_KeyRenamed()
{
    if (ozTreeNode* parent = CachedUp())
        parent->ChildrenChanged();
}

ozTree* ozRegKey::Tree()
{
    ozTreeNode* node = this;
    for (;;) {
        auto* key = dynamic_cast<ozRegKey*>(node);
        ozTreeNode* parent = key != nullptr ? key->CachedUp() : node->Up();
        if (parent == nullptr)
            return node != this ? dynamic_cast<ozTree*>(node) : nullptr;
        node = parent;
    }
}

ozSubKey* ozRegKey::FindOrAddChild(unsigned int root, bool create)
{
    ozTreeNode* lastChild = nullptr;
    ozSubKey* child = FindChild(&lastChild);
    if (child != nullptr || !create)
        return child;
    ozTree* tree = Tree();
    if (tree == nullptr)
        return nullptr;
    auto created = std::make_unique<ozSubKey>();
    created->Name(m_vBuf);
    created->Root(root);
    if (!tree->AppendChild(this, lastChild, created.get()))
        return nullptr;
    child = created.release();
    // Appending at the end leaves this key's generation, so the index stays trusted.
    child->m_cachedParent = this;
    child->m_cachedParentGeneration = child->Generation();
    if (m_childIndex != nullptr) {
        m_childIndex->Add(child);
        m_childIndex->firstChild = Down();
    }
    return child;
}

ozSubKey* ozRegKey::WalkPath(const char* path, unsigned int root, bool create)
{
    // A loop rather than a lookup per level, so that a path of many components cannot exhaust
    // the stack. A sub key on the way that holds a variable passes the flag on to the key
    // returned, as its own lookup would.
    if (path == nullptr)
        return nullptr;
    ozRegKey* key = this;
    bool passesVariable = false;
    for (;;) {
        const char* rest = _CutName(path);
        if (rest == nullptr)
            return nullptr;
        ozSubKey* child = key->FindOrAddChild(root, create);
        if (child == nullptr)
            return nullptr;
        if (*rest == '\0') {
            if (create && passesVariable)
                child->WVar(true);
            return child;
        }
        passesVariable = passesVariable || child->WVar();
        key = child;
        path = rest + 1;
    }
}

ozSubKey* ozRegKey::FindSubKey(const char* path, unsigned int root)
{
    return WalkPath(path, root, true);
}

ozSubKey* ozRegKey::HasSubKey(const char* path)
{
    return WalkPath(path, 0, false);
}
