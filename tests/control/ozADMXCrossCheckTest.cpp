// One release of a product's policies, shipped as an ADM template and as ADMX definitions with
// their en-US language file, loaded into two controls: every policy of the ADM tree is in the
// ADMX tree under the same category path with the same supported-on text, and enabling both
// with the same part values configures the same registry entries, as does disabling both. The ADMX
// file has no policy the ADM template lacks, and none of its policies uses what the ADM language
// cannot express (a multi-line text or a 64-bit number), so the two trees match without exception.
// Only texts differ: some explain texts are worded otherwise, and twelve part labels end in
// ":" in the language file; neither changes a path or an entry.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "control/CADMCtrl.h"
#include "core/adm/ozADMCheckBox.h"
#include "core/adm/ozADMDropdownList.h"
#include "core/adm/ozADMEditText.h"
#include "core/adm/ozADMListBox.h"
#include "core/adm/ozADMNumeric.h"
#include "core/adm/ozADMPolicy.h"
#include "core/adm/tTreeCodeHandle.h"
#include "loader/ozADMXLoad.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTemplateLoad.h"

namespace {

using Policies = std::map<std::string, ozADMPolicy*>;

void Collect(ozTreeNode* node, Policies& policies)
{
    for (; node != nullptr; node = node->Next()) {
        if (static_cast<ozADMNode*>(node)->NodeType() == NodePolicy) {
            auto* policy = static_cast<ozADMPolicy*>(node);
            policies[policy->Path()] = policy;
        }
        Collect(node->Down(), policies);
    }
}

// The same value for parts of the same kind, whichever file they came from: not the default,
// so that the parts' own writes are compared, not only the policy's.
void SetPart(ozADMCtrl& part)
{
    switch (part.CtrlType()) {
        case CtrlCheckBox: {
            auto& box = static_cast<ozADMCheckBox&>(part);
            box.Checked(!box.Checked());
            break;
        }
        case CtrlNumeric: {
            auto& numeric = static_cast<ozADMNumeric&>(part);
            numeric.Value(numeric.Max() > numeric.Min() ? numeric.Min() + 1 : numeric.Min());
            break;
        }
        case CtrlEditText:
        case CtrlComboBox:
            static_cast<ozADMEditText&>(part).Value("cross-check");
            break;
        case CtrlDropdownList: {
            auto& list = static_cast<ozADMDropdownList&>(part);
            list.Selected(list.ItemList().Count() - 1);
            break;
        }
        case CtrlListBox: {
            auto& list = static_cast<ozADMListBox&>(part);
            auto* item = new ozADMListItem;
            item->Name("first");
            item->Value().SetString("cross-check");
            list.ClearValues().Add(item);
            break;
        }
    }
}

// The entries the policy configures disabled, then enabled with its parts set.
std::vector<std::string> ConfiguredEntries(CADMCtrl& control, ozADMPolicy& policy)
{
    policy.State(PolicyDisabled);
    std::vector<std::string> entries = control.PolicyConfigures(policy.Path()).Elements();
    policy.State(PolicyEnabled);
    for (int i = 0; i < policy.Controls().Count(); ++i)
        SetPart(*policy.Controls().At(i));
    ozStringArray enabled = control.PolicyConfigures(policy.Path());
    entries.insert(entries.end(), enabled.Elements().begin(), enabled.Elements().end());
    return entries;
}

}  // namespace

TEST(ADMXCrossCheckTest, EdgeDefinitionsMatchTheirADMTemplate)
{
    std::string adm = ozCorpusPath("adm/msedge/msedge.adm");
    std::string admx = ozCorpusPath("admx/msedge/msedge.admx");
    if (adm.empty())
        GTEST_SKIP() << "the template corpus is not there";
    ozTemplateLanguage("en-US");
    ozRecordingHostUI ui;
    CADMCtrl fromADM{ui};
    CADMCtrl fromADMX{ui};
    for (CADMCtrl* control : {&fromADM, &fromADMX}) {
        ASSERT_TRUE(control->SetEBNF(ozSourcePath("grammar/adm.bnf").c_str()));
        control->DisplayMode(DisplayPolicies);
    }
    ASSERT_TRUE(fromADM.SetADM(adm.c_str()));
    ASSERT_TRUE(fromADMX.SetADM(admx.c_str()));
    ozTemplateLanguage("");
    Policies admPolicies, admxPolicies;
    Collect(fromADM.Code()->tree->Down(), admPolicies);
    Collect(fromADMX.Code()->tree->Down(), admxPolicies);

    std::string differences;
    for (const auto& [path, admPolicy] : admPolicies) {
        auto found = admxPolicies.find(path);
        if (found == admxPolicies.end()) {
            differences += path + ": not in the ADMX tree\n";
            continue;
        }
        auto text = [](const char* supportedOn) {
            return std::string(supportedOn ? supportedOn : "");
        };
        if (text(admPolicy->SupportedOn()) != text(found->second->SupportedOn()))
            differences += path + ": supported on \"" + text(admPolicy->SupportedOn()) +
                           "\" against \"" + text(found->second->SupportedOn()) + "\"\n";
        std::vector<std::string> admEntries = ConfiguredEntries(fromADM, *admPolicy);
        std::vector<std::string> admxEntries = ConfiguredEntries(fromADMX, *found->second);
        if (admEntries != admxEntries) {
            differences += path + ":\n";
            for (const auto& line : admEntries)
                differences += "  ADM  " + line + "\n";
            for (const auto& line : admxEntries)
                differences += "  ADMX " + line + "\n";
        }
    }
    for (const auto& [path, policy] : admxPolicies)
        if (!admPolicies.count(path))
            differences += path + ": not in the ADM tree\n";
    EXPECT_EQ(differences, "");
    EXPECT_GT(admPolicies.size(), 1000u);
}
