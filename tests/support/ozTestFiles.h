// Files the tests write into the temporary folder and remove again.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#if defined(_WIN32)
#include <process.h>
#define OZ_TEST_PROCESS_ID _getpid()
#else
#include <unistd.h>
#define OZ_TEST_PROCESS_ID getpid()
#endif

// An absolute path of the build machine as the test's platform opens it: under Wine the Unix
// root is the drive Z:.
inline std::string ozPlatformPath(std::string path)
{
#if defined(_WIN32)
    if (!path.empty() && path[0] == '/')
        path = "Z:" + path;
#endif
    return path;
}

// A path in the temporary folder for name, of this process alone: the test cases of one
// executable run as parallel processes.
inline std::string ozTestFilePath(const std::string& name)
{
    return (std::filesystem::temp_directory_path() /
            (std::to_string(OZ_TEST_PROCESS_ID) + "-" + name))
        .string();
}

// The bytes of a file; empty when it cannot be read.
inline std::string ozReadTestFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// A file in the temporary folder, removed when the object goes.
class ozTestFile {
public:
    explicit ozTestFile(const std::string& name, const std::string& bytes = {})
        : m_path(ozTestFilePath(name))
    {
        Write(bytes);
    }
    ~ozTestFile() { std::filesystem::remove(m_path); }
    ozTestFile(const ozTestFile&) = delete;
    ozTestFile& operator=(const ozTestFile&) = delete;

    void Write(const std::string& bytes) const
    {
        std::ofstream(m_path, std::ios::binary | std::ios::trunc) << bytes;
    }
    const char* Path() const { return m_path.c_str(); }

private:
    std::string m_path;
};

// text as UTF-16LE bytes with the byte-order mark.
inline std::string ozUtf16Bytes(const std::u16string& text)
{
    std::string bytes = "\xFF\xFE";
    for (char16_t unit : text) {
        bytes.push_back(static_cast<char>(unit & 0xFF));
        bytes.push_back(static_cast<char>(unit >> 8));
    }
    return bytes;
}
