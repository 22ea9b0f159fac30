// A policy of a template: its own value (VALUENAME with VALUEON / VALUEOFF), action lists and
// parts, all in the registry tree of its class. Its state (enabled, disabled, not configured)
// is derived from that registry tree (Sync) and written back into it (SaveToRegistry).
#pragma once

#include <memory>

#include "core/tree/CCollection.h"
#include "ozADMActionList.h"
#include "ozADMCtrl.h"
#include "ozADMNode.h"
#include "ozADMValue.h"

class ozADMRegEntry;
class ozSubKey;

enum tPOLICYSTATE : int {
    PolicyDisabled = 0,
    PolicyEnabled = 1,
    PolicyNotConfigured = 2,
};

class ozADMPolicy : public ozADMNode {
public:
    ozADMPolicy() = default;
    ~ozADMPolicy() override;

    tNODETYPE NodeType() const override { return NodePolicy; }
    // Writes the state into the registry tree (AddRegWrites applied). False, writing nothing,
    // when the writes cannot be had; false also when a value cannot be written.
    bool SaveToRegistry() override;
    // Derives the state from the registry tree: the first evidence (the policy's own value,
    // then each part's) fixes the direction, any later disagreement or conflict makes the
    // policy not configured. False, leaving the state unchanged, when a part cannot be
    // evaluated.
    bool Sync() override;
    // Policies have no defaults: false, by design.
    bool SetDefault() override;
    // Template text: `POLICY name`, then one level deeper the explain text, KEYNAME, the value
    // name, the client extension, VALUEON / VALUEOFF (only with a value name), the action lists
    // and the parts; SaveNodeAfter writes "END POLICY" at the POLICY line's indentation. False
    // outside a tree, without a key, or for a failed write.
    bool SaveNode(FILE* file) override;
    bool SaveNodeAfter(FILE* file) override;

    // Stores the state without touching the registry tree.
    virtual void State(tPOLICYSTATE state);
    virtual tPOLICYSTATE State() const;
    // Replaces the key path (KEYNAME) and forgets the key found for the old one; false for
    // null.
    virtual bool RegKey(const char* keyPath);
    // Takes the key (of a registry tree, not owned).
    virtual void RegKey(ozSubKey* key);
    // The key at the key path in the policy's registry tree below its root key, found or
    // created on first use; null without key path or registry tree.
    virtual ozSubKey* RegKey() const;
    // Take ownership of the list, destroying the one held before.
    virtual void ActionListOn(ozADMActionList* list);
    virtual ozADMActionList* ActionListOn();
    virtual const ozADMActionList* ActionListOn() const;
    virtual void ActionListOff(ozADMActionList* list);
    virtual ozADMActionList* ActionListOff();
    virtual const ozADMActionList* ActionListOff() const;
    virtual void Valuename(const char* valueName);
    virtual const char* Valuename() const;
    virtual ozADMValue& ValueOn();
    virtual const ozADMValue& ValueOn() const;
    virtual ozADMValue& ValueOff();
    virtual const ozADMValue& ValueOff() const;
    virtual void Explain(const char* explain);
    virtual const char* Explain() const;
    virtual void ClientExt(const char* clientExt);
    virtual const char* ClientExt() const;
    // The text naming the products and versions the policy applies to (SUPPORTED); null
    // without one.
    virtual void SupportedOn(const char* supportedOn);
    virtual const char* SupportedOn() const;
    // Some registry key of the policy is selected in the view.
    virtual void Selected(bool selected);
    virtual bool Selected() const;
    // The parts, in PART order; owned.
    virtual CCollection<ozADMCtrl>& Controls();
    virtual const CCollection<ozADMCtrl>& Controls() const;
    // Lists the registry entries the present state produces (AddRegWrites as entries),
    // touching neither registry tree: nothing when not configured. False when the writes
    // cannot be had.
    virtual bool Configures(CCollection<ozADMRegEntry>& collection) const;

    // Adds what the present state does to the registry: nothing when not configured;
    // otherwise the policy's own value, the action list and every part's writes for the state.
    // The own value is VALUEON / VALUEOFF; a template that names a value but gives no VALUEON
    // means a REG_DWORD 1, one without VALUEOFF a deletion (a REG_DWORD 0 where VALUEON is a
    // deletion). False, adding nothing, outside a
    // registry tree, without a key for the value, or when a part or list cannot be written
    // (for instance a required part left empty).
    bool AddRegWrites(ozADMRegWrites& writes) const;
    // The first required part an enabled policy has left empty; null when there is none or
    // the policy is not enabled.
    const ozADMCtrl* RequiredPartLeftEmpty() const;

    // Appends part to the parts and makes this policy its policy. The parts take part also
    // when it cannot be appended (out of memory; false): it is then destroyed.
    bool AddControl(ozADMCtrl* part);

private:
    // Whether the policy's parent is a class root rather than a category.
    bool StandsInClass() const;
    // VALUEON and VALUEOFF with the meaning of a missing one (see AddRegWrites).
    ozADMValue EffectiveValueOn() const;
    ozADMValue EffectiveValueOff() const;

    tPOLICYSTATE m_state = PolicyNotConfigured;
    std::unique_ptr<char[]> m_keyPath;
    mutable ozSubKey* m_regKey = nullptr;
    std::unique_ptr<ozADMActionList> m_actionListOn;
    std::unique_ptr<ozADMActionList> m_actionListOff;
    std::unique_ptr<char[]> m_valueName;
    ozADMValue m_valueOn;
    ozADMValue m_valueOff;
    bool m_selected = false;
    std::unique_ptr<char[]> m_explain;
    std::unique_ptr<char[]> m_clientExt;
    std::unique_ptr<char[]> m_supportedOn;
    CCollection<ozADMCtrl> m_controls{true};
};

// Carries a collection of policies through a tree walk.
class ozADMKeyPolicies {
public:
    explicit ozADMKeyPolicies(CCollection<ozADMPolicy>& policies) : m_policies(policies) {}
    CCollection<ozADMPolicy>& Policies() { return m_policies; }

private:
    CCollection<ozADMPolicy>& m_policies;
};
