// Search and replace over a table of cells: finding (case, multibyte text, continuation, range,
// no wrap-around), replacing in a string, replacing in cells, and the sheet's buttons.
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "control/CADMCtrl.h"
#include "platform/ozTextConversion.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTableGridCells.h"
#include "ui/headless/ozHeadlessPlatform.h"
#include "ui/ozSearchReplace.h"
#include "ui/ozViews.h"

namespace {

// The text in the narrow encoding (the ANSI code page on Windows), as the grid's cells hold it.
std::string N(const char* utf8)
{
    return ozNarrowFromUtf8(utf8);
}

// Rows of Subkey, Valuename and Data (the other columns empty, the counter read-only).
using Row = ozTableGridCells::Row;

}  // namespace

TEST(SearchReplaceTest, FindsForwardWithoutWrappingAndStartsOverOnAnOptionChange)
{
    ozTableGridCells table;
    table.rows = {Row{"", N("Software\\Ä"), "xABCx", "", "", "abc"},
                  Row{"", "k", N("Größe"), "", "", "abc abc"}};
    ozSearchReplace search(table);
    search.SearchText("abc");
    ASSERT_TRUE(search.FindNext());
    EXPECT_EQ(table.currentColumn, GridColumnValueName);
    EXPECT_EQ(table.selectedBegin, 1u);
    EXPECT_EQ(table.selectedEnd, 4u);
    ASSERT_TRUE(search.Find());
    EXPECT_EQ(search.MatchColumn(), GridColumnData);
    ASSERT_TRUE(search.Find());
    EXPECT_EQ(search.MatchRow(), 1);
    EXPECT_FALSE(search.Find());
    EXPECT_FALSE(search.Find());  // no wrap-around

    search.SetOption(ozSearchReplace::CaseSensitive, true);
    search.SearchText("ABC");
    ASSERT_TRUE(search.Find());
    EXPECT_EQ(search.MatchColumn(), GridColumnValueName);
    EXPECT_FALSE(search.Find());

    // Multibyte letters compare ignoring case too, with byte offsets.
    search.SetOption(ozSearchReplace::CaseSensitive, false);
    search.SearchText(N("ä"));
    ASSERT_TRUE(search.Find());
    EXPECT_EQ(search.MatchColumn(), GridColumnSubkey);
    EXPECT_EQ(search.MatchBegin(), 9u);
    EXPECT_EQ(search.MatchEnd(), 9 + N("ä").size());

    // The selected range, its corners in any order: row 1's data only.
    table.selection = {1, GridColumnDataOld, 1, GridColumnData};
    search.SearchText("abc");
    search.SetOption(ozSearchReplace::SelectedRange, true);
    search.Restart();
    ASSERT_TRUE(search.Find());
    EXPECT_EQ(search.MatchRow(), 1);
    EXPECT_FALSE(search.Find());
}

TEST(SearchReplaceTest, ReplacesEveryOccurrenceInAString)
{
    struct Case {
        const char* text;
        const char* search;
        const char* replacement;
        bool caseSensitive;
        std::optional<std::string> expected;
    };
    const Case cases[] = {
        {"abcABCabc", "abc", "x", true, "xABCx"},
        {"abcABCabc", "abc", "x", false, "xxx"},
        {"aaaa", "aa", "a", false, "aa"},  // left to right, not overlapping
        {"Größe größe", "GRÖ", "kl", false, "klße klße"},
        {"Привет", "привет", "hi", false, "hi"},
        {"abc", "x", "y", false, std::nullopt},
        {"abc", "", "y", false, std::nullopt},
    };
    for (const Case& c : cases)
        EXPECT_EQ(ozReplaceOccurrences(N(c.text), N(c.search), c.replacement, c.caseSensitive),
                  c.expected ? std::optional(N(c.expected->c_str())) : std::nullopt)
            << c.text << " / " << c.search;
}

TEST(SearchReplaceTest, ReplacesInEditableCellsOnly)
{
    ozTableGridCells table;
    table.rows = {Row{"", "k1", "v1", "", "", "one v one"}, Row{"", "k2", "v2", "", "", "one"}};
    table.rows[0][GridColumnCounter] = "one";
    ozSearchReplace search(table);
    search.SearchText("ONE");
    search.ReplaceText("two");
    ASSERT_TRUE(search.FindNext());
    EXPECT_EQ(search.MatchColumn(), GridColumnCounter);
    // The current cell is read-only: nothing changes, the search goes on.
    ASSERT_TRUE(search.Replace());
    EXPECT_EQ(table.rows[0][GridColumnCounter], "one");
    EXPECT_EQ(table.changes, 0);
    // Both occurrences of the cell at once, then on to the next match.
    ASSERT_TRUE(search.Replace());
    EXPECT_EQ(table.rows[0][GridColumnData], "two v two");
    EXPECT_EQ(table.changes, 1);
    EXPECT_EQ(search.MatchRow(), 1);

    table.rows[1][GridColumnValueName] = "one";
    search.ReplaceText("refuse");
    EXPECT_EQ(search.ReplaceAll(), 0);
    EXPECT_EQ(search.Problem(), "\"refuse\" does not parse");
    search.ReplaceText("3");
    EXPECT_EQ(search.ReplaceAll(), 2);
    EXPECT_EQ(table.rows[1][GridColumnValueName], "3");
    EXPECT_EQ(table.rows[1][GridColumnData], "3");
    EXPECT_EQ(table.rows[0][GridColumnCounter], "one");
}

TEST(SearchReplaceTest, TheSheetEnablesItsButtonsAndActsOnTheGridOnly)
{
    ozRecordingHostUI ui;
    ozHeadlessPlatform platform{ui};
    ozViews views{platform};
    CADMCtrl control{ui, &views};
    views.Attach(control);
    control.AddString(ozSearchSheet::NotFoundText, "Not found: %s");
    ozTableGridCells table;
    table.rows = {Row{"", "k", "v", "", "", "abc"}};
    views.SearchCells(&table);
    EXPECT_FALSE(control.ozSRShowSearch());  // the grid is not shown
    views.Show(DisplayValueGrid, nullptr, true, true);

    using S = ozSearchSheet;
    ASSERT_TRUE(control.ozSRShowSearch());
    ozHeadlessForm* form = platform.TopForm();
    EXPECT_FALSE(form->Find(S::FindNextButton)->enabled);
    EXPECT_FALSE(form->Find(S::BackwardsBox)->enabled);
    ASSERT_TRUE(form->Type(S::SearchEdit, "abc"));
    EXPECT_TRUE(form->Find(S::FindNextButton)->enabled);

    // The replace page keeps the search text; it wants a replace text as well, and
    // "Ersetzen" only after a successful find.
    ASSERT_TRUE(form->CheckByUser(S::ReplacePageButton, true));
    form = platform.TopForm();
    EXPECT_EQ(form->Find(S::SearchEdit)->text, "abc");
    EXPECT_FALSE(form->Find(S::ReplaceAllButton)->enabled);
    ASSERT_TRUE(form->Type(S::ReplaceEdit, "x"));
    EXPECT_TRUE(form->Find(S::ReplaceAllButton)->enabled);
    EXPECT_FALSE(form->Find(S::ReplaceButton)->enabled);
    ASSERT_TRUE(form->Click(S::FindNextButton));
    EXPECT_TRUE(form->Find(S::ReplaceButton)->enabled);
    ASSERT_TRUE(form->Click(S::ReplaceButton));
    EXPECT_EQ(table.rows[0][GridColumnData], "x");
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].text, "Not found: abc");
    EXPECT_FALSE(form->Find(S::ReplaceButton)->enabled);
    ASSERT_TRUE(form->Type(S::ReplaceEdit, ""));
    EXPECT_FALSE(form->Find(S::FindNextButton)->enabled);

    ASSERT_TRUE(form->Click(S::CancelButton));
    EXPECT_EQ(platform.TopForm(), nullptr);
    EXPECT_FALSE(control.ozSRHide());
}
