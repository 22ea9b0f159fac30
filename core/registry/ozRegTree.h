// One side (user or machine) of the registry model: a tree whose top-level nodes are the root
// keys in use, in the order they were first needed, with sub keys below them.
#pragma once

#include "CRegistryKey.h"
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

protected:
    // Reads the opened registry key `key` into the model key at `path` below root: sets its
    // Save flag, reads every sub key (depth-first, before the key's own values), then copies
    // the values. Stops at the first false. Registry failures throw CRegistryKey::Exception
    // naming the key being read; so does a key or value the model cannot hold whole (a path
    // of KeyPathCapacity bytes or more, a name holding a zero character), which would
    // otherwise be cut and merge with a sibling.
    virtual bool AddFromRegistry(CRegistryKey& key, HKEY root, const char* path);

public:
    // Copies `key` below the predefined key root from the registry of `machine` (null: this
    // machine) into the tree. Without a value name the model key is marked to be saved and,
    // when recursive, filled with all sub keys and values; with one, only the value of that
    // name (compared without regard to case) is copied, if it exists. False for a null key or
    // a model failure. Registry failures throw CRegistryKey::Exception naming the key: a key
    // that cannot be opened before anything is added to the tree, a failure further down
    // after what was read before it.
    virtual bool AddFromRegistry(HKEY root, const char* key, const char* value, bool recursive,
                                 const char* machine);

protected:
    // Copies one registry value into the model key (found or created by name) as an insert
    // of item type 'r': a four-byte number through SetDWORD, everything else (strings, with
    // every zero character and without a terminator added, and numbers of another size) as
    // the data is stored. An existing value is overwritten in place.
    virtual bool AddValueFromReg(ozSubKey* key, CRegistryKey::Value& value);

public:
    using ozTree::Save;

private:
    class ozRootKey* FindRootKey(HKEY root);
};
