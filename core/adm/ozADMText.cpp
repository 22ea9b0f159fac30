#include "ozADMText.h"

ozADMText::ozADMText() : ozADMCtrl(CtrlText) {}

ozADMText::~ozADMText() = default;

bool ozADMText::SaveADM(FILE* file, ozADMTree&, ozSubKey*)
{
    // A text part is its keyword alone: its key and value name are never read back.
    return file != nullptr && std::fputs("TEXT\n", file) != EOF;
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
