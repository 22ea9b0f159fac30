// A multi-line text part: a list of strings written as one REG_MULTI_SZ, one string per line
// the user entered. A REG_MULTI_SZ cannot hold an empty string, so empty lines are dropped as
// the lines are set. The template language has no such part: its text is an EDITTEXT on the
// same value name (which would write a REG_SZ), reported to the tree as a conversion loss.
#pragma once

#include <string>
#include <vector>

#include "ozADMCtrl.h"

class ozADMMultiText : public ozADMCtrl {
public:
    ozADMMultiText();
    ~ozADMMultiText() override;

    bool LeftEmpty() const override;
    bool SaveADM(FILE* file, ozADMTree& tree, ozSubKey* policyKey) override;
    // Empties the lines: a multi-line text has no default.
    bool SetDefault() override;
    // Enabled by a REG_MULTI_SZ insert (its strings become the lines), disabled by a deletion,
    // a conflict for a value of another type.
    tSYNCSTATE Sync() override;
    ozADMCtrl* Copy() const override;
    ozADMCtrl* New() const override;

    // The lines, without empty ones.
    void Lines(const std::vector<std::string>& lines);
    const std::vector<std::string>& Lines() const;
    // The lines as one text: set from lines ended by "\n" or "\r\n", read back joined by
    // "\n" (what the editors show and take).
    void Text(const char* text);
    std::string Text() const;
    // The longest string and the most strings the editors accept; 0 for no limit. The model
    // keeps whatever it is given (a profile may hold more), so the limits bind the editors only.
    void MaxLength(unsigned long length);
    unsigned long MaxLength() const;
    void MaxStrings(unsigned long count);
    unsigned long MaxStrings() const;

protected:
    // Enabled: the lines as a REG_MULTI_SZ (no lines: an empty one); disabled: a deletion.
    bool _AddRegWrites(ozADMRegWrites& writes, bool enabled) const override;

private:
    std::vector<std::string> m_lines;
    unsigned long m_maxLength = 0;
    unsigned long m_maxStrings = 0;
};
