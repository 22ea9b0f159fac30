// The profile libraries through the control's binding, on files of 10^5 records. The
// Registry.pol library reads and writes a generated file; in the same run Samba's Python
// parser (GPPolParser, python3-samba) reads the same file in a subprocess, and the start of
// that subprocess alone is timed too, so that the parse can be told from the start.
#include <benchmark/benchmark.h>

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "control/ozProfileBinding.h"
#include "core/adm/tTreeCodeHandle.h"
#include "profiles/pol/ozPolFormat.h"
#include "tests/support/ozRecordingHostUI.h"

namespace {

constexpr int KeyCount = 1000;
constexpr int ValuesPerKey = 100;

std::string TemporaryPath(const char* name)
{
    return (std::filesystem::temp_directory_path() / name).string();
}

std::u16string Wide(const std::string& text)
{
    return std::u16string(text.begin(), text.end());
}

// 1000 keys of 100 values each, every other one a number, the rest strings: the shape of a
// large policy file.
const std::string& PolFile()
{
    static const std::string path = [] {
        std::string bytes = ozPolHeader();
        for (int k = 0; k < KeyCount; ++k) {
            std::u16string key = Wide("Software\\Policies\\Bench\\Key" + std::to_string(k));
            for (int v = 0; v < ValuesPerKey; ++v) {
                ozPolRecord record{key, Wide("Value" + std::to_string(v)), 4, "", 0};
                if (v % 2 == 0) {
                    record.data.assign("\x01\0\0\0", 4);
                } else {
                    record.type = 1;
                    for (char16_t c : Wide("Some policy text " + std::to_string(v)) + u'\0') {
                        record.data.push_back(static_cast<char>(c));
                        record.data.push_back('\0');
                    }
                }
                ozAppendPolRecord(bytes, record);
            }
        }
        std::string file = TemporaryPath("oz-profile-bench.pol");
        std::ofstream(file, std::ios::binary) << bytes;
        return file;
    }();
    return path;
}

struct Binding {
    ozRecordingHostUI ui;
    ozProfileBinding binding{ui, ozTestMessageText};
};

void BM_PolImport(benchmark::State& state)
{
    Binding b;
    for (auto _ : state) {
        tTreeCodeHandle code;
        if (b.binding.Load(&code, OZ_POL_LIBRARY, PolFile().c_str(), nullptr) !=
            tPROFILELOAD::Succeeded)
            state.SkipWithError("the load failed");
    }
    state.SetItemsProcessed(state.iterations() * KeyCount * ValuesPerKey);
}
BENCHMARK(BM_PolImport)->Unit(benchmark::kMillisecond);

void BM_PolExport(benchmark::State& state)
{
    Binding b;
    tTreeCodeHandle code;
    if (b.binding.Load(&code, OZ_POL_LIBRARY, PolFile().c_str(), nullptr) !=
        tPROFILELOAD::Succeeded)
        state.SkipWithError("the load failed");
    const std::string written = TemporaryPath("oz-profile-bench-written.pol");
    for (auto _ : state)
        if (!b.binding.Save(&code, OZ_POL_LIBRARY, written.c_str(), nullptr))
            state.SkipWithError("the save failed");
    std::filesystem::remove(written);
    state.SetItemsProcessed(state.iterations() * KeyCount * ValuesPerKey);
}
BENCHMARK(BM_PolExport)->Unit(benchmark::kMillisecond);

// Runs the system's Python (another python3 may come first on PATH) on a program; true when
// it exits with 0.
bool RunPython(const std::string& program)
{
    std::string command = "/usr/bin/python3 -c \"" + program + "\" > /dev/null 2>&1";
    int status = std::system(command.c_str());
    return status != -1 && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

const char* const ImportSamba = "from samba.gp_parse.gp_pol import GPPolParser";

void BM_SambaParse(benchmark::State& state)
{
    if (!RunPython(ImportSamba)) {
        state.SkipWithError("python3-samba is not installed");
        return;
    }
    const std::string program = std::string(ImportSamba) + "; p = GPPolParser(); p.parse(open('" +
                                PolFile() + "', 'rb').read()); assert len(p.pol_file.entries) == " +
                                std::to_string(KeyCount * ValuesPerKey);
    for (auto _ : state)
        if (!RunPython(program))
            state.SkipWithError("Samba's parser failed");
    state.SetItemsProcessed(state.iterations() * KeyCount * ValuesPerKey);
}
BENCHMARK(BM_SambaParse)->Unit(benchmark::kMillisecond)->UseRealTime();

// The interpreter's start and the import of the parser alone.
void BM_SambaStartOnly(benchmark::State& state)
{
    if (!RunPython(ImportSamba)) {
        state.SkipWithError("python3-samba is not installed");
        return;
    }
    for (auto _ : state)
        RunPython(ImportSamba);
}
BENCHMARK(BM_SambaStartOnly)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
