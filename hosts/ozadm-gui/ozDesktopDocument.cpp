#include "ozDesktopDocument.h"

#include <filesystem>
#include <sstream>

#include "control/CADMCtrl.h"
#include "ozBundledFiles.h"
#include "platform/ozAsciiCase.h"

namespace {

std::string Extension(const std::string& path)
{
    std::string extension = std::filesystem::path(path).extension().string();
    return extension.empty() ? extension : extension.substr(1);
}

bool AnyProfile(const ozProfileFiles& profiles)
{
    return profiles.AnyToLoad() || !profiles.gpo.empty();
}

}  // namespace

tOPENKIND ozOpenKind(const std::string& path)
{
    std::error_code error;
    if (std::filesystem::is_directory(path, error))
        return tOPENKIND::Folder;
    const std::string extension = Extension(path);
    for (const char* known : {"adm", "admx"})
        if (ozAsciiSameIgnoringCase(extension, known))
            return tOPENKIND::Template;
    return ozLibraryForFile(path).empty() ? tOPENKIND::Unknown : tOPENKIND::Profile;
}

bool ozProfilesOfFile(const std::string& file, ozProfileFiles& profiles, std::string& library)
{
    const std::string shortName = ozLibraryForFile(file);
    if (shortName.empty())
        return false;
    profiles = {};
    library = ozLibraryName(shortName);
    if (shortName != "pol")
        profiles.both = file;
    else if (ozAsciiSameIgnoringCase(std::filesystem::path(file).parent_path().filename().string(),
                                     "User"))
        profiles.user = file;
    else
        profiles.machine = file;
    return true;
}

bool ozDesktopDocument::Open(const ozDesktopFiles& files, std::ostream& err)
{
    std::vector<std::string> templates = m_templates;
    templates.insert(templates.end(), files.templates.begin(), files.templates.end());
    ozProfileFiles profiles = m_profiles;
    std::string library = m_library;
    if (AnyProfile(files.profiles)) {
        profiles = files.profiles;
        library = files.library;
        if (!profiles.gpo.empty())
            library = ozLibraryName("pol");
        for (const std::string* name : {&profiles.both, &profiles.user, &profiles.machine})
            if (library.empty() && !ozLibraryForFile(*name).empty())
                library = ozLibraryName(ozLibraryForFile(*name));
    }
    if (!Rebuild(templates, profiles, library, err)) {
        std::ostringstream quiet;
        Rebuild(m_templates, m_profiles, m_library, quiet);
        return false;
    }
    m_templates = std::move(templates);
    m_profiles = std::move(profiles);
    m_library = std::move(library);
    return true;
}

bool ozDesktopDocument::Open(const std::string& path, std::ostream& err)
{
    ozDesktopFiles files;
    switch (ozOpenKind(path)) {
        case tOPENKIND::Template:
            files.templates.push_back(path);
            break;
        case tOPENKIND::Profile:
            ozProfilesOfFile(path, files.profiles, files.library);
            break;
        case tOPENKIND::Folder:
            files.profiles.UseGroupPolicyFolder(path);
            break;
        case tOPENKIND::Unknown:
            err << "ozadm: " << path
                << " is neither a template (.adm, .admx), a profile (.ozp, .pol, .reg) nor a "
                   "folder\n";
            return false;
    }
    return Open(files, err);
}

void ozDesktopDocument::Close()
{
    m_control.Cleanup();
    m_templates.clear();
    m_profiles = {};
    m_library.clear();
}

bool ozDesktopDocument::Save(std::ostream& out, std::ostream& err)
{
    return ozSaveProfiles(m_control, m_profiles, out, err);
}

bool ozDesktopDocument::SaveAs(const std::string& file, std::ostream& out, std::ostream& err)
{
    ozProfileFiles target;
    std::string library;
    if (!ozProfilesOfFile(file, target, library)) {
        err << "ozadm: " << file << ": a profile is saved as .ozp, .pol or .reg\n";
        return false;
    }
    // The file is written, not read: the targets are its save- names.
    ozProfileFiles saving;
    saving.saveBoth = target.both;
    saving.saveUser = target.user;
    saving.saveMachine = target.machine;
    const std::string before = m_control.ozImpExLibrary();
    m_control.ozImpExLibrary(library);
    if (!ozSaveProfiles(m_control, saving, out, err)) {
        m_control.ozImpExLibrary(before);
        return false;
    }
    m_profiles = target;
    m_library = library;
    return true;
}

std::string ozDesktopDocument::Name() const
{
    if (!m_profiles.gpo.empty())
        return m_profiles.gpo;
    for (const std::string* name : {&m_profiles.both, &m_profiles.machine, &m_profiles.user})
        if (!name->empty())
            return *name;
    return m_templates.empty() ? std::string() : m_templates.front();
}

bool ozDesktopDocument::Rebuild(const std::vector<std::string>& templates,
                                const ozProfileFiles& profiles, const std::string& library,
                                std::ostream& err)
{
    m_control.Cleanup();
    std::vector<std::string> loads = templates;
    if (loads.empty() && AnyProfile(profiles))
        loads.push_back(ozBundledFile("empty.adm"));
    for (const std::string& file : loads)
        if (!m_control.SetADM(ozTemplatePath(file).c_str())) {
            err << "ozadm: the template " << file << " cannot be loaded\n";
            return false;
        }
    if (!library.empty())
        m_control.ozImpExLibrary(library);
    return !AnyProfile(profiles) || ozLoadProfiles(m_control, profiles, false, err);
}
