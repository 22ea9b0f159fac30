// The system's text for a Win32 error code, as the platform's message formatter gives it.
#pragma once

#include <string>

// The message for `code` without a trailing line break; for an unknown code a text naming
// the number.
std::string ozSystemMessage(unsigned long code);
