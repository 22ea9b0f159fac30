#include <gtest/gtest.h>

#include <filesystem>

#include "platform/ozWholeFile.h"
#include "tests/support/ozTestFiles.h"

TEST(WholeFileTest, ReadsEveryByteOrNamesTheFileAndTheReason)
{
    const std::string content("a\0\r\n\xFF", 5);
    ozTestFile file("whole.bin", content);
    std::string bytes, error;
    bool missing = true;
    EXPECT_TRUE(ozReadWholeFile(file.Path(), bytes, error, &missing));
    EXPECT_EQ(bytes, content);
    EXPECT_FALSE(missing);

    const std::string absent = ozTestFilePath("absent.bin");
    EXPECT_FALSE(ozReadWholeFile(absent.c_str(), bytes, error, &missing));
    EXPECT_TRUE(missing);
    EXPECT_TRUE(bytes.empty());
    EXPECT_EQ(error.rfind("cannot open \"" + absent + "\": ", 0), 0u) << error;
    EXPECT_GT(error.size(), absent.size() + 16) << "the system's reason follows: " << error;

    // A folder opens on some systems and fails only when read; either way it is no file.
    const std::string folder = std::filesystem::temp_directory_path().string();
    EXPECT_FALSE(ozReadWholeFile(folder.c_str(), bytes, error, &missing));
    EXPECT_FALSE(missing);
    EXPECT_NE(error.find("\"" + folder + "\": "), std::string::npos) << error;
}
