// ozTreeWidget over the common tree control (WC_TREEVIEWW) with an image list of 16 by 16
// masked bitmaps. The object exists before its window: until Create and after Forget every
// call does nothing and reads as empty. The parent's WM_NOTIFY from the tree goes to Notify;
// the tree itself is subclassed to see the left button go down and up over an item's icon.
//
// Only Select raises events among the programmatic calls; the control's own notifications
// caused by the other calls (a deleted selection, an expansion) are not reported. A label edit
// starts only through EditLabel: the tree's own start (a click on the selected item) is
// refused.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <vector>

#include "ui/ozTreeWidget.h"

// A masked 16 by 16 image list of the bitmaps of resources, in the order given (a bitmap that
// is missing becomes a blank image, so that the indexes stay). The caller destroys it.
HIMAGELIST ozWin32ImageList(HINSTANCE resources, const std::vector<int>& bitmaps);

class ozWin32Tree final : public ozTreeWidget {
public:
    ozWin32Tree() = default;
    ~ozWin32Tree() override;
    ozWin32Tree(const ozWin32Tree&) = delete;
    ozWin32Tree& operator=(const ozWin32Tree&) = delete;

    // Creates the tree window (hidden until the parent shows it) as a child of parent with
    // control number id; resources is the module holding the bitmaps. False when the window
    // cannot be created.
    bool Create(HWND parent, int id, HINSTANCE resources);
    // Takes over a tree window that exists already (a dialog's tree control); resources as for
    // Create.
    void Attach(HWND window, HINSTANCE resources);
    // The window went with its parent.
    void Forget();
    HWND Window() const { return m_window; }
    // The parent's WM_NOTIFY: true when it came from this tree (result: what to return).
    bool Notify(const NMHDR& header, LRESULT& result);

    void Events(ozTreeEvents* events) override { m_events = events; }
    void Images(const std::vector<int>& bitmapResources) override;
    void DeleteAll() override;
    // Stops drawing and lets go of the mouse watch (a subclass costs every message a window
    // property lookup) until the fill ends.
    void Filling(bool filling) override;
    ozTreeItem Append(ozTreeItem parent, const std::string& text, int image, int selectedImage,
                      bool expanded, void* data) override;
    // The item's expand button by its children count (TVIF_CHILDREN).
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
    static LRESULT CALLBACK Subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                     UINT_PTR id, DWORD_PTR self);
    // The item whose icon lies under point (client coordinates), or ozNoItem.
    ozTreeItem IconAt(POINT point) const;
    // The item under the position of the message being handled (ozNoItem: none); onIcon asks
    // for the icon only.
    ozTreeItem ItemAtMessage(bool onIcon) const;
    void ButtonReleased(ozTreeItem item);
    bool GetItem(ozTreeItem item, UINT mask, TVITEMW& data) const;
    ozTreeItem Insert(ozTreeItem parent, HTREEITEM after, const std::string& text, int image,
                      int selectedImage, bool expanded, void* data);

    // Fills the image list from the bitmaps of m_bitmaps.
    void LoadImages();

    HWND m_window = nullptr;
    HINSTANCE m_resources = nullptr;
    std::vector<int> m_bitmaps;
    HIMAGELIST m_images = nullptr;
    ozTreeEvents* m_events = nullptr;
    // Programmatic changes under way, whose notifications are not events.
    int m_quiet = 0;
    // Between IconPressed and the IconReleased that answers it.
    bool m_buttonDown = false;
    // Set by EditLabel until the tree asks to begin the edit.
    bool m_editRequested = false;
};
