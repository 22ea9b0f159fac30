// Loading the largest template of the corpus (1.9 MB of UTF-16) through the engine and the
// grammar actions, against only reading the same file and converting it to narrow text.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
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
        std::string text, error;
        ozReadTemplateText(Template.c_str(), text, &error);
        benchmark::DoNotOptimize(text);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                            static_cast<int64_t>(std::filesystem::file_size(Template)));
}
BENCHMARK(BM_ReadAndDecode)->Unit(benchmark::kMillisecond);

// A whole load as a control does it: the [strings] section, the parse, the policy tree with
// its registry keys; then the code object is destroyed.
void BM_LoadTemplate(benchmark::State& state)
{
    if (!HaveTemplate(state))
        return;
    if (EBNFLoad(OZ_SOURCE_DIR "/grammar/adm.bnf") == 0) {
        state.SkipWithError(ErrorMessage());
        return;
    }
    for (auto _ : state) {
        if (FileLoad(Template.c_str(), 1) <= 0) {
            state.SkipWithError(ErrorMessage());
            break;
        }
        state.PauseTiming();
        EBNFDestroyCode();
        state.ResumeTiming();
    }
    EBNFDestroy();
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

}  // namespace
