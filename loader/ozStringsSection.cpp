#include "ozStringsSection.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <new>
#include <string>
#include <system_error>
#include <vector>

#include "platform/ozPrivateProfile.h"
#include "platform/ozTextConversion.h"

namespace {

ozStatus CannotOpen(const char* file)
{
    return ozStatus::Error(std::string("cannot open \"") + (file != nullptr ? file : "") + "\"",
                           StringsErrorCannotOpen);
}

ozStatus OutOfMemory()
{
    return ozStatus::Error("out of memory", StringsErrorOutOfMemory);
}

}  // namespace

ozStatus ozReadStringsSection(const char* file, ozStringTable& table)
{
    std::unique_ptr<FILE, int (*)(FILE*)> stream(file != nullptr ? std::fopen(file, "rb") : nullptr,
                                                 std::fclose);
    if (stream == nullptr)
        return CannotOpen(file);
    unsigned char mark[2] = {0, 0};
    bool unicode = std::fread(mark, 1, 2, stream.get()) == 2 && mark[0] >= 0xFE && mark[1] >= 0xFE;
    if (std::fseek(stream.get(), 0, SEEK_END) != 0)
        return CannotOpen(file);
    long size = std::ftell(stream.get());
    stream.reset();
    // The section cannot hold more characters than the file; two more for the terminators.
    if (size < 0 || size > 0x7FFFFFF0)
        return CannotOpen(file);
    DWORD capacity = static_cast<DWORD>(size) + 2;

    try {
        // The section reader looks for a name without folder in the system's folder, not in
        // the working folder the template was opened from.
        std::error_code error;
        std::string path = std::filesystem::absolute(file, error).string();
        if (error)
            path = file;
        file = path.c_str();
        std::string lines;
        if (unicode) {
            // Not cleared first: the reader writes the lines and their terminators.
            std::unique_ptr<WCHAR[]> buffer(new WCHAR[capacity]);
            std::basic_string<WCHAR> section = ozWideText("strings");
            std::basic_string<WCHAR> wideFile = ozWideText(file);
            DWORD length = GetPrivateProfileSectionW(section.c_str(), buffer.get(), capacity,
                                                     wideFile.c_str());
            lines = ozNarrowText(buffer.get(), static_cast<size_t>(length) + 1);
        } else {
            std::unique_ptr<char[]> buffer(new char[capacity]);
            DWORD length = GetPrivateProfileSectionA("strings", buffer.get(), capacity, file);
            lines.assign(buffer.get(), static_cast<size_t>(length) + 1);
        }
        lines.push_back('\0');  // the list always ends in an empty line
        if (!table.AddSection(lines.c_str()))
            return OutOfMemory();
    } catch (const std::bad_alloc&) {
        return OutOfMemory();
    }
    return ozStatus::Ok();
}
