// Reading a whole file into memory: the one way the template, profile and group-policy readers
// take in a file, so that every failure is reported alike.
#pragma once

#include <string>

// Reads the file at path, its bytes as they are, into bytes. False when it cannot be opened or
// read (no such file, a folder, no right to read it, out of memory): bytes is then empty and
// error names the file and the system's reason, as in
//   cannot open "Registry.pol": No such file or directory
// With missing given, *missing tells whether the failure was that no file of that name exists.
bool ozReadWholeFile(const char* path, std::string& bytes, std::string& error,
                     bool* missing = nullptr);
