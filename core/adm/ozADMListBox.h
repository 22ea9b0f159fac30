// A list box part: a list of named string values, all in its own key. Disabled, it erases
// every value of the key.
#pragma once

#include <memory>

#include "ozADMCtrl.h"
#include "ozADMListItem.h"

class ozADMListBox : public ozADMCtrl {
public:
    ozADMListBox();
    ~ozADMListBox() override;

    bool LeftEmpty() const override;
    bool SaveADM(FILE* file, ozADMTree& tree, ozSubKey* policyKey) override;
    bool SetDefault() override;
    tSYNCSTATE Sync() override;
    ozADMCtrl* Copy() const override;
    ozADMCtrl* New() const override;

    // The entries (null until first filled).
    virtual CCollection<ozADMListItem>* Values();
    virtual const CCollection<ozADMListItem>* Values() const;
    // Empties the entries, creating the collection when there is none; returns it.
    virtual CCollection<ozADMListItem>& ClearValues();
    virtual void ValuePrefix(const char* prefix);
    virtual const char* ValuePrefix() const;
    // Every value of the key is an entry, whatever its name.
    virtual void ExplicitValue(bool explicitValue);
    virtual bool ExplicitValue() const;
    virtual void Additive(bool additive);
    virtual bool Additive() const;

protected:
    bool _AddRegWrites(ozADMRegWrites& writes, bool enabled) const override;
    // True when name starts with the prefix (or with a beginning of it) and the rest is
    // decimal digits only. False for null.
    virtual bool _IsValidName(const char* name) const;

private:
    std::unique_ptr<CCollection<ozADMListItem>> m_values;
    std::unique_ptr<char[]> m_valuePrefix;
    bool m_explicitValue = false;
    bool m_additive = false;
};
