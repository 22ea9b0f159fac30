#include "ozADMCheckBox.h"

#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "ozADMWriterLines.h"

ozADMCheckBox::ozADMCheckBox() : ozADMCtrl(CtrlCheckBox)
{
    m_valueOn.SetNumeric(1);
    m_valueOff.SetNumeric(0);
}

ozADMCheckBox::~ozADMCheckBox() = default;

bool ozADMCheckBox::_AddRegWrites(ozADMRegWrites& writes, bool enabled) const
{
    const ozADMValue& written = m_checked ? m_valueOn : m_valueOff;
    if (!AddOwnWrite(writes, enabled, written))
        return false;
    const ozADMActionList* actions = m_checked ? m_actionListOn.get() : m_actionListOff.get();
    return !enabled || actions == nullptr || actions->AddRegWrites(writes);
}

bool ozADMCheckBox::SaveADM(FILE* file, ozADMTree& tree, ozSubKey* policyKey)
{
    ozSubKey* currentKey = _CurrentKey(policyKey);
    return _SaveHeadADM(file, tree, policyKey, "CHECKBOX") &&
           _SaveValueNameADM(file, tree, /*withRequired=*/false) &&
           (!m_default || ozWriteLine(file, tree, "DEFCHECKED")) &&
           (m_valueOn.Type() == ozADMValue::ValueEmpty ||
            ozWriteValueLine(file, tree, "VALUEON", m_valueOn)) &&
           (m_valueOff.Type() == ozADMValue::ValueEmpty ||
            ozWriteValueLine(file, tree, "VALUEOFF", m_valueOff)) &&
           ozWriteActionListBlock(file, tree, "ACTIONLISTON", m_actionListOn.get(), currentKey) &&
           ozWriteActionListBlock(file, tree, "ACTIONLISTOFF", m_actionListOff.get(), currentKey) &&
           _SaveClientExtADM(file, tree);
}

bool ozADMCheckBox::SetDefault()
{
    m_checked = m_default;
    return true;
}

tSYNCSTATE ozADMCheckBox::Sync()
{
    tSYNCSTATE early = SyncNeutral;
    ozRegValue* value = SyncOwnValue(&early);
    if (value == nullptr)
        return early;
    // A state whose action list is not fully in the registry was not set by this template,
    // so it cannot speak for the policy. A state that deletes the value sets the box but
    // cannot speak either: a disabled policy deletes the value too.
    tSYNCSTATE matched = value->IsDelete() ? SyncNeutral : SyncEnabled;
    if (m_valueOn.IsEqualWith(*value)) {
        if (m_actionListOn != nullptr && !m_actionListOn->Sync())
            return SyncConflict;
        m_checked = true;
        return matched;
    }
    if (m_valueOff.IsEqualWith(*value)) {
        if (m_actionListOff != nullptr && !m_actionListOff->Sync())
            return SyncConflict;
        m_checked = false;
        return matched;
    }
    return value->IsDelete() ? SyncDisabled : SyncConflict;
}

ozADMCtrl* ozADMCheckBox::Copy() const
{
    auto* copy = new ozADMCheckBox;
    copy->CopyBaseFrom(*this);
    copy->m_checked = m_checked;
    copy->m_default = m_default;
    copy->m_valueOn = m_valueOn;
    copy->m_valueOff = m_valueOff;
    if (m_actionListOn != nullptr)
        copy->m_actionListOn.reset(m_actionListOn->Copy());
    if (m_actionListOff != nullptr)
        copy->m_actionListOff.reset(m_actionListOff->Copy());
    return copy;
}

ozADMCtrl* ozADMCheckBox::New() const
{
    return new ozADMCheckBox;
}

void ozADMCheckBox::Checked(bool checked)
{
    m_checked = checked;
}

bool ozADMCheckBox::Checked() const
{
    return m_checked;
}

void ozADMCheckBox::Default(bool checked)
{
    m_default = checked;
}

bool ozADMCheckBox::Default() const
{
    return m_default;
}

ozADMValue& ozADMCheckBox::ValueOn()
{
    return m_valueOn;
}

const ozADMValue& ozADMCheckBox::ValueOn() const
{
    return m_valueOn;
}

ozADMValue& ozADMCheckBox::ValueOff()
{
    return m_valueOff;
}

const ozADMValue& ozADMCheckBox::ValueOff() const
{
    return m_valueOff;
}

void ozADMCheckBox::ActionListOn(ozADMActionList* list)
{
    if (list != m_actionListOn.get())
        m_actionListOn.reset(list);
}

ozADMActionList* ozADMCheckBox::ActionListOn() const
{
    return m_actionListOn.get();
}

void ozADMCheckBox::ActionListOff(ozADMActionList* list)
{
    if (list != m_actionListOff.get())
        m_actionListOff.reset(list);
}

ozADMActionList* ozADMCheckBox::ActionListOff() const
{
    return m_actionListOff.get();
}
