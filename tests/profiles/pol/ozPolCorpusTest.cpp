// Every Registry.pol file of the corpus reads into the trees and writes back to the same
// records in the same order, byte for byte: none of them holds what the model reorders or
// merges (records of one key apart, "**delvals." after values, key paths differing only in
// case, a value set twice, a sub key before its parent; see PolProfileTest).
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "control/ozProfileBinding.h"
#include "ozPolTestSupport.h"
#include "profiles/pol/ozPolText.h"
#include "tests/support/ozRecordingHostUI.h"

namespace {

std::string CorpusFolder()
{
    std::string folder = ozPlatformPath(std::string(OZ_CORPUS_DIR) + "/pol");
    if (std::string(OZ_CORPUS_DIR).empty() || !std::filesystem::is_directory(folder))
        return {};
    return folder;
}

std::string Describe(const ozPolRecord& record)
{
    return ozPolNarrow(record.key) + ";" + ozPolNarrow(record.name) + ";" +
           std::to_string(record.type) + ";" + std::to_string(record.data.size());
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
        const std::string original = ReadBytes(file.string());
        ozRecordingHostUI ui;
        ozProfileBinding binding(ui, ozTestMessageText);
        tTreeCodeHandle code;
        ASSERT_EQ(binding.Load(&code, PolLibrary.c_str(), file.string().c_str(), nullptr),
                  tPROFILELOAD::Succeeded)
            << name;
        ASSERT_TRUE(binding.Save(&code, PolLibrary.c_str(), written.Path(), nullptr)) << name;
        const std::string copy = ReadBytes(written.Path());

        std::vector<ozPolRecord> expected, actual;
        ozPolError error;
        ASSERT_TRUE(ozReadPolRecords(original, expected, error)) << name << ": " << error.what;
        ASSERT_TRUE(ozReadPolRecords(copy, actual, error)) << name << ": " << error.what;
        ASSERT_EQ(actual.size(), expected.size()) << name;
        for (std::size_t i = 0; i < expected.size(); ++i)
            ASSERT_EQ(Describe(actual[i]), Describe(expected[i])) << name << " record " << i;
        EXPECT_TRUE(copy == original) << name << " differs in its bytes";
    }
}

}  // namespace
