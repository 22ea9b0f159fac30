// Texts, values and action lists through the argument stack: [strings] references, the kinds
// the actions fetch, and action lists whose items take the key name in force.
#include <functional>
#include <string>
#include <vector>

#include "core/registry/ozSubKey.h"
#include "ozGrammarActionFixture.h"

namespace {

using ArgumentActionTest = GrammarActionTest;

// The text on top of the argument stack, taken off it; "(none)" when the top is no String.
std::string PopText()
{
    std::unique_ptr<ozArgument> top = ozLoadContext::Instance().Arguments()->Pop();
    return top != nullptr && top->kind == ArgumentString ? top->text.get() : "(none)";
}

TEST_F(ArgumentActionTest, StringReferencesIgnoreCaseAndEarlierTemplatesDefineFirst)
{
    ASSERT_TRUE(Prepare("[strings]\r\nName=first\r\nName=second\r\n"));
    ASSERT_TRUE(Prepare("[strings]\r\nName=third\r\nOther=fourth\r\n"));
    TestToken reference = TestToken::Reference("name");
    Ok(SaveStringFromName(reference), "!!name");
    EXPECT_STREQ(reference.Text(), "NAME") << "the name is upper-cased in the token";
    EXPECT_EQ(PopText(), "first");
    Ok(SaveStringFromName(TestToken::Reference("Other")), "!!Other");
    EXPECT_EQ(PopText(), "fourth");
}

TEST_F(ArgumentActionTest, TextsAndValuesPushed)
{
    ASSERT_TRUE(Prepare());
    Ok(SaveString(TestToken::Word("bare")), "word");
    EXPECT_EQ(PopText(), "bare");
    Ok(SaveMorphString(TestToken::Quoted("as written")), "morph");
    EXPECT_EQ(PopText(), "\"as written\"");

    Ok(ValueNumeric(TestToken::Number(4000000000u)), "VALUE NUMERIC");
    ASSERT_EQ(TopArgument()->kind, ArgumentValue);
    EXPECT_EQ(static_cast<unsigned long>(*TopArgument()->value), 4000000000ul);
    Push("text");
    Ok(ValueString(0), "VALUE text");
    EXPECT_STREQ(static_cast<const char*>(*TopArgument()->value), "text");
    Ok(ValueDelete(0), "VALUE DELETE");
    EXPECT_EQ(TopArgument()->value->Type(), ozADMValue::ValueDelete);
}

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

TEST_F(ArgumentActionTest, ActionListItemsTakeTheKeyNameInForce)
{
    ASSERT_TRUE(Prepare());
    Class("USER");
    Policy("Pol");
    KeyName("Software\\Pol");
    Ok(BeginActionlist(0), "ACTIONLISTON");
    Push("First");
    Ok(ValueNumeric(TestToken::Number(1)), "VALUE NUMERIC 1");
    Ok(ActionlistValue(0), "first item");
    KeyName("Software\\Other");
    Push("Second");
    Push("two");
    Ok(ValueString(0), "VALUE two");
    Ok(ActionlistValue(0), "second item");
    Ok(EndActionlist(0), "END ACTIONLISTON");
    EXPECT_STREQ(Context().KeyNames()->Current(), "Software\\Pol") << "the list's scope closed";
    Ok(PolicyActionlistOn(0), "ACTIONLISTON taken");

    const ozADMActionList* list = CurrentPolicy().ActionListOn();
    ASSERT_NE(list, nullptr);
    ASSERT_EQ(list->Count(), 2);
    EXPECT_STREQ(list->At(0)->ValueName(), "First");
    EXPECT_EQ(static_cast<unsigned long>(list->At(0)->Value()), 1ul);
    EXPECT_EQ(list->At(0)->RegKey(), Tree().UsrTree().HasKey(HKEY_CURRENT_USER, "Software\\Pol"));
    EXPECT_STREQ(list->At(1)->ValueName(), "Second");
    EXPECT_STREQ(static_cast<const char*>(list->At(1)->Value()), "two");
    EXPECT_EQ(list->At(1)->RegKey()->KeyPath(), "Software\\Other");
    EXPECT_TRUE(Context().Arguments()->Empty());
}

}  // namespace
