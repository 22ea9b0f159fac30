// The host user interface of ozadm: message boxes become lines `MESSAGE KIND: TEXT` on a
// stream (standard output in scripts, so that they stand before the result line of the call
// that showed them), and questions are answered as the command line said.
#pragma once

#include <ostream>

#include "control/ozHostUI.h"

class ozConsoleHostUI : public ozHostUI {
public:
    ozConsoleHostUI(std::ostream& out, bool answerYes) : m_out(out), m_answerYes(answerYes) {}

    // Prints the message on one line (line breaks in it are written as \n) and returns the
    // configured answer for a question, false for anything else.
    bool ShowMessage(tHOSTMESSAGEKIND kind, const std::string& text) override;

    // How questions are answered from now on.
    void AnswerYes(bool yes) { m_answerYes = yes; }

    // ERROR, QUESTION, WARNING or INFO.
    static const char* KindName(tHOSTMESSAGEKIND kind);

private:
    std::ostream& m_out;
    bool m_answerYes;
};
