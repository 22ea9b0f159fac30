#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "core/registry/ozAppendedTextDialog.h"
#include "core/registry/ozRegTree.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "core/registry/ozVariableMarkers.h"

namespace {

using namespace std::string_literals;

// The bytes of a datum, for comparison with an expected byte string.
std::string Bytes(const ozRegValue& value, bool second = false)
{
    const unsigned char* data = second ? value.Data2() : value.Data();
    unsigned long size = second ? value.Size2() : value.Size();
    return data == nullptr ? "<null>" : std::string(reinterpret_cast<const char*>(data), size);
}

const unsigned char* Raw(const std::string& bytes)
{
    return reinterpret_cast<const unsigned char*>(bytes.data());
}

std::string NumberBytes(std::uint32_t number)
{
    return std::string(reinterpret_cast<const char*>(&number), sizeof number);
}

// Confirms (with the text replaced when a replacement is set) or cancels, and remembers the
// text it was shown.
class FakeDialog : public ozAppendedTextDialog {
public:
    bool Confirm(std::string& text) override
    {
        shown = text;
        if (confirms && replacement != nullptr)
            text = replacement;
        return confirms;
    }
    bool confirms = true;
    const char* replacement = nullptr;
    std::string shown = "<not shown>";
};

class ValueTest : public ::testing::Test {
protected:
    void SetUp() override { TearDown(); }
    void TearDown() override
    {
        ozVariableMarkers::Start("");
        ozVariableMarkers::End("");
        ozAppendedTextDialog::Current(nullptr);
    }
    // A change of a string value from `before` to `after`.
    void MakeChange(unsigned long type, const std::string& before, const std::string& after)
    {
        value.SetData(type, static_cast<unsigned long>(after.size()), Raw(after));
        value.Op(OpChange);
        ASSERT_TRUE(value.SetData2(type, static_cast<unsigned long>(before.size()), Raw(before)));
    }

    ozRegValue value;
};

TEST_F(ValueTest, TextForm)
{
    // Rows marked shown are also what the formatter produces for the bytes.
    const struct {
        unsigned long type;
        std::string bytes;
        const char* text;
        bool shown;
    } forms[] = {
        // clang-format off
        {RegSz, "abc\0"s, "abc~", true},                 {RegSz, "abc\0"s, "abc", false},
        {RegSz, "a$b~c\0"s, "a$$b$~c~", true},           {RegSz, "\0"s, "", false},
        {RegExpandSz, "%P%\0"s, "%P%~", true},           {RegSz, "a\0b\0"s, "a~b", false},
        {RegMultiSz, "a\0b\0\0"s, "a~b~~", true},        {RegSz, "$x$\0"s, "$$x$", false},
        {RegMultiSz, "$\0~\0\0"s, "$$~$~~~", true},      {RegMultiSz, "a\0b\0\0"s, "a~b", false},
        {RegMultiSz, "a\0b\0\0"s, "a~b~", false},        {RegMultiSz, "\0\0"s, "", false},
        {RegMultiSz, "\0\0"s, "~", false},               {RegMultiSz, "$\0\0"s, "$$~", false},
        {RegMultiSz, "\0\0\0"s, "~~~", false},
        {RegDword, NumberBytes(0x10), "0x00000010", true},
        {RegDwordBigEndian, NumberBytes(0x01020304), "0x01020304", true},
        {RegDword, NumberBytes(0xFFFFFFFF), "-1", false},
        {RegDword, NumberBytes(0xABCDEF01), "0xabcdef01", false},
        {RegDwordBigEndian, NumberBytes(3000000000u), "3000000000", false},
        {RegBinary, "\x01\xAB"s, "01 AB", true},         {11, "\x7F"s, "7F", true},
        {RegBinary, "\x12\x03"s, "123", false},          {RegBinary, "\x0A\x0B"s, "a,B", false},
        {RegBinary, ""s, "", false},
        // clang-format on
    };
    for (const auto& form : forms) {
        SCOPED_TRACE(testing::Message() << "type " << form.type << ", text " << form.text);
        ozRegValue parsed;
        EXPECT_TRUE(parsed.SetFormattedData(form.type, form.text, false));
        EXPECT_EQ(Bytes(parsed), form.bytes);
        EXPECT_EQ(parsed.Type(), form.type);
        if (form.shown) {
            EXPECT_EQ(parsed.FormattedValue(), form.text);
        }
    }

    // Nothing to read leaves the datum; an empty datum shows nothing.
    value.SetDWORD(7);
    for (const char* text : {"xyz", "", " "})
        EXPECT_TRUE(value.SetFormattedData(RegDword, text, false));
    EXPECT_TRUE(value.SetFormattedData(RegSz, nullptr, false));
    EXPECT_EQ(Bytes(value), NumberBytes(7));
    EXPECT_EQ(value.Type(), RegDword);
    for (unsigned long type : {RegSz, RegDword, RegBinary}) {
        ozRegValue empty;
        empty.Type(type);
        EXPECT_EQ(empty.FormattedValue(), "") << "type " << type;
        empty.SetData(type, 0, Raw("x"));
        EXPECT_EQ(Bytes(empty), "");
        EXPECT_EQ(empty.Data()[0], 0);
        EXPECT_EQ(empty.FormattedValue(), "") << "type " << type;
    }
}

TEST_F(ValueTest, SettersMakeTheOperationInsertLikeExceptSetData)
{
    const struct {
        tOPVALUE before, after;
    } rules[] = {{OpDelete, OpInsert}, {OpAppend, OpInsert}, {OpChange, OpChange}};
    for (const auto& rule : rules) {
        for (int setter = 0; setter < 3; ++setter) {
            value.Op(rule.before);
            EXPECT_TRUE(setter == 0   ? value.SetString("s")
                        : setter == 1 ? value.SetDWORD(1)
                                      : value.SetData(RegBinary, 1, Raw("x")));
            EXPECT_EQ(value.Op(), setter < 2 ? rule.after : rule.before) << setter;
        }
    }

    EXPECT_TRUE(value.SetExpandString("%x%"));
    EXPECT_EQ(value.Type(), RegExpandSz);
    EXPECT_EQ(Bytes(value), "%x%\0"s);
    EXPECT_TRUE(value.SetDWORD(static_cast<unsigned long>(0x1234567890ull)));  // low 32 bits
    EXPECT_EQ(Bytes(value), NumberBytes(0x34567890));
    EXPECT_TRUE(value.SetDelete());
    EXPECT_EQ(value.Op(), OpDelete);
    EXPECT_EQ(value.Type(), RegSz);
    EXPECT_EQ(Bytes(value), "\0"s);

    EXPECT_FALSE(value.SetString(nullptr));
    EXPECT_FALSE(value.SetExpandString(nullptr));
    EXPECT_FALSE(value.SetData(RegBinary, 1, nullptr));
    EXPECT_EQ(Bytes(value), "\0"s);
}

TEST_F(ValueTest, SecondDatumOnlyForTwoDataOperationsOfPlainItems)
{
    value.SetString("new");
    const struct {
        tREGITEMTYPE itemType;
        tOPVALUE op;
        unsigned long type;
        bool accepted;
    } cases[] = {{RitR, OpChange, RegSz, true},      {RitM, OpAppend, RegSz, true},
                 {RitR, OpCodeR, RegSz, true},       {RitR, OpInsert, RegSz, false},
                 {RitR, OpChange, RegBinary, false}, {RitF, OpAppend, RegSz, false}};
    for (const auto& c : cases) {
        ozRegValue second(value);
        second.RIT(c.itemType);
        second.Op(c.op);
        std::string before = Bytes(second, true);
        EXPECT_EQ(second.SetData2(c.type, 4, Raw("old\0"s)), c.accepted)
            << static_cast<char>(c.itemType) << " " << static_cast<char>(c.op);
        EXPECT_EQ(Bytes(second, true), c.accepted ? "old\0"s : before);
    }

    // A change starts from the empty old string, for strings only, and keeps an old datum.
    value.Op(OpChange);
    EXPECT_EQ(Bytes(value, true), "\0"s);
    EXPECT_FALSE(value.SetData2(RegSz, 1, nullptr));
    value.SetData2(RegSz, 4, Raw("old\0"s));
    value.Op(OpChange);
    EXPECT_EQ(Bytes(value, true), "old\0"s);
    ozRegValue number;
    number.SetDWORD(1);
    number.Op(OpChange);
    EXPECT_EQ(number.Data2(), nullptr);
}

TEST_F(ValueTest, ChangeOfAStringToALongerOneBecomesAnAppendOfTheAddedText)
{
    const struct {
        unsigned long type;
        std::string before, after, appended;
    } cases[] = {
        {RegSz, "hello\0"s, "hello world\0"s, " world\0"s},
        {RegExpandSz, "a\0"s, "a"s, "\0"s},
        {RegSz, "b\0"s, "abc\0"s, "ac\0"s},
        {RegMultiSz, "a\0b\0\0"s, "a\0b\0c\0\0"s, "c\0\0"s},
        {RegMultiSz, "a\0\0"s, "a\0b"s, "b\0\0"s},
    };
    for (const auto& c : cases) {
        MakeChange(c.type, c.before, c.after);
        EXPECT_TRUE(value.SwitchChange2Append(false));
        EXPECT_EQ(value.Op(), OpAppend);
        EXPECT_EQ(Bytes(value), c.appended) << "type " << c.type;
        EXPECT_EQ(Bytes(value, true), c.before);
    }

    // Refused for other operations, other types and a change without new datum.
    value.SetString("abc");
    EXPECT_FALSE(value.SwitchChange2Append(false));  // operation 'I'
    MakeChange(RegBinary, "\x01"s, "\x01\x02"s);
    EXPECT_FALSE(value.SwitchChange2Append(false));
    EXPECT_EQ(value.Op(), OpChange);

    ozRegValue withoutNewDatum;
    withoutNewDatum.Type(RegSz);
    withoutNewDatum.Op(OpChange);
    ASSERT_NE(withoutNewDatum.Data2(), nullptr);
    EXPECT_FALSE(withoutNewDatum.SwitchChange2Append(false));

    // Asked for, the appended text is confirmed, edited or cancelled by the dialog.
    FakeDialog dialog;
    MakeChange(RegSz, "hello\0"s, "hello world\0"s);
    EXPECT_FALSE(value.SwitchChange2Append(true));  // nobody to ask
    EXPECT_EQ(value.Op(), OpChange);

    ozAppendedTextDialog::Current(&dialog);
    dialog.confirms = false;
    EXPECT_FALSE(value.SwitchChange2Append(true));
    EXPECT_EQ(dialog.shown, " world");
    EXPECT_EQ(Bytes(value), "hello world\0"s);

    dialog.confirms = true;
    EXPECT_TRUE(value.SwitchChange2Append(true));
    EXPECT_EQ(Bytes(value), " world\0"s);

    dialog.replacement = " there";
    MakeChange(RegMultiSz, "a\0\0"s, "a\0b\0\0"s);
    EXPECT_TRUE(value.SwitchChange2Append(true));
    EXPECT_EQ(dialog.shown, "b");
    EXPECT_EQ(Bytes(value), " there\0\0"s);
}

TEST_F(ValueTest, VariablesNeedBothMarkersInOrderAndFollowKeyPathNameAndStringData)
{
    ozVariableMarkers::Start("<<");
    EXPECT_FALSE(ozRegValue::HasVariables("<<a>")) << "no end marker";
    ozVariableMarkers::End(">");
    EXPECT_TRUE(ozRegValue::HasVariables("x<<>"));
    EXPECT_FALSE(ozRegValue::HasVariables("> <<"));
    EXPECT_FALSE(ozRegValue::HasVariables(nullptr));
    ozVariableMarkers::Start("");
    ozVariableMarkers::End("");

    ozRegTree tree;
    ozSubKey* plain = tree.FindKey(HKEY_CURRENT_USER, "Software");
    ozSubKey* variable = tree.FindKey(HKEY_CURRENT_USER, "Software\\%App%");
    ozRegValue* inPlain = plain->FindValue("v");
    ozRegValue* inVariable = variable->FindValue("v");

    inPlain->WVar(true);
    inPlain->SetString("plain");
    EXPECT_TRUE(inPlain->WVar()) << "markers unset: the flag stays";

    ozVariableMarkers::Start("%");
    ozVariableMarkers::End("%");
    inPlain->SetString("plain");
    EXPECT_FALSE(inPlain->WVar());
    inPlain->SetString("%x%");
    EXPECT_TRUE(inPlain->WVar());
    inPlain->SetData(RegBinary, 3, Raw("%x%"));
    EXPECT_FALSE(inPlain->WVar());  // binary data is not text
    inPlain->Name("%name%");
    EXPECT_TRUE(inPlain->WVar());

    inVariable->SetString("plain");
    EXPECT_TRUE(inVariable->WVar());
    EXPECT_TRUE(inVariable->RefreshVariablesFlag(false, false));
    EXPECT_FALSE(inVariable->WVar());  // without the key path
    EXPECT_TRUE(inVariable->RefreshVariablesFlag(false, true));
    EXPECT_TRUE(inVariable->WVar());
    inPlain->Name("v");
    inPlain->RefreshVariablesFlag(true, true);
    EXPECT_FALSE(inPlain->WVar());  // a full refresh looks for itself, ignoring the parent

    ozRegValue change;
    change.SetString("new");
    change.Op(OpChange);
    change.SetData2(RegSz, 4, Raw("%o%\0"s));
    EXPECT_TRUE(change.WVar());
    change.Op(OpInsert);
    change.RefreshVariablesFlag(true, false);
    EXPECT_FALSE(change.WVar());  // the old datum counts only for two-data operations
}

TEST_F(ValueTest, KeyGivesItsRootSeesRenamesAndHoldsNoCopies)
{
    ozRegTree tree;
    ozSubKey* key = tree.FindKey(HKEY_LOCAL_MACHINE, "Software");
    ozRegValue loose;
    loose.SubKey(key);
    EXPECT_EQ(loose.Root(), 2u);

    for (int i = 0; i < 64; ++i)  // enough values for the key to index their names
        key->FindValue(("filler" + std::to_string(i)).c_str());
    ozRegValue* found = key->FindValue("Before");
    EXPECT_EQ(key->HasValue("BEFORE"), found);
    found->Name("After");
    found->Name(nullptr);
    EXPECT_STREQ(found->Name(), "After");
    EXPECT_EQ(key->HasValue("before"), nullptr);
    EXPECT_EQ(key->HasValue("after"), found);

    ozRegValue renamed(*found);
    renamed.Name("Assigned");
    EXPECT_EQ(key->HasValue("after"), found);
    *found = renamed;
    EXPECT_EQ(key->HasValue("assigned"), found);
    EXPECT_EQ(key->HasValue("after"), nullptr);

    ozRegValue* original = key->FindValue("v");
    original->SetString("new");
    original->Op(OpChange);
    original->SetData2(RegSz, 4, Raw("old\0"s));
    original->RIT(RitM);
    original->LineNumber(12);

    ozRegValue constructed(*original);
    ozRegValue assigned;
    assigned = constructed;
    const ozRegValue& self = assigned;
    assigned = self;
    for (const ozRegValue* copy : {&constructed, &assigned}) {
        EXPECT_STREQ(copy->Name(), "v");
        EXPECT_NE(copy->Name(), original->Name());
        EXPECT_NE(copy->Data(), original->Data());
        EXPECT_EQ(Bytes(*copy), "new\0"s);
        EXPECT_EQ(Bytes(*copy, true), "old\0"s);
        EXPECT_EQ(copy->Op(), OpChange);
        EXPECT_EQ(copy->RIT(), RitM);
        EXPECT_EQ(copy->LineNumber(), 12u);
        EXPECT_EQ(copy->SubKey(), key);
    }
    EXPECT_EQ(key->HasValue("v"), original) << "a copy is not one of the key's values";
}

}  // namespace
