#include "ozADMNode.h"

#include <cstring>
#include <string>

#include "core/tree/ozOwnedText.h"
#include "ozADMChildIndex.h"
#include "ozADMTree.h"
#include "platform/ozAsciiCase.h"

ozADMNode::~ozADMNode() = default;

bool ozADMNode::SaveToRegistry()
{
    return true;
}

bool ozADMNode::Sync()
{
    return true;
}

bool ozADMNode::SetDefault()
{
    return true;
}

void ozADMNode::Name(const char* name)
{
    m_name = ozCopyText(name);
    // A free node is named before it is linked in; only renaming a linked one can make an
    // index of its siblings' names stale.
    if (Prev() != nullptr || ParentLink() != nullptr)
        if (ozTreeNode* parent = CachedUp())
            parent->ChildrenChanged();
}

const char* ozADMNode::Name() const
{
    return m_name.get();
}

void ozADMNode::Open(bool open)
{
    m_open = open;
}

bool ozADMNode::Open() const
{
    return m_open;
}

ozADMNode* ozADMNode::FirstChildNamedOrNameless(const char* name)
{
    if (m_childIndex == nullptr)
        m_childIndex = std::make_unique<ozADMChildIndex>();
    return m_childIndex->FirstNamedOrNameless(*this, name);
}

ozTreeNode* ozADMNode::LastChild()
{
    if (m_childIndex == nullptr)
        m_childIndex = std::make_unique<ozADMChildIndex>();
    return m_childIndex->LastChild(*this);
}

ozTreeNode* ozADMNode::CachedUp() const
{
    // The sparse parent link makes Up() walk back over all earlier siblings. Walking back
    // stops instead at the first sibling that already knows the parent, so visiting siblings
    // in order costs constant time each. A parent changes only when the node is moved,
    // which changes the node's generation.
    if (m_cachedParent != nullptr && m_cachedParentGeneration == Generation())
        return m_cachedParent;
    ozTreeNode* parent = nullptr;
    for (const ozTreeNode* node = this; node != nullptr; node = node->Prev()) {
        if (node->ParentLink() != nullptr) {
            parent = node->ParentLink();
            break;
        }
        auto* sibling = static_cast<const ozADMNode*>(node);
        if (sibling != this && sibling->m_cachedParent != nullptr &&
            sibling->m_cachedParentGeneration == sibling->Generation()) {
            parent = sibling->m_cachedParent;
            break;
        }
    }
    if (parent != nullptr) {
        m_cachedParent = parent;
        m_cachedParentGeneration = Generation();
    }
    return parent;
}

ozADMNode* ozADMNode::ParentNode() const
{
    ozTreeNode* parent = CachedUp();
    // The parent of a top-level node is the tree, which is no template node.
    return dynamic_cast<ozADMNode*>(parent);
}

ozADMTree* ozADMNode::ADMTree() const
{
    const ozADMNode* node = this;
    while (ozADMNode* parent = node->ParentNode())
        node = parent;
    return dynamic_cast<ozADMTree*>(node->CachedUp());
}

ozRegTree* ozADMNode::RegistryTree() const
{
    if (m_registryTree == nullptr) {
        ozADMNode* parent = ParentNode();
        m_registryTree = parent != nullptr ? parent->RegistryTree() : nullptr;
    }
    return m_registryTree;
}

HKEY ozADMNode::RootKey() const
{
    if (m_rootKey == HKEY_CLASSES_ROOT) {
        ozADMNode* parent = ParentNode();
        if (parent != nullptr)
            m_rootKey = parent->RootKey();
    }
    return m_rootKey != HKEY_CLASSES_ROOT ? m_rootKey : nullptr;
}

const char* ozADMNode::Path() const
{
    if (m_path == nullptr) {
        ozADMNode* parent = ParentNode();
        std::string path = parent != nullptr ? std::string(parent->Path()) + "\\" : std::string();
        path += m_name != nullptr ? m_name.get() : "";
        m_path = ozCopyText(path.c_str());
    }
    return m_path.get();
}

void ozADMNode::ClearPath()
{
    m_path.reset();
    m_registryTree = nullptr;
    m_rootKey = HKEY_CLASSES_ROOT;
}

ozADMNode* ozADMNode::FindNode(const char* path)
{
    return FindAmong(Down(), path);
}

ozADMNode* ozADMNode::FindAmong(ozTreeNode* first, const char* path)
{
    if (path == nullptr)
        return nullptr;
    for (;;) {
        const char* end = std::strchr(path, '\\');
        std::string component = end != nullptr ? std::string(path, end) : std::string(path);
        ozADMNode* found = nullptr;
        for (ozTreeNode* node = first; node != nullptr && found == nullptr; node = node->Next()) {
            auto* candidate = static_cast<ozADMNode*>(node);
            if (ozAsciiSameIgnoringCase(candidate->Name(), component.c_str()))
                found = candidate;
        }
        if (found == nullptr || end == nullptr || end[1] == '\0')
            return found;
        first = found->Down();
        path = end + 1;
    }
}
