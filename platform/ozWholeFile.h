// Reading a whole file into memory: the one way the template, profile and group-policy readers
// take in a file, so that every failure is reported alike.
#pragma once

#include <string>

#include "platform/ozStatus.h"

// Reads the file at path, its bytes as they are, into bytes. Fails when it cannot be opened or
// read (no such file, a folder, no right to read it, out of memory): bytes is then empty, the
// status's code is the errno value (ENOENT when no file of that name exists) and its message
// names the file and the system's reason, as in
//   cannot open "Registry.pol": No such file or directory
ozStatus ozReadWholeFile(const char* path, std::string& bytes);
