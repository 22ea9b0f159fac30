// The Registry.pol library through the entry points the control binds: what each record
// becomes in the trees and is written back as, what a save writes from the trees, and how
// loads fail.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "control/ozProfileBinding.h"
#include "ozPolTestSupport.h"
#include "profiles/pol/ozPolText.h"
#include "tests/support/ozRecordingHostUI.h"

using namespace std::string_literals;

namespace {

const std::string Blank = Utf16(u" \0"s);
const std::string One = "\x01\0\0\0"s;
const std::string Two = "\x02\0\0\0"s;

std::vector<std::string> Lines(const std::vector<ozPolRecord>& records)
{
    std::vector<std::string> lines;
    for (const ozPolRecord& record : records) {
        std::string line = ozPolNarrow(record.key) + ";" + ozPolNarrow(record.name) + ";" +
                           std::to_string(record.type) + ";";
        for (unsigned char byte : record.data)
            line += std::to_string(byte) + ",";
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> RecordLines(const std::string& bytes)
{
    std::vector<ozPolRecord> records;
    ozStatus status = ozReadPolRecords(bytes, records);
    EXPECT_TRUE(status.IsOk()) << status.Message();
    return Lines(records);
}

class PolProfileTest : public ::testing::Test {
protected:
    tPROFILELOAD Load(tTreeCodeHandle& into, const char* machineFile = nullptr)
    {
        return binding.Load(&into, PolLibrary.c_str(), user.Path(), machineFile);
    }
    bool Save(tTreeCodeHandle& from)
    {
        return binding.Save(&from, PolLibrary.c_str(), user.Path(), machine.Path());
    }

    ozTestFile user{"pol-user.pol"};
    ozTestFile machine{"pol-machine.pol"};
    ozRecordingHostUI ui;
    ozProfileBinding binding{ui, ozTestMessageText};
};

// A user file read into the trees and written back: the model's view of each record kind and
// the file it gives. Where the model cannot keep the file's order, `written` says what comes
// out instead and the case says why.
TEST_F(PolProfileTest, RecordsBecomeTreeEntriesAndAreWrittenBack)
{
    const std::string qword = "\x01\x02\x03\x04\x05\x06\x07\x08"s;
    const struct {
        const char* what;
        std::vector<ozPolRecord> file;
        std::vector<std::string> tree;
        std::vector<ozPolRecord> written;  // empty: the file itself
    } cases[] = {
        {"a set value of each type",
         {{u"K", u"sz", 1, Utf16(u"ab\0"s)},
          {u"K", u"ex", 2, Utf16(u"%a%\0"s)},
          {u"K", u"dw", 4, One},
          {u"K", u"bin", 3, "\x00\xFF"s},
          {u"K", u"multi", 7, Utf16(u"a\0b\0\0"s)},
          {u"K", u"qw", 11, qword},
          {u"K", u"unterminated", 1, Utf16(u"ab")}},
         {"1:K I", "  [sz] rI 1 616200", "  [ex] rI 2 25612500", "  [dw] rI 4 01000000",
          "  [bin] rI 3 00FF", "  [multi] rI 7 6100620000", "  [qw] rI 11 0102030405060708",
          "  [unterminated] rI 1 6162"},
         {}},
        {"**del. deletes one value",
         {{u"K", u"**del.V", 1, Blank}},
         {"1:K I", "  [V] rD 1 00"},
         {}},
        {"**delvals. erases the key's values",
         {{u"K", u"**delvals.", 1, Blank}, {u"K", u"a", 4, One}},
         {"1:K E", "  [a] rI 4 01000000"},
         {}},
        {"special values keep their names, other spellings of the prefixes too",
         {{u"K", u"**DeleteValues", 1, Utf16(u"a;b\0"s)},
          {u"K", u"**DeleteKeys", 1, Utf16(u"S\0"s)},
          {u"K", u"**SecureKey", 4, One},
          {u"K", u"**soft.V", 4, Two},
          {u"K", u"**Del.W", 1, Blank}},
         {"1:K I", "  [**DeleteValues] rI 1 613B6200", "  [**DeleteKeys] rI 1 5300",
          "  [**SecureKey] rI 4 01000000", "  [**soft.V] rI 4 02000000", "  [**Del.W] rI 1 2000"},
         {}},
        {"the key-creation record saves its key", {{u"K", u"", 0, ""}}, {"1:K I"}, {}},
        {"a key's records gather at its first",
         {{u"A", u"x", 4, One}, {u"B", u"y", 4, One}, {u"A", u"z", 4, One}},
         {"1:A I", "  [x] rI 4 01000000", "  [z] rI 4 01000000", "1:B I", "  [y] rI 4 01000000"},
         {{u"A", u"x", 4, One}, {u"A", u"z", 4, One}, {u"B", u"y", 4, One}}},
        {"**delvals. goes before the key's values",
         {{u"K", u"x", 4, One}, {u"K", u"**delvals.", 1, Blank}},
         {"1:K E", "  [x] rI 4 01000000"},
         {{u"K", u"**delvals.", 1, Blank}, {u"K", u"x", 4, One}}},
        {"key paths that differ in case are one key, spelled as first seen",
         {{u"Key", u"x", 4, One}, {u"KEY", u"y", 4, One}},
         {"1:Key I", "  [x] rI 4 01000000", "  [y] rI 4 01000000"},
         {{u"Key", u"x", 4, One}, {u"Key", u"y", 4, One}}},
        {"a later record of a value replaces it in place",
         {{u"K", u"**del.x", 1, Blank}, {u"K", u"y", 4, One}, {u"K", u"X", 4, Two}},
         {"1:K I", "  [x] rI 4 02000000", "  [y] rI 4 01000000"},
         {{u"K", u"x", 4, Two}, {u"K", u"y", 4, One}}},
        {"a sub key comes after its parent",
         {{u"A\\B", u"x", 4, One}, {u"A", u"y", 4, One}},
         {"1:A I", "  [y] rI 4 01000000", "1:A\\B I", "  [x] rI 4 01000000"},
         {{u"A", u"y", 4, One}, {u"A\\B", u"x", 4, One}}},
    };
    for (const auto& c : cases) {
        user.Write(PolFile(c.file));
        tTreeCodeHandle code;
        ASSERT_EQ(Load(code), tPROFILELOAD::Succeeded) << c.what;
        EXPECT_EQ(ozTreeLines(code).lines, c.tree) << c.what;
        ASSERT_TRUE(Save(code)) << c.what;
        EXPECT_EQ(RecordLines(ozReadTestFile(user.Path())),
                  Lines(c.written.empty() ? c.file : c.written))
            << c.what;
    }
}

// What a save writes of the trees beyond what a load gives: the operations and item types a
// template or another profile leaves, and keys a file has no place for.
TEST_F(PolProfileTest, SaveWritesWhatTheFileCanSayAndLeavesOutWhatHasNoPlace)
{
    tTreeCodeHandle code;
    ozRegTree& machineTree = code.tree->MacTree();
    ozSubKey* key = machineTree.FindKey(HKEY_LOCAL_MACHINE, "Software\\Policies\\oz");
    ozRegValue* change = key->FindValue("Changed");
    change->SetString("new");
    change->Op(OpChange);
    change->SetData2(RegSz, 4, reinterpret_cast<const unsigned char*>("old"));
    key->FindValue("NoData");
    key->FindValue("File")->RIT(RitF);
    machineTree.FindKey(HKEY_LOCAL_MACHINE, "Software\\Erased")->Op(KeyOpEraseValues);
    machineTree.FindKey(HKEY_CLASSES_ROOT, ".pol")->FindValue("x")->SetDWORD(1);
    ozRegValue* elsewhere =
        code.tree->UsrTree().FindKey(HKEY_LOCAL_MACHINE, "Software\\User")->FindValue("m");
    elsewhere->RIT(RitM);
    elsewhere->SetDWORD(1);
    code.tree->UsrTree().FindKey(HKEY_CURRENT_USER, "Software\\User")->FindValue("u")->SetDWORD(1);

    ASSERT_TRUE(Save(code));
    EXPECT_EQ(RecordLines(ozReadTestFile(machine.Path())),
              Lines({{u"Software\\Policies\\oz", u"Changed", 1, Utf16(u"new\0"s)},
                     {u"Software\\Policies\\oz", u"NoData", 0, ""},
                     {u"Software\\Erased", u"**delvals.", 1, Blank}}));
    EXPECT_EQ(RecordLines(ozReadTestFile(user.Path())), Lines({{u"Software\\User", u"u", 4, One}}));
}

TEST_F(PolProfileTest, MalformedFileLoadsNothingAndSaysWhereAndWhat)
{
    machine.Write(PolFile({{u"K", u"V", 4, One}}) + "[\0K\0"s);
    tTreeCodeHandle code;
    testing::internal::CaptureStderr();
    EXPECT_EQ(Load(code, machine.Path()), tPROFILELOAD::Failed);
    std::string said = testing::internal::GetCapturedStderr();
    EXPECT_NE(said.find(machine.Path() + ": byte 42: the key path has no terminating zero"s),
              std::string::npos)
        << said;
    EXPECT_TRUE(ozTreeLines(code).lines.empty());
}

TEST_F(PolProfileTest, MissingOrEmptyFilesAreEmptyProfiles)
{
    std::filesystem::remove(user.Path());
    machine.Write(PolFile({{u"K", u"V", 4, One}}));
    tTreeCodeHandle code;
    EXPECT_EQ(Load(code, machine.Path()), tPROFILELOAD::Succeeded);
    EXPECT_EQ(ozTreeLines(code).lines, (std::vector<std::string>{"2:K I", "  [V] rI 4 01000000"}));

    user.Write("");
    tTreeCodeHandle empty;
    EXPECT_EQ(Load(empty), tPROFILELOAD::Succeeded);
    EXPECT_TRUE(ozTreeLines(empty).lines.empty());
}

}  // namespace
