// Search and replace over the registry-value grid's cells: the search state the grid keeps
// (texts, options, range, continuation point, last match) and the operations the sheet
// "Suchen" asks for. It works through ozGridCells alone (not owned; it must outlive the state).
//
// The search walks forward only, row by row and in each row column by column, from the
// continuation point to the end of the range, and never starts over by itself: after the last
// match Find reports nothing until Restart or an option change. "Whole word" and "backwards"
// are kept as the user set them but do not change the search.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "ozGridCells.h"

// text in upper case for a comparison that ignores case, byte for byte as long as text: a
// letter whose upper case would take another number of bytes stays as it is, so offsets
// found in the upper-cased copy hold in the original. Multibyte-aware (UTF-8 on Linux, the
// ANSI code page on Windows).
std::string ozSearchUpperCased(const std::string& text);
// The same in place.
void ozSearchUpperCase(std::string& text);

// text with every occurrence of search replaced by replacement, left to right and not
// overlapping, ignoring case unless caseSensitive; nothing when search does not occur (or is
// empty).
std::optional<std::string> ozReplaceOccurrences(const std::string& text, const std::string& search,
                                                const std::string& replacement, bool caseSensitive);

class ozSearchReplace {
public:
    enum Flag : int { SelectedRange, WholeWord, CaseSensitive, Backwards, OptionCount };

    explicit ozSearchReplace(ozGridCells& cells);

    ozGridCells& Cells() { return m_cells; }

    const std::string& SearchText() const { return m_search; }
    const std::string& ReplaceText() const { return m_replace; }
    void SearchText(std::string text) { m_search = std::move(text); }
    void ReplaceText(std::string text) { m_replace = std::move(text); }

    bool Option(Flag option) const { return m_options[option]; }
    // Sets an option; every change starts the search over from the start of the range.
    void SetOption(Flag option, bool on);

    // The range as last computed by Restart, and where the next Find begins.
    const ozGridRange& Range() const { return m_range; }
    int ContinuationRow() const { return m_nextRow; }
    int ContinuationColumn() const { return m_nextColumn; }
    // The last match: its cell and its characters [begin, end) in the cell's text.
    int MatchRow() const { return m_matchRow; }
    int MatchColumn() const { return m_matchColumn; }
    std::size_t MatchBegin() const { return m_matchBegin; }
    std::size_t MatchEnd() const { return m_matchEnd; }

    // Computes the range again: the whole grid, or with the selected-range option the grid's
    // selection with its corners in order; the search begins at the range's first cell.
    void Restart();
    // One step: the next cell from the continuation point whose text holds the search text;
    // false when there is none (an empty search text finds nothing).
    bool Find();
    // Find, and on a match the grid's editor opens on the cell with the match selected.
    bool FindNext();
    // In the grid's current cell, when it is editable and holds the search text: every
    // occurrence replaced and written back; then FindNext. Returns what FindNext found.
    bool Replace();
    // Every match from the first cell of the range (the whole grid unless the selected-range
    // option is on) replaced in the editable cells; the grid is told once. Returns the number
    // of cells changed.
    int ReplaceAll();
    // Why the first cell of the last Replace or ReplaceAll was refused by the grid (empty when it
    // was not).
    const std::string& Problem() const { return m_problem; }

private:
    bool ReplaceInCell(int row, int column);

    ozGridCells& m_cells;
    std::string m_search, m_replace;
    bool m_options[OptionCount] = {};
    ozGridRange m_range, m_savedRange;
    int m_nextRow = 0, m_nextColumn = 0;
    int m_matchRow = -1, m_matchColumn = -1;
    std::size_t m_matchBegin = 0, m_matchEnd = 0;
    std::string m_problem;
};
