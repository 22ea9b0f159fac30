// Reading the [strings] section of a template file into the string table of the templates
// loaded, through the system's private-profile section reader.
#pragma once

#include "ozStringTable.h"
#include "platform/ozStatus.h"

// Error numbers a failed read reports (the loader's numbering).
enum : int {
    StringsErrorOutOfMemory = 1007,  // a value could not be copied
    StringsErrorCannotOpen = 1015,   // the template cannot be opened
};

// Reads the section named "strings" of `file` into table. A file whose first two bytes are
// both 0xFE or more is UTF-16 and read through the wide reader, its text converted to the narrow
// encoding; any other file through the narrow reader. Fails, with one of the numbers above as
// its code, when the file cannot be opened or memory runs out.
ozStatus ozReadStringsSection(const char* file, ozStringTable& table);
