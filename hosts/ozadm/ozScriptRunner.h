// Runs an ozadm script: each line names a member (ozScriptMembers) and its arguments; after
// each call one result line is written (ozScriptResult), after the lines the call printed
// itself (message boxes, trees).
#pragma once

#include <istream>
#include <ostream>
#include <string>

class CADMCtrl;

class ozScriptRunner {
public:
    // Results and messages go to out; diagnostics to err.
    ozScriptRunner(CADMCtrl& control, std::ostream& out, std::ostream& err)
        : m_control(control), m_out(out), m_err(err)
    {
    }

    // Runs the lines of in, `source` naming them in diagnostics. Returns 0 when every line
    // ran (calls that gave FALSE included); stops with 2 at the first line that cannot be
    // parsed, names no member or cannot run as written, after telling on err which line
    // and why.
    int Run(std::istream& in, const std::string& source);

private:
    CADMCtrl& m_control;
    std::ostream& m_out;
    std::ostream& m_err;
};
