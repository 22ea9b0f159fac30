// The policy-editing control as a Qt widget: a QWidget that holds one CADMCtrl with its views
// (the policy view with the parts panel, the registry view with its value list, the
// registry-value grid) drawn by Qt widgets. A Qt program embeds it like any other widget and
// drives it through the control's properties and methods, which keep their names, arguments and
// results; text crosses as QString (UTF-8, the narrow encoding of the core on Linux).
//
// Ownership: the widget owns the control, the views and every Qt child it creates. The host user
// interface given to the constructor (for message boxes and questions) is not owned and must
// outlive the widget; without one the widget shows them as QMessageBox dialogs captioned with
// the application's name.
//
// Threading: the widget, like the control, lives on the thread of the QApplication and is used
// only from it.
//
// Failures: every method reports as the control does (false, an empty result); messages go to the
// host user interface with the texts the host added (AddString). Nothing throws.
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtWidgets/QWidget>
#include <cstdint>
#include <memory>
#include <optional>

class CADMCtrl;
class ozHostUI;
class ozQtPlatform;
class ozViews;
struct tTreeCodeHandle;

class ozADMWidget : public QWidget {
    Q_OBJECT

public:
    // A widget whose messages show as QMessageBox dialogs.
    explicit ozADMWidget(QWidget* parent = nullptr);
    // A widget whose messages and questions go to `ui` (not owned).
    explicit ozADMWidget(ozHostUI& ui, QWidget* parent = nullptr);
    ~ozADMWidget() override;
    ozADMWidget(const ozADMWidget&) = delete;
    ozADMWidget& operator=(const ozADMWidget&) = delete;

    // Properties. Setting ShowUser, ShowMachine, WithADMEdit or ozImpExLibrary marks the control
    // modified (ControlModified).
    bool ShowUser() const;
    void ShowUser(bool show);
    bool ShowMachine() const;
    void ShowMachine(bool show);
    bool WithADMEdit() const;
    void WithADMEdit(bool withEdit);
    // Whether the loaded templates or profiles have changes not saved; false without templates.
    bool ShouldSave() const;
    // The profile library's name: "ozRegOZP.dll" (.ozp), "ozRegPol.dll" (Registry.pol) or
    // "ozRegReg.dll" (.reg); the first 260 characters are kept.
    QString ozImpExLibrary() const;
    void ozImpExLibrary(const QString& name);
    // The markers around variables in texts (process-wide).
    QString ozVariableStart() const;
    void ozVariableStart(const QString& marker);
    QString ozVariableEnd() const;
    void ozVariableEnd(const QString& marker);
    // Every configured policy in tree order as "+ path" (enabled), "- path" (disabled) or
    // "? path"; no value (std::nullopt) without templates or when the tree refuses.
    std::optional<QStringList> ConfiguredPolicies() const;

    // Methods, as the control has them.
    // Resets every part to its default and shows the tree again.
    void Reset();
    // Saves the user profile to UsrReg and the machine profile to MacReg through the library
    // (an empty name: that profile is not written). True when everything was written.
    bool Save(const QString& UsrReg, const QString& MacReg);
    // Loads UsrReg and then MacReg through the library, derives the policy states and shows the
    // tree. False when a profile could not be read (Save asks first afterwards).
    bool Load(const QString& UsrReg, const QString& MacReg);
    // Drops the templates and profiles and empties the views.
    void Cleanup();
    // Loads the grammar of the template language; the constructor already loaded the bundled
    // one when it found it (see BundledFile).
    bool SetEBNF(const QString& filename);
    // Adds a template; several merge into one.
    bool SetADM(const QString& filename);
    // Loads a profile as the user profile and marks the templates modified.
    bool LoadOZReg(const QString& OzReg);
    // The host's message texts (numbered as the control's messages).
    bool AddString(unsigned short code, const QString& text);
    QString GetString(unsigned short code) const;
    // The code object's address as a number; 0 without templates.
    std::uintptr_t GetCode() const;
    // Shows the view of the display mode, storing the pending edit of the view shown before.
    void Refresh();
    // Commits the pending edit of the parts panel and of the view shown.
    bool SaveSelState();
    // Reports are not written: always false.
    bool WriteReport(const QString& Filename, short Indentation, bool WithData);
    // The legend of the policy tree's pictures, as a dialog.
    void ShowLegend();
    // Accepted and ignored: always true.
    bool SendKeyDown(short Key, short CtrlCode);
    bool SendKeyUp(short Key, short CtrlCode);
    // Writes the templates as one template file.
    bool WriteADM(const QString& filename);
    // The grid's row operations and the search and replace bar: false unless the grid is shown.
    bool ozInsert();
    bool ozDelete();
    bool ozSRShowSearch();
    bool ozSRShowReplace();
    bool ozSRHide();
    // Adds a key (with its sub keys when bRecursive), or only theValue when not empty, from the
    // registry into the user tree (theRoot 1) or the machine tree (any other root number).
    bool AddFromRegistry(long theRoot, const QString& theKey, const QString& theValue,
                         bool bRecursive);
    // Runs the import-from-registry dialog; true when something was added.
    bool ShowImportReg();
    // The registry entries the policy at Path configures in its present state; no value for a
    // path that names no policy.
    std::optional<QStringList> PolicyConfigures(const QString& Path) const;
    void AboutBox();

    // For hosts: the display mode (0 the policy view, 1 the registry view, 2 the grid; shown on
    // the next Refresh), whether a property change needs saving in the host's document, whether
    // the last Load failed.
    int DisplayMode() const;
    void DisplayMode(int mode);
    bool ControlModified() const;
    bool LoadFailed() const;

    // The control and its views, for hosts that drive them further (the search sheet, the
    // views' menus). Owned by the widget.
    CADMCtrl& Control();
    ozViews& Views();
    // The Qt widgets the views drive, with the menu and dialogs open now.
    ozQtPlatform& Platform();

    // A file shipped with the widget (adm.bnf, strings-en.txt, strings-de.txt): looked for in
    // the folder "ozadm-data" beside the executable, then in share/ozadm of the installation
    // the widget's library (or the program) is in, then in the source tree it was built from.
    // Empty when not found.
    static QString BundledFile(const QString& name);

signals:
    // ShouldSave changed (an edit, a load, a save, Cleanup): checked after every call of the
    // methods above and after every key press, mouse click and dialog of the user.
    void statusChange();
    // A key was pressed in the widget or one of its views, before the view handles it: the Qt
    // key code (Qt::Key) and the modifiers held.
    void keyDown(int key, Qt::KeyboardModifiers modifiers);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Parts;
    ozADMWidget(ozHostUI* ui, QWidget* parent);
    // Emits statusChange when ShouldSave differs from what was reported last.
    void ReportStatus();

    std::unique_ptr<Parts> m_parts;
    bool m_reportedShouldSave = false;
    bool m_statusCheckPending = false;
};
