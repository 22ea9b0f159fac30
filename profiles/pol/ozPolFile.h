// Reading a whole Registry.pol file (they are written through ozReplacementFile).
#pragma once

#include <string>

// How reading a file went.
enum class tPOLREAD {
    Read,     // bytes holds the whole file
    Missing,  // there is no file of that name
    Failed,   // error says why
};

tPOLREAD ozPolReadFile(const char* path, std::string& bytes, std::string& error);
