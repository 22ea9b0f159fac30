// Growth of the registry model with the number of sibling keys and of values in one key.
// Run at 10^4 and 10^5: linear growth shows as a time ratio near 10.
#include <benchmark/benchmark.h>

#include <string>
#include <unordered_map>
#include <vector>

#include "core/registry/ozRegTree.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"

namespace {

std::vector<std::string> Names(const char* prefix, int count)
{
    std::vector<std::string> names;
    names.reserve(count);
    for (int i = 0; i < count; ++i)
        names.push_back(prefix + std::to_string(i));
    return names;
}

// Creates N sibling keys below one key, then finds each of them again (in another case).
void BM_CreateAndFindSiblingKeys(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    std::vector<std::string> paths = Names("Software\\Policies\\Vendor\\Key", count);
    std::vector<std::string> upper = Names("SOFTWARE\\POLICIES\\VENDOR\\KEY", count);
    for (auto _ : state) {
        ozRegTree tree;
        for (const std::string& path : paths)
            benchmark::DoNotOptimize(tree.FindKey(HKEY_LOCAL_MACHINE, path.c_str()));
        for (const std::string& path : upper)
            benchmark::DoNotOptimize(tree.FindKey(HKEY_LOCAL_MACHINE, path.c_str()));
    }
    state.SetComplexityN(count);
}
BENCHMARK(BM_CreateAndFindSiblingKeys)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// Each sibling key gets a sub key, as policies with parts below their own key do: creating
// below one sibling must not make lookups below the next one slower.
void BM_SiblingKeysWithSubKeys(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    std::vector<std::string> paths = Names("Software\\Vendor\\Policy", count);
    for (std::string& path : paths)
        path += "\\Part";
    for (auto _ : state) {
        ozRegTree tree;
        for (const std::string& path : paths)
            benchmark::DoNotOptimize(tree.FindKey(HKEY_LOCAL_MACHINE, path.c_str()));
    }
    state.SetComplexityN(count);
}
BENCHMARK(BM_SiblingKeysWithSubKeys)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// Creates N values in one key, then finds each of them again.
void BM_CreateAndFindValues(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    std::vector<std::string> names = Names("Value", count);
    std::vector<std::string> upper = Names("VALUE", count);
    for (auto _ : state) {
        ozRegTree tree;
        ozSubKey* key = tree.FindKey(HKEY_LOCAL_MACHINE, "Software\\Vendor");
        for (const std::string& name : names)
            key->FindValue(name.c_str())->SetDWORD(1);
        for (const std::string& name : upper)
            benchmark::DoNotOptimize(key->FindValue(name.c_str()));
    }
    state.SetComplexityN(count);
}
BENCHMARK(BM_CreateAndFindValues)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// A reference point, not part of the model: inserting and finding N short names in a plain
// hash map. Its time ratio between the two sizes shows what the memory hierarchy of the
// machine alone adds once the working set outgrows the caches.
void BM_BaselineHashMap(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    std::vector<std::string> names = Names("value", count);
    for (auto _ : state) {
        std::unordered_map<std::string, const void*> map;
        for (const std::string& name : names)
            map.emplace(name, &name);
        for (const std::string& name : names)
            benchmark::DoNotOptimize(map.find(name));
    }
    state.SetComplexityN(count);
}
BENCHMARK(BM_BaselineHashMap)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
