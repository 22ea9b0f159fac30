// Runs an ozDialog as a modal Windows dialog built in memory from its layout: a DLGTEMPLATE
// in dialog units with the "MS Shell Dlg" 8 font, the controls in tab order (tab stops on
// what takes input, WS_GROUP where a set of radio buttons starts and ends), a two-column list
// as a list view, a number as an edit with an up-down control, and the caption of a labelled
// control as a static in the front of the control's own area: at the left of a one-line
// control, at the top of a list or tree (the layouts place controls, not their labels).
// The dialog's commands go to the ozDialog; OK ends it when Accept agrees, Cancel ends it.
#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "ui/ozForm.h"
#include "ui/ozViewPlatform.h"

// The dialog template of layout, DWORD-aligned as DialogBoxIndirectParam needs it.
std::vector<DWORD> ozWin32DialogTemplate(const ozDialogTemplate& layout);

// Runs dialog modally, owned by owner (or, when a dialog is open already, by the one on top),
// with controls from resources' window classes; true when it ended with OK. Returns false at once
// when the dialog cannot be created.
bool ozWin32RunDialog(ozDialog& dialog, HWND owner, HINSTANCE resources);

// Opens dialog modeless, owned by owner, and shows it: the call returns at once, and OK and
// Cancel (the close box too) hide the window rather than end it. The dialog logic must outlive
// the window. Null when the window cannot be created.
std::unique_ptr<ozModelessDialog> ozWin32OpenModeless(ozDialog& dialog, HWND owner,
                                                      HINSTANCE resources);
