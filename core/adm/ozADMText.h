// A text part: a label shown in the policy; it writes nothing and has no say in the state.
#pragma once

#include "ozADMCtrl.h"

class ozADMText : public ozADMCtrl {
public:
    ozADMText();
    ~ozADMText() override;

    bool SaveADM(FILE* file, ozADMTree& tree, ozSubKey* policyKey) override;
    ozADMCtrl* Copy() const override;
    ozADMCtrl* New() const override;
};
