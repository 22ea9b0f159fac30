// A file of the fuzz target's own in the temporary folder, for readers that take a file name;
// removed when the object goes.
#pragma once

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

class ozFuzzFile {
public:
    explicit ozFuzzFile(const char* prefix)
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / prefix).string() + "-XXXXXX";
        int descriptor = mkstemp(pattern.data());
        if (descriptor < 0)
            std::abort();
        close(descriptor);
        m_path = pattern;
    }
    ~ozFuzzFile() { std::filesystem::remove(m_path); }
    ozFuzzFile(const ozFuzzFile&) = delete;
    ozFuzzFile& operator=(const ozFuzzFile&) = delete;

    // Replaces the file's contents.
    void Write(const void* data, size_t size) const
    {
        FILE* stream = fopen(m_path.c_str(), "wb");
        if (stream == nullptr)
            std::abort();
        fwrite(data, 1, size, stream);
        fclose(stream);
    }
    const std::string& Path() const { return m_path; }

private:
    std::string m_path;
};
