// The registry functions over offline hive files: how a machine folder maps onto the
// predefined keys, how bad hives and bad calls fail, and how odd data and names reach the
// model.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "core/registry/CRegistryKey.h"
#include "core/registry/ozRegTree.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "platform/ozRegistryApi.h"
#include "tests/support/ozTestFiles.h"
#include "tests/support/ozTestHive.h"

namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

std::vector<std::string> SubKeys(HKEY key)
{
    std::vector<std::string> names;
    char name[256];
    FILETIME written;
    for (DWORD index = 0;; ++index) {
        DWORD length = sizeof name;
        LONG error = RegEnumKeyExA(key, index, name, &length, nullptr, nullptr, nullptr, &written);
        if (error != ERROR_SUCCESS) {
            EXPECT_EQ(error, ERROR_NO_MORE_ITEMS);
            return names;
        }
        names.emplace_back(name, length);
    }
}

// A copied Windows installation: hives under Windows/System32/config (in the mixed case such
// copies have) and two user profiles.
class MachineFolderTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        std::string pattern = (fs::temp_directory_path() / "ozadm-machine-XXXXXX").string();
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        folder = pattern;
        fs::path config = folder / "WINDOWS" / "system32" / "config";
        fs::create_directories(config);
        fs::create_directories(folder / "Users" / "alice");
        fs::create_directories(folder / "Users" / "bob");

        ozTestHive software((config / "software").string());
        software.SetString("Classes\\.txt", "", "txtfile");
        software.SetString("Vendor", "Grüße", "Grüße €");
        software.SetValue("Vendor", "Blob", REG_BINARY, std::string(300, 'x'));
        ASSERT_TRUE(software.Commit());
        ozTestHive system((config / "SYSTEM").string());
        system.SetDword("Select", "Current", 2);
        system.SetDword("ControlSet002\\Services\\Tcpip", "Start", 1);
        ASSERT_TRUE(system.Commit());
        ozTestHive defaults((config / "DEFAULT").string());
        ASSERT_TRUE(defaults.Commit());
        ozTestHive alice((folder / "Users" / "alice" / "NTUSER.DAT").string());
        alice.SetString("Environment", "Owner", "alice");
        ASSERT_TRUE(alice.Commit());
        ozTestHive bob((folder / "Users" / "bob" / "ntuser.dat").string());
        bob.SetString("Environment", "Owner", "bob");
        ASSERT_TRUE(bob.Commit());
    }
    void TearDown() override
    {
        ozRegistryUseLocalMachine(nullptr, nullptr);
        fs::remove_all(folder);
    }

    // Opens path below root of the machine folder; returns the error.
    LONG Open(HKEY root, const char* path, HKEY* key)
    {
        HKEY connected = nullptr;
        LONG error = RegConnectRegistryA(folder.c_str(), root, &connected);
        if (error != ERROR_SUCCESS)
            return error;
        error = RegOpenKeyExA(connected, path, 0, KEY_READ, key);
        RegCloseKey(connected);
        return error;
    }

    // The names of the keys directly below root, sorted.
    std::vector<std::string> Below(HKEY root)
    {
        HKEY key = nullptr;
        EXPECT_EQ(Open(root, "", &key), ERROR_SUCCESS);
        std::vector<std::string> names = SubKeys(key);
        RegCloseKey(key);
        std::sort(names.begin(), names.end());
        return names;
    }

    fs::path folder;
};

TEST_F(MachineFolderTest, PredefinedKeysMapOntoTheHiveFiles)
{
    EXPECT_EQ(Below(HKEY_LOCAL_MACHINE), (std::vector<std::string>{"SOFTWARE", "SYSTEM"}));
    EXPECT_EQ(Below(HKEY_USERS), (std::vector<std::string>{".DEFAULT", "alice", "bob"}));
    EXPECT_EQ(Below(HKEY_CLASSES_ROOT), std::vector<std::string>{".txt"});
    HKEY key = nullptr;
    // The current control set is the one Select\Current names.
    ASSERT_EQ(Open(HKEY_LOCAL_MACHINE, "system\\CurrentControlSet\\Services\\TCPIP", &key),
              ERROR_SUCCESS);
    RegCloseKey(key);
    EXPECT_EQ(Open(HKEY_LOCAL_MACHINE, "SYSTEM\\ControlSet001", &key), ERROR_FILE_NOT_FOUND);
    // Two profiles and no user chosen: no current user.
    EXPECT_EQ(Open(HKEY_CURRENT_USER, "", &key), ERROR_CANTOPEN);
}

TEST_F(MachineFolderTest, TheLocalMachineAndItsUserAreChosen)
{
    HKEY key = nullptr;
    ozRegistryUseLocalMachine("", nullptr);
    EXPECT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE", 0, KEY_READ, &key), ERROR_CANTOPEN);

    ozRegistryUseLocalMachine(folder.c_str(), "Bob");
    CRegistryKey environment(HKEY_CURRENT_USER, "Environment");
    auto value = environment.BeginValueIteration();
    ASSERT_NE(value, environment.EndValueIteration());
    EXPECT_EQ(value->AsString(), "bob");
}

TEST_F(MachineFolderTest, ValuesAreEnumeratedWithTheirSizesAndConvertedText)
{
    HKEY key = nullptr;
    ASSERT_EQ(Open(HKEY_LOCAL_MACHINE, "SOFTWARE\\Vendor", &key), ERROR_SUCCESS);
    DWORD values = 0, longestName = 0, longestData = 0;
    ASSERT_EQ(RegQueryInfoKeyA(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &values,
                               &longestName, &longestData, nullptr, nullptr),
              ERROR_SUCCESS);
    EXPECT_EQ(values, 2u);
    EXPECT_EQ(longestName, std::string("Grüße").size());
    EXPECT_GE(longestData, 300u);

    char name[64];
    BYTE data[400];
    DWORD nameLength = 3, dataLength = sizeof data, type = 0;
    EXPECT_EQ(RegEnumValueA(key, 0, name, &nameLength, nullptr, &type, data, &dataLength),
              ERROR_MORE_DATA);
    nameLength = sizeof name;
    dataLength = 4;
    EXPECT_EQ(RegEnumValueA(key, 0, name, &nameLength, nullptr, &type, data, &dataLength),
              ERROR_MORE_DATA);
    EXPECT_EQ(dataLength, std::string("Grüße €").size() + 1);
    nameLength = sizeof name;
    ASSERT_EQ(RegEnumValueA(key, 0, name, &nameLength, nullptr, &type, data, &dataLength),
              ERROR_SUCCESS);
    EXPECT_EQ(std::string(name, nameLength), "Grüße");
    EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
    EXPECT_EQ(std::string(reinterpret_cast<char*>(data), dataLength), "Grüße €\0"s);
    nameLength = sizeof name;
    EXPECT_EQ(RegEnumValueA(key, 2, name, &nameLength, nullptr, &type, data, &dataLength),
              ERROR_NO_MORE_ITEMS);
    EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);
    EXPECT_EQ(RegCloseKey(key), ERROR_INVALID_HANDLE);
}

TEST_F(MachineFolderTest, HivesAreNeverOpenedForWriting)
{
    HKEY key = nullptr;
    HKEY connected = nullptr;
    ASSERT_EQ(RegConnectRegistryA(folder.c_str(), HKEY_LOCAL_MACHINE, &connected), ERROR_SUCCESS);
    EXPECT_EQ(RegOpenKeyExA(connected, "SOFTWARE", 0, KEY_WRITE, &key), ERROR_ACCESS_DENIED);
    RegCloseKey(connected);
    EXPECT_EQ(RegConnectRegistryA((folder / "absent").c_str(), HKEY_LOCAL_MACHINE, &connected),
              ERROR_BAD_NETPATH);
    EXPECT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "x", 0, KEY_READ, nullptr),
              ERROR_INVALID_PARAMETER);
}

TEST_F(MachineFolderTest, DamagedHivesFailWithAClearError)
{
    fs::path software = folder / "WINDOWS" / "system32" / "config" / "software";
    const std::string bytes = ozReadTestFile(software.string());
    const struct {
        const char* what;
        std::string content;
    } damaged[] = {
        {"not a hive", "this is not a registry hive"},
        {"truncated", bytes.substr(0, 4096 + 100)},
        {"bad checksum", bytes.substr(0, 0x1FC) + "\x01\x02\x03\x04" + bytes.substr(0x200)}};
    for (const auto& hive : damaged) {
        std::ofstream(software, std::ios::binary | std::ios::trunc) << hive.content;
        try {
            CRegistryKey key(HKEY_LOCAL_MACHINE, "SOFTWARE\\Vendor", KEY_READ, folder.c_str());
            ADD_FAILURE() << hive.what << ": opened";
        } catch (const CRegistryKey::Exception& e) {
            EXPECT_EQ(e.GetWhere(), "CRegistryKey::CRegistryKey(HKEY hKey ...)") << hive.what;
            EXPECT_EQ(e.GetError(), static_cast<unsigned long>(ERROR_BADDB)) << hive.what;
            EXPECT_EQ(e.GetErrorMessage(), "The configuration registry database is corrupt.");
        }
    }
}

TEST_F(MachineFolderTest, DataIsReadAsStoredAndWhatTheModelCannotHoldIsRefusedByName)
{
    const std::string file = (folder / "WINDOWS" / "system32" / "config" / "software").string();
    std::string tooLong = "Long";
    for (int level = 0; level < 5; ++level)
        tooLong += "\\" + std::string(200, 'k');
    tooLong += "-0123456";
    {
        ozTestHive hive(file);
        hive.SetValue("Data", "ShortNumber", REG_DWORD, "\x01\x02"s);
        hive.SetDword("Data", "Number", 7);
        hive.SetValue("Data", "Embedded", REG_SZ, ozTestHive::Utf16le("a\0b\0"s));
        hive.SetValue("Data", "Unterminated", REG_SZ, ozTestHive::Utf16le("ab"));
        hive.SetValue("Data", "OddLength", REG_EXPAND_SZ, ozTestHive::Utf16le("é") + "\xFF");
        hive.AddKey("KeyName\\ab#cd");
        hive.AddKey("KeyName\\ab");
        hive.SetDword("ValueName", "v#1", 1);
        hive.SetDword("ValueName", "v#2", 2);
        // Cut to 1023 bytes, both would be one key.
        hive.AddKey(tooLong + "-first");
        hive.AddKey(tooLong + "-second");
        ASSERT_TRUE(hive.Commit());
    }
    for (const char* name : {"ab#cd", "v#1", "v#2"}) {
        std::string patched = name;
        patched[patched.find('#')] = '\0';
        ASSERT_TRUE(ozTestHive::ReplaceInFile(file, name, patched)) << name;
    }

    ozRegTree tree;
    ASSERT_TRUE(
        tree.AddFromRegistry(HKEY_LOCAL_MACHINE, "SOFTWARE\\Data", nullptr, true, folder.c_str()));
    ozSubKey* data = tree.HasKey(HKEY_LOCAL_MACHINE, "SOFTWARE\\Data");
    const struct {
        const char* name;
        unsigned long type;
        std::string bytes;
    } values[] = {{"ShortNumber", REG_DWORD, "\x01\x02"s},
                  {"Number", REG_DWORD, "\x07\0\0\0"s},
                  {"Embedded", REG_SZ, "a\0b\0"s},
                  {"Unterminated", REG_SZ, "ab"s},
                  {"OddLength", REG_EXPAND_SZ, "é\xFF"s}};
    for (const auto& expected : values) {
        ozRegValue* value = data->HasValue(expected.name);
        ASSERT_NE(value, nullptr) << expected.name;
        EXPECT_EQ(value->Type(), expected.type) << expected.name;
        EXPECT_EQ(std::string(reinterpret_cast<const char*>(value->Data()), value->Size()),
                  expected.bytes)
            << expected.name;
    }

    const struct {
        const char* key;
        std::string failedKey;
        const char* reason;
    } refused[] = {
        {"KeyName", "SOFTWARE\\KeyName",
         "the sub key name \"ab<NUL>cd\" holds a zero character, which names cannot hold"},
        {"ValueName", "SOFTWARE\\ValueName", "the value name \"v<NUL>1\" holds a zero character"},
        {"Long", "SOFTWARE\\" + tooLong + "-first",
         "the key path has 1032 bytes; key paths of at most 1023 are held"}};
    for (const auto& refusal : refused) {
        try {
            tree.AddFromRegistry(HKEY_LOCAL_MACHINE, ("SOFTWARE\\"s + refusal.key).c_str(), nullptr,
                                 true, folder.c_str());
            ADD_FAILURE() << refusal.key << ": read";
        } catch (const CRegistryKey::Exception& e) {
            EXPECT_EQ(e.Key(), refusal.failedKey);
            EXPECT_EQ(
                std::string(e.what()).find("key \"" + refusal.failedKey + "\": " + refusal.reason),
                0u)
                << e.what();
        }
    }
}

}  // namespace
