// Files the tests write into the temporary folder and remove again.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>

// A file in the temporary folder, removed when the object goes.
class ozTestFile {
public:
    explicit ozTestFile(const std::string& name, const std::string& bytes = {})
        : m_path((std::filesystem::temp_directory_path() / name).string())
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
