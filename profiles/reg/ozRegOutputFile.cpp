#include "ozRegOutputFile.h"

#include <cerrno>

ozRegOutputFile::~ozRegOutputFile()
{
    Abandon();
}

ozStatus ozRegOutputFile::Open(const std::string& path)
{
    Abandon();
    m_path = path;
    m_file = std::make_unique<ozReplacementFile>(path);
    ozStatus status = m_file->Open();
    if (status)
        status = m_file->Write("\xFF\xFE" + ozRegUtf16Bytes(ozRegAscii(
                                                "Windows Registry Editor Version 5.00\r\n\r\n")));
    if (!status)
        Abandon();
    return status.Prefixed(path + ": ");
}

ozStatus ozRegOutputFile::Write(const ozWideString& text)
{
    if (!IsOpen())
        return ozStatus::Error("no file is open for writing", EBADF);
    return m_file->Write(ozRegUtf16Bytes(text)).Prefixed(m_path + ": ");
}

void ozRegOutputFile::Abandon()
{
    m_file.reset();  // the temporary file goes with it
}
