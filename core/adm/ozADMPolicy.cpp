#include "ozADMPolicy.h"

#include <string>

#include "core/registry/ozRegTree.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "core/tree/ozOwnedText.h"
#include "ozADMRegEntry.h"
#include "ozADMTree.h"
#include "ozADMWriterLines.h"

ozADMPolicy::~ozADMPolicy() = default;

void ozADMPolicy::State(tPOLICYSTATE state)
{
    m_state = state;
}

tPOLICYSTATE ozADMPolicy::State() const
{
    return m_state;
}

bool ozADMPolicy::RegKey(const char* keyPath)
{
    if (keyPath == nullptr)
        return false;
    m_keyPath = ozCopyText(keyPath);
    m_regKey = nullptr;
    return true;
}

void ozADMPolicy::RegKey(ozSubKey* key)
{
    m_regKey = key;
}

ozSubKey* ozADMPolicy::RegKey() const
{
    if (m_regKey == nullptr && m_keyPath != nullptr) {
        ozRegTree* tree = RegistryTree();
        if (tree != nullptr)
            m_regKey = tree->FindKey(RootKey(), m_keyPath.get());
    }
    return m_regKey;
}

void ozADMPolicy::ActionListOn(ozADMActionList* list)
{
    m_actionListOn.reset(list);
}

ozADMActionList* ozADMPolicy::ActionListOn()
{
    return m_actionListOn.get();
}

const ozADMActionList* ozADMPolicy::ActionListOn() const
{
    return m_actionListOn.get();
}

void ozADMPolicy::ActionListOff(ozADMActionList* list)
{
    m_actionListOff.reset(list);
}

ozADMActionList* ozADMPolicy::ActionListOff()
{
    return m_actionListOff.get();
}

const ozADMActionList* ozADMPolicy::ActionListOff() const
{
    return m_actionListOff.get();
}

void ozADMPolicy::Valuename(const char* valueName)
{
    m_valueName = ozCopyText(valueName);
}

const char* ozADMPolicy::Valuename() const
{
    return m_valueName.get();
}

ozADMValue& ozADMPolicy::ValueOn()
{
    return m_valueOn;
}

const ozADMValue& ozADMPolicy::ValueOn() const
{
    return m_valueOn;
}

ozADMValue& ozADMPolicy::ValueOff()
{
    return m_valueOff;
}

const ozADMValue& ozADMPolicy::ValueOff() const
{
    return m_valueOff;
}

void ozADMPolicy::Explain(const char* explain)
{
    m_explain = ozCopyText(explain);
}

const char* ozADMPolicy::Explain() const
{
    return m_explain.get();
}

void ozADMPolicy::ClientExt(const char* clientExt)
{
    m_clientExt = ozCopyText(clientExt);
}

const char* ozADMPolicy::ClientExt() const
{
    return m_clientExt.get();
}

void ozADMPolicy::SupportedOn(const char* supportedOn)
{
    m_supportedOn = ozCopyText(supportedOn);
}

const char* ozADMPolicy::SupportedOn() const
{
    return m_supportedOn.get();
}

void ozADMPolicy::Selected(bool selected)
{
    m_selected = selected;
}

bool ozADMPolicy::Selected() const
{
    return m_selected;
}

CCollection<ozADMCtrl>& ozADMPolicy::Controls()
{
    return m_controls;
}

const CCollection<ozADMCtrl>& ozADMPolicy::Controls() const
{
    return m_controls;
}

bool ozADMPolicy::AddControl(ozADMCtrl* part)
{
    if (part == nullptr || !m_controls.Add(part))
        return false;
    part->Policy(this);
    return true;
}

bool ozADMPolicy::SetDefault()
{
    return false;
}

bool ozADMPolicy::Sync()
{
    ozSubKey* key = RegKey();
    if (key != nullptr && key->Selected())
        m_selected = true;

    tPOLICYSTATE candidate = PolicyNotConfigured;
    bool decided = false;
    if (key != nullptr && m_valueName != nullptr) {
        decided = true;
        ozRegValue* value = key->HasValue(m_valueName.get());
        if (value != nullptr && EffectiveValueOn().IsEqualWith(*value))
            candidate = PolicyEnabled;
        else if (value != nullptr && EffectiveValueOff().IsEqualWith(*value))
            candidate = PolicyDisabled;
    }

    for (int position = 0; position < m_controls.Count(); ++position) {
        tSYNCSTATE evidence = m_controls.At(position)->Sync();
        if (evidence == SyncFailed)
            return false;
        if (evidence == SyncConflict) {
            candidate = PolicyNotConfigured;
        } else if (evidence == SyncEnabled || evidence == SyncDisabled) {
            tPOLICYSTATE says = evidence == SyncEnabled ? PolicyEnabled : PolicyDisabled;
            if (!decided) {
                candidate = says;
                decided = true;
            } else if (candidate != says) {
                candidate = PolicyNotConfigured;
            }
        }
    }

    if (candidate == PolicyEnabled && m_actionListOn != nullptr && !m_actionListOn->Sync())
        m_state = PolicyNotConfigured;
    else if (candidate == PolicyDisabled && m_actionListOff != nullptr && !m_actionListOff->Sync())
        m_state = PolicyNotConfigured;
    else
        m_state = candidate;
    return true;
}

ozADMValue ozADMPolicy::EffectiveValueOn() const
{
    if (m_valueOn.Type() != ozADMValue::ValueEmpty)
        return m_valueOn;
    ozADMValue one;
    one.SetNumeric(1);
    return one;
}

ozADMValue ozADMPolicy::EffectiveValueOff() const
{
    if (m_valueOff.Type() != ozADMValue::ValueEmpty)
        return m_valueOff;
    // Deleting the value tells disabled from enabled, unless enabling deletes it already.
    ozADMValue off;
    if (m_valueOn.Type() == ozADMValue::ValueDelete)
        off.SetNumeric(0);
    else
        off.SetDelete();
    return off;
}

bool ozADMPolicy::AddRegWrites(ozADMRegWrites& writes) const
{
    ozRegTree* tree = RegistryTree();
    if (tree == nullptr)
        return false;
    if (m_state != PolicyEnabled && m_state != PolicyDisabled)
        return true;
    bool enabled = m_state == PolicyEnabled;
    const std::size_t before = writes.size();
    if (m_valueName != nullptr) {
        // The key is looked up without creating it: listing the writes leaves the tree alone.
        ozADMRegWrite write;
        write.key = m_regKey;
        if (write.key == nullptr && m_keyPath != nullptr) {
            write.key = tree->HasKey(RootKey(), m_keyPath.get());
            write.tree = tree;
            write.root = RootKey();
            write.keyPath = m_keyPath.get();
        }
        if (write.key == nullptr && write.tree == nullptr)
            return false;
        write.valueName = m_valueName.get();
        write.value = enabled ? EffectiveValueOn() : EffectiveValueOff();
        writes.push_back(std::move(write));
    }
    const ozADMActionList* actions = enabled ? m_actionListOn.get() : m_actionListOff.get();
    bool described = actions == nullptr || actions->AddRegWrites(writes);
    for (int position = 0; described && position < m_controls.Count(); ++position)
        described = m_controls.At(position)->AddRegWrites(writes, enabled);
    if (!described)
        writes.resize(before);
    return described;
}

const ozADMCtrl* ozADMPolicy::RequiredPartLeftEmpty() const
{
    if (m_state != PolicyEnabled)
        return nullptr;
    for (int position = 0; position < m_controls.Count(); ++position) {
        const ozADMCtrl* part = m_controls.At(position);
        if (part->Required() && part->LeftEmpty())
            return part;
    }
    return nullptr;
}

bool ozADMPolicy::SaveToRegistry()
{
    ozADMRegWrites writes;
    writes.reserve(8);  // a policy writes a few values; spares the copies of regrowing
    return AddRegWrites(writes) && ozApplyRegWrites(writes);
}

bool ozADMPolicy::Configures(CCollection<ozADMRegEntry>& collection) const
{
    ozADMRegWrites writes;
    return AddRegWrites(writes) && ozListRegWrites(writes, collection);
}

bool ozADMPolicy::SaveNode(FILE* file)
{
    ozADMTree* tree = ADMTree();
    ozSubKey* key = RegKey();
    if (tree == nullptr)
        return false;
    tree->WritingPolicy(Path());
    // The template language has policies only inside categories; one that stands directly in
    // its class (possible in XML templates) gets a category of its own name around it.
    if (StandsInClass()) {
        if (!ozWriteTextLine(file, *tree, "CATEGORY", Name()))
            return false;
        tree->IndentInc();
        tree->ReportConversionLoss(
            "the policy stands in no category; it is written inside a category of its own name");
    }
    if (!ozWriteTextLine(file, *tree, "POLICY", Name()))
        return false;
    tree->IndentInc();
    if (m_explain != nullptr && !(ozBeginVersionBlock(file, *tree, 2) &&
                                  ozWriteTextLine(file, *tree, "EXPLAIN", m_explain.get()) &&
                                  ozEndVersionBlock(file, *tree)))
        return false;
    // Templates of version 4 and later know SUPPORTED.
    if (m_supportedOn != nullptr &&
        !(ozBeginVersionBlock(file, *tree, 3) &&
          ozWriteTextLine(file, *tree, "SUPPORTED", m_supportedOn.get()) &&
          ozEndVersionBlock(file, *tree)))
        return false;
    if (!ozWriteKeyLine(file, *tree, key))
        return false;
    if (m_valueName != nullptr && !ozWriteTextLine(file, *tree, "VALUENAME", m_valueName.get()))
        return false;
    if (!ozWriteClientExtBlock(file, *tree, m_clientExt.get()))
        return false;
    if (m_valueName != nullptr) {
        if (m_valueOn.Type() != ozADMValue::ValueEmpty &&
            !ozWriteValueLine(file, *tree, "VALUEON", m_valueOn))
            return false;
        if (m_valueOff.Type() != ozADMValue::ValueEmpty &&
            !ozWriteValueLine(file, *tree, "VALUEOFF", m_valueOff))
            return false;
    }
    if (!ozWriteActionListBlock(file, *tree, "ACTIONLISTON", m_actionListOn.get(), key) ||
        !ozWriteActionListBlock(file, *tree, "ACTIONLISTOFF", m_actionListOff.get(), key))
        return false;
    for (int pos = 0; pos < m_controls.Count(); ++pos) {
        ozADMCtrl* part = m_controls.At(pos);
        if (!tree->WriteIndent(file) || std::fputs("PART ", file) == EOF ||
            !tree->WriteString(file, part->Name()) || std::fputc(' ', file) == EOF)
            return false;
        tree->IndentInc();
        if (!part->SaveADM(file, *tree, key))
            return false;
        tree->IndentDec();
        if (!ozWriteLine(file, *tree, "END PART"))
            return false;
    }
    return true;
}

bool ozADMPolicy::SaveNodeAfter(FILE* file)
{
    ozADMTree* tree = ADMTree();
    if (tree == nullptr)
        return false;
    tree->IndentDec();
    if (!ozWriteLine(file, *tree, "END POLICY"))
        return false;
    if (!StandsInClass())
        return true;
    // As a category's closing line, at the indentation of its contents.
    bool closed = ozWriteLine(file, *tree, "END CATEGORY");
    tree->IndentDec();
    return closed;
}

bool ozADMPolicy::StandsInClass() const
{
    ozTreeNode* parent = Up();
    return parent != nullptr && static_cast<ozADMNode*>(parent)->NodeType() == NodeRoot;
}
