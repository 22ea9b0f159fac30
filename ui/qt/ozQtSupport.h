// What every Qt widget of the views needs: text between the model's narrow encoding (UTF-8 on
// Linux) and QString, the views' pictures by their bitmap resource numbers, and the key codes
// the views react to, translated from Qt's.
#pragma once

#include <QtCore/QString>
#include <QtGui/QIcon>
#include <string>
#include <vector>

inline QString ozQtText(const std::string& text)
{
    return QString::fromStdString(text);
}

inline std::string ozQtNarrow(const QString& text)
{
    return text.toStdString();
}

// The picture of a bitmap resource, magenta made transparent; a null icon for a number without
// a picture.
QIcon ozQtBitmap(int resource);
// The pictures of resources, in their order.
std::vector<QIcon> ozQtBitmaps(const std::vector<int>& resources);

// The Windows virtual-key number of a Qt key (Qt::Key), as the views count keys; 0 for a key
// the views never see (a modifier alone, a key without such a number).
int ozQtVirtualKey(int qtKey);

// Counts programmatic changes under way in a widget: while the count is positive, the widget
// reports no event (Qt's signals fire for the program's changes too).
class ozQtQuiet {
public:
    explicit ozQtQuiet(int& count) : m_count(count) { ++m_count; }
    ~ozQtQuiet() { --m_count; }
    ozQtQuiet(const ozQtQuiet&) = delete;
    ozQtQuiet& operator=(const ozQtQuiet&) = delete;

private:
    int& m_count;
};
