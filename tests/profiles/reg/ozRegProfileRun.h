// Driving the .reg profile library in tests as the control does, through the binding and the
// library's entry points, and describing the registry trees so that two can be compared.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "control/ozProfileBinding.h"
#include "core/adm/tTreeCodeHandle.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTreeDescription.h"

// The model's narrow text of wide text (UTF-8 on POSIX, the ANSI code page on Windows).
std::string ozRegNarrow(std::u16string_view text);
// The reg folder of the corpus; "" when the corpus is not there.
std::string ozRegCorpusFolder();

// One code object with its trees, loaded and saved through the library. What the library
// writes to the standard error stream during the last call, and the messages the binding
// showed in a save, are kept as Errors().
class ozRegProfileRun {
public:
    ozRegProfileRun() = default;
    ozRegProfileRun(const ozRegProfileRun&) = delete;
    ozRegProfileRun& operator=(const ozRegProfileRun&) = delete;

    tPROFILELOAD Load(const std::string& userFile, const std::string& machineFile = "");
    bool Save(const std::string& userFile, const std::string& machineFile);

    tTreeCodeHandle& Code() { return m_code; }
    const std::string& Errors() const { return m_errors; }

    // Both trees (compared with ozFirstDifference), one line per key and per value: tree, root,
    // path and operation of each key; name, item type, operation, type and data (hex) of each
    // value, in tree order.
    std::vector<std::string> Describe();

private:
    tTreeCodeHandle m_code;
    ozRecordingHostUI m_ui;
    std::string m_errors;
};
