// A tree control as the views drive it, and what it reports back. The views own no windows:
// they fill a tree widget, set its items' texts and images, and react to its events. The
// Windows widgets forward the common tree control's notifications to these events; the headless
// widget raises them from the calls that stand for the user's mouse and keys.
//
// Programmatic changes (Append, SetImage, Expand, ...) raise no events, with one exception that
// every tree control has: Select raises SelectionChanging and, when that is not refused,
// SelectionChanged, exactly as the user's selection does.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// An item of a tree widget; ozNoItem stands for none. Items stay valid until deleted.
using ozTreeItem = std::uintptr_t;
inline constexpr ozTreeItem ozNoItem = 0;

// Virtual-key numbers the views react to.
enum : int {
    ozKeyTab = 9,
    ozKeyInsert = 45,
    ozKeyDelete = 46,
    ozKeyF2 = 113,
};

class ozTreeEvents {
public:
    virtual ~ozTreeEvents() = default;
    // The item is about to be expanded (expanding true) or collapsed by the user.
    virtual void ItemExpanding(ozTreeItem item, bool expanding) = 0;
    // The left button went down; item is the item whose icon lies under the cursor, or ozNoItem.
    virtual void IconPressed(ozTreeItem item) = 0;
    // The left button came up; item as for IconPressed.
    virtual void IconReleased(ozTreeItem item) = 0;
    // The selection is about to move from `from` to `to`; false refuses the change.
    virtual bool SelectionChanging(ozTreeItem from, ozTreeItem to) = 0;
    virtual void SelectionChanged(ozTreeItem item) = 0;
    // The right button was pressed over item (ozNoItem: over no item).
    virtual void RightClicked(ozTreeItem item) = 0;
    // A left double click over item (ozNoItem: over no item).
    virtual void DoubleClicked(ozTreeItem item) = 0;
    // A key went down while the tree has the focus.
    virtual void KeyPressed(int virtualKey) = 0;
    // An in-place label edit of item ended: text is the new label, or null when cancelled.
    // True keeps the new label in the tree.
    virtual bool LabelEdited(ozTreeItem item, const std::string* text) = 0;
};

class ozTreeWidget {
public:
    virtual ~ozTreeWidget() = default;

    // Where events go (not owned; null: nowhere).
    virtual void Events(ozTreeEvents* events) = 0;
    // The pictures of the items: the bitmap resource numbers in image-index order (16 by 16,
    // magenta the mask colour). The headless widget keeps only the indexes.
    virtual void Images(const std::vector<int>& bitmapResources) = 0;

    virtual void DeleteAll() = 0;
    // Many items are about to be appended (true), or they are in (false). In between the widget
    // need not draw nor watch the mouse; a fill brackets its appends with these.
    virtual void Filling(bool filling) { (void)filling; }
    // Appends an item as the last child of parent (ozNoItem: at the top level). data is the
    // view's, not owned.
    virtual ozTreeItem Append(ozTreeItem parent, const std::string& text, int image,
                              int selectedImage, bool expanded, void* data) = 0;
    // Inserts an item below parent right after its child `after`, or as its first child when
    // after is ozNoItem; collapsed.
    virtual ozTreeItem InsertAfter(ozTreeItem parent, ozTreeItem after, const std::string& text,
                                   int image, int selectedImage, void* data) = 0;
    // item shows an expand button although it has no child items yet: they are appended when
    // the user first expands it (on ItemExpanding). Appending a child ends this.
    virtual void ChildrenLater(ozTreeItem item) = 0;
    // Deletes item with its children.
    virtual void Delete(ozTreeItem item) = 0;
    virtual void Text(ozTreeItem item, const std::string& text) = 0;
    virtual void Image(ozTreeItem item, int image, int selectedImage) = 0;
    virtual void Expand(ozTreeItem item, bool expanded) = 0;
    // Selects item (ozNoItem: none), raising the selection events; false when refused.
    virtual bool Select(ozTreeItem item) = 0;
    // Scrolls and expands the parents so that item can be seen.
    virtual void EnsureVisible(ozTreeItem item) = 0;
    // Starts the in-place label edit of item; it ends with the LabelEdited event.
    virtual void EditLabel(ozTreeItem item) = 0;

    virtual ozTreeItem Selection() const = 0;
    virtual void* Data(ozTreeItem item) const = 0;
    virtual std::string Text(ozTreeItem item) const = 0;
    virtual int Image(ozTreeItem item) const = 0;
    virtual bool Expanded(ozTreeItem item) const = 0;
    // Navigation: ozNoItem when there is none. Root(): the first top-level item.
    virtual ozTreeItem Root() const = 0;
    virtual ozTreeItem Parent(ozTreeItem item) const = 0;
    virtual ozTreeItem FirstChild(ozTreeItem item) const = 0;
    virtual ozTreeItem NextSibling(ozTreeItem item) const = 0;
};
