// The views on the Qt widgets, driven by mouse and keyboard events offscreen: the behaviour
// itself is tested on the headless widgets; these cases prove that the Qt widgets forward the
// user's actions to the views and show what the views tell them, with the model checked after
// each step.
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeWidget>
#include <memory>
#include <string>

#include "control/CADMCtrl.h"
#include "core/adm/ozADMPolicy.h"
#include "core/registry/ozSubKey.h"
#include "tests/support/ozRecordingHostUI.h"
#include "ui/ozImages.h"
#include "ui/ozPolicyPropertiesDialog.h"
#include "ui/ozSearchSheet.h"
#include "ui/ozViews.h"
#include "ui/qt/ozADMWidget.h"
#include "ui/qt/ozQtPlatform.h"

namespace {

const char* const Proxy = "MACHINE\\Network\\Proxy server";
const char* const Wallpaper = "USER\\Desktop\\Wallpaper";

// The item at path, the items' texts joined by '\'.
ozTreeItem Find(const ozQtTree& tree, const std::string& path)
{
    ozTreeItem item = tree.Root();
    std::size_t begin = 0;
    while (item != ozNoItem) {
        const std::size_t end = path.find('\\', begin);
        const std::string name = path.substr(begin, end - begin);
        while (item != ozNoItem && tree.Text(item) != name)
            item = tree.NextSibling(item);
        if (item == ozNoItem || end == std::string::npos)
            return item;
        begin = end + 1;
        item = tree.FirstChild(item);
    }
    return ozNoItem;
}

QPoint IconPoint(ozQtTree& tree, ozTreeItem item)
{
    tree.EnsureVisible(item);
    return tree.IconRect(item).center();
}

QPoint LabelPoint(ozQtTree& tree, ozTreeItem item)
{
    tree.EnsureVisible(item);
    const QRect icon = tree.IconRect(item);
    return QPoint(icon.right() + 12, icon.center().y());
}

// The entries of a menu as "caption:1" (enabled) or "caption:0", submenus in brackets.
QString Entries(const QMenu& menu)
{
    QStringList entries;
    for (QAction* action : menu.actions()) {
        if (action->isSeparator())
            continue;
        QString entry = action->text() + QLatin1Char(':') + QString::number(action->isEnabled());
        if (action->menu() != nullptr)
            entry += QLatin1Char('[') + Entries(*action->menu()) + QLatin1Char(']');
        entries.append(entry);
    }
    return entries.join(QLatin1Char(' '));
}

QAction* Entry(const QMenu& menu, const QString& caption)
{
    for (QAction* action : menu.actions())
        if (action->text() == caption)
            return action;
    return nullptr;
}

// Replaces the text of a line edit as the user does.
void Type(QWidget* widget, const QString& text)
{
    auto* edit = qobject_cast<QLineEdit*>(widget);
    QVERIFY(edit != nullptr);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Backspace);
    QTest::keyClicks(edit, text);
}

void Click(QWidget* widget)
{
    QVERIFY(widget != nullptr);
    QTest::mouseClick(widget, Qt::LeftButton);
}

}  // namespace

class ozQtWidgetsTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        ui = std::make_unique<ozRecordingHostUI>();
        widget = std::make_unique<ozADMWidget>(*ui);
        for (unsigned short text : {18, 58, 66, 67, 68, 69, 70, 71, 72, 73, 82, 83, 171})
            widget->AddString(text, QStringLiteral("t%1").arg(text));
        widget->AddString(HostMessagePartValueRefused, QStringLiteral("%s: %s"));
        widget->AddString(190, QStringLiteral("190 %s %s"));
        widget->ozImpExLibrary(QStringLiteral(OZ_OZP_LIBRARY));
        widget->DisplayMode(DisplayPolicies);
        QVERIFY(widget->SetADM(QStringLiteral(OZ_SOURCE_DIR "/tests/templates/every-part.adm")));
        widget->resize(900, 600);
        widget->show();
        QVERIFY(QTest::qWaitForWindowExposed(widget.get()));
    }
    void cleanup()
    {
        widget.reset();
        ui.reset();
    }

    void clicksOnAPolicysIconCycleItsState()
    {
        ozQtTree& tree = Platform().Tree();
        const ozTreeItem proxy = Find(tree, Proxy);
        QSignalSpy status(widget.get(), &ozADMWidget::statusChange);
        QTest::mouseClick(tree.Widget().viewport(), Qt::LeftButton, {}, LabelPoint(tree, proxy));
        QCOMPARE(tree.Selection(), proxy);
        for (auto [state, image] :
             {std::pair{"+ ", PolicyImageEnabled}, std::pair{"- ", PolicyImageDisabled},
              std::pair{"", PolicyImageNotConfigured}}) {
            QTest::mouseClick(tree.Widget().viewport(), Qt::LeftButton, {}, IconPoint(tree, proxy));
            const QStringList configured = widget->ConfiguredPolicies().value_or(QStringList());
            QCOMPARE(configured.join(QString()), *state ? state + QString(Proxy) : QString());
            QCOMPARE(tree.Image(proxy), image);
        }
        QVERIFY(widget->ShouldSave());
        QTRY_COMPARE(status.count(), 1);
    }

    void thePanelsEditorsRefuseABadValueAndKeepTheSelection()
    {
        ozQtTree& tree = Platform().Tree();
        const ozTreeItem proxy = Find(tree, Proxy);
        QTest::mouseClick(tree.Widget().viewport(), Qt::LeftButton, {}, LabelPoint(tree, proxy));
        QTest::mouseClick(tree.Widget().viewport(), Qt::LeftButton, {}, IconPoint(tree, proxy));
        QWidget* port = nullptr;
        for (ozQtFormControls::Control& control : Platform().Panel().Controls().Controls())
            if (control.spec.caption == "Port")
                port = control.widget;
        QVERIFY(port != nullptr && port->isEnabled() && port->isVisible());
        QCOMPARE(qobject_cast<QLineEdit*>(port)->text(), QStringLiteral("8080"));
        Type(port, QStringLiteral("70000"));
        const ozTreeItem wallpaper = Find(tree, Wallpaper);
        QTest::mouseClick(tree.Widget().viewport(), Qt::LeftButton, {},
                          LabelPoint(tree, wallpaper));
        QCOMPARE(tree.Selection(), proxy);
        QVERIFY(!ui->messages.empty());
        QVERIFY(ui->messages.back().text.find("Port") != std::string::npos);
        Type(port, QStringLiteral("8081"));
        QTest::mouseClick(tree.Widget().viewport(), Qt::LeftButton, {},
                          LabelPoint(tree, wallpaper));
        QCOMPARE(tree.Selection(), wallpaper);
        QVERIFY(widget->SaveSelState());
        QVERIFY(widget->PolicyConfigures(Proxy)
                    .value_or(QStringList())
                    .join(QLatin1Char('\n'))
                    .contains(QStringLiteral("8081")));
    }

    void theTemplateMenuShowsItsEntryStatesAndItsDialogTakesTheFields()
    {
        widget->WithADMEdit(true);
        ozQtTree& tree = Platform().Tree();
        const ozTreeItem proxy = Find(tree, Proxy);
        QTest::mouseClick(tree.Widget().viewport(), Qt::RightButton, {}, LabelPoint(tree, proxy));
        QMenu* menu = Platform().OpenMenu();
        QVERIFY(menu != nullptr);
        QCOMPARE(tree.Selection(), ozNoItem);  // the right button selects nothing
        const QString entries = Entries(*menu);
        QVERIFY2(entries.startsWith(QStringLiteral("Delete:1 New:0[Category:0 Policy:0] "
                                                   "Policy Properties:1 Control Properties:1")),
                 qPrintable(entries));

        using D = ozPolicyPropertiesDialog;
        Entry(*menu, QStringLiteral("Policy Properties"))->trigger();
        ozQtDialogWindow* dialog = Platform().TopDialog();
        QVERIFY(dialog != nullptr && dialog->isModal());
        Type(dialog->ControlWidget(D::KeyEdit), QStringLiteral("Software\\\\Pol"));
        Click(dialog->ControlWidget(ozDialogOK));
        QCOMPARE(Platform().TopDialog(), dialog);  // refused, naming the field
        QVERIFY(ui->messages.back().text.starts_with("190 Key Software\\\\Pol"));
        Type(dialog->ControlWidget(D::KeyEdit), QStringLiteral("Software\\Pol"));
        Type(dialog->ControlWidget(D::ValueNameEdit), QStringLiteral("Proxied"));
        Click(dialog->ControlWidget(ozDialogOK));
        QCOMPARE(Platform().TopDialog(), nullptr);
        auto* policy = static_cast<ozADMPolicy*>(tree.Data(proxy));
        QCOMPARE(QString::fromStdString(policy->RegKey()->KeyPath()),
                 QStringLiteral("Software\\Pol"));
        QCOMPARE(QString::fromLatin1(policy->Valuename()), QStringLiteral("Proxied"));
        QVERIFY(widget->ShouldSave());
    }

    void theKeyMenuAddsANewKeyNamedInPlace()
    {
        widget->DisplayMode(DisplayRegistry);
        widget->Refresh();
        ozQtTree& keys = Platform().RegistryTree();
        const ozTreeItem user = Find(keys, "t82\\HKEY_CURRENT_USER");
        QVERIFY(user != ozNoItem);
        QTest::mouseClick(keys.Widget().viewport(), Qt::LeftButton, {}, LabelPoint(keys, user));
        QTest::mouseClick(keys.Widget().viewport(), Qt::RightButton, {}, LabelPoint(keys, user));
        QMenu* menu = Platform().OpenMenu();
        QVERIFY(menu != nullptr);
        QVERIFY2(Entries(*menu).startsWith(QStringLiteral("HKEY_CURRENT_USER:1 &Neu:1 &Löschen:0")),
                 qPrintable(Entries(*menu)));
        Entry(*menu, QStringLiteral("&Neu"))->trigger();
        const ozTreeItem added = keys.Selection();
        QCOMPARE(keys.Text(added), std::string("t18 1"));
        QCOMPARE(keys.Parent(added), user);
        QVERIFY(widget->ShouldSave());
        // F2 names it in place; the widget reports the key first.
        QSignalSpy keyDown(widget.get(), &ozADMWidget::keyDown);
        QTest::keyClick(&keys.Widget(), Qt::Key_F2);
        QCOMPARE(keyDown.count(), 1);
        QCOMPARE(keyDown.at(0).at(0).toInt(), int(Qt::Key_F2));
        auto* editor = keys.Widget().findChild<QLineEdit*>();
        QVERIFY(editor != nullptr);
        QTest::keyClicks(editor, QStringLiteral("Proxies"));
        QTest::keyClick(editor, Qt::Key_Return);
        // The delegate ends the edit through the event loop.
        QTRY_COMPARE(keys.Text(added), std::string("Proxies"));
        QVERIFY(Find(keys, "t82\\HKEY_CURRENT_USER\\Proxies") != ozNoItem);
    }

    void aSearchInTheGridMovesToTheCellFound()
    {
        ozQtTree& tree = Platform().Tree();
        QTest::mouseClick(tree.Widget().viewport(), Qt::LeftButton, {},
                          IconPoint(tree, Find(tree, Proxy)));
        QVERIFY(widget->SaveSelState());
        widget->DisplayMode(DisplayValueGrid);
        widget->Refresh();
        ozQtGrid& grid = Platform().RegistryGrid();
        QVERIFY(grid.RowCount() > 0);
        QVERIFY(widget->ozSRShowSearch());
        auto* window = dynamic_cast<ozQtDialogWindow*>(
            Platform().ViewWindow(DisplayValueGrid).findChild<QDialog*>());
        QVERIFY(window != nullptr && window->isVisible());
        QWidget* findNext = window->ControlWidget(ozSearchSheet::FindNextButton);
        QVERIFY(!findNext->isEnabled());
        Type(window->ControlWidget(ozSearchSheet::SearchEdit), QStringLiteral("example.com"));
        QVERIFY(findNext->isEnabled());
        Click(findNext);
        const int row = grid.CurrentRow(), column = grid.CurrentColumn();
        QVERIFY(row >= 0);
        const QModelIndex cell = grid.Widget().model()->index(row, column);
        QVERIFY(cell.data().toString().contains(QStringLiteral("example.com")));
        QVERIFY(grid.Widget().selectionModel()->isSelected(cell));
        // F2 opens the editor over the cell found; Enter stores what was typed.
        window->hide();
        QTest::keyClick(&grid.Widget(), Qt::Key_F2);
        QVERIFY(grid.Editor() != nullptr);
        QTest::keyClicks(grid.Editor(), QStringLiteral("proxy.example.org"));
        QTest::keyClick(grid.Editor(), Qt::Key_Return);
        QCOMPARE(grid.Editor(), nullptr);
        QCOMPARE(cell.data().toString(), QStringLiteral("proxy.example.org"));
    }

private:
    ozQtPlatform& Platform() { return widget->Platform(); }

    std::unique_ptr<ozRecordingHostUI> ui;
    std::unique_ptr<ozADMWidget> widget;
};

QTEST_MAIN(ozQtWidgetsTest)
#include "ozQtWidgetsTest.moc"
