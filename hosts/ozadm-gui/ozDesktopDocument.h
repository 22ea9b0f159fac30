// What the desktop program has open in its control: the templates, and the profiles with the
// files they came from (one file holding both, a Registry.pol for one of them, a file for each,
// or a group-policy folder). Every open rebuilds the control from the files: the templates in
// the order opened (the bundled empty template when only profiles are open, as the control keeps
// registry trees beside a template only), then the profiles, so that policy states always
// derive from what the templates and profiles hold. The window asks before an open drops
// changes not saved; this class does not.
//
// Failures are told on the stream given, one line each; the files stay as they were.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "ozProfileFiles.h"

class CADMCtrl;

// What a file opened by name is, by its extension (in any case) or as a folder.
enum class tOPENKIND {
    Template,  // .adm, .admx
    Profile,   // .ozp, .pol, .reg
    Folder,    // a group-policy folder
    Unknown,
};
tOPENKIND ozOpenKind(const std::string& path);

// What to open: templates to add, and profiles to use instead of the ones open.
struct ozDesktopFiles {
    std::vector<std::string> templates;
    ozProfileFiles profiles;  // AnyToLoad() or gpo: replaces the profiles open
    std::string library;      // the profile library for them; empty: by their extension
};

// The profiles a profile file names: a .pol file holds one profile, the user's when it lies in a
// folder named User (in any case), else the machine's; .ozp and .reg files hold both. The
// library is chosen by the extension. False for another extension.
bool ozProfilesOfFile(const std::string& file, ozProfileFiles& profiles, std::string& library);

class ozDesktopDocument {
public:
    // The control is not owned and outlives the document.
    explicit ozDesktopDocument(CADMCtrl& control) : m_control(control) {}

    // Adds what `files` names and rebuilds the control. False, told on err, when a file cannot
    // be opened; then the document keeps the files it had and the control is rebuilt from them.
    bool Open(const ozDesktopFiles& files, std::ostream& err);
    // Opens one file by its kind (ozOpenKind). False, told on err, for an unknown kind.
    bool Open(const std::string& path, std::ostream& err);
    // Empties the control and forgets the files.
    void Close();

    // Whether Save knows where to write: a profile file or folder is open.
    bool CanSave() const
    {
        return !m_profiles.UserTarget().empty() || !m_profiles.MachineTarget().empty();
    }
    // Saves the profiles to the files they came from (ozSaveProfiles: a group-policy folder's
    // versions are raised). False, told on err, when nothing is named or the save fails.
    bool Save(std::ostream& out, std::ostream& err);
    // Saves the profiles to `file` in the format its extension names (ozProfilesOfFile); on
    // success the document's profiles are that file's from now on.
    bool SaveAs(const std::string& file, std::ostream& out, std::ostream& err);

    const std::vector<std::string>& Templates() const { return m_templates; }
    const ozProfileFiles& Profiles() const { return m_profiles; }
    // The name the window's title shows: the group-policy folder, else the profile file(s),
    // else the first template; empty when nothing is open.
    std::string Name() const;

private:
    bool Rebuild(const std::vector<std::string>& templates, const ozProfileFiles& profiles,
                 const std::string& library, std::ostream& err);

    CADMCtrl& m_control;
    std::vector<std::string> m_templates;
    ozProfileFiles m_profiles;
    std::string m_library;
};
