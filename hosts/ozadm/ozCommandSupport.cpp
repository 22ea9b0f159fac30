#include "ozCommandSupport.h"

#include <iostream>

#include "control/CADMCtrl.h"
#include "ozBundledFiles.h"

void ozReadCommandLine(
    const std::vector<std::string>& args, ozCommandLine& line, bool withProfiles, bool withJson,
    const std::function<bool(const std::vector<std::string>&, std::size_t&)>& extra)
{
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg.rfind("--", 0) != 0 || arg == "-") {
            line.positional.push_back(arg);
        } else if (arg == "--help") {
            line.help = true;
        } else if (withJson && arg == "--json") {
            line.json = true;
        } else if (ozTakeCommonOption(args, i, line.host)) {
        } else if (withProfiles && arg == "--user") {
            line.profiles.user = ozOptionValue(args, i);
        } else if (withProfiles && arg == "--machine") {
            line.profiles.machine = ozOptionValue(args, i);
        } else if (withProfiles && arg == "--profile") {
            line.profiles.both = ozOptionValue(args, i);
        } else if (withProfiles && arg == "--save-user") {
            line.profiles.saveUser = ozOptionValue(args, i);
        } else if (withProfiles && arg == "--save-machine") {
            line.profiles.saveMachine = ozOptionValue(args, i);
        } else if (withProfiles && arg == "--save-profile") {
            line.profiles.saveBoth = ozOptionValue(args, i);
        } else if (withProfiles && arg == "--gpo") {
            line.profiles.gpo = ozOptionValue(args, i);
        } else if (!extra || !extra(args, i)) {
            throw ozUsageError("unknown option " + arg);
        }
    }
    ozProfileFiles& files = line.profiles;
    if (!files.both.empty() && (!files.user.empty() || !files.machine.empty()))
        throw ozUsageError(
            "--profile names one file for both profiles; give it or --user and "
            "--machine, not both");
    if (files.gpo.empty()) {
        // Without --library, the extension of the files read (else of the files written)
        // chooses it, so that a .pol or .reg file is never written over with another format.
        if (line.host.library.empty()) {
            const bool reads = files.AnyToLoad();
            for (const std::string* name : {&files.both, &files.user, &files.machine,
                                            &files.saveBoth, &files.saveUser, &files.saveMachine})
                if (std::string known = ozLibraryForFile(*name); !known.empty()) {
                    if (!reads || name == &files.both || name == &files.user ||
                        name == &files.machine)
                        line.host.library = ozLibraryName(known);
                    break;
                }
        }
        return;
    }
    if (!files.user.empty() || !files.machine.empty() || !files.both.empty() ||
        !files.saveBoth.empty())
        throw ozUsageError(
            "--gpo names both profiles; give it or --user, --machine and --profile, not both");
    if (!line.host.library.empty() && line.host.library != ozLibraryName("pol"))
        throw ozUsageError("--gpo reads Registry.pol files; it takes no other --library");
    line.host.library = ozLibraryName("pol");
    files.UseGroupPolicyFolder(files.gpo);
}

const char* ozProfileOptionsHelp()
{
    return R"(Profile options:
  --user FILE           the user profile to load
  --machine FILE        the machine profile to load
  --profile FILE        one file holding both profiles (the .ozp library can do that)
  --save-user FILE      where to save the user profile (default: the --user file)
  --save-machine FILE   where to save the machine profile (default: the --machine file)
  --save-profile FILE   save both profiles into one file (default: the --profile file)
  --gpo DIR             a group-policy folder: DIR/Machine/Registry.pol and
                        DIR/User/Registry.pol (names in any case); a save raises the
                        versions in DIR/GPT.INI. Chooses the pol library.
)";
}

bool ozLoadTemplates(CADMCtrl& control, const std::vector<std::string>& templates,
                     std::ostream& err)
{
    for (const std::string& file : templates)
        if (!control.SetADM(ozTemplatePath(file).c_str())) {
            err << "ozadm: the template " << file << " cannot be loaded\n";
            return false;
        }
    return true;
}

int ozUsageFailure(const std::string& command, const std::string& message, std::ostream& err)
{
    err << "ozadm " << command << ": " << message << " (ozadm " << command << " --help)\n";
    return 2;
}

int ozReadCommand(const char* command, const std::vector<std::string>& args, ozCommandLine& line,
                  bool withJson, tPOSITIONALS positionals, const char* help,
                  const std::function<bool(const std::vector<std::string>&, std::size_t&)>& extra)
{
    try {
        ozReadCommandLine(args, line, true, withJson, extra);
    } catch (const ozUsageError& error) {
        return ozUsageFailure(command, error.what(), std::cerr);
    }
    if (line.help) {
        std::string text = help;
        while (!text.empty() && text.back() == '\n')
            text.pop_back();
        std::cout << text << "\n\n" << ozProfileOptionsHelp() << '\n' << ozCommonOptionsHelp();
        return 0;
    }
    if (positionals == tPOSITIONALS::Templates && line.positional.empty())
        return ozUsageFailure(command, "name at least one template", std::cerr);
    if (positionals == tPOSITIONALS::None && !line.positional.empty())
        return ozUsageFailure(command, "unexpected argument " + line.positional[0], std::cerr);
    return -1;
}
