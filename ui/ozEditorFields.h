// What the element editors check and tell alike: whole numbers as a template holds them, key
// paths a registry tree can bind, and the host's text of an editor's message.
#pragma once

#include <string>
#include <vector>

class ozADMValue;

struct ozEditorContext;

// A whole number from 0 to 4294967295 written in decimal digits only; false (number untouched)
// for anything else.
bool ozParseWholeNumber(const std::string& text, unsigned long& number);
// Whether path names a key: not empty, and no empty name in it (a leading, trailing or doubled
// backslash), which the registry model would otherwise make a key without a name of.
bool ozWellFormedKeyPath(const std::string& path);
// The host's text of message number (the control's, else the application's), arguments not yet
// filled in.
std::string ozEditorMessageText(const ozEditorContext& context, unsigned short number);

// The kind lists of a value (a policy's or check box's on and off values, a drop-down item's):
// their rows "Numeric", "String", "Delete", after "None" where a value may be left out
// (withNone); the row of a value, and its text in the value edit; and the value stored back
// from a row and the edit's text (a number checked before). A 64-bit number shows in the
// "Numeric" row and stays a 64-bit one when stored back there.
std::vector<std::string> ozValueKindRows(bool withNone);
int ozValueKindRow(const ozADMValue& value, bool withNone);
std::string ozValueKindText(const ozADMValue& value);
void ozStoreValueKind(ozADMValue& value, int row, bool withNone, const std::string& text);
