#include "ozRegKey.h"

#include <cstring>
#include <string>
#include <unordered_map>

#include "core/tree/ozTree.h"
#include "ozFoldedName.h"
#include "ozSubKey.h"

char ozRegKey::m_vBuf[ozRegKey::MaxNameLength];

// The sub keys by folded name (the first in child order for each name) and what the index
// was built from. It is trusted while no relink and no rename happened since it was built;
// children appended at the end since then are caught up from the last indexed child.
struct ozRegKey::ChildIndex {
    std::unordered_map<std::string, ozSubKey*> byName;
    ozTreeNode* firstChild = nullptr;
    ozTreeNode* lastChild = nullptr;
    unsigned long relinkCount = 0;
    unsigned long renameCount = 0;

    void Add(ozTreeNode* child)
    {
        auto* key = static_cast<ozRegKey*>(child);
        if (key->Type() == KeySub) {
            auto* subKey = static_cast<ozSubKey*>(key);
            if (subKey->Name() != nullptr)
                byName.emplace(ozFoldedName(subKey->Name()), subKey);
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
    bool trusted = m_childIndex != nullptr &&
                   m_childIndex->relinkCount == ozTreeNode::RelinkCount() &&
                   m_childIndex->renameCount == s_renameCount &&
                   (m_childIndex->lastChild == nullptr || m_childIndex->firstChild == Down());
    if (!trusted) {
        m_childIndex = std::make_unique<ChildIndex>();
        m_childIndex->relinkCount = ozTreeNode::RelinkCount();
        m_childIndex->renameCount = s_renameCount;
    }
    ChildIndex& index = *m_childIndex;
    ozTreeNode* unindexed = index.lastChild != nullptr ? index.lastChild->Next() : Down();
    for (; unindexed != nullptr; unindexed = unindexed->Next())
        index.Add(unindexed);
    index.firstChild = Down();
    return index;
}

ozSubKey* ozRegKey::FindChild()
{
    ChildIndex& index = UpToDateIndex();
    auto found = index.byName.find(ozFoldedName(m_vBuf));
    return found != index.byName.end() ? found->second : nullptr;
}

ozTreeNode* ozRegKey::CachedUp()
{
    // A key gets another parent only through a relink, so a parent found once stays valid
    // until the next one. No parent is not cached: appending a free key relinks nothing.
    if (m_cachedParent == nullptr || m_cachedParentRelinkCount != ozTreeNode::RelinkCount()) {
        m_cachedParent = Up();
        m_cachedParentRelinkCount = ozTreeNode::RelinkCount();
    }
    return m_cachedParent;
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

ozSubKey* ozRegKey::FindSubKey(const char* path, unsigned int root)
{
    if (path == nullptr)
        return nullptr;
    const char* rest = _CutName(path);
    if (rest == nullptr)
        return nullptr;
    bool last = *rest == '\0';

    ozSubKey* child = FindChild();
    if (child == nullptr) {
        ozTree* tree = Tree();
        if (tree == nullptr)
            return nullptr;
        auto created = std::make_unique<ozSubKey>();
        created->Name(m_vBuf);
        created->Root(root);
        ChildIndex& index = UpToDateIndex();
        if (!tree->AppendChild(this, index.lastChild, created.get()))
            return nullptr;
        child = created.release();
        index.Add(child);
        index.firstChild = Down();
    }
    return last ? child : child->FindSubKey(rest + 1, root);
}

ozSubKey* ozRegKey::HasSubKey(const char* path)
{
    if (path == nullptr)
        return nullptr;
    const char* rest = _CutName(path);
    if (rest == nullptr)
        return nullptr;
    ozSubKey* child = FindChild();
    if (child == nullptr || *rest == '\0')
        return child;
    return child->HasSubKey(rest + 1);
}
