#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/adm/ozADMCheckBox.h"
#include "core/adm/ozADMRegEntry.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "tests/adm/ozADMSampleTree.h"

namespace {

// A part whose evidence the test decides.
class ScriptedPart : public ozADMCtrl {
public:
    explicit ScriptedPart(tSYNCSTATE evidence) : ozADMCtrl(CtrlText), evidence(evidence) {}
    tSYNCSTATE Sync() override { return evidence; }
    ozADMCtrl* Copy() const override { return new ScriptedPart(evidence); }
    ozADMCtrl* New() const override { return new ScriptedPart(SyncNeutral); }
    tSYNCSTATE evidence;
};

class PolicyTest : public ::testing::Test, protected ozADMSampleTree {
protected:
    ozRegValue* Value(const char* name = "Enabled")
    {
        return Key("Software\\Pol")->FindValue(name);
    }
    ozADMActionList* ActionList(const char* valueName, unsigned long number)
    {
        auto* list = new ozADMActionList;
        auto* item = new ozActionItem;
        item->RegKey(Key("Software\\Pol\\Actions"));
        item->ValueName(valueName);
        item->Value().SetNumeric(number);
        list->Add(item);
        return list;
    }
};

TEST_F(PolicyTest, NodesResolveTheirClassPathAndRegistryTree)
{
    EXPECT_STREQ(policy->Path(), "MACHINE\\Network settings\\Policy");
    EXPECT_EQ(policy->RegistryTree(), &tree.MacTree());
    EXPECT_EQ(policy->RootKey(), HKEY_LOCAL_MACHINE);
    EXPECT_EQ(policy->ADMTree(), &tree);
    EXPECT_EQ(tree.FindNode("machine\\NETWORK settings\\policy"), policy);
    EXPECT_EQ(tree.FindNode("machine\\"), root);
    EXPECT_EQ(tree.FindNode("machine\\Missing"), nullptr);
    EXPECT_EQ(root->FindNode(nullptr), nullptr);
    ASSERT_NE(policy->RegKey(), nullptr);
    EXPECT_EQ(policy->RegKey()->KeyPath(), "Software\\Pol");

    ozADMRoot user;
    user.RootType("USER");
    EXPECT_EQ(user.RootType(), static_cast<unsigned long>(RootUser));
    user.RootType("user");
    EXPECT_EQ(user.RootType(), static_cast<unsigned long>(RootMachine));

    ozADMPolicy loose;  // outside any class: nothing to read or write
    loose.State(PolicyEnabled);
    EXPECT_EQ(loose.RegistryTree(), nullptr);
    EXPECT_FALSE(loose.SaveToRegistry());
    CCollection<ozADMRegEntry> entries;
    EXPECT_FALSE(loose.Configures(entries));
}

TEST_F(PolicyTest, SyncTakesTheFirstEvidenceAndTurnsDisagreementIntoNotConfigured)
{
    const int kNoValueName = -2, kNoValue = -1;
    const struct {
        const char* what;
        int policyValue;
        std::vector<tSYNCSTATE> parts;
        tPOLICYSTATE expected;
    } cases[] = {
        {"value on", 1, {}, PolicyEnabled},
        {"value off", 0, {}, PolicyDisabled},
        {"value matching neither", 7, {}, PolicyNotConfigured},
        {"missing value decides not configured", kNoValue, {SyncEnabled}, PolicyNotConfigured},
        {"off value against an enabled part", 0, {SyncEnabled}, PolicyNotConfigured},
        {"neutral parts keep the value's word", 1, {SyncNeutral, SyncNeutral}, PolicyEnabled},
        {"agreeing parts", 1, {SyncEnabled, SyncEnabled}, PolicyEnabled},
        {"a conflict forces not configured", 1, {SyncConflict}, PolicyNotConfigured},
        // Without a value name of its own the policy follows its parts.
        {"parts only, disabled", kNoValueName, {SyncNeutral, SyncDisabled}, PolicyDisabled},
        {"parts only, disagreeing", kNoValueName, {SyncEnabled, SyncDisabled}, PolicyNotConfigured},
        {"parts only, a conflict does not decide",
         kNoValueName,
         {SyncConflict, SyncEnabled},
         PolicyEnabled},
        {"parts only, neutral", kNoValueName, {SyncNeutral}, PolicyNotConfigured},
    };
    ozSubKey* key = Key("Software\\Pol");
    for (const auto& c : cases) {
        while (policy->Controls().Count() > 0)
            policy->Controls().RemoveAt(0);
        key->RemoveValue(key->FindValue("Enabled"));
        policy->Valuename(c.policyValue == kNoValueName ? nullptr : "Enabled");
        if (c.policyValue >= 0)
            key->FindValue("Enabled")->SetDWORD(static_cast<unsigned long>(c.policyValue));
        for (tSYNCSTATE evidence : c.parts)
            policy->AddControl(new ScriptedPart(evidence));
        EXPECT_TRUE(policy->Sync()) << c.what;
        EXPECT_EQ(policy->State(), c.expected) << c.what;
    }

    policy->State(PolicyEnabled);
    policy->AddControl(new ScriptedPart(SyncFailed));
    EXPECT_FALSE(policy->Sync());
    EXPECT_EQ(policy->State(), PolicyEnabled);  // left as it was
}

TEST_F(PolicyTest, ActionListsMustBePresentForTheirState)
{
    policy->ActionListOn(ActionList("OnAction", 5));
    Value()->SetDWORD(1);
    EXPECT_TRUE(policy->Sync());
    EXPECT_EQ(policy->State(), PolicyNotConfigured);

    Key("Software\\Pol\\Actions")->FindValue("OnAction")->SetDWORD(5);
    EXPECT_TRUE(policy->Sync());
    EXPECT_EQ(policy->State(), PolicyEnabled);
}

TEST_F(PolicyTest, NotConfiguredWritesNothingAndDefaultsKeepTheState)
{
    policy->ActionListOff(ActionList("OffAction", 9));
    auto* box = new ozADMCheckBox;
    box->Key(Key("Software\\Pol"));
    box->ValueName("Box");
    policy->AddControl(box);

    EXPECT_TRUE(policy->SaveToRegistry());  // not configured: nothing
    EXPECT_EQ(tree.MacTree().HasKey(HKEY_LOCAL_MACHINE, "Software\\Pol")->Values().Count(), 0);
    CCollection<ozADMPolicy> configured(false);
    EXPECT_TRUE(tree.GetPolicies(configured));
    EXPECT_EQ(configured.Count(), 0);

    // What an enabled or disabled policy writes comes back through the policy round trips.
    policy->State(PolicyDisabled);
    EXPECT_TRUE(tree.GetPolicies(configured));
    ASSERT_EQ(configured.Count(), 1);
    EXPECT_EQ(configured.At(0), policy);
    EXPECT_FALSE(policy->SetDefault());
    EXPECT_TRUE(tree.SetDefaultValues());
    EXPECT_EQ(policy->State(), PolicyDisabled) << "defaults leave the policy's state";
}

TEST_F(PolicyTest, ConfiguresListsTheEntriesOfThePresentState)
{
    auto* box = new ozADMCheckBox;
    box->Key(Key("Software\\Pol"));
    box->ValueName("Box");
    box->Checked(true);
    policy->AddControl(box);
    policy->ActionListOn(ActionList("OnAction", 5));

    CCollection<ozADMRegEntry> entries;
    EXPECT_TRUE(policy->Configures(entries));
    EXPECT_EQ(entries.Count(), 0);

    policy->State(PolicyEnabled);
    EXPECT_TRUE(policy->Configures(entries));
    std::vector<std::string> lines;
    for (int i = 0; i < entries.Count(); ++i)
        lines.push_back(entries.At(i)->ExportString());
    EXPECT_EQ(lines, (std::vector<std::string>{
                         "\"HKLM\\Software\\Pol\",\"Enabled\",\"REG_DWORD\",\"1\"",
                         "\"HKLM\\Software\\Pol\\Actions\",\"OnAction\",\"REG_DWORD\",\"5\"",
                         "\"HKLM\\Software\\Pol\",\"Box\",\"REG_DWORD\",\"1\""}));
}

}  // namespace
