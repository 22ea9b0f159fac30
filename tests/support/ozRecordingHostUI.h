// A host user interface for tests: it records every message and answers questions as told.
#pragma once

#include <string>
#include <vector>

#include "control/ozHostUI.h"

class ozRecordingHostUI : public ozHostUI {
public:
    struct Message {
        tHOSTMESSAGEKIND kind;
        std::string text;
    };

    bool ShowMessage(tHOSTMESSAGEKIND kind, const std::string& text) override
    {
        messages.push_back({kind, text});
        return answerYes;
    }

    std::vector<Message> messages;
    bool answerYes = false;
};

// Host texts for the binding's messages: "<number>: " followed by "%s" per argument, so that a
// test sees the number and every argument.
inline std::string ozTestMessageText(unsigned short number)
{
    switch (number) {
        case 94:
            return "94: %s";
        case 95:
            return "95: %s %s";
        case 97:
            return "97: %s";
        default:
            return std::to_string(number) + ":";
    }
}
