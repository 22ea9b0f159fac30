// One side (user or machine) of the registry model: a tree whose top-level nodes are the root
// keys in use, in the order they were first needed, with sub keys below them.
#pragma once

#include "core/tree/ozTree.h"
#include "platform/ozRegistryTypes.h"

class ozRegExport;
class ozSubKey;

class ozRegTree : public ozTree {
public:
    ozRegTree() = default;
    ~ozRegTree() override = default;

    // Finds or creates the key at path below the predefined key root, creating the root key
    // (after the existing ones) and every missing key along the path. Moves the cursor.
    // Null when path is null or has a component that is too long.
    virtual ozSubKey* FindKey(HKEY root, const char* path);
    // The key at path below root, or null when it or its root key is missing. Creates nothing.
    virtual ozSubKey* HasKey(HKEY root, const char* path);
    // Clears the Selected flag of every sub key. True.
    virtual bool ResetSelected();
    // Hands every sub key to exporter->ExportKey in pre-order; the first false stops and is
    // returned. False for a null exporter.
    virtual bool Save(ozRegExport* exporter);

    using ozTree::Save;

private:
    class ozRootKey* FindRootKey(HKEY root);
};
