// The children of one template node by name, so that a loader placing many categories or
// policies below one parent finds a sibling of the same name in constant time instead of
// walking all earlier siblings.
#pragma once

#include <cstddef>
#include <vector>

class ozADMNode;
class ozTreeNode;

// Owned by the parent node it indexes; it holds pointers to the parent's children and views of
// their names, owning neither. Built on first use and trusted while the parent's generation is
// the one it was built at (no child was inserted before the last, removed or renamed, see
// ozTreeNode::Generation); otherwise built again. Children appended after the last child it
// knows are taken in on the next lookup, whoever appended them.
class ozADMChildIndex {
public:
    // The first child of parent, in sibling order, whose name equals name (byte-wise) or that
    // has no name; null when there is none.
    ozADMNode* FirstNamedOrNameless(const ozTreeNode& parent, const char* name);
    // The last child of parent, null for a parent without children.
    ozTreeNode* LastChild(const ozTreeNode& parent);

private:
    struct Position {
        ozADMNode* node;
        size_t ordinal;  // place among the siblings, counted from 0
    };

    // A slot of the open-addressing table of names; empty while node is null.
    struct Slot {
        size_t hash;
        Position position;
    };

    // Rebuilds the index when it may be stale, then takes in children appended since.
    void Refresh(const ozTreeNode& parent);
    void Take(ozADMNode* child);
    // The slot of name: the one holding it, or the empty one where it would go.
    Slot& SlotOf(const char* name, size_t hash);
    void Grow();

    // The first child of each name, in a table kept at most half full (its size a power of
    // two, probed linearly), so that a name is mostly found or missed at its first slot.
    std::vector<Slot> m_slots;
    size_t m_named = 0;
    Position m_firstNameless{nullptr, 0};
    ozTreeNode* m_last = nullptr;
    size_t m_count = 0;
    bool m_built = false;
    unsigned long m_parentGeneration = 0;
};
