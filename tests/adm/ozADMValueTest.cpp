#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <utility>

#include "core/adm/ozADMActionList.h"
#include "core/adm/ozADMListItem.h"
#include "core/adm/ozADMRegEntry.h"
#include "core/adm/ozADMTree.h"
#include "core/adm/ozADMValue.h"
#include "core/registry/ozRegTree.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"

namespace {

using namespace std::string_literals;

ozADMValue Numeric(unsigned long number)
{
    ozADMValue value;
    value.SetNumeric(number);
    return value;
}

ozADMValue Text(const char* text)
{
    ozADMValue value;
    value.SetString(text);
    return value;
}

ozADMValue Deletion()
{
    ozADMValue value;
    value.SetDelete();
    return value;
}

ozADMRegEntry Entry(HKEY root, const char* key, const char* name, const ozADMValue& value,
                    bool expand = false, bool clearKey = false)
{
    ozADMRegEntry entry;
    entry.HKEYRoot(root);
    entry.Key(key);
    entry.Valuename(name);
    entry.Value() = value;
    entry.Expand(expand);
    entry.ClearKey(clearKey);
    return entry;
}

std::string Dword(std::uint32_t number)
{
    return std::string(reinterpret_cast<const char*>(&number), sizeof number);
}

// Writes strings as <text> and answers as told.
class RecordingTree : public ozADMTree {
public:
    bool WriteString(FILE* file, const char* text) override
    {
        return std::fprintf(file, "<%s>", text) >= 0 && answer;
    }
    bool answer = true;
};

// Runs SaveADM on a scratch file and returns what it wrote.
std::string SaveADMText(const ozADMValue& value, ozADMTree& tree, bool& result)
{
    FILE* file = std::tmpfile();
    if (file == nullptr)
        return "<no scratch file>";
    result = value.SaveADM(file, tree);
    std::rewind(file);
    std::string text;
    for (int c; (c = std::fgetc(file)) != EOF;)
        text.push_back(static_cast<char>(c));
    std::fclose(file);
    return text;
}

TEST(ADMValueTest, ReadsAsNumberAndAsString)
{
    const struct {
        ozADMValue value;
        unsigned long number;
        const char* text;
    } cases[] = {{Numeric(7), 7, nullptr}, {Text("12abc"), 12, "12abc"},
                 {Text("abc"), 0, "abc"},  {Text(nullptr), 0, nullptr},
                 {Deletion(), 0, nullptr}, {ozADMValue(), 0, nullptr}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "row " << &c - cases);
        EXPECT_EQ(static_cast<unsigned long>(c.value), c.number);
        EXPECT_STREQ(static_cast<const char*>(c.value), c.text);
    }
}

class ADMRegistryTest : public ::testing::Test {
protected:
    struct RegState {
        tREGITEMTYPE itemType;
        tOPVALUE op;
        unsigned long type;
        std::string bytes;
    };
    ozRegValue& Put(const RegState& state)
    {
        ozRegValue& value = *key->FindValue("x");
        value.SetData(state.type, static_cast<unsigned long>(state.bytes.size()),
                      reinterpret_cast<const unsigned char*>(state.bytes.data()));
        value.Op(state.op);
        value.RIT(state.itemType);
        return value;
    }
    // An action item for `name` in the key at path below root, holding value.
    ozActionItem* Item(HKEY root, const char* path, const char* name, const ozADMValue& value)
    {
        auto* item = new ozActionItem;
        EXPECT_TRUE(item->RegKey(tree, root, path));
        item->ValueName(name);
        item->Value() = value;
        return item;
    }

    ozRegTree tree;
    ozSubKey* key = tree.FindKey(HKEY_LOCAL_MACHINE, "Software\\Pol");
};

TEST_F(ADMRegistryTest, IsEqualWithRegistryValue)
{
    const struct {
        ozADMValue value;
        RegState registry;
        bool equal;
    } cases[] = {
        {Numeric(1), {RitR, OpInsert, RegDword, Dword(1)}, true},
        {Numeric(1), {RitM, OpChange, RegDword, Dword(1)}, true},
        {Numeric(1), {RitF, OpInsert, RegDword, Dword(1)}, false},
        {Numeric(1), {RitR, OpAppend, RegDword, Dword(1)}, false},
        {Numeric(1), {RitR, OpDelete, RegDword, Dword(1)}, false},
        {Numeric(1), {RitR, OpInsert, RegDword, Dword(2)}, false},
        {Numeric(1), {RitR, OpInsert, RegSz, "1\0"s}, false},
        {Numeric(1), {RitR, OpInsert, RegDword, "\1\0"s}, false},
        {Deletion(), {RitM, OpDelete, RegDword, Dword(1)}, true},
        {Deletion(), {RitA, OpDelete, RegSz, "\0"s}, false},
        {Deletion(), {RitR, OpChange, RegSz, "\0"s}, false},
        {Text("abc"), {RitR, OpInsert, RegSz, "abc\0junk"s}, true},
        {Text("abc"), {RitR, OpInsert, RegExpandSz, "abc\0"s}, true},
        {Text("abc"), {RitR, OpInsert, RegSz, "ABC\0"s}, false},
        {Text("abc"), {RitR, OpInsert, RegSz, "abcd\0"s}, false},
        {Text("abc"), {RitR, OpInsert, RegSz, "abc"s}, false},
        {Text("abc"), {RitR, OpInsert, RegMultiSz, "abc\0\0"s}, false},
        {Text("abc"), {RitR, OpDelete, RegSz, "abc\0"s}, false},
        {Text(nullptr), {RitR, OpInsert, RegSz, "\0"s}, false},
        {ozADMValue(), {RitR, OpInsert, RegSz, "\0"s}, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "row " << &c - cases);
        EXPECT_EQ(c.value.IsEqualWith(Put(c.registry)), c.equal);
    }
}

TEST_F(ADMRegistryTest, SavesIntoRegistryAndAsTemplateText)
{
    // Beyond what a signed long holds on every platform.
    constexpr unsigned long kMaxNumber = std::numeric_limits<unsigned long>::max();
    const RegState before{RitR, OpDelete, RegExpandSz, "old\0"s};
    const struct {
        ozADMValue value;
        bool saved;
        RegState after;
        std::string text;
    } cases[] = {
        {Deletion(), true, {RitR, OpDelete, RegSz, "\0"s}, "DELETE"},
        {Numeric(0), true, {RitR, OpInsert, RegDword, Dword(0)}, "NUMERIC 0"},
        {Numeric(kMaxNumber),
         true,
         {RitR, OpInsert, RegDword, Dword(0xFFFFFFFFu)},
         "NUMERIC " + std::to_string(kMaxNumber)},
        {Text("%Path%"), true, {RitR, OpInsert, RegSz, "%Path%\0"s}, "<%Path%>"},
        {ozADMValue(), false, before, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "template text " << c.text);
        ozRegValue& value = Put(before);
        EXPECT_EQ(c.value.SaveToRegistry(value), c.saved);
        EXPECT_EQ(value.Op(), c.after.op);
        EXPECT_EQ(value.Type(), c.after.type);
        EXPECT_EQ(std::string(reinterpret_cast<const char*>(value.Data()), value.Size()),
                  c.after.bytes);
        RecordingTree tree;
        bool result = !c.saved;
        EXPECT_EQ(SaveADMText(c.value, tree, result), c.text);
        EXPECT_EQ(result, c.saved);
    }
    RecordingTree failing;
    failing.answer = false;
    bool result = true;
    SaveADMText(Text("a"), failing, result);
    EXPECT_FALSE(result) << "the tree's string writer failed";
    EXPECT_FALSE(Numeric(1).SaveADM(nullptr, failing));
}

TEST(ADMValueTest, SaveToCollectionAppendsOwnedEntry)
{
    CCollection<ozADMRegEntry> entries(true);
    ozADMValue value = Text("v");
    EXPECT_FALSE(value.SaveToCollection(2, nullptr, "Name", entries, false));
    EXPECT_FALSE(value.SaveToCollection(2, "Software\\Pol", nullptr, entries, false));
    EXPECT_EQ(entries.Count(), 0);

    ASSERT_TRUE(value.SaveToCollection(2, "Software\\Pol", "Name", entries, true));
    value.SetString("changed");
    ASSERT_EQ(entries.Count(), 1);
    EXPECT_EQ(entries.At(0)->Root(), 2u);
    EXPECT_STREQ(entries.At(0)->ExportString(),
                 R"("HKLM\Software\Pol","Name","REG_EXPAND_SZ","v")");
}

TEST(ADMRegEntryTest, ExportString)
{
    const struct {
        ozADMRegEntry entry;
        const char* text;
    } cases[] = {
        {Entry(HKEY_LOCAL_MACHINE, "Software\\Pol", "Enabled", Numeric(1)),
         R"("HKLM\Software\Pol","Enabled","REG_DWORD","1")"},
        {Entry(HKEY_CURRENT_USER, "Software\\Pol", "Name", Deletion(), true),
         R"("HKCU\Software\Pol","**Del.Name","REG_EXPAND_SZ","")"},
        {Entry(HKEY_LOCAL_MACHINE, "Software\\Pol\\List", "Item", Text("a"), false, true),
         R"("HKLM\Software\Pol\List","**DelVals")"},
        {Entry(HKEY_CLASSES_ROOT, "Ext", "", Text("%Path%"), true),
         R"("HKCR\Ext","","REG_EXPAND_SZ","%Path%")"},
        {Entry(HKEY_USERS, "S-1\\Pol", "v", Text("a")), R"("S-1\Pol","v","REG_SZ","a")"},
        {Entry(HKEY_LOCAL_MACHINE, "K", "N", Numeric(4000000000u), true),
         R"("HKLM\K","N","REG_DWORD","4000000000")"},
        {Entry(HKEY_LOCAL_MACHINE, nullptr, nullptr, ozADMValue()), R"("HKLM\","","REG_SZ","")"},
    };
    for (const auto& c : cases)
        EXPECT_STREQ(c.entry.ExportString(), c.text);
}

TEST(ADMRegEntryTest, EveryChangeRebuildsExportString)
{
    const struct {
        std::function<void(ozADMRegEntry&)> change;
        const char* text;
    } cases[] = {
        {[](ozADMRegEntry& e) { e.Root(1); }, R"("HKCU\K","N","REG_SZ","t")"},
        {[](ozADMRegEntry& e) { e.HKEYRoot(HKEY_USERS); }, R"("K","N","REG_SZ","t")"},
        {[](ozADMRegEntry& e) { e.Key("L"); }, R"("HKLM\L","N","REG_SZ","t")"},
        {[](ozADMRegEntry& e) { e.Valuename("M"); }, R"("HKLM\K","M","REG_SZ","t")"},
        {[](ozADMRegEntry& e) { e.Value().SetNumeric(5); }, R"("HKLM\K","N","REG_DWORD","5")"},
        {[](ozADMRegEntry& e) { e.Expand(true); }, R"("HKLM\K","N","REG_EXPAND_SZ","t")"},
        {[](ozADMRegEntry& e) { e.ClearKey(true); }, R"("HKLM\K","**DelVals")"},
        {[](ozADMRegEntry& e) { e = Entry(HKEY_USERS, "A", "B", Text("c")); },
         R"("A","B","REG_SZ","c")"},
    };
    for (const auto& c : cases) {
        ozADMRegEntry entry = Entry(HKEY_LOCAL_MACHINE, "K", "N", Text("t"));
        const char* before = entry.ExportString();
        std::as_const(entry).Value();
        EXPECT_EQ(entry.ExportString(), before) << "the text is kept until the entry changes";
        c.change(entry);
        EXPECT_STREQ(entry.ExportString(), c.text);
    }
}

TEST(ADMRegEntryTest, CopiesAreDeep)
{
    ozADMValue value = Text("abc");
    ozADMValue valueCopy(value);
    ozADMValue valueAssigned = Numeric(3);
    valueAssigned = value;
    const ozADMValue& self = value;
    value = self;
    value.SetString(static_cast<const char*>(value));
    EXPECT_STREQ(static_cast<const char*>(value), "abc");
    value.SetNumeric(1);
    EXPECT_STREQ(static_cast<const char*>(valueCopy), "abc");
    EXPECT_STREQ(static_cast<const char*>(valueAssigned), "abc");

    ozADMRegEntry original = Entry(HKEY_USERS, "K", "N", Text("t"));
    const std::string text = original.ExportString();
    ozADMRegEntry copy(original);
    original.Key("Other");
    original.Value().SetString("u");
    EXPECT_EQ(copy.Root(), 3u);
    EXPECT_EQ(copy.ExportString(), text);
}

TEST_F(ADMRegistryTest, ActionItemKeyAndSync)
{
    ozActionItem item;
    item.Value().SetNumeric(1);
    item.ValueName("v");
    EXPECT_FALSE(item.Sync()) << "no key";
    EXPECT_FALSE(item.RegKey(tree, HKEY_LOCAL_MACHINE, nullptr));
    ASSERT_TRUE(item.RegKey(tree, HKEY_LOCAL_MACHINE, "software\\pol"));
    EXPECT_EQ(item.RegKey(), key);
    EXPECT_TRUE(key->ADM());
    EXPECT_FALSE(item.Sync()) << "no such value";
    EXPECT_EQ(key->HasValue("v"), nullptr) << "comparing creates nothing";
    key->FindValue("V")->SetDWORD(1);
    EXPECT_TRUE(item.Sync());
    item.ValueName(nullptr);
    EXPECT_FALSE(item.Sync()) << "no value name";
}

TEST_F(ADMRegistryTest, ActionListSavesInOrderUntilFirstFailure)
{
    ozADMActionList list;
    CCollection<ozADMRegEntry> entries(true);
    EXPECT_TRUE(list.SaveToRegistry(tree));
    EXPECT_TRUE(list.SaveToCollection(entries));
    EXPECT_TRUE(list.Sync());

    list.Add(Item(HKEY_LOCAL_MACHINE, "Software\\Pol", "a", Numeric(1)));
    list.Add(Item(HKEY_CURRENT_USER, "Software\\Sub", "b", Text("t")));
    EXPECT_FALSE(list.Sync());
    ASSERT_TRUE(list.SaveToRegistry(tree));
    EXPECT_TRUE(list.Sync());
    ASSERT_TRUE(list.SaveToCollection(entries));
    ASSERT_EQ(entries.Count(), 2);
    EXPECT_STREQ(entries.At(0)->ExportString(), R"("HKLM\Software\Pol","a","REG_DWORD","1")");
    EXPECT_STREQ(entries.At(1)->ExportString(), R"("HKCU\Software\Sub","b","REG_SZ","t")");

    list.Add(Item(HKEY_LOCAL_MACHINE, "Software\\Pol", nullptr, Numeric(1)));
    list.Add(Item(HKEY_LOCAL_MACHINE, "Software\\Pol", "after", Numeric(1)));
    EXPECT_FALSE(list.SaveToRegistry(tree));
    EXPECT_EQ(key->HasValue("after"), nullptr) << "items after a failure are not written";
    EXPECT_FALSE(list.SaveToCollection(entries));
    EXPECT_EQ(entries.Count(), 4);
}

TEST_F(ADMRegistryTest, ListItemOwnsAndCopiesItsActionList)
{
    auto* list = new ozADMActionList;
    list->Add(Item(HKEY_LOCAL_MACHINE, "Software\\Pol", "a", Numeric(1)));
    auto item = std::make_unique<ozADMListItem>();
    item->Name("First");
    item->ActionList(list);
    item->ActionList(list);
    std::unique_ptr<ozADMListItem> copy(item->Copy());
    ozADMListItem assigned;
    assigned = *item;
    item.reset();
    for (const ozADMListItem* duplicate : {copy.get(), &assigned}) {
        EXPECT_STREQ(duplicate->Name(), "First");
        ASSERT_NE(duplicate->ActionList(), nullptr);
        ASSERT_EQ(duplicate->ActionList()->Count(), 1);
        EXPECT_EQ(duplicate->ActionList()->At(0)->RegKey(), key) << "the key is shared";
        EXPECT_STREQ(duplicate->ActionList()->At(0)->ValueName(), "a");
    }
}

}  // namespace
