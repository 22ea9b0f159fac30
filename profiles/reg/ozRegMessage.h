// How the library tells why a file could not be read: the import contract gives it
// no user interface, so the text goes to the standard error stream, where the command-line
// host shows it and tests read it.
#pragma once

#include <cstdio>
#include <string>

// Writes "ozRegREG: <text>" as one line to the standard error stream.
inline void ozRegReport(const std::string& text)
{
    std::fprintf(stderr, "ozRegREG: %s\n", text.c_str());
    std::fflush(stderr);
}
