// The value texts ozadm reads (BOOL and number arguments, part values) and the result lines
// it writes.
#include <gtest/gtest.h>

#include <sstream>

#include "control/ozParameterText.h"
#include "control/ozPolicyEdit.h"
#include "core/adm/ozADMCheckBox.h"
#include "core/adm/ozADMDropdownList.h"
#include "core/adm/ozADMEditText.h"
#include "core/adm/ozADMListBox.h"
#include "core/adm/ozADMNumeric.h"
#include "core/adm/ozADMText.h"
#include "ozScriptResult.h"

namespace {

TEST(ArgumentTexts, ReadAsBool)
{
    struct Case {
        const char* text;
        bool readable;
        bool value;
    };
    for (const Case& c :
         {Case{"TRUE", true, true}, Case{"true", true, true}, Case{"False", true, false},
          Case{"0", true, false}, Case{"-1", true, true}, Case{"2", true, true},
          Case{"0x0", true, false}, Case{"yes", false, false}, Case{"", false, false},
          Case{"1 ", false, false}, Case{"TRUE1", false, false}}) {
        bool value = !c.value;
        EXPECT_EQ(ozReadBool(c.text, value), c.readable) << c.text;
        if (c.readable) {
            EXPECT_EQ(value, c.value) << c.text;
        }
    }
}

TEST(ArgumentTexts, ReadAsWholeNumbersInRange)
{
    struct Case {
        const char* text;
        bool readable;
        long long value;
    };
    for (const Case& c :
         {Case{"0", true, 0}, Case{"-32768", true, -32768}, Case{"32767", true, 32767},
          Case{"+7", true, 7}, Case{"0x1F", true, 31}, Case{"32768", false, 0},
          Case{"-32769", false, 0}, Case{"", false, 0}, Case{"-", false, 0}, Case{"0x", false, 0},
          Case{" 1", false, 0}, Case{"1e3", false, 0}, Case{"--1", false, 0},
          Case{"12abc", false, 0}, Case{"99999999999999999999999", false, 0}}) {
        long long value = -1;
        EXPECT_EQ(ozReadInteger(c.text, -32768, 32767, value), c.readable) << c.text;
        if (c.readable) {
            EXPECT_EQ(value, c.value) << c.text;
        }
    }
}

std::string Written(const ozScriptResult& result)
{
    std::ostringstream out;
    result.Write(out, "Name");
    return out.str();
}

// The other forms (no value, BOOL, text, EMPTY and arrays) are pinned by the scripts' expected
// output; numbers there never reach their extremes.
TEST(ResultLines, NumbersKeepTheirWholeRange)
{
    EXPECT_EQ(Written(ozScriptResult::Number(-5)), "Name: -5\n");
    EXPECT_EQ(Written(ozScriptResult::Unsigned(18446744073709551615ULL)),
              "Name: 18446744073709551615\n");
}

TEST(PartValues, CheckBoxAndNumericReadTheirForms)
{
    std::string why;
    ozADMCheckBox check;
    EXPECT_TRUE(ozSetPartValue(check, "TRUE", why));
    EXPECT_EQ(ozPartValueText(check), "TRUE");
    EXPECT_FALSE(ozSetPartValue(check, "checked", why));
    EXPECT_EQ(ozPartValueText(check), "TRUE");

    ozADMNumeric numeric;
    numeric.Min(10);
    numeric.Max(20);
    EXPECT_TRUE(ozSetPartValue(numeric, "15", why));
    EXPECT_EQ(ozPartValueText(numeric), "15");
    for (const char* refused : {"9", "21", "-1", "abc"}) {
        EXPECT_FALSE(ozSetPartValue(numeric, refused, why)) << refused;
        EXPECT_NE(why.find("10 to 20"), std::string::npos) << why;
    }
    EXPECT_EQ(ozPartValueText(numeric), "15");
    EXPECT_TRUE(ozSetPartValue(numeric, "", why));
    EXPECT_TRUE(numeric.Empty());
    EXPECT_EQ(ozPartValueText(numeric), "");
}

TEST(PartValues, EditTextKeepsToMaxLenAndTextHasNone)
{
    std::string why;
    ozADMEditText edit;
    edit.MaxLen(3);
    EXPECT_TRUE(ozSetPartValue(edit, "abc", why));
    EXPECT_FALSE(ozSetPartValue(edit, "abcd", why));
    EXPECT_EQ(ozPartValueText(edit), "abc");

    ozADMText text;
    EXPECT_FALSE(ozSetPartValue(text, "x", why));
    EXPECT_NE(why.find("TEXT"), std::string::npos);
}

TEST(PartValues, DropdownSelectsByItemName)
{
    std::string why;
    ozADMDropdownList list;
    ozADMValue value;
    value.SetNumeric(1);
    list.AddItem("Low", value, nullptr);
    list.AddItem("High", value, nullptr);
    EXPECT_TRUE(ozSetPartValue(list, "high", why));
    EXPECT_EQ(list.Selected(), 1);
    EXPECT_EQ(ozPartValueText(list), "High");
    EXPECT_FALSE(ozSetPartValue(list, "Medium", why));
    EXPECT_EQ(list.Selected(), 1);
    EXPECT_TRUE(ozSetPartValue(list, "", why));
    EXPECT_EQ(ozPartValueText(list), "");
}

std::vector<std::pair<std::string, std::string>> Entries(ozADMListBox& list)
{
    std::vector<std::pair<std::string, std::string>> entries;
    for (int pos = 0; list.Values() != nullptr && pos < list.Values()->Count(); ++pos) {
        ozADMListItem* item = list.Values()->At(pos);
        entries.emplace_back(item->Name(), static_cast<const char*>(item->Value()));
    }
    return entries;
}

TEST(PartValues, ListBoxNamesEntriesByPrefix)
{
    std::string why;
    ozADMListBox list;
    list.ValuePrefix("Site");
    ASSERT_TRUE(ozSetPartValue(list, "a;;b;;c;;;", why)) << why;
    using Entries_t = std::vector<std::pair<std::string, std::string>>;
    EXPECT_EQ(Entries(list), (Entries_t{{"Site1", "a;b;c;"}}));
    ASSERT_TRUE(ozSetPartValue(list, "x;y; z", why));
    EXPECT_EQ(Entries(list), (Entries_t{{"Site1", "x"}, {"Site2", "y"}, {"Site3", " z"}}));
    EXPECT_EQ(ozPartValueText(list), "x;y; z");
    ASSERT_TRUE(ozSetPartValue(list, "", why));
    EXPECT_TRUE(Entries(list).empty());
}

TEST(PartValues, ExplicitListBoxTakesNameValuePairs)
{
    std::string why;
    ozADMListBox list;
    list.ExplicitValue(true);
    ASSERT_TRUE(ozSetPartValue(list, "one=1;two=a=b;semi=x;;y", why)) << why;
    using Entries_t = std::vector<std::pair<std::string, std::string>>;
    EXPECT_EQ(Entries(list), (Entries_t{{"one", "1"}, {"two", "a=b"}, {"semi", "x;y"}}));
    // What is printed reads back as the same entries.
    std::string printed = ozPartValueText(list);
    EXPECT_EQ(printed, "one=1;two=a=b;semi=x;;y");
    ASSERT_TRUE(ozSetPartValue(list, printed, why));
    EXPECT_EQ(Entries(list).size(), 3u);

    // Refused texts leave the entries as they were.
    EXPECT_FALSE(ozSetPartValue(list, "novalue", why));
    EXPECT_FALSE(ozSetPartValue(list, "=1", why));
    EXPECT_FALSE(ozSetPartValue(list, "a=1;A=2", why));
    EXPECT_NE(why.find("twice"), std::string::npos);
    EXPECT_EQ(Entries(list).size(), 3u);
}

TEST(PolicyStates, ReadBackTheirNames)
{
    for (tPOLICYSTATE state : {PolicyEnabled, PolicyDisabled, PolicyNotConfigured}) {
        tPOLICYSTATE read = state == PolicyEnabled ? PolicyDisabled : PolicyEnabled;
        EXPECT_TRUE(ozReadPolicyState(ozPolicyStateName(state), read));
        EXPECT_EQ(read, state);
    }
    tPOLICYSTATE read = PolicyEnabled;
    EXPECT_TRUE(ozReadPolicyState("Disabled", read));
    EXPECT_FALSE(ozReadPolicyState("not configured", read));
}

}  // namespace
