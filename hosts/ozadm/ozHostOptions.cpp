#include "ozHostOptions.h"

#include "ozProfileFiles.h"

#include "platform/ozAsciiCase.h"

const std::string& ozOptionValue(const std::vector<std::string>& args, std::size_t& i)
{
    if (i + 1 >= args.size())
        throw ozUsageError("option " + args[i] + " needs a value");
    return args[++i];
}

bool ozTakeCommonOption(const std::vector<std::string>& args, std::size_t& i,
                        ozHostOptions& options)
{
    const std::string& option = args[i];
    if (option == "--grammar") {
        options.grammar = ozOptionValue(args, i);
    } else if (option == "--no-grammar") {
        options.loadGrammar = false;
    } else if (option == "--strings") {
        options.strings = ozOptionValue(args, i);
    } else if (option == "--no-strings") {
        options.loadStrings = false;
    } else if (option == "--language") {
        const std::string& language = ozOptionValue(args, i);
        if (language != "en" && language != "de")
            throw ozUsageError("--language takes en or de, not \"" + language + "\"");
        options.language = language;
    } else if (option == "--template-language") {
        options.templateLanguage = ozOptionValue(args, i);
    } else if (option == "--answer") {
        const std::string& answer = ozOptionValue(args, i);
        if (!ozAsciiSameIgnoringCase(answer, "yes") && !ozAsciiSameIgnoringCase(answer, "no"))
            throw ozUsageError("--answer takes yes or no, not \"" + answer + "\"");
        options.answerYes = ozAsciiSameIgnoringCase(answer, "yes");
    } else if (option == "--library") {
        options.library = ozLibraryName(ozOptionValue(args, i));
    } else if (option == "--registry") {
        options.registry = ozOptionValue(args, i);
    } else if (option == "--registry-user") {
        options.registryUser = ozOptionValue(args, i);
    } else {
        return false;
    }
    return true;
}

const char* ozCommonOptionsHelp()
{
    return R"(Options every command takes:
  --grammar FILE        load this grammar instead of the bundled one
  --no-grammar          load no grammar (a script then calls SetEBNF itself)
  --strings FILE        load this host string table instead of the bundled one
  --no-strings          load no host string table (a script then calls AddString)
  --language en|de      which bundled string table to load (default en)
  --template-language LANG
                        the language folder of ADMX templates' texts, e.g. de-DE
                        (default: the user's language, then en-US)
  --answer yes|no       the answer to the control's questions (default no)
  --library NAME        the profile library: ozp, pol, reg or a library file name
                        (default: by the profile files' extension .ozp, .pol or .reg,
                        else ozp, the OZ Registry Profile library)
  --registry FOLDER     the Windows installation or hive folder whose registry is read
                        (Linux; default: the OZADM_REGISTRY environment variable)
  --registry-user NAME  the user profile whose NTUSER.DAT is HKEY_CURRENT_USER
                        (Linux; default: the OZADM_REGISTRY_USER environment variable)
  --help                show the help of the command
)";
}
