// What the control needs from its host's user interface: message boxes and questions. The
// Windows control shows message boxes; the command-line host prints them and answers questions
// from its options; tests record them.
#pragma once

#include <string>

enum tHOSTMESSAGEKIND : int {
    HostMessageError = 0,
    HostMessageQuestion = 1,
    HostMessageWarning = 2,
    HostMessageInfo = 3,
};

class ozHostUI {
public:
    virtual ~ozHostUI() = default;
    // Shows text. For a question (Yes and No), true means Yes; otherwise the result is
    // ignored.
    virtual bool ShowMessage(tHOSTMESSAGEKIND kind, const std::string& text) = 0;
};
