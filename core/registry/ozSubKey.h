// A named key below a root key: its name, its values and the flags the views and the profile
// libraries read. Keys own their sub keys (as tree children) and their values.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "core/tree/CCollection.h"
#include "ozRegKey.h"

class ozRegValue;

class ozSubKey : public ozRegKey {
public:
    // The buffer size GetKeyPath expects and the longest key path it writes, terminator
    // included.
    static constexpr int KeyPathCapacity = 1024;

    ozSubKey();
    ~ozSubKey() override;

    tKEYTYPE Type() const override { return KeySub; }
    // Finds or creates the key at path (see ozRegKey); when this key holds a variable, the
    // key returned is marked as holding one too.
    ozSubKey* FindSubKey(const char* path, unsigned int root) override;

    // Replaces the name by a copy (null clears it) and recomputes the variables flags of
    // this key, its values and its sub keys.
    virtual void Name(const char* name);
    virtual const char* Name() const;
    // The operation, 'I' at construction.
    virtual void Op(tOPKEY op);
    virtual tOPKEY Op() const;
    // The number of the predefined key the key lies under (see ozRootNumber); 0 by default.
    virtual void Root(unsigned int root);
    virtual unsigned int Root() const;
    // The key path holds a variable.
    virtual void WVar(bool holdsVariable);
    virtual bool WVar() const;
    // The key itself is to be saved.
    virtual void Save(bool save);
    virtual bool Save() const;
    // The key belongs to the policy template.
    virtual void ADM(bool belongsToTemplate);
    virtual bool ADM() const;
    // The key is marked in the view.
    virtual void Selected(bool selected);
    virtual bool Selected() const;
    // The template line the key came from; 0 by default.
    virtual void LineNumber(unsigned long line);
    virtual unsigned long LineNumber() const;
    // Writes the key path in double quotes. False for a null stream, a path that does not fit
    // KeyPathCapacity, or a failed write.
    virtual bool SaveADM(FILE* file);
    // Writes the key's path below its root (names joined by backslashes, the root contributes
    // nothing) into buf, which holds KeyPathCapacity characters. False, with buf holding the
    // empty string, when the path would not fit.
    virtual bool GetKeyPath(char* buf);
    // The value named `name` (case-insensitively, first in order) or a new one appended with
    // this key's root and this key as its key. Null only for a null name.
    virtual ozRegValue* FindValue(const char* name);
    // The value named `name`, compared without regard to case; the first match or null.
    virtual ozRegValue* HasValue(const char* name);
    // Removes and destroys v when it is one of this key's values; false otherwise.
    virtual bool RemoveValue(ozRegValue* v);
    // The values in insertion order, for iteration.
    virtual const CCollection<ozRegValue>& Values() const;

    // The key path as a string; empty when it does not fit KeyPathCapacity.
    std::string KeyPath();

    // Keeps the save functions of the tree node reachable beside the flag accessors.
    using ozRegKey::Save;

protected:
    // Recomputes the variables flag of this key, then of its values and sub keys. Without
    // both markers nothing changes. Always true.
    bool _RefreshVariablesFlag(bool fromParent, bool parentHasVariables);

private:
    friend class ozRegValue;
    struct ValueIndex;

    // Called by a value of this key whose name changed.
    void _ValueRenamed();
    ValueIndex& UpToDateValueIndex();
    bool AppendKeyPath(std::string& path);

    std::unique_ptr<char[]> m_name;
    tOPKEY m_op = KeyOpInsert;
    unsigned int m_root = 0;
    CCollection<ozRegValue> m_values{true};
    bool m_holdsVariable = false;
    bool m_save = false;
    bool m_adm = false;
    bool m_selected = false;
    unsigned long m_lineNumber = 0;
    std::unique_ptr<ValueIndex> m_valueIndex;
};
