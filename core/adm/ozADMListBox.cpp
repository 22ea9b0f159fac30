#include "ozADMListBox.h"

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "core/tree/ozOwnedText.h"
#include "ozADMRegEntry.h"
#include "ozADMWriterLines.h"

ozADMListBox::ozADMListBox() : ozADMCtrl(CtrlListBox)
{
    // The entries are the values of the key, each under its own name; the part's value name
    // stays empty.
    ValueName("");
}

ozADMListBox::~ozADMListBox() = default;

bool ozADMListBox::_AddRegWrites(ozADMRegWrites& writes, bool enabled) const
{
    ozSubKey* key = Key();
    if (key == nullptr)
        return false;
    ozADMRegWrite keyWrite;
    keyWrite.key = key;
    // Disabled: the whole key is emptied, whatever values it holds, including ones this part
    // never wrote. Enabled with entries and not additive: the key is emptied too, and the
    // entries replace what it held, as other policy editors write such a list. Otherwise the
    // key is marked as written, so that a list left empty still reads back as enabled, and
    // additive entries join the key's values.
    bool replaces = enabled && !m_additive && !LeftEmpty();
    keyWrite.kind =
        enabled && !replaces ? ozADMRegWrite::WriteInsertKey : ozADMRegWrite::WriteEraseKey;
    writes.push_back(keyWrite);
    if (!enabled || m_values == nullptr)
        return true;
    for (int pos = 0; pos < m_values->Count(); ++pos) {
        const ozADMListItem* item = m_values->At(pos);
        if (item == nullptr || item->Name() == nullptr)
            return false;
        ozADMRegWrite& write = writes.emplace_back();
        write.key = key;
        write.valueName = item->Name();
        write.value = item->Value();
    }
    return true;
}

bool ozADMListBox::LeftEmpty() const
{
    return m_values == nullptr || m_values->Count() == 0;
}

bool ozADMListBox::SaveADM(FILE* file, ozADMTree& tree, ozSubKey* policyKey)
{
    if (!_SaveHeadADM(file, tree, policyKey, "LISTBOX"))
        return false;
    if (m_explicitValue) {
        if (!ozWriteLine(file, tree, "EXPLICITVALUE"))
            return false;
    } else if (m_valuePrefix != nullptr &&
               !ozWriteTextLine(file, tree, "VALUEPREFIX", m_valuePrefix.get())) {
        return false;
    }
    return (!m_additive || ozWriteLine(file, tree, "ADDITIVE")) && _SaveClientExtADM(file, tree);
}

bool ozADMListBox::SetDefault()
{
    return true;
}

tSYNCSTATE ozADMListBox::Sync()
{
    ozADMCtrl::Sync();
    ozSubKey* key = Key();
    if (key == nullptr)
        return SyncFailed;
    const CCollection<ozRegValue>& values = key->Values();
    bool erased = key->Op() == KeyOpEraseValues;
    // A key saved without values is a list left empty; a key merely there says nothing.
    if (values.Count() == 0 && !erased && !key->Save())
        return SyncConflict;
    std::vector<std::unique_ptr<ozADMListItem>> entries;
    ozRegValue* value = nullptr;
    bool conflict = false;
    for (int pos = 0; !conflict && (value = values.At(pos)) != nullptr; ++pos) {
        // A deletion is no entry: the other parts of a disabled policy sharing the key write
        // theirs next to the erasure.
        if (value->IsDelete() || (!m_explicitValue && !_IsValidName(value->Name())))
            continue;
        // Entries are strings; any other type was not written by this part. The entries
        // gathered so far stay, for the user to see.
        conflict = value->Type() != RegSz;
        if (conflict)
            continue;
        auto item = std::make_unique<ozADMListItem>();
        item->Name(value->Name());
        item->Value().SetString(value->DataText().c_str());
        entries.push_back(std::move(item));
    }
    // An erased key without entries is a disabled list, which keeps the entries it has; with
    // entries, it is a list whose entries replace the machine's.
    if (!conflict && erased && entries.empty())
        return SyncDisabled;
    CCollection<ozADMListItem>& items = ClearValues();
    for (std::unique_ptr<ozADMListItem>& entry : entries)
        items.Add(entry.release());
    return conflict ? SyncConflict : SyncEnabled;
}

ozADMCtrl* ozADMListBox::Copy() const
{
    auto* copy = new ozADMListBox;
    copy->CopyBaseFrom(*this);
    if (m_values != nullptr) {
        CCollection<ozADMListItem>& values = copy->ClearValues();
        for (int pos = 0; pos < m_values->Count(); ++pos)
            values.Add(m_values->At(pos)->Copy(), m_values->NameAt(pos));
    }
    copy->m_valuePrefix = ozCopyText(m_valuePrefix.get());
    copy->m_explicitValue = m_explicitValue;
    copy->m_additive = m_additive;
    return copy;
}

ozADMCtrl* ozADMListBox::New() const
{
    return new ozADMListBox;
}

CCollection<ozADMListItem>* ozADMListBox::Values()
{
    return m_values.get();
}

const CCollection<ozADMListItem>* ozADMListBox::Values() const
{
    return m_values.get();
}

CCollection<ozADMListItem>& ozADMListBox::ClearValues()
{
    if (m_values == nullptr)
        m_values = std::make_unique<CCollection<ozADMListItem>>(true);
    else
        m_values->RemoveAll();
    return *m_values;
}

void ozADMListBox::ValuePrefix(const char* prefix)
{
    m_valuePrefix = ozCopyText(prefix);
}

const char* ozADMListBox::ValuePrefix() const
{
    return m_valuePrefix.get();
}

void ozADMListBox::ExplicitValue(bool explicitValue)
{
    m_explicitValue = explicitValue;
}

bool ozADMListBox::ExplicitValue() const
{
    return m_explicitValue;
}

void ozADMListBox::Additive(bool additive)
{
    m_additive = additive;
}

bool ozADMListBox::Additive() const
{
    return m_additive;
}

bool ozADMListBox::_IsValidName(const char* name) const
{
    if (name == nullptr)
        return false;
    const char* prefix = m_valuePrefix != nullptr ? m_valuePrefix.get() : "";
    // Only the characters both have are compared, so a name that stops inside the prefix
    // passes as well.
    for (; *name != '\0' && *prefix != '\0'; ++name, ++prefix) {
        if (*name != *prefix)
            return false;
    }
    for (; *name != '\0'; ++name) {
        if (*name < '0' || *name > '9')
            return false;
    }
    return true;
}
