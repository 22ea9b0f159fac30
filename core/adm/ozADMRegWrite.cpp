#include "ozADMRegWrite.h"

#include <memory>

#include "core/registry/ozRegTree.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "core/tree/CCollection.h"
#include "ozADMRegEntry.h"

namespace {

bool Apply(const ozADMRegWrite& write)
{
    ozSubKey* key = write.key;
    if (key == nullptr && write.tree != nullptr)
        key = write.tree->FindKey(write.root, write.keyPath);
    if (key == nullptr)
        return false;
    switch (write.kind) {
        case ozADMRegWrite::WriteEraseKey:
            // The values go from the tree too: a profile that kept them would set them again
            // after the erasure, and a disabled list would read back enabled.
            key->Op(KeyOpEraseValues);
            key->Save(true);
            while (key->Values().Count() > 0)
                key->RemoveValue(key->Values().At(0));
            return true;
        case ozADMRegWrite::WriteInsertKey:
            // Saved even without values: a list left empty still says "enabled, no entries".
            key->Op(KeyOpInsert);
            key->Save(true);
            return true;
        case ozADMRegWrite::WriteValue:
            break;
    }
    if (write.value.Type() == ozADMValue::ValueEmpty)
        return false;
    ozRegValue* value = key->FindValue(write.valueName);
    if (value == nullptr)
        return false;
    if (write.expand && write.value.Type() == ozADMValue::ValueString)
        return value->SetExpandString(static_cast<const char*>(write.value));
    return write.value.SaveToRegistry(*value);
}

}  // namespace

bool ozApplyRegWrites(const ozADMRegWrites& writes)
{
    // Erasures first, as a profile writes a key's erasure before its values: a value the
    // policy sets in a list's key stays.
    for (bool erasures : {true, false}) {
        for (const ozADMRegWrite& write : writes) {
            if ((write.kind == ozADMRegWrite::WriteEraseKey) == erasures && !Apply(write))
                return false;
        }
    }
    return true;
}

bool ozListRegWrites(const ozADMRegWrites& writes, CCollection<ozADMRegEntry>& collection)
{
    for (const ozADMRegWrite& write : writes) {
        if (write.key == nullptr && write.tree == nullptr)
            return false;
        if (write.kind == ozADMRegWrite::WriteInsertKey)
            continue;
        std::string keyPath =
            write.key != nullptr ? write.key->KeyPath() : std::string(write.keyPath);
        unsigned int root = write.key != nullptr ? write.key->Root() : ozRootNumber(write.root);
        if (write.kind == ozADMRegWrite::WriteValue) {
            if (!write.value.SaveToCollection(root, keyPath.c_str(), write.valueName, collection,
                                              write.expand))
                return false;
            continue;
        }
        auto entry = std::make_unique<ozADMRegEntry>();
        entry->Root(root);
        entry->Key(keyPath.c_str());
        entry->ClearKey(true);
        if (!collection.Add(entry.release()))
            return false;
    }
    return true;
}
