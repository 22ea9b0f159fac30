// A tree container with a cursor. The tree object is itself a node: its children are the
// top-level nodes, each of which reaches the tree through `Up()`. The registry trees and the
// policy template tree derive from it.
#pragma once

#include "ozTreeNode.h"

// Owns every node linked below it. The cursor (the current node) is moved by the Get*
// operations and by every add and remove; operations that fail leave it where it was.
class ozTree : public ozTreeNode {
public:
    ozTree() = default;
    ~ozTree() override = default;

    // The walk of `ozTreeNode::Execute` over the top-level nodes and their subtrees; the tree
    // object itself is never passed to the callback. True for an empty tree.
    bool Execute(ExecuteContextCallback callback, void* context) override;
    bool Execute(ExecuteCallback callback) override;
    // `ozTreeNode::Save` applied to the tree object.
    bool Save(FILE* file) override;

    // Moves the cursor to the first top-level node and returns it; null (and no current
    // node) for an empty tree.
    virtual ozTreeNode* GetRoot();
    // Move the cursor to the current node's next sibling / previous sibling / first child
    // and return it; null with the cursor unchanged when there is none.
    virtual ozTreeNode* GetNext();
    virtual ozTreeNode* GetPrev();
    virtual ozTreeNode* GetDown();
    // Moves the cursor to the current node's parent; null with the cursor unchanged when the
    // parent would be the tree itself (the cursor never climbs onto the tree object).
    virtual ozTreeNode* GetUp();
    virtual ozTreeNode* GetCurr();
    // Apply the node operation of the same name to the current node; false without a current
    // node. On success n becomes the current node.
    virtual bool AddAfter(ozTreeNode* n);
    virtual bool AddBefore(ozTreeNode* n);
    virtual bool AddAbove(ozTreeNode* n);
    // Makes n the first child of the current node, or the first top-level node when there is
    // no current node; n becomes current.
    virtual bool AddBelow(ozTreeNode* n);
    // Appends n as the last child of the current node; n becomes current. With no current
    // node n becomes the FIRST top-level node: callers position the cursor first.
    virtual bool AddBelowAsLast(ozTreeNode* n);
    // Makes n current; false for null n or a node of another tree.
    virtual bool SetCurrentNode(ozTreeNode* n);
    // Unlinks the current node (with its subtree), moves the cursor to its successor and
    // hands the node to the caller, who then owns it. Null without a current node.
    virtual ozTreeNode* IsolateNode();
    // Destroys the current node with its subtree and moves the cursor to its successor.
    // False without a current node.
    virtual bool Delete();

    // Appends n as the last child of parent in constant time when the caller knows parent's
    // current last child (`lastChild`, null when parent has none); n becomes current. The
    // result equals `SetCurrentNode(parent); AddBelowAsLast(n)`. Requires parent to be this
    // tree or a node in it, which is not checked.
    bool AppendChild(ozTreeNode* parent, ozTreeNode* lastChild, ozTreeNode* n);
    // Moves the cursor to child in constant time when the caller knows it to be a child of the
    // current node, which is not checked; false for null child.
    bool MoveDownTo(ozTreeNode* child);

protected:
    // Moves the cursor to n, a node of this tree, unchecked: for derived trees that find a
    // node faster than the checks of SetCurrentNode could.
    void _MoveCursor(ozTreeNode* n) { m_current = n; }
    // The node that becomes current when the current node goes: its next sibling, else its
    // previous sibling, else its parent; null instead of the tree itself.
    ozTreeNode* _NextCurrentWhenRemoved() const;

private:
    // Remembers where AddBelowAsLast appended below parent when it did; returns appended.
    bool Remember(ozTreeNode* parent, bool appended);

private:
    ozTreeNode* m_current = nullptr;
    // The node AddBelowAsLast appended last and its parent, trusted while the parent is the
    // current node and its generation has not changed (no child of it was inserted before the
    // last, removed or destroyed) and nothing was removed through this cursor since:
    // appending many children to one parent then costs constant time each instead of a walk
    // over all earlier children.
    ozTreeNode* m_lastAppendParent = nullptr;
    ozTreeNode* m_lastAppended = nullptr;
    unsigned long m_lastAppendParentGeneration = 0;
};
