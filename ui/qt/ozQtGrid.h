// ozGridWidget over a QTableView whose model holds only the number of rows and asks the view for
// a row's texts when it draws the row (one row is kept from the last question), so a grid of any
// size opens at once. The widget keeps the current cell and the selected range itself and shows
// them through the view's selection. A click makes a cell current, a click with Shift (or a
// drag) spans the range from the current cell to the cell under the cursor; the arrow and page
// keys move the current cell. A double click, F2 or Enter opens a line edit laid over the
// current cell; Enter or leaving it takes the text, Escape drops it.
//
// The object owns its QTableView (Widget()), which the platform puts into a view's window.
#pragma once

#include <memory>

#include "ui/ozGridWidget.h"

class QLineEdit;
class QTableView;
class QWidget;

class ozQtGrid final : public ozGridWidget {
public:
    explicit ozQtGrid(QWidget* parent = nullptr);
    ~ozQtGrid() override;
    ozQtGrid(const ozQtGrid&) = delete;
    ozQtGrid& operator=(const ozQtGrid&) = delete;

    QTableView& Widget() const;
    // The open in-place editor, or null.
    QLineEdit* Editor() const;

    // ozGridWidget
    void Events(ozGridEvents* events) override;
    void Columns(const std::vector<std::string>& captions, const std::vector<int>& widths) override;
    void RowCount(int rows) override;
    int RowCount() const override;
    void RowsChanged(int first, int last) override;
    void Current(int row, int column) override;
    int CurrentRow() const override;
    int CurrentColumn() const override;
    void SelectRange(const ozGridRange& range) override;
    ozGridRange Selection() const override;
    void EditCell(int row, int column, std::size_t begin, std::size_t end) override;
    void CommitEdit() override;

private:
    class Model;
    class View;
    std::unique_ptr<Model> m_model;
    std::unique_ptr<View> m_view;
};
