// The commands for people, run as a person runs them: ozadm as a child process in a folder of
// its own, its output and the files it writes checked. Registry imports read a hive folder
// built for the test.
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "support/ozTestHive.h"
#include "tests/support/ozTestFiles.h"

namespace {

namespace fs = std::filesystem;

class OzadmCommands : public testing::Test {
protected:
    void SetUp() override
    {
        const testing::TestInfo* info = testing::UnitTest::GetInstance()->current_test_info();
        m_folder = ozTestFilePath(std::string("ozadm-") + info->name());
        fs::remove_all(m_folder);
        fs::create_directories(m_folder);
        fs::copy_file(fs::path(OZ_SOURCE_DIR) / "examples/example.adm", m_folder / "example.adm");
        fs::copy_file(fs::path(OZ_SOURCE_DIR) / "examples/example.ozp", m_folder / "example.ozp");
    }
    void TearDown() override { fs::remove_all(m_folder); }

    // Runs ozadm with the arguments (already quoted for the shell) in the test folder; the
    // exit status, standard output in out and standard error in err.
    int Run(const std::string& arguments, const std::string& environment = "")
    {
        std::string command = "cd '" + m_folder.string() + "' && " + environment + " '" +
                              OZADM_EXECUTABLE + "' " + arguments + " >out.txt 2>err.txt";
        int status = std::system(command.c_str());
        out = Read("out.txt");
        err = Read("err.txt");
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    std::string Read(const std::string& name) { return ozReadTestFile((m_folder / name).string()); }

    fs::path m_folder;
    std::string out, err;
};

const char* const kProxy = "'MACHINE\\Browser\\Proxy server'";

TEST_F(OzadmCommands, SetSavesWhatShowAndConfiguredThenReport)
{
    ASSERT_EQ(Run(std::string("set example.adm --profile example.ozp --save-profile new.ozp "
                              "--state ") +
                  kProxy + " enabled --part " + kProxy + " Port 3128"),
              0)
        << err;
    EXPECT_EQ(out, "saved both profiles to new.ozp\n");
    // The bundled profile is left alone.
    EXPECT_EQ(Read("example.ozp").find("ProxyPort"), std::string::npos);

    ASSERT_EQ(Run("show example.adm --profile new.ozp --parts"), 0) << err;
    EXPECT_NE(out.find("    POLICY Proxy server = enabled\n      PART Server name EDITTEXT = "
                       "\"proxy.example.com\"\n      PART Port NUMERIC = \"3128\"\n"),
              std::string::npos)
        << out;
    EXPECT_NE(out.find("    POLICY Security level = enabled\n"), std::string::npos) << out;

    ASSERT_EQ(Run("configured example.adm --profile new.ozp --entries"), 0) << err;
    EXPECT_EQ(out.rfind("+ MACHINE\\Browser\\Proxy server\n    \"HKLM\\Software\\Policies\\"
                        "Example\\Browser\",\"UseProxy\",\"REG_DWORD\",\"1\"\n",
                        0),
              0u)
        << out;

    ASSERT_EQ(
        Run(std::string("configures example.adm --profile new.ozp --json --policy ") + kProxy), 0);
    EXPECT_EQ(
        out.rfind("{\"policy\": \"MACHINE\\\\Browser\\\\Proxy server\", \"state\": "
                  "\"enabled\", \"entries\": [{\"key\": \"HKLM\\\\Software\\\\Policies\\\\"
                  "Example\\\\Browser\", \"valueName\": \"UseProxy\", \"operation\": \"set\", "
                  "\"type\": \"REG_DWORD\", \"data\": 1}, {",
                  0),
        0u)
        << out;
    EXPECT_NE(out.find("\"valueName\": \"ProxyServer\", \"operation\": \"set\", \"type\": "
                       "\"REG_SZ\", \"data\": \"proxy"),
              std::string::npos)
        << out;
}

TEST_F(OzadmCommands, RefusesBadEditsNamingThem)
{
    EXPECT_EQ(
        Run(std::string("set example.adm --profile example.ozp --state ") + kProxy + " maybe"), 2);
    EXPECT_NE(err.find("not \"maybe\""), std::string::npos) << err;
    EXPECT_EQ(Run(std::string("set example.adm --profile p.ozp --part ") + kProxy + " Port 0"), 1);
    EXPECT_NE(err.find("from 1 to 65535"), std::string::npos) << err;
    EXPECT_FALSE(fs::exists(m_folder / "p.ozp"));
    EXPECT_EQ(Run("show missing.adm"), 1);
    EXPECT_NE(err.find("missing.adm"), std::string::npos) << err;
    EXPECT_EQ(Run("show example.adm --colour"), 2);
    EXPECT_NE(err.find("unknown option --colour"), std::string::npos) << err;
    EXPECT_EQ(Run("frobnicate"), 2);
    for (const char* command :
         {"show", "set", "configured", "configures", "write-adm", "import", "convert", "script"}) {
        EXPECT_EQ(Run(std::string(command) + " --help"), 0) << command;
        EXPECT_NE(out.find("Usage: ozadm "), std::string::npos) << command;
    }
}

// write-adm converts ADMX definitions, warning of each part the template language lacks; the
// file it writes loads again, and a read-only file is left as it was.
TEST_F(OzadmCommands, WriteAdmConvertsDefinitionsAndRespectsAReadOnlyFile)
{
    fs::path templates = fs::path(OZ_SOURCE_DIR) / "tests/templates/admx";
    fs::create_directories(m_folder / "en-US");
    fs::copy_file(templates / "beyond-adm.admx", m_folder / "beyond-adm.admx");
    fs::copy_file(templates / "en-US/beyond-adm.adml", m_folder / "en-US/beyond-adm.adml");
    ASSERT_EQ(Run("write-adm beyond-adm.admx --template-language en-US --output out.adm"), 0)
        << err;
    EXPECT_NE(err.find("warning: "), std::string::npos) << err;
    EXPECT_EQ(Run("show out.adm"), 0) << err;

    std::ofstream(m_folder / "kept.adm") << "kept";
    fs::permissions(m_folder / "kept.adm", fs::perms::owner_read | fs::perms::group_read);
    EXPECT_EQ(Run("write-adm beyond-adm.admx --template-language en-US --output kept.adm"), 1);
    EXPECT_EQ(Read("kept.adm"), "kept");
    EXPECT_EQ(std::distance(fs::directory_iterator(m_folder), fs::directory_iterator()), 8)
        << "a temporary file was left behind";
}

// A profile named alone is read and written as that profile, in every library: edits in place
// keep what the file held, and a conversion carries it over under its own class.
TEST_F(OzadmCommands, AProfileNamedAloneStaysThatProfile)
{
    const char* const security = "'MACHINE\\Browser\\Security level'";
    const char* const wallpaper = "'USER\\Appearance\\Wallpaper'";
    const struct {
        const char *side, *from, *to;
    } cases[] = {{"machine", "pol", "ozp"}, {"user", "pol", "reg"},    {"machine", "ozp", "pol"},
                 {"user", "ozp", "pol"},    {"machine", "reg", "ozp"}, {"user", "reg", "ozp"}};
    for (const auto& c : cases) {
        bool machine = std::string(c.side) == "machine";
        std::string file = std::string(c.side) + "." + c.from;
        std::string option = std::string(" --library ") + c.from + " --" + c.side + " " + file;
        std::string first = machine ? kProxy : wallpaper;
        std::string expected =
            machine ? "+ MACHINE\\Browser\\Proxy server\n+ MACHINE\\Browser\\Security level\n"
                    : "+ USER\\Appearance\\Wallpaper\n";
        SCOPED_TRACE(file + " to " + c.to);
        ASSERT_EQ(Run("set example.adm" + option + " --state " + first + " enabled"), 0) << err;
        EXPECT_EQ(out, "saved the " + std::string(c.side) + " profile to " + file + "\n");
        if (machine) {
            ASSERT_EQ(Run("set example.adm" + option + " --state " + security + " enabled"), 0)
                << err;
        }
        ASSERT_EQ(Run("configured example.adm" + option), 0) << err;
        EXPECT_EQ(out, expected);
        std::string converted = std::string(c.side) + "-converted." + c.to;
        ASSERT_EQ(Run("convert" + option + " --save-" + c.side + " " + converted), 0) << err;
        ASSERT_EQ(Run("configured example.adm --library " + std::string(c.to) + " --" + c.side +
                      " " + converted),
                  0)
            << err;
        EXPECT_EQ(out, expected);
    }
    // What would be lost is refused, the file left as it was: the other class's settings, an
    // edit of the other class.
    std::ofstream(m_folder / "both.reg", std::ios::binary)
        << "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\X]\r\n\"a\"=dword:00000001\r\n\r\n"
           "[HKEY_CURRENT_USER\\Y]\r\n\"b\"=\"c\"\r\n";
    const std::string before = Read("both.reg");
    EXPECT_EQ(Run(std::string("set example.adm --library reg --user both.reg --state ") +
                  wallpaper + " enabled"),
              1);
    EXPECT_NE(err.find("the machine profile holds settings but no file is named for it"),
              std::string::npos)
        << err;
    EXPECT_EQ(Run(std::string("set example.adm --library reg --machine both.reg --state ") +
                  wallpaper + " enabled"),
              1);
    EXPECT_EQ(Read("both.reg"), before);
    // Without --library the extension chooses it.
    ASSERT_EQ(Run(std::string("set example.adm --machine new.pol --state ") + kProxy + " enabled"),
              0)
        << err;
    EXPECT_EQ(Read("new.pol").substr(0, 4), "PReg");
}

// --gpo: the folder's two Registry.pol files, found in any case, missing ones created; a save
// raises GPT.INI's version of each file it changed and keeps the rest of GPT.INI.
TEST_F(OzadmCommands, GroupPolicyFolder)
{
    fs::create_directories(m_folder / "gpo" / "MACHINE");
    fs::create_directories(m_folder / "gpo" / "user");
    std::ofstream(m_folder / "gpo" / "user" / "REGISTRY.POL", std::ios::binary)
        << std::string("PReg\1\0\0\0", 8);
    auto writeGpt = [&](const std::string& text) {
        std::ofstream(m_folder / "gpo" / "gpt.ini", std::ios::binary) << text;
    };
    writeGpt("[General]\r\nVersion=65538\r\ndisplayName=Example\r\n");
    const std::string wallpaper = " --state 'USER\\Appearance\\Wallpaper' enabled";
    const struct {
        std::string edit;
        const char* gpt;
    } edits[] = {
        {std::string(" --state ") + kProxy + " enabled", "Version=65539\r\n"},
        {wallpaper, "Version=131075\r\n"},
        {wallpaper, "Version=131075\r\n"},  // nothing changed
    };
    for (const auto& edit : edits) {
        ASSERT_EQ(Run("set example.adm --gpo gpo" + edit.edit), 0) << err;
        EXPECT_EQ(Read("gpo/gpt.ini"),
                  "[General]\r\n" + std::string(edit.gpt) + "displayName=Example\r\n");
    }
    EXPECT_TRUE(fs::exists(m_folder / "gpo/MACHINE/Registry.pol"));
    EXPECT_FALSE(fs::exists(m_folder / "gpo/User"));
    ASSERT_EQ(Run("configured example.adm --gpo gpo"), 0) << err;
    EXPECT_EQ(out, "+ MACHINE\\Browser\\Proxy server\n+ USER\\Appearance\\Wallpaper\n");

    // A GPT.INI whose version cannot be raised stops the save before it changes anything;
    // a folder without files reads as empty profiles.
    writeGpt("[General]\nVersion=x\n");
    std::string machinePol = Read("gpo/MACHINE/Registry.pol");
    EXPECT_EQ(Run("set example.adm --gpo gpo --state " + std::string(kProxy) + " disabled"), 1);
    EXPECT_NE(err.find("gpt.ini: the Version line"), std::string::npos) << err;
    EXPECT_EQ(Read("gpo/MACHINE/Registry.pol"), machinePol);
    fs::create_directories(m_folder / "empty");
    ASSERT_EQ(Run("configured example.adm --gpo empty"), 0) << err;
    EXPECT_EQ(out, "");
    EXPECT_EQ(Run("show example.adm --gpo nowhere"), 1);
    EXPECT_EQ(Run("show example.adm --gpo gpo --library ozp"), 2);
}

TEST_F(OzadmCommands, ImportsKeysFromAHiveFolder)
{
    fs::create_directories(m_folder / "registry");
    {
        ozTestHive hive((m_folder / "registry" / "SOFTWARE").string());
        ASSERT_TRUE(hive.ok());
        ASSERT_TRUE(hive.SetString("Policies\\Example\\Browser", "ProxyServer", "hive.example"));
        ASSERT_TRUE(hive.SetDword("Policies\\Example\\Browser", "UseProxy", 1));
        ASSERT_TRUE(hive.SetDword("Policies\\Example\\Browser", "ProxyPort", 8080));
        ASSERT_TRUE(hive.SetString("Policies\\Example\\Browser", "Bypass", "<local>"));
        ASSERT_TRUE(hive.SetDword("Policies\\Example\\Browser\\Sub", "Deep", 7));
        ASSERT_TRUE(hive.Commit());
    }
    ASSERT_EQ(Run("import --registry registry --key 'Software\\Policies\\Example' --recursive "
                  "--profile imported.ozp"),
              0)
        << err;
    std::string profile = Read("imported.ozp");
    EXPECT_NE(profile.find("value \"ProxyServer\" type=1 item=r op=I data=\"hive.example\""),
              std::string::npos)
        << profile;
    EXPECT_NE(profile.find("value \"Deep\" type=4"), std::string::npos) << profile;

    ASSERT_EQ(Run("configured example.adm --profile imported.ozp"), 0) << err;
    EXPECT_EQ(out, "+ MACHINE\\Browser\\Proxy server\n");

    // Through the environment, one value only.
    ASSERT_EQ(Run("import --key 'Software\\Policies\\Example\\Browser' --value UseProxy "
                  "--profile one.ozp",
                  "OZADM_REGISTRY=registry"),
              0)
        << err;
    EXPECT_EQ(Read("one.ozp").find("ProxyServer"), std::string::npos);
    EXPECT_NE(Read("one.ozp").find("UseProxy"), std::string::npos);

    EXPECT_EQ(Run("import --registry nowhere --key Software --profile x.ozp"), 1);
    EXPECT_NE(err.find("nowhere does not exist"), std::string::npos) << err;
    EXPECT_EQ(Run("import --registry registry --key 'Software\\Missing' --profile x.ozp"), 1);
    EXPECT_NE(err.find("The registry key \"Software\\Missing\" cannot be read (error 2): The "
                       "system cannot find the file specified."),
              std::string::npos)
        << err;
}

// The import dialog in a script: a key browsed on the local machine, a value on a machine named
// by its folder, each imported into the registry trees when the dialog ends with OK.
TEST_F(OzadmCommands, ScriptImportsWhatTheImportDialogChooses)
{
    fs::create_directories(m_folder / "registry");
    {
        ozTestHive hive((m_folder / "registry" / "SOFTWARE").string());
        ASSERT_TRUE(hive.SetString("Policies\\Example\\Browser", "ProxyServer", "hive.example"));
        ASSERT_TRUE(hive.SetDword("Policies\\Example\\Browser", "UseProxy", 1));
        ASSERT_TRUE(hive.SetDword("Policies\\Example\\Other", "Skipped", 2));
        ASSERT_TRUE(hive.Commit());
    }
    // Opens the dialog (on machine, when given) and selects the key Example\Browser.
    auto browse = [](const std::string& machine) {
        std::string lines = "ShowImportReg\n";
        if (!machine.empty())
            lines += "Dialog Set \"Machine\" " + machine + "\nDialog Click \"Set\"\n";
        for (const char* key :
             {"", "\\SOFTWARE", "\\SOFTWARE\\Policies", "\\SOFTWARE\\Policies\\Example"})
            lines += "Dialog Expand \"HKEY_LOCAL_MACHINE" + std::string(key) + "\"\n";
        return lines +
               "Dialog Select \"HKEY_LOCAL_MACHINE\\SOFTWARE\\Policies\\Example\\Browser\"\n";
    };
    std::ofstream(m_folder / "import.ozs")
        << "SetADM example.adm\nShowUser = FALSE\nRefresh\n" + browse("") +
               "Dialog Check \"Recursive\" off\nDialog\nDialog OK\n"
               "Expand \"HKEY_LOCAL_MACHINE\\Software\\Policies\\Example\"\nView\n" +
               browse("registry") +
               "Dialog Row \"\" 0\nDialog\nDialog OK\nDialog Select \"HKEY_LOCAL_MACHINE\"\n"
               "RegTree\n";
    ASSERT_EQ(Run("script --registry registry import.ozs"), 0) << err;
    const auto npos = std::string::npos;
    EXPECT_NE(out.find("ShowImportReg: FALSE\nDialog: TRUE"), npos) << "open until OK";
    EXPECT_NE(out.find("      ITEM \"Example\" image=2 selimage=3 expanded\n"
                       "        ITEM \"Browser\" image=2 selimage=3 selected\n"
                       "        ITEM \"Other\" image=2 selimage=3\n"),
              npos)
        << out;
    EXPECT_NE(out.find("        ITEM \"Browser\" image=12 selimage=13 collapsed\n"), npos)
        << "saved";
    EXPECT_NE(out.find("CONTROL TREE \"\" enabled = \"\"\nITEM \"HKEY_LOCAL_MACHINE\""), npos)
        << "another machine has no HKEY_CURRENT_USER";
    EXPECT_NE(out.find("VALUE \"ProxyServer\" I REG_SZ \"hive.example~\""), npos) << out;
    EXPECT_EQ(out.find("VALUE \"UseProxy\""), npos) << "the value alone";
    EXPECT_EQ(out.find("KEY Other"), npos);
    EXPECT_NE(out.find("Dialog: FALSE\nUSER"), npos) << "no dialog open";
}

}  // namespace
