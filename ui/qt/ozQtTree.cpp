#include "ozQtTree.h"

#include <QtGui/QMouseEvent>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTreeWidget>

#include "ozQtSupport.h"

namespace {

// Where an item keeps what the view gave it.
enum : int {
    RoleImage = Qt::UserRole,
    RoleSelectedImage,
    RoleData,
};

QTreeWidgetItem* ItemOf(ozTreeItem item)
{
    return reinterpret_cast<QTreeWidgetItem*>(item);
}

ozTreeItem Handle(const QTreeWidgetItem* item)
{
    return reinterpret_cast<ozTreeItem>(item);
}

}  // namespace

class ozQtTree::View final : public QTreeWidget {
public:
    explicit View(QWidget* parent) : QTreeWidget(parent)
    {
        setColumnCount(1);
        header()->hide();
        setSelectionMode(QAbstractItemView::SingleSelection);
        setEditTriggers(QAbstractItemView::NoEditTriggers);
        setIconSize(QSize(16, 16));
        connect(this, &QTreeWidget::itemSelectionChanged, this, [this] { SelectionMoved(); });
        connect(this, &QTreeWidget::itemExpanded, this,
                [this](QTreeWidgetItem* item) { Expanding(item, true); });
        connect(this, &QTreeWidget::itemCollapsed, this,
                [this](QTreeWidgetItem* item) { Expanding(item, false); });
    }

    ozTreeEvents* events = nullptr;
    std::vector<QIcon> icons;
    QTreeWidgetItem* selected = nullptr;
    QTreeWidgetItem* edited = nullptr;
    bool editCommitted = false;
    int quiet = 0;

    QIcon IconOf(int image) const
    {
        return image >= 0 && image < static_cast<int>(icons.size()) ? icons[image] : QIcon();
    }
    // Shows the item's image for whether it is the selection.
    void ShowImage(QTreeWidgetItem* item) const
    {
        if (item == nullptr)
            return;
        const int role = item == selected ? RoleSelectedImage : RoleImage;
        item->setIcon(0, IconOf(item->data(0, role).toInt()));
    }
    QRect IconRect(QTreeWidgetItem* item) const
    {
        QRect row = visualItemRect(item);
        if (row.isEmpty())
            return {};
        // The icon comes first in the item's rectangle, behind the style's margin.
        const int margin = style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1;
        return QRect(row.left() + margin, row.top() + (row.height() - iconSize().height()) / 2,
                     iconSize().width(), iconSize().height());
    }
    ozTreeItem IconAt(const QPoint& point) const
    {
        QTreeWidgetItem* item = itemAt(point);
        return item != nullptr && IconRect(item).adjusted(-2, -2, 2, 2).contains(point)
                   ? Handle(item)
                   : ozNoItem;
    }
    // Makes item the selection without asking anyone.
    void SelectQuietly(QTreeWidgetItem* item)
    {
        ozQtQuiet quietly(quiet);
        QTreeWidgetItem* before = selected;
        selected = item;
        if (item != nullptr) {
            setCurrentItem(item);
            item->setSelected(true);
        } else {
            clearSelection();
        }
        ShowImage(before);
        ShowImage(item);
    }

protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override
    {
        QItemSelectionModel::SelectionFlags flags = QTreeWidget::selectionCommand(index, event);
        QTreeWidgetItem* target = itemFromIndex(index);
        if (quiet > 0 || events == nullptr || target == selected ||
            !(flags & QItemSelectionModel::Select))
            return flags;
        // Only a press or a key moves the selection; the view may refuse the move.
        if (event != nullptr && event->type() != QEvent::MouseButtonPress &&
            event->type() != QEvent::KeyPress)
            return QItemSelectionModel::NoUpdate;
        if (events->SelectionChanging(Handle(selected), Handle(target)))
            return flags;
        // Refused: the focus mark, which Qt has moved already, goes back to the selection.
        auto* self = const_cast<View*>(this);
        QMetaObject::invokeMethod(
            self, [self] { self->SelectQuietly(self->selected); }, Qt::QueuedConnection);
        return QItemSelectionModel::NoUpdate;
    }
    void mousePressEvent(QMouseEvent* event) override
    {
        if (event->button() == Qt::RightButton) {
            // The right button selects nothing: the view shows its menu for the item.
            if (events != nullptr)
                events->RightClicked(Handle(itemAt(event->position().toPoint())));
            return;
        }
        if (event->button() == Qt::LeftButton) {
            buttonDown = true;
            if (events != nullptr)
                events->IconPressed(IconAt(event->position().toPoint()));
        }
        QTreeWidget::mousePressEvent(event);
    }
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        QTreeWidget::mouseReleaseEvent(event);
        if (event->button() == Qt::LeftButton && buttonDown) {
            buttonDown = false;
            if (events != nullptr)
                events->IconReleased(IconAt(event->position().toPoint()));
        }
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override
    {
        if (event->button() == Qt::LeftButton && events != nullptr)
            events->DoubleClicked(Handle(itemAt(event->position().toPoint())));
        QTreeWidget::mouseDoubleClickEvent(event);
    }
    void keyPressEvent(QKeyEvent* event) override
    {
        const int key = ozQtVirtualKey(event->key());
        if (events != nullptr && key != 0)
            events->KeyPressed(key);
        QTreeWidget::keyPressEvent(event);
    }
    // The label edit: the view decides whether the new label stays, so the delegate never
    // writes it itself.
    void commitData(QWidget* editor) override
    {
        auto* line = qobject_cast<QLineEdit*>(editor);
        if (edited == nullptr || line == nullptr || editCommitted)
            return;
        editCommitted = true;
        QTreeWidgetItem* item = edited;
        const std::string text = ozQtNarrow(line->text());
        if (events != nullptr && events->LabelEdited(Handle(item), &text)) {
            ozQtQuiet quietly(quiet);
            item->setText(0, line->text());
        }
    }
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override
    {
        QTreeWidgetItem* item = edited;
        const bool committed = editCommitted;
        edited = nullptr;
        editCommitted = false;
        QTreeWidget::closeEditor(editor, hint);
        if (item != nullptr) {
            ozQtQuiet quietly(quiet);
            item->setFlags(item->flags() & ~Qt::ItemIsEditable);
        }
        if (item != nullptr && !committed && events != nullptr)
            events->LabelEdited(Handle(item), nullptr);
    }

private:
    void SelectionMoved()
    {
        if (quiet > 0)
            return;
        const QList<QTreeWidgetItem*> items = selectedItems();
        QTreeWidgetItem* now = items.isEmpty() ? nullptr : items.front();
        if (now == selected)
            return;
        QTreeWidgetItem* before = selected;
        selected = now;
        ShowImage(before);
        ShowImage(now);
        if (events != nullptr)
            events->SelectionChanged(Handle(now));
    }
    void Expanding(QTreeWidgetItem* item, bool expanding)
    {
        if (quiet == 0 && events != nullptr)
            events->ItemExpanding(Handle(item), expanding);
    }

    bool buttonDown = false;
};

ozQtTree::ozQtTree(QWidget* parent) : m_view(std::make_unique<View>(parent)) {}

ozQtTree::~ozQtTree() = default;

QTreeWidget& ozQtTree::Widget() const
{
    return *m_view;
}

QRect ozQtTree::IconRect(ozTreeItem item) const
{
    return item != ozNoItem ? m_view->IconRect(ItemOf(item)) : QRect();
}

void ozQtTree::Events(ozTreeEvents* events)
{
    m_view->events = events;
}

void ozQtTree::Images(const std::vector<int>& bitmapResources)
{
    m_view->icons = ozQtBitmaps(bitmapResources);
}

void ozQtTree::DeleteAll()
{
    ozQtQuiet quietly(m_view->quiet);
    m_view->selected = nullptr;
    m_view->edited = nullptr;
    m_view->clear();
}

void ozQtTree::Filling(bool filling)
{
    m_view->setUpdatesEnabled(!filling);
}

namespace {

QTreeWidgetItem* NewItem(const std::string& text, int image, int selectedImage, void* data)
{
    auto* item = new QTreeWidgetItem;
    item->setText(0, ozQtText(text));
    item->setData(0, RoleImage, image);
    item->setData(0, RoleSelectedImage, selectedImage);
    item->setData(0, RoleData, QVariant::fromValue(reinterpret_cast<quintptr>(data)));
    return item;
}

}  // namespace

ozTreeItem ozQtTree::Append(ozTreeItem parent, const std::string& text, int image,
                            int selectedImage, bool expanded, void* data)
{
    ozQtQuiet quietly(m_view->quiet);
    QTreeWidgetItem* item = NewItem(text, image, selectedImage, data);
    item->setIcon(0, m_view->IconOf(image));
    if (parent == ozNoItem) {
        m_view->addTopLevelItem(item);
    } else {
        ItemOf(parent)->addChild(item);
        ItemOf(parent)->setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicatorWhenChildless);
    }
    item->setExpanded(expanded);
    return Handle(item);
}

ozTreeItem ozQtTree::InsertAfter(ozTreeItem parent, ozTreeItem after, const std::string& text,
                                 int image, int selectedImage, void* data)
{
    ozQtQuiet quietly(m_view->quiet);
    QTreeWidgetItem* item = NewItem(text, image, selectedImage, data);
    item->setIcon(0, m_view->IconOf(image));
    if (parent == ozNoItem) {
        const int at = after == ozNoItem ? 0 : m_view->indexOfTopLevelItem(ItemOf(after)) + 1;
        m_view->insertTopLevelItem(at, item);
    } else {
        QTreeWidgetItem* owner = ItemOf(parent);
        const int at = after == ozNoItem ? 0 : owner->indexOfChild(ItemOf(after)) + 1;
        owner->insertChild(at, item);
        owner->setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicatorWhenChildless);
    }
    return Handle(item);
}

void ozQtTree::ChildrenLater(ozTreeItem item)
{
    if (item != ozNoItem)
        ItemOf(item)->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
}

void ozQtTree::Delete(ozTreeItem item)
{
    if (item == ozNoItem)
        return;
    ozQtQuiet quietly(m_view->quiet);
    QTreeWidgetItem* doomed = ItemOf(item);
    // The selection and the edited item go with their ancestor.
    for (QTreeWidgetItem* at = m_view->selected; at != nullptr; at = at->parent())
        if (at == doomed)
            m_view->selected = nullptr;
    for (QTreeWidgetItem* at = m_view->edited; at != nullptr; at = at->parent())
        if (at == doomed)
            m_view->edited = nullptr;
    delete doomed;
    if (m_view->selected == nullptr)
        m_view->clearSelection();
}

void ozQtTree::Text(ozTreeItem item, const std::string& text)
{
    if (item == ozNoItem)
        return;
    ozQtQuiet quietly(m_view->quiet);
    ItemOf(item)->setText(0, ozQtText(text));
}

void ozQtTree::Image(ozTreeItem item, int image, int selectedImage)
{
    if (item == ozNoItem)
        return;
    ozQtQuiet quietly(m_view->quiet);
    ItemOf(item)->setData(0, RoleImage, image);
    ItemOf(item)->setData(0, RoleSelectedImage, selectedImage);
    m_view->ShowImage(ItemOf(item));
}

void ozQtTree::Expand(ozTreeItem item, bool expanded)
{
    if (item == ozNoItem)
        return;
    ozQtQuiet quietly(m_view->quiet);
    ItemOf(item)->setExpanded(expanded);
}

bool ozQtTree::Select(ozTreeItem item)
{
    QTreeWidgetItem* target = ItemOf(item);
    if (target == m_view->selected)
        return true;
    ozTreeEvents* events = m_view->events;
    if (events != nullptr && !events->SelectionChanging(Handle(m_view->selected), item))
        return false;
    m_view->SelectQuietly(target);
    if (events != nullptr)
        events->SelectionChanged(item);
    return true;
}

void ozQtTree::EnsureVisible(ozTreeItem item)
{
    if (item == ozNoItem)
        return;
    ozQtQuiet quietly(m_view->quiet);
    for (QTreeWidgetItem* parent = ItemOf(item)->parent(); parent != nullptr;
         parent = parent->parent())
        parent->setExpanded(true);
    m_view->scrollToItem(ItemOf(item));
}

void ozQtTree::EditLabel(ozTreeItem item)
{
    if (item == ozNoItem || m_view->events == nullptr)
        return;
    QTreeWidgetItem* target = ItemOf(item);
    {
        ozQtQuiet quietly(m_view->quiet);
        target->setFlags(target->flags() | Qt::ItemIsEditable);
    }
    m_view->edited = target;
    m_view->editCommitted = false;
    m_view->scrollToItem(target);
    m_view->editItem(target, 0);
}

ozTreeItem ozQtTree::Selection() const
{
    return Handle(m_view->selected);
}

void* ozQtTree::Data(ozTreeItem item) const
{
    return item != ozNoItem
               ? reinterpret_cast<void*>(ItemOf(item)->data(0, RoleData).value<quintptr>())
               : nullptr;
}

std::string ozQtTree::Text(ozTreeItem item) const
{
    return item != ozNoItem ? ozQtNarrow(ItemOf(item)->text(0)) : std::string();
}

int ozQtTree::Image(ozTreeItem item) const
{
    return item != ozNoItem ? ItemOf(item)->data(0, RoleImage).toInt() : -1;
}

bool ozQtTree::Expanded(ozTreeItem item) const
{
    return item != ozNoItem && ItemOf(item)->isExpanded();
}

ozTreeItem ozQtTree::Root() const
{
    return Handle(m_view->topLevelItem(0));
}

ozTreeItem ozQtTree::Parent(ozTreeItem item) const
{
    return item != ozNoItem ? Handle(ItemOf(item)->parent()) : ozNoItem;
}

ozTreeItem ozQtTree::FirstChild(ozTreeItem item) const
{
    if (item == ozNoItem)
        return ozNoItem;
    return Handle(ItemOf(item)->child(0));
}

ozTreeItem ozQtTree::NextSibling(ozTreeItem item) const
{
    if (item == ozNoItem)
        return ozNoItem;
    QTreeWidgetItem* current = ItemOf(item);
    QTreeWidgetItem* parent = current->parent();
    if (parent == nullptr)
        return Handle(m_view->topLevelItem(m_view->indexOfTopLevelItem(current) + 1));
    return Handle(parent->child(parent->indexOfChild(current) + 1));
}
