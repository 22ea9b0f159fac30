// What the commands for people share: reading their command lines (templates as arguments,
// the common options, the profile files to load and to save), loading templates and
// profiles into the control and saving the profiles, each failure told on standard error.
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "ozHostOptions.h"

class CADMCtrl;

// The profiles a command loads first and saves at the end. One file may hold both profiles
// (--profile); otherwise the user and the machine profile are files of their own, and either
// may be left out: only the profiles named are read and written. A group-policy folder (--gpo)
// names both files, its Registry.pol files (ozGroupPolicyFolder).
struct ozProfileFiles {
    std::string user, machine, both;
    std::string gpo;  // the group-policy folder; user and machine are then its files
    std::string saveUser, saveMachine, saveBoth;

    bool AnyToLoad() const { return !user.empty() || !machine.empty() || !both.empty(); }
    // Where a save writes the user / the machine profile: the --save- file, else the file
    // loaded. Empty when neither is named.
    std::string UserTarget() const;
    std::string MachineTarget() const;
};

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
// Loads the profiles named, each as its own profile. With skipMissing, a file that does not
// exist yet is passed over (saying so on err), as a command that creates profiles needs; a
// group-policy folder's missing files are always passed over, silently. False when the load
// fails.
bool ozLoadProfiles(CADMCtrl& control, const ozProfileFiles& files, bool skipMissing,
                    std::ostream& err);
// Saves the profiles to their targets; false (told on err) when no target is named or the
// save fails. On success tells out which files were written. With a group-policy folder, its
// missing Machine and User folders are created and GPT.INI's versions raised as
// ozGroupPolicyFolder says.
bool ozSaveProfiles(CADMCtrl& control, const ozProfileFiles& files, std::ostream& out,
                    std::ostream& err);

// Writes "ozadm COMMAND: message" with a hint at --help, for usage errors; returns 2.
int ozUsageFailure(const std::string& command, const std::string& message, std::ostream& err);
