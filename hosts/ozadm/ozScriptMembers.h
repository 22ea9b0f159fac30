// The members a script line can name: the control's dispatch properties and methods under
// their own names, DisplayMode, and the host calls that stand for what a user does in the
// views (SetState, SetPart) or looks at (Tree, RegTree, Parts). docs/cli.md lists them with
// their arguments.
#pragma once

#include <functional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "ozScriptResult.h"
#include "ozScriptViews.h"

class CADMCtrl;

// A line that names a member but cannot run as written: the wrong number of arguments, an
// argument text that does not read as its type, an assignment to a read-only property. The
// message names the member and the argument.
class ozScriptUsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// What a member gets: the control, the line's arguments, the stream for lines it prints
// before its result line (Tree, RegTree), and a note for standard error telling why a host
// call gave FALSE.
struct ozScriptCall {
    CADMCtrl& control;
    const std::vector<std::string>& arguments;
    std::ostream& out;
    std::string note;
    // The views the view calls drive; null when the control has none.
    ozScriptViews* views = nullptr;
};

inline constexpr int AnyArgumentCount = -1;

struct ozScriptMember {
    const char* name;
    bool isProperty;
    // Arguments a call takes (a property read takes none); AnyArgumentCount for a call that
    // checks its arguments itself.
    int argumentCount;
    // Argument names for messages and help, e.g. "UsrReg MacReg".
    const char* signature;
    // The call, or the property read.
    std::function<ozScriptResult(ozScriptCall&)> call;
    // The property write; empty for methods and read-only properties. Throws
    // ozScriptUsageError for a value text that does not read.
    std::function<void(CADMCtrl&, const std::string&)> set;
};

// The view calls: what a user does with mouse and keyboard in the views, and what they show.
void ozAddViewMembers(std::vector<ozScriptMember>& members);

// Every member, properties first, in dispatch order, then the host's own.
const std::vector<ozScriptMember>& ozScriptMembers();
// The member called `name`, compared without regard to case; null for none.
const ozScriptMember* ozFindScriptMember(std::string_view name);
