// The control's messages as Windows message boxes, captioned with the application name.
// When the environment variable OZADM_NO_MESSAGE_BOXES is set, whatever its value ("0"
// included), no box is shown: the text goes to stderr and questions are answered No. Without
// it an unattended host would wait for a click for good.
#pragma once

#include "control/ozHostUI.h"

class ozMessageBoxHostUI final : public ozHostUI {
public:
    bool ShowMessage(tHOSTMESSAGEKIND kind, const std::string& text) override;
};
