#include "ozRegOutputFile.h"

ozRegOutputFile::~ozRegOutputFile()
{
    Abandon();
}

bool ozRegOutputFile::Open(const std::string& path, std::string& problem)
{
    Abandon();
    m_path = path;
    m_file = std::make_unique<ozReplacementFile>(path);
    std::string error;
    if (!m_file->Open(error)) {
        problem = path + ": " + error;
        m_file.reset();
        return false;
    }
    if (!m_file->Write("\xFF\xFE", error) ||
        !Write(ozRegAscii("Windows Registry Editor Version 5.00\r\n\r\n"), problem)) {
        problem = path + ": cannot write the file";
        Abandon();
        return false;
    }
    return true;
}

bool ozRegOutputFile::Write(const ozWideString& text, std::string& problem)
{
    if (!IsOpen()) {
        problem = "no file is open for writing";
        return false;
    }
    std::string error;
    if (!m_file->Write(ozRegUtf16Bytes(text), error)) {
        problem = m_path + ": " + error;
        return false;
    }
    return true;
}

void ozRegOutputFile::Abandon()
{
    m_file.reset();  // the temporary file goes with it
}
