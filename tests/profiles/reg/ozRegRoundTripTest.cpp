// Writing the trees through the library's exporter and reading the files back: the trees come
// back the same, the files have the form the format prescribes, and every .reg file of the
// corpus reads and round-trips.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>

#include "core/registry/ozRegTree.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "ozRegProfileRun.h"
#include "tests/support/ozTestFiles.h"

namespace {

ozRegValue* Value(ozRegTree& tree, HKEY root, const char* key, const char* name)
{
    return tree.FindKey(root, key)->FindValue(name);
}

void SetBytes(ozRegValue* value, unsigned long type, const std::string& bytes)
{
    value->SetData(type, static_cast<unsigned long>(bytes.size()),
                   reinterpret_cast<const unsigned char*>(bytes.data()));
}

// Every form a value takes in a file, keys of every kind (saved ones without values too), under
// every root a file can name.
void FillTrees(tTreeCodeHandle& code)
{
    using namespace std::string_literals;
    ozRegTree& user = code.tree->UsrTree();
    const char* app = "Software\\ozADM\\Values";
    Value(user, HKEY_CURRENT_USER, app, "string")->SetString("back\\slash \"quoted\" ;x");
    Value(user, HKEY_CURRENT_USER, app, "")->SetString("default");
    Value(user, HKEY_CURRENT_USER, app, "with\"quote\\")->SetString("");
    Value(user, HKEY_CURRENT_USER, app, "expand")->SetExpandString("%SystemRoot%\\x");
    SetBytes(Value(user, HKEY_CURRENT_USER, app, "multi"), RegMultiSz, "one\0two\0\0"s);
    Value(user, HKEY_CURRENT_USER, app, "dword")->SetDWORD(0xC45D5A58);
    SetBytes(Value(user, HKEY_CURRENT_USER, app, "binary"), RegBinary, std::string(60, '\x7f'));
    SetBytes(Value(user, HKEY_CURRENT_USER, app, "qword"), 11, "\x01\0\0\0\0\0\0\x80"s);
    SetBytes(Value(user, HKEY_CURRENT_USER, app, "none"), RegNone, "");
    SetBytes(Value(user, HKEY_CURRENT_USER, app, "short dword"), RegDword, "\x01\x02"s);
    SetBytes(Value(user, HKEY_CURRENT_USER, app, "lines"), RegSz, "one\r\ntwo\0"s);
    SetBytes(Value(user, HKEY_CURRENT_USER, app, "unterminated"), RegSz, "abc");
    Value(user, HKEY_CURRENT_USER, app, "umlauts")
        ->SetString(ozRegNarrow(u"Gr\u00fc\u00dfe").c_str());
    Value(user, HKEY_CURRENT_USER, app, "deleted")->SetDelete();
    user.FindKey(HKEY_CURRENT_USER, "Software\\ozADM\\Empty")->Save(true);
    user.FindKey(HKEY_CURRENT_USER, "Software\\ozADM\\Erased")->Op(KeyOpEraseValues);
    ozSubKey* erasedWithValues = user.FindKey(HKEY_CURRENT_USER, "Software\\ozADM\\Refilled");
    erasedWithValues->Op(KeyOpEraseValues);
    erasedWithValues->FindValue("item")->SetString("1");
    user.FindKey(HKEY_CURRENT_USER, "Software\\ozADM\\odd ] name; [x]")->Save(true);

    ozRegTree& machine = code.tree->MacTree();
    Value(machine, HKEY_LOCAL_MACHINE, "SOFTWARE\\Policies\\ozADM", "Enabled")->SetDWORD(1);
    Value(machine, HKEY_CLASSES_ROOT, ".ozt", "")->SetString("ozADM.Template");
    machine.FindKey(HKEY_USERS, ".DEFAULT\\Software\\ozADM")->Save(true);
    Value(machine, HKEY_CURRENT_CONFIG, "Software\\ozADM", "x")->SetDelete();
}

class RegRoundTrip : public ::testing::Test {
protected:
    ozTestFile userFile{"user.reg"};
    ozTestFile machineFile{"machine.reg"};
};

TEST_F(RegRoundTrip, ExportThenImportGivesTheSameTrees)
{
    ozRegProfileRun saved;
    FillTrees(saved.Code());
    ASSERT_TRUE(saved.Save(userFile.Path(), machineFile.Path())) << saved.Errors();

    ozRegProfileRun loaded;
    ASSERT_EQ(loaded.Load(userFile.Path(), machineFile.Path()), tPROFILELOAD::Succeeded)
        << loaded.Errors();
    EXPECT_EQ(ozFirstDifference(saved.Describe(), loaded.Describe()), "");

    // One file named for both profiles holds both trees.
    ASSERT_TRUE(saved.Save(userFile.Path(), userFile.Path())) << saved.Errors();
    ozRegProfileRun both;
    ASSERT_EQ(both.Load(userFile.Path()), tPROFILELOAD::Succeeded) << both.Errors();
    EXPECT_EQ(ozFirstDifference(saved.Describe(), both.Describe()), "");
}

TEST_F(RegRoundTrip, FilesAreVersion5InUtf16WithCrLf)
{
    ozRegProfileRun saved;
    FillTrees(saved.Code());
    ASSERT_TRUE(saved.Save(userFile.Path(), machineFile.Path())) << saved.Errors();
    for (const char* path : {userFile.Path(), machineFile.Path()}) {
        std::string bytes = ozReadTestFile(path);
        std::u16string header = u"Windows Registry Editor Version 5.00\r\n\r\n[";
        ASSERT_EQ(bytes.substr(0, 2 + header.size() * 2), ozUtf16Bytes(header)) << path;
        for (size_t at = 2; at + 1 < bytes.size(); at += 2) {
            if (bytes[at] == '\n' && bytes[at + 1] == 0) {
                ASSERT_EQ(bytes.substr(at - 2, 2), std::string("\r\0", 2)) << "at " << at;
            }
        }
    }
    std::string user = ozReadTestFile(userFile.Path());
    for (std::u16string expected : {
             u"[HKEY_CURRENT_USER\\Software\\ozADM\\Values]\r\n",
             u"\"string\"=\"back\\\\slash \\\"quoted\\\" ;x\"\r\n",
             u"@=\"default\"\r\n",
             u"\"dword\"=dword:c45d5a58\r\n",
             u"\"expand\"=hex(2):25,00,53,00,",
             u"\"qword\"=hex(b):01,00,00,00,00,00,00,80\r\n",
             u"\"binary\"=hex:7f,7f,",
             u"7f,\\\r\n  7f,",
             u"\"deleted\"=-\r\n",
             u"[HKEY_CURRENT_USER\\Software\\ozADM\\Empty]\r\n",
             u"[-HKEY_CURRENT_USER\\Software\\ozADM\\Erased]\r\n",
             u"[-HKEY_CURRENT_USER\\Software\\ozADM\\Refilled]\r\n\r\n"
             u"[HKEY_CURRENT_USER\\Software\\ozADM\\Refilled]\r\n\"item\"=\"1\"\r\n",
         }) {
        EXPECT_NE(user.find(ozUtf16Bytes(expected).substr(2)), std::string::npos)
            << "missing: " << ozRegNarrow(expected);
    }
    EXPECT_EQ(user.find(ozUtf16Bytes(u"[-HKEY_CURRENT_USER\\Software\\ozADM\\Erased]\r\n\r\n["
                                     u"HKEY_CURRENT_USER\\Software\\ozADM\\Erased]")
                            .substr(2)),
              std::string::npos)
        << "an erased key without values gets no second section";
    EXPECT_EQ(user.find(ozUtf16Bytes(u"[HKEY_CURRENT_USER\\Software\\ozADM]").substr(2)),
              std::string::npos)
        << "a key along a path, neither saved nor holding values, gets no section";
}

TEST_F(RegRoundTrip, ChangeIsWrittenAsItsNewDatum)
{
    ozRegProfileRun saved;
    ozRegValue* changed =
        Value(saved.Code().tree->UsrTree(), HKEY_CURRENT_USER, "Software\\ozADM", "v");
    changed->SetString("new");
    changed->Op(OpChange);
    ASSERT_TRUE(saved.Save(userFile.Path(), machineFile.Path())) << saved.Errors();
    ozRegProfileRun loaded;
    ASSERT_EQ(loaded.Load(userFile.Path()), tPROFILELOAD::Succeeded) << loaded.Errors();
    ozRegValue* read =
        Value(loaded.Code().tree->UsrTree(), HKEY_CURRENT_USER, "Software\\ozADM", "v");
    EXPECT_EQ(read->Op(), OpInsert);
    EXPECT_EQ(read->DataText(), "new");
}

TEST(RegCorpus, EveryFileReadsAndRoundTrips)
{
    std::string folder = ozRegCorpusFolder();
    if (folder.empty())
        GTEST_SKIP() << "the corpus folder (OZ_CORPUS_DIR/reg) is not there";
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".reg")
            continue;
        ++files;
        std::string path = entry.path().string();
        SCOPED_TRACE(path);
        ozRegProfileRun read;
        ASSERT_EQ(read.Load(path), tPROFILELOAD::Succeeded) << read.Errors();
        std::vector<std::string> description = read.Describe();
        EXPECT_FALSE(description.empty());

        ozTestFile user("corpus-user.reg");
        ozTestFile machine("corpus-machine.reg");
        ASSERT_TRUE(read.Save(user.Path(), machine.Path())) << read.Errors();
        ozRegProfileRun reread;
        ASSERT_EQ(reread.Load(user.Path(), machine.Path()), tPROFILELOAD::Succeeded)
            << reread.Errors();
        EXPECT_EQ(ozFirstDifference(description, reread.Describe()), "");
    }
    EXPECT_GT(files, 0);
}

}  // namespace
