// The failures a template can hardly provoke, with the actions called directly: the wrong kind
// of argument or none, tokens an action cannot use, a missing part or number.
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/adm/ozADMMultiText.h"
#include "core/adm/ozADMNumeric.h"
#include "ozGrammarActionFixture.h"

namespace {

using ArgumentActionTest = GrammarActionTest;

// Each case pushes what `stack` lists (s: a String, v: a Value, a: an Actionlist) and runs an
// action inside a policy with a check box; the argument fetched wrongly is not put back.
TEST_F(ArgumentActionTest, WrongOrMissingArguments)
{
    struct Case {
        const char* stack;
        intptr_t (*action)(intptr_t);
        const char* actionName;
        int number;               // 0: fails without a number
        const char* description;  // null: none set
        size_t leftOnStack;
    };
    const std::vector<Case> cases = {
        {"v", PolicyValuename, "PolicyValuename", LoadErrorWrongArgument, "String", 0},
        {"sv", PolicyExplain, "PolicyExplain", LoadErrorWrongArgument, "String", 1},
        {"s", PolicyValueOn, "PolicyValueOn", LoadErrorNoValue, "PolicyValueOn", 0},
        {"", PolicyValueOff, "PolicyValueOff", LoadErrorNoValue, "PolicyValueOff", 0},
        {"s", CheckboxValueOn, "CheckboxValueOn", LoadErrorNoValue, "CheckboxValueOn", 0},
        {"", CheckboxValueOff, "CheckboxValueOff", LoadErrorNoValue, "CheckboxValueOff", 0},
        {"v", PolicyActionlistOn, "PolicyActionlistOn", LoadErrorWrongArgument, "Actionlist", 0},
        {"s", CheckboxActionlistOff, "CheckboxActionlistOff", LoadErrorWrongArgument, "Actionlist",
         0},
        {"a", ValueString, "ValueString", LoadErrorWrongArgument, "String", 0},
        {"", PartValuename, "PartValuename", 0, nullptr, 0},
        {"as", ActionlistValue, "ActionlistValue", LoadErrorWrongArgument, "Value", 1},
        {"av", ActionlistValue, "ActionlistValue", LoadErrorWrongArgument, "String", 0},
        {"sv", ActionlistValue, "ActionlistValue", LoadErrorNoArgument, nullptr, 0},
        {"vsv", ActionlistValue, "ActionlistValue", LoadErrorWrongArgument, "Actionlist", 1},
        {"", SetKeyname, "SetKeyname", 0, nullptr, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.actionName) + " on \"" + c.stack + "\"");
        TearDown();
        SetUp();
        ASSERT_TRUE(Prepare());
        Class("MACHINE");
        Policy("Pol");
        Part(CreateCheckbox, "Box");
        for (const char* kind = c.stack; *kind != '\0'; ++kind) {
            if (*kind == 's')
                Push("text");
            else if (*kind == 'v')
                Ok(ValueDelete(0), "VALUE DELETE");
            else
                Ok(BeginActionlist(0), "ACTIONLIST");
        }
        ozResetRecordedErrors();
        EXPECT_EQ(c.action(0), 0);
        EXPECT_EQ(ozRecordedErrorCode(), c.number);
        if (c.description == nullptr)
            EXPECT_EQ(ozRecordedErrorDescription(), nullptr);
        else
            EXPECT_STREQ(ozRecordedErrorDescription(), c.description);
        size_t left = 0;
        for (ozArgumentStack* arguments = Context().Arguments(); !arguments->Empty(); ++left)
            arguments->Pop();
        EXPECT_EQ(left, c.leftOnStack);
    }
}

TEST_F(ArgumentActionTest, BadTokens)
{
    ASSERT_TRUE(Prepare("[strings]\r\nKnown=text\r\n"));
    struct Case {
        const char* what;
        std::function<intptr_t()> action;
        int number;
    };
    const Case cases[] = {
        {"SaveString with a number", [] { return SaveString(TestToken::Number(3)); },
         LoadErrorTextRequired},
        {"SaveString with a reference", [] { return SaveString(TestToken::Reference("Known")); },
         LoadErrorTextRequired},
        {"SaveString without a token", [] { return SaveString(0); }, LoadErrorTextRequired},
        {"SaveStringFromName with a word",
         [] { return SaveStringFromName(TestToken::Word("Known")); }, LoadErrorUnknownString},
        {"SaveStringFromName with an unknown name",
         [] { return SaveStringFromName(TestToken::Reference("Unknown")); },
         LoadErrorUnknownString},
        {"BeginClass without a token", [] { return BeginClass(0); }, LoadErrorCreateClass},
    };
    for (const Case& c : cases) {
        ozResetRecordedErrors();
        EXPECT_EQ(c.action(), 0) << c.what;
        EXPECT_EQ(ozRecordedErrorCode(), c.number) << c.what;
    }
    EXPECT_TRUE(Context().Arguments()->Empty());
}

class PartActionTest : public GrammarActionTest {
protected:
    // Inside POLICY Pol of CLASS MACHINE, whose key name is Software\Pol.
    void SetUp() override
    {
        GrammarActionTest::SetUp();
        ASSERT_TRUE(Prepare());
        Class("MACHINE");
        Policy("Pol");
        KeyName("Software\\Pol");
    }
};

// Numbers reported when an action finds no part (of its kind) or no number token.
TEST_F(PartActionTest, MissingPartOrNumber)
{
    struct Case {
        const char* what;
        std::function<void()> setUp;
        std::function<intptr_t()> action;
        int number;
        // 1103 comes before 1113 when the policy has no parts; 0: not counted, where how many
        // the empty stack's look and fetches add depends on how the recorder is linked.
        int reportedCount;
    };
    const TestToken word = TestToken::Word("many");
    const TestToken five = TestToken::Number(5);
    const std::vector<Case> cases = {
        {"part action, policy without parts", [] {}, [] { return PartRequired(0); },
         LoadErrorNoPart, 2},
        {"EndPart, policy without parts", [] {}, [] { return EndPart(0); }, LoadErrorNoPart, 2},
        {"part action outside a policy", [] { Ok(EndPolicy(0), "END POLICY"); },
         [] { return CheckboxChecked(0); }, LoadErrorNoPart, 1},
        {"EndPart outside a policy", [] { Ok(EndPolicy(0), "END POLICY"); },
         [] { return EndPart(0); }, LoadErrorNoPolicy, 1},
        {"numeric action on a check box", [] { Part(CreateCheckbox, "Box"); },
         [&] { return NumericMin(five); }, LoadErrorNoPart, 1},
        {"NumericDefault with a word", [] { Part(CreateNumeric, "N"); },
         [&] { return NumericDefault(word); }, LoadErrorNumberRequired, 1},
        {"NumericMin with a word", [] { Part(CreateNumeric, "N"); },
         [&] { return NumericMin(word); }, LoadErrorNumberRequired, 1},
        {"NumericMax without a token", [] { Part(CreateNumeric, "N"); },
         [] { return NumericMax(0); }, LoadErrorNumberRequired, 1},
        {"ComboboxMaxlen with a word", [] { Part(CreateCombobox, "C"); },
         [&] { return ComboboxMaxlen(word); }, LoadErrorNumberRequired, 1},
        {"ValueNumeric with a word", [] {}, [&] { return ValueNumeric(word); },
         LoadErrorNumberRequired, 1},
        {"SUGGESTIONS on an edit text",
         [] {
             Part(CreateEdittext, "E");
             Push("one");
         },
         [] { return ComboboxSuggestion(0); }, LoadErrorNoPart, 1},
        {"drop-down item from an empty stack", [] { Part(CreateDropdown, "D"); },
         [] { return DropdownAddItem(0); }, LoadErrorDropdownItem, 0},
        {"64-bit number that is no number", [] { Push("12x"); }, [] { return ValueQword(0); },
         LoadErrorNumberRequired, 1},
        {"64-bit number beyond 64 bits", [] { Push("18446744073709551616"); },
         [] { return ValueQword(0); }, LoadErrorNumberRequired, 1},
        {"multi-line text setting on an edit text", [] { Part(CreateEdittext, "E"); },
         [&] { return MultitextMaxlen(five); }, LoadErrorNoPart, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        TearDown();
        SetUp();
        c.setUp();
        ozResetRecordedErrors();
        EXPECT_EQ(c.action(), 0);
        EXPECT_EQ(ozRecordedErrorCode(), c.number);
        if (c.reportedCount != 0) {
            EXPECT_EQ(ozRecordedErrorCount(), c.reportedCount);
        }
    }
}

// What XML templates have beyond the template language: a multi-line text and a 64-bit number.
TEST_F(PartActionTest, MultiLineTextAndQwordPartsAndValues)
{
    Part(CreateMultitext, "Lines");
    Ok(MultitextMaxstrings(TestToken::Number(3)), "maxStrings");
    EXPECT_EQ(PartAt<ozADMMultiText>().MaxStrings(), 3u);
    Part(CreateNumeric, "Wide");
    Ok(NumericQword(0), "longDecimal");
    for (auto action : {NumericQwordMin, NumericQwordMax, NumericQwordDefault}) {
        Push(action == NumericQwordMin ? "1" : "18446744073709551615");
        Ok(action(0), "64-bit number");
    }
    auto& wide = PartAt<ozADMNumeric>();
    EXPECT_TRUE(wide.Qword() && !wide.Empty());
    EXPECT_EQ(std::vector<std::uint64_t>({wide.Min(), wide.Max(), wide.Value()}),
              std::vector<std::uint64_t>({1, UINT64_MAX, UINT64_MAX}));
    Push("4294967296");
    Ok(ValueQword(0), "VALUE longDecimal");
    Ok(PolicyValueOn(0), "VALUEON");
    EXPECT_EQ(CurrentPolicy().ValueOn().Type(), ozADMValue::ValueQword);
    EXPECT_EQ(CurrentPolicy().ValueOn().Qword(), 4294967296u);
}

}  // namespace
