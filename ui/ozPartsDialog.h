// The parts dialog "Control Properties" (dialog 107) and the question its Insert asks, "New"
// (dialog 108); the factories are declared in ozElementEditors.h.
//
// The parts dialog works on copies of the policy's parts (ozADMCtrl::Copy, sharing key and
// policy) and never touches the policy until OK: then the policy's parts are replaced by the
// copies in the dialog's order, and context.edited() is called. Whoever holds the old parts (the
// parts panel) must let them go unread when edited() shows the parts again. Cancel drops the
// copies. The part pages opened from the dialog edit the copies; an accepted page only refreshes
// the list, so that Cancel still leaves the policy as it was.
//
// Insert asks for the type, then adds a new part after the selected row (at the end without one)
// bound to the policy's key, named by host text 18 (the type's caption when the host has none),
// with an empty value name for the types that have one, selects it and opens its page; the part
// stays when the page is cancelled. Delete removes the selected part without asking (Cancel
// brings it back); the row that takes its place is selected. Up and Down move the selected part.
#pragma once

#include "ozElementEditors.h"

// The controls of the parts dialog, in tab order.
enum : int {
    PartsDialogList = 330,
    PartsDialogInsert = 331,
    PartsDialogDelete = 332,
    PartsDialogUp = 333,
    PartsDialogDown = 334,
    PartsDialogProps = 335,
};

// The radio buttons of the part-type question: 340 + the part type (341 check box ... 347 list
// box), in a group numbered 340.
enum : int {
    PartTypeDialogGroup = 340,
};
