#include "ozQtList.h"

#include <QtGui/QMouseEvent>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTreeWidget>

#include "ozQtSupport.h"

namespace {

enum : int {
    RoleImage = Qt::UserRole,
    RoleData,
};

}  // namespace

class ozQtList::View final : public QTreeWidget {
public:
    explicit View(QWidget* parent) : QTreeWidget(parent)
    {
        setRootIsDecorated(false);
        setItemsExpandable(false);
        setSelectionMode(QAbstractItemView::SingleSelection);
        setEditTriggers(QAbstractItemView::NoEditTriggers);
        setIconSize(QSize(16, 16));
        setUniformRowHeights(true);
        header()->setStretchLastSection(false);
        connect(this, &QTreeWidget::itemSelectionChanged, this, [this] {
            if (quiet == 0 && events != nullptr && Selected() >= 0)
                events->RowSelected(Selected());
        });
    }

    int Selected() const
    {
        const QList<QTreeWidgetItem*> items = selectedItems();
        return items.isEmpty() ? -1 : indexOfTopLevelItem(items.front());
    }
    QIcon IconOf(int image) const
    {
        return image >= 0 && image < static_cast<int>(icons.size()) ? icons[image] : QIcon();
    }
    void Fill(QTreeWidgetItem* item, const std::vector<std::string>& texts, int image) const
    {
        for (std::size_t column = 0; column < texts.size(); ++column)
            item->setText(static_cast<int>(column), ozQtText(texts[column]));
        item->setIcon(0, IconOf(image));
        item->setData(0, RoleImage, image);
    }

    ozListEvents* events = nullptr;
    std::vector<QIcon> icons;
    int quiet = 0;

protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        const int before = Selected();
        QTreeWidgetItem* item = itemAt(event->position().toPoint());
        QTreeWidget::mousePressEvent(event);
        if (events == nullptr)
            return;
        const int row = item != nullptr ? indexOfTopLevelItem(item) : -1;
        if (event->button() == Qt::LeftButton && row >= 0 && row == before)
            events->RowSelected(row);
        else if (event->button() == Qt::RightButton)
            events->RightClicked(row);
    }
    void keyPressEvent(QKeyEvent* event) override
    {
        const int key = ozQtVirtualKey(event->key());
        if (events != nullptr && key != 0)
            events->KeyPressed(key);
        QTreeWidget::keyPressEvent(event);
    }
    void resizeEvent(QResizeEvent* event) override
    {
        QTreeWidget::resizeEvent(event);
        if (events != nullptr)
            events->Resized(viewport()->width());
    }
};

ozQtList::ozQtList(QWidget* parent) : m_view(std::make_unique<View>(parent)) {}

ozQtList::~ozQtList() = default;

QTreeWidget& ozQtList::Widget() const
{
    return *m_view;
}

void ozQtList::Events(ozListEvents* events)
{
    m_view->events = events;
}

void ozQtList::Images(const std::vector<int>& bitmapResources)
{
    m_view->icons = ozQtBitmaps(bitmapResources);
}

void ozQtList::Columns(const std::vector<std::string>& captions)
{
    ozQtQuiet quietly(m_view->quiet);
    QStringList labels;
    for (const std::string& caption : captions)
        labels.append(ozQtText(caption));
    m_view->setColumnCount(static_cast<int>(labels.size()));
    m_view->setHeaderLabels(labels);
}

void ozQtList::ColumnWidth(int column, int width)
{
    if (column >= 0 && column < m_view->columnCount())
        m_view->setColumnWidth(column, width);
}

int ozQtList::ColumnWidth(int column) const
{
    return column >= 0 && column < m_view->columnCount() ? m_view->columnWidth(column) : 0;
}

int ozQtList::Width() const
{
    return m_view->viewport()->width();
}

void ozQtList::DeleteAll()
{
    ozQtQuiet quietly(m_view->quiet);
    m_view->clear();
}

int ozQtList::Append(const std::vector<std::string>& texts, int image, void* data)
{
    ozQtQuiet quietly(m_view->quiet);
    auto* item = new QTreeWidgetItem;
    m_view->Fill(item, texts, image);
    item->setData(0, RoleData, QVariant::fromValue(reinterpret_cast<quintptr>(data)));
    m_view->addTopLevelItem(item);
    return m_view->topLevelItemCount() - 1;
}

void ozQtList::SetRow(int row, const std::vector<std::string>& texts, int image)
{
    if (QTreeWidgetItem* item = m_view->topLevelItem(row)) {
        ozQtQuiet quietly(m_view->quiet);
        m_view->Fill(item, texts, image);
    }
}

void ozQtList::Delete(int row)
{
    ozQtQuiet quietly(m_view->quiet);
    delete m_view->topLevelItem(row);
}

void ozQtList::Select(int row)
{
    QTreeWidgetItem* item = row >= 0 ? m_view->topLevelItem(row) : nullptr;
    {
        ozQtQuiet quietly(m_view->quiet);
        m_view->clearSelection();
        if (item != nullptr) {
            m_view->setCurrentItem(item);
            item->setSelected(true);
            m_view->scrollToItem(item);
        }
    }
    if (item != nullptr && m_view->events != nullptr)
        m_view->events->RowSelected(row);
}

int ozQtList::Count() const
{
    return m_view->topLevelItemCount();
}

int ozQtList::Selection() const
{
    return m_view->Selected();
}

std::string ozQtList::Text(int row, int column) const
{
    QTreeWidgetItem* item = m_view->topLevelItem(row);
    return item != nullptr ? ozQtNarrow(item->text(column)) : std::string();
}

int ozQtList::Image(int row) const
{
    QTreeWidgetItem* item = m_view->topLevelItem(row);
    return item != nullptr ? item->data(0, RoleImage).toInt() : -1;
}

void* ozQtList::Data(int row) const
{
    QTreeWidgetItem* item = m_view->topLevelItem(row);
    return item != nullptr ? reinterpret_cast<void*>(item->data(0, RoleData).value<quintptr>())
                           : nullptr;
}
