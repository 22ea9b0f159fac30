// ozListWidget over the common list control (WC_LISTVIEWW) in report mode, one selected row at
// a time, with an image list of 16 by 16 masked bitmaps. The object exists before its window:
// until Create and after Forget every call does nothing and reads as empty. The parent's
// WM_NOTIFY from the list goes to Notify; the list itself is subclassed to see its size change.
//
// Only Select raises events among the programmatic calls; the control's own notifications
// caused by the other calls (rows added or deleted) are not reported.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <vector>

#include "ui/ozListWidget.h"

class ozWin32List final : public ozListWidget {
public:
    ozWin32List() = default;
    ~ozWin32List() override;
    ozWin32List(const ozWin32List&) = delete;
    ozWin32List& operator=(const ozWin32List&) = delete;

    // Creates the list window as a child of parent with control number id; resources is the
    // module holding the bitmaps. False when the window cannot be created.
    bool Create(HWND parent, int id, HINSTANCE resources);
    // The window went with its parent.
    void Forget() { m_window = nullptr; }
    HWND Window() const { return m_window; }
    // The parent's WM_NOTIFY: true when it came from this list (result: what to return).
    bool Notify(const NMHDR& header, LRESULT& result);

    void Events(ozListEvents* events) override { m_events = events; }
    void Images(const std::vector<int>& bitmapResources) override;
    void Columns(const std::vector<std::string>& captions) override;
    void ColumnWidth(int column, int width) override;
    int ColumnWidth(int column) const override;
    int Width() const override;
    void DeleteAll() override;
    int Append(const std::vector<std::string>& texts, int image, void* data) override;
    void SetRow(int row, const std::vector<std::string>& texts, int image) override;
    void Delete(int row) override;
    void Select(int row) override;
    int Count() const override;
    int Selection() const override;
    std::string Text(int row, int column) const override;
    int Image(int row) const override;
    void* Data(int row) const override;

private:
    static LRESULT CALLBACK Subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                     UINT_PTR id, DWORD_PTR self);
    void LoadImages();

    HWND m_window = nullptr;
    HINSTANCE m_resources = nullptr;
    std::vector<int> m_bitmaps;
    std::vector<std::string> m_captions;
    HIMAGELIST m_images = nullptr;
    ozListEvents* m_events = nullptr;
    // Programmatic changes under way, whose notifications are not events.
    int m_quiet = 0;
};
