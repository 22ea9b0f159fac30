// An edit text part: a REG_SZ (or, when expandable, REG_EXPAND_SZ) string.
#pragma once

#include "ozADMCtrl.h"

class ozADMEditText : public ozADMCtrl {
public:
    ozADMEditText();
    ~ozADMEditText() override;

    bool LeftEmpty() const override;
    bool SaveADM(FILE* file, ozADMTree& tree, ozSubKey* policyKey) override;
    bool SetDefault() override;
    tSYNCSTATE Sync() override;
    ozADMCtrl* Copy() const override;
    ozADMCtrl* New() const override;

    // The text (a copy is kept; null for none).
    virtual void Value(const char* value);
    virtual const char* Value() const;
    virtual void Default(const char* value);
    virtual const char* Default() const;
    virtual void MaxLen(unsigned long length);
    virtual unsigned long MaxLen() const;
    virtual void Expandable(bool expandable);
    virtual bool Expandable() const;

protected:
    bool _AddRegWrites(ozADMRegWrites& writes, bool enabled) const override;
    explicit ozADMEditText(unsigned long ctrlType);
    void CopyEditTextFrom(const ozADMEditText& other);
    // The settings an edit text and a combo box share, one line each: VALUENAME, REQUIRED,
    // DEFAULT, MAXLEN (when not 0) and EXPANDABLETEXT. False at the first failed write.
    bool _SaveEditSettingsADM(FILE* file, ozADMTree& tree);

private:
    std::unique_ptr<char[]> m_value;
    std::unique_ptr<char[]> m_default;
    unsigned long m_maxLen = 0;
    bool m_expandable = false;
};
