// A check box part: writes ValueOn when checked and ValueOff when not (numbers 1 and 0 by
// default), each with an optional action list.
#pragma once

#include "ozADMActionList.h"
#include "ozADMCtrl.h"
#include "ozADMValue.h"

class ozADMCheckBox : public ozADMCtrl {
public:
    ozADMCheckBox();
    ~ozADMCheckBox() override;

    bool SaveADM(FILE* file, ozADMTree& tree, ozSubKey* policyKey) override;
    bool SetDefault() override;
    tSYNCSTATE Sync() override;
    ozADMCtrl* Copy() const override;
    ozADMCtrl* New() const override;

    virtual void Checked(bool checked);
    virtual bool Checked() const;
    virtual void Default(bool checked);
    virtual bool Default() const;
    virtual ozADMValue& ValueOn();
    virtual const ozADMValue& ValueOn() const;
    virtual ozADMValue& ValueOff();
    virtual const ozADMValue& ValueOff() const;
    // Take ownership of the list, destroying the one held before.
    virtual void ActionListOn(ozADMActionList* list);
    virtual ozADMActionList* ActionListOn() const;
    virtual void ActionListOff(ozADMActionList* list);
    virtual ozADMActionList* ActionListOff() const;

protected:
    bool _AddRegWrites(ozADMRegWrites& writes, bool enabled) const override;

private:
    bool m_checked = false;
    bool m_default = false;
    ozADMValue m_valueOn;
    ozADMValue m_valueOff;
    std::unique_ptr<ozADMActionList> m_actionListOn;
    std::unique_ptr<ozADMActionList> m_actionListOff;
};
