#include "ozCommandSupport.h"

#include <filesystem>
#include <iostream>
#include <optional>

#include "control/CADMCtrl.h"
#include "core/adm/ozADMTree.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozSubKey.h"
#include "ozGroupPolicyFolder.h"
#include "ozHostSession.h"

namespace {

// A key that a save would write something for: values, or all of its values erased, or the
// key itself to be saved.
bool HoldsSettings(ozTreeNode* node)
{
    if (static_cast<ozRegKey*>(node)->Type() != KeySub)
        return false;
    const auto* key = static_cast<ozSubKey*>(node);
    return key->Values().Count() > 0 || key->Op() == 'E' || key->Save();
}

// A profile left without a file must hold nothing to save: settings a profile file brought
// into the other tree (an .ozp or .reg file holds keys of both) or edits of the other class
// would otherwise be dropped without a word.
bool NothingLeftUnsaved(CADMCtrl& control, const std::string& user, const std::string& machine,
                        std::ostream& err)
{
    if ((!user.empty() && !machine.empty()) || control.Code() == nullptr)
        return true;
    if (!control.SaveSelState()) {
        err << "ozadm: the policy settings cannot be written into the registry trees\n";
        return false;
    }
    ozADMTree& tree = *control.Code()->tree;
    ozRegTree& unnamed = user.empty() ? tree.UsrTree() : tree.MacTree();
    // The walk stops at the first key holding settings.
    if (unnamed.Execute([](ozTreeNode* node) { return !HoldsSettings(node); }))
        return true;
    const char* side = user.empty() ? "user" : "machine";
    err << "ozadm: the " << side << " profile holds settings but no file is named for it; name "
        << "one with --" << side << ", --save-" << side
        << " or, for a file that holds both profiles, --profile\n";
    return false;
}

}  // namespace

std::string ozProfileFiles::UserTarget() const
{
    for (const std::string* name : {&saveBoth, &saveUser, &both, &user})
        if (!name->empty())
            return *name;
    return {};
}

std::string ozProfileFiles::MachineTarget() const
{
    for (const std::string* name : {&saveBoth, &saveMachine, &both, &machine})
        if (!name->empty())
            return *name;
    return {};
}

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
    ozGroupPolicyFolder folder(files.gpo);
    files.user = folder.UserFile();
    files.machine = folder.MachineFile();
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
        if (!control.SetADM(ozHostSession::TemplatePath(file).c_str())) {
            err << "ozadm: the template " << file << " cannot be loaded\n";
            return false;
        }
    return true;
}

namespace {

bool Exists(const std::string& file)
{
    std::error_code error;
    return std::filesystem::exists(file, error);
}

}  // namespace

bool ozLoadProfiles(CADMCtrl& control, const ozProfileFiles& files, bool skipMissing,
                    std::ostream& err)
{
    std::string user = files.both.empty() ? files.user : files.both;
    std::string machine = files.both.empty() ? files.machine : "";
    std::error_code error;
    if (!files.gpo.empty() && !std::filesystem::is_directory(files.gpo, error)) {
        err << "ozadm: the group-policy folder " << files.gpo << " does not exist\n";
        return false;
    }
    for (std::string* name : {&user, &machine})
        if (!name->empty() && !Exists(*name)) {
            if (!files.gpo.empty()) {
                name->clear();  // an empty profile: the folder holds no file for it
                continue;
            }
            if (!skipMissing) {
                err << "ozadm: the profile " << *name << " does not exist\n";
                return false;
            }
            err << "ozadm: the profile " << *name << " does not exist yet; starting without it\n";
            name->clear();
        }
    if (user.empty() && machine.empty())
        return true;
    // An empty user name reads no user profile: every library treats it so.
    bool loaded = control.Load(user.c_str(), machine.c_str());
    if (!loaded)
        err << "ozadm: the profiles cannot be loaded\n";
    return loaded;
}

bool ozSaveProfiles(CADMCtrl& control, const ozProfileFiles& files, std::ostream& out,
                    std::ostream& err)
{
    std::string user = files.UserTarget();
    std::string machine = files.MachineTarget();
    if (user.empty() && machine.empty()) {
        err << "ozadm: no profile to save: name one with --user, --machine, --profile or the "
               "--save- options\n";
        return false;
    }
    if (!NothingLeftUnsaved(control, user, machine, err))
        return false;
    std::optional<ozGroupPolicyFolder> folder;
    if (!files.gpo.empty() && !folder.emplace(files.gpo).BeforeSave(user, machine, err))
        return false;
    if (!control.Save(user.c_str(), machine.c_str())) {
        err << "ozadm: the profiles cannot be saved\n";
        if (folder)
            folder->SaveFailed();
        return false;
    }
    if (user == machine) {
        out << "saved both profiles to " << user << '\n';
    } else {
        if (!machine.empty())
            out << "saved the machine profile to " << machine << '\n';
        if (!user.empty())
            out << "saved the user profile to " << user << '\n';
    }
    return !folder || folder->AfterSave(out, err);
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
