#include "ozADMWidget.h"

#include <dlfcn.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTimer>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>

#include "control/CADMCtrl.h"
#include "ozQtPlatform.h"
#include "ui/ozViews.h"

namespace {

std::string Narrow(const QString& text)
{
    return text.toStdString();
}

std::optional<QStringList> ToList(const ozStringArray& array)
{
    if (array.IsEmpty())
        return std::nullopt;
    QStringList list;
    for (const std::string& element : array.Elements())
        list.append(QString::fromStdString(element));
    return list;
}

// Messages and questions as message boxes over the widget.
class ozMessageBoxUI final : public ozHostUI {
public:
    explicit ozMessageBoxUI(QWidget& owner) : m_owner(owner) {}
    bool ShowMessage(tHOSTMESSAGEKIND kind, const std::string& text) override
    {
        const QString caption = QCoreApplication::applicationName();
        const QString message = QString::fromStdString(text);
        switch (kind) {
            case HostMessageQuestion:
                return QMessageBox::question(&m_owner, caption, message) == QMessageBox::Yes;
            case HostMessageWarning:
                QMessageBox::warning(&m_owner, caption, message);
                return true;
            case HostMessageInfo:
                QMessageBox::information(&m_owner, caption, message);
                return true;
            case HostMessageError:
                break;
        }
        QMessageBox::critical(&m_owner, caption, message);
        return true;
    }

private:
    QWidget& m_owner;
};

}  // namespace

struct ozADMWidget::Parts {
    Parts(QWidget& owner, ozHostUI* hostUI)
        : messageBoxes(owner),
          ui(hostUI != nullptr ? *hostUI : messageBoxes),
          platform(owner, ui),
          views(platform),
          control(ui, &views)
    {
        views.Attach(control);
    }
    ozMessageBoxUI messageBoxes;
    ozHostUI& ui;
    ozQtPlatform platform;
    ozViews views;
    CADMCtrl control;
};

ozADMWidget::ozADMWidget(QWidget* parent) : ozADMWidget(nullptr, parent) {}

ozADMWidget::ozADMWidget(ozHostUI& ui, QWidget* parent) : ozADMWidget(&ui, parent) {}

ozADMWidget::ozADMWidget(ozHostUI* ui, QWidget* parent)
    : QWidget(parent), m_parts(std::make_unique<Parts>(*this, ui))
{
    const QString grammar = BundledFile(QStringLiteral("adm.bnf"));
    if (!grammar.isEmpty())
        m_parts->control.SetEBNF(QFile::encodeName(grammar).constData());
    // What the user does anywhere in the widget, its dialogs and menus, may change ShouldSave;
    // keys pressed in the widget are its keyDown.
    m_parts->platform.AfterUserAction([this] { ReportStatus(); });
    qApp->installEventFilter(this);
}

ozADMWidget::~ozADMWidget() = default;

CADMCtrl& ozADMWidget::Control()
{
    return m_parts->control;
}

ozViews& ozADMWidget::Views()
{
    return m_parts->views;
}

ozQtPlatform& ozADMWidget::Platform()
{
    return m_parts->platform;
}

QString ozADMWidget::BundledFile(const QString& name)
{
    // Installed, the files are in share/ozadm beside the lib (or bin) folder of the library or
    // program that holds the widget, wherever the installation was put.
    QString libraryFolder;
    Dl_info self = {};
    if (dladdr(reinterpret_cast<void*>(&ozADMWidget::BundledFile), &self) != 0 &&
        self.dli_fname != nullptr)
        libraryFolder = QFileInfo(QFile::decodeName(self.dli_fname)).absolutePath();
    const QString programFolder = QCoreApplication::applicationDirPath();
    const QStringList folders = {programFolder + QStringLiteral("/ozadm-data"),
                                 libraryFolder + QStringLiteral("/../share/ozadm"),
                                 programFolder + QStringLiteral("/../share/ozadm"),
                                 QStringLiteral(OZ_QT_INSTALLED_DATA),
                                 QStringLiteral(OZ_QT_SOURCE_DATA),
                                 QStringLiteral(OZ_QT_SOURCE_GRAMMAR)};
    for (const QString& folder : folders) {
        QFileInfo file(QDir(folder), name);
        if (!folder.startsWith(QLatin1Char('/')) || !file.isFile())
            continue;
        return file.canonicalFilePath();
    }
    return {};
}

void ozADMWidget::ReportStatus()
{
    const bool shouldSave = ShouldSave();
    if (shouldSave == m_reportedShouldSave)
        return;
    m_reportedShouldSave = shouldSave;
    emit statusChange();
}

bool ozADMWidget::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    if (type != QEvent::KeyPress && type != QEvent::KeyRelease &&
        type != QEvent::MouseButtonRelease)
        return QWidget::eventFilter(watched, event);
    auto* widget = qobject_cast<QWidget*>(watched);
    // A key goes to the focus widget first, then up to its parents: reported once, there.
    if (type == QEvent::KeyPress && widget != nullptr && widget == QApplication::focusWidget() &&
        (widget == this || isAncestorOf(widget))) {
        auto* key = static_cast<QKeyEvent*>(event);
        emit keyDown(key->key(), key->modifiers());
    }
    // Whatever the user did (here or in one of the widget's dialogs) is checked once the event
    // did its work; the check only compares a flag.
    if (!m_statusCheckPending) {
        m_statusCheckPending = true;
        QTimer::singleShot(0, this, [this] {
            m_statusCheckPending = false;
            ReportStatus();
        });
    }
    return QWidget::eventFilter(watched, event);
}

bool ozADMWidget::ShowUser() const
{
    return m_parts->control.ShowUser();
}

void ozADMWidget::ShowUser(bool show)
{
    m_parts->control.ShowUser(show);
}

bool ozADMWidget::ShowMachine() const
{
    return m_parts->control.ShowMachine();
}

void ozADMWidget::ShowMachine(bool show)
{
    m_parts->control.ShowMachine(show);
}

bool ozADMWidget::WithADMEdit() const
{
    return m_parts->control.WithADMEdit();
}

void ozADMWidget::WithADMEdit(bool withEdit)
{
    m_parts->control.WithADMEdit(withEdit);
}

bool ozADMWidget::ShouldSave() const
{
    return m_parts->control.ShouldSave();
}

QString ozADMWidget::ozImpExLibrary() const
{
    return QString::fromStdString(m_parts->control.ozImpExLibrary());
}

void ozADMWidget::ozImpExLibrary(const QString& name)
{
    m_parts->control.ozImpExLibrary(Narrow(name));
}

QString ozADMWidget::ozVariableStart() const
{
    return QString::fromStdString(m_parts->control.ozVariableStart());
}

void ozADMWidget::ozVariableStart(const QString& marker)
{
    m_parts->control.ozVariableStart(Narrow(marker));
}

QString ozADMWidget::ozVariableEnd() const
{
    return QString::fromStdString(m_parts->control.ozVariableEnd());
}

void ozADMWidget::ozVariableEnd(const QString& marker)
{
    m_parts->control.ozVariableEnd(Narrow(marker));
}

std::optional<QStringList> ozADMWidget::ConfiguredPolicies() const
{
    return ToList(m_parts->control.ConfiguredPolicies());
}

void ozADMWidget::Reset()
{
    m_parts->control.Reset();
    ReportStatus();
}

bool ozADMWidget::Save(const QString& UsrReg, const QString& MacReg)
{
    const bool saved = m_parts->control.Save(Narrow(UsrReg).c_str(), Narrow(MacReg).c_str());
    ReportStatus();
    return saved;
}

bool ozADMWidget::Load(const QString& UsrReg, const QString& MacReg)
{
    const bool loaded = m_parts->control.Load(Narrow(UsrReg).c_str(), Narrow(MacReg).c_str());
    ReportStatus();
    return loaded;
}

void ozADMWidget::Cleanup()
{
    m_parts->control.Cleanup();
    ReportStatus();
}

bool ozADMWidget::SetEBNF(const QString& filename)
{
    return m_parts->control.SetEBNF(Narrow(filename).c_str());
}

bool ozADMWidget::SetADM(const QString& filename)
{
    const bool added = m_parts->control.SetADM(Narrow(filename).c_str());
    ReportStatus();
    return added;
}

bool ozADMWidget::LoadOZReg(const QString& OzReg)
{
    const bool loaded = m_parts->control.LoadOZReg(Narrow(OzReg).c_str());
    ReportStatus();
    return loaded;
}

bool ozADMWidget::AddString(unsigned short code, const QString& text)
{
    return m_parts->control.AddString(code, Narrow(text).c_str());
}

QString ozADMWidget::GetString(unsigned short code) const
{
    return QString::fromStdString(m_parts->control.GetString(code));
}

std::uintptr_t ozADMWidget::GetCode() const
{
    return m_parts->control.GetCode();
}

void ozADMWidget::Refresh()
{
    m_parts->control.Refresh();
    ReportStatus();
}

bool ozADMWidget::SaveSelState()
{
    const bool committed = m_parts->control.SaveSelState();
    ReportStatus();
    return committed;
}

bool ozADMWidget::WriteReport(const QString& Filename, short Indentation, bool WithData)
{
    return m_parts->control.WriteReport(Narrow(Filename).c_str(), Indentation, WithData);
}

void ozADMWidget::ShowLegend()
{
    m_parts->control.ShowLegend();
}

bool ozADMWidget::SendKeyDown(short Key, short CtrlCode)
{
    return m_parts->control.SendKeyDown(Key, CtrlCode);
}

bool ozADMWidget::SendKeyUp(short Key, short CtrlCode)
{
    return m_parts->control.SendKeyUp(Key, CtrlCode);
}

bool ozADMWidget::WriteADM(const QString& filename)
{
    return m_parts->control.WriteADM(Narrow(filename).c_str());
}

bool ozADMWidget::ozInsert()
{
    const bool inserted = m_parts->control.ozInsert();
    ReportStatus();
    return inserted;
}

bool ozADMWidget::ozDelete()
{
    const bool deleted = m_parts->control.ozDelete();
    ReportStatus();
    return deleted;
}

bool ozADMWidget::ozSRShowSearch()
{
    return m_parts->control.ozSRShowSearch();
}

bool ozADMWidget::ozSRShowReplace()
{
    return m_parts->control.ozSRShowReplace();
}

bool ozADMWidget::ozSRHide()
{
    return m_parts->control.ozSRHide();
}

bool ozADMWidget::AddFromRegistry(long theRoot, const QString& theKey, const QString& theValue,
                                  bool bRecursive)
{
    const std::string value = Narrow(theValue);
    const bool added = m_parts->control.AddFromRegistry(
        theRoot, Narrow(theKey).c_str(), theValue.isEmpty() ? nullptr : value.c_str(), bRecursive);
    ReportStatus();
    return added;
}

bool ozADMWidget::ShowImportReg()
{
    const bool added = m_parts->control.ShowImportReg();
    ReportStatus();
    return added;
}

std::optional<QStringList> ozADMWidget::PolicyConfigures(const QString& Path) const
{
    return ToList(m_parts->control.PolicyConfigures(Narrow(Path).c_str()));
}

void ozADMWidget::AboutBox()
{
    m_parts->control.AboutBox();
}

int ozADMWidget::DisplayMode() const
{
    return m_parts->control.DisplayMode();
}

void ozADMWidget::DisplayMode(int mode)
{
    m_parts->control.DisplayMode(mode);
}

bool ozADMWidget::ControlModified() const
{
    return m_parts->control.ControlModified();
}

bool ozADMWidget::LoadFailed() const
{
    return m_parts->control.LoadFailed();
}
