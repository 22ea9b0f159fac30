// The importer of .reg files: every key section and value of a file goes into the tree its
// predefined key selects (HKEY_CURRENT_USER the user tree, every other the machine tree),
// whichever of the two imports reads the file.
#pragma once

#include <string>

#include "core/registry/ozRegImport.h"
#include "platform/ozStatus.h"

struct ozRegFileEntry;

class ozRegREGImport final : public ozRegImport {
public:
    ozRegREGImport() = default;
    ~ozRegREGImport() override = default;
    ozRegREGImport(const ozRegREGImport&) = delete;
    ozRegREGImport& operator=(const ozRegREGImport&) = delete;

    // Both read `file` into the trees of the code object. False for a missing code object, a
    // file that cannot be read or a malformed statement; the message (on the standard error
    // stream) names the file and line. Keys and values read before a failure stay. A null or
    // empty file name reads nothing and succeeds.
    bool ImportUserProfile(const char* file) override;
    bool ImportMachineProfile(const char* file) override;

private:
    // ReadFile, with running out of memory reported as a failure.
    bool Import(const char* file);
    bool ReadFile(const char* file);
    ozStatus Apply(const ozRegFileEntry& entry);
};
