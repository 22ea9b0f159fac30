#include "ozADMXLoad.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <system_error>
#include <vector>

#include "ozADMXTemplate.h"
#include "ozGrammarActions.h"
#include "ozLoadContext.h"
#include "platform/ozAsciiCase.h"
#include "platform/ozUserLanguage.h"

namespace fs = std::filesystem;

namespace {

std::string& ChosenLanguage()
{
    static std::string language;
    return language;
}

// The entries of folder (the current one when empty), sorted by name; none when it cannot be
// read.
std::vector<fs::path> Entries(const fs::path& folder)
{
    std::vector<fs::path> entries;
    std::error_code error;
    for (fs::directory_iterator it(folder.empty() ? fs::path(".") : folder, error), end;
         !error && it != end; it.increment(error))
        entries.push_back(it->path());
    std::sort(entries.begin(), entries.end());
    return entries;
}

// The entry of folder named name in any case; empty without one.
fs::path FindCaseless(const fs::path& folder, const std::string& name)
{
    for (const fs::path& entry : Entries(folder))
        if (ozAsciiSameIgnoringCase(entry.filename().string(), name))
            return entry;
    return {};
}

std::string PrimaryLanguage(const std::string& tag)
{
    return ozAsciiLowerCased(tag.substr(0, tag.find('-')));
}

// The language folders beside the definitions to look in, in order: the language as given,
// another region of its language, then en-US.
std::vector<fs::path> LanguageFolders(const fs::path& folder, const std::string& language)
{
    std::vector<fs::path> folders;
    if (!language.empty()) {
        if (fs::path exact = FindCaseless(folder, language); !exact.empty())
            folders.push_back(exact);
        for (const fs::path& entry : Entries(folder))
            if (PrimaryLanguage(entry.filename().string()) == PrimaryLanguage(language))
                folders.push_back(entry);
    }
    if (fs::path english = FindCaseless(folder, "en-US"); !english.empty())
        folders.push_back(english);
    return folders;
}

// The ADML file of the definitions at file; empty when there is none.
std::string ResourcesOf(const fs::path& file)
{
    std::string name = file.stem().string() + ".adml";
    for (const fs::path& folder : LanguageFolders(file.parent_path(), ozTemplateLanguage())) {
        std::error_code error;
        fs::path found = FindCaseless(folder, name);
        if (!found.empty() && fs::is_regular_file(found, error))
            return found.string();
    }
    return {};
}

// The .admx file beside file that declares targetNamespace as its target; empty for none.
std::string DefinitionsOf(const std::string& targetNamespace, const fs::path& file)
{
    for (const fs::path& entry : Entries(file.parent_path()))
        if (ozAsciiSameIgnoringCase(entry.extension().string(), ".admx") &&
            entry.filename() != file.filename() &&
            ozADMXTemplate::TargetNamespaceOf(entry.string()) == targetNamespace)
            return entry.string();
    return {};
}

// Loads the definitions at file, those of the namespaces it refers to that are not loaded yet
// (from the files beside it) first. inProgress holds the namespaces whose load has begun.
bool LoadDefinitions(const std::string& file, std::vector<std::string>& inProgress,
                     ozADMXActionCalls& calls)
{
    std::string resources = ResourcesOf(file);
    if (resources.empty()) {
        std::string language = ozTemplateLanguage();
        fs::path path(file);
        return calls.Fail(ADMXErrorNoLanguageFile,
                          "no language file " + path.stem().string() + ".adml in the folder " +
                              (language.empty() ? "" : language + " or ") + "en-US beside it",
                          file);
    }
    ozADMXTemplate definitions(calls);
    std::vector<std::string> referenced;
    if (!definitions.Read(file, resources) || !definitions.ReferencedNamespaces(referenced))
        return false;
    ozADMXNamespaces& namespaces = ozLoadContext::Instance().ADMXNamespaces();
    inProgress.push_back(definitions.TargetNamespace());
    for (const std::string& space : referenced) {
        if (namespaces.Find(space) != nullptr ||
            std::find(inProgress.begin(), inProgress.end(), space) != inProgress.end())
            continue;
        // Not beside either: the reference fails when the policies are built, naming it.
        if (std::string beside = DefinitionsOf(space, file);
            !beside.empty() && !LoadDefinitions(beside, inProgress, calls))
            return false;
    }
    inProgress.pop_back();
    return definitions.Build(namespaces);
}

// Reports the failure to the engine, so that ErrorMessage() tells it.
void Report(const ozADMXFailure& failure)
{
    if (failure.code != 0) {
        error_set_desc(failure.description.c_str());
        error_set_code(failure.code);
    }
    error_set_place(failure.file.c_str(), failure.line, failure.column);
}

}  // namespace

bool ozIsADMXFile(const char* file)
{
    std::string_view name = file != nullptr ? file : "";
    constexpr std::string_view extension = ".admx";
    return name.size() > extension.size() &&
           ozAsciiSameIgnoringCase(name.substr(name.size() - extension.size()), extension);
}

int ozADMXFileLoad(const char* file)
{
    error_clear();
    ozLoadContext& context = ozLoadContext::Instance();
    SetCodeH(reinterpret_cast<intptr_t>(EBNFGetCodeHandle()));
    ozADMXFailure failure;
    bool loaded = false;
    try {
        context.CreateCode();
        context.CreateStrings();
        context.CreateEmptyStacks();
        context.CurrentClass(0);
        ozADMXActionCalls calls(failure);
        std::vector<std::string> inProgress;
        loaded = file != nullptr ? LoadDefinitions(file, inProgress, calls)
                                 : calls.Fail(ADMXErrorXml, "no template file named", "");
    } catch (const std::bad_alloc&) {
        failure = {StringsErrorOutOfMemory, "out of memory", file != nullptr ? file : "", 0, 0};
    }
    // However the load ended, the code object goes back to whoever lent it.
    EBNFSetCodeHandle(reinterpret_cast<void*>(GetCodeH(0)));
    if (!loaded)
        Report(failure);
    return loaded ? 1 : 0;
}

void ozTemplateLanguage(const char* language)
{
    ChosenLanguage() = language != nullptr ? language : "";
}

std::string ozTemplateLanguage()
{
    return ChosenLanguage().empty() ? ozUserInterfaceLanguage() : ChosenLanguage();
}
