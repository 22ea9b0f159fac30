// A group-policy folder as the profile commands use it (--gpo DIR): the machine profile is
// DIR/Machine/Registry.pol, the user profile DIR/User/Registry.pol, and DIR/GPT.INI, when there
// is one, holds the version clients compare before they apply the policy. Names are matched
// without regard to case, as on the servers that keep such folders; a missing one takes the
// spelling above. docs/cli.md describes the behaviour.
#pragma once

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "platform/ozStatus.h"

// Raises the version in GPT.INI's bytes: `Version` of section [General] (key and section names
// without regard to case) holds the machine version in its low 16 bits and the user version in
// its high 16 bits; each raised one grows by one (65535 wraps to 0, as 16 bits hold no more).
// Only the number's characters change: the other bytes, the line ends and the encoding (bytes,
// or UTF-16 after its byte-order mark) stay. Without a Version line one is added below
// [General] (the section is added at the end when missing), with the file's line end.
// Fails when the Version line holds no number of 32 bits.
ozStatus ozRaiseGptVersion(std::string& bytes, bool machine, bool user);

class ozGroupPolicyFolder {
public:
    // Finds the names in `folder`; nothing is read or created yet.
    explicit ozGroupPolicyFolder(const std::string& folder);

    std::string MachineFile() const { return m_machineFile.string(); }
    std::string UserFile() const { return m_userFile.string(); }

    // Before a save to userTarget and machineTarget: reads GPT.INI (when present) and checks
    // that its version can be raised, keeps the bytes of both profile files, and creates the
    // Machine and User folders that are missing where a target is the folder's own file. False,
    // told on err, when the folder does not exist or GPT.INI cannot be used; then nothing is
    // changed.
    bool BeforeSave(const std::string& userTarget, const std::string& machineTarget,
                    std::ostream& err);
    // After a save that succeeded: raises GPT.INI's machine or user version for each profile
    // file whose bytes changed (or which did not exist before), writing GPT.INI through a
    // replacement file; tells out the new version. False, told on err, when it cannot be written.
    bool AfterSave(std::ostream& out, std::ostream& err);
    // After a save that failed: removes the folders BeforeSave created.
    void SaveFailed();

private:
    std::filesystem::path m_folder;
    std::filesystem::path m_machineFile, m_userFile, m_gptIni;
    std::optional<std::string> m_machineBefore, m_userBefore;
    std::optional<std::string> m_gptBytes;
    std::vector<std::filesystem::path> m_created;
};
