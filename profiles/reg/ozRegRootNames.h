// The names of the predefined keys in .reg key sections, both ways.
#pragma once

#include <string>

#include "ozRegFileText.h"

// The root number (see ozRootNumber) of a predefined key's name: the long names and the short
// forms HKLM, HKCU, HKCR, HKU and HKCC, compared without regard to case. False for any other
// name.
bool ozRegRootNumber(const ozWideString& name, unsigned int& root);
// The long name of root number `root`; empty for a number no .reg file can name (4, 6 and
// anything above).
std::string ozRegRootName(unsigned int root);
