#include "ozDesktopWindow.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSettings>
#include <QtGui/QAction>
#include <QtGui/QActionGroup>
#include <QtGui/QCloseEvent>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QStatusBar>
#include <sstream>

#include "control/CADMCtrl.h"
#include "control/ozApplication.h"
#include "control/ozMessageFormat.h"
#include "ozBundledFiles.h"
#include "ui/ozViews.h"

namespace {

// The window's own texts in the host string table.
enum : unsigned short {
    TextTitle = 2000,
    TextFileMenu = 2001,
    TextOpenTemplate = 2002,
    TextOpenProfile = 2003,
    TextOpenFolder = 2004,
    TextRecentMenu = 2005,
    TextSave = 2006,
    TextSaveAs = 2007,
    TextWriteTemplate = 2008,
    TextClose = 2009,
    TextQuit = 2010,
    TextEditMenu = 2011,
    TextFind = 2012,
    TextReplace = 2013,
    TextInsert = 2014,
    TextDelete = 2015,
    TextRename = 2016,
    TextViewMenu = 2017,
    TextPolicies = 2018,
    TextRegistry = 2019,
    TextGrid = 2020,
    TextUser = 2021,
    TextMachine = 2022,
    TextTemplateEditing = 2023,
    TextLegend = 2024,
    TextHelpMenu = 2025,
    TextAbout = 2026,
    TextTemplateFiles = 2027,
    TextProfileFiles = 2028,
    TextAllFiles = 2029,
    TextSaveQuestion = 2030,
    TextUnknownKind = 2031,
    TextNotWritten = 2032,
    TextSaved = 2033,
    TextClearRecent = 2034,
};

constexpr int kRecentCount = 8;
const char* const kRecentKey = "recentFiles";

// The control's texts go to the process's message list before the widget's views take their
// first texts from it.
const std::map<unsigned short, std::string>& AddControlTexts(
    const std::map<unsigned short, std::string>& texts)
{
    for (const auto& [number, text] : texts)
        if (number < TextTitle)
            ozApplication::Instance().AddMessage(number, text.c_str());
    return texts;
}

std::string Local(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

}  // namespace

ozDesktopWindow::ozDesktopWindow(const std::map<unsigned short, std::string>& texts, ozHostUI* ui)
    : m_texts(AddControlTexts(texts)),
      m_widget(ui != nullptr ? new ozADMWidget(*ui, this) : new ozADMWidget(this)),
      m_document(m_widget->Control())
{
    Tell = [this](const QString& text) { QMessageBox::warning(this, Text(TextTitle), text); };
    AskToSave = [this] {
        return QMessageBox::question(this, Text(TextTitle), Text(TextSaveQuestion),
                                     QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel,
                                     QMessageBox::Save);
    };
    ChooseSaveFile = [this](const QString& filters) {
        return QFileDialog::getSaveFileName(this, Text(TextSaveAs).remove('&'), QString(), filters);
    };
    // The widget looks for its grammar where it was built to be installed; an installed tree
    // that was moved has it beside the program.
    const std::string grammar = ozBundledFile("adm.bnf");
    if (ozADMWidget::BundledFile(QStringLiteral("adm.bnf")) != QString::fromStdString(grammar))
        m_widget->SetEBNF(QString::fromStdString(grammar));
    // The program starts in the policy view (the control's own default is the registry view).
    m_widget->DisplayMode(DisplayPolicies);
    setCentralWidget(m_widget);
    BuildMenus();
    connect(m_widget, &ozADMWidget::statusChange, this, [this] { UpdateState(); });
    resize(1100, 720);
    UpdateState();
}

ozDesktopWindow::~ozDesktopWindow() = default;

QString ozDesktopWindow::Text(unsigned short number) const
{
    auto found = m_texts.find(number);
    return found == m_texts.end() ? QString() : QString::fromStdString(found->second);
}

QAction* ozDesktopWindow::AddAction(QMenu* menu, unsigned short text, const QKeySequence& keys,
                                    std::function<void()> triggered)
{
    QAction* action = menu->addAction(Text(text));
    action->setShortcut(keys);
    if (triggered)
        connect(action, &QAction::triggered, this,
                [triggered = std::move(triggered)] { triggered(); });
    return action;
}

void ozDesktopWindow::BuildMenus()
{
    QMenu* file = menuBar()->addMenu(Text(TextFileMenu));
    AddAction(file, TextOpenTemplate, QKeySequence::Open,
              [this] { OpenWithDialog(TextTemplateFiles, false); });
    AddAction(file, TextOpenProfile, {}, [this] { OpenWithDialog(TextProfileFiles, false); });
    AddAction(file, TextOpenFolder, {}, [this] { OpenWithDialog(0, true); });
    m_recentMenu = file->addMenu(Text(TextRecentMenu));
    connect(m_recentMenu, &QMenu::aboutToShow, this, [this] { FillRecentMenu(); });
    file->addSeparator();
    m_save = AddAction(file, TextSave, QKeySequence::Save, [this] { Save(); });
    AddAction(file, TextSaveAs, QKeySequence::SaveAs, [this] { SaveAs(); });
    AddAction(file, TextWriteTemplate, {}, [this] { WriteTemplate(); });
    file->addSeparator();
    AddAction(file, TextClose, QKeySequence::Close, [this] {
        if (MayDropChanges()) {
            m_document.Close();
            UpdateState();
        }
    });
    AddAction(file, TextQuit, QKeySequence::Quit, [this] { close(); });

    // Insert, Delete and F2 belong to the view that has the focus (a tree, a list, the grid):
    // the menu names them, but takes them only while it is open itself.
    QMenu* edit = menuBar()->addMenu(Text(TextEditMenu));
    connect(edit, &QMenu::aboutToShow, this,
            [this] { m_focusBeforeMenu = QApplication::focusWidget(); });
    AddAction(edit, TextFind, QKeySequence::Find, [this] {
        if (ShowView(DisplayValueGrid))
            m_widget->ozSRShowSearch();
    });
    AddAction(edit, TextReplace, QKeySequence(Qt::CTRL | Qt::Key_H), [this] {
        if (ShowView(DisplayValueGrid))
            m_widget->ozSRShowReplace();
    });
    edit->addSeparator();
    const struct {
        unsigned short text;
        int key;
    } viewKeys[] = {
        {TextInsert, Qt::Key_Insert}, {TextDelete, Qt::Key_Delete}, {TextRename, Qt::Key_F2}};
    for (const auto& viewKey : viewKeys) {
        QAction* action = AddAction(edit, viewKey.text, QKeySequence(viewKey.key),
                                    [this, key = viewKey.key] { SendKeyToView(key); });
        action->setShortcutContext(Qt::WidgetShortcut);
    }

    QMenu* view = menuBar()->addMenu(Text(TextViewMenu));
    m_views = new QActionGroup(this);
    const unsigned short viewTexts[] = {TextPolicies, TextRegistry, TextGrid};
    for (int mode = 0; mode < 3; ++mode) {
        QAction* action =
            AddAction(view, viewTexts[mode], QKeySequence(Qt::CTRL | (Qt::Key_1 + mode)),
                      [this, mode] { ShowView(mode); });
        action->setCheckable(true);
        action->setData(mode);
        m_views->addAction(action);
    }
    view->addSeparator();
    auto toggle = [&](unsigned short text, auto apply) {
        QAction* action = AddAction(view, text, {}, {});
        action->setCheckable(true);
        connect(action, &QAction::toggled, this, [this, apply](bool on) {
            apply(on);
            m_widget->Refresh();
            UpdateState();
        });
        return action;
    };
    m_showUser = toggle(TextUser, [this](bool on) { m_widget->ShowUser(on); });
    m_showMachine = toggle(TextMachine, [this](bool on) { m_widget->ShowMachine(on); });
    m_templateEditing = toggle(TextTemplateEditing, [this](bool on) { m_widget->WithADMEdit(on); });
    m_showUser->setChecked(m_widget->ShowUser());
    m_showMachine->setChecked(m_widget->ShowMachine());
    view->addSeparator();
    AddAction(view, TextLegend, {}, [this] { m_widget->ShowLegend(); });

    QMenu* help = menuBar()->addMenu(Text(TextHelpMenu));
    AddAction(help, TextAbout, {}, [this] { m_widget->AboutBox(); });
}

bool ozDesktopWindow::MayDropChanges()
{
    if (!m_widget->ShouldSave())
        return true;
    switch (AskToSave()) {
        case QMessageBox::Save:
            return Save();
        case QMessageBox::Discard:
            return true;
        default:
            return false;
    }
}

bool ozDesktopWindow::Open(const ozDesktopFiles& files)
{
    if (!MayDropChanges())
        return false;
    std::ostringstream err;
    const bool opened = m_document.Open(files, err);
    TellErrors(err.str());
    if (opened) {
        const ozProfileFiles& profiles = files.profiles;
        std::vector<std::string> named = files.templates;
        for (const std::string* name :
             {&profiles.gpo, &profiles.both, &profiles.user, &profiles.machine})
            if (!name->empty() && (profiles.gpo.empty() || name == &profiles.gpo))
                named.push_back(*name);
        for (const std::string& name : named)
            AddRecent(QFileInfo(QFile::decodeName(name.c_str())).absoluteFilePath());
    }
    UpdateState();
    return opened;
}

bool ozDesktopWindow::Open(const QString& path)
{
    if (ozOpenKind(Local(path)) == tOPENKIND::Unknown) {
        Tell(QString::fromStdString(
            ozFormatMessage(Text(TextUnknownKind).toStdString(), {Local(path)})));
        return false;
    }
    if (!MayDropChanges())
        return false;
    std::ostringstream err;
    const bool opened = m_document.Open(Local(path), err);
    TellErrors(err.str());
    if (opened)
        AddRecent(QFileInfo(path).absoluteFilePath());
    UpdateState();
    return opened;
}

void ozDesktopWindow::OpenWithDialog(unsigned short filter, bool folder)
{
    QString path = folder
                       ? QFileDialog::getExistingDirectory(this, Text(TextOpenFolder).remove('&'))
                       : QFileDialog::getOpenFileName(
                             this,
                             Text(filter == TextTemplateFiles ? TextOpenTemplate : TextOpenProfile)
                                 .remove('&'),
                             QString(), Text(filter) + ";;" + Text(TextAllFiles));
    if (!path.isEmpty())
        Open(path);
}

bool ozDesktopWindow::Save()
{
    if (!m_document.CanSave())
        return SaveAs();
    std::ostringstream out, err;
    const bool saved = m_document.Save(out, err);
    TellErrors(err.str());
    if (saved)
        statusBar()->showMessage(
            Text(TextSaved) + ' ' + QString::fromStdString(out.str()).trimmed(), 5000);
    UpdateState();
    return saved;
}

bool ozDesktopWindow::SaveAs()
{
    QString path = ChooseSaveFile(Text(TextProfileFiles));
    if (path.isEmpty())
        return false;
    std::ostringstream out, err;
    const bool saved = m_document.SaveAs(Local(path), out, err);
    TellErrors(err.str());
    if (saved) {
        AddRecent(QFileInfo(path).absoluteFilePath());
        statusBar()->showMessage(Text(TextSaved), 5000);
    }
    UpdateState();
    return saved;
}

void ozDesktopWindow::WriteTemplate()
{
    QString path = QFileDialog::getSaveFileName(this, Text(TextWriteTemplate).remove('&'),
                                                QString(), Text(TextTemplateFiles));
    if (!path.isEmpty() && !m_widget->WriteADM(path))
        Tell(QString::fromStdString(
            ozFormatMessage(Text(TextNotWritten).toStdString(), {Local(path)})));
}

bool ozDesktopWindow::ShowView(int displayMode)
{
    const int before = m_widget->DisplayMode();
    m_widget->DisplayMode(displayMode);
    m_widget->Refresh();
    if (!m_widget->Views().IsVisible(displayMode) && m_widget->GetCode() != 0) {
        // The view shown refused to be left; it stays.
        m_widget->DisplayMode(before);
        UpdateState();
        return false;
    }
    UpdateState();
    return true;
}

QStringList ozDesktopWindow::RecentFiles() const
{
    return QSettings().value(kRecentKey).toStringList();
}

void ozDesktopWindow::AddRecent(const QString& path)
{
    QStringList recent = RecentFiles();
    recent.removeAll(path);
    recent.prepend(path);
    while (recent.size() > kRecentCount)
        recent.removeLast();
    QSettings().setValue(kRecentKey, recent);
}

void ozDesktopWindow::FillRecentMenu()
{
    m_recentMenu->clear();
    for (const QString& path : RecentFiles())
        connect(m_recentMenu->addAction(path), &QAction::triggered, this,
                [this, path] { Open(path); });
    m_recentMenu->addSeparator();
    connect(m_recentMenu->addAction(Text(TextClearRecent)), &QAction::triggered, this,
            [] { QSettings().remove(kRecentKey); });
}

void ozDesktopWindow::SendKeyToView(int qtKey)
{
    QWidget* target = m_focusBeforeMenu;
    if (target == nullptr || !m_widget->isAncestorOf(target))
        return;
    QKeyEvent press(QEvent::KeyPress, qtKey, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &press);
    QKeyEvent release(QEvent::KeyRelease, qtKey, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &release);
}

void ozDesktopWindow::UpdateState()
{
    const QString name = QString::fromStdString(m_document.Name());
    setWindowTitle(name.isEmpty() ? Text(TextTitle)
                                  : QFileInfo(name).fileName() + "[*] - " + Text(TextTitle));
    setWindowModified(m_widget->ShouldSave());
    for (QAction* action : m_views->actions())
        action->setChecked(action->data().toInt() == m_widget->DisplayMode());
    m_save->setEnabled(m_widget->GetCode() != 0);
    const QSignalBlocker blockUser(m_showUser), blockMachine(m_showMachine),
        blockEditing(m_templateEditing);
    m_showUser->setChecked(m_widget->ShowUser());
    m_showMachine->setChecked(m_widget->ShowMachine());
    m_templateEditing->setChecked(m_widget->WithADMEdit());
}

void ozDesktopWindow::TellErrors(const std::string& err)
{
    QStringList lines;
    std::istringstream in(err);
    for (std::string line; std::getline(in, line);) {
        if (line.rfind("ozadm: ", 0) == 0)
            line.erase(0, 7);
        if (!line.empty())
            lines.append(QString::fromStdString(line));
    }
    if (!lines.isEmpty())
        Tell(lines.join('\n'));
}

void ozDesktopWindow::closeEvent(QCloseEvent* event)
{
    if (MayDropChanges())
        event->accept();
    else
        event->ignore();
}
