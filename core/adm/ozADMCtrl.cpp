#include "ozADMCtrl.h"

#include <cstring>
#include <string>

#include "core/registry/ozRegTree.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "core/tree/ozOwnedText.h"
#include "ozADMPolicy.h"
#include "ozADMValue.h"
#include "ozADMWriterLines.h"

ozADMCtrl::ozADMCtrl(unsigned long ctrlType) : m_ctrlType(ctrlType) {}

ozADMCtrl::~ozADMCtrl() = default;

void ozADMCtrl::CopyBaseFrom(const ozADMCtrl& other)
{
    m_name = ozCopyText(other.m_name.get());
    m_key = other.m_key;
    m_valueName = ozCopyText(other.m_valueName.get());
    m_required = other.m_required;
    m_clientExt = ozCopyText(other.m_clientExt.get());
    m_policy = other.m_policy;
}

unsigned long ozADMCtrl::CtrlType() const
{
    return m_ctrlType;
}

void ozADMCtrl::Name(const char* name)
{
    m_name = ozCopyText(name);
}

const char* ozADMCtrl::Name() const
{
    return m_name.get();
}

void ozADMCtrl::Key(ozSubKey* key)
{
    m_key = key;
    if (key != nullptr)
        key->ADM(true);
}

void ozADMCtrl::Key(ozRegTree& tree, HKEY root, const char* path)
{
    if (path == nullptr)
        return;
    Key(tree.FindKey(root, path));
}

ozSubKey* ozADMCtrl::Key() const
{
    return m_key;
}

void ozADMCtrl::ValueName(const char* valueName)
{
    m_valueName = ozCopyText(valueName);
}

const char* ozADMCtrl::ValueName() const
{
    return m_valueName.get();
}

void ozADMCtrl::Required(bool required)
{
    m_required = required;
}

bool ozADMCtrl::Required() const
{
    return m_required;
}

void ozADMCtrl::ClientExt(const char* clientExt)
{
    m_clientExt = ozCopyText(clientExt);
}

const char* ozADMCtrl::ClientExt() const
{
    return m_clientExt.get();
}

void ozADMCtrl::Policy(ozADMPolicy* policy)
{
    m_policy = policy;
}

ozADMPolicy* ozADMCtrl::Policy() const
{
    return m_policy;
}

bool ozADMCtrl::SaveToRegistry(ozRegTree&, bool enabled)
{
    ozADMRegWrites writes;
    return AddRegWrites(writes, enabled) && ozApplyRegWrites(writes);
}

bool ozADMCtrl::SaveToCollection(CCollection<ozADMRegEntry>& collection, bool enabled)
{
    ozADMRegWrites writes;
    return AddRegWrites(writes, enabled) && ozListRegWrites(writes, collection);
}

bool ozADMCtrl::AddRegWrites(ozADMRegWrites& writes, bool enabled) const
{
    if (enabled && m_required && LeftEmpty())
        return false;
    const std::size_t before = writes.size();
    if (_AddRegWrites(writes, enabled))
        return true;
    writes.resize(before);
    return false;
}

bool ozADMCtrl::LeftEmpty() const
{
    return false;
}

bool ozADMCtrl::_AddRegWrites(ozADMRegWrites&, bool) const
{
    return true;
}

bool ozADMCtrl::SaveADM(FILE*, ozADMTree&, ozSubKey*)
{
    return false;  // the part's template text is written by the template writer
}

bool ozADMCtrl::SetDefault()
{
    return false;
}

tSYNCSTATE ozADMCtrl::Sync()
{
    // A key the user marked in the registry view marks the policy that uses it, whatever the
    // part's value says.
    if (m_policy != nullptr && m_key != nullptr && m_key->Selected())
        m_policy->Selected(true);
    return SyncNeutral;
}

bool ozADMCtrl::_SaveClientExtADM(FILE* file, ozADMTree& tree)
{
    return ozWriteClientExtBlock(file, tree, m_clientExt.get());
}

bool ozADMCtrl::_SaveHeadADM(FILE* file, ozADMTree& tree, ozSubKey* policyKey,
                             const char* typeKeyword)
{
    if (file == nullptr || std::fprintf(file, "%s\n", typeKeyword) < 0)
        return false;
    return m_key == nullptr || m_key == policyKey || ozWriteKeyLine(file, tree, m_key);
}

bool ozADMCtrl::_SaveValueNameADM(FILE* file, ozADMTree& tree, bool withRequired)
{
    if (m_valueName != nullptr && !ozWriteTextLine(file, tree, "VALUENAME", m_valueName.get()))
        return false;
    return !withRequired || !m_required || ozWriteLine(file, tree, "REQUIRED");
}

ozSubKey* ozADMCtrl::_CurrentKey(ozSubKey* policyKey) const
{
    return m_key != nullptr ? m_key : policyKey;
}

ozRegValue* ozADMCtrl::SyncOwnValue(tSYNCSTATE* early)
{
    ozADMCtrl::Sync();
    if (m_key == nullptr || m_valueName == nullptr) {
        *early = SyncFailed;
        return nullptr;
    }
    ozRegValue* value = m_key->HasValue(m_valueName.get());
    if (value == nullptr)
        *early = SyncConflict;
    return value;
}

tSYNCSTATE ozADMCtrl::NotAnInsert(const ozRegValue& value)
{
    return value.IsDelete() ? SyncDisabled : SyncConflict;
}

bool ozADMCtrl::AddOwnWrite(ozADMRegWrites& writes, bool enabled, const ozADMValue& value,
                            bool expand) const
{
    if (m_key == nullptr || m_valueName == nullptr)
        return false;
    ozADMRegWrite write;
    write.key = m_key;
    write.valueName = m_valueName.get();
    if (enabled)
        write.value = value;
    else
        write.value.SetDelete();
    write.expand = expand;
    writes.push_back(std::move(write));
    return true;
}

std::string ozADMCtrl::ConversionName() const
{
    if (Name() != nullptr && *Name() != '\0')
        return std::string("\"") + Name() + "\"";
    return std::string("of the value \"") + (ValueName() != nullptr ? ValueName() : "") + "\"";
}
