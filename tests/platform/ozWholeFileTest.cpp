#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

#include "platform/ozWholeFile.h"
#include "tests/support/ozTestFiles.h"

TEST(WholeFileTest, ReadsEveryByteOrNamesTheFileAndTheReason)
{
    const std::string content("a\0\r\n\xFF", 5);
    ozTestFile file("whole.bin", content);
    std::string bytes;
    EXPECT_TRUE(ozReadWholeFile(file.Path(), bytes).IsOk());
    EXPECT_EQ(bytes, content);

    const std::string absent = ozTestFilePath("absent.bin");
    ozStatus read = ozReadWholeFile(absent.c_str(), bytes);
    const std::string error = read.Message();
    EXPECT_EQ(read.Code(), ENOENT);
    EXPECT_TRUE(bytes.empty());
    EXPECT_EQ(error.rfind("cannot open \"" + absent + "\": ", 0), 0u) << error;
    EXPECT_GT(error.size(), absent.size() + 16) << "the system's reason follows: " << error;

    // A folder opens on some systems and fails only when read; either way it is no file.
    const std::string folder = std::filesystem::temp_directory_path().string();
    read = ozReadWholeFile(folder.c_str(), bytes);
    EXPECT_FALSE(read.IsOk());
    EXPECT_NE(read.Code(), ENOENT);
    EXPECT_NE(read.Message().find("\"" + folder + "\": "), std::string::npos) << read.Message();
}
