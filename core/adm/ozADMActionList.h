// Action lists: extra registry values that a check box, a drop-down item or a policy writes
// along with its own value. An action item names a key (of a registry tree, not owned), a
// value name and the value to write.
#pragma once

#include <cstdio>
#include <memory>

#include "core/tree/CCollection.h"
#include "ozADMRegWrite.h"
#include "ozADMValue.h"
#include "platform/ozRegistryTypes.h"

class ozADMRegEntry;
class ozADMTree;
class ozRegTree;
class ozSubKey;

class ozActionItem {
public:
    ozActionItem() = default;
    ozActionItem(const ozActionItem& other);
    ozActionItem& operator=(const ozActionItem& other);
    virtual ~ozActionItem();

    // Finds or creates the key at path below root in tree and takes it; false when no key
    // was obtained.
    virtual bool RegKey(ozRegTree& tree, HKEY root, const char* path);
    // Takes the key and marks it as used by the template (ADM flag).
    virtual void RegKey(ozSubKey* key);
    virtual ozSubKey* RegKey() const;
    virtual void ValueName(const char* valueName);
    virtual const char* ValueName() const;
    virtual ozADMValue& Value();
    virtual const ozADMValue& Value() const;
    // A deep copy (the key is shared).
    virtual ozActionItem* Copy() const;
    // True when the key holds the value name (not created) and its value equals this item's.
    virtual bool Sync() const;

private:
    ozSubKey* m_key = nullptr;
    std::unique_ptr<char[]> m_valueName;
    ozADMValue m_value;
};

// An owning, ordered list of action items.
class ozADMActionList : public CCollection<ozActionItem> {
public:
    ozADMActionList() : CCollection<ozActionItem>(true) {}
    virtual ~ozADMActionList() = default;

    // Adds one write per item, in order: the item's value to its value name in its key.
    // False, adding nothing, when an item has no key, no value name or an empty value. True
    // for an empty list.
    bool AddRegWrites(ozADMRegWrites& writes) const;
    // Applies the list's writes to the registry tree; false as AddRegWrites.
    virtual bool SaveToRegistry(ozRegTree& tree);
    // Lists the list's writes as registry entries, touching neither keys nor values.
    virtual bool SaveToCollection(CCollection<ozADMRegEntry>& collection);
    // Writes the items one level deeper than the tree's indentation: per item a KEYNAME line
    // where its key differs from the key in force (at first `key`, then the last one written),
    // its VALUENAME and its VALUE. False at the first failed write or an item with an empty
    // value.
    virtual bool SaveADM(FILE* file, ozADMTree& tree, ozSubKey* key);
    // A deep copy.
    virtual ozADMActionList* Copy() const;
    // True when every item's Sync() is true (an empty list is); stops at the first false.
    virtual bool Sync() const;
};
