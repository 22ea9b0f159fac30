// An ozGridCells over a table of texts in memory, for the search tests, the Windows sheet test
// and the benchmark: every row has the grid's eight columns; the cells of one column can be
// made read-only, and a text containing "refuse" is refused as a value that does not parse.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "ui/ozGridCells.h"

class ozTableGridCells : public ozGridCells {
public:
    using Row = std::array<std::string, GridColumnCount>;

    std::vector<Row> rows;
    int readOnlyColumn = GridColumnCounter;
    int currentRow = -1, currentColumn = -1;
    ozGridRange selection;
    int edits = 0;    // EditCell calls
    int changes = 0;  // CellsChanged calls
    std::size_t selectedBegin = 0, selectedEnd = 0;

    int RowCount() const override { return static_cast<int>(rows.size()); }
    int ColumnCount() const override { return GridColumnCount; }
    bool CellText(int row, int column, std::string& text) override
    {
        if (row < 0 || row >= RowCount() || column < 0 || column >= GridColumnCount)
            return false;
        text = rows[row][column];
        return true;
    }
    bool Editable(int, int column) override { return column != readOnlyColumn; }
    bool SetCellText(int row, int column, const std::string& text, std::string& problem) override
    {
        if (text.find("refuse") != std::string::npos) {
            problem = "\"" + text + "\" does not parse";
            return false;
        }
        rows[row][column] = text;
        return true;
    }
    void EditCell(int row, int column, std::size_t begin, std::size_t end) override
    {
        currentRow = row;
        currentColumn = column;
        selectedBegin = begin;
        selectedEnd = end;
    }
    int CurrentRow() const override { return currentRow; }
    int CurrentColumn() const override { return currentColumn; }
    ozGridRange Selection() const override { return selection; }
    void CellsChanged() override { ++changes; }
};
