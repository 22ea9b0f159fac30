// The code object of a load: the policy tree that the grammar actions build from one or more
// templates, behind the header words a control checks before it uses the tree. The engine hands
// it around as an opaque pointer; between loads the control holds it.
#pragma once

#include <cstdint>
#include <memory>

#include "core/adm/ozADMTree.h"

// What a code object holds. A control rejects a code object of any other kind after a load.
enum tCODEKIND : uint32_t {
    CodeKindPolicyTree = 0,
};

// A new code object holds an empty tree; copying is deleted (the tree has one owner).
struct tTreeCodeHandle {
    // The kind of code: always a policy tree.
    uint32_t kind = CodeKindPolicyTree;
    // The layout version of the code object, 1.1.
    uint32_t versionMajor = 1;
    uint32_t versionMinor = 1;
    // 200 from creation on; kept for the layout, nothing reads it.
    uint32_t reserved = 200;
    // The policy tree, owned; never null in a code object the loader made.
    std::unique_ptr<ozADMTree> tree = std::make_unique<ozADMTree>();
    // Nonzero while the policy settings have changes not yet saved: what the control's
    // ShouldSave property reports. The control sets and clears it; a load leaves it alone.
    uint32_t modified = 0;
    // 0 from creation on; kept for the layout, nothing reads it.
    uint32_t spare = 0;
};

// The registry tree a predefined root key belongs to, by its root number (see ozRootNumber):
// the user tree for 1 (HKEY_CURRENT_USER), the machine tree for every other number. Null
// without a code object or tree.
inline ozRegTree* ozRegTreeOfRoot(tTreeCodeHandle* code, unsigned int rootNumber)
{
    if (code == nullptr || code->tree == nullptr)
        return nullptr;
    return rootNumber == 1 ? &code->tree->UsrTree() : &code->tree->MacTree();
}
