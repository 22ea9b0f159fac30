#include "ozPolExport.h"

#include <exception>

#include "core/registry/ozSubKey.h"
#include "ozPolMapping.h"

namespace {

constexpr unsigned int kUserRoot = 1;
constexpr unsigned int kMachineRoot = 2;
// Written out whenever this much has gathered, so that memory stays small for any tree.
constexpr std::size_t kWriteThreshold = 1 << 16;

}  // namespace

ozPolExport::ozPolExport() = default;

ozPolExport::~ozPolExport() = default;

bool ozPolExport::Fail(const std::string& file, const std::string& what)
{
    if (!m_failed)
        m_problem = file.empty() ? what : file + ": " + what;
    m_failed = true;
    return false;
}

bool ozPolExport::Begin(const char* file, unsigned int root)
{
    if (m_failed)
        return false;
    // The side before is complete: what is left of it goes to its file now.
    if (m_current != nullptr && !m_bytes.empty()) {
        if (ozStatus written = m_current->Write(m_bytes); !written)
            return Fail(m_current->Target(), written.Message());
        m_bytes.clear();
    }
    m_current = nullptr;
    m_currentRoot = root;
    if (file == nullptr || *file == '\0')
        return true;  // no file for this side: its keys are passed over
    try {
        auto replacement = std::make_unique<ozReplacementFile>(file);
        if (ozStatus opened = replacement->Open(); !opened)
            return Fail(file, opened.Message());
        m_current = replacement.get();
        (root == kMachineRoot ? m_machine : m_user) = std::move(replacement);
        m_bytes = ozPolHeader();
        return true;
    } catch (const std::exception& e) {
        return Fail(file, e.what());
    }
}

bool ozPolExport::BeginMachineProfile(const char* file)
{
    return Begin(file, kMachineRoot);
}

bool ozPolExport::BeginUserProfile(const char* file)
{
    m_userBegun = true;
    return Begin(file, kUserRoot);
}

bool ozPolExport::ExportKey(ozSubKey* key)
{
    if (m_failed)
        return false;
    if (key == nullptr || m_current == nullptr || key->Root() != m_currentRoot)
        return true;
    try {
        m_records.clear();
        if (ozStatus mapped = ozPolRecordsOfKey(*key, m_records); !mapped)
            return Fail(m_current->Target(), mapped.Message());
        for (const ozPolRecord& record : m_records)
            ozAppendPolRecord(m_bytes, record);
        if (m_bytes.size() >= kWriteThreshold) {
            if (ozStatus written = m_current->Write(m_bytes); !written)
                return Fail(m_current->Target(), written.Message());
            m_bytes.clear();
        }
        return true;
    } catch (const std::exception& e) {
        return Fail(m_current->Target(), e.what());
    }
}

bool ozPolExport::Flush()
{
    if (m_failed)
        return false;
    if (m_current != nullptr && !m_bytes.empty()) {
        if (ozStatus written = m_current->Write(m_bytes); !written)
            return Fail(m_current->Target(), written.Message());
        m_bytes.clear();
    }
    if (ozStatus committed = ozReplacementFile::CommitAll({m_machine.get(), m_user.get()});
        !committed)
        return Fail("", committed.Message());
    m_current = nullptr;
    m_machine.reset();
    m_user.reset();
    return true;
}

bool ozPolExport::Complete(bool commit)
{
    if (m_completed)
        return m_inPlace;
    m_completed = true;
    m_inPlace = commit && m_userBegun && Flush();
    // Whatever was not committed is removed with its temporary file.
    m_current = nullptr;
    m_machine.reset();
    m_user.reset();
    return m_inPlace;
}
