// The dialog "Help" (dialog 102): a policy's explain text, then what the policy applies to (its
// supported-on text) as the last paragraph, read only, and an OK button. The
// dialog copies what it shows, so it holds nothing of the policy while it is open.
#pragma once

#include <string>

#include "ozForm.h"

class ozADMPolicy;

class ozHelpDialog : public ozDialog {
public:
    // The controls, in tab order (OK is ozDialogOK).
    enum : int {
        ExplainText = 1000,
    };

    // Captioned with the policy's name ("Help" for a policy without one).
    explicit ozHelpDialog(const ozADMPolicy& policy);

    // The explain text as the dialog shows it: every two-character sequence backslash n, the
    // line-break escape of a template's strings, becomes a carriage return and a line feed.
    // Null gives "".
    static std::string DisplayText(const char* explain);
    // What the dialog shows of the policy: its explain text, then its supported-on text as a
    // paragraph of its own (such texts read "At least ..." and need no caption).
    static std::string ShownText(const ozADMPolicy& policy);

    const ozDialogTemplate& Layout() const override { return m_layout; }
    void Init(ozForm& form) override;

private:
    ozDialogTemplate m_layout;
    std::string m_text;
};
