// The registry-value grid (display mode 2): one row per value of the registry trees shown (the
// user tree, the machine tree or both), in tree order: the trees' keys depth first, siblings
// sorted as the registry view sorts them, each key's values in their own order before its sub
// keys. Columns: a running number, the key's path with its root, the value's name, type, size
// and data, and the size and data of the old datum for the operations that carry one. Texts
// are the value editor's (ozValueData.h); numbers show in hexadecimal.
//
// Name, type and data are edited in place, and the old data where the operation has them; an
// edit is written to the value at once and marks the document, or is refused with message 180
// and changes nothing. Insert adds a value to the current row's key (named as the value list
// names new ones); Delete removes the current row's value.
//
// Filling indexes the values (one pointer per row); a row's texts are made when the widget asks
// for them. The rows point into the registry trees: Fill with null before they go.
#pragma once

#include <string>
#include <vector>

#include "ozGridCells.h"
#include "ozGridWidget.h"

class CADMCtrl;
class ozRegValue;
class ozTreeNode;
class ozViewPlatform;
struct tTreeCodeHandle;

class ozValueGrid final : public ozGridEvents, public ozGridCells {
public:
    explicit ozValueGrid(ozViewPlatform& platform);

    // The control whose host texts the grid shows and whose document it marks (not owned).
    void Control(CADMCtrl* control) { m_control = control; }
    // Sets up the widget: its events and captions.
    void Create();
    // Indexes the values of code's registry trees (null: empties the grid). The current cell
    // goes to the first row's value name.
    void Fill(tTreeCodeHandle* code, bool showUser, bool showMachine);
    ozRegValue* RowValue(int row) const;

    // Adds a value to the current row's key after the key's last value, makes its name the
    // current cell and marks the document; false without a current row.
    bool Insert();
    // Deletes the current row's value and marks the document; false without a current row.
    bool Delete();
    // Takes an open in-place edit.
    void StorePendingEdit();

    // ozGridEvents
    std::vector<std::string> RowCells(int row) override;
    bool CellEditable(int row, int column) override { return Editable(row, column); }
    bool CellEdited(int row, int column, const std::string& text) override;
    void CurrentChanged(int, int) override {}
    void KeyPressed(int virtualKey) override;

    // ozGridCells
    int RowCount() const override { return static_cast<int>(m_rows.size()); }
    int ColumnCount() const override { return GridColumnCount; }
    bool CellText(int row, int column, std::string& text) override;
    bool Editable(int row, int column) override;
    bool SetCellText(int row, int column, const std::string& text, std::string& problem) override;
    void EditCell(int row, int column, std::size_t begin, std::size_t end) override;
    int CurrentRow() const override;
    int CurrentColumn() const override;
    ozGridRange Selection() const override;
    void CellsChanged() override;

    // The column captions, in column order.
    static const std::vector<std::string>& Captions();

private:
    void AppendKeys(const ozTreeNode& above);
    ozGridWidget& Widget() const;
    void MarkEdited();

    ozViewPlatform& m_platform;
    CADMCtrl* m_control = nullptr;
    std::vector<ozRegValue*> m_rows;
};
