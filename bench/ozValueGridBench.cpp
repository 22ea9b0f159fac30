// Opening the registry-value grid through the headless widgets on 10^4 and 10^5 values: ten
// values each in N/10 keys below a hundred parents, created in descending order so that every
// level has to be sorted. Opening indexes the values and draws the first screen of rows (40);
// it should grow linearly with the number of values.
#include <benchmark/benchmark.h>

#include <cstdio>

#include "control/CADMCtrl.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "ui/headless/ozHeadlessPlatform.h"
#include "ui/ozValueGrid.h"

namespace {

class SilentUI : public ozHostUI {
public:
    bool ShowMessage(tHOSTMESSAGEKIND, const std::string&) override { return false; }
};

constexpr int ScreenRows = 40;

void OpenGrid(benchmark::State& state)
{
    const long values = state.range(0);
    tTreeCodeHandle code;
    ozRegTree& tree = code.tree->UsrTree();
    char path[64], name[16];
    for (long key = values / 10 - 1; key >= 0; --key) {
        std::snprintf(path, sizeof path, "Software\\Parent %ld\\Key %ld", key % 100, key);
        ozSubKey* subKey = tree.FindKey(HKEY_CURRENT_USER, path);
        for (int value = 0; value < 10; ++value) {
            std::snprintf(name, sizeof name, "Value %d", value);
            subKey->FindValue(name)->SetDWORD(static_cast<unsigned>(key));
        }
    }
    SilentUI ui;
    ozHeadlessPlatform platform{ui};
    CADMCtrl control{ui};
    ozValueGrid grid{platform};
    grid.Control(&control);
    grid.Create();
    for (auto _ : state) {
        grid.Fill(&code, true, true);
        for (int row = 0; row < ScreenRows; ++row)
            benchmark::DoNotOptimize(platform.RegistryGrid().Cells(row));
    }
    state.SetComplexityN(values);
    state.SetItemsProcessed(state.iterations() * values);
}

}  // namespace

BENCHMARK(OpenGrid)
    ->Arg(10000)
    ->Arg(30000)
    ->Arg(100000)
    ->Arg(300000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
