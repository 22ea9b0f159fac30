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
#include "core/adm/ozADMMultiText.h"
#include "core/adm/ozADMNumeric.h"
#include "core/adm/ozADMText.h"
#include "ozScriptResult.h"

namespace {

TEST(ArgumentTexts, ReadAsBool)
{
    const struct {
        const char* text;
        bool readable, value;
    } cases[] = {{"TRUE", true, true}, {"true", true, true},   {"False", true, false},
                 {"0", true, false},   {"-1", true, true},     {"2", true, true},
                 {"0x0", true, false}, {"yes", false, false},  {"", false, false},
                 {"1 ", false, false}, {"TRUE1", false, false}};
    for (const auto& c : cases) {
        bool value = !c.value;
        EXPECT_EQ(ozReadBool(c.text, value), c.readable) << c.text;
        if (c.readable) {
            EXPECT_EQ(value, c.value) << c.text;
        }
    }
}

TEST(ArgumentTexts, ReadAsWholeNumbersInRange)
{
    const struct {
        const char* text;
        bool readable;
        long long value;
    } cases[] = {
        {"0", true, 0},       {"-32768", true, -32768}, {"32767", true, 32767},
        {"+7", true, 7},      {"0x1F", true, 31},       {"32768", false, 0},
        {"-32769", false, 0}, {"", false, 0},           {"-", false, 0},
        {"0x", false, 0},     {" 1", false, 0},         {"1e3", false, 0},
        {"--1", false, 0},    {"12abc", false, 0},      {"99999999999999999999999", false, 0}};
    for (const auto& c : cases) {
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

// Each step sets a value on its part: accepted or not, what the part shows afterwards (a refused
// text leaves the value as it was), and a word of the reason given.
TEST(PartValues, EachPartReadsItsFormsAndKeepsItsValueWhenRefused)
{
    ozADMCheckBox check;
    ozADMNumeric numeric;
    numeric.Min(10);
    numeric.Max(20);
    ozADMEditText edit;
    edit.MaxLen(3);
    ozADMText text;
    ozADMMultiText lines;
    lines.MaxStrings(2);
    lines.MaxLength(3);
    ozADMDropdownList list;
    ozADMValue value;
    value.SetNumeric(1);
    list.AddItem("Low", value, nullptr);
    list.AddItem("High", value, nullptr);
    const struct {
        ozADMCtrl* part;
        const char* text;
        bool accepted;
        const char* shown;  // null: not looked at
        const char* why;
    } steps[] = {
        // clang-format off
        {&check, "TRUE", true, "TRUE", ""},         {&check, "checked", false, "TRUE", ""},
        {&numeric, "15", true, "15", ""},           {&numeric, "9", false, "15", "10 to 20"},
        {&numeric, "21", false, "15", "10 to 20"},  {&numeric, "-1", false, "15", "10 to 20"},
        {&numeric, "abc", false, "15", "10 to 20"}, {&numeric, "", true, "", ""},
        {&edit, "abc", true, "abc", ""},            {&edit, "abcd", false, "abc", ""},
        {&text, "x", false, nullptr, "TEXT"},       {&list, "high", true, "High", ""},
        {&list, "Medium", false, "High", ""},       {&list, "", true, "", ""},
        {&lines, "a;;b", true, "a;;b", ""},         {&lines, "ab;cd;", true, "ab;cd", ""},
        {&lines, "a;b;c", false, "ab;cd", "2 lines"}, {&lines, "abcd", false, "ab;cd", "3 char"},
        // clang-format on
    };
    for (const auto& step : steps) {
        std::string why;
        EXPECT_EQ(ozSetPartValue(*step.part, step.text, why), step.accepted) << step.text;
        if (step.shown != nullptr) {
            EXPECT_EQ(ozPartValueText(*step.part), step.shown) << step.text;
        }
        EXPECT_NE(why.find(step.why), std::string::npos) << step.text << ": " << why;
    }
    EXPECT_TRUE(numeric.Empty());
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

}  // namespace
