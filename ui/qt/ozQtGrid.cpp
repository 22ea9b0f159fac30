#include "ozQtGrid.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QPointer>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTableView>
#include <algorithm>

#include "ozQtSupport.h"

// The rows as the view gives them, asked for when drawn.
class ozQtGrid::Model final : public QAbstractTableModel {
public:
    ozGridEvents* events = nullptr;
    std::vector<QString> captions;
    int rows = 0;

    int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : rows; }
    int columnCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(captions.size());
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role != Qt::DisplayRole || !index.isValid())
            return {};
        return CellText(index.row(), index.column());
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (role != Qt::DisplayRole || orientation != Qt::Horizontal || section < 0 ||
            section >= static_cast<int>(captions.size()))
            return {};
        return captions[section];
    }
    QString CellText(int row, int column) const
    {
        if (events == nullptr || row < 0 || row >= rows || column < 0)
            return {};
        if (row != m_cachedRow) {
            m_cached.clear();
            for (const std::string& text : events->RowCells(row))
                m_cached.append(ozQtText(text));
            m_cachedRow = row;
        }
        return column < m_cached.size() ? m_cached[column] : QString();
    }
    void Captions(const std::vector<std::string>& texts)
    {
        beginResetModel();
        captions.clear();
        for (const std::string& text : texts)
            captions.push_back(ozQtText(text));
        m_cachedRow = -1;
        endResetModel();
    }
    void Reset(int count)
    {
        beginResetModel();
        rows = count;
        m_cachedRow = -1;
        endResetModel();
    }
    void Changed(int first, int last)
    {
        m_cachedRow = -1;
        if (rows > 0 && !captions.empty())
            emit dataChanged(
                index(std::max(first, 0), 0),
                index(std::min(last, rows - 1), static_cast<int>(captions.size()) - 1));
    }

private:
    mutable int m_cachedRow = -1;
    mutable QStringList m_cached;
};

class ozQtGrid::View final : public QTableView {
public:
    View(Model& model, QWidget* parent) : QTableView(parent), m_model(model)
    {
        setModel(&model);
        setEditTriggers(QAbstractItemView::NoEditTriggers);
        setSelectionMode(QAbstractItemView::ExtendedSelection);
        verticalHeader()->hide();
        verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
        horizontalHeader()->setStretchLastSection(true);
    }

    int row = -1, column = -1;
    ozGridRange range{-1, -1, -1, -1};
    QPointer<QLineEdit> editor;
    int editRow = -1, editColumn = -1;

    bool Inside(int r, int c) const
    {
        return r >= 0 && r < m_model.rows && c >= 0 &&
               c < static_cast<int>(m_model.captions.size());
    }
    // Shows the current cell and the range through the view's selection.
    void ShowSelection()
    {
        QItemSelectionModel* selection = selectionModel();
        selection->clear();
        if (!Inside(row, column))
            return;
        selection->setCurrentIndex(m_model.index(row, column), QItemSelectionModel::NoUpdate);
        if (Inside(range.firstRow, range.firstColumn) && Inside(range.lastRow, range.lastColumn))
            selection->select(
                QItemSelection(m_model.index(std::min(range.firstRow, range.lastRow),
                                             std::min(range.firstColumn, range.lastColumn)),
                               m_model.index(std::max(range.firstRow, range.lastRow),
                                             std::max(range.firstColumn, range.lastColumn))),
                QItemSelectionModel::Select);
    }
    void SetCurrent(int r, int c)
    {
        if (!Inside(r, c)) {
            row = column = -1;
            range = {-1, -1, -1, -1};
        } else {
            row = r;
            column = c;
            range = {r, c, r, c};
            scrollTo(m_model.index(r, c));
        }
        ShowSelection();
    }
    void MoveByUser(int r, int c)
    {
        if (!Inside(r, c))
            return;
        SetCurrent(r, c);
        if (m_model.events != nullptr)
            m_model.events->CurrentChanged(r, c);
    }
    void OpenEditor()
    {
        CloseEditor(true);
        if (!Inside(row, column) || m_model.events == nullptr ||
            !m_model.events->CellEditable(row, column))
            return;
        scrollTo(m_model.index(row, column));
        editRow = row;
        editColumn = column;
        editor = new QLineEdit(m_model.CellText(row, column), viewport());
        editor->setGeometry(visualRect(m_model.index(row, column)));
        editor->installEventFilter(this);
        editor->selectAll();
        editor->show();
        editor->setFocus();
    }
    void CloseEditor(bool take)
    {
        if (editor == nullptr)
            return;
        // Forgotten first: removing the editor moves the focus, which would close it again.
        QLineEdit* closing = editor;
        editor = nullptr;
        const std::string text = ozQtNarrow(closing->text());
        const bool hadFocus = closing->hasFocus();
        closing->removeEventFilter(this);
        closing->hide();
        closing->deleteLater();
        if (hadFocus)
            setFocus();
        if (take && m_model.events != nullptr)
            m_model.events->CellEdited(editRow, editColumn, text);
        m_model.Changed(editRow, editRow);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == editor && event->type() == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent*>(event)->key();
            if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape) {
                CloseEditor(key != Qt::Key_Escape);
                return true;
            }
        } else if (watched == editor && event->type() == QEvent::FocusOut) {
            CloseEditor(true);
        }
        return QTableView::eventFilter(watched, event);
    }
    void mousePressEvent(QMouseEvent* event) override
    {
        setFocus();
        const QModelIndex at = indexAt(event->position().toPoint());
        if (event->button() != Qt::LeftButton || !at.isValid())
            return;
        if ((event->modifiers() & Qt::ShiftModifier) && row >= 0) {
            range = {row, column, at.row(), at.column()};
            ShowSelection();
            return;
        }
        MoveByUser(at.row(), at.column());
    }
    void mouseMoveEvent(QMouseEvent* event) override
    {
        const QModelIndex at = indexAt(event->position().toPoint());
        if ((event->buttons() & Qt::LeftButton) && at.isValid() && row >= 0) {
            range = {row, column, at.row(), at.column()};
            ShowSelection();
        }
    }
    void mouseReleaseEvent(QMouseEvent*) override {}
    void mouseDoubleClickEvent(QMouseEvent* event) override
    {
        const QModelIndex at = indexAt(event->position().toPoint());
        if (event->button() != Qt::LeftButton || !at.isValid())
            return;
        MoveByUser(at.row(), at.column());
        OpenEditor();
    }
    void keyPressEvent(QKeyEvent* event) override
    {
        const int page = std::max(1, viewport()->height() / std::max(1, rowHeight(0)) - 1);
        switch (event->key()) {
            case Qt::Key_Left:
            case Qt::Key_Right:
                MoveByUser(row, column + (event->key() == Qt::Key_Left ? -1 : 1));
                return;
            case Qt::Key_F2:
            case Qt::Key_Return:
            case Qt::Key_Enter:
                OpenEditor();
                return;
            case Qt::Key_Up:
                MoveByUser(row - 1, std::max(column, 0));
                break;
            case Qt::Key_Down:
                MoveByUser(row + 1, std::max(column, 0));
                break;
            case Qt::Key_PageUp:
                MoveByUser(std::max(row - page, 0), std::max(column, 0));
                break;
            case Qt::Key_PageDown:
                MoveByUser(std::min(row + page, m_model.rows - 1), std::max(column, 0));
                break;
            default:
                break;
        }
        const int key = ozQtVirtualKey(event->key());
        if (m_model.events != nullptr && key != 0)
            m_model.events->KeyPressed(key);
    }

private:
    Model& m_model;
};

ozQtGrid::ozQtGrid(QWidget* parent)
    : m_model(std::make_unique<Model>()), m_view(std::make_unique<View>(*m_model, parent))
{
}

ozQtGrid::~ozQtGrid()
{
    // The view goes before the model it shows.
    m_view.reset();
}

QTableView& ozQtGrid::Widget() const
{
    return *m_view;
}

QLineEdit* ozQtGrid::Editor() const
{
    return m_view->editor;
}

void ozQtGrid::Events(ozGridEvents* events)
{
    m_model->events = events;
    m_model->Changed(0, m_model->rows - 1);
}

void ozQtGrid::Columns(const std::vector<std::string>& captions, const std::vector<int>& widths)
{
    m_view->CloseEditor(false);
    m_model->Captions(captions);
    for (std::size_t column = 0; column < widths.size() && column < captions.size(); ++column)
        m_view->setColumnWidth(static_cast<int>(column), widths[column]);
    m_view->SetCurrent(m_view->row, m_view->column);
}

void ozQtGrid::RowCount(int rows)
{
    m_view->CloseEditor(false);
    m_model->Reset(std::max(rows, 0));
    // The current cell and the range stay inside the rows.
    View& view = *m_view;
    if (!view.Inside(view.row, view.column))
        view.SetCurrent(-1, -1);
    else if (!view.Inside(view.range.firstRow, view.range.firstColumn) ||
             !view.Inside(view.range.lastRow, view.range.lastColumn))
        view.SetCurrent(view.row, view.column);
    else
        view.ShowSelection();
}

int ozQtGrid::RowCount() const
{
    return m_model->rows;
}

void ozQtGrid::RowsChanged(int first, int last)
{
    m_model->Changed(first, last);
}

void ozQtGrid::Current(int row, int column)
{
    m_view->SetCurrent(row, column);
}

int ozQtGrid::CurrentRow() const
{
    return m_view->row;
}

int ozQtGrid::CurrentColumn() const
{
    return m_view->column;
}

void ozQtGrid::SelectRange(const ozGridRange& range)
{
    if (!m_view->Inside(range.firstRow, range.firstColumn) ||
        !m_view->Inside(range.lastRow, range.lastColumn))
        return;
    m_view->range = range;
    m_view->ShowSelection();
}

ozGridRange ozQtGrid::Selection() const
{
    return m_view->range;
}

void ozQtGrid::EditCell(int row, int column, std::size_t begin, std::size_t end)
{
    Current(row, column);
    m_view->OpenEditor();
    QLineEdit* editor = m_view->editor;
    if (editor == nullptr)
        return;
    // The characters selected count in the cell's narrow text; the editor counts UTF-16 units.
    const std::string text = ozQtNarrow(editor->text());
    begin = std::min(begin, text.size());
    end = std::min(std::max(begin, end), text.size());
    const int from = static_cast<int>(ozQtText(text.substr(0, begin)).size());
    const int to = static_cast<int>(ozQtText(text.substr(0, end)).size());
    editor->setSelection(from, to - from);
}

void ozQtGrid::CommitEdit()
{
    m_view->CloseEditor(true);
}
