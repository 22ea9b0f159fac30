// Binding profile libraries: which entry points are looked up and reported missing, the order
// in which exporters and importers are driven, what happens to the code object's flags, and
// that every library is released again.
#include <gtest/gtest.h>

#include <string>

#include "control/ozMessageFormat.h"
#include "control/ozProfileBinding.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozSubKey.h"
#include "platform/ozDynamicLibrary.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTestFiles.h"

namespace {

using CallsFunction = const char* (*)();
using ResetFunction = void (*)();

// Binds libraries as the control does, keeping each test library loaded meanwhile so that the
// calls it recorded can be read after the binding released it.
class ProfileBindingTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        code.tree->MacTree().FindKey(HKEY_LOCAL_MACHINE, "Software\\A\\B");
        code.tree->UsrTree().FindKey(HKEY_CURRENT_USER, "Software\\C");
        code.modified = 1;
    }
    void Use(const char* library)
    {
        path = ozPlatformPath(library);
        ASSERT_TRUE(kept.Load(path.c_str())) << kept.Error();
        reinterpret_cast<ResetFunction>(kept.Function("TestProfileReset"))();
    }
    std::string Calls() const
    {
        return reinterpret_cast<CallsFunction>(kept.Function("TestProfileCalls"))();
    }
    std::string Messages() const
    {
        std::string all;
        for (const auto& message : ui.messages)
            all += (all.empty() ? "" : " | ") + message.text;
        return all;
    }

    tTreeCodeHandle code;
    ozRecordingHostUI ui;
    ozProfileBinding binding{ui, ozTestMessageText};
    ozDynamicLibrary kept;
    std::string path;
};

TEST_F(ProfileBindingTest, SaveWritesTheMachineProfileFirst)
{
    Use(OZ_TEST_PROFILE_RECORDING);
    EXPECT_TRUE(binding.Save(&code, path.c_str(), "user.ozp", "machine.ozp"));
    EXPECT_EQ(Calls(),
              "InitExportObject BeginMachineProfile(machine.ozp,code) ExportKey(2:Software) "
              "ExportKey(2:Software\\A) ExportKey(2:Software\\A\\B) BeginUserProfile(user.ozp) "
              "ExportKey(1:Software) ExportKey(1:Software\\C) DestroyExportObject");
    EXPECT_EQ(code.modified, 0u) << "a save clears the modified flag";
    EXPECT_TRUE(ui.messages.empty()) << Messages();
}

TEST_F(ProfileBindingTest, FailingMachineProfileEndsTheSave)
{
    Use(OZ_TEST_PROFILE_MACHINE_FAILS);
    EXPECT_FALSE(binding.Save(&code, path.c_str(), "user.ozp", "machine.ozp"));
    EXPECT_EQ(Calls(), "InitExportObject BeginMachineProfile(machine.ozp,code) DestroyExportObject")
        << "no key is exported and the user profile is never begun";
    EXPECT_EQ(code.modified, 1u);
}

TEST_F(ProfileBindingTest, CompletionTheLibraryReportsFailedFailsTheSave)
{
    Use(OZ_TEST_PROFILE_COMPLETE_FAILS);
    EXPECT_FALSE(binding.Save(&code, path.c_str(), "user.ozp", "machine.ozp"));
    EXPECT_NE(Calls().find("ExportKey(1:Software\\C) CompleteExportObject(complete) "
                           "DestroyExportObject"),
              std::string::npos)
        << Calls();
    EXPECT_EQ(Messages(), "97: machine.ozp cannot be replaced");
    EXPECT_EQ(code.modified, 1u);
}

TEST_F(ProfileBindingTest, LoadReadsTheUserProfileFirst)
{
    Use(OZ_TEST_PROFILE_RECORDING);
    EXPECT_EQ(binding.Load(&code, path.c_str(), "user.ozp", "machine.ozp"),
              tPROFILELOAD::Succeeded);
    EXPECT_EQ(Calls(),
              "InitImportObject ImportUserProfile(user.ozp,code) "
              "ImportMachineProfile(machine.ozp) DestroyImportObject");
    EXPECT_EQ(code.modified, 0u);

    reinterpret_cast<ResetFunction>(kept.Function("TestProfileReset"))();
    EXPECT_EQ(binding.Load(&code, path.c_str(), "user.ozp", ""), tPROFILELOAD::Succeeded);
    EXPECT_EQ(binding.Load(&code, path.c_str(), "user.ozp", nullptr), tPROFILELOAD::Succeeded);
    EXPECT_EQ(Calls(),
              "InitImportObject ImportUserProfile(user.ozp,code) DestroyImportObject "
              "InitImportObject ImportUserProfile(user.ozp,code) DestroyImportObject")
        << "an empty or missing machine profile is not read";
}

TEST_F(ProfileBindingTest, FailedImportStillClearsTheModifiedFlag)
{
    Use(OZ_TEST_PROFILE_RECORDING);
    EXPECT_EQ(binding.Load(&code, path.c_str(), "failing", "machine.ozp"), tPROFILELOAD::Failed);
    EXPECT_EQ(Calls(),
              "InitImportObject ImportUserProfile(failing,code) "
              "ImportMachineProfile(machine.ozp) DestroyImportObject");
    EXPECT_EQ(code.modified, 0u);
    code.modified = 1;
    EXPECT_EQ(binding.Load(&code, path.c_str(), "user.ozp", "failing"), tPROFILELOAD::Failed);
}

TEST_F(ProfileBindingTest, MissingEntryPointsAreNamedInitFirst)
{
    Use(OZ_TEST_PROFILE_NO_DESTROY_EXPORT);
    EXPECT_FALSE(binding.Save(&code, path.c_str(), "u", "m"));
    EXPECT_EQ(Messages(), "95: DestroyExportObject " + path);
    EXPECT_EQ(Calls(), "") << "nothing is created that could not be given back";

    ui.messages.clear();
    Use(OZ_TEST_PROFILE_NO_ENTRY_POINTS);
    EXPECT_FALSE(binding.Save(&code, path.c_str(), "u", "m"));
    EXPECT_EQ(Messages(), "95: InitExportObject " + path + " | 95: DestroyExportObject " + path);
    ui.messages.clear();
    EXPECT_EQ(binding.Load(&code, path.c_str(), "u", "m"), tPROFILELOAD::Failed);
    EXPECT_EQ(Messages(), "95: InitImportObject " + path + " | 95: DestroyImportObject " + path);
}

TEST_F(ProfileBindingTest, LibraryWithoutObjects)
{
    Use(OZ_TEST_PROFILE_INIT_NONE);
    EXPECT_FALSE(binding.Save(&code, path.c_str(), "u", "m"));
    EXPECT_EQ(binding.Load(&code, path.c_str(), "u", "m"), tPROFILELOAD::Failed);
    EXPECT_EQ(Messages(), "96: | 96:");
    EXPECT_EQ(Calls(), "InitExportObject InitImportObject");
}

TEST_F(ProfileBindingTest, LibraryThatCannotBeLoaded)
{
    std::string missing = ozTestFilePath("no-such-profile-library.dll");
    EXPECT_FALSE(binding.Save(&code, missing.c_str(), "u", "m"));
    EXPECT_EQ(binding.Load(&code, missing.c_str(), "u", "m"), tPROFILELOAD::LibraryNotLoaded);
    EXPECT_EQ(Messages(), "94: " + missing + " | 94: " + missing);
    EXPECT_EQ(code.modified, 1u) << "a load that could not start leaves the flag";
    EXPECT_FALSE(binding.Save(nullptr, missing.c_str(), "u", "m")) << "no code object";
    EXPECT_EQ(binding.Load(nullptr, missing.c_str(), "u", "m"), tPROFILELOAD::NoCodeObject);
    EXPECT_EQ(ui.messages.size(), 2u);
}

#if !defined(_WIN32)
TEST_F(ProfileBindingTest, DllNameFindsTheSharedObject)
{
    std::string shared = OZ_TEST_PROFILE_RECORDING;
    size_t slash = shared.rfind('/');
    ASSERT_EQ(shared.compare(slash + 1, 3, "lib"), 0);
    std::string dll = shared.substr(0, slash + 1) +
                      shared.substr(slash + 4, shared.size() - slash - 4 - 3) + ".dll";
    Use(OZ_TEST_PROFILE_RECORDING);
    EXPECT_TRUE(binding.Save(&code, dll.c_str(), "u", "m")) << Messages();
}
#endif

TEST(MessageFormat, ArgumentsFillPercentS)
{
    EXPECT_EQ(ozFormatMessage("Cannot load %s.", {"lib.dll"}), "Cannot load lib.dll.");
    EXPECT_EQ(ozFormatMessage("%s missing in %s", {"Init", "lib"}), "Init missing in lib");
    EXPECT_EQ(ozFormatMessage("%s and %s", {"one"}), "one and ") << "arguments run out";
    EXPECT_EQ(ozFormatMessage("100%% %d %n %", {"x"}), "100% %d %n %") << "never printf";
    EXPECT_EQ(ozFormatMessage("no arguments", {"x"}), "no arguments");
}

}  // namespace
