// The command line of the desktop program ozadm-gui: the files to open and how to show them.
// docs/linux-desktop.md describes it.
#pragma once

#include <string>
#include <vector>

#include "ozDesktopDocument.h"

struct ozDesktopOptions {
    ozDesktopFiles files;
    std::string language;  // en or de; empty: from the system's locale
    // The language folder ADMX templates take their texts from first ("de-DE"); empty: the
    // user's interface language.
    std::string templateLanguage;
    int displayMode = 0;  // 0 the policy view, 1 the registry view, 2 the grid
    bool templateEditing = false;
    bool help = false;
};

// Reads the arguments after the program's name. A file named without an option opens by its
// kind (ozOpenKind): templates are added, a profile file or a folder names the profiles. False,
// with error naming the argument, for an unknown option, a missing or bad value, a file of no
// known kind, or profiles named twice.
bool ozReadDesktopOptions(const std::vector<std::string>& args, ozDesktopOptions& options,
                          std::string& error);

// The text --help prints.
const char* ozDesktopHelp();
