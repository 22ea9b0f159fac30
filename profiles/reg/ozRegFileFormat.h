// Writing one registry key of the model as .reg text (version 5.00, CRLF line ends): its
// section, "[-KEY]" for a key whose values are to be erased, and each of its values.
#pragma once

#include <string>

#include "ozRegFileText.h"
#include "platform/ozStatus.h"

class ozSubKey;
class ozRegValue;

// Appends the text of key to out. A key with operation 'E' gets "[-KEY]" and, when it has
// values, a following "[KEY]" section with them; any other key with values or with the Save
// flag gets its "[KEY]" section (a saved key without values is kept so), and a key with
// neither appends nothing. Fails, with a message naming the key or value, when the key lies
// under a predefined key a .reg file cannot name, its path does not fit the model's path buffer
// or holds a line break, or a value has an operation the format has no form for ('A', 'L',
// 'R'); out is then unchanged.
ozStatus ozRegFormatKey(ozSubKey& key, ozWideString& out);
