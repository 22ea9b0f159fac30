// Fuzzes the ADMX reader: an input is an ADMX document and, after the first zero byte, its
// ADML file (without one, a small fixed ADML). Whatever the bytes, the load succeeds or fails
// with a message, never crashes, leaks or hangs. A second load merges into the first tree.
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "engine/ozEBNF.h"
#include "loader/ozADMXLoad.h"

namespace {

const char fixedResources[] =
    "<policyDefinitionResources><resources><stringTable><string id='s'>S</string>"
    "</stringTable><presentationTable><presentation id='p'><text>T</text>"
    "<decimalTextBox refId='d' defaultValue='1'>D</decimalTextBox></presentation>"
    "</presentationTable></resources></policyDefinitionResources>";

// A folder of the target's own holding f.admx and en-US/f.adml.
struct Folder {
    Folder()
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "ozadm-admx-fuzz-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr)
            std::abort();
        path = pattern;
        std::filesystem::create_directory(path / "en-US");
    }
    ~Folder() { std::filesystem::remove_all(path); }
    std::filesystem::path path;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const Folder folder;
    std::string_view input(reinterpret_cast<const char*>(data), size);
    std::size_t split = input.find('\0');
    std::string_view resources =
        split != std::string_view::npos ? input.substr(split + 1) : fixedResources;
    std::ofstream(folder.path / "f.admx", std::ios::binary | std::ios::trunc)
        << input.substr(0, split);
    std::ofstream(folder.path / "en-US" / "f.adml", std::ios::binary | std::ios::trunc)
        << resources;
    ozTemplateLanguage("en-US");
    const std::string file = (folder.path / "f.admx").string();
    for (int load = 0; load < 2; ++load) {
        if (ozADMXFileLoad(file.c_str()) <= 0 && *ErrorMessage() == '\0')
            std::abort();  // a failure always says why
        EBNFSetCodeHandle(EBNFGetCodeHandle());
    }
    EBNFDestroyCode();
    return 0;
}
