// One registry effect of a configured policy: a value set or deleted in a key, all values of a
// key erased, or a key marked as written. A policy, its parts and its action lists describe
// what they do to the registry once, as a list of these; saving applies the list to the
// registry trees, and the queries (Configures) turn the same list into registry entries
// without touching the trees.
#pragma once

#include <string>
#include <vector>

#include "core/tree/CCollection.h"
#include "ozADMValue.h"
#include "platform/ozRegistryTypes.h"

class ozADMRegEntry;
class ozRegTree;
class ozSubKey;

struct ozADMRegWrite {
    enum tWRITEKIND {
        WriteValue,      // valueName gets value (a string as an expandable one when expand)
        WriteEraseKey,   // every value of the key is removed, operation 'E' (a list box of a
                         // disabled policy, or one whose entries replace the key's values)
        WriteInsertKey,  // the key is marked as written: operation 'I', saved even without
                         // values (an additive or empty list box of an enabled policy)
    };

    tWRITEKIND kind = WriteValue;
    ozSubKey* key = nullptr;  // not owned; lives in a registry tree
    // Without key: the key at keyPath (borrowed, like valueName) below root in tree, not there
    // yet; applying the write creates it, listing it does not.
    ozRegTree* tree = nullptr;
    HKEY root{};
    const char* keyPath = nullptr;
    // Borrowed from the part, item or policy that describes the write: a list of writes is
    // used at once and never outlives a change of its source. Names are not copied, as a save
    // describes every configured policy's writes.
    const char* valueName = nullptr;
    ozADMValue value;
    bool expand = false;
};

using ozADMRegWrites = std::vector<ozADMRegWrite>;

// Applies writes to their keys, the erasures first and the others in order, creating the keys
// and values they set; an erasure removes the key's values from the tree. False at the
// first write without key, with an empty value (which would leave a value without type behind) or
// whose value cannot be written; the writes before it stay applied.
bool ozApplyRegWrites(const ozADMRegWrites& writes);

// Appends one registry entry per value write and per erased key to collection, which takes
// them; a marked key lists nothing. Neither keys nor values are created. False at the first
// write without key.
bool ozListRegWrites(const ozADMRegWrites& writes, CCollection<ozADMRegEntry>& collection);
