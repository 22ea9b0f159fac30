#include "ozADMChildIndex.h"

#include "ozADMNode.h"

ozADMNode* ozADMChildIndex::FirstNamedOrNameless(const ozTreeNode& parent, const char* name)
{
    Refresh(parent);
    const Position* named = nullptr;
    if (name != nullptr) {
        auto found = m_firstByName.find(name);
        if (found != m_firstByName.end())
            named = &found->second;
    }
    if (m_firstNameless.node != nullptr &&
        (named == nullptr || m_firstNameless.ordinal < named->ordinal))
        return m_firstNameless.node;
    return named != nullptr ? named->node : nullptr;
}

ozTreeNode* ozADMChildIndex::LastChild(const ozTreeNode& parent)
{
    Refresh(parent);
    return m_last;
}

void ozADMChildIndex::Refresh(const ozTreeNode& parent)
{
    unsigned long relinks = ozTreeNode::RelinkCount();
    unsigned long renames = ozADMNode::RenameCount();
    if (!m_built || m_relinkCount != relinks || m_renameCount != renames) {
        m_firstByName.clear();
        m_firstNameless = {nullptr, 0};
        m_last = nullptr;
        m_count = 0;
        m_built = true;
        m_relinkCount = relinks;
        m_renameCount = renames;
    }
    // Without relinks, children only ever get appended after the last one known.
    ozTreeNode* next = m_last != nullptr ? m_last->Next() : parent.Down();
    for (; next != nullptr; next = next->Next())
        Take(static_cast<ozADMNode*>(next));
}

void ozADMChildIndex::Take(ozADMNode* child)
{
    Position position{child, m_count++};
    m_last = child;
    if (child->Name() == nullptr) {
        if (m_firstNameless.node == nullptr)
            m_firstNameless = position;
        return;
    }
    m_firstByName.try_emplace(child->Name(), position);  // an earlier sibling keeps its place
}
