#include <gtest/gtest.h>

#include <algorithm>
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
#include "core/adm/ozADMNumeric.h"
#include "core/adm/ozADMPolicy.h"
#include "core/adm/ozADMRegEntry.h"
#include "core/adm/ozADMText.h"
#include "core/registry/ozRegTree.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"

namespace {

// Registry contents are written as "Name=kind:data" words: kind is dword, sz, expand,
// deleted, append (a string with operation 'A') or, when reading back, empty (a value that
// was created but never written). A key whose values are to be erased starts with "erase".
void Put(ozSubKey* key, const std::string& contents)
{
    std::istringstream words(contents);
    for (std::string word; words >> word;) {
        if (word == "erase") {
            key->Op(KeyOpEraseValues);
            continue;
        }
        size_t equals = word.find('='), colon = word.find(':');
        ozRegValue* value = key->FindValue(word.substr(0, equals).c_str());
        std::string kind = word.substr(equals + 1, colon - equals - 1);
        std::string data = colon == std::string::npos ? "" : word.substr(colon + 1);
        if (kind == "deleted")
            value->SetDelete();
        else if (kind == "dword")
            value->SetDWORD(std::stoul(data));
        else if (kind == "expand")
            value->SetExpandString(data.c_str());
        else
            value->SetString(data.c_str());
        if (kind == "append")
            value->Op(OpAppend);
    }
}

std::string Describe(const ozRegValue& value)
{
    const char* data = reinterpret_cast<const char*>(value.Data());
    if (value.IsDelete())
        return "deleted";
    if (data == nullptr)
        return "empty";
    if (value.Type() == RegDword) {
        std::uint32_t number = 0;
        std::memcpy(&number, data, sizeof number);
        return "dword:" + std::to_string(number);
    }
    std::string kind = value.Op() == OpAppend ? "append" : value.Type() == RegSz ? "sz" : "expand";
    return kind + ":" + data;
}

std::string Describe(const ozADMValue& value, bool expand)
{
    switch (value.Type()) {
        case ozADMValue::ValueDelete:
            return "deleted";
        case ozADMValue::ValueNumeric:
            return "dword:" + std::to_string(static_cast<unsigned long>(value));
        case ozADMValue::ValueString:
            return (expand ? "expand:" : "sz:") + std::string(static_cast<const char*>(value));
        default:
            return "empty";
    }
}

std::string Contents(ozSubKey* key)
{
    std::string text = key->Op() == KeyOpEraseValues ? "erase" : "";
    for (int pos = 0; pos < key->Values().Count(); ++pos) {
        const ozRegValue* value = key->Values().At(pos);
        text += (text.empty() ? "" : " ") + std::string(value->Name()) + "=" + Describe(*value);
    }
    return text;
}

ozADMActionList* Actions(ozSubKey* key, const ozADMValue& value)
{
    auto* list = new ozADMActionList;
    auto* item = new ozActionItem;
    item->RegKey(key);
    item->ValueName("Extra");
    item->Value() = value;
    list->Add(item);
    return list;
}

// A template value in the same notation: dword:n, sz:text or deleted.
ozADMValue Adm(const std::string& notation)
{
    ozADMValue value;
    if (notation == "deleted")
        value.SetDelete();
    else if (notation.rfind("dword:", 0) == 0)
        value.SetNumeric(std::stoul(notation.substr(6)));
    else
        value.SetString(notation.substr(3).c_str());
    return value;
}

// The parts the tables refer to by name, bound to key with the value name Val (list boxes
// keep their own empty value name). Action lists write the value Extra into the same key.
std::unique_ptr<ozADMCtrl> MakePart(const std::string& variant, ozSubKey* key)
{
    std::unique_ptr<ozADMCtrl> part;
    if (variant.find("checkbox") != std::string::npos) {
        auto* box = new ozADMCheckBox;
        box->Checked(variant.find("checked") != std::string::npos);
        if (variant.find("lists") != std::string::npos) {
            box->Checked(true);
            box->ActionListOn(Actions(key, Adm("dword:5")));
            box->ActionListOff(Actions(key, Adm("deleted")));
        }
        part.reset(box);
    } else if (variant.find("numeric") != std::string::npos) {
        auto* numeric = new ozADMNumeric;
        numeric->Value(variant.find('5') != std::string::npos ? 5 : 0);
        numeric->Empty(variant == "numeric" || variant.find("empty") != std::string::npos);
        part.reset(numeric);
    } else if (variant.find("edit") != std::string::npos ||
               variant.find("combo") != std::string::npos) {
        auto* edit =
            variant.find("combo") != std::string::npos ? new ozADMComboBox : new ozADMEditText;
        edit->Value(variant == "empty edit" ? nullptr : "old");
        edit->Default("default");
        edit->Expandable(variant.find("expandable") != std::string::npos);
        if (auto* combo = dynamic_cast<ozADMComboBox*>(edit))
            combo->AddSuggestion("suggested");
        part.reset(edit);
    } else if (variant.find("dropdown") != std::string::npos) {
        auto* list = new ozADMDropdownList;
        list->AddItem("One", Adm("dword:1"), nullptr);
        list->AddItem("Two", Adm("sz:two"), nullptr);
        list->AddItem("Also one", Adm("dword:1"), Actions(key, Adm("dword:5")));
        list->AddItem("Three", Adm("dword:3"), Actions(key, Adm("dword:5")));
        list->Selected(variant == "dropdown on two"        ? 1
                       : variant == "dropdown on also one" ? 2
                                                           : -1);
        part.reset(list);
    } else if (variant.find("list box") != std::string::npos) {
        auto* listBox = new ozADMListBox;
        listBox->ValuePrefix("Item");
        listBox->ExplicitValue(variant == "explicit list box");
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
    "checkbox", "checked checkbox", "checkbox with lists",
    "numeric", "numeric 5", "numeric 5 empty", "numeric 0 set",
    "edit", "expandable edit", "empty edit", "combo", "expandable combo",
    "dropdown", "dropdown on two", "dropdown on also one", "list box", "text"};
// clang-format on

// The part's editable state as text.
std::string State(const ozADMCtrl& part)
{
    switch (part.CtrlType()) {
        case CtrlCheckBox:
            return static_cast<const ozADMCheckBox&>(part).Checked() ? "checked" : "unchecked";
        case CtrlNumeric: {
            const auto& numeric = static_cast<const ozADMNumeric&>(part);
            return numeric.Empty() ? "empty" : std::to_string(numeric.Value());
        }
        case CtrlEditText:
        case CtrlComboBox: {
            const char* value = static_cast<const ozADMEditText&>(part).Value();
            return value != nullptr ? value : "(null)";
        }
        case CtrlDropdownList:
            return std::to_string(static_cast<const ozADMDropdownList&>(part).Selected());
        case CtrlListBox: {
            const CCollection<ozADMListItem>* values =
                static_cast<const ozADMListBox&>(part).Values();
            if (values == nullptr)
                return "(none)";
            std::string text;
            for (int pos = 0; pos < values->Count(); ++pos)
                text += (pos > 0 ? " " : "") + std::string(values->At(pos)->Name()) + "=" +
                        Describe(values->At(pos)->Value(), false);
            return text;
        }
        default:
            return "";
    }
}

class PartsTest : public ::testing::Test {
protected:
    ozRegTree tree;
    ozSubKey* key = tree.FindKey(HKEY_LOCAL_MACHINE, "Software\\Pol");
    ozADMPolicy policy;
};

TEST_F(PartsTest, SyncReadsEachPartsValueAndJudgesIt)
{
    struct Case {
        const char* variant;
        const char* held;
        tSYNCSTATE expected;
        const char* state;
    };
    const Case cases[] = {
        {"checkbox", "", SyncConflict, "unchecked"},
        {"checkbox", "Val=deleted", SyncDisabled, "unchecked"},
        {"checkbox", "Val=dword:1", SyncEnabled, "checked"},
        {"checked checkbox", "Val=dword:0", SyncEnabled, "unchecked"},
        {"checkbox", "Val=dword:7", SyncConflict, "unchecked"},
        {"checkbox", "Val=sz:1", SyncConflict, "unchecked"},
        {"checked checkbox", "Val=append:1", SyncConflict, "checked"},
        {"checkbox with lists", "Val=dword:0", SyncConflict, "checked"},
        {"checkbox with lists", "Val=dword:0 Extra=deleted", SyncEnabled, "unchecked"},
        {"numeric", "", SyncConflict, "empty"},
        {"numeric", "Val=deleted", SyncDisabled, "empty"},
        {"numeric", "Val=dword:42", SyncEnabled, "42"},
        {"numeric 5", "Val=dword:0", SyncEnabled, "0"},
        {"numeric", "Val=sz:5", SyncConflict, "empty"},
        {"edit", "", SyncConflict, "old"},
        {"edit", "Val=deleted", SyncDisabled, "old"},
        {"edit", "Val=sz:new", SyncEnabled, "new"},
        {"edit", "Val=expand:new", SyncConflict, "old"},
        {"edit", "Val=dword:5", SyncConflict, "old"},
        {"expandable edit", "Val=expand:%X%", SyncEnabled, "%X%"},
        {"expandable edit", "Val=sz:new", SyncConflict, "old"},
        {"combo", "Val=expand:new", SyncConflict, "old"},
        {"expandable combo", "Val=expand:new", SyncEnabled, "new"},
        {"dropdown", "", SyncConflict, "-1"},
        {"dropdown", "Val=deleted", SyncDisabled, "-1"},
        {"dropdown", "Val=dword:1", SyncEnabled, "0"},
        {"dropdown", "Val=dword:1 Extra=dword:5", SyncEnabled, "2"},  // the last match wins
        {"dropdown", "Val=dword:3", SyncConflict, "-1"},              // its action list is missing
        {"dropdown on two", "Val=dword:9", SyncConflict, "1"},
        {"dropdown", "Val=sz:two", SyncEnabled, "1"},
        {"dropdown", "Val=expand:two", SyncEnabled, "1"},
        {"dropdown", "Val=append:two", SyncConflict, "-1"},
        {"text", "Val=dword:1", SyncNeutral, ""},
        {"list box", "", SyncConflict, "Item1=sz:a Item2=sz:b"},
        {"list box", "erase Item1=sz:x", SyncDisabled, "Item1=sz:a Item2=sz:b"},
        // The gathered entries replace the part's own.
        {"list box", "Item1=sz:x Item1x=sz:y Item=sz:z Other=sz:w", SyncEnabled,
         "Item1=sz:x Item=sz:z"},
        {"explicit list box", "Item1=sz:x Other=sz:w", SyncEnabled, "Item1=sz:x Other=sz:w"},
        {"list box", "Other=dword:1", SyncEnabled, ""},
        {"list box", "Item1=dword:5", SyncConflict, ""},
        {"list box", "Item1=sz:x Item2=expand:y Item3=sz:z", SyncConflict, "Item1=sz:x"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.variant) + " with " + c.held);
        ozRegTree caseTree;
        ozSubKey* caseKey = caseTree.FindKey(HKEY_LOCAL_MACHINE, "Software\\Pol");
        Put(caseKey, c.held);
        auto part = MakePart(c.variant, caseKey);
        EXPECT_EQ(part->Sync(), c.expected);
        EXPECT_EQ(State(*part), c.state);
    }
}

class NameFilter : public ozADMListBox {
public:
    using ozADMListBox::_IsValidName;
};

TEST(ListBoxNameFilter, AcceptsThePrefixOrABeginningOfItFollowedByDigits)
{
    struct Case {
        const char* prefix;
        const char* name;
        bool valid;
    };
    const Case cases[] = {
        {"Item", "Item", true},   {"Item", "Item12", true},  {"Item", "It", true},
        {"Item", "", true},       {"Item", "Item1a", false}, {"Item", "Other", false},
        {"Item", "item1", false}, {"Item", "Itex", false},   {"Item", nullptr, false},
        {nullptr, "123", true},   {nullptr, "", true},       {nullptr, "a1", false},
    };
    for (const Case& c : cases) {
        NameFilter filter;
        filter.ValuePrefix(c.prefix);
        EXPECT_EQ(filter._IsValidName(c.name), c.valid)
            << "prefix " << (c.prefix ? c.prefix : "(null)") << ", name "
            << (c.name ? c.name : "(null)");
    }
}

TEST_F(PartsTest, SaveToRegistryWritesTheValueOrDeletesIt)
{
    struct Case {
        const char* variant;
        bool enabled;
        const char* before;
        const char* after;
    };
    const Case cases[] = {
        {"checkbox", true, "", "Val=dword:0"},
        {"checked checkbox", true, "Val=deleted", "Val=dword:1"},
        {"checkbox", false, "Val=append:x", "Val=deleted"},
        {"checkbox with lists", true, "", "Val=dword:1 Extra=dword:5"},
        {"checkbox with lists", false, "", "Val=deleted"},
        {"numeric", true, "Val=dword:9", "Val=dword:9"},
        {"numeric 5", true, "Val=sz:x", "Val=dword:5"},
        {"numeric 5 empty", true, "", "Val=dword:5"},
        {"numeric 0 set", true, "", "Val=dword:0"},
        {"numeric", false, "Val=dword:9", "Val=deleted"},
        {"edit", true, "Val=deleted", "Val=sz:old"},
        {"expandable edit", true, "Val=sz:x", "Val=expand:old"},
        {"empty edit", true, "Val=sz:x", "Val=sz:x"},
        {"edit", false, "Val=sz:x", "Val=deleted"},
        {"combo", true, "", "Val=sz:old"},
        {"expandable combo", true, "", "Val=expand:old"},
        {"expandable combo", false, "Val=expand:x", "Val=deleted"},
        {"dropdown", true, "Val=sz:x", "Val=sz:x"},
        {"dropdown on two", true, "Val=dword:1", "Val=sz:two"},
        {"dropdown on also one", true, "", "Val=dword:1 Extra=dword:5"},
        {"dropdown on two", false, "", "Val=deleted"},
        {"list box", true, "Item9=sz:z", "Item9=sz:z Item1=sz:a Item2=sz:b"},
        {"list box", false, "Item1=sz:a", "erase Item1=sz:a"},
        {"text", true, "Val=sz:x", "Val=sz:x"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.variant) + (c.enabled ? " enabled" : " disabled"));
        ozRegTree caseTree;
        ozSubKey* caseKey = caseTree.FindKey(HKEY_LOCAL_MACHINE, "Software\\Pol");
        Put(caseKey, c.before);
        auto part = MakePart(c.variant, caseKey);
        EXPECT_TRUE(part->SaveToRegistry(caseTree, c.enabled));
        EXPECT_EQ(Contents(caseKey), c.after);
    }

    auto listBox = MakePart("list box", key);
    listBox->SaveToRegistry(tree, false);
    EXPECT_TRUE(key->Save()) << "a disabled list box saves its emptied key";
    listBox->SaveToRegistry(tree, true);
    EXPECT_EQ(key->Op(), KeyOpInsert);
}

// What SaveToRegistry left in the tree, one "root path name value" line per written value and
// one "root path **erase" line per key to be emptied.
bool CollectWritten(ozTreeNode* node, void* lines)
{
    auto* key = dynamic_cast<ozSubKey*>(node);
    if (key == nullptr)
        return true;
    auto& out = *static_cast<std::vector<std::string>*>(lines);
    std::string prefix = std::to_string(key->Root()) + " " + key->KeyPath() + " ";
    if (key->Op() == KeyOpEraseValues)
        out.push_back(prefix + "**erase");
    for (int pos = 0; pos < key->Values().Count(); ++pos) {
        const ozRegValue* value = key->Values().At(pos);
        // A part that writes nothing may still have created its value, without data.
        if (value->Data() != nullptr)
            out.push_back(prefix + value->Name() + " " + Describe(*value));
    }
    return true;
}

TEST(PartEntries, ListExactlyWhatSaveToRegistryWritesIntoAnEmptyTree)
{
    for (const char* variant : AllVariants) {
        for (bool enabled : {true, false}) {
            SCOPED_TRACE(std::string(variant) + (enabled ? " enabled" : " disabled"));
            ozRegTree tree;
            ozSubKey* key = tree.FindKey(HKEY_LOCAL_MACHINE, "Software\\Pol");
            auto part = MakePart(variant, key);
            CCollection<ozADMRegEntry> entries;
            EXPECT_TRUE(part->SaveToCollection(entries, enabled));
            EXPECT_TRUE(part->SaveToRegistry(tree, enabled));

            std::vector<std::string> listed, written;
            bool expandable = std::strstr(variant, "expandable") != nullptr;
            for (int pos = 0; pos < entries.Count(); ++pos) {
                const ozADMRegEntry& entry = *entries.At(pos);
                std::string prefix = std::to_string(entry.Root()) + " " + entry.Key() + " ";
                listed.push_back(entry.ClearKey() ? prefix + "**erase"
                                                  : prefix + entry.Valuename() + " " +
                                                        Describe(entry.Value(), entry.Expand()));
                // A deletion carries the part's string type too, which the tree does not keep.
                EXPECT_EQ(entry.Expand(), expandable) << listed.back();
            }
            tree.Execute(CollectWritten, &written);
            std::sort(listed.begin(), listed.end());
            std::sort(written.begin(), written.end());
            EXPECT_EQ(listed, written);
        }
    }
}

TEST_F(PartsTest, PartsWithoutKeyOrValueNameCannotBeEvaluatedOrSaved)
{
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
            EXPECT_EQ(part->SaveToRegistry(tree, true), !fails);
            EXPECT_EQ(part->SaveToRegistry(tree, false), !fails);
            EXPECT_EQ(part->SaveToCollection(entries, true), !fails);
            EXPECT_EQ(part->SaveToCollection(entries, false), !fails);
        }
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

TEST_F(PartsTest, SyncMarksThePolicyWhenThePartsKeyIsSelected)
{
    for (const char* variant : AllVariants) {
        SCOPED_TRACE(variant);
        auto part = MakePart(variant, key);
        part->ValueName(nullptr);  // marks even when the part itself cannot be evaluated
        part->Policy(&policy);
        policy.Selected(false);
        key->Selected(false);
        part->Sync();
        EXPECT_FALSE(policy.Selected());
        key->Selected(true);
        part->Sync();
        EXPECT_TRUE(policy.Selected());
    }
}

TEST_F(PartsTest, KeyBindingMarksTheKeyAsTheTemplates)
{
    ozADMText part;
    EXPECT_FALSE(key->ADM());
    part.Key(tree, HKEY_LOCAL_MACHINE, "software\\pol");
    EXPECT_EQ(part.Key(), key);
    EXPECT_TRUE(key->ADM());
    part.Key(tree, HKEY_CURRENT_USER, nullptr);
    EXPECT_EQ(part.Key(), key) << "a null path keeps the key";
    part.Key(tree, HKEY_CURRENT_USER, "Software\\Other");
    EXPECT_TRUE(tree.HasKey(HKEY_CURRENT_USER, "Software\\Other")->ADM());
}

// Everything a part holds, as text.
std::string Fingerprint(const ozADMCtrl& part)
{
    auto text = [](const char* s) { return std::string(s != nullptr ? s : "(null)") + "|"; };
    auto actions = [](const ozADMActionList* list) {
        std::string out = "[";
        for (int pos = 0; list != nullptr && pos < list->Count(); ++pos)
            out += std::string(list->At(pos)->ValueName()) + "=" +
                   Describe(list->At(pos)->Value(), false);
        return out + "]";
    };
    std::string out =
        text(part.Name()) + text(part.ValueName()) + text(part.ClientExt()) + State(part) + "|";
    if (const auto* box = dynamic_cast<const ozADMCheckBox*>(&part))
        out += Describe(box->ValueOn(), false) + Describe(box->ValueOff(), false) +
               actions(box->ActionListOn()) + actions(box->ActionListOff());
    if (const auto* edit = dynamic_cast<const ozADMEditText*>(&part))
        out += text(edit->Default());
    if (const auto* combo = dynamic_cast<const ozADMComboBox*>(&part))
        for (int pos = 0; pos < combo->Suggestions().Count(); ++pos)
            out += text(combo->Suggestions().At(pos));
    if (const auto* list = dynamic_cast<const ozADMDropdownList*>(&part))
        for (int pos = 0; pos < list->ItemList().Count(); ++pos) {
            const ozADMListItem* item = list->ItemList().At(pos);
            out +=
                text(item->Name()) + Describe(item->Value(), false) + actions(item->ActionList());
        }
    if (const auto* listBox = dynamic_cast<const ozADMListBox*>(&part))
        out += text(listBox->ValuePrefix());
    return out;
}

TEST_F(PartsTest, CopyIsDeepButSharesKeyAndPolicy)
{
    for (const char* variant : AllVariants) {
        SCOPED_TRACE(variant);
        auto original = MakePart(variant, key);
        original->Policy(&policy);
        std::string before = Fingerprint(*original);
        std::unique_ptr<ozADMCtrl> copy(original->Copy());
        const ozADMCtrl& originalPart = *original;
        const ozADMCtrl& copiedPart = *copy;
        EXPECT_EQ(typeid(copiedPart), typeid(originalPart));
        EXPECT_EQ(copy->Key(), key);
        EXPECT_EQ(copy->Policy(), &policy);
        EXPECT_EQ(Fingerprint(*copy), before);
        // Anything the two shared would now be freed twice or read after being freed.
        original.reset();
        EXPECT_EQ(Fingerprint(*copy), before);

        std::unique_ptr<ozADMCtrl> fresh(copy->New());
        const ozADMCtrl& freshPart = *fresh;
        EXPECT_EQ(typeid(freshPart), typeid(copiedPart));
        EXPECT_EQ(fresh->Key(), nullptr);
        EXPECT_STREQ(fresh->ValueName(), copy->CtrlType() == CtrlListBox ? "" : nullptr);
    }
}

TEST(DropdownList, SelectionAndDefaultAreClampedToTheItems)
{
    struct Case {
        int items, requested, selected;
    };
    const Case cases[] = {{3, 50, 2},  {3, 3, 2},   {3, 2, 2},  {3, 0, 0},
                          {3, -1, -1}, {3, -7, -1}, {0, 0, -1}, {0, 5, -1}};
    for (const Case& c : cases) {
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
}

TEST(NumericPart, SetDefaultRestoresTheDefaultAndItsEmptiness)
{
    ozADMNumeric numeric;
    numeric.Value(9);
    numeric.Default(4);
    numeric.DefaultEmpty(false);
    EXPECT_TRUE(numeric.SetDefault());
    EXPECT_EQ(State(numeric), "4");
}

}  // namespace
