// ozListWidget over a QTreeWidget without branches: a report-style list with one column per
// caption and an image beside each row's first column. It forwards the user's row selection (a
// click on the selected row reports it again), the right button (after the row under the
// cursor became the selection, as list controls do), keys and the width of its area.
//
// The object owns its QTreeWidget (Widget()), which the platform puts into a view's window.
#pragma once

#include <memory>
#include <vector>

#include "ui/ozListWidget.h"

class QTreeWidget;
class QWidget;

class ozQtList final : public ozListWidget {
public:
    explicit ozQtList(QWidget* parent = nullptr);
    ~ozQtList() override;
    ozQtList(const ozQtList&) = delete;
    ozQtList& operator=(const ozQtList&) = delete;

    QTreeWidget& Widget() const;

    // ozListWidget
    void Events(ozListEvents* events) override;
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
    class View;
    std::unique_ptr<View> m_view;
};
