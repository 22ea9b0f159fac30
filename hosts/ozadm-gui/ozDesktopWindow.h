// The main window of ozadm-gui: an ozADMWidget in the middle, the menus around it (open
// templates, profiles and group-policy folders, recent files, save, the views, search and
// replace), and the title with the document's name and its modified mark. What is open is kept
// by an ozDesktopDocument over the widget's control; before an open or close would drop changes
// not saved, the window asks (Save, Discard, Cancel).
//
// Texts: the host string table given (numbers 2000 and up are the window's own, the others go
// to the control). Messages and questions show as message boxes unless a test replaces
// Tell and AskToSave.
#pragma once

#include <QtCore/QPointer>
#include <QtWidgets/QMainWindow>
#include <functional>
#include <map>
#include <string>

#include "ozDesktopDocument.h"
#include "ui/qt/ozADMWidget.h"

class QAction;
class QActionGroup;
class QMenu;

class ozDesktopWindow : public QMainWindow {
public:
    // `texts` is the host string table (ozReadHostStrings). `ui`, when given, answers the
    // control's messages and questions instead of message boxes (not owned; outlives the window).
    explicit ozDesktopWindow(const std::map<unsigned short, std::string>& texts,
                             ozHostUI* ui = nullptr);
    ~ozDesktopWindow() override;

    ozADMWidget& Widget() { return *m_widget; }
    ozDesktopDocument& Document() { return m_document; }

    // Opens the files after asking about unsaved changes; a failure is told. The files opened
    // (a group-policy folder as itself) go to the recent files. False when cancelled or failed.
    bool Open(const ozDesktopFiles& files);
    bool Open(const QString& path);
    // Saves to the files open, else asks for a file (SaveAs). False when cancelled or failed.
    bool Save();
    // Shows the view of the display mode (0 policies, 1 registry, 2 grid); false when the view
    // shown refuses to be left (a required part is empty).
    bool ShowView(int displayMode);
    // The recent files, newest first (at most 8), kept in the program's settings.
    QStringList RecentFiles() const;

    // How a message reaches the user (a warning box unless replaced).
    std::function<void(const QString& text)> Tell;
    // The question before changes are dropped; Save, Discard or Cancel.
    std::function<int()> AskToSave;
    // The file chosen for a save (a file dialog unless replaced); empty: cancelled.
    std::function<QString(const QString& filters)> ChooseSaveFile;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QString Text(unsigned short number) const;
    void BuildMenus();
    QAction* AddAction(QMenu* menu, unsigned short text, const QKeySequence& keys,
                       std::function<void()> triggered);
    // Asks about unsaved changes; true when the caller may drop them.
    bool MayDropChanges();
    bool SaveAs();
    void OpenWithDialog(unsigned short filter, bool folder);
    void WriteTemplate();
    void AddRecent(const QString& path);
    void FillRecentMenu();
    // Sends a key to the view widget that had the focus when the menu opened.
    void SendKeyToView(int qtKey);
    // Shows what the widget holds: title, modified mark, the checked view, the enabled entries.
    void UpdateState();
    // Tells the lines of err (without their "ozadm: " prefixes) when there are any.
    void TellErrors(const std::string& err);

    std::map<unsigned short, std::string> m_texts;
    ozADMWidget* m_widget;  // owned by the window as its central widget
    ozDesktopDocument m_document;
    QMenu* m_recentMenu = nullptr;
    QActionGroup* m_views = nullptr;
    QAction* m_showUser = nullptr;
    QAction* m_showMachine = nullptr;
    QAction* m_templateEditing = nullptr;
    QAction* m_save = nullptr;
    QPointer<QWidget> m_focusBeforeMenu;
};
