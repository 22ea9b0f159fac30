// Growth of the policy state walks: ozADMTree::Sync and SaveToRegistry over N policies with
// parts, against a machine registry tree holding 10 values per policy key.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "core/adm/ozADMCategory.h"
#include "core/adm/ozADMCheckBox.h"
#include "core/adm/ozADMNumeric.h"
#include "core/adm/ozADMPolicy.h"
#include "core/adm/ozADMRoot.h"
#include "core/adm/ozADMTree.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"

namespace {

// N policies below one category, each with its own key holding the policy's value, a check
// box, a numeric part and 7 unrelated values (10 values per key).
std::unique_ptr<ozADMTree> BuildTemplate(int policies)
{
    auto tree = std::make_unique<ozADMTree>();
    auto* root = new ozADMRoot(RootMachine);
    root->Name("MACHINE");
    tree->AddBelow(root);
    auto* category = new ozADMCategory;
    category->Name("Vendor");
    tree->AddBelowAsLast(category);
    ozRegTree& registry = tree->MacTree();
    for (int i = 0; i < policies; ++i) {
        std::string keyPath = "Software\\Policies\\Vendor\\Policy" + std::to_string(i);
        auto* policy = new ozADMPolicy;
        policy->Name(("Policy" + std::to_string(i)).c_str());
        policy->RegKey(keyPath.c_str());
        policy->Valuename("Enabled");
        policy->ValueOn().SetNumeric(1);
        policy->ValueOff().SetNumeric(0);
        auto* box = new ozADMCheckBox;
        box->Key(registry, HKEY_LOCAL_MACHINE, keyPath.c_str());
        box->ValueName("Box");
        policy->AddControl(box);
        auto* number = new ozADMNumeric;
        number->Key(registry, HKEY_LOCAL_MACHINE, keyPath.c_str());
        number->ValueName("Number");
        policy->AddControl(number);
        tree->SetCurrentNode(category);
        tree->AddBelowAsLast(policy);

        ozSubKey* key = registry.FindKey(HKEY_LOCAL_MACHINE, keyPath.c_str());
        key->FindValue("Enabled")->SetDWORD(1);
        key->FindValue("Box")->SetDWORD(1);
        key->FindValue("Number")->SetDWORD(static_cast<unsigned long>(i));
        for (int other = 0; other < 7; ++other)
            key->FindValue(("Other" + std::to_string(other)).c_str())->SetString("x");
    }
    return tree;
}

void BM_SyncPolicies(benchmark::State& state)
{
    std::unique_ptr<ozADMTree> tree = BuildTemplate(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(tree->Sync());
    state.counters["values"] = static_cast<double>(state.range(0) * 10);
}
BENCHMARK(BM_SyncPolicies)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void BM_SavePoliciesToRegistry(benchmark::State& state)
{
    std::unique_ptr<ozADMTree> tree = BuildTemplate(static_cast<int>(state.range(0)));
    tree->Sync();
    for (auto _ : state)
        benchmark::DoNotOptimize(tree->SaveToRegistry());
    state.counters["values"] = static_cast<double>(state.range(0) * 10);
}
BENCHMARK(BM_SavePoliciesToRegistry)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

// Building the template and the registry, and the first sync that resolves every policy's
// key: all of it must stay linear too.
void BM_BuildAndFirstSync(benchmark::State& state)
{
    for (auto _ : state) {
        std::unique_ptr<ozADMTree> tree = BuildTemplate(static_cast<int>(state.range(0)));
        benchmark::DoNotOptimize(tree->Sync());
    }
}
BENCHMARK(BM_BuildAndFirstSync)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
