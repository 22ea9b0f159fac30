// Runs an ozadm script: each line names a member (ozScriptMembers) and its arguments; after
// each call one result line is written (ozScriptResult), after the lines the call printed
// itself (message boxes, trees).
#pragma once

#include <istream>
#include <ostream>
#include <string>

class CADMCtrl;
struct ozScriptViews;

class ozScriptRunner {
public:
    // Results and messages go to out; diagnostics to err. views: what the view calls drive
    // (null: the view calls refuse to run).
    ozScriptRunner(CADMCtrl& control, std::ostream& out, std::ostream& err,
                   ozScriptViews* views = nullptr)
        : m_control(control), m_out(out), m_err(err), m_views(views)
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
    ozScriptViews* m_views;
};
