// Interoperability with Samba's Registry.pol parser (GPPolParser of python3-samba, run by
// samba_pol.py): Samba reads what the library writes to the entries the trees hold, and the
// library reads what Samba writes. Native builds only; skipped when python3-samba is missing.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdio>
#include <string>
#include <vector>

#include "control/ozProfileBinding.h"
#include "ozPolTestSupport.h"
#include "tests/support/ozRecordingHostUI.h"

using namespace std::string_literals;

namespace {

constexpr int SambaMissing = 77;

// Runs samba_pol.py with the system's Python (another python3 may come first on PATH) and
// returns its exit status; output gets its lines.
int RunSamba(const std::string& command, const std::string& file, std::vector<std::string>& output)
{
    std::string line = "/usr/bin/python3 '" OZ_POL_SAMBA_SCRIPT "' " + command + " '" + file + "'";
    std::FILE* pipe = popen(line.c_str(), "r");
    if (pipe == nullptr)
        return -1;
    std::string text;
    char buffer[4096];
    for (std::size_t read; (read = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;)
        text.append(buffer, read);
    int status = pclose(pipe);
    for (std::size_t start = 0, end; start < text.size(); start = end + 1) {
        end = text.find('\n', start);
        if (end == std::string::npos)
            end = text.size();
        output.push_back(text.substr(start, end - start));
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(PolSambaTest, SambaReadsTheEntriesWeWrite)
{
    tTreeCodeHandle code;
    ozSubKey* key = code.tree->UsrTree().FindKey(HKEY_CURRENT_USER, "Software\\Policies\\oz");
    key->FindValue("Text")->SetString(
        "gr\xC3\xBC\xC3\x9F"
        "e");
    key->FindValue("Path")->SetExpandString("%SystemRoot%\\x");
    key->FindValue("Number")->SetDWORD(0x01020304);
    key->FindValue("Bytes")->SetData(RegBinary, 3,
                                     reinterpret_cast<const unsigned char*>("\0\1\xFF"));
    key->FindValue("Multi")->SetData(RegMultiSz, 5,
                                     reinterpret_cast<const unsigned char*>("a\0b\0"));
    key->FindValue("Gone")->SetDelete();
    key->FindValue("**SecureKey")->SetDWORD(1);
    ozSubKey* list = code.tree->UsrTree().FindKey(HKEY_CURRENT_USER, "Software\\Policies\\oz\\L");
    list->Op(KeyOpEraseValues);
    list->FindValue("1")->SetString("one");

    ozTestFile file("pol-samba-read.pol");
    ozRecordingHostUI ui;
    ozProfileBinding binding(ui, ozTestMessageText);
    ASSERT_TRUE(binding.Save(&code, PolLibrary.c_str(), file.Path(), nullptr));
    std::vector<std::string> seen;
    int status = RunSamba("read", file.Path(), seen);
    if (status == SambaMissing)
        GTEST_SKIP() << "python3-samba is not installed";
    ASSERT_EQ(status, 0) << testing::PrintToString(seen);
    const std::string k = "Software\\Policies\\oz\t";
    EXPECT_EQ(seen, (std::vector<std::string>{
                        k + "Text\t1\tgr\xC3\xBC\xC3\x9F"
                            "e",
                        k + "Path\t2\t%SystemRoot%\\x",
                        k + "Number\t4\t16909060",
                        k + "Bytes\t3\t0001ff",
                        k + "Multi\t7\t61000000620000000000",
                        k + "**del.Gone\t1\t ",
                        k + "**SecureKey\t4\t1",
                        "Software\\Policies\\oz\\L\t**delvals.\t1\t ",
                        "Software\\Policies\\oz\\L\t1\t1\tone",
                    }));
}

TEST(PolSambaTest, WeReadTheEntriesSambaWrites)
{
    ozTestFile file("pol-samba-write.pol");
    std::vector<std::string> said;
    int status = RunSamba("write", file.Path(), said);
    if (status == SambaMissing)
        GTEST_SKIP() << "python3-samba is not installed";
    ASSERT_EQ(status, 0) << testing::PrintToString(said);

    ozRecordingHostUI ui;
    ozProfileBinding binding(ui, ozTestMessageText);
    tTreeCodeHandle code;
    ASSERT_EQ(binding.Load(&code, PolLibrary.c_str(), file.Path(), nullptr),
              tPROFILELOAD::Succeeded);
    EXPECT_EQ(ozTreeLines(code).lines, (std::vector<std::string>{
                                           "1:Software I",
                                           "1:Software\\Policies I",
                                           "1:Software\\Policies\\Samba I",
                                           "  [Text] rI 1 6772C3BCC39F6500",
                                           "  [Path] rI 2 2553797374656D526F6F74255C7800",
                                           "  [Number] rI 4 04030201",
                                           "  [Bytes] rI 3 0001FF",
                                           "  [Gone] rD 1 00",
                                           "1:Software\\Policies\\Samba\\List E",
                                           "  [1] rI 1 6F6E6500",
                                       }));
}

}  // namespace
