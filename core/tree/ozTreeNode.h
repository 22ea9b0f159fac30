// The element of every hierarchy in ozADM: a node with first-child / next-sibling links.
// Policy templates and registry trees derive their elements from it; the tree object itself
// (`ozTree`) is also a node.
#pragma once

#include <cstdio>

// A tree node with four links: next sibling, previous sibling, first child and a parent link.
// The parent link is deliberately sparse: only a FIRST child holds it; later siblings reach
// their parent through `Up()`, which walks back to the first child. A node owns its children:
// destroying a node destroys its subtree and unlinks it from its siblings and parent.
//
// Add operations expect a free node (all links null); they do not clear stale links, so
// callers isolate a node before linking it in elsewhere. Nodes are never copied.
//
// A tree and its nodes are used by one thread at a time (the control that holds them is used
// from its own thread); nothing here is synchronised.
class ozTreeNode {
public:
    // Callback of the pre-order walk; returning false stops the walk.
    using ExecuteCallback = bool (*)(ozTreeNode*);
    using ExecuteContextCallback = bool (*)(ozTreeNode*, void*);

    ozTreeNode() = default;
    ozTreeNode(const ozTreeNode&) = delete;
    ozTreeNode& operator=(const ozTreeNode&) = delete;

    // Destroys every child (and so the whole subtree), then unlinks this node.
    virtual ~ozTreeNode();

    // Calls `callback` on this node, then walks its subtree and then every following sibling
    // with its subtree, depth-first in pre-order. Siblings are walked in a loop (their own
    // Execute is not called), so a node may have any number of them. The first false stops the
    // whole walk and is returned; otherwise true. `context` is passed through unchanged.
    virtual bool Execute(ExecuteContextCallback callback, void* context);
    virtual bool Execute(ExecuteCallback callback);

protected:
    // Writes the text that opens this node; the base writes nothing and returns true.
    virtual bool SaveNode(FILE* file);
    // Writes the text that closes this node, after all of its descendants; the base writes
    // nothing and returns true.
    virtual bool SaveNodeAfter(FILE* file);

public:
    // Writes this node (SaveNode), its children, its closing text (SaveNodeAfter) and then
    // its following siblings. The first false stops the walk and is returned.
    virtual bool Save(FILE* file);

    ozTreeNode* Next() const { return m_next; }
    ozTreeNode* Prev() const { return m_prev; }
    ozTreeNode* Down() const { return m_down; }
    // The stored parent link: non-null only on a first child (and on top-level nodes of a
    // tree, whose parent is the tree).
    ozTreeNode* ParentLink() const { return m_parent; }

    // The parent, found by walking previous links to the first sibling; null for a free or
    // top-most node.
    ozTreeNode* Up() const;
    // True when the node has at least one child.
    bool IsNode() const { return m_down != nullptr; }
    // The top-most node above this one (the node itself when it has no parent). For a node
    // inside a tree this is the `ozTree`.
    ozTreeNode* GetTree();

    // Makes n the FIRST child of this node. False only for null n.
    bool AddBelow(ozTreeNode* n);
    // Inserts n directly after this node among its siblings. False only for null n.
    bool AddAfter(ozTreeNode* n);
    // Inserts n directly before this node. False for null n and for a node that has neither
    // a previous sibling nor a parent link (a free or parentless top node).
    bool AddBefore(ozTreeNode* n);
    // n takes this node's place among its siblings and this node (with its own subtree)
    // becomes n's only child. n's former children are dropped from n, not destroyed.
    // False only for null n.
    bool AddAbove(ozTreeNode* n);
    // Unlinks this node from its siblings and parent; its children stay attached. Always true.
    bool Isolate();

    // A count kept on the node itself. It changes when the node is linked in or moved
    // (isolated, or put below another by AddAbove), when its children change other than by
    // appending after the last one (a child inserted before the last, replaced, isolated or
    // destroyed), and on ChildrenChanged. What is remembered about a node's place (its parent) or
    // its children (an index of their names) is trusted while the count is the one it was
    // remembered at. It lives in the tree, so every module sharing the tree (the control, the
    // loader, each profile library) sees the same count.
    unsigned long Generation() const { return m_generation; }
    // Tells whoever remembers this node's children that one changed in a way the links do
    // not show (it was renamed).
    void ChildrenChanged() { ++m_generation; }

private:
    // Counts a change among the children of the parent of a node that is about to be
    // relinked. Finding the parent walks back over earlier siblings; appends never need it.
    static void CountChildChange(const ozTreeNode* child);

    ozTreeNode* m_next = nullptr;
    ozTreeNode* m_prev = nullptr;
    ozTreeNode* m_down = nullptr;
    ozTreeNode* m_parent = nullptr;
    unsigned long m_generation = 0;
};
