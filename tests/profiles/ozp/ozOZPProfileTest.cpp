// The ".ozp" profile library through the entry points the control binds: everything a key
// and its values carry survives a save and a load, a save replaces a profile only when it is
// complete, and malformed profiles are refused with the line that is wrong.
#include <gtest/gtest.h>

#include <string>

#include "control/ozProfileBinding.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "platform/ozDynamicLibrary.h"
#include "profiles/ozProfileLibrary.h"
#include "profiles/ozp/ozOZPImporter.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTestFiles.h"
#include "tests/support/ozTreeDescription.h"

namespace {

const std::string Library = ozPlatformPath(OZ_OZP_LIBRARY);

// Keys and values of every kind in both trees.
void Fill(tTreeCodeHandle& code)
{
    ozRegTree& machine = code.tree->MacTree();
    ozSubKey* policies = machine.FindKey(HKEY_LOCAL_MACHINE, "Software\\Policies\\oz]ADM");
    policies->Save(true);
    policies->ADM(true);
    policies->FindValue("Text")->SetString("quote \" backslash \\ tab \t new\nline \xC3\xA9");
    policies->FindValue("Path")->SetExpandString("%SystemRoot%\\x");
    policies->FindValue("")->SetDWORD(0x00414243);
    const unsigned char binary[] = {0, 1, 0xFF, 0};
    policies->FindValue("Binary")->SetData(RegBinary, sizeof binary, binary);
    const unsigned char multi[] = {'a', 0, 'b', 0, 0};
    policies->FindValue("Multi")->SetData(RegMultiSz, sizeof multi, multi);
    policies->FindValue("Empty")->SetData(RegBinary, 0, binary);
    policies->FindValue("NoData");
    // The widest type a Registry.pol record carries.
    policies->FindValue("Wide")->SetData(4294967295ul, sizeof binary, binary);
    policies->FindValue("Gone")->SetDelete();
    ozRegValue* change = policies->FindValue("Ch");
    change->SetString("new");
    change->Op(OpChange);
    change->SetData2(RegSz, 4, reinterpret_cast<const unsigned char*>("old"));
    machine.FindKey(HKEY_LOCAL_MACHINE, "Software\\Erased")->Op(KeyOpEraseValues);
    machine.FindKey(HKEY_CLASSES_ROOT, ".ozp")->Selected(true);

    ozRegTree& user = code.tree->UsrTree();
    user.FindKey(HKEY_CURRENT_USER, "Software\\ozADM")->WVar(true);
    user.FindKey(HKEY_CURRENT_USER, "Software\\ozADM")->FindValue("Count")->SetDWORD(7);
    ozRegValue* item = user.FindKey(HKEY_LOCAL_MACHINE, "Software\\Machine")->FindValue("Item");
    item->RIT(RitM);
    item->SetString("m");
}

class OZPProfileTest : public ::testing::Test {
protected:
    ozTestFile user{"ozp-user.ozp"};
    ozTestFile machine{"ozp-machine.ozp"};
    ozRecordingHostUI ui;
    ozProfileBinding binding{ui, ozTestMessageText};
};

TEST_F(OZPProfileTest, SaveAndLoadKeepEverything)
{
    tTreeCodeHandle saved;
    Fill(saved);
    ASSERT_TRUE(binding.Save(&saved, Library.c_str(), user.Path(), machine.Path()));
    tTreeCodeHandle loaded;
    ASSERT_EQ(binding.Load(&loaded, Library.c_str(), user.Path(), machine.Path()),
              tPROFILELOAD::Succeeded);
    for (bool userTree : {false, true}) {
        ozRegTree& expected = userTree ? saved.tree->UsrTree() : saved.tree->MacTree();
        ozRegTree& actual = userTree ? loaded.tree->UsrTree() : loaded.tree->MacTree();
        std::string difference =
            ozFirstDifference(ozDescribeRegistry(expected), ozDescribeRegistry(actual));
        EXPECT_TRUE(difference.empty())
            << (userTree ? "user" : "machine") << " tree, " << difference << "\n"
            << ozReadTestFile(machine.Path()) << ozReadTestFile(user.Path());
    }
    EXPECT_TRUE(ui.messages.empty());

    // Written again, the profiles have the same bytes.
    std::string firstMachine = ozReadTestFile(machine.Path());
    ASSERT_TRUE(binding.Save(&loaded, Library.c_str(), user.Path(), machine.Path()));
    EXPECT_EQ(ozReadTestFile(machine.Path()), firstMachine);

    // One file holds both profiles.
    ASSERT_TRUE(binding.Save(&saved, Library.c_str(), user.Path(), user.Path()));
    tTreeCodeHandle both;
    ASSERT_EQ(binding.Load(&both, Library.c_str(), user.Path(), nullptr), tPROFILELOAD::Succeeded);
    EXPECT_EQ(ozDescribeRegistry(both.tree->MacTree()), ozDescribeRegistry(saved.tree->MacTree()));
    EXPECT_EQ(ozDescribeRegistry(both.tree->UsrTree()), ozDescribeRegistry(saved.tree->UsrTree()));
}

TEST_F(OZPProfileTest, ProfileWithoutFileIsPassedOver)
{
    tTreeCodeHandle saved;
    Fill(saved);
    EXPECT_TRUE(binding.Save(&saved, Library.c_str(), user.Path(), ""));
    EXPECT_EQ(ozReadTestFile(user.Path()).find("HKEY_LOCAL_MACHINE\\Software\\Policies"),
              std::string::npos);
    EXPECT_NE(ozReadTestFile(user.Path()).find("[HKEY_CURRENT_USER\\Software\\ozADM]"),
              std::string::npos);
}

// Given back by a control that does not ask for completion, the exporter completes the save
// itself; until then the previous file stays.
TEST_F(OZPProfileTest, SaveReplacesTheProfileOnlyWhenComplete)
{
    tTreeCodeHandle code;
    Fill(code);
    user.Write("previous profile");
    ozDynamicLibrary library;
    ASSERT_TRUE(library.Load(Library.c_str())) << library.Error();
    auto init = reinterpret_cast<ozInitExportObjectFunction>(library.Function("InitExportObject"));
    auto destroy =
        reinterpret_cast<ozDestroyExportObjectFunction>(library.Function("DestroyExportObject"));
    ozRegExport* exporter = init();
    exporter->Code(&code);
    ASSERT_TRUE(exporter->BeginUserProfile(user.Path()));
    ASSERT_TRUE(code.tree->UsrTree().Save(exporter));
    EXPECT_EQ(ozReadTestFile(user.Path()), "previous profile")
        << "interrupted here, nothing is lost";
    destroy(exporter);
    EXPECT_EQ(ozReadTestFile(user.Path()).rfind("OZ Registry Profile 1\n", 0), 0u);
}

TEST_F(OZPProfileTest, MalformedProfilesNameTheLine)
{
    const std::string head = "OZ Registry Profile 1\n";
    const std::string key = "[HKEY_CURRENT_USER\\Software\\Kept]\n";
    struct Row {
        std::string text;
        const char* where;
    } rows[] = {
        {"", ": not an OZ Registry Profile (empty)"},
        {"REGEDIT4\n", ":1: not an OZ Registry Profile"},
        {"OZ Registry Profile 2\n", ":1: format version 2 is not read"},
        {"OZ Registry Profile x\n", ":1: the format version is not a number"},
        {head + "value \"a\" type=1 item=r op=I data=\"x\"\n", ":2: a value before any key"},
        {head + "[NOROOT\\Software]\n", ":2: a key section reads"},
        {head + "[HKEY_CURRENT_USER]\n", ":2: a key section reads"},
        {head + key + "key op=X flags=\n", ":3: a key line reads"},
        {head + key + "key op=I flags=loud\n", ":3: a key line reads"},
        {head + key + "value \"a\" type=1 item=r op=I data=\"x\nvalue\n", ":3: a value line"},
        {head + key + "value \"a\" type=1 item=z op=I data=\"x\"\n", ":3: a value line"},
        {head + key + "value \"a\" type=1 item=r op=I data=hex:0\n", ":3: a value line"},
        {head + key + "value \"a\" type=1 item=r op=I data=\"\\q\"\n", ":3: a value line"},
        {head + key + "value \"a\" type=4 item=r op=I data=dword:12\n", ":3: a value line"},
        {head + key + "value \"a\" type=1 item=r op=I data=none extra\n", ":3: a value line"},
        {head + key + "value \"a\" type=4294967296 item=r op=I data=none\n", ":3: a value line"},
        {head + key + "garbage\n", ":3: unknown line"},
    };
    // The importer itself, so that its message can be read wherever its output goes.
    ozDynamicLibrary library;
    ASSERT_TRUE(library.Load(Library.c_str())) << library.Error();
    auto init = reinterpret_cast<ozInitImportObjectFunction>(library.Function("InitImportObject"));
    auto destroy =
        reinterpret_cast<ozDestroyImportObjectFunction>(library.Function("DestroyImportObject"));
    auto import = [&](tTreeCodeHandle& code, std::string* message) {
        ozRegImport* importer = init();
        importer->CodeHandle(&code);
        testing::internal::CaptureStderr();
        bool imported = importer->ImportUserProfile(user.Path());
        testing::internal::GetCapturedStderr();
        *message = static_cast<ozOZPImporter*>(importer)->LastError();
        destroy(importer);
        return imported;
    };
    for (const Row& row : rows) {
        tTreeCodeHandle code;
        user.Write(row.text);
        std::string message;
        EXPECT_FALSE(import(code, &message)) << row.text;
        EXPECT_NE(message.find(std::string(user.Path()) + row.where), std::string::npos)
            << "for " << row.text << " came " << message;
    }

    tTreeCodeHandle code;
    user.Write(head + key + "value \"a\" type=1 item=r op=I data=\"x\"\n[broken\n");
    std::string message;
    EXPECT_FALSE(import(code, &message));
    ozSubKey* kept = code.tree->UsrTree().HasKey(HKEY_CURRENT_USER, "Software\\Kept");
    ASSERT_NE(kept, nullptr) << "what was read before the error stays";
    EXPECT_NE(kept->HasValue("a"), nullptr);
}

}  // namespace
