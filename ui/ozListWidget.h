// A report-style list as the views drive it: rows of two or more columns, an image beside each
// row's first column, and what the user does to it. The Windows widget is the common list
// control in report mode; the headless one keeps the rows in memory and raises the events from
// the calls that stand for the user's mouse and keys.
//
// Programmatic changes (Append, SetRow, Delete, ...) raise no events, with one exception that
// every list control has: Select raises RowSelected, exactly as the user's click on a row does.
#pragma once

#include <string>
#include <vector>

class ozListEvents {
public:
    virtual ~ozListEvents() = default;
    // The row became the selected one (by the user, or by Select); the user's click on the row
    // selected already reports it again.
    virtual void RowSelected(int row) = 0;
    // The right button was pressed over row (-1: over the empty area below the rows).
    virtual void RightClicked(int row) = 0;
    // A key went down while the list has the focus.
    virtual void KeyPressed(int virtualKey) = 0;
    // The list's client area is now width pixels wide.
    virtual void Resized(int width) = 0;
};

class ozListWidget {
public:
    virtual ~ozListWidget() = default;

    // Where events go (not owned; null: nowhere).
    virtual void Events(ozListEvents* events) = 0;
    // The pictures of the rows: the bitmap resource numbers in image-index order (16 by 16,
    // magenta the mask colour). The headless widget keeps only the numbers.
    virtual void Images(const std::vector<int>& bitmapResources) = 0;
    // The columns' captions, replacing the columns there were.
    virtual void Columns(const std::vector<std::string>& captions) = 0;
    // A column's width in pixels (0 for a column the list does not have).
    virtual void ColumnWidth(int column, int width) = 0;
    virtual int ColumnWidth(int column) const = 0;
    // The width of the list's client area in pixels.
    virtual int Width() const = 0;

    virtual void DeleteAll() = 0;
    // Appends a row: its columns' texts (the first beside the image) and its image; returns the
    // row's number (rows count from 0). data is the view's, not owned.
    virtual int Append(const std::vector<std::string>& texts, int image, void* data) = 0;
    // Replaces the texts and the image of row.
    virtual void SetRow(int row, const std::vector<std::string>& texts, int image) = 0;
    // Deletes row; the rows after it move up by one.
    virtual void Delete(int row) = 0;
    // Selects row and gives it the focus mark (-1: none), raising RowSelected for a row.
    virtual void Select(int row) = 0;

    virtual int Count() const = 0;
    // The selected row, or -1.
    virtual int Selection() const = 0;
    virtual std::string Text(int row, int column) const = 0;
    virtual int Image(int row) const = 0;
    virtual void* Data(int row) const = 0;
};
