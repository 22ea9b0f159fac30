#include "ozADMText.h"

ozADMText::ozADMText() : ozADMCtrl(CtrlText) {}

ozADMText::~ozADMText() = default;

bool ozADMText::SaveADM(FILE*, ozADMTree&, ozSubKey*)
{
    return false;  // the part's template text is written by the template writer
}

ozADMCtrl* ozADMText::Copy() const
{
    auto* copy = new ozADMText;
    copy->CopyBaseFrom(*this);
    return copy;
}

ozADMCtrl* ozADMText::New() const
{
    return new ozADMText;
}
