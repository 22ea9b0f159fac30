// ozGridWidget over the common list control (WC_LISTVIEWW) in report mode with owner data: the
// list holds only the number of rows and asks for a cell's text (LVN_GETDISPINFO) when it draws
// it, which the widget answers from the one row it asked the view for last. The list's own row
// selection is not shown; the widget keeps the current cell and the selected range itself and
// paints them through custom draw (the current cell in the highlight colour, the range in a
// light one). A click makes a cell current, a click with Shift spans the range from the current
// cell to the clicked one; Left and Right move between columns, Up and Down (the list's own)
// between rows. A double click, F2 or Enter opens an edit control laid over the current cell;
// Enter or leaving it takes the text, Escape drops it.
//
// The object exists before its window: until Create and after Forget every call does nothing
// but keep the state. The parent's WM_NOTIFY from the list goes to Notify.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

#include "ui/ozGridWidget.h"

class ozWin32Grid final : public ozGridWidget {
public:
    ozWin32Grid() = default;
    ~ozWin32Grid() override;
    ozWin32Grid(const ozWin32Grid&) = delete;
    ozWin32Grid& operator=(const ozWin32Grid&) = delete;

    // Creates the list as a child of parent with control number id. False when the window
    // cannot be created.
    bool Create(HWND parent, int id, HINSTANCE instance);
    // The window went with its parent.
    void Forget();
    HWND Window() const { return m_window; }
    // The open in-place editor's window, or null.
    HWND Editor() const { return m_editor; }
    // The parent's WM_NOTIFY: true when it came from this list (result: what to return).
    bool Notify(const NMHDR& header, LRESULT& result);

    // ozGridWidget
    void Events(ozGridEvents* events) override { m_events = events; }
    void Columns(const std::vector<std::string>& captions, const std::vector<int>& widths) override;
    void RowCount(int rows) override;
    int RowCount() const override { return m_rows; }
    void RowsChanged(int first, int last) override;
    void Current(int row, int column) override;
    int CurrentRow() const override { return m_row; }
    int CurrentColumn() const override { return m_column; }
    void SelectRange(const ozGridRange& range) override;
    ozGridRange Selection() const override { return m_range; }
    void EditCell(int row, int column, std::size_t begin, std::size_t end) override;
    void CommitEdit() override { CloseEditor(true); }

private:
    static LRESULT CALLBACK EditorProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                       UINT_PTR id, DWORD_PTR self);
    bool Inside(int row, int column) const;
    const std::wstring& CellText(int row, int column);
    LRESULT CustomDraw(NMLVCUSTOMDRAW& draw) const;
    void Clicked(const NMITEMACTIVATE& click, bool open);
    // Moves the current cell as the user does, reporting it.
    void MoveByUser(int row, int column);
    void OpenEditor();
    void CloseEditor(bool take);

    HWND m_window = nullptr;
    HWND m_editor = nullptr;
    ozGridEvents* m_events = nullptr;
    std::vector<std::string> m_captions;
    std::vector<int> m_widths;
    int m_rows = 0;
    int m_row = -1;
    int m_column = -1;
    ozGridRange m_range{-1, -1, -1, -1};
    // The row whose texts were asked for last (-1: none), as wide strings for the list.
    int m_cachedRow = -1;
    std::vector<std::wstring> m_cached;
    // The cell the editor stands over.
    int m_editRow = -1;
    int m_editColumn = -1;
    // Programmatic changes under way, whose notifications are not the user's.
    int m_quiet = 0;
};
