// Saving through each profile library as the control does: a save that fails changes no file
// and says why through the host, and a save replaces a profile where it really is (through its
// symbolic link), with its permissions, refusing a read-only one.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "control/ozProfileBinding.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "platform/ozReplacementFile.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTestFiles.h"

#if !defined(_WIN32)
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

namespace fs = std::filesystem;

struct Library {
    std::string path;
    std::string suffix;
};

const Library Libraries[] = {{ozPlatformPath(OZ_OZP_LIBRARY), ".ozp"},
                             {ozPlatformPath(OZ_POL_LIBRARY), ".pol"},
                             {ozPlatformPath(OZ_REG_LIBRARY), ".reg"}};

// A key with a value in each tree, which every library writes.
void Fill(tTreeCodeHandle& code)
{
    code.tree->MacTree().FindKey(HKEY_LOCAL_MACHINE, "Software\\M")->FindValue("v")->SetDWORD(1);
    code.tree->UsrTree().FindKey(HKEY_CURRENT_USER, "Software\\U")->FindValue("v")->SetDWORD(2);
    code.modified = 1;
}

bool LeftTemporaryFiles(const std::string& path)
{
    fs::path target(path);
    for (const auto& entry : fs::directory_iterator(target.parent_path()))
        if (entry.path().filename().string().rfind(target.filename().string() + ".~", 0) == 0)
            return true;
    return false;
}

enum class Trouble { MissingFolder, ReadOnlyUserFile, UserFileIsFolder, OperationWithoutForm };

TEST(ProfileSave, FailedSaveLeavesEveryFileAsItWas)
{
    const struct Row {
        Trouble trouble;
        const char* said;
        bool ozpCanWriteIt;
    } rows[] = {
        {Trouble::MissingFolder, "No such file or directory", false},  // the system's text
        // The tests may run as the administrator, who could write the file all the same.
        {Trouble::ReadOnlyUserFile, "is read-only", false},
        {Trouble::UserFileIsFolder, "it is a folder", false},
        // An append has no form in a Registry.pol or .reg file.
        {Trouble::OperationWithoutForm, "'A'", true},
    };
    for (const Library& library : Libraries) {
        for (const Row& row : rows) {
            if (row.ozpCanWriteIt && library.suffix == ".ozp")
                continue;
            SCOPED_TRACE(library.suffix + " " + row.said);
            ozTestFile user("save-user" + library.suffix, "old user");
            ozTestFile machine("save-machine" + library.suffix, "old machine");
            std::string userPath = user.Path();
            tTreeCodeHandle code;
            Fill(code);
            switch (row.trouble) {
                case Trouble::MissingFolder:
                    userPath = ozTestFilePath("no-such-folder") + "/user" + library.suffix;
                    break;
                case Trouble::ReadOnlyUserFile:
                    fs::permissions(
                        user.Path(),
                        fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                        fs::perm_options::remove);
                    break;
                case Trouble::UserFileIsFolder:
                    userPath = ozTestFilePath("save-folder" + library.suffix);
                    fs::create_directory(userPath);
                    break;
                case Trouble::OperationWithoutForm: {
                    ozRegValue* append = code.tree->UsrTree()
                                             .FindKey(HKEY_CURRENT_USER, "Software\\U")
                                             ->FindValue("a");
                    append->SetString("x");
                    append->Op(OpAppend);
                    break;
                }
            }
            ozRecordingHostUI ui;
            ozProfileBinding binding(ui, ozTestMessageText);
            testing::internal::CaptureStderr();
            EXPECT_FALSE(
                binding.Save(&code, library.path.c_str(), userPath.c_str(), machine.Path()));
            EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << "the host shows the message";
            ASSERT_EQ(ui.messages.size(), 1u);
            EXPECT_EQ(ui.messages[0].text.rfind("97: ", 0), 0u) << ui.messages[0].text;
            EXPECT_NE(ui.messages[0].text.find(row.said), std::string::npos) << ui.messages[0].text;
            EXPECT_EQ(code.modified, 1u);
            EXPECT_EQ(ozReadTestFile(machine.Path()), "old machine");
            EXPECT_EQ(ozReadTestFile(user.Path()), "old user");
            EXPECT_FALSE(LeftTemporaryFiles(machine.Path()));
            EXPECT_FALSE(LeftTemporaryFiles(user.Path()));
            fs::permissions(user.Path(), fs::perms::owner_write, fs::perm_options::add);
            fs::remove(ozTestFilePath("save-folder" + library.suffix));
        }
    }
}

// A rename that fails after other files of the save were committed: what they replaced is put
// back, and a file that was not there before is removed again.
TEST(ProfileSave, LateFailedRenamePutsBackWhatWasReplaced)
{
    ozTestFile kept("late-kept.ozp", "old"), added("late-added.ozp");
    fs::remove(added.Path());
    const std::string blocked = ozTestFilePath("late-blocked.ozp");
    ozReplacementFile first(kept.Path()), second(added.Path()), third(blocked);
    for (ozReplacementFile* file : {&first, &second, &third})
        ASSERT_TRUE(file->Open().IsOk() && file->Write("new").IsOk());
    fs::create_directories(blocked + "/in-the-way");  // a folder takes its place after Open
    EXPECT_FALSE(ozReplacementFile::CommitAll({&first, &second, &third}).IsOk());
    EXPECT_EQ(ozReadTestFile(kept.Path()), "old");
    EXPECT_FALSE(fs::exists(added.Path()));
    EXPECT_FALSE(LeftTemporaryFiles(kept.Path()));
    fs::remove_all(blocked);
}

#if !defined(_WIN32)
// The link stays a link to the new profile; mode and owner stay those of the file it replaces.
TEST(ProfileSave, ReplacesTheFileALinkLeadsToWithItsPermissions)
{
    for (const Library& library : Libraries) {
        SCOPED_TRACE(library.suffix);
        ozTestFile real("save-real" + library.suffix, "old");
        ozTestFile machine("save-machine" + library.suffix, "old");
        std::string link = ozTestFilePath("save-link" + library.suffix);
        fs::create_symlink(fs::path(real.Path()).filename(), link);
        fs::permissions(real.Path(), fs::perms(0640));
        fs::permissions(machine.Path(), fs::perms(0604));
        // Only the administrator can give the file to someone else first.
        const bool givenAway = geteuid() == 0 && chown(real.Path(), 65534, 65534) == 0;

        tTreeCodeHandle code;
        Fill(code);
        ozRecordingHostUI ui;
        ozProfileBinding binding(ui, ozTestMessageText);
        EXPECT_TRUE(binding.Save(&code, library.path.c_str(), link.c_str(), machine.Path()));
        EXPECT_TRUE(ui.messages.empty()) << ui.messages[0].text;
        EXPECT_TRUE(fs::is_symlink(link));
        EXPECT_NE(ozReadTestFile(real.Path()), "old");
        EXPECT_EQ(fs::status(real.Path()).permissions(), fs::perms(0640));
        EXPECT_EQ(fs::status(machine.Path()).permissions(), fs::perms(0604));
        struct stat info;
        ASSERT_EQ(stat(real.Path(), &info), 0);
        EXPECT_EQ(info.st_uid == 65534u, givenAway);
        fs::remove(link);
    }
}
#endif

}  // namespace
