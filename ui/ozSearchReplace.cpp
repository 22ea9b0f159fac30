#include "ozSearchReplace.h"

#include <algorithm>
#include <utility>

#ifdef _WIN32
#include <windows.h>
#endif

#ifndef _WIN32
namespace {

// The simple upper case of the letters of the Latin, Greek and Cyrillic blocks (the letters a
// registry value's text holds in practice); any other code point stays as it is.
char32_t UpperCodePoint(char32_t c)
{
    if ((c >= U'a' && c <= U'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7))
        return c - 0x20;
    if (c == 0xFF)
        return 0x178;
    // Latin Extended-A: pairs of upper and lower case, the upper one first; between 0x139 and
    // 0x148 and from 0x179 on the pairs start at an odd code point.
    const bool oddPairs = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
    if (c >= 0x100 && c <= 0x17F && c != 0x130 && c != 0x131 && c != 0x138 && c != 0x149 &&
        c != 0x17F)
        return (c % 2 == (oddPairs ? 0 : 1)) ? c - 1 : c;
    if (c >= 0x3B1 && c <= 0x3CB && c != 0x3C2)
        return c - 0x20;
    if (c == 0x3C2)  // final sigma
        return 0x3A3;
    if (c >= 0x430 && c <= 0x44F)
        return c - 0x20;
    if (c >= 0x450 && c <= 0x45F)
        return c - 0x50;
    return c;
}

// The length of the UTF-8 sequence starting with lead (1 for a stray byte, kept as it is).
std::size_t SequenceLength(unsigned char lead)
{
    if (lead >= 0xC2 && lead <= 0xDF)
        return 2;
    if (lead >= 0xE0 && lead <= 0xEF)
        return 3;
    if (lead >= 0xF0 && lead <= 0xF4)
        return 4;
    return 1;
}

void AppendUtf8(std::string& out, char32_t c)
{
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

}  // namespace
#endif

std::string ozSearchUpperCased(const std::string& text)
{
    std::string upper = text;
    ozSearchUpperCase(upper);
    return upper;
}

void ozSearchUpperCase(std::string& upper)
{
#ifdef _WIN32
    // The ANSI code pages have one byte per letter, so the system's upper case keeps lengths.
    if (!upper.empty())
        CharUpperBuffA(upper.data(), static_cast<DWORD>(upper.size()));
#else
    for (std::size_t at = 0; at < upper.size();) {
        const auto lead = static_cast<unsigned char>(upper[at]);
        std::size_t length = SequenceLength(lead);
        if (length == 1) {
            upper[at] = static_cast<char>(lead >= 'a' && lead <= 'z' ? lead - 0x20 : lead);
            ++at;
            continue;
        }
        if (length != 2 || at + 2 > upper.size() ||
            (static_cast<unsigned char>(upper[at + 1]) & 0xC0) != 0x80) {
            // Only two-byte letters change case here; longer sequences (and broken ones) stay.
            at += std::min(length, upper.size() - at);
            continue;
        }
        const char32_t c =
            ((lead & 0x1F) << 6) | (static_cast<unsigned char>(upper[at + 1]) & 0x3F);
        std::string encoded;
        AppendUtf8(encoded, UpperCodePoint(c));
        if (encoded.size() == 2)
            upper.replace(at, 2, encoded);
        at += 2;
    }
#endif
}

std::optional<std::string> ozReplaceOccurrences(const std::string& text, const std::string& search,
                                                const std::string& replacement, bool caseSensitive)
{
    if (search.empty())
        return std::nullopt;
    const std::string haystack = caseSensitive ? text : ozSearchUpperCased(text);
    const std::string needle = caseSensitive ? search : ozSearchUpperCased(search);
    std::string result;
    std::size_t copied = 0;
    for (std::size_t at = haystack.find(needle); at != std::string::npos;
         at = haystack.find(needle, at + needle.size())) {
        result.append(text, copied, at - copied);
        result += replacement;
        copied = at + needle.size();
    }
    if (copied == 0)
        return std::nullopt;
    result.append(text, copied);
    return result;
}

ozSearchReplace::ozSearchReplace(ozGridCells& cells) : m_cells(cells)
{
    Restart();
}

void ozSearchReplace::SetOption(Flag option, bool on)
{
    m_options[option] = on;
    m_range = m_savedRange;
    m_nextRow = m_range.firstRow;
    m_nextColumn = m_range.firstColumn;
}

void ozSearchReplace::Restart()
{
    if (m_options[SelectedRange]) {
        const ozGridRange selection = m_cells.Selection();
        m_range.firstRow = std::min(selection.firstRow, selection.lastRow);
        m_range.lastRow = std::max(selection.firstRow, selection.lastRow);
        m_range.firstColumn = std::min(selection.firstColumn, selection.lastColumn);
        m_range.lastColumn = std::max(selection.firstColumn, selection.lastColumn);
    } else {
        m_range = {0, 0, m_cells.RowCount() - 1, m_cells.ColumnCount() - 1};
    }
    m_savedRange = m_range;
    m_nextRow = m_range.firstRow;
    m_nextColumn = m_range.firstColumn;
}

bool ozSearchReplace::Find()
{
    if (m_search.empty())
        return false;
    ozGridRange& range = m_range;
    if (range.firstRow > range.lastRow)
        std::swap(range.firstRow, range.lastRow);
    if (range.firstColumn > range.lastColumn)
        std::swap(range.firstColumn, range.lastColumn);
    range.lastRow = std::min(range.lastRow, m_cells.RowCount() - 1);
    range.firstColumn = std::min(range.firstColumn, m_cells.ColumnCount() - 1);

    const bool caseSensitive = m_options[CaseSensitive];
    const std::string needle = caseSensitive ? m_search : ozSearchUpperCased(m_search);
    std::string text;
    for (int row = std::max(m_nextRow, range.firstRow); row <= range.lastRow; ++row) {
        const int firstColumn =
            row == m_nextRow ? std::max(m_nextColumn, range.firstColumn) : range.firstColumn;
        for (int column = firstColumn; column <= range.lastColumn; ++column) {
            if (!m_cells.CellText(row, column, text))
                return false;
            const std::size_t at = (caseSensitive ? text : ozSearchUpperCased(text)).find(needle);
            if (at == std::string::npos)
                continue;
            m_matchRow = row;
            m_matchColumn = column;
            m_matchBegin = at;
            m_matchEnd = at + m_search.size();
            m_nextRow = row;
            m_nextColumn = column + 1;
            return true;
        }
    }
    // Nothing more: the next Find starts past the range, so it finds nothing either.
    m_nextRow = range.lastRow + 1;
    m_nextColumn = range.firstColumn;
    return false;
}

bool ozSearchReplace::FindNext()
{
    if (!Find())
        return false;
    m_cells.EditCell(m_matchRow, m_matchColumn, m_matchBegin, m_matchEnd);
    return true;
}

bool ozSearchReplace::ReplaceInCell(int row, int column)
{
    std::string text;
    if (!m_cells.Editable(row, column) || !m_cells.CellText(row, column, text))
        return false;
    std::optional<std::string> replaced =
        ozReplaceOccurrences(text, m_search, m_replace, m_options[CaseSensitive]);
    std::string problem;
    if (!replaced || m_cells.SetCellText(row, column, *replaced, problem))
        return replaced.has_value();
    if (m_problem.empty())
        m_problem = problem;
    return false;
}

bool ozSearchReplace::Replace()
{
    m_problem.clear();
    const int row = m_cells.CurrentRow(), column = m_cells.CurrentColumn();
    if (row >= 0 && column >= 0 && ReplaceInCell(row, column))
        m_cells.CellsChanged();
    return FindNext();
}

int ozSearchReplace::ReplaceAll()
{
    m_problem.clear();
    if (!m_options[SelectedRange]) {
        m_range = {0, 0, m_cells.RowCount() - 1, m_cells.ColumnCount() - 1};
        m_nextRow = 0;
        m_nextColumn = 0;
    }
    int changed = 0;
    while (Find())
        if (ReplaceInCell(m_matchRow, m_matchColumn))
            ++changed;
    m_cells.CellsChanged();
    return changed;
}
