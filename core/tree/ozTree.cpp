#include "ozTree.h"

bool ozTree::Execute(ExecuteContextCallback callback, void* context)
{
    return Down() == nullptr || Down()->Execute(callback, context);
}

bool ozTree::Execute(ExecuteCallback callback)
{
    return Down() == nullptr || Down()->Execute(callback);
}

bool ozTree::Save(FILE* file)
{
    return ozTreeNode::Save(file);
}

ozTreeNode* ozTree::GetRoot()
{
    m_current = Down();
    return m_current;
}

ozTreeNode* ozTree::GetNext()
{
    if (m_current == nullptr || m_current->Next() == nullptr)
        return nullptr;
    m_current = m_current->Next();
    return m_current;
}

ozTreeNode* ozTree::GetPrev()
{
    if (m_current == nullptr || m_current->Prev() == nullptr)
        return nullptr;
    m_current = m_current->Prev();
    return m_current;
}

ozTreeNode* ozTree::GetDown()
{
    if (m_current == nullptr || m_current->Down() == nullptr)
        return nullptr;
    m_current = m_current->Down();
    return m_current;
}

ozTreeNode* ozTree::GetUp()
{
    if (m_current == nullptr)
        return nullptr;
    ozTreeNode* parent = m_current->Up();
    if (parent == nullptr || parent == this)
        return nullptr;
    m_current = parent;
    return m_current;
}

ozTreeNode* ozTree::GetCurr()
{
    return m_current;
}

bool ozTree::AddAfter(ozTreeNode* n)
{
    if (m_current == nullptr || !m_current->AddAfter(n))
        return false;
    m_current = n;
    return true;
}

bool ozTree::AddBefore(ozTreeNode* n)
{
    if (m_current == nullptr || !m_current->AddBefore(n))
        return false;
    m_current = n;
    return true;
}

bool ozTree::AddAbove(ozTreeNode* n)
{
    if (m_current == nullptr || !m_current->AddAbove(n))
        return false;
    m_current = n;
    return true;
}

bool ozTree::AddBelow(ozTreeNode* n)
{
    ozTreeNode* parent = m_current != nullptr ? m_current : this;
    if (!parent->ozTreeNode::AddBelow(n))
        return false;
    m_current = n;
    return true;
}

bool ozTree::AddBelowAsLast(ozTreeNode* n)
{
    ozTreeNode* parent = m_current;
    if (parent != nullptr && parent == m_lastAppendParent &&
        m_lastAppendParentGeneration == parent->Generation())
        m_current = m_lastAppended;  // a child of parent, at or before its last one
    else if (GetDown() == nullptr)
        return Remember(parent, AddBelow(n));
    while (GetNext() != nullptr) {
    }
    return Remember(parent, AddAfter(n));
}

bool ozTree::Remember(ozTreeNode* parent, bool appended)
{
    if (appended && parent != nullptr) {
        m_lastAppendParent = parent;
        m_lastAppended = m_current;
        m_lastAppendParentGeneration = parent->Generation();
    }
    return appended;
}

bool ozTree::SetCurrentNode(ozTreeNode* n)
{
    if (n == nullptr || n->GetTree() != this)
        return false;
    m_current = n;
    return true;
}

ozTreeNode* ozTree::IsolateNode()
{
    if (m_current == nullptr)
        return nullptr;
    ozTreeNode* isolated = m_current;
    m_current = _NextCurrentWhenRemoved();
    m_lastAppendParent = nullptr;
    isolated->Isolate();
    return isolated;
}

bool ozTree::Delete()
{
    if (m_current == nullptr)
        return false;
    ozTreeNode* doomed = m_current;
    m_current = _NextCurrentWhenRemoved();
    m_lastAppendParent = nullptr;
    delete doomed;
    return true;
}

bool ozTree::AppendChild(ozTreeNode* parent, ozTreeNode* lastChild, ozTreeNode* n)
{
    if (parent == nullptr || n == nullptr)
        return false;
    bool added = lastChild != nullptr ? lastChild->AddAfter(n) : parent->ozTreeNode::AddBelow(n);
    if (added)
        m_current = n;
    return added;
}

bool ozTree::MoveDownTo(ozTreeNode* child)
{
    if (child == nullptr)
        return false;
    m_current = child;
    return true;
}

ozTreeNode* ozTree::_NextCurrentWhenRemoved() const
{
    ozTreeNode* successor = m_current->Next();
    if (successor == nullptr)
        successor = m_current->Prev();
    if (successor == nullptr)
        successor = m_current->Up();
    return successor == this ? nullptr : successor;
}
