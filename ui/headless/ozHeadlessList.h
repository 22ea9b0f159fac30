// A report-style list in memory: the rows as the view put them in, and calls that stand for
// what a user does with mouse and keyboard, raising the events a list control raises. Tests and
// ozadm's view calls drive the value list through it. Its client area is 400 pixels wide until
// a Resize.
#pragma once

#include <string>
#include <vector>

#include "ui/ozListWidget.h"

class ozHeadlessList final : public ozListWidget {
public:
    const std::vector<int>& ImageBitmaps() const { return m_bitmaps; }
    const std::vector<std::string>& ColumnCaptions() const { return m_captions; }
    // The first row whose first column reads text, or -1.
    int Find(const std::string& text) const;

    // The user's actions: SelectByUser clicks row (the event also for the row selected
    // already); RightClick presses the right button over row (-1: the empty area); Key goes to
    // the list as it has the focus; Resize makes the client area width pixels wide.
    void SelectByUser(int row);
    void RightClick(int row);
    void Key(int virtualKey);
    void Resize(int width);

    // ozListWidget
    void Events(ozListEvents* events) override { m_events = events; }
    void Images(const std::vector<int>& bitmapResources) override { m_bitmaps = bitmapResources; }
    void Columns(const std::vector<std::string>& captions) override;
    void ColumnWidth(int column, int width) override;
    int ColumnWidth(int column) const override;
    int Width() const override { return m_width; }
    void DeleteAll() override;
    int Append(const std::vector<std::string>& texts, int image, void* data) override;
    void SetRow(int row, const std::vector<std::string>& texts, int image) override;
    void Delete(int row) override;
    void Select(int row) override;
    int Count() const override { return static_cast<int>(m_rows.size()); }
    int Selection() const override { return m_selection; }
    std::string Text(int row, int column) const override;
    int Image(int row) const override;
    void* Data(int row) const override;

private:
    struct Row {
        std::vector<std::string> texts;
        int image = 0;
        void* data = nullptr;
    };
    bool Has(int row) const { return row >= 0 && row < Count(); }

    ozListEvents* m_events = nullptr;
    std::vector<int> m_bitmaps;
    std::vector<std::string> m_captions;
    std::vector<int> m_widths;
    std::vector<Row> m_rows;
    int m_selection = -1;
    int m_width = 400;
};
