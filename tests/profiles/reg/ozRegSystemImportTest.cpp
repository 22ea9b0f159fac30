// Files this library writes, imported by the system's own "reg import", give the registry the
// keys and values that were exported, deletions included. Windows only (under the test runner
// the system is Wine). Everything happens below a key of this run's own under
// HKEY_CURRENT_USER\Software, removed afterwards.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "core/registry/ozRegTree.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "ozRegProfileRun.h"
#include "tests/support/ozTestFiles.h"

namespace {

using namespace std::string_literals;

struct Datum {
    DWORD type = REG_NONE;
    std::string bytes;
};

// The value as the registry holds it (text in the ANSI code page), or type REG_NONE with no
// bytes and false when it is missing.
bool Query(const std::string& key, const char* name, Datum& datum)
{
    HKEY opened;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, key.c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS)
        return false;
    DWORD size = 0;
    LONG status = RegQueryValueExA(opened, name, nullptr, &datum.type, nullptr, &size);
    if (status == ERROR_SUCCESS) {
        datum.bytes.resize(size);
        status = RegQueryValueExA(opened, name, nullptr, &datum.type,
                                  reinterpret_cast<BYTE*>(datum.bytes.data()), &size);
        datum.bytes.resize(size);
    }
    RegCloseKey(opened);
    return status == ERROR_SUCCESS;
}

bool KeyExists(const std::string& key)
{
    HKEY opened;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, key.c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS)
        return false;
    RegCloseKey(opened);
    return true;
}

// Runs the command line and gives its exit code; -1 when it could not be started or ended.
long RunProcess(std::string commandLine)
{
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process))
        return -1;
    DWORD exitCode = static_cast<DWORD>(-1);
    if (WaitForSingleObject(process.hProcess, 60000) == WAIT_OBJECT_0)
        GetExitCodeProcess(process.hProcess, &exitCode);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<long>(exitCode);
}

class SystemImport : public ::testing::Test {
protected:
    void SetUp() override
    {
        base = "Software\\ozADM-test-" + std::to_string(GetCurrentProcessId()) + "-" +
               std::to_string(GetTickCount());
        // What the file is to delete: a value and a key that exist before the import.
        HKEY created;
        ASSERT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, (base + "\\Old").c_str(), 0, nullptr, 0,
                                  KEY_WRITE, nullptr, &created, nullptr),
                  ERROR_SUCCESS);
        RegCloseKey(created);
        ASSERT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, base.c_str(), 0, nullptr, 0, KEY_WRITE,
                                  nullptr, &created, nullptr),
                  ERROR_SUCCESS);
        RegSetValueExA(created, "Gone", 0, REG_SZ, reinterpret_cast<const BYTE*>("x"), 2);
        RegCloseKey(created);
    }
    void TearDown() override { RegDeleteTreeA(HKEY_CURRENT_USER, base.c_str()); }

    std::string base;
};

TEST_F(SystemImport, GivesTheExportedValues)
{
    ozRegProfileRun run;
    ozRegTree& user = run.Code().tree->UsrTree();
    ozSubKey* key = user.FindKey(HKEY_CURRENT_USER, base.c_str());
    key->FindValue("String")->SetString("say \"hi\" to C:\\dir\\");
    key->FindValue("")->SetString("the default");
    key->FindValue("Expand")->SetExpandString("%SystemRoot%\\ozADM");
    key->FindValue("Number")->SetDWORD(0x12345678);
    const std::string binary = "\x00\x01\xfe\xff"s;
    key->FindValue("Binary")->SetData(REG_BINARY, 4,
                                      reinterpret_cast<const unsigned char*>(binary.data()));
    const std::string multi = "one\0two\0\0"s;
    key->FindValue("Multi")->SetData(REG_MULTI_SZ, static_cast<unsigned long>(multi.size()),
                                     reinterpret_cast<const unsigned char*>(multi.data()));
    key->FindValue("Gone")->SetDelete();
    user.FindKey(HKEY_CURRENT_USER, (base + "\\Old").c_str())->Op(KeyOpEraseValues);
    user.FindKey(HKEY_CURRENT_USER, (base + "\\Sub").c_str())->FindValue("Inner")->SetString("x");

    ozTestFile file("system-import.reg");
    ASSERT_TRUE(run.Save(file.Path(), "")) << run.Errors();
    ASSERT_EQ(RunProcess("reg.exe import \"" + std::string(file.Path()) + "\""), 0);

    const struct {
        const char* key;
        const char* name;
        DWORD type;
        std::string bytes;
    } expected[] = {
        {"", "String", REG_SZ, "say \"hi\" to C:\\dir\\\0"s},
        {"", "", REG_SZ, "the default\0"s},
        {"", "Expand", REG_EXPAND_SZ, "%SystemRoot%\\ozADM\0"s},
        {"", "Number", REG_DWORD, "\x78\x56\x34\x12"s},
        {"", "Binary", REG_BINARY, binary},
        {"", "Multi", REG_MULTI_SZ, multi},
        {"\\Sub", "Inner", REG_SZ, "x\0"s},
    };
    for (const auto& value : expected) {
        Datum datum;
        EXPECT_TRUE(Query(base + value.key, value.name, datum))
            << "missing: " << value.key << " \"" << value.name << "\"";
        EXPECT_EQ(datum.type, value.type) << "\"" << value.name << "\"";
        EXPECT_EQ(datum.bytes, value.bytes) << "\"" << value.name << "\"";
    }
    Datum gone;
    EXPECT_FALSE(Query(base, "Gone", gone)) << "the deleted value is still there";
    EXPECT_FALSE(KeyExists(base + "\\Old")) << "the key written as [-KEY] is still there";
}

}  // namespace
