// The desktop program's window, offscreen: its keys switch the views and find in the grid, a
// file opened goes to the recent files, and changes not saved are asked about before the window
// closes, saved where the user chooses when no file is named yet.
#include <gtest/gtest.h>

#include <QtCore/QStandardPaths>
#include <QtGui/QAction>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QTreeWidget>
#include <filesystem>

#include "control/ozHostUI.h"
#include "ozBundledFiles.h"
#include "ozDesktopWindow.h"
#include "ozHostStrings.h"
#include "tests/support/ozRecordingHostUI.h"
#include "tests/support/ozTestFiles.h"
#include "ui/ozViews.h"

namespace {

namespace fs = std::filesystem;

class DesktopWindow : public testing::Test {
protected:
    void SetUp() override
    {
        std::string error;
        ASSERT_TRUE(ozReadHostStrings(ozBundledFile("strings-en.txt"), m_texts, error)) << error;
        m_window = std::make_unique<ozDesktopWindow>(m_texts, &m_ui);
        m_window->Tell = [this](const QString& text) { m_told += text.toStdString() + "\n"; };
        m_window->show();
        QApplication::setActiveWindow(m_window.get());
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_window.get()));
        fs::create_directories(m_folder);
    }
    void TearDown() override { fs::remove_all(m_folder); }

    const QString m_template = QStringLiteral(OZ_SOURCE_DIR "/examples/example.adm");
    const QString m_profile = QStringLiteral(OZ_SOURCE_DIR "/examples/example.ozp");
    const fs::path m_folder = ozTestFilePath("desktop-window");
    std::map<unsigned short, std::string> m_texts;
    ozRecordingHostUI m_ui;
    std::unique_ptr<ozDesktopWindow> m_window;
    std::string m_told;
};

TEST_F(DesktopWindow, KeysSwitchViewsAndFindAndOpenedFilesAreRecent)
{
    ASSERT_TRUE(m_window->Open(m_template)) << m_told;
    EXPECT_EQ(m_window->RecentFiles().front(), m_template);
    EXPECT_EQ(m_window->windowTitle(), QStringLiteral("example.adm[*] - ozADM policy editor"));
    ozADMWidget& widget = m_window->Widget();
    const struct {
        Qt::Key key;
        int displayMode;
    } keys[] = {{Qt::Key_2, 1}, {Qt::Key_3, 2}, {Qt::Key_1, 0}, {Qt::Key_F, 2}};
    for (const auto& key : keys) {
        QTest::keyClick(m_window.get(), key.key, Qt::ControlModifier);
        EXPECT_EQ(widget.DisplayMode(), key.displayMode) << key.key;
        EXPECT_TRUE(widget.Views().IsVisible(key.displayMode)) << key.key;
    }
    // The View menu's check marks are the widget's properties.
    for (QAction* action : m_window->findChildren<QAction*>())
        if (action->text() == QStringLiteral("&User configuration"))
            action->trigger();
    EXPECT_FALSE(widget.ShowUser());
    EXPECT_FALSE(m_window->Open(QStringLiteral("notes.txt")));
    EXPECT_NE(m_told.find("notes.txt\" is neither a template"), std::string::npos) << m_told;
}

TEST_F(DesktopWindow, ChangesAreAskedAboutBeforeClosingAndSavedWhereChosen)
{
    ASSERT_TRUE(m_window->Open(m_template)) << m_told;
    ASSERT_TRUE(m_window->Widget().LoadOZReg(m_profile));  // marks the templates modified
    EXPECT_TRUE(m_window->isWindowModified());
    const QString chosen = QString::fromStdString((m_folder / "chosen.ozp").string());
    int asked = 0;
    m_window->ChooseSaveFile = [&](const QString&) { return chosen; };
    for (int answer : {QMessageBox::Cancel, QMessageBox::Save}) {
        m_window->AskToSave = [&] { return ++asked, answer; };
        EXPECT_EQ(m_window->close(), answer == QMessageBox::Save) << answer;
    }
    EXPECT_EQ(asked, 2);
    EXPECT_TRUE(fs::exists(chosen.toStdString())) << m_told;
    EXPECT_FALSE(m_window->isWindowModified());

    // Ctrl+S saves to the file open from now on, without asking for one.
    m_window->show();
    QApplication::setActiveWindow(m_window.get());
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_window.get()));
    m_window->ChooseSaveFile = [&](const QString&) { return ADD_FAILURE(), QString(); };
    fs::remove(chosen.toStdString());
    QTest::keyClick(m_window.get(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(fs::exists(chosen.toStdString())) << m_told;
}

// Del is the view's key: pressed in the registry view's key tree it reaches the view (which asks
// before deleting the key), and the Edit menu's Delete sends it to the view that had the focus.
TEST_F(DesktopWindow, DelReachesTheViewThatHasTheFocus)
{
    ASSERT_TRUE(m_window->Open(m_template) && m_window->Open(m_profile)) << m_told;
    ASSERT_TRUE(m_window->ShowView(1));
    QTreeWidget* keys = nullptr;
    for (QTreeWidget* tree : m_window->findChildren<QTreeWidget*>())
        if (tree->isVisible() && tree->topLevelItemCount() > 0)
            keys = tree;
    ASSERT_NE(keys, nullptr);
    QTreeWidgetItem* key = keys->topLevelItem(0);
    for (int depth = 0; depth < 2 && key != nullptr; ++depth) {
        keys->expandItem(key);
        key = key->child(0);
    }
    ASSERT_NE(key, nullptr);
    keys->setCurrentItem(key);
    keys->setFocus();
    const std::string question = m_texts[58];
    QTest::keyClick(keys, Qt::Key_Delete);
    ASSERT_FALSE(m_ui.messages.empty());
    EXPECT_NE(m_ui.messages.back().text.find(question), std::string::npos)
        << m_ui.messages.back().text;

    m_ui.messages.clear();
    for (QMenu* menu : m_window->findChildren<QMenu*>())
        if (menu->title() == QStringLiteral("&Edit"))
            emit menu->aboutToShow();
    for (QAction* action : m_window->findChildren<QAction*>())
        if (action->text() == QStringLiteral("&Delete"))
            action->trigger();
    ASSERT_FALSE(m_ui.messages.empty());
    EXPECT_NE(m_ui.messages.back().text.find(question), std::string::npos)
        << m_ui.messages.back().text;
}

}  // namespace

// The application lives while the tests run and goes before Qt's own objects at exit.
int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    // Offscreen also when the build lists the tests.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    return RUN_ALL_TESTS();
}
