// The exporter of the Registry.pol library: the machine tree's keys below HKEY_LOCAL_MACHINE
// go to the machine file, the user tree's keys below HKEY_CURRENT_USER to the user file (a
// file holds no root; keys below other roots have no place and are left out). Records are
// streamed to temporary files beside the targets; Complete renames both over their targets
// once the control has handed over every key, so that a failed save changes no file.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/registry/ozRegExport.h"
#include "ozPolFormat.h"
#include "platform/ozReplacementFile.h"

class ozPolExport final : public ozRegExport {
public:
    ozPolExport();
    ~ozPolExport();

    // A null or empty file name leaves that side unwritten: its keys are passed over.
    bool BeginMachineProfile(const char* file) override;
    bool BeginUserProfile(const char* file) override;
    bool ExportKey(ozSubKey* key) override;
    // Commits every side begun so far (both files complete before either replaces its
    // target). False when a side failed before or cannot be committed.
    bool Flush() override;

    // With commit, and when the save got through the user side, puts both files in place (or
    // neither, when one cannot be completed); otherwise drops them. True when the files are in
    // place. Only the first call acts; later ones repeat its result.
    bool Complete(bool commit);
    bool Completed() const { return m_completed; }
    // The first failure of the save, naming the file; empty when there was none.
    const std::string& Problem() const { return m_problem; }

private:
    bool Begin(const char* file, unsigned int root);
    bool Fail(const std::string& file, const std::string& what);

    // The side being written (null while none is, or when the side has no file).
    ozReplacementFile* m_current = nullptr;
    unsigned int m_currentRoot = 0;
    std::unique_ptr<ozReplacementFile> m_machine;
    std::unique_ptr<ozReplacementFile> m_user;
    bool m_userBegun = false;
    bool m_failed = false;
    bool m_completed = false;
    bool m_inPlace = false;
    std::string m_problem;
    // Reused for every key, so that a save allocates per record only for the record's text.
    std::vector<ozPolRecord> m_records;
    std::string m_bytes;
};
