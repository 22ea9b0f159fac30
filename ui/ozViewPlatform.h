// What the views need from the platform they run on: their widgets, popup menus, dialogs and
// message boxes. The Windows widgets and the headless ones implement it.
//
// Menus and dialogs end through a callback, so that one logic serves both kinds of platform:
// the Windows one runs them modally and calls back before returning; the headless one keeps
// them open until a script (or a test) chooses an entry or ends the dialog.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ozForm.h"
#include "ozGridWidget.h"
#include "ozListWidget.h"
#include "ozMenu.h"
#include "ozTreeWidget.h"

class ozHostUI;

// A dialog that stays open beside the views (the search sheet): opening it returns at once, and
// it takes the user's commands until it goes. Its owner keeps the dialog logic alive as long
// as the window. Destroying it closes the window.
class ozModelessDialog {
public:
    virtual ~ozModelessDialog() = default;
    virtual void Show(bool visible) = 0;
    virtual bool Shown() const = 0;
    // The dialog's layout changed (another page): builds the controls again, then Init.
    virtual void Rebuild() = 0;
    virtual ozForm& Form() = 0;
};

// The parts panel's widget: a form whose controls are replaced as a whole. It stacks the
// controls from the top of its area (4 pixels in from every side, narrowed by the width of a
// vertical scroll bar), each 2 pixels below the one before.
class ozPanelWidget : public ozForm {
public:
    // Replaces the controls; events go to `events` (not owned) until the next Build or Clear.
    virtual void Build(const std::vector<ozControlSpec>& controls, ozFormEvents* events) = 0;
    virtual void Clear() = 0;
};

// What a file-open question offers: the extension added to a name typed without one, and the
// filter as "description|pattern|...||".
struct ozOpenFileQuestion {
    std::string defaultExtension;
    std::string filter;
};

class ozViewPlatform {
public:
    virtual ~ozViewPlatform() = default;

    // Message boxes and questions, through the host.
    virtual ozHostUI& UI() = 0;
    // Shows or hides the window of a display mode's view with its companions (the policy
    // view's parts panel); the views call this from Show and Hide.
    virtual void ShowView(int displayMode, bool visible) = 0;
    // The policy view's tree and the parts panel beside it.
    virtual ozTreeWidget& PolicyTree() = 0;
    virtual ozPanelWidget& PartsPanel() = 0;
    // The registry view's key tree.
    virtual ozTreeWidget& RegistryTree() = 0;
    // The registry view's value list beside the key tree (a report-style list of two columns).
    virtual ozListWidget& RegistryValues() = 0;
    // The registry-value grid (display mode 2).
    virtual ozGridWidget& RegistryGrid() = 0;
    // Shows menu at the cursor; `chosen` gets the command of the entry the user chooses (not
    // called when the menu is dismissed).
    virtual void PopupMenu(const ozMenu& menu,
                           std::function<void(unsigned int command)> chosen) = 0;
    // Runs dialog modally; `ended` gets the dialog and whether it was accepted (OK), before the
    // dialog goes.
    virtual void RunDialog(std::unique_ptr<ozDialog> dialog,
                           std::function<void(ozDialog& dialog, bool accepted)> ended) = 0;
    // Asks for an existing file to open (read-only choice hidden); `chosen` gets its path when
    // the user accepts one (not called on Cancel). Headless: a dialog captioned "Open" whose
    // "File name" edit takes the path.
    virtual void AskOpenFile(const ozOpenFileQuestion& question,
                             std::function<void(const std::string& path)> chosen) = 0;
    // Opens dialog (not owned; it must outlive the window) modeless over the view of
    // displayMode and shows it. OK and Cancel hide it. Null when it cannot be created.
    virtual std::unique_ptr<ozModelessDialog> OpenModeless(ozDialog& dialog, int displayMode) = 0;
};
