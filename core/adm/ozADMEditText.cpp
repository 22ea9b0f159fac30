#include "ozADMEditText.h"

#include <string>

#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "core/tree/ozOwnedText.h"
#include "ozADMTree.h"
#include "ozADMValue.h"
#include "ozADMWriterLines.h"

ozADMEditText::ozADMEditText() : ozADMCtrl(CtrlEditText) {}

ozADMEditText::ozADMEditText(unsigned long ctrlType) : ozADMCtrl(ctrlType) {}

ozADMEditText::~ozADMEditText() = default;

void ozADMEditText::CopyEditTextFrom(const ozADMEditText& other)
{
    CopyBaseFrom(other);
    m_value = ozCopyText(other.m_value.get());
    m_default = ozCopyText(other.m_default.get());
    m_maxLen = other.m_maxLen;
    m_expandable = other.m_expandable;
}

bool ozADMEditText::_AddRegWrites(ozADMRegWrites& writes, bool enabled) const
{
    // An empty part writes the empty string. The deletion carries the expandable flag too, so
    // that its entry names the part's string type.
    ozADMValue written;
    written.SetString(m_value != nullptr ? m_value.get() : "");
    return AddOwnWrite(writes, enabled, written, m_expandable);
}

bool ozADMEditText::LeftEmpty() const
{
    return m_value == nullptr || m_value[0] == '\0';
}

bool ozADMEditText::SaveADM(FILE* file, ozADMTree& tree, ozSubKey* policyKey)
{
    return _SaveHeadADM(file, tree, policyKey, "EDITTEXT") && _SaveEditSettingsADM(file, tree) &&
           _SaveClientExtADM(file, tree);
}

bool ozADMEditText::_SaveEditSettingsADM(FILE* file, ozADMTree& tree)
{
    return _SaveValueNameADM(file, tree, /*withRequired=*/true) &&
           (m_default == nullptr || ozWriteTextLine(file, tree, "DEFAULT", m_default.get())) &&
           (m_maxLen == 0 ||
            (tree.WriteIndent(file) &&
             std::fprintf(file, "MAXLEN %u\n", static_cast<unsigned>(m_maxLen)) >= 0)) &&
           (!m_expandable || ozWriteLine(file, tree, "EXPANDABLETEXT"));
}

bool ozADMEditText::SetDefault()
{
    Value(m_default.get());
    return true;
}

tSYNCSTATE ozADMEditText::Sync()
{
    tSYNCSTATE early = SyncNeutral;
    ozRegValue* value = SyncOwnValue(&early);
    if (value == nullptr)
        return early;
    if (!value->IsInsert())
        return NotAnInsert(*value);
    // The part writes exactly one string type; the other one was not written by it.
    if (value->Type() != (m_expandable ? RegExpandSz : RegSz))
        return SyncConflict;
    Value(value->DataText().c_str());
    return SyncEnabled;
}

ozADMCtrl* ozADMEditText::Copy() const
{
    auto* copy = new ozADMEditText;
    copy->CopyEditTextFrom(*this);
    return copy;
}

ozADMCtrl* ozADMEditText::New() const
{
    return new ozADMEditText;
}

void ozADMEditText::Value(const char* value)
{
    m_value = ozCopyText(value);
}

const char* ozADMEditText::Value() const
{
    return m_value.get();
}

void ozADMEditText::Default(const char* value)
{
    m_default = ozCopyText(value);
}

const char* ozADMEditText::Default() const
{
    return m_default.get();
}

void ozADMEditText::MaxLen(unsigned long length)
{
    m_maxLen = length;
}

unsigned long ozADMEditText::MaxLen() const
{
    return m_maxLen;
}

void ozADMEditText::Expandable(bool expandable)
{
    m_expandable = expandable;
}

bool ozADMEditText::Expandable() const
{
    return m_expandable;
}
