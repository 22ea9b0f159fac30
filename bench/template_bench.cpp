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
// Loads the template at path once per iteration, destroying the code object untimed.
void LoadRepeatedly(benchmark::State& state, const std::string& path)
{
    if (EBNFLoad(OZ_SOURCE_DIR "/grammar/adm.bnf") == 0) {
        state.SkipWithError(ErrorMessage());
        return;
    }
    for (auto _ : state) {
        if (FileLoad(path.c_str(), 1) <= 0) {
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

}  // namespace
