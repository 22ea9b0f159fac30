// What a policy says it configures is exactly what it writes: for every part type and every
// state, the entries of Configures match the values SaveToRegistry puts into an empty
// registry tree.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "core/adm/ozADMCheckBox.h"
#include "core/adm/ozADMComboBox.h"
#include "core/adm/ozADMDropdownList.h"
#include "core/adm/ozADMEditText.h"
#include "core/adm/ozADMListBox.h"
#include "core/adm/ozADMNumeric.h"
#include "core/adm/ozADMPolicy.h"
#include "core/adm/ozADMRegEntry.h"
#include "core/adm/ozADMRoot.h"
#include "core/adm/ozADMText.h"
#include "core/adm/ozADMTree.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"

namespace {

// The export line of a registry value or of a key whose values are all erased, in the form
// of ozADMRegEntry::ExportString.
std::string LineOf(ozSubKey* key, const ozRegValue* value)
{
    std::string line = "\"HKLM\\" + key->KeyPath() + "\",\"";
    if (value == nullptr)
        return line + "**DelVals\"";
    line += value->IsDelete() ? std::string("**Del.") + value->Name() : value->Name();
    unsigned long type = value->Type();
    line += type == RegDword      ? "\",\"REG_DWORD\",\""
            : type == RegExpandSz ? "\",\"REG_EXPAND_SZ\",\""
                                  : "\",\"REG_SZ\",\"";
    if (type == RegDword) {
        std::uint32_t number = 0;
        std::memcpy(&number, value->Data(), sizeof number);
        line += std::to_string(number);
    } else if (!value->IsDelete()) {
        line += reinterpret_cast<const char*>(value->Data());
    }
    return line + "\"";
}

// A deletion removes the value whatever its type, so the type named in a delete line does not
// matter (an expandable edit text lists its deletion as REG_EXPAND_SZ).
std::string WithoutDeleteType(std::string line)
{
    const std::string expand = "\",\"REG_EXPAND_SZ\",\"";
    size_t at = line.find(expand);
    if (line.find("\"**Del.") != std::string::npos && at != std::string::npos)
        line.replace(at, expand.size(), "\",\"REG_SZ\",\"");
    return line;
}

bool CollectWritten(ozTreeNode* node, void* context)
{
    auto* key = static_cast<ozRegKey*>(node);
    if (key->Type() != KeySub)
        return true;
    auto* subKey = static_cast<ozSubKey*>(key);
    auto* lines = static_cast<std::vector<std::string>*>(context);
    if (subKey->Op() == KeyOpEraseValues)
        lines->push_back(LineOf(subKey, nullptr));
    for (int i = 0; i < subKey->Values().Count(); ++i)
        lines->push_back(LineOf(subKey, subKey->Values().At(i)));
    return true;
}

struct PartCase {
    const char* what;
    std::function<ozADMCtrl*(ozRegTree&)> make;
};

ozADMCtrl* Bound(ozADMCtrl* part, ozRegTree& tree, const char* valueName = "Part")
{
    part->Key(tree, HKEY_LOCAL_MACHINE, "Software\\Pol\\Parts");
    part->ValueName(valueName);
    return part;
}

TEST(ConfiguresTest, ListsExactlyWhatIsWrittenForEveryPartAndState)
{
    const PartCase parts[] = {
        {"check box",
         [](ozRegTree& tree) {
             auto* box = new ozADMCheckBox;
             box->Checked(true);
             auto* actions = new ozADMActionList;
             auto* item = new ozActionItem;
             item->RegKey(tree, HKEY_LOCAL_MACHINE, "Software\\Pol\\Actions");
             item->ValueName("Action");
             item->Value().SetString("on");
             actions->Add(item);
             box->ActionListOn(actions);
             return Bound(box, tree);
         }},
        {"numeric",
         [](ozRegTree& tree) {
             auto* number = new ozADMNumeric;
             number->Value(42);
             number->Empty(false);
             return Bound(number, tree);
         }},
        {"edit text",
         [](ozRegTree& tree) {
             auto* text = new ozADMEditText;
             text->Value("%ProgramFiles%\\App");
             text->Expandable(true);
             return Bound(text, tree);
         }},
        {"combo box",
         [](ozRegTree& tree) {
             auto* combo = new ozADMComboBox;
             combo->Value("chosen");
             combo->AddSuggestion("chosen");
             return Bound(combo, tree);
         }},
        {"text", [](ozRegTree&) { return static_cast<ozADMCtrl*>(new ozADMText); }},
        {"drop-down list",
         [](ozRegTree& tree) {
             auto* list = new ozADMDropdownList;
             ozADMValue first, second;
             first.SetNumeric(1);
             second.SetString("two");
             list->AddItem("One", first, nullptr);
             list->AddItem("Two", second, nullptr);
             list->Selected(1);
             return Bound(list, tree);
         }},
        {"list box",
         [](ozRegTree& tree) {
             auto* box = new ozADMListBox;
             box->Key(tree, HKEY_LOCAL_MACHINE, "Software\\Pol\\List");
             CCollection<ozADMListItem>& values = box->ClearValues();
             for (const char* name : {"a", "b"}) {
                 auto* item = new ozADMListItem;
                 item->Name(name);
                 item->Value().SetString(name);
                 values.Add(item);
             }
             return static_cast<ozADMCtrl*>(box);
         }},
    };
    for (const PartCase& part : parts) {
        for (tPOLICYSTATE state : {PolicyEnabled, PolicyDisabled, PolicyNotConfigured}) {
            ozADMTree tree;
            auto* root = new ozADMRoot(RootMachine);
            tree.AddBelow(root);
            auto* policy = new ozADMPolicy;
            tree.AddBelowAsLast(policy);
            policy->RegKey("Software\\Pol");
            policy->AddControl(part.make(tree.MacTree()));
            policy->State(state);

            CCollection<ozADMRegEntry> entries;
            ASSERT_TRUE(policy->Configures(entries)) << part.what << " state " << state;
            std::vector<std::string> listed;
            for (int i = 0; i < entries.Count(); ++i)
                listed.push_back(WithoutDeleteType(entries.At(i)->ExportString()));

            ASSERT_TRUE(policy->SaveToRegistry()) << part.what << " state " << state;
            std::vector<std::string> written;
            tree.MacTree().Execute(CollectWritten, &written);

            std::sort(listed.begin(), listed.end());
            std::sort(written.begin(), written.end());
            EXPECT_EQ(listed, written) << part.what << " state " << state;
            if (state != PolicyNotConfigured && std::string(part.what) != "text") {
                EXPECT_FALSE(written.empty()) << part.what << " state " << state;
            }
        }
    }
}

}  // namespace
