// A part of a policy (one PART block of a template): bound to a registry key and, except list
// boxes, one value name in it. A part reads its value from the registry tree (Sync) and says
// once what it does to the registry for an enabled or a disabled policy (AddRegWrites); saving
// (SaveToRegistry) and listing (SaveToCollection) both go by that description.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "core/tree/CCollection.h"
#include "ozADMRegWrite.h"
#include "platform/ozRegistryTypes.h"

class ozADMPolicy;
class ozADMRegEntry;
class ozADMValue;
class ozRegValue;
class ozADMTree;
class ozRegTree;
class ozSubKey;

// What a part's registry data say about its policy's state.
enum tSYNCSTATE : int {
    SyncFailed = 0,  // the part cannot be evaluated; the policy's sync stops
    SyncEnabled = 1,
    SyncDisabled = 2,
    SyncConflict = 3,  // forces not configured
    SyncNeutral = 4,
};

// The part types.
enum : unsigned long {
    CtrlCheckBox = 1,
    CtrlNumeric = 2,
    CtrlEditText = 3,
    CtrlComboBox = 4,
    CtrlText = 5,
    CtrlDropdownList = 6,
    CtrlListBox = 7,
    CtrlMultiText = 8,  // ozADMMultiText: lines as a REG_MULTI_SZ (XML templates only)
};

class ozADMCtrl {
public:
    ozADMCtrl(const ozADMCtrl&) = delete;
    ozADMCtrl& operator=(const ozADMCtrl&) = delete;
    virtual ~ozADMCtrl();

    virtual unsigned long CtrlType() const;
    virtual void Name(const char* name);
    virtual const char* Name() const;
    // Binds the part to key (not owned) and marks the key as used by the template.
    virtual void Key(ozSubKey* key);
    // Binds the part to the key at path below root, found or created in tree; nothing for a
    // null path.
    virtual void Key(ozRegTree& tree, HKEY root, const char* path);
    virtual ozSubKey* Key() const;
    virtual void ValueName(const char* valueName);
    virtual const char* ValueName() const;
    virtual void Required(bool required);
    virtual bool Required() const;
    virtual void ClientExt(const char* clientExt);
    virtual const char* ClientExt() const;
    // The policy the part belongs to (not owned).
    virtual void Policy(ozADMPolicy* policy);
    virtual ozADMPolicy* Policy() const;
    // Applies the part's writes (AddRegWrites) to the registry tree. False when the part
    // cannot be written; then nothing of it is written.
    virtual bool SaveToRegistry(ozRegTree& tree, bool enabled);
    // Lists the part's writes as registry entries, touching neither keys nor values.
    virtual bool SaveToCollection(CCollection<ozADMRegEntry>& collection, bool enabled);
    // Writes the part's template text: its type keyword and line feed, then its settings one
    // per line at the tree's indentation; policyKey is the key in force around the part. False
    // at the first failed write; the base writes nothing and returns false.
    virtual bool SaveADM(FILE* file, ozADMTree& tree, ozSubKey* policyKey);
    // Resets the part's value to its default; false where a part has none (the base).
    virtual bool SetDefault();
    // Reads the part's value from its key and tells what it says about the policy's state.
    // The base marks the policy selected when the part's key is selected and returns 4.
    virtual tSYNCSTATE Sync();
    // Adds what the part does to the registry to writes: for an enabled policy its value, for
    // a disabled one the deletion of its value. A part whose value the user left empty writes
    // what the template's reading takes for it (docs/policy-registry-effects.md), so that the
    // policy comes back enabled. False, adding nothing, without key or value name, for a
    // selection beyond the items, and for a required part left empty in an enabled policy.
    // The base adds nothing and returns true.
    bool AddRegWrites(ozADMRegWrites& writes, bool enabled) const;
    // Whether the user left the part without a value. The base: false.
    virtual bool LeftEmpty() const;
    // A deep copy (key and policy shared).
    virtual ozADMCtrl* Copy() const = 0;
    // A new default part of the same type.
    virtual ozADMCtrl* New() const = 0;

protected:
    explicit ozADMCtrl(unsigned long ctrlType);
    // Copies the base fields of other (strings duplicated, key and policy shared).
    void CopyBaseFrom(const ozADMCtrl& other);
    // The template text every part shares. _SaveClientExtADM: the client extension block,
    // nothing without one. _SaveHeadADM: the type keyword directly after what stands on the
    // line, and a KEYNAME line when the part has a key other than policyKey.
    // _SaveValueNameADM: VALUENAME when the part has one and, when asked, REQUIRED when
    // required. Each false at the first failed write.
    virtual bool _SaveClientExtADM(FILE* file, ozADMTree& tree);
    bool _SaveHeadADM(FILE* file, ozADMTree& tree, ozSubKey* policyKey, const char* typeKeyword);
    bool _SaveValueNameADM(FILE* file, ozADMTree& tree, bool withRequired);
    // How a conversion loss names the part: its name in quotes, or the value it writes when it
    // has no name.
    std::string ConversionName() const;
    // The key a list inside the part inherits when read back: the part's, else the policy's.
    ozSubKey* _CurrentKey(ozSubKey* policyKey) const;

    // The part's own writes, after AddRegWrites has refused a required part left empty.
    virtual bool _AddRegWrites(ozADMRegWrites& writes, bool enabled) const;
    // What parts with a value name share: a write of value to the part's value name; for a
    // disabled policy (enabled false) its deletion instead. False without key or value name.
    bool AddOwnWrite(ozADMRegWrites& writes, bool enabled, const ozADMValue& value,
                     bool expand = false) const;
    // The first steps every part with a value name syncs by: the base rule, then the value
    // looked up without creating it. Returns the value, or null with *early set to what the
    // sync reports: 0 without key or value name, 3 when the value is missing.
    ozRegValue* SyncOwnValue(tSYNCSTATE* early);
    // What a value that is no insert says: 2 when it is marked for deletion, else 3.
    static tSYNCSTATE NotAnInsert(const ozRegValue& value);

private:
    unsigned long m_ctrlType;
    std::unique_ptr<char[]> m_name;
    ozSubKey* m_key = nullptr;
    std::unique_ptr<char[]> m_valueName;
    bool m_required = false;
    std::unique_ptr<char[]> m_clientExt;
    ozADMPolicy* m_policy = nullptr;
};
