// Loading the largest template of the corpus (1.9 MB of UTF-16) through the engine and the
// grammar actions, against only reading the same file and converting it to narrow text.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "engine/ozEBNF.h"
#include "platform/ozTextConversion.h"

namespace {

const std::string Template = OZ_CORPUS_DIR "/adm/msedge/msedge.adm";

bool HaveTemplate(benchmark::State& state)
{
    if (std::filesystem::exists(Template))
        return true;
    state.SkipWithError(("the corpus template is not there: " + Template).c_str());
    return false;
}

// What every load does before parsing: the whole file read and converted from UTF-16.
std::string ReadAndDecode(const std::string& path)
{
    std::string bytes(std::filesystem::file_size(path), '\0');
    if (FILE* file = fopen(path.c_str(), "rb")) {
        bytes.resize(fread(bytes.data(), 1, bytes.size(), file));
        fclose(file);
    }
    std::basic_string<WCHAR> wide((bytes.size() - 2) / 2, WCHAR{0});
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.data()) + 2;
    for (size_t i = 0; i < wide.size(); ++i)
        wide[i] = static_cast<WCHAR>(data[2 * i] | (data[2 * i + 1] << 8));
    return ozNarrowText(wide.data(), wide.size());
}

void BM_ReadAndDecode(benchmark::State& state)
{
    if (!HaveTemplate(state))
        return;
    for (auto _ : state)
        benchmark::DoNotOptimize(ReadAndDecode(Template));
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

}  // namespace
