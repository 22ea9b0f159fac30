#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

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

ozADMValue Qword(std::uint64_t number)
{
    ozADMValue value;
    value.SetQword(number);
    return value;
}

ozADMValue Multi(const std::vector<std::string>& lines)
{
    ozADMValue value;
    value.SetMultiString(lines);
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

// Writes strings as <text> and answers as told.
class RecordingTree : public ozADMTree {
public:
    bool WriteString(FILE* file, const char* text) override
    {
        return std::fprintf(file, "<%s>", text) >= 0 && answer;
    }
    bool answer = true;
};

// What SaveADM wrote to a scratch file, followed by <failed> when it reported failure.
std::string SaveADMText(const ozADMValue& value, ozADMTree& tree)
{
    FILE* file = std::tmpfile();
    bool saved = value.SaveADM(file, tree);
    std::string text(64, '\0');
    if (file != nullptr) {
        std::rewind(file);
        text.resize(std::fread(text.data(), 1, text.size(), file));
        std::fclose(file);
    }
    return saved ? text : text + "<failed>";
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
        {Numeric(1), {RitM, OpChange, RegDword, "\1\0\0\0"s}, true},
        {Numeric(1), {RitF, OpInsert, RegDword, "\1\0\0\0"s}, false},
        {Numeric(1), {RitR, OpAppend, RegDword, "\1\0\0\0"s}, false},
        {Numeric(1), {RitR, OpDelete, RegDword, "\1\0\0\0"s}, false},
        {Numeric(1), {RitR, OpInsert, RegDword, "\2\0\0\0"s}, false},
        {Numeric(1), {RitR, OpInsert, RegSz, "1\0"s}, false},
        {Numeric(1), {RitR, OpInsert, RegDword, "\1\0"s}, false},
        {Deletion(), {RitM, OpDelete, RegDword, "\1\0\0\0"s}, true},
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
        {Qword(1ULL << 33), {RitR, OpInsert, RegQword, "\0\0\0\0\2\0\0\0"s}, true},
        {Qword(1), {RitR, OpInsert, RegDword, "\1\0\0\0"s}, false},
        {Multi({"a", "b"}), {RitR, OpInsert, RegMultiSz, "a\0b\0\0"s}, true},
        {Multi({"a"}), {RitR, OpInsert, RegMultiSz, "a\0b"s}, false},
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
        RegState after;
        std::string text;
    } cases[] = {
        {Deletion(), {RitR, OpDelete, RegSz, "\0"s}, "DELETE"},
        {Numeric(0), {RitR, OpInsert, RegDword, "\0\0\0\0"s}, "NUMERIC 0"},
        {Numeric(kMaxNumber),
         {RitR, OpInsert, RegDword, "\xFF\xFF\xFF\xFF"s},
         "NUMERIC " + std::to_string(kMaxNumber)},
        {Text("%Path%"), {RitR, OpInsert, RegSz, "%Path%\0"s}, "<%Path%>"},
        {ozADMValue(), before, "<failed>"},
        // The template language has neither: the nearest form, and a loss reported.
        {Qword(8589934593), {RitR, OpInsert, RegQword, "\1\0\0\0\2\0\0\0"s}, "NUMERIC 1"},
        {Multi({"a", "", "b"}), {RitR, OpInsert, RegMultiSz, "a\0b\0\0"s}, "<a b>"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "template text " << c.text);
        ozRegValue& value = Put(before);
        // A value that is not set saves nothing either way.
        EXPECT_EQ(c.value.SaveToRegistry(value), c.text != "<failed>");
        EXPECT_EQ(value.Op(), c.after.op);
        EXPECT_EQ(value.Type(), c.after.type);
        EXPECT_EQ(std::string(reinterpret_cast<const char*>(value.Data()), value.Size()),
                  c.after.bytes);
        RecordingTree tree;
        EXPECT_EQ(SaveADMText(c.value, tree), c.text);
        EXPECT_EQ(tree.ConversionLosses().size(), c.value.Type() >= ozADMValue::ValueQword);
    }
    RecordingTree failing;
    failing.answer = false;
    EXPECT_EQ(SaveADMText(Text("a"), failing), "<a><failed>") << "the tree's writer failed";
    EXPECT_FALSE(Numeric(1).SaveADM(nullptr, failing));

    CCollection<ozADMRegEntry> entries(true);
    ozADMValue value = Text("v");
    EXPECT_FALSE(value.SaveToCollection(2, nullptr, "Name", entries, false));
    EXPECT_FALSE(value.SaveToCollection(2, "Software\\Pol", nullptr, entries, false));
    ASSERT_TRUE(value.SaveToCollection(2, "Software\\Pol", "Name", entries, true));
    value.SetString("changed");
    ASSERT_EQ(entries.Count(), 1) << "refused entries are not listed";
    EXPECT_EQ(entries.At(0)->Root(), 2u);
    EXPECT_STREQ(entries.At(0)->ExportString(),
                 R"("HKLM\Software\Pol","Name","REG_EXPAND_SZ","v")");
}

// Each change, made in turn to one entry, rebuilds its export text.
TEST(ADMRegEntryTest, ExportStringFollowsEveryChange)
{
    const struct {
        std::function<void(ozADMRegEntry&)> change;
        const char* text;
    } changes[] = {
        {[](ozADMRegEntry&) {}, R"("HKLM\K","N","REG_SZ","t")"},
        {[](ozADMRegEntry& e) { e.Root(1); }, R"("HKCU\K","N","REG_SZ","t")"},
        {[](ozADMRegEntry& e) { e.HKEYRoot(HKEY_CLASSES_ROOT); }, R"("HKCR\K","N","REG_SZ","t")"},
        {[](ozADMRegEntry& e) { e.HKEYRoot(HKEY_USERS); }, R"("K","N","REG_SZ","t")"},
        {[](ozADMRegEntry& e) { e.Key("L\\M"); }, R"("L\M","N","REG_SZ","t")"},
        {[](ozADMRegEntry& e) { e.Valuename("V"); }, R"("L\M","V","REG_SZ","t")"},
        {[](ozADMRegEntry& e) { e.Expand(true); }, R"("L\M","V","REG_EXPAND_SZ","t")"},
        {[](ozADMRegEntry& e) { e.Value().SetNumeric(4000000000u); },
         R"("L\M","V","REG_DWORD","4000000000")"},
        {[](ozADMRegEntry& e) { e.Value().SetQword(5000000000u); },
         R"("L\M","V","REG_QWORD","5000000000")"},
        {[](ozADMRegEntry& e) {
             e.Value() = Multi({"a", "b"});
         },
         R"("L\M","V","REG_MULTI_SZ","a~b~~")"},
        {[](ozADMRegEntry& e) { e.Value().SetDelete(); }, R"("L\M","**Del.V","REG_EXPAND_SZ","")"},
        {[](ozADMRegEntry& e) { e.ClearKey(true); }, R"("L\M","**DelVals")"},
        {[](ozADMRegEntry& e) { e = Entry(HKEY_LOCAL_MACHINE, nullptr, nullptr, ozADMValue()); },
         R"("HKLM\","","REG_SZ","")"},
    };
    ozADMRegEntry entry = Entry(HKEY_LOCAL_MACHINE, "K", "N", Text("t"));
    for (const auto& c : changes) {
        const char* before = entry.ExportString();
        std::as_const(entry).Value();
        EXPECT_EQ(entry.ExportString(), before) << "the text is kept until the entry changes";
        c.change(entry);
        EXPECT_STREQ(entry.ExportString(), c.text);
    }
}

TEST_F(ADMRegistryTest, ValuesEntriesAndListItemsCopyDeeply)
{
    ozADMValue value = Text("abc"), copied(value), assigned = Numeric(3);
    assigned = value;
    value = std::as_const(value);
    value.SetString(static_cast<const char*>(value));  // from its own string
    EXPECT_STREQ(static_cast<const char*>(value), "abc");
    value.SetNumeric(1);
    EXPECT_STREQ(static_cast<const char*>(copied), "abc");
    EXPECT_STREQ(static_cast<const char*>(assigned), "abc");

    ozADMRegEntry original = Entry(HKEY_USERS, "K", "N", Text("t"));
    const std::string text = original.ExportString();
    ozADMRegEntry copy(original);
    original.Key("Other");
    original.Value().SetString("u");
    EXPECT_EQ(copy.Root(), 3u);
    EXPECT_EQ(copy.ExportString(), text);

    auto* list = new ozADMActionList;
    list->Add(Item(HKEY_LOCAL_MACHINE, "Software\\Pol", "a", Numeric(1)));
    auto item = std::make_unique<ozADMListItem>();
    item->Name("First");
    item->ActionList(list);
    item->ActionList(list);  // handing over the list it holds keeps it
    std::unique_ptr<ozADMListItem> itemCopy(item->Copy());
    ozADMListItem itemAssigned;
    itemAssigned = *item;
    item.reset();
    for (const ozADMListItem* duplicate : {itemCopy.get(), &itemAssigned}) {
        EXPECT_STREQ(duplicate->Name(), "First");
        ASSERT_NE(duplicate->ActionList(), nullptr);
        ASSERT_EQ(duplicate->ActionList()->Count(), 1);
        EXPECT_EQ(duplicate->ActionList()->At(0)->RegKey(), key) << "the key is shared";
        EXPECT_STREQ(duplicate->ActionList()->At(0)->ValueName(), "a");
    }
}

TEST_F(ADMRegistryTest, ActionListsCompareAndSaveTheirItemsInOrderOrNothing)
{
    ozActionItem unbound;
    unbound.ValueName("a");
    EXPECT_FALSE(unbound.Sync()) << "no key";
    EXPECT_FALSE(unbound.RegKey(tree, HKEY_LOCAL_MACHINE, nullptr));

    ozADMActionList list;
    CCollection<ozADMRegEntry> entries(true);
    EXPECT_TRUE(list.SaveToRegistry(tree));
    EXPECT_TRUE(list.SaveToCollection(entries));
    EXPECT_TRUE(list.Sync());
    list.Add(Item(HKEY_LOCAL_MACHINE, "software\\pol", "a", Numeric(1)));
    list.Add(Item(HKEY_CURRENT_USER, "Software\\Sub", "b", Text("t")));
    EXPECT_TRUE(key->ADM()) << "an item's key is marked as the template's";
    EXPECT_FALSE(list.Sync());
    EXPECT_EQ(key->HasValue("a"), nullptr) << "comparing creates nothing";
    ASSERT_TRUE(list.SaveToRegistry(tree));
    EXPECT_TRUE(list.Sync());
    ASSERT_TRUE(list.SaveToCollection(entries));
    ASSERT_EQ(entries.Count(), 2);
    EXPECT_STREQ(entries.At(0)->ExportString(), R"("HKLM\Software\Pol","a","REG_DWORD","1")");
    EXPECT_STREQ(entries.At(1)->ExportString(), R"("HKCU\Software\Sub","b","REG_SZ","t")");

    list.Add(Item(HKEY_LOCAL_MACHINE, "Software\\Pol", nullptr, Numeric(1)));
    list.Add(Item(HKEY_LOCAL_MACHINE, "Software\\Pol", "after", Numeric(1)));
    EXPECT_FALSE(list.Sync()) << "an item without value name";
    EXPECT_FALSE(list.SaveToRegistry(tree));
    EXPECT_EQ(key->HasValue("after"), nullptr) << "a list that cannot be written writes nothing";
    EXPECT_FALSE(list.SaveToCollection(entries));
    EXPECT_EQ(entries.Count(), 2) << "and lists nothing";
}

}  // namespace
