// A node of a policy template tree: a class root, a category or a policy. A node resolves,
// through its parents, the registry tree and the root key its policies write to.
#pragma once

#include <memory>

#include "core/tree/ozTreeNode.h"
#include "ozADMChildIndex.h"
#include "platform/ozRegistryTypes.h"

class ozADMTree;
class ozRegTree;

enum tNODETYPE : unsigned long {
    NodeRoot = 0,
    NodeCategory = 1,
    NodePolicy = 2,
};

// The path, registry tree and root key are worked out on first use and kept; a node moved to
// another parent must have ClearPath() called (the registry tree and root key are looked up
// again after any move).
class ozADMNode : public ozTreeNode {
public:
    ozADMNode() = default;
    ~ozADMNode() override;

    // Write the node's state into its registry tree / read it from there / reset it to its
    // defaults. The base does nothing and returns true.
    virtual bool SaveToRegistry();
    virtual bool Sync();
    virtual bool SetDefault();
    // Keeps a copy of name (null clears it). Renaming a node that is linked into a tree
    // changes its parent's generation, so that indexes of the parent's children rebuild.
    virtual void Name(const char* name);
    virtual const char* Name() const;
    // A display state kept for the views.
    virtual void Open(bool open);
    virtual bool Open() const;
    virtual tNODETYPE NodeType() const = 0;
    // The tree the node is in, or null.
    virtual ozADMTree* ADMTree() const;
    // The registry tree of the node's class root; null outside a class.
    virtual ozRegTree* RegistryTree() const;
    // HKEY_CURRENT_USER or HKEY_LOCAL_MACHINE by the node's class; null outside a class.
    virtual HKEY RootKey() const;
    // The names from the class root down to this node, joined by backslashes.
    virtual const char* Path() const;
    // Forgets the path worked out before (after a rename or a move).
    virtual void ClearPath();
    // The node at path below this node: each component is matched with the children's names
    // without regard to case, the first match winning. Null when a component is missing or
    // path is null.
    virtual ozADMNode* FindNode(const char* path);

    // Finds path among the nodes starting at `first` and their descendants, as FindNode does.
    static ozADMNode* FindAmong(ozTreeNode* first, const char* path);

    // The first child, in sibling order, whose name equals name exactly (byte-wise) or that has
    // no name; null when there is none. The last child, null without children. Both take
    // constant time on average through an index of the children's names that the node builds
    // on first use and keeps over appends (see ozADMChildIndex); out of memory throws
    // std::bad_alloc.
    ozADMNode* FirstChildNamedOrNameless(const char* name);
    ozTreeNode* LastChild();

    // The parent (the tree for a top-level node; null for a free node), remembered while the
    // node's generation is unchanged, so that climbing from the children of a node in turn
    // costs constant time each.
    ozTreeNode* CachedUp() const;

protected:
    // The parent node, or null for a node whose parent is the tree (or that has none).
    ozADMNode* ParentNode() const;

private:
    std::unique_ptr<char[]> m_name;
    bool m_open = false;
    mutable std::unique_ptr<char[]> m_path;
    mutable ozRegTree* m_registryTree = nullptr;
    mutable HKEY m_rootKey = HKEY_CLASSES_ROOT;  // not yet resolved
    mutable ozTreeNode* m_cachedParent = nullptr;
    mutable unsigned long m_cachedParentGeneration = 0;
    std::unique_ptr<ozADMChildIndex> m_childIndex;  // null until first asked for
};
