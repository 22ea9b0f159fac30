// ozTreeWidget over a QTreeWidget of one column. The Qt widget forwards what the user does: the
// left button going down and up (with the item whose icon lies under the cursor), a selection
// about to move (which the view may refuse: the selection then stays), the right button (which
// selects nothing, as in the views' other trees), double clicks, keys, expanding and collapsing,
// and the in-place label edit (committed or cancelled). An item shows its selected image while
// it is the selection.
//
// The object owns its QTreeWidget (Widget()), which the platform puts into a view's window.
// Items are the QTreeWidgetItems' addresses; they stay valid until deleted.
#pragma once

#include <QtGui/QIcon>
#include <memory>
#include <vector>

#include "ui/ozTreeWidget.h"

class QTreeWidget;
class QTreeWidgetItem;
class QWidget;

class ozQtTree final : public ozTreeWidget {
public:
    explicit ozQtTree(QWidget* parent = nullptr);
    ~ozQtTree() override;
    ozQtTree(const ozQtTree&) = delete;
    ozQtTree& operator=(const ozQtTree&) = delete;

    QTreeWidget& Widget() const;
    // The rectangle of item's icon in the widget's viewport (empty when item is not shown), for
    // whoever stands for the user's mouse.
    QRect IconRect(ozTreeItem item) const;

    // ozTreeWidget
    void Events(ozTreeEvents* events) override;
    void Images(const std::vector<int>& bitmapResources) override;
    void DeleteAll() override;
    void Filling(bool filling) override;
    ozTreeItem Append(ozTreeItem parent, const std::string& text, int image, int selectedImage,
                      bool expanded, void* data) override;
    ozTreeItem InsertAfter(ozTreeItem parent, ozTreeItem after, const std::string& text, int image,
                           int selectedImage, void* data) override;
    void ChildrenLater(ozTreeItem item) override;
    void Delete(ozTreeItem item) override;
    void Text(ozTreeItem item, const std::string& text) override;
    void Image(ozTreeItem item, int image, int selectedImage) override;
    void Expand(ozTreeItem item, bool expanded) override;
    bool Select(ozTreeItem item) override;
    void EnsureVisible(ozTreeItem item) override;
    void EditLabel(ozTreeItem item) override;
    ozTreeItem Selection() const override;
    void* Data(ozTreeItem item) const override;
    std::string Text(ozTreeItem item) const override;
    int Image(ozTreeItem item) const override;
    bool Expanded(ozTreeItem item) const override;
    ozTreeItem Root() const override;
    ozTreeItem Parent(ozTreeItem item) const override;
    ozTreeItem FirstChild(ozTreeItem item) const override;
    ozTreeItem NextSibling(ozTreeItem item) const override;

private:
    class View;
    std::unique_ptr<View> m_view;
};
