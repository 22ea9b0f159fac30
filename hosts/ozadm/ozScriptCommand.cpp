#include <fstream>
#include <iostream>

#include "ozCommandSupport.h"
#include "ozCommands.h"
#include "ozHostSession.h"
#include "ozScriptMembers.h"
#include "ozScriptRunner.h"

namespace {

void PrintHelp()
{
    std::cout << R"(Usage: ozadm script [options] FILE
       ozadm script [options] -          (the script from standard input)

Runs host calls on one control, one call per line, and prints after each call one line
NAME: RESULT (TRUE, FALSE, a number, a "string", EMPTY, or ARRAY n followed by n quoted
elements indented by two blanks; nothing after the colon for a call without result).
A message box the control shows prints MESSAGE KIND: TEXT before the result line.

Lines: a member name and its arguments separated by blanks; an argument with blanks or an
empty one in double quotes (\" and \\ inside); Name = value sets a property; lines
beginning with # are comments; blank lines are skipped. BOOL arguments are TRUE, FALSE or
numbers. Before the script the bundled grammar and host string table are loaded, unless
--no-grammar / --no-strings say otherwise.

Exit status: 0 when every line ran (FALSE results included); 2 at the first line that
cannot be parsed, names no member or cannot run as written (line number on standard
error); 1 when the grammar or the string table cannot be loaded first.

Members (properties are read by name and set with Name = value):
)";
    for (const ozScriptMember& member : ozScriptMembers()) {
        std::string line = std::string("  ") + member.name;
        if (member.isProperty)
            line += member.set ? "  (property)" : "  (read-only property)";
        else if (member.argumentCount != 0)
            line += std::string(" ") + member.signature;
        std::cout << line << '\n';
    }
    std::cout << R"(
SetState PATH STATE sets a policy's state (enabled, disabled, notconfigured); SetPart PATH
PART VALUE a part's value; Parts PATH lists the parts with their values; Tree prints the
policy tree and RegTree the user and machine registry trees, before their result line.
View, Click, Select, Edit, Menu, Choose, Dialog and the other view calls do what a user does
in the visible view and print what the user sees (set DisplayMode = 0 and Refresh for the
policy view). docs/cli.md describes the value forms, the view calls and the output.

)" << ozCommonOptionsHelp();
}

}  // namespace

int ozScriptCommand(const ozCommandArgs& args)
{
    ozCommandLine line;
    try {
        ozReadCommandLine(args, line, false, false);
    } catch (const ozUsageError& error) {
        return ozUsageFailure("script", error.what(), std::cerr);
    }
    if (line.help) {
        PrintHelp();
        return 0;
    }
    if (line.positional.size() != 1)
        return ozUsageFailure("script", "name one script file, or - for standard input", std::cerr);
    const std::string& file = line.positional[0];
    std::ifstream in;
    if (file != "-") {
        in.open(file, std::ios::binary);
        if (!in) {
            std::cerr << "ozadm: the script " << file << " cannot be opened\n";
            return 1;
        }
    }
    ozHostSession session(line.host, std::cout);
    if (!session.Prepare(std::cerr))
        return 1;
    ozScriptViews views = session.ScriptViews();
    ozScriptRunner runner(session.Control(), std::cout, std::cerr, &views);
    return runner.Run(file == "-" ? std::cin : in, file == "-" ? "<stdin>" : file);
}
