#include "ozQtPlatform.h"

#include <QtGui/QCursor>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

#include "ozQtSupport.h"

namespace {

// Builds entries into menu; every chosen entry's command goes to chosen.
void AddEntries(QMenu& menu, const std::vector<ozMenuEntry>& entries)
{
    for (const ozMenuEntry& entry : entries) {
        if (entry.IsSeparator()) {
            menu.addSeparator();
            continue;
        }
        const QString caption = ozQtText(entry.caption);
        if (!entry.submenu.empty()) {
            QMenu* submenu = menu.addMenu(caption);
            submenu->setEnabled(entry.state == ozMenuState::Enabled);
            AddEntries(*submenu, entry.submenu);
            continue;
        }
        QAction* action = menu.addAction(caption);
        action->setData(entry.command);
        action->setEnabled(entry.state == ozMenuState::Enabled);
        if (entry.bitmap != 0)
            action->setIcon(ozQtBitmap(entry.bitmap));
    }
}

// "description|pattern;pattern|...||" as Qt's name filters "description (pattern pattern)".
QStringList NameFilters(const std::string& filter)
{
    const QStringList parts = ozQtText(filter).split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype at = 0; at + 1 < parts.size(); at += 2) {
        if (parts[at].isEmpty() && parts[at + 1].isEmpty())
            break;
        QString patterns = parts[at + 1];
        patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
        filters.append(QStringLiteral("%1 (%2)").arg(parts[at], patterns));
    }
    return filters;
}

}  // namespace

ozQtPlatform::ozQtPlatform(QWidget& host, ozHostUI& ui) : m_host(host), m_ui(ui)
{
    auto* layout = new QVBoxLayout(&host);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);

    m_policySplitter = new QSplitter(Qt::Horizontal, &host);
    m_policySplitter->addWidget(&m_tree.Widget());
    m_policySplitter->addWidget(&m_panel.Widget());
    m_policySplitter->setStretchFactor(0, 55);
    m_policySplitter->setStretchFactor(1, 45);
    m_windows[0] = m_policySplitter;

    auto* registry = new QSplitter(Qt::Horizontal, &host);
    registry->addWidget(&m_registryTree.Widget());
    m_valueSplitter = new QSplitter(Qt::Vertical, registry);
    m_valueSplitter->addWidget(&m_registryValues.Widget());
    registry->addWidget(m_valueSplitter);
    registry->setStretchFactor(0, 35);
    registry->setStretchFactor(1, 65);
    m_valueSplitter->setStretchFactor(0, 40);
    m_windows[1] = registry;

    m_windows[2] = &m_registryGrid.Widget();
    m_registryGrid.Widget().setParent(&host);

    for (QWidget* window : m_windows) {
        layout->addWidget(window);
        window->hide();
    }
}

ozQtPlatform::~ozQtPlatform()
{
    for (QPointer<ozQtDialogWindow>& dialog : m_dialogs)
        delete dialog.data();
    delete m_menu.data();
    delete m_fileDialog.data();
}

QWidget& ozQtPlatform::ViewWindow(int displayMode) const
{
    return *m_windows[static_cast<std::size_t>(std::clamp(displayMode, 0, 2))];
}

QMenu* ozQtPlatform::OpenMenu() const
{
    return m_menu;
}

QFileDialog* ozQtPlatform::OpenFileDialog() const
{
    return m_fileDialog;
}

ozQtDialogWindow* ozQtPlatform::TopDialog() const
{
    for (auto dialog = m_dialogs.rbegin(); dialog != m_dialogs.rend(); ++dialog)
        if (*dialog != nullptr)
            return *dialog;
    return nullptr;
}

void ozQtPlatform::UserActed() const
{
    if (m_afterUserAction)
        m_afterUserAction();
}

void ozQtPlatform::ShowView(int displayMode, bool visible)
{
    if (displayMode < 0 || displayMode > 2)
        return;
    // The parts panel goes with the view shown: beside the policy tree or below the values.
    if (visible && displayMode == 0)
        m_policySplitter->addWidget(&m_panel.Widget());
    else if (visible && displayMode == 1)
        m_valueSplitter->addWidget(&m_panel.Widget());
    if (visible && displayMode < 2) {
        m_panel.Widget().show();
        QSplitter* splitter = displayMode == 0 ? m_policySplitter : m_valueSplitter;
        const int size = displayMode == 0 ? splitter->width() : splitter->height();
        const int first = size * (displayMode == 0 ? 55 : 40) / 100;
        splitter->setSizes({first, size - first});
    }
    m_windows[static_cast<std::size_t>(displayMode)]->setVisible(visible);
}

void ozQtPlatform::PopupMenu(const ozMenu& menu, std::function<void(unsigned int command)> chosen)
{
    delete m_menu.data();
    m_menu = new QMenu(&m_host);
    m_menu->setAttribute(Qt::WA_DeleteOnClose);
    AddEntries(*m_menu, menu.entries);
    QObject::connect(m_menu, &QMenu::triggered, m_menu,
                     [this, chosen = std::move(chosen)](QAction* action) {
                         chosen(action->data().toUInt());
                         UserActed();
                     });
    m_menu->popup(QCursor::pos());
}

void ozQtPlatform::RunDialog(std::unique_ptr<ozDialog> dialog,
                             std::function<void(ozDialog& dialog, bool accepted)> ended)
{
    // A dialog opened from a dialog stands over it, which stays disabled until this one ends.
    QWidget* owner = TopDialog() != nullptr ? static_cast<QWidget*>(TopDialog()) : &m_host;
    ozDialog& logic = *dialog;
    auto* window = new ozQtDialogWindow(logic, owner, false);
    m_dialogs.emplace_back(window);
    // The logic lives as long as the window.
    std::shared_ptr<ozDialog> owned(std::move(dialog));
    QObject::connect(window, &QDialog::finished, window,
                     [this, window, owned, ended = std::move(ended)](int result) {
                         std::erase_if(m_dialogs, [window](const QPointer<ozQtDialogWindow>& open) {
                             return open == nullptr || open == window;
                         });
                         ended(*owned, result == QDialog::Accepted);
                         window->deleteLater();
                         UserActed();
                     });
    window->setModal(true);
    window->show();
}

void ozQtPlatform::AskOpenFile(const ozOpenFileQuestion& question,
                               std::function<void(const std::string& path)> chosen)
{
    delete m_fileDialog.data();
    m_fileDialog = new QFileDialog(&m_host);
    m_fileDialog->setAttribute(Qt::WA_DeleteOnClose);
    m_fileDialog->setFileMode(QFileDialog::ExistingFile);
    m_fileDialog->setAcceptMode(QFileDialog::AcceptOpen);
    m_fileDialog->setNameFilters(NameFilters(question.filter));
    m_fileDialog->setDefaultSuffix(ozQtText(question.defaultExtension));
    QObject::connect(m_fileDialog, &QFileDialog::fileSelected, m_fileDialog,
                     [this, chosen = std::move(chosen)](const QString& path) {
                         chosen(ozQtNarrow(path));
                         UserActed();
                     });
    m_fileDialog->setModal(true);
    m_fileDialog->show();
}

std::unique_ptr<ozModelessDialog> ozQtPlatform::OpenModeless(ozDialog& dialog, int displayMode)
{
    auto window = std::make_unique<ozQtDialogWindow>(dialog, &ViewWindow(displayMode), true);
    window->setWindowFlag(Qt::Tool);
    auto modeless = std::make_unique<ozQtModeless>(std::move(window));
    modeless->Show(true);
    return modeless;
}
