// A grid of text cells as the views drive it: captioned columns and a number of rows whose
// cells the widget asks for only when it draws them (so a grid of any size opens at once), a
// current cell, a selected rectangle of cells, and an in-place editor over one cell. The Windows
// widget is a virtual report list with an edit control laid over the cell; the headless one
// keeps the current cell and the range in memory and stands for the user's clicks and typing.
//
// Programmatic changes (RowCount, Current, SelectRange, EditCell) raise no events.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "ozGridCells.h"

class ozGridEvents {
public:
    virtual ~ozGridEvents() = default;
    // The texts of row's cells, one per column; asked when the row is drawn.
    virtual std::vector<std::string> RowCells(int row) = 0;
    // Whether the in-place editor may open over the cell.
    virtual bool CellEditable(int row, int column) = 0;
    // The user ended the in-place editor over the cell with text: true when taken. A refusal
    // (reported to the user by the receiver) leaves the cell as it was.
    virtual bool CellEdited(int row, int column, const std::string& text) = 0;
    // The user moved the current cell.
    virtual void CurrentChanged(int row, int column) = 0;
    // A key went down while the grid (not its editor) has the focus.
    virtual void KeyPressed(int virtualKey) = 0;
};

class ozGridWidget {
public:
    virtual ~ozGridWidget() = default;

    // Where events go (not owned; null: nowhere).
    virtual void Events(ozGridEvents* events) = 0;
    // The columns' captions and widths in pixels, replacing the columns there were.
    virtual void Columns(const std::vector<std::string>& captions,
                         const std::vector<int>& widths) = 0;
    // The number of rows; every row is asked for again when drawn. The current cell and the
    // range are kept inside the rows (none without rows).
    virtual void RowCount(int rows) = 0;
    virtual int RowCount() const = 0;
    // Rows [first, last] changed: they are asked for again.
    virtual void RowsChanged(int first, int last) = 0;
    // Makes the cell the current one and the range that single cell, and scrolls it into view
    // (-1, -1: none).
    virtual void Current(int row, int column) = 0;
    virtual int CurrentRow() const = 0;
    virtual int CurrentColumn() const = 0;
    // Selects a rectangle of cells; the current cell stays where it is.
    virtual void SelectRange(const ozGridRange& range) = 0;
    virtual ozGridRange Selection() const = 0;
    // Makes the cell current and opens the in-place editor over it with its text and the
    // characters [begin, end) selected.
    virtual void EditCell(int row, int column, std::size_t begin, std::size_t end) = 0;
    // Ends an open in-place editor as the user's Enter does (reporting CellEdited).
    virtual void CommitEdit() = 0;
};
