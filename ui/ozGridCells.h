// What search and replace needs of the registry-value grid (display mode 2): its cells as
// text, which of them the user may edit, the current cell and the selected range. The grid
// implements it over the registry trees; search and replace (ozSearchReplace) works through it
// alone, so the same search runs over the headless grid, the Windows one and a test's table.
//
// Rows and columns count from 0. Rows may be loaded on demand: Cells(row) loads the row first,
// so asking for a cell never fails for a row below RowCount().
#pragma once

#include <cstddef>
#include <string>

// The grid's columns, in order.
enum ozGridColumn : int {
    GridColumnCounter,
    GridColumnSubkey,
    GridColumnValueName,
    GridColumnType,
    GridColumnSize,
    GridColumnData,
    GridColumnSizeOld,
    GridColumnDataOld,
    GridColumnCount
};

// A rectangle of cells, corners as the user dragged them (not necessarily in order).
struct ozGridRange {
    int firstRow = 0, firstColumn = 0, lastRow = 0, lastColumn = 0;
};

class ozGridCells {
public:
    virtual ~ozGridCells() = default;

    virtual int RowCount() const = 0;
    virtual int ColumnCount() const = 0;
    // The text of a cell as the grid shows it (loading its row first); false for a cell the
    // grid does not have, which ends a search as not found.
    virtual bool CellText(int row, int column, std::string& text) = 0;
    // Whether the user may edit the cell in place.
    virtual bool Editable(int row, int column) = 0;
    // Stores text into an editable cell and writes the row back to its registry value at once;
    // false (and nothing changed) when the text does not parse for the value's type, with
    // `problem` saying why.
    virtual bool SetCellText(int row, int column, const std::string& text,
                             std::string& problem) = 0;
    // Selects the cell and opens its in-place editor with the characters [begin, end) of its
    // text selected.
    virtual void EditCell(int row, int column, std::size_t begin, std::size_t end) = 0;
    // The current cell (the row and column of the caret; -1 when there is none).
    virtual int CurrentRow() const = 0;
    virtual int CurrentColumn() const = 0;
    // The selected rectangle of cells (a single cell when the user selected no range).
    virtual ozGridRange Selection() const = 0;
    // The cells changed outside the in-place editor (a replace): redraw them and mark the data
    // modified.
    virtual void CellsChanged() = 0;
};
