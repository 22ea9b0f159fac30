#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <typeinfo>
#include <vector>

#include "core/adm/ozADMCheckBox.h"
#include "core/adm/ozADMComboBox.h"
#include "core/adm/ozADMDropdownList.h"
#include "core/adm/ozADMEditText.h"
#include "core/adm/ozADMListBox.h"
#include "core/adm/ozADMMultiText.h"
#include "core/adm/ozADMNumeric.h"
#include "core/adm/ozADMPolicy.h"
#include "core/adm/ozADMRegEntry.h"
#include "core/adm/ozADMText.h"
#include "core/registry/ozRegTree.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"

namespace {

// A template value written as dword:n, qword:n, multi:a~b~~ (the registry's text form), sz:text
// or deleted (or any other kind: a string).
ozADMValue Adm(const std::string& notation)
{
    ozADMValue value;
    if (notation == "deleted")
        value.SetDelete();
    else if (notation.rfind("dword:", 0) == 0)
        value.SetNumeric(std::stoul(notation.substr(6)));
    else if (notation.rfind("qword:", 0) == 0)
        value.SetQword(std::stoull(notation.substr(6)));
    else if (notation.rfind("multi:", 0) == 0) {
        ozRegValue text;
        text.SetFormattedData(RegMultiSz, notation.substr(6).c_str(), false);
        value.SetMultiString(text.MultiStringLines());
    } else
        value.SetString(notation.substr(notation.find(':') + 1).c_str());
    return value;
}

// Registry contents are written as "Name=kind:data" words: kind is dword, sz, expand, deleted
// or append (a string with operation 'A'). A key whose values are to be erased starts with
// "erase".
void Put(ozSubKey* key, const std::string& contents)
{
    std::istringstream words(contents);
    for (std::string word; words >> word;) {
        if (word == "erase") {
            key->Op(KeyOpEraseValues);
            continue;
        }
        std::string written = word.substr(word.find('=') + 1);
        ozRegValue* value = key->FindValue(word.substr(0, word.find('=')).c_str());
        Adm(written).SaveToRegistry(*value);
        if (written.rfind("expand:", 0) == 0)
            value->Type(RegExpandSz);
        if (written.rfind("append:", 0) == 0)
            value->Op(OpAppend);
    }
}

std::string Describe(const ozRegValue& value)
{
    if (value.IsDelete())
        return "deleted";
    if (value.Type() == RegDword) {
        std::uint32_t number = 0;
        std::memcpy(&number, value.Data(), sizeof number);
        return "dword:" + std::to_string(number);
    }
    if (value.Type() == RegQword) {
        std::uint64_t number = 0;
        std::memcpy(&number, value.Data(), sizeof number);
        return "qword:" + std::to_string(number);
    }
    if (value.Type() == RegMultiSz)  // the text form: every string ended by "~"
        return "multi:" + value.FormattedValue();
    std::string kind = value.Op() == OpAppend  ? "append:"
                       : value.Type() == RegSz ? "sz:"
                                               : "expand:";
    return kind + reinterpret_cast<const char*>(value.Data());
}

std::string Describe(const ozADMValue& value, bool expand)
{
    if (value.Type() == ozADMValue::ValueNumeric)
        return "dword:" + std::to_string(static_cast<unsigned long>(value));
    if (value.Type() >= ozADMValue::ValueQword) {
        ozRegValue written;
        return value.SaveToRegistry(written) ? Describe(written) : "refused";
    }
    if (value.Type() == ozADMValue::ValueString)
        return (expand ? "expand:" : "sz:") + std::string(static_cast<const char*>(value));
    return value.Type() == ozADMValue::ValueDelete ? "deleted" : "empty";
}

// The key's written values in Put's notation; values created but never written are left out.
std::string Contents(ozSubKey* key)
{
    std::string text = key->Op() == KeyOpEraseValues ? "erase" : "";
    for (int pos = 0; pos < key->Values().Count(); ++pos) {
        const ozRegValue* value = key->Values().At(pos);
        if (value->Data() != nullptr)
            text += (text.empty() ? "" : " ") + std::string(value->Name()) + "=" + Describe(*value);
    }
    return text;
}

// An action list writing the value Extra into key.
ozADMActionList* Actions(ozSubKey* key, const char* notation)
{
    auto* list = new ozADMActionList;
    auto* item = new ozActionItem;
    item->RegKey(key);
    item->ValueName("Extra");
    item->Value() = Adm(notation);
    list->Add(item);
    return list;
}

// The parts the tables refer to by name, bound to key with the value name Val (list boxes
// keep their own empty value name).
std::unique_ptr<ozADMCtrl> MakePart(const std::string& variant, ozSubKey* key)
{
    auto has = [&variant](const char* word) { return variant.find(word) != std::string::npos; };
    std::unique_ptr<ozADMCtrl> part;
    if (has("checkbox")) {
        auto* box = new ozADMCheckBox;
        box->Checked(has("checked") || has("lists"));
        if (has("lists")) {
            box->ActionListOn(Actions(key, "dword:5"));
            box->ActionListOff(Actions(key, "deleted"));
        }
        part.reset(box);
    } else if (has("multitext")) {
        auto* multiText = new ozADMMultiText;
        multiText->Lines(has("empty") ? std::vector<std::string>{}
                                      : std::vector<std::string>{"a", "", "b"});
        part.reset(multiText);
    } else if (has("numeric")) {
        auto* numeric = new ozADMNumeric;
        numeric->Qword(has("qword"));
        numeric->Value(has("qword") ? 5000000000 : has("5") ? 5 : 0);
        numeric->Empty(variant == "numeric" || has("empty"));
        part.reset(numeric);
    } else if (has("edit") || has("combo")) {
        auto* edit = has("combo") ? new ozADMComboBox : new ozADMEditText;
        edit->Value(variant == "empty edit" ? nullptr : "old");
        edit->Default("default");
        edit->Expandable(has("expandable"));
        if (auto* combo = dynamic_cast<ozADMComboBox*>(edit))
            combo->AddSuggestion("suggested");
        part.reset(edit);
    } else if (has("dropdown")) {
        auto* list = new ozADMDropdownList;
        list->AddItem("One", Adm("dword:1"), nullptr);
        list->AddItem("Two", Adm("sz:two"), nullptr);
        list->AddItem("Also one", Adm("dword:1"), Actions(key, "dword:5"));
        list->AddItem("Three", Adm("dword:3"), Actions(key, "dword:5"));
        list->Selected(has("two") ? 1 : has("also one") ? 2 : -1);
        part.reset(list);
    } else if (has("list box")) {
        auto* listBox = new ozADMListBox;
        listBox->ValuePrefix("Item");
        listBox->ExplicitValue(has("explicit"));
        listBox->Additive(has("additive"));
        CCollection<ozADMListItem>& values = listBox->ClearValues();
        for (const char* name : {"Item1", "Item2"}) {
            auto* item = new ozADMListItem;
            item->Name(name);
            item->Value().SetString(name[4] == '1' ? "a" : "b");
            values.Add(item);
        }
        part.reset(listBox);
    } else {
        part = std::make_unique<ozADMText>();
    }
    part->Name("Part");
    part->ClientExt("{ext}");
    part->Key(key);
    if (part->CtrlType() != CtrlListBox)
        part->ValueName("Val");
    return part;
}

// clang-format off
const char* const AllVariants[] = {
    "checkbox", "checked checkbox", "checkbox with lists", "numeric", "numeric 5 empty",
    "numeric 0 set", "edit", "expandable edit", "empty edit", "expandable combo", "dropdown",
    "dropdown on two", "dropdown on also one", "list box", "text", "multitext",
    "qword numeric set"};
// clang-format on

// What the part lists for the policy, in Put's notation; every entry goes to the part's key.
std::string Listed(ozADMCtrl& part, bool enabled = true)
{
    CCollection<ozADMRegEntry> entries;
    EXPECT_TRUE(part.SaveToCollection(entries, enabled));
    const auto* edit = dynamic_cast<const ozADMEditText*>(&part);
    std::string text;
    for (int pos = 0; pos < entries.Count(); ++pos) {
        const ozADMRegEntry& entry = *entries.At(pos);
        EXPECT_EQ(entry.Root(), part.Key()->Root());
        EXPECT_EQ(entry.Key(), part.Key()->KeyPath());
        // A deletion carries the part's string type too, which the tree does not keep.
        EXPECT_EQ(entry.Expand(), edit != nullptr && edit->Expandable());
        text += (text.empty() ? "" : " ") + (entry.ClearKey()
                                                 ? "erase"
                                                 : entry.Valuename() + std::string("=") +
                                                       Describe(entry.Value(), entry.Expand()));
    }
    return text;
}

class PartsTest : public ::testing::Test {
protected:
    ozRegTree tree;
    ozSubKey* key = tree.FindKey(HKEY_LOCAL_MACHINE, "Software\\Pol");
    ozADMPolicy policy;
};

// Every part of the corpus is also enabled and disabled, written, read back and judged
// through the policy round trip; these rows are the states a round trip does not make.
TEST_F(PartsTest, SyncReadsEachPartsValueAndJudgesIt)
{
    const struct {
        const char *variant, *held;
        tSYNCSTATE expected;
        const char* state;
    } cases[] = {
        {"checkbox", "", SyncConflict, "Val=dword:0"},
        {"checkbox", "Val=dword:1", SyncEnabled, "Val=dword:1"},
        {"checked checkbox", "Val=dword:0", SyncEnabled, "Val=dword:0"},
        {"checked checkbox", "Val=dword:7", SyncConflict, "Val=dword:1"},
        // Extra missing or present: the state's action list must be in the registry too.
        {"checkbox with lists", "Val=dword:0", SyncConflict, "Val=dword:1 Extra=dword:5"},
        {"checkbox with lists", "Val=dword:1", SyncConflict, "Val=dword:1 Extra=dword:5"},
        {"checkbox with lists", "Val=dword:0 Extra=deleted", SyncEnabled,
         "Val=dword:0 Extra=deleted"},
        {"numeric", "", SyncConflict, "Val=dword:0"},
        {"numeric 5 empty", "Val=dword:0", SyncEnabled, "Val=dword:0"},
        {"numeric", "Val=sz:5", SyncConflict, "Val=dword:0"},
        {"edit", "", SyncConflict, "Val=sz:old"},
        {"edit", "Val=append:new", SyncConflict, "Val=sz:old"},
        {"edit", "Val=sz:new", SyncEnabled, "Val=sz:new"},
        {"edit", "Val=expand:new", SyncConflict, "Val=sz:old"},
        {"expandable edit", "Val=sz:new", SyncConflict, "Val=expand:old"},
        {"expandable combo", "Val=expand:new", SyncEnabled, "Val=expand:new"},
        {"dropdown", "", SyncConflict, "Val=dword:1"},
        {"dropdown", "Val=append:two", SyncConflict, "Val=dword:1"},
        {"dropdown", "Val=dword:1", SyncEnabled, "Val=dword:1"},
        {"dropdown", "Val=dword:1 Extra=dword:5", SyncEnabled, "Val=dword:1 Extra=dword:5"},
        {"dropdown on two", "Val=dword:3", SyncConflict, "Val=sz:two"},  // Extra is missing
        {"additive list box", "", SyncConflict, "Item1=sz:a Item2=sz:b"},
        // An erasure alone disables the list, which keeps its entries; one before entries
        // (or beside deletions only) does not.
        {"list box", "erase", SyncDisabled, "erase Item1=sz:a Item2=sz:b"},
        {"list box", "erase Val=deleted Other=dword:1", SyncDisabled,
         "erase Item1=sz:a Item2=sz:b"},
        {"list box", "erase Item1=sz:x", SyncEnabled, "erase Item1=sz:x"},
        // The gathered entries replace the part's own; names are filtered before types.
        {"list box", "Item1=sz:x Item1x=sz:y Item=sz:z Other=dword:1", SyncEnabled,
         "erase Item1=sz:x Item=sz:z"},
        {"explicit list box", "Item1=sz:x Other=sz:w", SyncEnabled, "erase Item1=sz:x Other=sz:w"},
        {"list box", "Item1=sz:x Item2=expand:y Item3=sz:z", SyncConflict, "erase Item1=sz:x"},
        {"multitext", "Val=multi:x~y~~", SyncEnabled, "Val=multi:x~y~~"},
        {"multitext", "Val=sz:x", SyncConflict, "Val=multi:a~b~~"},
        {"multitext", "Val=deleted", SyncDisabled, "Val=multi:a~b~~"},
        {"qword numeric set", "Val=qword:8589934592", SyncEnabled, "Val=qword:8589934592"},
        {"qword numeric set", "Val=dword:5", SyncConflict, "Val=qword:5000000000"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.variant) + " with " + c.held);
        ozRegTree caseTree;
        ozSubKey* caseKey = caseTree.FindKey(HKEY_LOCAL_MACHINE, "Software\\Pol");
        Put(caseKey, c.held);
        auto part = MakePart(c.variant, caseKey);
        EXPECT_EQ(part->Sync(), c.expected);
        EXPECT_EQ(Listed(*part), c.state);
    }
}

class NameFilter : public ozADMListBox {
public:
    using ozADMListBox::_IsValidName;
};

TEST(ListBoxNameFilter, AcceptsThePrefixOrABeginningOfItFollowedByDigits)
{
    const struct {
        const char *prefix, *name;
        bool valid;
    } cases[] = {{"Item", "Item09", true}, {"Item", "It", true},    {"Item", "Item1a", false},
                 {"Item", "item1", false}, {"Item", "Itex", false}, {"Item", nullptr, false},
                 {nullptr, "123", true},   {nullptr, "a1", false}};
    for (const auto& c : cases) {
        NameFilter filter;
        filter.ValuePrefix(c.prefix);
        EXPECT_EQ(filter._IsValidName(c.name), c.valid)
            << (c.prefix ? c.prefix : "(null)") << ", " << (c.name ? c.name : "(null)");
    }
}

TEST_F(PartsTest, SaveToRegistryWritesEachPartsValueOrDeletesIt)
{
    const struct {
        const char* variant;
        bool enabled;
        const char *before, *after;
    } cases[] = {
        {"checkbox", true, "", "Val=dword:0"},
        {"checked checkbox", true, "Val=deleted", "Val=dword:1"},
        {"checkbox with lists", true, "", "Val=dword:1 Extra=dword:5"},
        {"numeric", true, "Val=dword:9", "Val=dword:0"},  // empty: the lowest allowed
        {"numeric 5 empty", true, "Val=sz:x", "Val=dword:0"},
        {"numeric 0 set", true, "", "Val=dword:0"},
        {"edit", true, "Val=deleted", "Val=sz:old"},
        {"expandable edit", true, "Val=sz:x", "Val=expand:old"},
        {"empty edit", true, "Val=sz:x", "Val=sz:"},
        {"expandable edit", false, "Val=sz:x", "Val=deleted"},
        {"expandable combo", true, "", "Val=expand:old"},
        {"dropdown", true, "Val=sz:x", "Val=dword:1"},  // no selection: the first
        {"dropdown on two", true, "Val=dword:1", "Val=sz:two"},
        {"dropdown on also one", true, "", "Val=dword:1 Extra=dword:5"},
        {"additive list box", true, "Item9=sz:z", "Item9=sz:z Item1=sz:a Item2=sz:b"},
        {"list box", true, "Item9=sz:z", "erase Item1=sz:a Item2=sz:b"},  // replaces
        {"list box", false, "Item1=sz:a", "erase"},
        {"text", true, "Val=sz:x", "Val=sz:x"},
        {"multitext", true, "Val=sz:x", "Val=multi:a~b~~"},  // the empty line is dropped
        {"empty multitext", true, "", "Val=multi:~"},
        {"multitext", false, "Val=multi:q", "Val=deleted"},
        {"qword numeric set", true, "Val=dword:1", "Val=qword:5000000000"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.variant) + (c.enabled ? " enabled" : " disabled"));
        ozRegTree caseTree;
        ozSubKey* caseKey = caseTree.FindKey(HKEY_LOCAL_MACHINE, "Software\\Pol");
        Put(caseKey, c.before);
        auto part = MakePart(c.variant, caseKey);
        EXPECT_TRUE(part->SaveToRegistry(caseTree, c.enabled));
        EXPECT_EQ(Contents(caseKey), c.after);
    }
    // A required part left empty refuses an enabled policy and writes nothing.
    for (const char* variant : {"numeric", "empty edit", "dropdown", "empty multitext"}) {
        ozRegTree caseTree;
        auto part = MakePart(variant, caseTree.FindKey(HKEY_LOCAL_MACHINE, "Software\\Pol"));
        part->Required(true);
        EXPECT_FALSE(part->SaveToRegistry(caseTree, true)) << variant;
        EXPECT_EQ(part->Key()->Values().Count(), 0) << variant;
        EXPECT_TRUE(part->SaveToRegistry(caseTree, false)) << variant << " disabled";
    }

    auto listBox = MakePart("list box", key);
    listBox->SaveToRegistry(tree, false);
    EXPECT_TRUE(key->Save()) << "a disabled list box saves its emptied key";
    static_cast<ozADMListBox&>(*listBox).ClearValues();
    listBox->SaveToRegistry(tree, true);
    EXPECT_EQ(key->Op(), KeyOpInsert) << "an enabled list left empty";
}

TEST_F(PartsTest, BindingAKeyAndFailingWithoutKeyOrValueName)
{
    ozADMText bound;
    EXPECT_FALSE(key->ADM());
    bound.Key(tree, HKEY_LOCAL_MACHINE, "software\\pol");
    EXPECT_EQ(bound.Key(), key);
    EXPECT_TRUE(key->ADM()) << "a part's key is marked as the template's";
    bound.Key(tree, HKEY_CURRENT_USER, nullptr);
    EXPECT_EQ(bound.Key(), key) << "a null path keeps the key";

    CCollection<ozADMRegEntry> entries;
    for (const char* variant : AllVariants) {
        SCOPED_TRACE(variant);
        auto unbound = MakePart(variant, key);
        unbound->Key(nullptr);
        auto unnamed = MakePart(variant, key);
        unnamed->ValueName(nullptr);
        bool isText = unbound->CtrlType() == CtrlText;
        bool isListBox = unbound->CtrlType() == CtrlListBox;
        for (ozADMCtrl* part : {unbound.get(), unnamed.get()}) {
            bool fails = !isText && (part == unbound.get() || !isListBox);
            EXPECT_EQ(part->Sync(), fails ? SyncFailed : isText ? SyncNeutral : SyncConflict);
            for (bool enabled : {true, false}) {
                EXPECT_EQ(part->SaveToRegistry(tree, enabled), !fails);
                EXPECT_EQ(part->SaveToCollection(entries, enabled), !fails);
            }
        }
        // A key selected in the registry view marks the policy, evaluable part or not.
        unnamed->Policy(&policy);
        policy.Selected(false);
        key->Selected(false);
        unnamed->Sync();
        EXPECT_FALSE(policy.Selected());
        key->Selected(true);
        unnamed->Sync();
        EXPECT_TRUE(policy.Selected());
    }

    auto dropdown = MakePart("dropdown on also one", key);
    CCollection<ozADMListItem>& items = static_cast<ozADMDropdownList&>(*dropdown).ItemList();
    while (items.Count() > 2)
        items.RemoveAt(2);
    EXPECT_FALSE(dropdown->SaveToRegistry(tree, true)) << "the selected item is gone";
    EXPECT_FALSE(dropdown->SaveToCollection(entries, true));
    auto listBox = MakePart("list box", key);
    static_cast<ozADMListBox&>(*listBox).Values()->At(1)->Name(nullptr);
    EXPECT_FALSE(listBox->SaveToRegistry(tree, true)) << "an entry without name";
    EXPECT_FALSE(listBox->SaveToCollection(entries, true));
}

// What a part lists, as set and after returning to its defaults, with what it lists nothing of.
std::string Fingerprint(ozADMCtrl& part)
{
    std::string out = std::string(part.Name()) + part.ClientExt() + part.ValueName() + "|";
    out += Listed(part) + "|";
    part.SetDefault();
    out += Listed(part);
    if (const auto* combo = dynamic_cast<const ozADMComboBox*>(&part))
        out += combo->Suggestions().At(0);
    if (const auto* listBox = dynamic_cast<const ozADMListBox*>(&part))
        out += listBox->ValuePrefix();
    return out;
}

TEST_F(PartsTest, CopyIsDeepButSharesKeyAndPolicy)
{
    for (const char* variant : AllVariants) {
        SCOPED_TRACE(variant);
        auto original = MakePart(variant, key);
        original->Policy(&policy);
        std::unique_ptr<ozADMCtrl> copy(original->Copy());
        EXPECT_EQ(copy->Key(), key);
        EXPECT_EQ(copy->Policy(), &policy);
        std::string expected = Fingerprint(*original);
        // Anything the two shared would now be freed twice or read after being freed.
        original.reset();
        EXPECT_EQ(Fingerprint(*copy), expected);

        std::unique_ptr<ozADMCtrl> fresh(copy->New());
        const ozADMCtrl &freshPart = *fresh, &copiedPart = *copy;
        EXPECT_EQ(typeid(freshPart), typeid(copiedPart));
        EXPECT_EQ(fresh->Key(), nullptr);
        EXPECT_STREQ(fresh->ValueName(), copy->CtrlType() == CtrlListBox ? "" : nullptr);
    }
}

int g_actionListsDestroyed = 0;
struct CountedActionList : ozADMActionList {
    ~CountedActionList() override { ++g_actionListsDestroyed; }
};

TEST(PartOwnership, DropdownTakesTheActionListOfARefusedItem)
{
    {
        ozADMDropdownList list;
        EXPECT_TRUE(list.AddItem("item", Adm("dword:1"), new CountedActionList));
        EXPECT_FALSE(list.AddItem(nullptr, Adm("dword:1"), new CountedActionList));
        EXPECT_EQ(g_actionListsDestroyed, 1);
    }
    EXPECT_EQ(g_actionListsDestroyed, 2);
}

TEST(PartDefaults, DropdownSelectionIsClampedAndNumericRegainsItsEmptiness)
{
    const struct {
        int items, requested, selected;
    } cases[] = {{3, 3, 2}, {3, 2, 2}, {3, -1, -1}, {3, -7, -1}, {0, 0, -1}};
    for (const auto& c : cases) {
        ozADMDropdownList list;
        for (int i = 0; i < c.items; ++i)
            list.AddItem("item", Adm("dword:1"), nullptr);
        list.Selected(c.requested);
        EXPECT_EQ(list.Selected(), c.selected) << c.items << " items, " << c.requested << " asked";
        list.DeSelect();
        list.Default(c.requested);
        list.SetDefault();
        EXPECT_EQ(list.Selected(), c.selected) << "as the default";
    }

    ozADMNumeric numeric;
    numeric.Value(9);
    numeric.Default(4);
    numeric.DefaultEmpty(false);
    EXPECT_TRUE(numeric.SetDefault());
    EXPECT_FALSE(numeric.Empty());
    EXPECT_EQ(numeric.Value(), 4u);
}

}  // namespace
