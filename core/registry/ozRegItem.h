// The common base of registry keys and values: a tree node that knows which of the two it is.
#pragma once

#include "core/tree/ozTreeNode.h"

enum tREGISTRYITEM : int {
    ItemBase = 0,   // a bare ozRegItem
    ItemKey = 1,    // set by the ozRegKey constructor
    ItemValue = 2,  // set by the ozRegValue constructor
};

class ozRegItem : public ozTreeNode {
public:
    ozRegItem() = default;
    ~ozRegItem() override = default;

    // What this item is; fixed by the constructor of the derived class.
    tREGISTRYITEM RegItem() const { return m_itemKind; }

protected:
    explicit ozRegItem(tREGISTRYITEM kind) : m_itemKind(kind) {}

private:
    tREGISTRYITEM m_itemKind = ItemBase;
};
