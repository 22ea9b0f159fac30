// How the registry model asks the user to confirm or edit the text that a change turned into
// an append adds (`ozRegValue::SwitchChange2Append`). The user interface installs the
// process-wide implementation; tests install fakes.
#pragma once

#include <string>

class ozAppendedTextDialog {
public:
    virtual ~ozAppendedTextDialog() = default;

    // Shows `text` in an edit field. Returns true when the user confirms; `text` then holds
    // the (possibly edited) text. Returns false when the user cancels.
    virtual bool Confirm(std::string& text) = 0;

    // The dialog used by the registry model; null (the default) means nobody can confirm,
    // which reads as a cancel. The installer keeps ownership.
    static void Current(ozAppendedTextDialog* dialog) { s_current = dialog; }
    static ozAppendedTextDialog* Current() { return s_current; }

private:
    static inline ozAppendedTextDialog* s_current = nullptr;
};
