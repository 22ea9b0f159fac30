// Importing a large hive recursively into the registry model, compared in the same run with
// libhivex's own dumper (hivexml) reading the same file.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "core/registry/ozRegTree.h"
#include "platform/ozRegistryApi.h"
#include "tests/support/ozTestHive.h"

namespace {

constexpr int Parents = 1000;
constexpr int ChildrenPerParent = 100;  // 10^5 keys, each with one value

// A machine folder whose SOFTWARE hive holds Parents x ChildrenPerParent keys below
// SOFTWARE\Bench, each with a string value; built once per run and removed at its end.
struct BenchMachine {
    BenchMachine()
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "ozadm-bench-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr)
            std::abort();
        folder = pattern;
        ozTestHive hive(folder + "/SOFTWARE");
        for (int parent = 0; parent < Parents; ++parent) {
            std::string parentPath = "Bench\\Parent" + std::to_string(parent);
            for (int child = 0; child < ChildrenPerParent; ++child) {
                std::string path = parentPath + "\\Key" + std::to_string(child);
                if (!hive.SetString(path, "Value", "data of " + path))
                    std::abort();
            }
        }
        if (!hive.Commit())
            std::abort();
    }
    ~BenchMachine() { std::filesystem::remove_all(folder); }
    std::string folder;
};

const std::string& MachineFolder()
{
    static const BenchMachine machine;
    return machine.folder;
}

void BM_ImportHiveRecursively(benchmark::State& state)
{
    ozRegistryUseLocalMachine(MachineFolder().c_str(), nullptr);
    for (auto _ : state) {
        ozRegTree tree;
        if (!tree.AddFromRegistry(HKEY_LOCAL_MACHINE, "SOFTWARE\\Bench", nullptr, true, nullptr))
            state.SkipWithError("import failed");
    }
    state.counters["keys"] = Parents * ChildrenPerParent;
    state.counters["values"] = Parents * ChildrenPerParent;
}
BENCHMARK(BM_ImportHiveRecursively)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_HivexmlDump(benchmark::State& state)
{
    std::string command = "hivexml '" + MachineFolder() + "/SOFTWARE' > /dev/null";
    for (auto _ : state) {
        if (std::system(command.c_str()) != 0)
            state.SkipWithError("hivexml failed (Debian package libhivex-bin)");
    }
}
BENCHMARK(BM_HivexmlDump)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
