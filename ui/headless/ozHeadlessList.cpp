#include "ozHeadlessList.h"

int ozHeadlessList::Find(const std::string& text) const
{
    for (int row = 0; row < Count(); ++row)
        if (Text(row, 0) == text)
            return row;
    return -1;
}

void ozHeadlessList::SelectByUser(int row)
{
    if (!Has(row))
        return;
    m_selection = row;
    if (m_events != nullptr)
        m_events->RowSelected(row);
}

void ozHeadlessList::RightClick(int row)
{
    if (m_events != nullptr)
        m_events->RightClicked(Has(row) ? row : -1);
}

void ozHeadlessList::Key(int virtualKey)
{
    if (m_events != nullptr)
        m_events->KeyPressed(virtualKey);
}

void ozHeadlessList::Resize(int width)
{
    m_width = width;
    if (m_events != nullptr)
        m_events->Resized(width);
}

void ozHeadlessList::Columns(const std::vector<std::string>& captions)
{
    m_captions = captions;
    m_widths.assign(captions.size(), 0);
}

void ozHeadlessList::ColumnWidth(int column, int width)
{
    if (column >= 0 && column < static_cast<int>(m_widths.size()))
        m_widths[static_cast<size_t>(column)] = width;
}

int ozHeadlessList::ColumnWidth(int column) const
{
    return column >= 0 && column < static_cast<int>(m_widths.size())
               ? m_widths[static_cast<size_t>(column)]
               : 0;
}

void ozHeadlessList::DeleteAll()
{
    m_rows.clear();
    m_selection = -1;
}

int ozHeadlessList::Append(const std::vector<std::string>& texts, int image, void* data)
{
    m_rows.push_back({texts, image, data});
    return Count() - 1;
}

void ozHeadlessList::SetRow(int row, const std::vector<std::string>& texts, int image)
{
    if (!Has(row))
        return;
    m_rows[static_cast<size_t>(row)].texts = texts;
    m_rows[static_cast<size_t>(row)].image = image;
}

void ozHeadlessList::Delete(int row)
{
    if (!Has(row))
        return;
    m_rows.erase(m_rows.begin() + row);
    if (m_selection == row)
        m_selection = -1;
    else if (m_selection > row)
        --m_selection;
}

void ozHeadlessList::Select(int row)
{
    if (!Has(row)) {
        m_selection = -1;
        return;
    }
    if (m_selection == row)
        return;
    m_selection = row;
    if (m_events != nullptr)
        m_events->RowSelected(row);
}

std::string ozHeadlessList::Text(int row, int column) const
{
    if (!Has(row) || column < 0)
        return {};
    const std::vector<std::string>& texts = m_rows[static_cast<size_t>(row)].texts;
    return column < static_cast<int>(texts.size()) ? texts[static_cast<size_t>(column)]
                                                   : std::string();
}

int ozHeadlessList::Image(int row) const
{
    return Has(row) ? m_rows[static_cast<size_t>(row)].image : 0;
}

void* ozHeadlessList::Data(int row) const
{
    return Has(row) ? m_rows[static_cast<size_t>(row)].data : nullptr;
}
