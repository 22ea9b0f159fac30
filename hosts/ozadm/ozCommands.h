// The ozadm commands. Each takes the arguments after its name and returns the exit status:
// 0 done, 1 the work failed (told on standard error), 2 the command line cannot be used.
// Each prints its help for --help.
#pragma once

#include <string>
#include <vector>

using ozCommandArgs = std::vector<std::string>;

int ozScriptCommand(const ozCommandArgs& args);
int ozShowCommand(const ozCommandArgs& args);
int ozSetCommand(const ozCommandArgs& args);
int ozConfiguredCommand(const ozCommandArgs& args);
int ozConfiguresCommand(const ozCommandArgs& args);
int ozWriteAdmCommand(const ozCommandArgs& args);
int ozImportCommand(const ozCommandArgs& args);
int ozConvertCommand(const ozCommandArgs& args);
