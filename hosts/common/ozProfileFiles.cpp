#include "ozProfileFiles.h"

#include <filesystem>
#include <optional>

#include "control/CADMCtrl.h"
#include "core/adm/ozADMTree.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozSubKey.h"
#include "ozGroupPolicyFolder.h"
#include "platform/ozAsciiCase.h"

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

std::string ozLibraryName(const std::string& name)
{
    if (ozAsciiSameIgnoringCase(name, "ozp"))
        return "ozRegOZP.dll";
    if (ozAsciiSameIgnoringCase(name, "pol"))
        return "ozRegPOL.dll";
    if (ozAsciiSameIgnoringCase(name, "reg"))
        return "ozRegREG.dll";
    return name;
}

std::string ozLibraryForFile(const std::string& file)
{
    std::size_t dot = file.rfind('.');
    if (dot == std::string::npos)
        return {};
    std::string extension = file.substr(dot + 1);
    for (const char* known : {"ozp", "pol", "reg"})
        if (ozAsciiSameIgnoringCase(extension, known))
            return known;
    return {};
}

void ozProfileFiles::UseGroupPolicyFolder(const std::string& folder)
{
    ozGroupPolicyFolder names(folder);
    gpo = folder;
    user = names.UserFile();
    machine = names.MachineFile();
}
