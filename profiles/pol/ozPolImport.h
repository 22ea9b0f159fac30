// The importer of the Registry.pol library: the user file fills HKEY_CURRENT_USER of the user
// tree, the machine file HKEY_LOCAL_MACHINE of the machine tree (ozPolMapping tells what each
// record becomes). A file is read and checked whole before anything enters the trees, so a
// malformed file changes nothing; it gives false and a message on stderr naming the file, the
// byte offset and what is wrong. A file that does not exist, or is empty, is an empty profile.
#pragma once

#include <string>

#include "core/registry/ozRegImport.h"

struct ozPolSetting;

class ozPolImport : public ozRegImport {
public:
    ozPolImport();
    ~ozPolImport() override;

    // A null or empty file name reads nothing and succeeds.
    bool ImportUserProfile(const char* file) override;
    bool ImportMachineProfile(const char* file) override;

    // The description of the last failure ("<file>: byte <offset>: <what>" for a malformed
    // file); empty when there was none.
    const std::string& LastError() const { return m_lastError; }

private:
    bool Import(const char* file, unsigned int root);
    // Carries one setting into the tree of root; false when the model refuses it.
    bool Apply(unsigned int root, const ozPolSetting& setting);
    bool Fail(std::string message);

    std::string m_lastError;
};
