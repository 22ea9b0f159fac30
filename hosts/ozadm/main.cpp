// ozadm: the command-line host of the policy-template control. Commands for people (show,
// set, configured, configures, write-adm, import, convert) and a script runner that makes
// the control's host calls one per line, for tests and automation. docs/cli.md describes them.
#include <cstring>
#include <iostream>

#include "ozCommands.h"
#include "platform/ozConsoleStreams.h"

namespace {

// Where the whole description is: the Windows package carries it in its docs folder.
#ifdef _WIN32
const char* const kFullDescription = "docs\\cli.md beside ozadm.exe";
#else
const char* const kFullDescription = "docs/cli.md";
#endif

struct Command {
    const char* name;
    int (*run)(const ozCommandArgs&);
    const char* summary;
};

const Command kCommands[] = {
    {"show", ozShowCommand, "print a template's policy tree with the policies' states"},
    {"set", ozSetCommand, "set policies and parts and save the profiles"},
    {"configured", ozConfiguredCommand, "list the configured policies (and their entries)"},
    {"configures", ozConfiguresCommand, "list the registry entries a policy configures"},
    {"write-adm", ozWriteAdmCommand, "write the templates back as one template file"},
    {"import", ozImportCommand, "add keys from a registry to a profile"},
    {"convert", ozConvertCommand, "convert profiles from one library's format to another's"},
    {"script", ozScriptCommand, "run host calls from a script, one per line"},
};

void PrintHelp(std::ostream& out)
{
    out << "Usage: ozadm COMMAND [options] [arguments]\n\nCommands:\n";
    for (const Command& command : kCommands) {
        std::string name = command.name;
        out << "  " << name << std::string(12 - name.size(), ' ') << command.summary << '\n';
    }
    out << "\nThe commands that read or write profiles name them with --user, --machine, "
           "--profile\nor --gpo DIR (a group-policy folder).\n";
    out << "\n\"ozadm COMMAND --help\" describes a command and its options; " << kFullDescription
        << " has everything.\n";
}

}  // namespace

int main(int argc, char** argv)
{
    ozUseConsoleStreams();
    if (argc < 2) {
        PrintHelp(std::cerr);
        return 2;
    }
    std::string name = argv[1];
    if (name == "--help" || name == "-h" || name == "help") {
        PrintHelp(std::cout);
        return 0;
    }
    for (const Command& command : kCommands)
        if (name == command.name)
            return command.run(ozCommandArgs(argv + 2, argv + argc));
    std::cerr << "ozadm: unknown command \"" << name << "\" (ozadm --help lists them)\n";
    return 2;
}
