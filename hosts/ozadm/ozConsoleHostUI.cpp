#include "ozConsoleHostUI.h"

const char* ozConsoleHostUI::KindName(tHOSTMESSAGEKIND kind)
{
    switch (kind) {
        case HostMessageError:
            return "ERROR";
        case HostMessageQuestion:
            return "QUESTION";
        case HostMessageWarning:
            return "WARNING";
        case HostMessageInfo:
            return "INFO";
    }
    return "ERROR";
}

bool ozConsoleHostUI::ShowMessage(tHOSTMESSAGEKIND kind, const std::string& text)
{
    std::string line;
    for (char c : text) {
        if (c == '\n')
            line += "\\n";
        else if (c != '\r')
            line += c;
    }
    m_out << "MESSAGE " << KindName(kind) << ": " << line << '\n';
    m_out.flush();
    return kind == HostMessageQuestion && m_answerYes;
}
