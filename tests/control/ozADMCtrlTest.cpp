// The control as a host drives it: templates in, profiles loaded and saved through the .ozp
// library, the flags that decide whether to save, the policy queries, and the methods that are
// fixed to a result.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "control/CADMCtrl.h"
#include "core/adm/ozADMEditText.h"
#include "core/adm/ozADMPolicy.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozSubKey.h"
#include "platform/ozRegistryApi.h"
#include "platform/ozSystemMessage.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTemplateLoad.h"
#include "tests/support/ozTestFiles.h"
#include "tests/support/ozTestRegistry.h"

namespace {

const std::string Template = ozSourcePath("tests/templates/every-part.adm");
const std::string Library = ozPlatformPath(OZ_OZP_LIBRARY);

class ControlTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(control.SetEBNF(ozSourcePath("grammar/adm.bnf").c_str()));
        control.ozImpExLibrary(Library);
        control.AddString(75, "Save anyway?");
        control.AddString(94, "Cannot load %s");
    }
    void Enable(const char* path)
    {
        auto* policy = static_cast<ozADMPolicy*>(control.Code()->tree->FindNode(path));
        ASSERT_NE(policy, nullptr) << path;
        policy->State(PolicyEnabled);
    }
    std::string Messages() const
    {
        std::string all;
        for (const auto& message : ui.messages)
            all += (all.empty() ? "" : " | ") + message.text;
        return all;
    }

    ozRecordingHostUI ui;
    CADMCtrl control{ui};
    ozTestFile user{"control-user.ozp"};
    ozTestFile machine{"control-machine.ozp"};
};

// In the policy view a save writes the policies into the registry trees first (that the states
// come back is PolicyRoundTripTest's).
TEST_F(ControlTest, PolicyViewSaveWritesThePolicies)
{
    ASSERT_TRUE(control.SetADM(Template.c_str()));
    control.DisplayMode(DisplayPolicies);
    Enable("USER\\Desktop\\High-contrast colors");
    ASSERT_TRUE(control.Save(user.Path(), machine.Path())) << Messages();
    EXPECT_NE(ozReadTestFile(user.Path())
                  .find("[HKEY_CURRENT_USER\\Software\\Policies\\ozADM\\"
                        "Desktop\\Colors]\nkey op=I flags=\n"
                        "value \"Colors\" type=1 item=r op=D data=\"\""),
              std::string::npos)
        << ozReadTestFile(user.Path());

    // Cleanup and an unknown path are the session script's.
    control.Cleanup();
    ASSERT_TRUE(control.SetADM(Template.c_str()));
    EXPECT_TRUE(control.PolicyConfigures("MACHINE\\Network").IsEmpty()) << "a category";
}

// A required part left empty in an enabled policy refuses the save before anything is
// written, naming the policy and the part.
TEST_F(ControlTest, RequiredPartLeftEmptyRefusesTheSave)
{
    control.AddString(99, "%s|%s");
    ASSERT_TRUE(control.SetADM(Template.c_str()));
    control.DisplayMode(DisplayPolicies);
    Enable("MACHINE\\Network\\Proxy server");
    auto* proxy =
        static_cast<ozADMPolicy*>(control.Code()->tree->FindNode("MACHINE\\Network\\Proxy server"));
    static_cast<ozADMEditText*>(proxy->Controls().At(0))->Value("");
    EXPECT_FALSE(control.SaveSelState());
    EXPECT_FALSE(control.Save(user.Path(), machine.Path()));
    EXPECT_EQ(Messages(),
              "MACHINE\\Network\\Proxy server|Server name | "
              "MACHINE\\Network\\Proxy server|Server name");
    EXPECT_EQ(ozReadTestFile(user.Path()), "") << "nothing saved";
    EXPECT_EQ(proxy->RegKey()->HasValue("UseProxy"), nullptr) << "nothing written";
}

TEST_F(ControlTest, SaveAfterFailedLoadAsksFirst)
{
    ASSERT_TRUE(control.SetADM(Template.c_str()));
    user.Write("not a profile");
    EXPECT_FALSE(control.Load(user.Path(), nullptr));
    EXPECT_TRUE(control.LoadFailed());
    control.Code()->modified = 1;

    ui.answerYes = false;
    EXPECT_FALSE(control.Save(user.Path(), machine.Path()));
    EXPECT_EQ(Messages(), "Save anyway?");
    EXPECT_EQ(ozReadTestFile(user.Path()), "not a profile") << "nothing written";
    EXPECT_TRUE(control.ShouldSave());

    ui.answerYes = true;
    EXPECT_TRUE(control.Save(user.Path(), machine.Path()));
    EXPECT_FALSE(control.ShouldSave());
}

TEST_F(ControlTest, TemplatesMergeAndFailuresShowTheEngineMessage)
{
    ozTestFile broken("control-broken.adm", "CLASS MACHINE\nCATEGORY Kept\nPOLICY");
    EXPECT_FALSE(control.SetADM(broken.Path()));
    EXPECT_EQ(control.GetCode(), 0u) << "nothing of a failed first template is kept";
    EXPECT_TRUE(control.ConfiguredPolicies().IsEmpty());

    ui.messages.clear();
    ASSERT_TRUE(control.SetADM(Template.c_str()));
    ASSERT_TRUE(control.SetADM(ozSourcePath("tests/templates/seldom-used.adm").c_str()));
    EXPECT_NE(control.Code()->tree->FindNode("USER\\Cat\\Pol"), nullptr);
    EXPECT_NE(control.Code()->tree->FindNode("USER\\Desktop\\Wallpaper"), nullptr);
    EXPECT_EQ(control.GetCode(), reinterpret_cast<std::uintptr_t>(control.Code()));

    EXPECT_FALSE(control.SetADM(broken.Path()));
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].kind, HostMessageError);
    EXPECT_NE(ui.messages[0].text.find(broken.Path()), std::string::npos) << Messages();
    ASSERT_NE(control.Code(), nullptr) << "what was merged so far stays";
    EXPECT_NE(control.Code()->tree->FindNode("USER\\Cat\\Pol"), nullptr);
    // Nor do the [strings] of a failed template decide the references of the next one.
    broken.Write("CLASS MACHINE\nCATEGORY !!Cat\nPOLICY\n[strings]\nCat=\"Taken\"\n");
    EXPECT_FALSE(control.SetADM(broken.Path()));
    ozTestFile refers("control-refers.adm", "CLASS MACHINE\nCATEGORY !!Cat\nEND CATEGORY\n");
    EXPECT_FALSE(control.SetADM(refers.Path())) << "CAT is not defined";

    // Whatever keeps a template from being read, the templates held are not lost.
    tTreeCodeHandle* code = control.Code();
    for (const std::string& unreadable : {ozTestFilePath("no-such-template.adm"),
                                          std::filesystem::temp_directory_path().string()}) {
        ui.messages.clear();
        EXPECT_FALSE(control.SetADM(unreadable.c_str()));
        EXPECT_NE(ui.messages.at(0).text.find("error 10"), std::string::npos) << Messages();
        EXPECT_EQ(control.Code(), code) << unreadable;
        EXPECT_NE(control.Code()->tree->FindNode("USER\\Cat\\Pol"), nullptr);
    }

    ui.messages.clear();
    EXPECT_FALSE(control.SetEBNF("no-such-grammar.bnf"));
    EXPECT_EQ(ui.messages.size(), 1u);
}

TEST_F(ControlTest, CodeObjectsOfAnotherKindOrVersionAreRefused)
{
    control.AddString(55, "wrong kind");
    control.AddString(56, "too old");
    ASSERT_TRUE(control.SetADM(Template.c_str()));
    control.Code()->versionMinor = 0;
    EXPECT_FALSE(control.SetADM(Template.c_str()));
    control.Code()->versionMinor = 1;
    control.Code()->kind = 7;
    EXPECT_FALSE(control.SetADM(Template.c_str()));
    EXPECT_EQ(Messages(), "too old | wrong kind");
    EXPECT_NE(control.Code(), nullptr) << "refused but kept, to be cleaned up";
}

TEST_F(ControlTest, LibraryNameIsCutAt260AndUnknownStringsAreEmpty)
{
    EXPECT_EQ(control.ozImpExLibrary(), Library);
    control.ozImpExLibrary(std::string(300, 'x'));
    EXPECT_EQ(control.ozImpExLibrary(), std::string(260, 'x'));
    EXPECT_TRUE(control.ControlModified());
    EXPECT_EQ(control.GetString(4321), "") << "never added";
}

// A profile loaded on its own marks the code object of the control constructed last, which is
// reached through the application object.
TEST_F(ControlTest, LoadOZRegMarksTheCurrentControl)
{
    ASSERT_TRUE(control.SetADM(Template.c_str()));
    ASSERT_TRUE(control.Save(user.Path(), machine.Path()));
    {
        ozRecordingHostUI otherUI;
        CADMCtrl other(otherUI);
        ASSERT_TRUE(other.SetEBNF(ozSourcePath("grammar/adm.bnf").c_str()));
        ASSERT_TRUE(other.SetADM(Template.c_str()));
        ASSERT_TRUE(control.LoadOZReg(user.Path()));
        EXPECT_FALSE(control.ShouldSave());
        EXPECT_TRUE(other.ShouldSave());
    }
    ASSERT_TRUE(control.SetEBNF(ozSourcePath("grammar/adm.bnf").c_str()))
        << "the grammar stays while a control lives";
}

TEST_F(ControlTest, AddFromRegistryMarksTheProfileAndNamesWhatCannotBeRead)
{
    ozTestRegistry registry;
    registry.SetString("Imported\\Sub", "Name", "text");
    registry.SetDword("Imported", "Count", 3);
    registry.Publish();
#if !defined(_WIN32)
    ASSERT_TRUE(ozRegistryUseLocalMachine(registry.Folder().c_str(), nullptr));
#endif
    EXPECT_FALSE(control.AddFromRegistry(1, "Software", nullptr, true)) << "no code object";
    ASSERT_TRUE(control.SetADM(Template.c_str()));

    std::string key = std::string(ozTestRegistry::Base) + "\\Imported";
    EXPECT_TRUE(control.AddFromRegistry(1, key.c_str(), "", true)) << "an empty value: the key";
    EXPECT_TRUE(control.ShouldSave());
    ozSubKey* sub =
        control.Code()->tree->UsrTree().HasKey(HKEY_CURRENT_USER, (key + "\\Sub").c_str());
    ASSERT_NE(sub, nullptr);
    EXPECT_NE(sub->HasValue("Name"), nullptr);

    control.Code()->modified = 0;
    control.AddString(98, "key %s, error %s: %s");
    EXPECT_FALSE(control.AddFromRegistry(1, (key + "\\Missing").c_str(), nullptr, false));
    EXPECT_TRUE(control.ShouldSave()) << "marked even when nothing could be read";
    EXPECT_EQ(
        control.Code()->tree->UsrTree().HasKey(HKEY_CURRENT_USER, (key + "\\Missing").c_str()),
        nullptr);
    ASSERT_FALSE(ui.messages.empty());
    EXPECT_EQ(ui.messages.back().text,
              "key " + key + "\\Missing, error 2: " + ozSystemMessage(ERROR_FILE_NOT_FOUND));
#if !defined(_WIN32)
    ozRegistryUseLocalMachine(nullptr, nullptr);
#endif
}

}  // namespace
