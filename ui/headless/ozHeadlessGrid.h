// A grid in memory: the row count and captions the view gave, the current cell, the range and
// an open in-place editor, and calls that stand for what a user does with mouse and keyboard,
// raising the events a grid control raises. Tests and ozadm's view calls drive the
// registry-value grid through it. Rows are asked of the view when Cells reads them, as a
// window asks for the rows it draws.
#pragma once

#include <string>
#include <vector>

#include "ui/ozGridWidget.h"

class ozHeadlessGrid final : public ozGridWidget {
public:
    const std::vector<std::string>& ColumnCaptions() const { return m_captions; }
    // Row's cells as the view gives them (drawing the row); empty for a row the grid lacks.
    std::vector<std::string> Cells(int row) const;

    // The user's actions: a click on a cell (making it current), a drag from one cell to
    // another (the range, with the current cell where it ended), typing text into a cell's
    // in-place editor and pressing Enter (false when the cell has no editor or the view refused
    // the text), and a key while the grid has the focus.
    bool SelectByUser(int row, int column);
    bool SelectRangeByUser(const ozGridRange& range);
    bool EditByUser(int row, int column, const std::string& text);
    void Key(int virtualKey);
    // Whether the in-place editor is open (over the current cell), and its selected characters.
    bool Editing() const { return m_editing; }
    std::size_t EditBegin() const { return m_editBegin; }
    std::size_t EditEnd() const { return m_editEnd; }

    // ozGridWidget
    void Events(ozGridEvents* events) override { m_events = events; }
    void Columns(const std::vector<std::string>& captions, const std::vector<int>&) override
    {
        m_captions = captions;
    }
    void RowCount(int rows) override;
    int RowCount() const override { return m_rows; }
    void RowsChanged(int, int) override {}
    void Current(int row, int column) override;
    int CurrentRow() const override { return m_row; }
    int CurrentColumn() const override { return m_column; }
    void SelectRange(const ozGridRange& range) override;
    ozGridRange Selection() const override { return m_range; }
    void EditCell(int row, int column, std::size_t begin, std::size_t end) override;
    void CommitEdit() override { m_editing = false; }

private:
    bool Inside(int row, int column) const;

    ozGridEvents* m_events = nullptr;
    std::vector<std::string> m_captions;
    int m_rows = 0;
    int m_row = -1;
    int m_column = -1;
    ozGridRange m_range{-1, -1, -1, -1};
    bool m_editing = false;
    std::size_t m_editBegin = 0;
    std::size_t m_editEnd = 0;
};
