// The grammar actions: the functions the grammar engine calls by name, in document order, as
// it recognises the constructs of a template, and that build the policy tree of the current
// code object in the load context (ozLoadContext.h).
//
// Each takes one pointer-sized argument and returns nonzero for success. The argument is the
// engine's token record (ozEBNFToken*) for the actions marked "token", a code object for
// SetCodeH, a file name for PrepareCodeGeneration, and ignored by the rest. On failure an
// action reports an error number (tLOADERROR, or the [strings] reader's 1007 / 1015) with the
// engine's error_set_code, some with a description set first with error_set_desc, and returns
// 0. What was built before a failure stays in the tree.
//
// "Fetch" below means taking the argument on top of the argument stack and requiring its kind:
// a wrong kind reports 1134 described by the kind expected ("String", "Value", "Actionlist")
// and loses the argument; an empty stack reports nothing. The current policy is the current
// node of the tree when it is a policy; the current part is the last part of the current
// policy. A part action finds no current part (1113) also when the current part is not of a
// kind the action can set, and reports 1103 before 1113 when the current policy has no parts.
#pragma once

#include <cstdint>

#include "ozLoaderExport.h"
#include "ozStringsSection.h"

// Error numbers of the grammar actions. Out of memory (1007) and a template that cannot be
// opened (1015) are the [strings] reader's StringsErrorOutOfMemory and StringsErrorCannotOpen.
enum tLOADERROR : int {
    LoadErrorPartScope = 1011,           // a part's key scope cannot be opened
    LoadErrorStringTable = 1100,         // the [strings] table cannot be created
    LoadErrorStacks = 1101,              // the argument or key-name stack cannot be created
    LoadErrorNoPolicy = 1102,            // a policy action (or EndPart) finds no current policy
    LoadErrorPolicyWithoutParts = 1103,  // a part action finds a current policy with no parts
    LoadErrorCreateClass = 1104,         // BeginClass cannot create the class root
    LoadErrorInsertClass = 1106,         // BeginClass cannot insert the class root
    LoadErrorCategory = 1107,            // BeginCategory cannot create or insert the category
    LoadErrorEndCategory = 1108,         // EndCategory cannot move up
    LoadErrorPolicy = 1109,              // BeginPolicy cannot create or insert the policy
    LoadErrorEndPolicy = 1110,           // EndPolicy finds no current policy or cannot move up
    LoadErrorNoKeyName = 1111,           // EndPolicy finds no key name, or an empty one
    LoadErrorBindKey = 1112,             // a policy, part or action item key cannot be bound
    LoadErrorNoPart = 1113,              // a part action finds no current part
    LoadErrorPart = 1114,                // a part cannot be created or added to its policy
    LoadErrorNoValue = 1115,             // a VALUEON / VALUEOFF action finds no Value
    LoadErrorActionItem = 1117,          // an action item cannot be created
    LoadErrorNumberRequired = 1118,      // the token is not a number
    LoadErrorSuggestion = 1120,          // a combo box suggestion cannot be added
    LoadErrorDropdownItem = 1121,        // a drop-down list item cannot be added
    LoadErrorKeyName = 1123,             // SetKeyname cannot replace the key name
    LoadErrorValueRefused = 1124,        // a value refuses the number, string or deletion
    LoadErrorActionListFull = 1125,      // an action list cannot grow
    LoadErrorTextRequired = 1128,        // SaveString's token is not a text
    LoadErrorUnknownString = 1129,       // not a string reference, or a name not in [strings]
    LoadErrorPrefixAndExplicit = 1132,   // VALUEPREFIX and EXPLICITVALUE in one list box
    LoadErrorNoArgument = 1133,          // the top of an empty argument stack is inspected
    LoadErrorWrongArgument = 1134,       // an argument of the wrong kind is fetched or inspected
    LoadErrorNoValueName = 1135,         // EndPart finds the part without a value name
};

// ---- The code object (ozCodeActions.cpp)

// Argument: the template's file name (const char*). Creates the code object, the [strings]
// table and the stacks where absent, empties the stacks (a failed load leaves nothing open for
// the next) and adds the template's [strings] section to the table (earlier definitions win);
// the current class becomes 0. Fails when the code object (1007) or the table (1100) cannot be
// created or the file cannot be opened (1015) or read into memory (1007). On every failure
// the code object, lent or made, stays for GetCodeH to hand back. When a stack cannot be
// created, reports 1101 yet succeeds.
OZ_ACTION_API intptr_t PrepareCodeGeneration(intptr_t fileName);
// Returns the current code object (tTreeCodeHandle*), which the caller then owns, and forgets
// it; 0 without one.
OZ_ACTION_API intptr_t GetCodeH(intptr_t ignored);
// Argument: a code object (tTreeCodeHandle*), lent to the context until GetCodeH takes it back
// or DestroyCode destroys it. Always succeeds.
OZ_ACTION_API intptr_t SetCodeH(intptr_t code);
// Destroys the current code object with its tree, the [strings] table, the key-name stack and
// the argument stack with everything on them. Always succeeds.
OZ_ACTION_API intptr_t DestroyCode(intptr_t ignored);

// ---- Classes, categories and policies (ozNodeActions.cpp)
//
// A begun node is merged with a sibling of the same name and kind, which then receives what
// follows (a template read twice adds no second class, category or policy, but every part
// twice); otherwise it is added after the last sibling, or as the first child.

// Token: the class name as written (its source text), upper-cased; "USER" is the user class,
// anything else the machine class. Becomes the current node and sets the current class.
// 1104, 1106.
OZ_ACTION_API intptr_t BeginClass(intptr_t token);
// Opens a key scope; fetches a String, the name, and begins a category of that name below the
// current node. 1107.
OZ_ACTION_API intptr_t BeginCategory(intptr_t ignored);
// Closes the key scope and moves up to the node around. 1108.
OZ_ACTION_API intptr_t EndCategory(intptr_t ignored);
// As BeginCategory, for a policy. 1109.
OZ_ACTION_API intptr_t BeginPolicy(intptr_t ignored);
// Fetch a String for the current policy's value name / explain text / client extension. 1102.
OZ_ACTION_API intptr_t PolicyValuename(intptr_t ignored);
OZ_ACTION_API intptr_t PolicyExplain(intptr_t ignored);
OZ_ACTION_API intptr_t PolicyClientExt(intptr_t ignored);
// Fetches a String, the products and versions the current policy applies to (SUPPORTED). 1102.
OZ_ACTION_API intptr_t PolicySupported(intptr_t ignored);
// Fetch a Value for the current policy's ValueOn / ValueOff. 1102; 1115 described by the
// action's own name when there is no Value.
OZ_ACTION_API intptr_t PolicyValueOn(intptr_t ignored);
OZ_ACTION_API intptr_t PolicyValueOff(intptr_t ignored);
// Fetch an Actionlist and give it to the current policy's ActionListOn / ActionListOff. 1102.
OZ_ACTION_API intptr_t PolicyActionlistOn(intptr_t ignored);
OZ_ACTION_API intptr_t PolicyActionlistOff(intptr_t ignored);
// Gives the current policy the current key name, closes the key scope and moves up. 1110
// without a current policy or a node above it, 1111 without a key name or with an empty one.
OZ_ACTION_API intptr_t EndPolicy(intptr_t ignored);

// ---- Parts (ozPartActions.cpp, ozPartSettingActions.cpp)

// Create a part of the kind named, fetch a String as its name, open a key scope and add the
// part to the current policy. 1011 when the scope cannot be opened, 1114 when the part cannot
// be created or added; when the current node is not a policy they fail without a number.
OZ_ACTION_API intptr_t CreateCheckbox(intptr_t ignored);
OZ_ACTION_API intptr_t CreateNumeric(intptr_t ignored);
OZ_ACTION_API intptr_t CreateEdittext(intptr_t ignored);
OZ_ACTION_API intptr_t CreateCombobox(intptr_t ignored);
OZ_ACTION_API intptr_t CreateText(intptr_t ignored);
OZ_ACTION_API intptr_t CreateDropdown(intptr_t ignored);
OZ_ACTION_API intptr_t CreateListbox(intptr_t ignored);
// Marks the current part required.
OZ_ACTION_API intptr_t PartRequired(intptr_t ignored);
// Fetch a String for the current part's value name / client extension.
OZ_ACTION_API intptr_t PartValuename(intptr_t ignored);
OZ_ACTION_API intptr_t PartClientExt(intptr_t ignored);
// Binds the current part to the key of the current key name (in the user registry tree below
// HKEY_CURRENT_USER in the user class, else in the machine tree below HKEY_LOCAL_MACHINE) and
// closes the key scope. 1102 without a current policy, 1112 when no key is bound, 1135 when
// the part has no value name (the scope then stays open).
OZ_ACTION_API intptr_t EndPart(intptr_t ignored);

// Check boxes: checked by default; Values and action lists for checked and unchecked (1115
// described by the action's name when there is no Value).
OZ_ACTION_API intptr_t CheckboxChecked(intptr_t ignored);
OZ_ACTION_API intptr_t CheckboxValueOn(intptr_t ignored);
OZ_ACTION_API intptr_t CheckboxValueOff(intptr_t ignored);
OZ_ACTION_API intptr_t CheckboxActionlistOn(intptr_t ignored);
OZ_ACTION_API intptr_t CheckboxActionlistOff(intptr_t ignored);
// Numeric parts. Token: a number for Default, Min and Max (1118 otherwise); for Spin, a number
// gives the step and any other token a step of 1.
OZ_ACTION_API intptr_t NumericDefault(intptr_t token);
OZ_ACTION_API intptr_t NumericMin(intptr_t token);
OZ_ACTION_API intptr_t NumericMax(intptr_t token);
OZ_ACTION_API intptr_t NumericSpin(intptr_t token);
OZ_ACTION_API intptr_t NumericTxtconvert(intptr_t ignored);
// Edit texts and combo boxes. Default fetches a String that becomes default and value; Maxlen
// takes a number token (1118 otherwise); Suggestion fetches a String to add (1120 when it
// cannot be added). Suggestion and Nosort need a combo box; the others also set an edit text.
OZ_ACTION_API intptr_t ComboboxDefault(intptr_t ignored);
OZ_ACTION_API intptr_t ComboboxMaxlen(intptr_t token);
OZ_ACTION_API intptr_t ComboboxExpandable(intptr_t ignored);
OZ_ACTION_API intptr_t ComboboxSuggestion(intptr_t ignored);
OZ_ACTION_API intptr_t ComboboxNosort(intptr_t ignored);
// Drop-down lists. AddItem takes an Actionlist when one is on top (reporting 1134, or 1133
// for an empty stack, when none is, and going on), then fetches the Value and the String, the
// item's name, and adds the item (1121 when it cannot). SetSel makes the item to be added next
// (index = number of items now) default and selected.
OZ_ACTION_API intptr_t DropdownAddItem(intptr_t ignored);
OZ_ACTION_API intptr_t DropdownNosort(intptr_t ignored);
OZ_ACTION_API intptr_t DropdownSetSel(intptr_t ignored);
// List boxes. A value prefix (fetched String) and explicit value names exclude each other:
// whichever comes second fails with 1132.
OZ_ACTION_API intptr_t ListboxValueprefix(intptr_t ignored);
OZ_ACTION_API intptr_t ListboxExplicit(intptr_t ignored);
OZ_ACTION_API intptr_t ListboxAdditive(intptr_t ignored);

// ---- Key names, values, action lists and strings (ozArgumentActions.cpp)

// Fetches a String that replaces the current key name. 1123 without a key-name stack.
OZ_ACTION_API intptr_t SetKeyname(intptr_t ignored);
// Push a Value: the token's number (1118 for another token) / a fetched String / a deletion.
// 1124 when the value refuses it, 1007 when it cannot be pushed.
OZ_ACTION_API intptr_t ValueNumeric(intptr_t token);
OZ_ACTION_API intptr_t ValueString(intptr_t ignored);
OZ_ACTION_API intptr_t ValueDelete(intptr_t ignored);
// Pushes a new, empty Actionlist and opens a key scope, so that a KEYNAME inside the list
// applies to the items after it. 1007.
OZ_ACTION_API intptr_t BeginActionlist(intptr_t ignored);
// Closes the key scope; the list stays on the argument stack for the action that takes it.
OZ_ACTION_API intptr_t EndActionlist(intptr_t ignored);
// Fetches a Value and a String (the value name) and appends an item writing them to the key of
// the current key name (bound as EndPart binds) to the Actionlist then on top, which stays
// there. 1133 / 1134 without an Actionlist on top, 1117 when the item cannot be created, 1125
// when the list cannot grow, 1112 when no key is bound (the item stays in the list).
OZ_ACTION_API intptr_t ActionlistValue(intptr_t ignored);
// Token: a text (type 1 or 2, else 1128); pushes a String copy of its text.
OZ_ACTION_API intptr_t SaveString(intptr_t token);
// Token: any; pushes a String copy of its source text. Fails without a number when the token
// has none.
OZ_ACTION_API intptr_t SaveMorphString(intptr_t token);
// Token: a string reference (type 9); upper-cases the name in the token in place and pushes a
// String copy of its [strings] text. 1129 for another token or a name not in [strings].
OZ_ACTION_API intptr_t SaveStringFromName(intptr_t token);

// ---- What XML templates have beyond the template language (ozPartActions.cpp,
// ozPartSettingActions.cpp, ozArgumentActions.cpp). The ADM grammar calls none of these.
//
// A 64-bit number comes as a fetched String holding its unsigned decimal digits (the
// attribute text as written, up to 18446744073709551615): a token holds 32 bits only. Any
// other text reports 1118 described by the text.

// Creates a multi-line text part (ozADMMultiText, a REG_MULTI_SZ) as CreateEdittext creates
// an edit text; EndPart binds it.
OZ_ACTION_API intptr_t CreateMultitext(intptr_t ignored);
// Token: a number (1118 otherwise), the longest string / the most strings the part's editors
// accept (0 for no limit).
OZ_ACTION_API intptr_t MultitextMaxlen(intptr_t token);
OZ_ACTION_API intptr_t MultitextMaxstrings(intptr_t token);
// Makes the current numeric part a 64-bit one writing a REG_QWORD.
OZ_ACTION_API intptr_t NumericQword(intptr_t ignored);
// As NumericDefault, NumericMin and NumericMax for a 64-bit number fetched as a String.
OZ_ACTION_API intptr_t NumericQwordDefault(intptr_t ignored);
OZ_ACTION_API intptr_t NumericQwordMin(intptr_t ignored);
OZ_ACTION_API intptr_t NumericQwordMax(intptr_t ignored);
// Pushes a Value holding a 64-bit number (a REG_QWORD) fetched as a String; 1124 / 1007 as
// ValueNumeric.
OZ_ACTION_API intptr_t ValueQword(intptr_t ignored);
