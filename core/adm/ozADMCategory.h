// A category of a template: a named group of categories and policies.
#pragma once

#include "ozADMNode.h"

class ozADMCategory : public ozADMNode {
public:
    ozADMCategory() = default;
    ~ozADMCategory() override = default;

    tNODETYPE NodeType() const override { return NodeCategory; }
    // Template text: `CATEGORY name` (a string reference), the contents one level deeper, and
    // "END CATEGORY" at the contents' indentation. False outside a tree or for a failed write.
    bool SaveNode(FILE* file) override;
    bool SaveNodeAfter(FILE* file) override;
};
