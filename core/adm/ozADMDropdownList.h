// A drop-down list part: one of its items is selected, and the item's value (and action list)
// is written.
#pragma once

#include "ozADMCtrl.h"
#include "ozADMListItem.h"

class ozADMDropdownList : public ozADMCtrl {
public:
    ozADMDropdownList();
    ~ozADMDropdownList() override;

    bool LeftEmpty() const override;
    bool SaveADM(FILE* file, ozADMTree& tree, ozSubKey* policyKey) override;
    bool SetDefault() override;
    tSYNCSTATE Sync() override;
    ozADMCtrl* Copy() const override;
    ozADMCtrl* New() const override;

    // Selects item i, clamped to -1 (nothing) .. count - 1.
    virtual void Selected(int i);
    virtual int Selected() const;
    // Selects nothing; true.
    virtual bool DeSelect();
    virtual void Default(int i);
    virtual int Default() const;
    virtual CCollection<ozADMListItem>& ItemList();
    virtual const CCollection<ozADMListItem>& ItemList() const;
    // Appends an item with copies of name and value and the action list (may be null). The
    // list is taken on every call: when no item is added (a null name, out of memory; false)
    // it is destroyed.
    virtual bool AddItem(const char* name, const ozADMValue& value, ozADMActionList* actionList);
    virtual void NoSort(bool noSort);
    virtual bool NoSort() const;

protected:
    bool _AddRegWrites(ozADMRegWrites& writes, bool enabled) const override;

private:
    int m_selected = -1;
    int m_default = -1;
    CCollection<ozADMListItem> m_items{true};
    bool m_noSort = false;
};
