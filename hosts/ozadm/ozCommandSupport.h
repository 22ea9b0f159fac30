// What the commands for people share: reading their command lines (templates as arguments,
// the common options, the profile files to load and to save), loading templates and
// profiles into the control and saving the profiles, each failure told on standard error.
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "ozHostOptions.h"
#include "ozProfileFiles.h"

class CADMCtrl;

struct ozCommandLine {
    ozHostOptions host;
    ozProfileFiles profiles;
    std::vector<std::string> positional;
    bool json = false;
    bool help = false;
};

// Reads args into line: the common options, the profile options when withProfiles, --json
// when withJson, --help, and whatever `extra` takes (it returns false for an argument it does
// not know, advancing i over the values it takes). Arguments not starting with "--" are
// positional. --gpo fills in the user and machine files and chooses the Registry.pol library.
// Throws ozUsageError for an unknown option, a missing value or options that exclude each other.
void ozReadCommandLine(
    const std::vector<std::string>& args, ozCommandLine& line, bool withProfiles, bool withJson,
    const std::function<bool(const std::vector<std::string>&, std::size_t&)>& extra = nullptr);

// The help text of the profile options.
const char* ozProfileOptionsHelp();

// What a command takes besides its options.
enum class tPOSITIONALS {
    Templates,  // one template or more
    None,       // nothing
};

// Reads a command's line with ozReadCommandLine (profile options included). Returns 0 after
// printing the command's help (with the profile and common options) for --help, 2 after a
// usage error (told on standard error), and -1 when the command is to go on.
int ozReadCommand(
    const char* command, const std::vector<std::string>& args, ozCommandLine& line, bool withJson,
    tPOSITIONALS positionals, const char* help,
    const std::function<bool(const std::vector<std::string>&, std::size_t&)>& extra = nullptr);

// Adds every template to the control (SetADM); false at the first that fails.
bool ozLoadTemplates(CADMCtrl& control, const std::vector<std::string>& templates,
                     std::ostream& err);
// Writes "ozadm COMMAND: message" with a hint at --help, for usage errors; returns 2.
int ozUsageFailure(const std::string& command, const std::string& message, std::ostream& err);
