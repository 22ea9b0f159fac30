#include "ozHeadlessGrid.h"

std::vector<std::string> ozHeadlessGrid::Cells(int row) const
{
    if (m_events == nullptr || row < 0 || row >= m_rows)
        return {};
    return m_events->RowCells(row);
}

bool ozHeadlessGrid::Inside(int row, int column) const
{
    return row >= 0 && row < m_rows && column >= 0 && column < static_cast<int>(m_captions.size());
}

void ozHeadlessGrid::RowCount(int rows)
{
    m_rows = rows;
    m_editing = false;
    if (!Inside(m_row, m_column))
        Current(-1, -1);
    else if (!Inside(m_range.firstRow, m_range.firstColumn) ||
             !Inside(m_range.lastRow, m_range.lastColumn))
        Current(m_row, m_column);
}

void ozHeadlessGrid::Current(int row, int column)
{
    if (!Inside(row, column))
        row = column = -1;
    m_row = row;
    m_column = column;
    m_range = {row, column, row, column};
}

void ozHeadlessGrid::SelectRange(const ozGridRange& range)
{
    if (Inside(range.firstRow, range.firstColumn) && Inside(range.lastRow, range.lastColumn))
        m_range = range;
}

void ozHeadlessGrid::EditCell(int row, int column, std::size_t begin, std::size_t end)
{
    Current(row, column);
    m_editing = m_row >= 0;
    m_editBegin = begin;
    m_editEnd = end;
}

bool ozHeadlessGrid::SelectByUser(int row, int column)
{
    if (!Inside(row, column))
        return false;
    m_editing = false;
    Current(row, column);
    if (m_events != nullptr)
        m_events->CurrentChanged(row, column);
    return true;
}

bool ozHeadlessGrid::SelectRangeByUser(const ozGridRange& range)
{
    if (!SelectByUser(range.lastRow, range.lastColumn) ||
        !Inside(range.firstRow, range.firstColumn))
        return false;
    m_range = range;
    return true;
}

bool ozHeadlessGrid::EditByUser(int row, int column, const std::string& text)
{
    if (!SelectByUser(row, column) || m_events == nullptr || !m_events->CellEditable(row, column))
        return false;
    return m_events->CellEdited(row, column, text);
}

void ozHeadlessGrid::Key(int virtualKey)
{
    if (m_events != nullptr)
        m_events->KeyPressed(virtualKey);
}
