#include "ozRegOutputFile.h"

#include <cerrno>
#include <cstring>

ozRegOutputFile::~ozRegOutputFile()
{
    Abandon();
}

bool ozRegOutputFile::Open(const std::string& path, std::string& problem)
{
    Abandon();
    m_path = path;
    m_temporaryPath = ozRegTemporaryPathFor(path);
    m_stream = std::fopen(m_temporaryPath.c_str(), "wb");
    if (m_stream == nullptr) {
        problem = path + ": cannot create the file (" + std::strerror(errno) + ")";
        return false;
    }
    if (std::fwrite("\xFF\xFE", 1, 2, m_stream) != 2 ||
        !Write(ozRegAscii("Windows Registry Editor Version 5.00\r\n\r\n"), problem)) {
        problem = path + ": cannot write the file";
        Abandon();
        return false;
    }
    return true;
}

bool ozRegOutputFile::Write(const ozWideString& text, std::string& problem)
{
    if (m_stream == nullptr) {
        problem = "no file is open for writing";
        return false;
    }
    std::string bytes = ozRegUtf16Bytes(text);
    if (std::fwrite(bytes.data(), 1, bytes.size(), m_stream) != bytes.size() ||
        std::fflush(m_stream) != 0) {
        problem = m_path + ": cannot write the file (" + std::strerror(errno) + ")";
        return false;
    }
    return true;
}

bool ozRegOutputFile::Commit(std::string& problem)
{
    if (m_stream == nullptr) {
        problem = "no file is open for writing";
        return false;
    }
    bool closed = std::fclose(m_stream) == 0;
    m_stream = nullptr;
    if (!closed) {
        problem = m_path + ": cannot complete the file (" + std::strerror(errno) + ")";
        std::remove(m_temporaryPath.c_str());
        return false;
    }
    if (!ozRegReplaceFile(m_temporaryPath, m_path, problem)) {
        problem = m_path + ": " + problem;
        std::remove(m_temporaryPath.c_str());
        return false;
    }
    return true;
}

void ozRegOutputFile::Abandon()
{
    if (m_stream == nullptr)
        return;
    std::fclose(m_stream);
    m_stream = nullptr;
    std::remove(m_temporaryPath.c_str());
}
