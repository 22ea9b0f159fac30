// What the part actions set on the current part, how a part ends, drop-down items, list box
// exclusions, and the numbers part actions report when the part or the token is missing.
#include <functional>
#include <string>
#include <vector>

#include "core/adm/ozADMCheckBox.h"
#include "core/adm/ozADMDropdownList.h"
#include "core/adm/ozADMEditText.h"
#include "core/adm/ozADMListBox.h"
#include "core/adm/ozADMNumeric.h"
#include "ozGrammarActionFixture.h"

namespace {

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

    // Runs an action expected to fail with number (the last one reported).
    static void Fails(intptr_t result, int number, const std::string& what)
    {
        EXPECT_EQ(result, 0) << what;
        EXPECT_EQ(ozRecordedErrorCode(), number) << what;
    }
};

TEST_F(PartActionTest, ComboBoxActionsAlsoSetEditTexts)
{
    Part(CreateEdittext, "Edit");
    Push("typed");
    Ok(ComboboxDefault(0), "DEFAULT on an edit text");
    Ok(ComboboxMaxlen(TestToken::Number(40)), "MAXLEN on an edit text");
    Ok(ComboboxExpandable(0), "EXPANDABLETEXT on an edit text");
    auto& edit = PartAt<ozADMEditText>();
    EXPECT_STREQ(edit.Default(), "typed");
    EXPECT_STREQ(edit.Value(), "typed");
    EXPECT_EQ(edit.MaxLen(), 40ul);
    EXPECT_TRUE(edit.Expandable());
    Push("one");
    Fails(ComboboxSuggestion(0), LoadErrorNoPart, "SUGGESTIONS on an edit text");
}

TEST_F(PartActionTest, DropdownItemsWithAndWithoutActionList)
{
    Part(CreateDropdown, "Choice");
    Push("Plain");
    Ok(ValueNumeric(TestToken::Number(1)), "VALUE NUMERIC 1");
    Ok(DropdownAddItem(0), "item without ACTIONLIST");
    EXPECT_EQ(ozRecordedErrorCode(), LoadErrorWrongArgument) << "reported on the way";
    EXPECT_STREQ(ozRecordedErrorDescription(), "Actionlist");

    ozResetRecordedErrors();
    Push("WithList");
    Ok(ValueDelete(0), "VALUE DELETE");
    Ok(DropdownSetSel(0), "DEFAULT of the second item");
    Ok(BeginActionlist(0), "ACTIONLIST");
    Ok(EndActionlist(0), "END ACTIONLIST");
    Ok(DropdownAddItem(0), "item with ACTIONLIST");
    EXPECT_EQ(ozRecordedErrorCount(), 0);

    auto& list = PartAt<ozADMDropdownList>();
    ASSERT_EQ(list.ItemList().Count(), 2);
    EXPECT_EQ(static_cast<unsigned long>(list.ItemList().At(0)->Value()), 1ul);
    EXPECT_NE(list.ItemList().At(1)->ActionList(), nullptr);
    EXPECT_EQ(list.Default(), 1) << "the item being read is the default";
    EXPECT_TRUE(Context().Arguments()->Empty());

    Fails(DropdownAddItem(0), LoadErrorDropdownItem, "item from an empty stack");
}

// Numbers reported when an action finds no part (of its kind) or no number token.
TEST_F(PartActionTest, MissingPartOrNumber)
{
    struct Case {
        const char* what;
        std::function<void()> setUp;
        std::function<intptr_t()> action;
        int number;
        int reportedCount;  // 1103 comes before 1113 when the policy has no parts
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
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        TearDown();
        SetUp();
        c.setUp();
        ozResetRecordedErrors();
        EXPECT_EQ(c.action(), 0);
        EXPECT_EQ(ozRecordedErrorCode(), c.number);
        EXPECT_EQ(ozRecordedErrorCount(), c.reportedCount);
    }
}

}  // namespace
