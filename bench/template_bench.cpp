// Loading the largest template of the corpus (1.9 MB of UTF-16) through the engine and the
// grammar actions, against only reading the same file and converting it to narrow text; and
// loading generated templates of many sibling categories, many policies below one category,
// or a large [strings] section, at two sizes, to show that loading grows linearly.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "core/adm/ozADMTree.h"
#include "core/adm/tTreeCodeHandle.h"
#include "engine/ozEBNF.h"
#include "engine/ozTemplateText.h"
#include "loader/ozADMXLoad.h"

namespace {

const std::string Template = OZ_CORPUS_DIR "/adm/msedge/msedge.adm";

bool HaveTemplate(benchmark::State& state)
{
    if (std::filesystem::exists(Template))
        return true;
    state.SkipWithError(("the corpus template is not there: " + Template).c_str());
    return false;
}

void BM_ReadAndDecode(benchmark::State& state)
{
    if (!HaveTemplate(state))
        return;
    for (auto _ : state) {
        // The engine's own first step of every load, built into this program.
        std::string text;
        benchmark::DoNotOptimize(ozReadTemplateText(Template.c_str(), text).IsOk());
        benchmark::DoNotOptimize(text);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                            static_cast<int64_t>(std::filesystem::file_size(Template)));
}
BENCHMARK(BM_ReadAndDecode)->Unit(benchmark::kMillisecond);

// A whole load as a control does it: the [strings] section, the parse, the policy tree with
// its registry keys; then the code object is destroyed.
// Loads the template at path once per iteration, destroying the code object untimed: an ADM
// template through the engine, ADMX definitions (with their en-US language file) through the
// ADMX reader.
void LoadRepeatedly(benchmark::State& state, const std::string& path)
{
    bool admx = ozIsADMXFile(path.c_str());
    ozTemplateLanguage("en-US");
    if (EBNFLoad(OZ_SOURCE_DIR "/grammar/adm.bnf") == 0) {
        state.SkipWithError(ErrorMessage());
        return;
    }
    for (auto _ : state) {
        if ((admx ? ozADMXFileLoad(path.c_str()) : FileLoad(path.c_str(), 1)) <= 0) {
            state.SkipWithError(ErrorMessage());
            break;
        }
        state.PauseTiming();
        EBNFDestroyCode();
        state.ResumeTiming();
    }
    EBNFDestroy();
}

void BM_LoadTemplate(benchmark::State& state)
{
    if (!HaveTemplate(state))
        return;
    LoadRepeatedly(state, Template);
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                            static_cast<int64_t>(std::filesystem::file_size(Template)));
}
BENCHMARK(BM_LoadTemplate)->Unit(benchmark::kMillisecond);

// The same policies as ADMX definitions with their en-US language file; the bytes processed
// are those of both files.
void BM_LoadADMXDefinitions(benchmark::State& state)
{
    const std::string definitions = OZ_CORPUS_DIR "/admx/msedge/msedge.admx";
    const std::string resources = OZ_CORPUS_DIR "/admx/msedge/en-US/msedge.adml";
    if (!std::filesystem::exists(definitions) || !std::filesystem::exists(resources)) {
        state.SkipWithError(("the corpus definitions are not there: " + definitions).c_str());
        return;
    }
    LoadRepeatedly(state, definitions);
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                            static_cast<int64_t>(std::filesystem::file_size(definitions) +
                                                 std::filesystem::file_size(resources)));
}
BENCHMARK(BM_LoadADMXDefinitions)->Unit(benchmark::kMillisecond);

// Writing the loaded tree back as a template into a file; the bytes processed are those of
// the written file.
void BM_WriteTemplate(benchmark::State& state)
{
    if (!HaveTemplate(state))
        return;
    if (EBNFLoad(OZ_SOURCE_DIR "/grammar/adm.bnf") == 0 || FileLoad(Template.c_str(), 1) <= 0) {
        state.SkipWithError(ErrorMessage());
        return;
    }
    ozADMTree& tree = *static_cast<tTreeCodeHandle*>(EBNFGetCodeHandle())->tree;
    std::string output =
        (std::filesystem::temp_directory_path() / "ozadm-bench-write.adm").string();
    for (auto _ : state) {
        FILE* file = std::fopen(output.c_str(), "wb");
        bool saved = file != nullptr && tree.Save(file);
        if (file != nullptr)
            std::fclose(file);
        if (!saved) {
            state.SkipWithError(("cannot write " + output).c_str());
            break;
        }
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                            static_cast<int64_t>(std::filesystem::file_size(output)));
    std::filesystem::remove(output);
    EBNFDestroyCode();
    EBNFDestroy();
}
BENCHMARK(BM_WriteTemplate)->Unit(benchmark::kMillisecond);

// The shapes of the generated templates.
enum class Shape { SiblingCategories, PoliciesOfOneCategory, StringsEntries };

// A template of n categories below one class, each with one policy; of one category with n
// policies; or of one category and policy and a [strings] section of n entries.
std::string GeneratedTemplate(Shape shape, int n)
{
    std::string text = "CLASS MACHINE\r\n";
    auto policy = [&text](int i) {
        std::string name = std::to_string(i);
        text += " POLICY \"Policy " + name + "\"\r\n  VALUENAME v" + name + "\r\n END POLICY\r\n";
    };
    switch (shape) {
        case Shape::SiblingCategories:
            for (int i = 0; i < n; ++i) {
                text += "CATEGORY \"Category " + std::to_string(i) +
                        "\"\r\n KEYNAME \"Software\\Bench\\C" + std::to_string(i) + "\"\r\n";
                policy(i);
                text += "END CATEGORY\r\n";
            }
            break;
        case Shape::PoliciesOfOneCategory:
            text += "CATEGORY Bench\r\n KEYNAME \"Software\\Bench\"\r\n";
            for (int i = 0; i < n; ++i)
                policy(i);
            text += "END CATEGORY\r\n";
            break;
        case Shape::StringsEntries:
            text += "CATEGORY !!Category\r\n KEYNAME \"Software\\Bench\"\r\n";
            policy(0);
            text += "END CATEGORY\r\n[strings]\r\nCategory=\"The category\"\r\n";
            for (int i = 0; i < n; ++i)
                text +=
                    "Text" + std::to_string(i) + "=\"Text number " + std::to_string(i) + "\"\r\n";
            break;
    }
    return text;
}

// Loads the generated template of shape and size state.range(0) once per iteration.
void LoadGenerated(benchmark::State& state, Shape shape)
{
    std::string path =
        (std::filesystem::temp_directory_path() / "ozadm-bench-generated.adm").string();
    std::ofstream(path, std::ios::binary)
        << GeneratedTemplate(shape, static_cast<int>(state.range(0)));
    LoadRepeatedly(state, path);
    std::filesystem::remove(path);
}

void BM_LoadSiblingCategories(benchmark::State& state)
{
    LoadGenerated(state, Shape::SiblingCategories);
}
BENCHMARK(BM_LoadSiblingCategories)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond);

void BM_LoadPoliciesOfOneCategory(benchmark::State& state)
{
    LoadGenerated(state, Shape::PoliciesOfOneCategory);
}
BENCHMARK(BM_LoadPoliciesOfOneCategory)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond);

void BM_LoadStringsEntries(benchmark::State& state)
{
    LoadGenerated(state, Shape::StringsEntries);
}
BENCHMARK(BM_LoadStringsEntries)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond);

// ADMX definitions of n policies below one category, each with a decimal element, and their
// en-US language file, written into a folder of their own.
std::string GeneratedADMX(int n)
{
    std::filesystem::path folder = std::filesystem::temp_directory_path() / "ozadm-bench-admx";
    std::filesystem::create_directories(folder / "en-US");
    std::string definitions =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<policyDefinitions revision=\"1.0\" "
        "schemaVersion=\"1.0\">\n<policyNamespaces><target prefix=\"bench\" "
        "namespace=\"Bench.Policies\"/></policyNamespaces>\n<resources "
        "minRequiredRevision=\"1.0\"/>\n<categories><category name=\"Bench\" "
        "displayName=\"$(string.Bench)\"/></categories>\n<policies>\n";
    std::string strings = "<string id=\"Bench\">Bench</string>\n";
    std::string presentations;
    for (int i = 0; i < n; ++i) {
        std::string name = "P" + std::to_string(i);
        definitions += "<policy name=\"" + name + "\" class=\"Machine\" displayName=\"$(string." +
                       name + ")\" key=\"Software\\Bench\" presentation=\"$(presentation." + name +
                       ")\"><parentCategory ref=\"Bench\"/><elements><decimal id=\"D\" "
                       "valueName=\"" +
                       name + "\" maxValue=\"100\"/></elements></policy>\n";
        strings += "<string id=\"" + name + "\">Policy " + std::to_string(i) + "</string>\n";
        presentations += "<presentation id=\"" + name +
                         "\"><decimalTextBox refId=\"D\">Number</decimalTextBox></presentation>\n";
    }
    definitions += "</policies>\n</policyDefinitions>\n";
    std::ofstream(folder / "bench.admx", std::ios::binary) << definitions;
    std::ofstream(folder / "en-US" / "bench.adml", std::ios::binary)
        << "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<policyDefinitionResources "
           "revision=\"1.0\" schemaVersion=\"1.0\"><displayName/><description/><resources>"
           "<stringTable>\n"
        << strings << "</stringTable><presentationTable>\n"
        << presentations << "</presentationTable></resources></policyDefinitionResources>\n";
    return (folder / "bench.admx").string();
}

void BM_LoadGeneratedADMX(benchmark::State& state)
{
    std::string path = GeneratedADMX(static_cast<int>(state.range(0)));
    LoadRepeatedly(state, path);
    std::filesystem::remove_all(std::filesystem::path(path).parent_path());
}
BENCHMARK(BM_LoadGeneratedADMX)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond);

}  // namespace
