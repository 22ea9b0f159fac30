// Fuzzes the private-profile section reader: any file, section name and buffer size gives a
// well-formed list inside the buffer, never a crash, overflow or hang.
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "ozFuzzFile.h"
#include "platform/ozPrivateProfile.h"

namespace {

// The file under test, with its name in UTF-16 for the wide reader.
struct ProfileFile : ozFuzzFile {
    ProfileFile() : ozFuzzFile("ozadm-profile-fuzz")
    {
        widePath.assign(Path().begin(), Path().end());  // the temporary folder's name is ASCII
    }
    std::u16string widePath;
};

// The list ends with an empty string inside the buffer; unless cut short (size - 2), the
// return value is where that empty string stands.
template <class C>
void CheckList(const std::vector<C>& buffer, DWORD returned)
{
    size_t at = 0;
    if (buffer.empty())
        return;
    while (buffer[at] != 0) {
        while (at < buffer.size() && buffer[at] != 0)
            ++at;
        if (++at >= buffer.size())
            std::abort();
    }
    if (returned != static_cast<DWORD>(buffer.size() - 2) && returned != at)
        std::abort();
}

}  // namespace

// Input: the buffer size, the length of the section name (0-7), the name, then the file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size)
{
    static const ProfileFile file;
    if (size < 2)
        return 0;
    DWORD bufferSize = data[0];
    size_t nameLength = std::min<size_t>(data[1] % 8, size - 2);
    std::string name(reinterpret_cast<const char*>(data + 2), nameLength);
    name = name.substr(0, name.find('\0'));
    std::ofstream(file.Path(), std::ios::binary | std::ios::trunc)
        .write(reinterpret_cast<const char*>(data + 2 + nameLength),
               static_cast<std::streamsize>(size - 2 - nameLength));

    std::vector<char> narrow(bufferSize, '#');
    CheckList(narrow, GetPrivateProfileSectionA(name.c_str(), narrow.data(), bufferSize,
                                                file.Path().c_str()));
    std::u16string wideName(name.begin(), name.end());
    std::vector<char16_t> wide(bufferSize, u'#');
    CheckList(wide, GetPrivateProfileSectionW(wideName.c_str(), wide.data(), bufferSize,
                                              file.widePath.c_str()));
    return 0;
}
