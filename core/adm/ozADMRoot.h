// A class root of a template (CLASS USER or CLASS MACHINE): its policies write to the user or
// the machine registry tree.
#pragma once

#include "ozADMNode.h"

enum tROOTTYPE : unsigned long {
    RootUser = 1,
    RootMachine = 2,
};

class ozADMRoot : public ozADMNode {
public:
    ozADMRoot() = default;
    explicit ozADMRoot(unsigned long rootType) : m_rootType(rootType) {}
    ~ozADMRoot() override = default;

    tNODETYPE NodeType() const override { return NodeRoot; }
    ozRegTree* RegistryTree() const override;
    HKEY RootKey() const override;
    const char* Path() const override;
    // Template text: `CLASS name` at the left margin, the contents one level deeper, and an
    // empty line after them. False outside a tree or for a failed write.
    bool SaveNode(FILE* file) override;
    bool SaveNodeAfter(FILE* file) override;

    // Exactly "USER" gives the user class; every other text the machine class.
    virtual void RootType(const char* text);
    virtual void RootType(unsigned long rootType);
    virtual unsigned long RootType() const;

private:
    unsigned long m_rootType = RootMachine;
};
