#include "ozRegREGExport.h"

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
    if (m_stage != Stage::None)
        return Fail("the machine profile is begun twice");
    m_stage = Stage::Machine;
    std::string problem;
    if (file != nullptr && *file != '\0' && !m_machineFile.Open(file, problem))
        return Fail(problem);
    return true;
}

bool ozRegREGExport::BeginUserProfile(const char* file)
{
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
    std::string problem;
    if (!m_userFile.Open(file, problem))
        return Fail(problem);
    return true;
}

bool ozRegREGExport::ExportKey(ozSubKey* key)
{
    if (key == nullptr)
        return Fail("no key to write");
    if (m_stage != Stage::Machine && m_stage != Stage::User)
        return Fail("a key is written while no file is open");
    ozRegOutputFile& file = m_stage == Stage::Machine ? m_machineFile : UserFile();
    if (!file.IsOpen())
        return true;  // a profile without file passes its keys over
    ozWideString text;
    std::string problem;
    if (!ozRegFormatKey(*key, text, problem))
        return Fail(problem);
    return file.Write(text, problem) || Fail(problem);
}

bool ozRegREGExport::Flush()
{
    m_stage = Stage::Done;
    std::string problem;
    bool inPlace =
        !m_failed && ozReplacementFile::CommitAll(
                         {m_machineFile.Replacement(), m_userFile.Replacement()}, problem);
    m_machineFile.Abandon();
    m_userFile.Abandon();
    if (!inPlace && !m_failed)
        Fail(problem);
    return inPlace;
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
