// The desktop program's command line and what it keeps open: files opened by kind, the control
// rebuilt from them in every order, a failed open leaving what was open, and a save in another
// format becoming the document's file.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "control/CADMCtrl.h"
#include "control/ozPolicyEdit.h"
#include "ozDesktopOptions.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTestFiles.h"

namespace {

namespace fs = std::filesystem;

// templates | both user machine gpo (- for none) | library | view
std::string Describe(const ozDesktopOptions& options)
{
    std::string text;
    for (const std::string& name : options.files.templates)
        text += name + " ";
    const ozProfileFiles& profiles = options.files.profiles;
    text += "|";
    for (const std::string* name :
         {&profiles.both, &profiles.user, &profiles.machine, &profiles.gpo})
        text += (name->empty() ? "-" : *name) + " ";
    return text + "|" + options.files.library + "|" + std::to_string(options.displayMode) +
           options.templateLanguage;
}

TEST(DesktopOptions, OpensFilesByKindAndRefusesWhatItCannot)
{
    const std::string folder = ozTestFilePath("desktop-gpo");
    fs::create_directories(fs::path(folder) / "user");
    const struct {
        std::vector<std::string> args;
        std::string expected;  // Describe(), or the start of the error
    } cases[] = {
        {{"a.ADM", "b.admx", "p.ozp", "--view", "grid", "--template-language", "de-DE"},
         "a.ADM b.admx |p.ozp - - - |ozRegOZP.dll|2de-DE"},
        {{"x/USER/Registry.pol"}, "|- x/USER/Registry.pol - - |ozRegPOL.dll|0"},
        {{"x/Machine/Registry.POL", "--view", "registry"},
         "|- - x/Machine/Registry.POL - |ozRegPOL.dll|1"},
        {{"--user", "u.pol", "--machine", "m.pol"}, "|- u.pol m.pol - ||0"},
        {{folder},
         "|- " + folder + "/user/Registry.pol " + folder + "/Machine/Registry.pol " + folder +
             " ||0"},
        {{"p.ozp", "q.reg"}, "q.reg: the profiles are named already"},
        {{"--gpo", folder, "--user", "u.pol"}, "--user u.pol: the profiles are named already"},
        {{"notes.txt"}, "notes.txt is neither a template"},
        {{"--view", "tree"}, "--view takes policies, registry or grid"},
        {{"--language"}, "option --language needs a value"},
        {{"--gui"}, "unknown option --gui"},
    };
    for (const auto& test : cases) {
        ozDesktopOptions options;
        std::string error;
        bool read = ozReadDesktopOptions(test.args, options, error);
        EXPECT_EQ(read ? Describe(options) : error.substr(0, test.expected.size()), test.expected)
            << test.args[0];
    }
    fs::remove_all(folder);
}

class DesktopDocument : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_control.SetEBNF((fs::path(OZ_SOURCE_DIR) / "grammar/adm.bnf").c_str()));
        // As the window starts: policy edits reach the registry trees when saved.
        m_control.DisplayMode(DisplayPolicies);
        fs::create_directories(m_folder);
    }
    void TearDown() override { fs::remove_all(m_folder); }
    std::vector<std::string> Configured() const
    {
        return m_control.ConfiguredPolicies().Elements();
    }

    const std::string m_template = std::string(OZ_SOURCE_DIR) + "/examples/example.adm";
    const std::string m_profile = std::string(OZ_SOURCE_DIR) + "/examples/example.ozp";
    const fs::path m_folder = ozTestFilePath("desktop-document");
    ozRecordingHostUI m_ui;
    CADMCtrl m_control{m_ui};
    ozDesktopDocument m_document{m_control};
    std::ostringstream m_out, m_err;
};

TEST_F(DesktopDocument, TheStatesComeFromTheProfileWhicheverOpensFirst)
{
    ASSERT_TRUE(m_document.Open(m_profile, m_err)) << m_err.str();
    EXPECT_TRUE(Configured().empty());  // only the empty template so far
    ASSERT_TRUE(m_document.Open(m_template, m_err)) << m_err.str();
    const std::vector<std::string> configured = Configured();
    EXPECT_FALSE(configured.empty());
    EXPECT_EQ(m_document.Name(), m_profile);

    ozDesktopDocument other(m_control);
    ASSERT_TRUE(other.Open(m_template, m_err) && other.Open(m_profile, m_err)) << m_err.str();
    EXPECT_EQ(Configured(), configured);
}

TEST_F(DesktopDocument, AFailedOpenLeavesWhatWasOpen)
{
    ASSERT_TRUE(m_document.Open(m_template, m_err) && m_document.Open(m_profile, m_err));
    const std::vector<std::string> configured = Configured();
    for (const std::string& bad : {(m_folder / "missing.ozp").string(),
                                   m_folder.string() + "/x.adm", std::string("notes.txt")}) {
        std::ostringstream err;
        EXPECT_FALSE(m_document.Open(bad, err));
        EXPECT_NE(err.str().find(bad), std::string::npos) << err.str();
        EXPECT_EQ(m_document.Templates(), std::vector<std::string>{m_template});
        EXPECT_EQ(m_document.Profiles().both, m_profile);
        EXPECT_EQ(Configured(), configured) << bad;
    }
}

TEST_F(DesktopDocument, SaveAsWritesTheFormatChosenAndSaveWritesThereAfterwards)
{
    ASSERT_TRUE(m_document.Open(m_template, m_err) && m_document.Open(m_profile, m_err));
    const std::vector<std::string> configured = Configured();
    const std::string reg = (m_folder / "saved.reg").string();
    EXPECT_FALSE(m_document.SaveAs((m_folder / "saved.txt").string(), m_out, m_err));
    ASSERT_TRUE(m_document.SaveAs(reg, m_out, m_err)) << m_err.str();
    EXPECT_EQ(m_document.Name(), reg);
    fs::remove(reg);
    ASSERT_TRUE(m_document.Save(m_out, m_err)) << m_err.str();

    ozDesktopDocument reread(m_control);
    ASSERT_TRUE(reread.Open(m_template, m_err) && reread.Open(reg, m_err)) << m_err.str();
    EXPECT_EQ(Configured(), configured);
    EXPECT_EQ(m_control.ozImpExLibrary(), "ozRegREG.dll");
}

TEST_F(DesktopDocument, AGroupPolicyFolderIsSavedAsOzadmSavesIt)
{
    const fs::path gpo = m_folder / "gpo";
    fs::create_directories(gpo);
    std::ofstream(gpo / "GPT.INI", std::ios::binary) << "[General]\r\nVersion=0\r\n";
    ASSERT_TRUE(m_document.Open(m_template, m_err) && m_document.Open(gpo.string(), m_err))
        << m_err.str();
    ozADMPolicy* proxy = ozFindPolicy(m_control.Code(), "MACHINE\\Browser\\Proxy server");
    ASSERT_NE(proxy, nullptr);
    ozEditPolicyState(m_control, *proxy, PolicyDisabled);
    ASSERT_TRUE(m_document.Save(m_out, m_err)) << m_err.str();
    // Both files are new: both versions are raised (the user's in the high 16 bits).
    EXPECT_EQ(ozReadTestFile((gpo / "GPT.INI").string()), "[General]\r\nVersion=65537\r\n");

    ozDesktopDocument reread(m_control);
    ASSERT_TRUE(reread.Open(gpo.string(), m_err) && reread.Open(m_template, m_err)) << m_err.str();
    EXPECT_EQ(Configured(), std::vector<std::string>{"- MACHINE\\Browser\\Proxy server"});
    EXPECT_EQ(reread.Name(), gpo.string());
}

}  // namespace
