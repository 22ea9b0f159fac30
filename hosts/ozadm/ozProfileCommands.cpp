// The commands that work on profiles: import (keys from a registry into a profile) and
// convert (a profile from one library's format into another's). Without --template they work
// on the bundled empty template, as the control keeps registry trees only beside a template.
#include <filesystem>
#include <iostream>

#include "control/CADMCtrl.h"
#include "control/ozParameterText.h"
#include "ozBundledFiles.h"
#include "ozCommandSupport.h"
#include "ozCommands.h"
#include "ozHostSession.h"
#include "ozTreeText.h"
#include "platform/ozAsciiCase.h"

namespace {

const char* kImportHelp =
    R"(Usage: ozadm import [options] --key KEY [--root ROOT] [--value NAME] [--recursive]

Adds a registry key (with --recursive its sub keys too; with --value only that value) to the
profiles named and saves them. Keys below HKEY_CURRENT_USER go to the user profile, all others
to the machine profile. On Linux the registry is a Windows installation or hive folder
(--registry FOLDER or the OZADM_REGISTRY environment variable, docs/registry-hives.md); on
Windows it is the system's own.

  --key KEY             the key path below the root, e.g. Software\Policies\Vendor
  --root ROOT           HKLM (default), HKCU, HKCR, HKU, HKCC, a full HKEY_ name or a root number
  --value NAME          import only this value of the key
  --recursive           import the sub keys as well
  --template FILE       load this template first (repeatable; default: none)

A profile file that does not exist yet starts empty; the profiles are saved to the files
loaded unless --save-user, --save-machine or --save-profile name others.)";

const char* kConvertHelp = R"(Usage: ozadm convert [options] --from LIB --to LIB INPUT OUTPUT

Reads profiles through one profile library and writes them through another.

  --from LIB            the library reading the input: ozp, pol, reg or a file name
                        (default: from the input file's extension)
  --to LIB              the library writing the output (default: from the output's extension)

Name the input with --user/--machine/--profile/--gpo and the output with --save-user/
--save-machine/--save-profile; only the profiles named are read and written. A Registry.pol
file holds one profile: name it with --user or --machine and its output with the matching
--save- option.)";

bool ReadRoot(const std::string& text, unsigned int& root)
{
    static const char* const shortNames[] = {"HKCR", "HKCU", "HKLM", "HKU", "HKPD", "HKCC", "HKDD"};
    for (unsigned int number = 0; number < 7; ++number)
        if (ozAsciiSameIgnoringCase(text, shortNames[number]) ||
            ozAsciiSameIgnoringCase(text, ozRootName(number))) {
            root = number;
            return true;
        }
    long long number = 0;
    if (!ozReadInteger(text, 0, 0x7FFFFFFF, number))
        return false;
    root = static_cast<unsigned int>(number);
    return true;
}

bool LoadTemplates(CADMCtrl& control, std::vector<std::string> templates)
{
    if (templates.empty())
        templates.push_back(ozBundledFile("empty.adm"));
    return ozLoadTemplates(control, templates, std::cerr);
}

}  // namespace

int ozImportCommand(const ozCommandArgs& args)
{
    ozCommandLine line;
    std::string key, value, rootText = "HKLM";
    bool recursive = false;
    std::vector<std::string> templates;
    int status = ozReadCommand("import", args, line, false, tPOSITIONALS::None, kImportHelp,
                               [&](const std::vector<std::string>& a, std::size_t& i) {
                                   if (a[i] == "--key")
                                       key = ozOptionValue(a, i);
                                   else if (a[i] == "--value")
                                       value = ozOptionValue(a, i);
                                   else if (a[i] == "--root")
                                       rootText = ozOptionValue(a, i);
                                   else if (a[i] == "--template")
                                       templates.push_back(ozOptionValue(a, i));
                                   else if (a[i] == "--recursive")
                                       recursive = true;
                                   else
                                       return false;
                                   return true;
                               });
    if (status >= 0)
        return status;
    unsigned int root = 2;
    if (key.empty())
        return ozUsageFailure("import", "name the key with --key KEY", std::cerr);
    if (!ReadRoot(rootText, root))
        return ozUsageFailure("import",
                              "--root takes HKLM, HKCU, HKCR, HKU, HKCC or a number, "
                              "not \"" +
                                  rootText + "\"",
                              std::cerr);
    if (line.profiles.UserTarget().empty() && line.profiles.MachineTarget().empty())
        return ozUsageFailure(
            "import", "name the profiles to save (--user, --machine, --profile, --gpo)", std::cerr);
#if !defined(_WIN32)
    const char* folder =
        !line.host.registry.empty() ? line.host.registry.c_str() : std::getenv("OZADM_REGISTRY");
    std::error_code error;
    if (folder == nullptr || *folder == '\0') {
        std::cerr << "ozadm import: no registry chosen: give --registry FOLDER or set "
                     "OZADM_REGISTRY\n";
        return 1;
    }
    if (!std::filesystem::is_directory(folder, error)) {
        std::cerr << "ozadm import: the registry folder " << folder << " does not exist\n";
        return 1;
    }
#endif
    ozHostSession session(line.host, std::cerr);
    CADMCtrl& control = session.Control();
    if (!session.Prepare(std::cerr) || !LoadTemplates(control, templates) ||
        !ozLoadProfiles(control, line.profiles, true, std::cerr))
        return 1;
    if (!control.AddFromRegistry(static_cast<long>(root), key.c_str(), value.c_str(), recursive)) {
        // The control has said why (message 98) and which key.
        std::cerr << "ozadm import: " << ozRootName(root) << "\\" << key
                  << (value.empty() ? "" : " value \"" + value + "\"")
                  << " cannot be read from the registry\n";
        return 1;
    }
    return ozSaveProfiles(control, line.profiles, std::cout, std::cerr) ? 0 : 1;
}

int ozConvertCommand(const ozCommandArgs& args)
{
    ozCommandLine line;
    std::string from, to;
    int status = ozReadCommand("convert", args, line, false, tPOSITIONALS::None, kConvertHelp,
                               [&](const std::vector<std::string>& a, std::size_t& i) {
                                   if (a[i] == "--from")
                                       from = ozOptionValue(a, i);
                                   else if (a[i] == "--to")
                                       to = ozOptionValue(a, i);
                                   else
                                       return false;
                                   return true;
                               });
    if (status >= 0)
        return status;
    const ozProfileFiles& files = line.profiles;
    if (!files.AnyToLoad())
        return ozUsageFailure(
            "convert", "name the input with --user, --machine, --profile or --gpo", std::cerr);
    if (files.saveUser.empty() && files.saveMachine.empty() && files.saveBoth.empty())
        return ozUsageFailure("convert",
                              "name the output with --save-user, --save-machine or "
                              "--save-profile",
                              std::cerr);
    if (from.empty())
        from = !line.host.library.empty() ? line.host.library
                                          : ozLibraryForFile(!files.both.empty()   ? files.both
                                                             : !files.user.empty() ? files.user
                                                                                   : files.machine);
    // Only the --save- files: the input is never written over in another format.
    ozProfileFiles output;
    output.saveUser = files.saveUser;
    output.saveMachine = files.saveMachine;
    output.saveBoth = files.saveBoth;
    if (to.empty())
        to = ozLibraryForFile(output.UserTarget().empty() ? output.MachineTarget()
                                                          : output.UserTarget());
    if (from.empty() || to.empty())
        return ozUsageFailure("convert",
                              "name the libraries with --from and --to (the file "
                              "extensions do not tell)",
                              std::cerr);
    line.host.library = ozLibraryName(from);
    ozHostSession session(line.host, std::cerr);
    CADMCtrl& control = session.Control();
    if (!session.Prepare(std::cerr) || !LoadTemplates(control, {}) ||
        !ozLoadProfiles(control, files, false, std::cerr))
        return 1;
    control.ozImpExLibrary(ozLibraryName(to));
    return ozSaveProfiles(control, output, std::cout, std::cerr) ? 0 : 1;
}
