// Every Registry.pol file of the corpus reads into the trees and writes back byte for byte: none of
// them holds what the model reorders or merges (records of one key apart, "**delvals." after
// values, key paths differing only in case, a value set twice, a sub key before its parent; see
// PolProfileTest).
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "control/ozProfileBinding.h"
#include "ozPolTestSupport.h"
#include "tests/support/ozRecordingHostUI.h"

namespace {

std::string CorpusFolder()
{
    std::string folder = ozPlatformPath(std::string(OZ_CORPUS_DIR) + "/pol");
    if (std::string(OZ_CORPUS_DIR).empty() || !std::filesystem::is_directory(folder))
        return {};
    return folder;
}

TEST(PolCorpusTest, EveryFileWritesBackTheSameRecordsByteForByte)
{
    const std::string folder = CorpusFolder();
    if (folder.empty())
        GTEST_SKIP() << "no corpus folder (OZ_CORPUS_DIR=\"" << OZ_CORPUS_DIR << "\")";
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == ".pol")
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    ASSERT_FALSE(files.empty()) << folder;

    ozTestFile written("pol-corpus.pol");
    for (const auto& file : files) {
        const std::string name = file.filename().string();
        const std::string original = ozReadTestFile(file.string());
        ozRecordingHostUI ui;
        ozProfileBinding binding(ui, ozTestMessageText);
        tTreeCodeHandle code;
        ASSERT_EQ(binding.Load(&code, PolLibrary.c_str(), file.string().c_str(), nullptr),
                  tPROFILELOAD::Succeeded)
            << name;
        ASSERT_TRUE(binding.Save(&code, PolLibrary.c_str(), written.Path(), nullptr)) << name;
        EXPECT_TRUE(ozReadTestFile(written.Path()) == original) << name << " differs in its bytes";
    }
}

}  // namespace
