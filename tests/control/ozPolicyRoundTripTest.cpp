// What a user sets comes back: every template (the corpus, our own, the examples) with every
// policy enabled, then disabled, saved through each profile library and loaded again, gives
// the same states and the same registry entries. The queries on the way change neither
// registry tree, and no profile receives a value without type and data.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "control/CADMCtrl.h"
#include "core/adm/ozADMMultiText.h"
#include "core/adm/ozADMNumeric.h"
#include "core/adm/ozADMPolicy.h"
#include "core/adm/tTreeCodeHandle.h"
#include "platform/ozAsciiCase.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTemplateLoad.h"
#include "tests/support/ozTestFiles.h"
#include "tests/support/ozTreeDescription.h"

namespace {

std::vector<std::string> Templates()
{
    std::vector<std::string> files;
    auto addFolder = [&files](const std::string& folder) {
        if (folder.empty() || !std::filesystem::is_directory(folder))
            return;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
            std::string extension = entry.path().extension().string();
            if (extension == ".adm" || extension == ".ADM" || extension == ".admx")
                files.push_back(entry.path().string());
        }
    };
    addFolder(ozCorpusPath(""));
    addFolder(ozSourcePath("tests/templates"));
    addFolder(ozSourcePath("examples"));
    return files;
}

void CollectPolicies(ozTreeNode* node, std::vector<ozADMPolicy*>& policies)
{
    for (; node != nullptr; node = node->Next()) {
        if (static_cast<ozADMNode*>(node)->NodeType() == NodePolicy)
            policies.push_back(static_cast<ozADMPolicy*>(node));
        CollectPolicies(node->Down(), policies);
    }
}

template <typename Test>
bool HasPart(const ozADMPolicy& policy, Test test)
{
    for (int i = 0; i < policy.Controls().Count(); ++i) {
        if (test(*policy.Controls().At(i)))
            return true;
    }
    return false;
}

bool Required(const ozADMCtrl& part)
{
    return part.Required();
}

bool ListBox(const ozADMCtrl& part)
{
    return part.CtrlType() == CtrlListBox;
}

std::vector<std::string> BothTrees(ozADMTree& tree)
{
    std::vector<std::string> lines = ozDescribeRegistry(tree.UsrTree());
    std::vector<std::string> machine = ozDescribeRegistry(tree.MacTree());
    lines.insert(lines.end(), machine.begin(), machine.end());
    return lines;
}

// Values created but never written: an insert without type and data.
long CountTypeless(const std::vector<std::string>& lines)
{
    return std::count_if(lines.begin(), lines.end(), [](const std::string& line) {
        return line.find(" type 0 ") != std::string::npos &&
               line.find(" op I ") != std::string::npos &&
               line.find(" data none ") != std::string::npos;
    });
}

// The state letter ConfiguredPolicies gives and the entries PolicyConfigures lists, by path.
std::map<std::string, std::vector<std::string>> Configured(const CADMCtrl& control)
{
    std::map<std::string, std::vector<std::string>> configured;
    ozStringArray policies = control.ConfiguredPolicies();
    for (const std::string& line : policies.Elements()) {
        std::vector<std::string> entries =
            control.PolicyConfigures(line.substr(2).c_str()).Elements();
        entries.insert(entries.begin(), line.substr(0, 1));
        configured[line.substr(2)] = entries;
    }
    return configured;
}

// The key and value name an entry of PolicyConfigures names, a deletion ("**del.") included:
// its first two quoted fields.
std::string ValueOf(const std::string& entry)
{
    size_t nameStart = entry.find("\",\"");
    if (nameStart == std::string::npos)
        return entry;
    nameStart += 3;
    std::string name = entry.substr(nameStart, entry.find('"', nameStart) - nameStart);
    if (name.size() > 6 && ozAsciiSameIgnoringCase(name.substr(0, 6), "**del."))
        name.erase(0, 6);
    return entry.substr(0, nameStart) + name;
}

// The values that more than one policy's entries name.
std::set<std::string> SharedValues(
    const std::map<std::string, std::vector<std::string>>& configured)
{
    std::map<std::string, std::set<std::string>> policiesByValue;
    for (const auto& [path, entries] : configured)
        for (size_t i = 1; i < entries.size(); ++i)
            policiesByValue[ValueOf(entries[i])].insert(path);
    std::set<std::string> shared;
    for (const auto& [value, policies] : policiesByValue)
        if (policies.size() > 1)
            shared.insert(value);
    return shared;
}

TEST(PolicyRoundTripTest, EveryTemplateEnabledAndDisabledThroughEveryLibrary)
{
    const std::string libraries[] = {ozPlatformPath(OZ_OZP_LIBRARY), ozPlatformPath(OZ_POL_LIBRARY),
                                     ozPlatformPath(OZ_REG_LIBRARY)};
    ozTestFile user("round-trip-user");
    ozTestFile machine("round-trip-machine");
    for (const std::string& file : Templates()) {
        // Where narrow text has no Chinese (Windows' Western code page), the Chinese template's
        // distinct names become question marks and equal sibling names merge on loading.
        if (file.find("zhCN") != std::string::npos && !ozNarrowTextHoldsChinese())
            continue;
        for (const std::string& library : libraries) {
            for (tPOLICYSTATE state : {PolicyEnabled, PolicyDisabled}) {
                SCOPED_TRACE(file + " through " + library + " state " + std::to_string(state));
                ozRecordingHostUI ui;
                CADMCtrl control{ui};
                ASSERT_TRUE(control.SetEBNF(ozSourcePath("grammar/adm.bnf").c_str()));
                if (!control.SetADM(file.c_str()))
                    break;  // the damaged template of the corpus
                control.ozImpExLibrary(library);
                control.DisplayMode(DisplayPolicies);
                std::vector<ozADMPolicy*> policies;
                CollectPolicies(control.Code()->tree->Down(), policies);
                std::set<std::string> withList;
                for (ozADMPolicy* policy : policies) {
                    if (state == PolicyDisabled || !HasPart(*policy, Required))
                        policy->State(state);
                    if (HasPart(*policy, ListBox))
                        withList.insert(policy->Path());
                }
                std::vector<std::string> trees = BothTrees(*control.Code()->tree);
                Configured(control);
                EXPECT_EQ(ozFirstDifference(trees, BothTrees(*control.Code()->tree)), "")
                    << "the queries changed the registry trees";
                ASSERT_TRUE(control.SaveSelState());
                // Listed once the keys are in the trees, with their spelling there.
                auto expected = Configured(control);
                EXPECT_EQ(CountTypeless(BothTrees(*control.Code()->tree)), 0);
                // A policy that writes nothing (only text parts) has nothing to come back from;
                // a list left empty lists no entry but marks its key.
                // Policies that write the same value (a deprecated policy and its successor, a
                // one-line and a multi-line form) cannot both come back: the last one saved
                // decides what the value says.
                std::set<std::string> shared = SharedValues(expected);
                for (auto it = expected.begin(); it != expected.end();) {
                    bool writesNothing = it->second.size() == 1 && !withList.count(it->first);
                    bool writesShared = std::any_of(it->second.begin() + 1, it->second.end(),
                                                    [&shared](const std::string& entry) {
                                                        return shared.count(ValueOf(entry));
                                                    });
                    it = writesNothing || writesShared ? expected.erase(it) : std::next(it);
                }
                ASSERT_TRUE(control.Save(user.Path(), machine.Path()));

                control.Cleanup();
                ASSERT_TRUE(control.SetADM(file.c_str()));
                ASSERT_TRUE(control.Load(user.Path(), machine.Path()));
                auto loaded = Configured(control);
                int lost = 0;
                std::string firstLost;
                for (const auto& [path, entries] : expected) {
                    if (loaded[path] != entries && lost++ == 0)
                        firstLost = path + ": " + entries[0] + " " +
                                    (entries.size() > 1 ? entries[1] : "") + " came back " +
                                    (loaded[path].empty() ? "not configured" : loaded[path][0]);
                }
                EXPECT_EQ(lost, 0) << "of " << expected.size() << ", first " << firstLost;
            }
        }
    }
}

// A policy with a value name and neither VALUEON nor VALUEOFF: enabled writes the number 1,
// disabled deletes the value, and both read back so.
TEST(PolicyRoundTripTest, ValueNameAloneMeansOneOrDeleted)
{
    const std::string file = ozSourcePath("tests/templates/value-name-only.adm");
    ozRecordingHostUI ui;
    CADMCtrl control{ui};
    ASSERT_TRUE(control.SetEBNF(ozSourcePath("grammar/adm.bnf").c_str()));
    ASSERT_TRUE(control.SetADM(file.c_str()));
    control.ozImpExLibrary(ozPlatformPath(OZ_POL_LIBRARY));
    control.DisplayMode(DisplayPolicies);
    auto policy = [&control](const char* name) {
        std::string path = std::string("USER\\Explorer\\") + name;
        return static_cast<ozADMPolicy*>(control.Code()->tree->FindNode(path.c_str()));
    };
    policy("Remove Run")->State(PolicyEnabled);
    policy("Remove Shut Down")->State(PolicyDisabled);
    ozTestFile user("value-name-only-user.pol");
    ozTestFile machine("value-name-only-machine.pol");
    ASSERT_TRUE(control.SaveSelState());
    ASSERT_TRUE(control.Save(user.Path(), machine.Path()));
    std::string bytes = ozReadTestFile(user.Path());
    // The value's name, its type REG_DWORD, its size 4 and the number 1, in the PReg layout.
    const std::string dwordOne("\0\0;\0\4\0\0\0;\0\4\0\0\0;\0\1\0\0\0]\0", 22);
    EXPECT_NE(bytes.find(ozUtf16Bytes(u"NoRun").substr(2) + dwordOne), std::string::npos);
    EXPECT_NE(bytes.find(ozUtf16Bytes(u"**del.NoClose").substr(2)), std::string::npos);
    EXPECT_EQ(bytes.find(ozUtf16Bytes(u"NoNetHood").substr(2)), std::string::npos);

    control.Cleanup();
    ASSERT_TRUE(control.SetADM(file.c_str()));
    ASSERT_TRUE(control.Load(user.Path(), machine.Path()));
    EXPECT_EQ(control.ConfiguredPolicies().Elements(),
              (std::vector<std::string>{"+ USER\\Explorer\\Remove Run",
                                        "- USER\\Explorer\\Remove Shut Down"}));
}

// A Registry.pol as a policy editor wrote it: a list that replaces the machine's entries is its
// key's erasure followed by the entries. It reads back enabled and is saved as it was.
TEST(PolicyRoundTripTest, ReplacingListOfARealProfileComesBackAsItWas)
{
    if (ozCorpusPath("").empty())
        GTEST_SKIP() << "no corpus";
    ozRecordingHostUI ui;
    CADMCtrl control{ui};
    ASSERT_TRUE(control.SetEBNF(ozSourcePath("grammar/adm.bnf").c_str()));
    ASSERT_TRUE(control.SetADM(ozCorpusPath("adm/chrome73/chrome.adm").c_str()));
    control.ozImpExLibrary(ozPlatformPath(OZ_POL_LIBRARY));
    const std::string original = ozReadTestFile(ozCorpusPath("pol/shb_chrome_machine.pol"));
    ozTestFile user("chrome-user.pol", std::string("PReg\1\0\0\0", 8));
    ozTestFile machine("chrome-machine.pol", original);
    ASSERT_TRUE(control.Load(user.Path(), machine.Path()));
    const char* path =
        "MACHINE\\Google\\Google Chrome\\Content Settings\\Allow the Flash plugin "
        "on these sites";
    const std::string key = R"("HKLM\Software\Policies\Google\Chrome\PluginsAllowedForUrls",)";
    EXPECT_EQ(control.PolicyConfigures(path).Elements(),
              (std::vector<std::string>{key + R"("**DelVals")", key + R"("1","REG_SZ","*.mil")",
                                        key + R"("2","REG_SZ","*.gov")"}));
    ASSERT_TRUE(control.Save(user.Path(), machine.Path()));
    // From the key's first record to the end of its last, the entry *.gov with its NUL and "]".
    auto records = [](const std::string& bytes) {
        size_t from = bytes.find(
            ozUtf16Bytes(u"[Software\\Policies\\Google\\Chrome\\PluginsAllowedForUrls").substr(2));
        return bytes.substr(from, bytes.find(ozUtf16Bytes(u"*.gov").substr(2), from) + 14 - from);
    };
    EXPECT_EQ(records(ozReadTestFile(machine.Path())), records(original));
}

// The parts of XML templates come back through every library: lines as a REG_MULTI_SZ, a
// number beyond 32 bits as a REG_QWORD.
TEST(PolicyRoundTripTest, MultiLineTextAndQwordThroughEveryLibrary)
{
    const char* const path = "MACHINE\\Network\\Proxy server";
    // The proxy policy with the two parts added (and set), as an XML template would give them.
    auto open = [path](CADMCtrl& control, bool set) {
        EXPECT_TRUE(control.SetADM(ozSourcePath("tests/templates/every-part.adm").c_str()));
        auto* policy = static_cast<ozADMPolicy*>(control.Code()->tree->FindNode(path));
        auto* lines = new ozADMMultiText;
        auto* wide = new ozADMNumeric;
        lines->Lines(set ? std::vector<std::string>{"first line", "second; with a ~ and $"}
                         : std::vector<std::string>{});
        wide->Qword(true);
        wide->Value(set ? UINT64_MAX : 0);
        wide->Empty(!set);
        for (ozADMCtrl* part : {static_cast<ozADMCtrl*>(lines), static_cast<ozADMCtrl*>(wide)}) {
            part->Key(control.Code()->tree->MacTree(), HKEY_LOCAL_MACHINE, "Software\\Wide");
            part->ValueName(part == lines ? "Lines" : "Wide");
            policy->AddControl(part);
        }
        return policy;
    };
    for (const char* library : {OZ_OZP_LIBRARY, OZ_POL_LIBRARY, OZ_REG_LIBRARY}) {
        SCOPED_TRACE(library);
        ozRecordingHostUI ui;
        CADMCtrl control{ui};
        ASSERT_TRUE(control.SetEBNF(ozSourcePath("grammar/adm.bnf").c_str()));
        control.ozImpExLibrary(ozPlatformPath(library));
        control.DisplayMode(DisplayPolicies);
        open(control, true)->State(PolicyEnabled);
        ASSERT_TRUE(control.SaveSelState());
        std::vector<std::string> expected = control.PolicyConfigures(path).Elements();
        ozTestFile user("wide-user");
        ozTestFile machine("wide-machine");
        ASSERT_TRUE(control.Save(user.Path(), machine.Path()));
        control.Cleanup();
        open(control, false);
        ASSERT_TRUE(control.Load(user.Path(), machine.Path()));
        // The entries list the lines and the number, so equal entries are equal values.
        EXPECT_EQ(control.PolicyConfigures(path).Elements(), expected);
    }
}

}  // namespace
