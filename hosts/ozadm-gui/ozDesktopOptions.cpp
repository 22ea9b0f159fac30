#include "ozDesktopOptions.h"

namespace {

const char* const kDisplayModes[] = {"policies", "registry", "grid"};

}  // namespace

bool ozReadDesktopOptions(const std::vector<std::string>& args, ozDesktopOptions& options,
                          std::string& error)
{
    ozDesktopFiles& files = options.files;
    auto profilesNamed = [&] { return files.profiles.AnyToLoad() || !files.profiles.gpo.empty(); };
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--help" || arg == "-h") {
            options.help = true;
            continue;
        }
        if (arg == "--template-editing") {
            options.templateEditing = true;
            continue;
        }
        const bool takesValue = arg == "--user" || arg == "--machine" || arg == "--gpo" ||
                                arg == "--view" || arg == "--language" ||
                                arg == "--template-language";
        if (arg.rfind("--", 0) == 0 && !takesValue) {
            error = "unknown option " + arg;
            return false;
        }
        if (takesValue && i + 1 >= args.size()) {
            error = "option " + arg + " needs a value";
            return false;
        }
        const std::string& value = takesValue ? args[++i] : arg;
        if (arg == "--language") {
            if (value != "en" && value != "de") {
                error = "--language takes en or de, not \"" + value + "\"";
                return false;
            }
            options.language = value;
        } else if (arg == "--template-language") {
            options.templateLanguage = value;
        } else if (arg == "--view") {
            int mode = 0;
            while (mode < 3 && value != kDisplayModes[mode])
                ++mode;
            if (mode == 3) {
                error = "--view takes policies, registry or grid, not \"" + value + "\"";
                return false;
            }
            options.displayMode = mode;
        } else if (arg == "--user" || arg == "--machine") {
            if (!files.profiles.both.empty() || !files.profiles.gpo.empty()) {
                error = arg + " " + value + ": the profiles are named already";
                return false;
            }
            (arg == "--user" ? files.profiles.user : files.profiles.machine) = value;
        } else {
            tOPENKIND kind = arg == "--gpo" ? tOPENKIND::Folder : ozOpenKind(value);
            if (kind == tOPENKIND::Template) {
                files.templates.push_back(value);
                continue;
            }
            if (kind == tOPENKIND::Unknown) {
                error = value +
                        " is neither a template (.adm, .admx), a profile (.ozp, .pol, .reg) "
                        "nor a folder";
                return false;
            }
            if (profilesNamed()) {
                error = value + ": the profiles are named already";
                return false;
            }
            if (kind == tOPENKIND::Folder)
                files.profiles.UseGroupPolicyFolder(value);
            else
                ozProfilesOfFile(value, files.profiles, files.library);
        }
    }
    return true;
}

const char* ozDesktopHelp()
{
    return R"(Usage: ozadm-gui [options] [FILE...]

Edits policies in a window: the templates' policies, the registry settings of the profiles,
and the grid of every registry value, with search and replace.

Each FILE opens by its kind: a template (.adm, .admx) is added to the templates shown; a
profile (.ozp or .reg: both profiles; a Registry.pol: the user profile when it lies in a
folder named User, else the machine profile) or a group-policy folder (its Machine and
User Registry.pol files; a save raises the versions in its GPT.INI) names the profiles.

  --user FILE           the user profile (a Registry.pol, .ozp or .reg file)
  --machine FILE        the machine profile
  --gpo DIR             a group-policy folder, also when named as a FILE
  --view MODE           the view shown first: policies (default), registry or grid
  --template-editing    offer the template-editing menus in the policy view
  --language en|de      the language of menus and messages (default: the system's)
  --template-language LANG
                        the language folder ADMX templates take their texts from first,
                        as de-DE (default: the system's, then en-US)
  --help                this text

Keys: Ctrl+O open a template, Ctrl+S save, Ctrl+F find in the grid, Ctrl+H replace,
F2 rename, Del delete, Ins insert (in the view that has the focus).
)";
}
