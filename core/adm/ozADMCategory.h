// A category of a template: a named group of categories and policies.
#pragma once

#include "ozADMNode.h"

class ozADMCategory : public ozADMNode {
public:
    ozADMCategory() = default;
    ~ozADMCategory() override = default;

    tNODETYPE NodeType() const override { return NodeCategory; }
};
