// A combo box part: an edit text with suggestions to choose from.
#pragma once

#include "ozADMEditText.h"

class ozADMComboBox : public ozADMEditText {
public:
    ozADMComboBox();
    ~ozADMComboBox() override;

    bool SaveADM(FILE* file, ozADMTree& tree, ozSubKey* policyKey) override;
    ozADMCtrl* Copy() const override;
    ozADMCtrl* New() const override;

    // Appends a copy of s; false for null s.
    virtual bool AddSuggestion(const char* s);
    virtual const CCollection<char>& Suggestions() const;
    // Removes every suggestion.
    virtual void ClearSuggestions();
    virtual void NoSort(bool noSort);
    virtual bool NoSort() const;

private:
    CCollection<char> m_suggestions{true};
    bool m_noSort = false;
};
