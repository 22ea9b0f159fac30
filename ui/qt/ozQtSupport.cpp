#include "ozQtSupport.h"

#include <QtGui/QBitmap>
#include <QtGui/QPixmap>
#include <map>

// The pictures are compiled in (qrc_ozBitmaps.cpp); a static library registers them only
// when asked.
static void InitBitmaps()
{
    static const bool registered = [] {
        Q_INIT_RESOURCE(ozBitmaps);
        return true;
    }();
    (void)registered;
}

QIcon ozQtBitmap(int resource)
{
    InitBitmaps();
    static std::map<int, QIcon> loaded;
    auto found = loaded.find(resource);
    if (found != loaded.end())
        return found->second;
    QPixmap picture(QStringLiteral(":/ozadm/bitmaps/%1.bmp").arg(resource));
    if (!picture.isNull())
        picture.setMask(picture.createMaskFromColor(QColor(255, 0, 255)));
    QIcon icon = picture.isNull() ? QIcon() : QIcon(picture);
    loaded.emplace(resource, icon);
    return icon;
}

std::vector<QIcon> ozQtBitmaps(const std::vector<int>& resources)
{
    std::vector<QIcon> icons;
    icons.reserve(resources.size());
    for (int resource : resources)
        icons.push_back(ozQtBitmap(resource));
    return icons;
}

int ozQtVirtualKey(int qtKey)
{
    // Letters and digits share their numbers with ASCII's capitals and digits.
    if ((qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z) || (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9))
        return qtKey;
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F24)
        return 112 + (qtKey - Qt::Key_F1);
    static const std::map<int, int> keys = {
        {Qt::Key_Backspace, 8}, {Qt::Key_Tab, 9},     {Qt::Key_Backtab, 9}, {Qt::Key_Return, 13},
        {Qt::Key_Enter, 13},    {Qt::Key_Escape, 27}, {Qt::Key_Space, 32},  {Qt::Key_PageUp, 33},
        {Qt::Key_PageDown, 34}, {Qt::Key_End, 35},    {Qt::Key_Home, 36},   {Qt::Key_Left, 37},
        {Qt::Key_Up, 38},       {Qt::Key_Right, 39},  {Qt::Key_Down, 40},   {Qt::Key_Insert, 45},
        {Qt::Key_Delete, 46},   {Qt::Key_Menu, 93},
    };
    auto found = keys.find(qtKey);
    return found != keys.end() ? found->second : 0;
}
