// A numeric part: a REG_DWORD between Min and Max, or empty.
#pragma once

#include "ozADMCtrl.h"

class ozADMNumeric : public ozADMCtrl {
public:
    ozADMNumeric();
    ~ozADMNumeric() override;

    bool LeftEmpty() const override;
    bool SaveADM(FILE* file, ozADMTree& tree, ozSubKey* policyKey) override;
    bool SetDefault() override;
    tSYNCSTATE Sync() override;
    ozADMCtrl* Copy() const override;
    ozADMCtrl* New() const override;

    virtual void Value(unsigned long value);
    virtual unsigned long Value() const;
    virtual void Default(unsigned long value);
    virtual unsigned long Default() const;
    // No value entered: an empty part equal to its default writes nothing.
    virtual void Empty(bool empty);
    virtual bool Empty() const;
    virtual void DefaultEmpty(bool empty);
    virtual bool DefaultEmpty() const;
    virtual void Min(unsigned long min);
    virtual unsigned long Min() const;
    virtual void Max(unsigned long max);
    virtual unsigned long Max() const;
    virtual void Spin(long step);
    virtual long Spin() const;
    // Kept for the template text only: the registry value is always a REG_DWORD.
    virtual void TxtConvert(bool convert);
    virtual bool TxtConvert() const;

protected:
    bool _AddRegWrites(ozADMRegWrites& writes, bool enabled) const override;

private:
    unsigned long m_value = 0;
    unsigned long m_default = 0;
    bool m_empty = true;
    bool m_defaultEmpty = true;
    unsigned long m_min = 0;
    unsigned long m_max = 9999;
    long m_spin = 1;
    bool m_txtConvert = false;
};
