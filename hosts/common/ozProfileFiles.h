// The profile files a host loads into the control and saves from it: one file for both
// profiles, a file for each, or a group-policy folder's two Registry.pol files. The
// command-line host and the desktop program share these, so that both read and write a
// group-policy folder the same way. Failures are told on the stream given, one line each,
// beginning "ozadm: ".
#pragma once

#include <ostream>
#include <string>

class CADMCtrl;

// The profiles a host loads first and saves at the end. One file may hold both profiles
// (`both`); otherwise the user and the machine profile are files of their own, and either
// may be left out: only the profiles named are read and written. A group-policy folder
// (`gpo`) names both files, its Registry.pol files (ozGroupPolicyFolder).
struct ozProfileFiles {
    std::string user, machine, both;
    std::string gpo;  // the group-policy folder; user and machine are then its files
    std::string saveUser, saveMachine, saveBoth;

    bool AnyToLoad() const { return !user.empty() || !machine.empty() || !both.empty(); }
    // Where a save writes the user / the machine profile: the save- file, else the file
    // loaded. Empty when neither is named.
    std::string UserTarget() const;
    std::string MachineTarget() const;
    // Names the group-policy folder's Registry.pol files as user and machine (names matched
    // without regard to case, ozGroupPolicyFolder); nothing is read yet.
    void UseGroupPolicyFolder(const std::string& folder);
};

// Loads the profiles named, each as its own profile. With skipMissing, a file that does not
// exist yet is passed over (saying so on err), as a command that creates profiles needs; a
// group-policy folder's missing files are always passed over, silently. False when the load
// fails or the group-policy folder does not exist.
bool ozLoadProfiles(CADMCtrl& control, const ozProfileFiles& files, bool skipMissing,
                    std::ostream& err);
// Saves the profiles to their targets; false (told on err) when no target is named, when a
// profile holding settings has no target, or the save fails. On success tells out which files
// were written. With a group-policy folder, its missing Machine and User folders are created
// and GPT.INI's versions raised as ozGroupPolicyFolder says; a failed save leaves the folder
// as it was.
bool ozSaveProfiles(CADMCtrl& control, const ozProfileFiles& files, std::ostream& out,
                    std::ostream& err);

// The library name for a short name: ozp, pol and reg stand for the bundled profile
// libraries (ozRegOZP.dll, ozRegPOL.dll, ozRegREG.dll); any other name is used as it is.
std::string ozLibraryName(const std::string& name);

// The short library name a profile file's extension suggests (.ozp, .pol, .reg); empty for
// another extension.
std::string ozLibraryForFile(const std::string& file);
