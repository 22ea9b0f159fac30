// The element editors of template editing: the dialogs through which the policy view's
// template-editing menu changes a policy and its parts. Each works on the model element it is
// given (not owned; it outlives the dialog), checks what the user typed when OK is pressed
// (a message naming the field, and the dialog stays open), then stores every field through the
// model's setters and reports the edit, so that the control is marked modified. Cancel changes
// nothing.
#pragma once

#include <functional>
#include <memory>

#include "control/ozControlViews.h"
#include "ozForm.h"

class CADMCtrl;
class ozADMCtrl;
class ozADMPolicy;
class ozViewPlatform;

// What every element editor needs from the view that opens it.
struct ozEditorContext {
    ozViewPlatform& platform;
    // Host texts and message boxes' caption (not owned; may be null in tests).
    CADMCtrl* control = nullptr;
    // Called after every accepted edit: the view marks the control modified and shows the
    // policy's parts again.
    std::function<void()> edited;
    // Browses the registry below the root of `initial` (1 the user's, 2 the machine's) and
    // hands the choice to `ended` (null when the user cancels), at once or later.
    std::function<void(const ozControlViews::RegistryChoice& initial,
                       ozControlViews::RegistryAnswer ended)>
        browse;
};

// The dialog numbers of the element editors.
enum : int {
    DialogPolicyProperties = 106,
    DialogParts = 107,
    DialogNewPartType = 108,
    // The property page of a part: 110 + its part type (111 check box ... 117 list box, 118
    // multi-line text).
    DialogPartPageBase = 110,
};

// Policy Properties: registry key (typed, or "..." to browse), value name, the on and off
// values (kind none, numeric, string or delete, and the value), client extension and explain
// text.
std::unique_ptr<ozDialog> ozCreatePolicyPropertiesDialog(ozADMPolicy& policy,
                                                         const ozEditorContext& context);

// Control Properties: the policy's parts in a list with Insert (asking the part type), Delete,
// Up, Down and Props (the part's property page).
std::unique_ptr<ozDialog> ozCreatePartsDialog(ozADMPolicy& policy, const ozEditorContext& context);

// The question Insert asks: which type the new part has (check box, numeric, edit text, combo
// box, text, drop-down list, list box, multi-line text); `chosen` gets the part type on OK.
std::unique_ptr<ozDialog> ozCreatePartTypeDialog(std::function<void(unsigned long type)> chosen);

// The property page of part, by its type: name, key, value name, and the settings of its type.
std::unique_ptr<ozDialog> ozCreatePartPage(ozADMCtrl& part, const ozEditorContext& context);
