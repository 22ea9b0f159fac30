// Takes the pictures of ozadm-gui for the documentation (scripts/linux-screenshots.sh runs it
// under Xvfb on the xcb platform): the program's window on a template and a profile, in the
// policy view with a configured policy selected, with the list box dialog of a list part open,
// in the registry view with a key and a value selected, and in the grid with the search sheet
// over it, a match found. Each picture is the
// whole screen, so that dialogs and the search sheet are in it.
//
//   ozadm-gui-screenshots OUTPUT_FOLDER TEMPLATE PROFILE [POLICY [KEY]]
//
// POLICY is the path of the policy to select (default: the first enabled one), KEY the name of
// the registry key to select (default: the last part of the policy's first registry entry).
#include <QtCore/QTimer>
#include <QtGui/QKeyEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>
#include <functional>
#include <iostream>

#include "ozBundledFiles.h"
#include "ozDesktopWindow.h"
#include "ozHostStrings.h"

namespace {

void Settle()
{
    for (int round = 0; round < 5; ++round)
        QApplication::processEvents();
}

bool Picture(const QString& folder, const QString& name)
{
    Settle();
    const QString file = folder + "/linux-" + name + ".png";
    if (QGuiApplication::primaryScreen()->grabWindow(0).save(file))
        return true;
    std::cerr << "ozadm-gui-screenshots: " << file.toStdString() << " cannot be written\n";
    return false;
}

// The view's tree: of the visible trees of the window (a value list may be one too), the one
// with the most items at its top level.
QTreeWidget* VisibleTree(QWidget& window)
{
    QTreeWidget* widest = nullptr;
    for (QTreeWidget* tree : window.findChildren<QTreeWidget*>())
        if (tree->isVisible() &&
            (widest == nullptr || tree->topLevelItemCount() > widest->topLevelItemCount()))
            widest = tree;
    return widest;
}

// The item at path below `parent` (null: the top level, where any item may stand for the
// path's first part), expanding the items on the way.
QTreeWidgetItem* Find(QTreeWidget& tree, QTreeWidgetItem* parent, const QStringList& path)
{
    const int count = parent == nullptr ? tree.topLevelItemCount() : parent->childCount();
    for (int i = 0; i < count; ++i) {
        QTreeWidgetItem* item = parent == nullptr ? tree.topLevelItem(i) : parent->child(i);
        if (parent != nullptr && item->text(0) != path.front())
            continue;
        if (path.size() == 1)
            return item;
        tree.expandItem(item);
        Settle();
        if (QTreeWidgetItem* found = Find(tree, item, path.mid(1)))
            return found;
        if (parent == nullptr)
            tree.collapseItem(item);
    }
    return nullptr;
}

// The first item named `name` below parent, depth first, expanding the items on the way and
// collapsing again those it is not below.
QTreeWidgetItem* FindNamed(QTreeWidget& tree, QTreeWidgetItem* parent, const QString& name)
{
    const int count = parent == nullptr ? tree.topLevelItemCount() : parent->childCount();
    for (int i = 0; i < count; ++i) {
        QTreeWidgetItem* item = parent == nullptr ? tree.topLevelItem(i) : parent->child(i);
        if (item->text(0) == name)
            return item;
        const bool wasExpanded = item->isExpanded();
        tree.expandItem(item);
        Settle();
        if (QTreeWidgetItem* found = FindNamed(tree, item, name))
            return found;
        if (!wasExpanded)
            tree.collapseItem(item);
    }
    return nullptr;
}

// Selects the item at path (the policy tree) or, for a path of one part, the first item of
// that name (the registry view's key tree).
bool Select(QWidget& window, const QStringList& path)
{
    QTreeWidget* tree = VisibleTree(window);
    QTreeWidgetItem* item = tree == nullptr    ? nullptr
                            : path.size() == 1 ? FindNamed(*tree, nullptr, path.front())
                                               : Find(*tree, nullptr, path);
    if (item == nullptr) {
        std::cerr << "ozadm-gui-screenshots: " << path.join('\\').toStdString()
                  << " is not in the tree\n";
        return false;
    }
    tree->setCurrentItem(item);
    tree->scrollToItem(item);
    tree->setFocus();
    return true;
}

template <typename Widget>
Widget* VisibleChild(const QString& text = {})
{
    for (QWidget* top : QApplication::topLevelWidgets())
        for (Widget* child : top->findChildren<Widget*>())
            if (child->isVisible() && (text.isEmpty() || child->property("text") == text))
                return child;
    return nullptr;
}

// Types text into the widget as the user does, key by key.
void Type(QWidget& widget, const QString& text)
{
    widget.setFocus();
    for (QChar c : text) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
        QApplication::sendEvent(&widget, &press);
        QKeyEvent release(QEvent::KeyRelease, 0, Qt::NoModifier, QString(c));
        QApplication::sendEvent(&widget, &release);
    }
}

// Pictures the dialog that `open` opens, then cancels it, whether it runs modally (the picture is
// taken from within its loop) or not.
bool PictureOfDialog(const QString& folder, const QString& name, const std::function<void()>& open)
{
    bool done = false, pictured = false;
    QTimer::singleShot(500, [&] {
        pictured = Picture(folder, name);
        for (QWidget* top : QApplication::topLevelWidgets())
            if (auto* dialog = qobject_cast<QDialog*>(top);
                dialog != nullptr && dialog->isVisible())
                dialog->reject();
        done = true;
    });
    open();
    while (!done)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return pictured;
}

}  // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QStringList args = QApplication::arguments().mid(1);
    if (args.size() < 3 || args.size() > 5) {
        std::cerr << "usage: ozadm-gui-screenshots OUTPUT_FOLDER TEMPLATE PROFILE [POLICY [KEY]]\n";
        return 2;
    }
    std::map<unsigned short, std::string> texts;
    std::string error;
    if (!ozReadHostStrings(ozBundledFile("strings-en.txt"), texts, error)) {
        std::cerr << error << '\n';
        return 1;
    }
    ozDesktopWindow window(texts);
    window.move(0, 0);
    window.resize(1180, 760);
    window.show();
    if (!window.Open(args[1]) || !window.Open(args[2]) || !window.ShowView(0))
        return 1;
    ozADMWidget& widget = window.Widget();

    // A configured policy: the parts panel shows its settings.
    const QStringList configured = widget.ConfiguredPolicies().value_or(QStringList());
    QString policy = args.value(3);
    for (const QString& entry : configured)
        if (policy.isEmpty() && entry.startsWith("+ "))
            policy = entry.mid(2);
    bool taken =
        !policy.isEmpty() && Select(window, policy.split('\\')) && Picture(args[0], "policy-view");

    // A list part's entries in the list box dialog, from the first enabled policy that has one.
    bool listShown = false;
    for (const QString& entry : configured) {
        if (!taken || listShown || !entry.startsWith("+ ") ||
            !Select(window, entry.mid(2).split('\\')))
            continue;
        Settle();
        if (QPushButton* show = VisibleChild<QPushButton>(QStringLiteral("Show...")))
            listShown = PictureOfDialog(args[0], "dialog", [show] { show->click(); });
    }
    taken = taken && listShown;

    // The registry view on the policy's key, a value selected: its editor below the list.
    Select(window, policy.split('\\'));
    taken = taken && window.ShowView(1);
    QString key = args.value(4);
    if (key.isEmpty()) {
        // "KEY","VALUE","TYPE","DATA": the key's last part.
        const QStringList entries = widget.PolicyConfigures(policy).value_or(QStringList());
        if (!entries.isEmpty())
            key = entries.front().section('"', 1, 1).section('\\', -1);
    }
    QTreeWidget* keys = VisibleTree(window);
    taken = taken && Select(window, {key});
    Settle();
    for (QTreeWidget* list : window.findChildren<QTreeWidget*>())
        if (taken && list->isVisible() && list != keys && list->topLevelItemCount() > 2) {
            list->setFocus();
            list->setCurrentItem(list->topLevelItem(2));
        }
    taken = taken && Picture(args[0], "registry-view");

    // The grid with the search sheet, a match found.
    taken = taken && window.ShowView(2) && widget.ozSRShowSearch();
    if (taken) {
        Settle();
        if (auto* find = VisibleChild<QLineEdit>())
            Type(*find, QStringLiteral("Encrypted"));
        Settle();
        if (auto* next = VisibleChild<QPushButton>(QString::fromStdString(texts[114])))
            next->click();
    }
    taken = taken && Picture(args[0], "value-grid");
    widget.ozSRHide();
    return taken ? 0 : 1;
}
