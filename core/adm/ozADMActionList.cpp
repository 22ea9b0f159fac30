#include "ozADMActionList.h"

#include "core/registry/ozRegTree.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "core/tree/ozOwnedText.h"
#include "ozADMRegEntry.h"
#include "ozADMTree.h"
#include "ozADMWriterLines.h"

ozActionItem::ozActionItem(const ozActionItem& other)
    : m_key(other.m_key), m_valueName(ozCopyText(other.m_valueName.get())), m_value(other.m_value)
{
}

ozActionItem& ozActionItem::operator=(const ozActionItem& other)
{
    if (this != &other) {
        m_key = other.m_key;
        m_valueName = ozCopyText(other.m_valueName.get());
        m_value = other.m_value;
    }
    return *this;
}

ozActionItem::~ozActionItem() = default;

bool ozActionItem::RegKey(ozRegTree& tree, HKEY root, const char* path)
{
    // Like a part's key: without a path the item keeps the key it has.
    if (path == nullptr)
        return false;
    ozSubKey* key = tree.FindKey(root, path);
    RegKey(key);
    return key != nullptr;
}

void ozActionItem::RegKey(ozSubKey* key)
{
    m_key = key;
    if (key != nullptr)
        key->ADM(true);
}

ozSubKey* ozActionItem::RegKey() const
{
    return m_key;
}

void ozActionItem::ValueName(const char* valueName)
{
    m_valueName = ozCopyText(valueName);
}

const char* ozActionItem::ValueName() const
{
    return m_valueName.get();
}

ozADMValue& ozActionItem::Value()
{
    return m_value;
}

const ozADMValue& ozActionItem::Value() const
{
    return m_value;
}

ozActionItem* ozActionItem::Copy() const
{
    return new ozActionItem(*this);
}

bool ozActionItem::Sync() const
{
    if (m_key == nullptr || m_valueName == nullptr)
        return false;
    // Looked up without creating, so that comparing leaves the registry tree as it was.
    ozRegValue* value = m_key->HasValue(m_valueName.get());
    return value != nullptr && m_value.IsEqualWith(*value);
}

bool ozADMActionList::AddRegWrites(ozADMRegWrites& writes) const
{
    const std::size_t before = writes.size();
    for (int pos = 0; pos < Count(); ++pos) {
        const ozActionItem* item = At(pos);
        if (item == nullptr || item->RegKey() == nullptr || item->ValueName() == nullptr ||
            item->Value().Type() == ozADMValue::ValueEmpty) {
            writes.resize(before);
            return false;
        }
        ozADMRegWrite& write = writes.emplace_back();
        write.key = item->RegKey();
        write.valueName = item->ValueName();
        write.value = item->Value();
    }
    return true;
}

bool ozADMActionList::SaveToRegistry(ozRegTree& /*tree*/)
{
    ozADMRegWrites writes;
    return AddRegWrites(writes) && ozApplyRegWrites(writes);
}

bool ozADMActionList::SaveToCollection(CCollection<ozADMRegEntry>& collection)
{
    ozADMRegWrites writes;
    return AddRegWrites(writes) && ozListRegWrites(writes, collection);
}

bool ozADMActionList::SaveADM(FILE* file, ozADMTree& tree, ozSubKey* key)
{
    tree.IndentInc();
    ozSubKey* comparisonKey = key;
    for (int pos = 0; pos < Count(); ++pos) {
        const ozActionItem* item = At(pos);
        // A KEYNAME line applies to the items after it, so it is written only where the key
        // changes; an item without key inherits the one in force.
        if (item->RegKey() != nullptr && item->RegKey() != comparisonKey) {
            if (!ozWriteKeyLine(file, tree, item->RegKey()))
                return false;
            comparisonKey = item->RegKey();
        }
        if (!ozWriteTextLine(file, tree, "VALUENAME", item->ValueName()) ||
            !ozWriteValueLine(file, tree, "VALUE", item->Value()))
            return false;
    }
    tree.IndentDec();
    return true;
}

ozADMActionList* ozADMActionList::Copy() const
{
    auto copy = std::make_unique<ozADMActionList>();
    for (int pos = 0; pos < Count(); ++pos)
        if (!copy->Add(At(pos)->Copy(), NameAt(pos)))
            return nullptr;
    return copy.release();
}

bool ozADMActionList::Sync() const
{
    for (int pos = 0; pos < Count(); ++pos)
        if (!At(pos)->Sync())
            return false;
    return true;
}
