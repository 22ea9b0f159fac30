#include "ozTreeNode.h"

ozTreeNode::~ozTreeNode()
{
    while (m_down != nullptr)
        delete m_down;  // the child's destructor unlinks it, so m_down moves on
    Isolate();
}

// The walks recurse into children but loop over siblings, so that a node with very many
// children (a registry key with 10^5 sub keys) cannot exhaust the stack.
bool ozTreeNode::Execute(ExecuteContextCallback callback, void* context)
{
    for (ozTreeNode* node = this; node != nullptr; node = node->m_next) {
        if (!callback(node, context))
            return false;
        if (node->m_down != nullptr && !node->m_down->Execute(callback, context))
            return false;
    }
    return true;
}

bool ozTreeNode::Execute(ExecuteCallback callback)
{
    for (ozTreeNode* node = this; node != nullptr; node = node->m_next) {
        if (!callback(node))
            return false;
        if (node->m_down != nullptr && !node->m_down->Execute(callback))
            return false;
    }
    return true;
}

bool ozTreeNode::SaveNode(FILE*)
{
    return true;
}

bool ozTreeNode::SaveNodeAfter(FILE*)
{
    return true;
}

bool ozTreeNode::Save(FILE* file)
{
    for (ozTreeNode* node = this; node != nullptr; node = node->m_next) {
        if (!node->SaveNode(file))
            return false;
        if (node->m_down != nullptr && !node->m_down->Save(file))
            return false;
        if (!node->SaveNodeAfter(file))
            return false;
    }
    return true;
}

ozTreeNode* ozTreeNode::Up() const
{
    for (const ozTreeNode* node = this; node != nullptr; node = node->m_prev) {
        if (node->m_parent != nullptr)
            return node->m_parent;
    }
    return nullptr;
}

void ozTreeNode::CountChildChange(const ozTreeNode* child)
{
    if (ozTreeNode* parent = child->Up())
        ++parent->m_generation;
}

ozTreeNode* ozTreeNode::GetTree()
{
    ozTreeNode* top = this;
    for (ozTreeNode* parent = Up(); parent != nullptr; parent = parent->Up())
        top = parent;
    return top;
}

bool ozTreeNode::AddBelow(ozTreeNode* n)
{
    if (n == nullptr)
        return false;
    ++n->m_generation;
    n->m_prev = nullptr;
    n->m_parent = this;
    if (m_down != nullptr) {
        ++m_generation;
        m_down->m_parent = nullptr;
        m_down->m_prev = n;
        n->m_next = m_down;
    }
    m_down = n;
    return true;
}

bool ozTreeNode::AddAfter(ozTreeNode* n)
{
    if (n == nullptr)
        return false;
    ++n->m_generation;
    if (m_next != nullptr)
        CountChildChange(this);
    n->m_parent = nullptr;
    n->m_next = m_next;
    if (m_next != nullptr)
        m_next->m_prev = n;
    m_next = n;
    n->m_prev = this;
    return true;
}

bool ozTreeNode::AddBefore(ozTreeNode* n)
{
    if (m_prev != nullptr)
        return m_prev->AddAfter(n);
    if (m_parent != nullptr)
        return m_parent->AddBelow(n);
    return false;
}

bool ozTreeNode::AddAbove(ozTreeNode* n)
{
    if (n == nullptr)
        return false;
    CountChildChange(this);
    ++m_generation;
    ++n->m_generation;
    n->m_next = m_next;
    n->m_prev = m_prev;
    if (m_next != nullptr)
        m_next->m_prev = n;
    if (m_prev != nullptr)
        m_prev->m_next = n;
    n->m_parent = m_parent;
    if (m_parent != nullptr && m_parent->m_down == this)
        m_parent->m_down = n;

    m_next = nullptr;
    m_prev = nullptr;
    m_parent = n;
    n->m_down = this;
    return true;
}

bool ozTreeNode::Isolate()
{
    if (m_prev == nullptr && m_next == nullptr && m_parent == nullptr)
        return true;
    CountChildChange(this);
    ++m_generation;
    if (m_prev != nullptr)
        m_prev->m_next = m_next;
    if (m_next != nullptr)
        m_next->m_prev = m_prev;
    if (m_parent != nullptr) {
        if (m_parent->m_down == this)
            m_parent->m_down = m_next;
        if (m_next != nullptr)
            m_next->m_parent = m_parent;
    }
    m_next = nullptr;
    m_prev = nullptr;
    m_parent = nullptr;
    return true;
}
