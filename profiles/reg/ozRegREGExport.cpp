#include "ozRegREGExport.h"

#include <new>

#include "ozRegFileFormat.h"

bool ozRegREGExport::Fail(const std::string& problem)
{
    if (!m_failed)
        m_problem = problem;
    m_failed = true;
    return false;
}

bool ozRegREGExport::BeginMachineProfile(const char* file)
{
    // Nothing may be thrown back across the library's interface.
    try {
        if (m_stage != Stage::None)
            return Fail("the machine profile is begun twice");
        m_stage = Stage::Machine;
        if (file == nullptr || *file == '\0')
            return true;
        ozStatus opened = m_machineFile.Open(file);
        return opened || Fail(opened.Message());
    } catch (const std::bad_alloc&) {
        return Fail("out of memory");
    }
}

bool ozRegREGExport::BeginUserProfile(const char* file)
{
    // Nothing may be thrown back across the library's interface.
    try {
        if (m_stage != Stage::Machine)
            return Fail("the user profile is begun before the machine profile");
        m_stage = Stage::User;
        if (file == nullptr || *file == '\0')
            return true;
        if (m_machineFile.IsOpen() && m_machineFile.Path() == file) {
            // One file for both: the machine keys already written stay at its beginning.
            m_oneFile = true;
            return true;
        }
        ozStatus opened = m_userFile.Open(file);
        return opened || Fail(opened.Message());
    } catch (const std::bad_alloc&) {
        return Fail("out of memory");
    }
}

bool ozRegREGExport::ExportKey(ozSubKey* key)
{
    // Nothing may be thrown back across the library's interface.
    try {
        if (key == nullptr)
            return Fail("no key to write");
        if (m_stage != Stage::Machine && m_stage != Stage::User)
            return Fail("a key is written while no file is open");
        ozRegOutputFile& file = m_stage == Stage::Machine ? m_machineFile : UserFile();
        if (!file.IsOpen())
            return true;  // a profile without file passes its keys over
        ozWideString text;
        ozStatus written = ozRegFormatKey(*key, text);
        if (written)
            written = file.Write(text);
        return written || Fail(written.Message());
    } catch (const std::bad_alloc&) {
        return Fail("out of memory");
    }
}

bool ozRegREGExport::Flush()
{
    m_stage = Stage::Done;
    ozStatus committed;
    if (!m_failed)
        committed =
            ozReplacementFile::CommitAll({m_machineFile.Replacement(), m_userFile.Replacement()});
    m_machineFile.Abandon();
    m_userFile.Abandon();
    if (!committed && !m_failed)
        Fail(committed.Message());
    return committed && !m_failed;
}

bool ozRegREGExport::Complete(bool commit)
{
    if (m_completed)
        return m_inPlace;
    m_completed = true;
    m_inPlace = commit && m_stage == Stage::User && Flush();
    m_machineFile.Abandon();
    m_userFile.Abandon();
    return m_inPlace;
}
