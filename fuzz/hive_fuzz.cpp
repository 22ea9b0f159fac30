// Fuzzes reading a hive file into the registry model: any file given as a machine's SOFTWARE
// hive is imported or refused with a registry exception, never a crash, hang or leak.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "core/registry/CRegistryKey.h"
#include "core/registry/ozRegTree.h"
#include "platform/ozRegistryApi.h"

namespace {

// A folder of its own for the hive under test, removed when the process ends.
struct MachineFolder {
    MachineFolder()
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "ozadm-hive-fuzz-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr)
            std::abort();
        path = pattern;
    }
    ~MachineFolder() { std::filesystem::remove_all(path); }
    std::string path;
};

const std::string& TheMachineFolder()
{
    static const MachineFolder folder;
    return folder.path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size)
{
    std::string hive = TheMachineFolder() + "/SOFTWARE";
    FILE* file = std::fopen(hive.c_str(), "wb");
    if (file == nullptr)
        std::abort();
    std::fwrite(data, 1, size, file);
    std::fclose(file);

    ozRegTree tree;
    try {
        tree.AddFromRegistry(HKEY_LOCAL_MACHINE, "SOFTWARE", nullptr, true,
                             TheMachineFolder().c_str());
    } catch (const CRegistryKey::Exception&) {
        // A refused hive is the expected outcome for most inputs.
    }
    return 0;
}
