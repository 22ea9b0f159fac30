// A tree widget in memory: the items as the view put them in, and calls that stand for what a
// user does with mouse and keyboard, raising the events a tree control raises. Tests and
// ozadm's view calls drive the views through it.
#pragma once

#include <string>
#include <vector>

#include "ui/ozTreeWidget.h"

class ozHeadlessTree final : public ozTreeWidget {
public:
    // The item at path: the items' texts from the top level down joined by '\' (the first
    // match at each level); ozNoItem when there is none.
    ozTreeItem Find(const std::string& path) const;
    int SelectedImage(ozTreeItem item) const;
    const std::vector<int>& ImageBitmaps() const { return m_bitmaps; }
    // Whether item shows an expand button for children still to come (ChildrenLater).
    bool ChildrenToCome(ozTreeItem item) const;
    // The item whose label is being edited, or ozNoItem.
    ozTreeItem EditedItem() const { return m_edited; }

    // The user's actions. Press and Release are the left button going down and up on item's
    // icon (ozNoItem: elsewhere); Click is both on the same icon. SelectByUser clicks the
    // label: false when the view refuses the change. ExpandByUser raises ItemExpanding and
    // then expands or collapses. Key goes to the tree as it has the focus.
    void Press(ozTreeItem item);
    void Release(ozTreeItem item);
    void Click(ozTreeItem item);
    bool SelectByUser(ozTreeItem item);
    void ExpandByUser(ozTreeItem item, bool expand);
    void DoubleClick(ozTreeItem item);
    void RightClick(ozTreeItem item);
    void Key(int virtualKey);
    // Ends the label edit with text, or cancels it; false when no edit is running.
    bool EndLabelEdit(const std::string& text);
    bool CancelLabelEdit();

    // ozTreeWidget
    void Events(ozTreeEvents* events) override { m_events = events; }
    void Images(const std::vector<int>& bitmapResources) override { m_bitmaps = bitmapResources; }
    void DeleteAll() override;
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
    ozTreeItem Selection() const override { return m_selection; }
    void* Data(ozTreeItem item) const override;
    std::string Text(ozTreeItem item) const override;
    int Image(ozTreeItem item) const override;
    bool Expanded(ozTreeItem item) const override;
    ozTreeItem Root() const override;
    ozTreeItem Parent(ozTreeItem item) const override;
    ozTreeItem FirstChild(ozTreeItem item) const override;
    ozTreeItem NextSibling(ozTreeItem item) const override;

private:
    // Items live in one vector, an item's number being its index plus one, linked as first
    // child and next sibling, so that every step through the tree takes constant time.
    struct Item {
        std::string text;
        int image = 0;
        int selectedImage = 0;
        bool expanded = false;
        bool childrenLater = false;
        bool deleted = false;
        void* data = nullptr;
        ozTreeItem parent = ozNoItem;
        ozTreeItem firstChild = ozNoItem;
        ozTreeItem lastChild = ozNoItem;
        ozTreeItem previous = ozNoItem;
        ozTreeItem next = ozNoItem;
    };
    const Item* Find(ozTreeItem item) const;
    Item* Find(ozTreeItem item);
    // Links added in below parent after previous (ozNoItem: first).
    ozTreeItem Link(ozTreeItem parent, ozTreeItem previous, Item added);
    // Marks item and its children deleted.
    void Forget(ozTreeItem item);

    ozTreeEvents* m_events = nullptr;
    std::vector<int> m_bitmaps;
    std::vector<Item> m_items;
    ozTreeItem m_firstTop = ozNoItem;
    ozTreeItem m_lastTop = ozNoItem;
    ozTreeItem m_selection = ozNoItem;
    ozTreeItem m_pressed = ozNoItem;
    ozTreeItem m_edited = ozNoItem;
};
