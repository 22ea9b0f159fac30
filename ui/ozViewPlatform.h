// What the views need from the platform they run on: their widgets, popup menus, dialogs and
// message boxes. The Windows widgets and the headless ones implement it.
//
// Menus and dialogs end through a callback, so that one logic serves both kinds of platform:
// the Windows one runs them modally and calls back before returning; the headless one keeps
// them open until a script (or a test) chooses an entry or ends the dialog.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "ozForm.h"
#include "ozGridWidget.h"
#include "ozListWidget.h"
#include "ozMenu.h"
#include "ozTreeWidget.h"

class ozHostUI;

// The parts panel's widget: a form whose controls are replaced as a whole. It stacks the
// controls from the top of its area (4 pixels in from every side, narrowed by the width of a
// vertical scroll bar), each 2 pixels below the one before.
class ozPanelWidget : public ozForm {
public:
    // Replaces the controls; events go to `events` (not owned) until the next Build or Clear.
    virtual void Build(const std::vector<ozControlSpec>& controls, ozFormEvents* events) = 0;
    virtual void Clear() = 0;
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
};
