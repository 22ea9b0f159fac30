// The control's narrow text (the ANSI code page) as COM strings and back, and its string
// arrays as VARIANTs: an empty ozStringArray becomes VT_EMPTY, any other a one-dimensional
// VT_ARRAY | VT_BSTR with lower bound 0.
#pragma once

#include <windows.h>

#include <oaidl.h>
#include <string>

#include "control/ozStringArray.h"

// The text of a BSTR (null is the empty string).
std::string ozTextOf(BSTR text);
// A new BSTR for text, or null when memory runs out; the caller frees it.
BSTR ozNewBstr(const std::string& text);
// Fills the (cleared) *result; E_OUTOFMEMORY leaves it VT_EMPTY.
HRESULT ozStringArrayVariant(const ozStringArray& strings, VARIANT* result);
