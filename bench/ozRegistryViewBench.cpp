// Filling the registry view's key tree through the headless widgets: 10^4 and 10^5 keys, a
// hundred sub keys (one value each) below each of N/100 keys, created in descending order so
// that every level has to be sorted. The fill should grow linearly (n log n for the sorting)
// with the number of keys. With the keys collapsed only the root keys are appended (the rest
// come when expanded, the fill walks the keys for their selection marks); with every key
// expanded all of them are.
#include <benchmark/benchmark.h>

#include <cstdio>

#include "control/CADMCtrl.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "ui/headless/ozHeadlessPlatform.h"
#include "ui/ozRegistryView.h"

namespace {

class SilentUI : public ozHostUI {
public:
    bool ShowMessage(tHOSTMESSAGEKIND, const std::string&) override { return false; }
};

void FillKeys(benchmark::State& state)
{
    const long keys = state.range(0);
    const bool open = state.range(1) != 0;
    tTreeCodeHandle code;
    ozRegTree& tree = code.tree->MacTree();
    char path[64];
    for (long parent = keys / 100 - 1; parent >= 0; --parent)
        for (int child = 99; child >= 0; --child) {
            std::snprintf(path, sizeof path, "Software\\Key %ld\\Sub %d", parent, child);
            ozSubKey* key = tree.FindKey(HKEY_LOCAL_MACHINE, path);
            key->FindValue("Value");
            for (ozTreeNode* node = key; open && node != &tree; node = node->Up())
                static_cast<ozRegKey*>(node)->IsOpen(true);
        }
    SilentUI ui;
    ozHeadlessPlatform platform{ui};
    CADMCtrl control{ui};
    ozRegistryView view{platform};
    view.Control(&control);
    view.Create();
    for (auto _ : state)
        view.Fill(&code, true, true);
    state.SetComplexityN(keys);
    state.SetItemsProcessed(state.iterations() * keys);
}

}  // namespace

BENCHMARK(FillKeys)
    ->ArgsProduct({{10000, 100000}, {0, 1}})
    ->ArgNames({"keys", "expanded"})
    ->Unit(benchmark::kMillisecond);
