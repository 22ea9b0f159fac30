// What a user does in the policy view: a policy's state chosen, a part's value entered, each
// marking the control's document modified. The views and the hosts (ozadm) edit through these
// alone, so an edit has the same rules and effects wherever it is made. Also the text forms of
// states and part values that the views show and ozadm prints and reads (docs/cli.md), so that
// a value printed by `Parts` can be given to `SetPart` again.
//
// Part value texts by part type:
//   CHECKBOX      TRUE or FALSE (numbers as well: nonzero is checked)
//   NUMERIC       a whole number between the part's MIN and MAX (decimal, or hexadecimal
//                 after "0x"; up to 64 bits for a part writing REG_QWORD); "" for no value
//   EDITTEXT,
//   COMBOBOX      the text itself (at most MAXLEN characters when the part has a MAXLEN)
//   DROPDOWNLIST  the name of an item (without regard to case); "" for no item
//   LISTBOX       the entries separated by ';' (";;" stands for a ';' inside an entry; empty
//                 entries are dropped). In a list box with EXPLICITVALUE each entry reads
//                 name=value; otherwise each entry is a value and the names are the part's
//                 VALUEPREFIX followed by 1, 2, 3 ...
//   MULTITEXT     the lines separated by ';' as in a list box (";;" inside a line; empty
//                 lines are dropped), at most the part's maximum of lines and line length
//   TEXT          has no value
#pragma once

#include <string>
#include <vector>

#include "core/adm/ozADMPolicy.h"

class CADMCtrl;
class ozADMCtrl;
struct tTreeCodeHandle;

// The policy at path (class, categories and policy name joined by backslashes, compared
// without regard to case); null without code object or when path names no policy.
ozADMPolicy* ozFindPolicy(tTreeCodeHandle* code, const std::string& path);

// "enabled", "disabled" or "notconfigured", and back (without regard to case).
const char* ozPolicyStateName(tPOLICYSTATE state);
bool ozReadPolicyState(const std::string& text, tPOLICYSTATE& state);

// CHECKBOX, NUMERIC, EDITTEXT, COMBOBOX, TEXT, DROPDOWNLIST, LISTBOX or MULTITEXT.
const char* ozPartTypeName(const ozADMCtrl& part);

// The part of policy named `name` (without regard to case); null when there is none.
ozADMCtrl* ozFindPart(ozADMPolicy& policy, const std::string& name);

// Sets the part's value from its text form. False, with why saying what is wrong, when the
// text does not fit the part; the part is then unchanged.
bool ozSetPartValue(ozADMCtrl& part, const std::string& text, std::string& why);

// The part's value in the text form above ("" for a TEXT part).
std::string ozPartValueText(const ozADMCtrl& part);

// A list box text's entries, as written (name=value in a list box with EXPLICITVALUE), split at
// single ';' with ";;" read as a ';' inside an entry; empty entries are dropped. And back: the
// entries joined by ';', each ';' inside an entry doubled.
std::vector<std::string> ozSplitListText(const std::string& text);
std::string ozJoinListText(const std::vector<std::string>& entries);

// Sets the state of policy, a policy of control's code object, and marks the document
// modified.
void ozEditPolicyState(CADMCtrl& control, ozADMPolicy& policy, tPOLICYSTATE state);

// Sets part's value from its text form (ozSetPartValue) and, when that succeeds, marks the
// document modified. False, with why saying what is wrong, when the text does not fit the part;
// the part and the flag are then unchanged.
bool ozEditPartValue(CADMCtrl& control, ozADMCtrl& part, const std::string& text, std::string& why);

// Marks control's document modified, as every edit does; nothing without a code object. For
// changes made through the control that do not mark it themselves (Reset).
void ozMarkDocumentEdited(CADMCtrl& control);
