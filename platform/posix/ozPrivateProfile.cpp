// The private-profile section reader over .ini files (rules in docs/private-profile.md).
#include "platform/ozPrivateProfile.h"

#include "ozUtf8.h"
#include "platform/ozAsciiCase.h"
#include "platform/ozWholeFile.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace {

template <class C>
bool IsBlank(C c)
{
    return c == ' ' || c == '\t' || c == '\v' || c == '\f' || c == 0x1A;
}

template <class C>
std::basic_string_view<C> Trim(std::basic_string_view<C> text)
{
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

// The text up to its first zero character: names and values end there.
template <class C>
std::basic_string_view<C> UpToZero(std::basic_string_view<C> text)
{
    return text.substr(0, std::min(text.size(), text.find(C(0))));
}

// The file's text: its bytes (plain or UTF-8 with byte-order mark) or its UTF-16 code units.
struct FileText {
    bool exists = false;
    bool fileNotFound = false;  // the file is missing from a folder that exists
    bool empty = true;
    bool wide = false;
    std::string bytes;
    std::u16string units;
};

FileText ReadFileText(const char* path)
{
    FileText file;
    struct stat info;
    bool missing = path == nullptr || stat(path, &info) != 0;
    if (missing || !S_ISREG(info.st_mode)) {
        if (missing && path != nullptr && errno == ENOENT) {
            std::error_code error;
            std::filesystem::path parent = std::filesystem::path(path).parent_path();
            file.fileNotFound = std::filesystem::is_directory(parent.empty() ? "." : parent, error);
        }
        return file;
    }
    std::string data;
    if (!ozReadWholeFile(path, data))
        return file;
    file.exists = true;
    file.empty = data.empty();
    auto starts = [&](std::string_view prefix) { return data.starts_with(prefix); };
    if (starts("\xFF\xFE") || starts("\xFE\xFF")) {
        bool little = data[0] == '\xFF';
        file.wide = true;
        const auto* bytes = reinterpret_cast<const unsigned char*>(data.data());
        // A lone last byte is a code unit of its own.
        file.units.resize((data.size() - 1) / 2);
        for (size_t unit = 0, i = 2; i < data.size(); ++unit, i += 2) {
            unsigned first = bytes[i];
            unsigned second = i + 1 < data.size() ? bytes[i + 1] : 0;
            if (i + 1 >= data.size())
                file.units[unit] = static_cast<char16_t>(first);
            else
                file.units[unit] =
                    static_cast<char16_t>(little ? first | second << 8 : first << 8 | second);
        }
    } else {
        file.bytes = starts("\xEF\xBB\xBF") ? data.substr(3) : std::move(data);
    }
    return file;
}

// The lines of a section, kept in one buffer: a section of thousands of lines costs a few
// allocations, not one per line.
template <class C>
class SectionLines {
public:
    // Room for `units` characters of lines, so that the buffer is not copied as it grows.
    void Reserve(size_t units) { m_text.reserve(units); }
    void Add(std::basic_string_view<C> line)
    {
        m_text.append(line);
        m_ends.push_back(m_text.size());
    }
    void Add(std::basic_string_view<C> name, std::basic_string_view<C> value)
    {
        m_text.append(name);
        m_text.push_back(C('='));
        m_text.append(value);
        m_ends.push_back(m_text.size());
    }
    size_t Count() const { return m_ends.size(); }
    std::basic_string_view<C> operator[](size_t i) const
    {
        size_t start = i == 0 ? 0 : m_ends[i - 1];
        return std::basic_string_view<C>(m_text).substr(start, m_ends[i] - start);
    }

private:
    std::basic_string<C> m_text;
    std::vector<size_t> m_ends;
};

// The lines of the first section whose name `matches`, as "name=value" or "name"; false when
// there is no such section. Lines before the first header form a nameless section, present
// whenever the file is not empty.
template <class C, class Match>
bool ReadSection(std::basic_string_view<C> text, bool nonEmptyFile, Match matches,
                 SectionLines<C>& lines)
{
    bool collecting = nonEmptyFile && matches(std::basic_string_view<C>());
    bool found = collecting;
    bool previousNameEmpty = false;  // the section's previous line had an empty name
    for (size_t pos = 0; pos < text.size();) {
        size_t end = pos;
        while (end < text.size() && text[end] != '\r' && text[end] != '\n')
            ++end;
        std::basic_string_view<C> line = Trim(text.substr(pos, end - pos));
        pos = end + 1;
        if (line.empty())
            continue;
        size_t close = line.rfind(C(']'));
        if (line.front() == '[' && close != std::basic_string_view<C>::npos && close > 0) {
            if (collecting)
                break;  // a later section of the same name adds nothing
            collecting = matches(UpToZero(Trim(line.substr(1, close - 1))));
            found = found || collecting;
            previousNameEmpty = false;
            continue;
        }
        if (!collecting)
            continue;
        if (line.front() == ';') {
            previousNameEmpty = false;
            continue;
        }
        size_t equals = line.find(C('='));
        if (equals == std::basic_string_view<C>::npos) {
            std::basic_string_view<C> name = UpToZero(line);
            if (!name.empty())
                lines.Add(name);
            previousNameEmpty = name.empty();
            continue;
        }
        // A line starting with '=' right after a line with an empty name is dropped.
        if (equals == 0 && previousNameEmpty)
            continue;
        std::basic_string_view<C> name = UpToZero(Trim(line.substr(0, equals)));
        lines.Add(name, UpToZero(Trim(line.substr(equals + 1))));
        previousNameEmpty = name.empty();
    }
    return found;
}

// How many bytes of UTF-8 `text` fit in `room` without splitting a character.
size_t Fitting(std::string_view text, size_t room)
{
    if (room >= text.size())
        return text.size();
    size_t back = room;
    auto continuation = [&](size_t at) {
        return (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;
    };
    while (back > 0 && room - back < 3 && continuation(back))
        --back;
    return back < room && (static_cast<unsigned char>(text[back]) & 0xC0) == 0xC0 ? back : room;
}

size_t Fitting(std::u16string_view text, size_t room)
{
    return std::min(room, text.size());
}

// Copies the lines into the buffer: each line that fits with two characters to spare, then as
// much of the next as fits, each with its terminator, then the final zero. A result that fills
// the buffer counts as cut short. The narrow form also clears the last two characters of a
// cut-short buffer and writes two zeros for an empty section.
template <class C>
DWORD CopyLines(const SectionLines<C>& lines, C* buffer, DWORD size)
{
    constexpr bool narrow = sizeof(C) == 1;
    size_t at = 0, room = size;
    bool cut = false;
    for (size_t i = 0; i < lines.Count(); ++i) {
        std::basic_string_view<C> line = lines[i];
        if (room <= 2) {
            cut = true;
            break;
        }
        size_t count = Fitting(line, room - 2);
        std::copy_n(line.data(), count, buffer + at);
        buffer[at + count] = 0;
        at += count + 1;
        room -= count + 1;
        if (count < line.size()) {
            cut = true;
            break;
        }
    }
    buffer[at] = 0;
    if (cut || at + 1 >= size) {
        if (!narrow)
            return size - 2;
        if (size < 2)
            return 0;
        std::fill(buffer + at, buffer + size, C(0));
        return size - 2;
    }
    if (narrow && at == 0)
        buffer[1] = 0;
    return static_cast<DWORD>(at);
}

template <class C>
DWORD NotFound(C* buffer, DWORD size, bool twoZeros)
{
    buffer[0] = 0;
    if (size >= 2 && twoZeros)
        buffer[1] = 0;
    return 0;
}

}  // namespace

DWORD GetPrivateProfileSectionA(const char* lpAppName, char* lpReturnedString, DWORD nSize,
                                const char* lpFileName)
{
    if (lpAppName == nullptr || lpReturnedString == nullptr || nSize == 0)
        return 0;
    FileText file = ReadFileText(lpFileName);
    if (!file.exists)
        return NotFound(lpReturnedString, nSize, true);
    SectionLines<char> lines;
    if (file.wide) {
        std::u16string want = ozDecodeUtf8(lpAppName);
        SectionLines<char16_t> wideLines;
        auto match = [&](std::u16string_view name) {
            return ozAsciiSameIgnoringCase<char16_t>(name, want);
        };
        if (!ReadSection<char16_t>(file.units, !file.empty, match, wideLines))
            return NotFound(lpReturnedString, nSize, true);
        for (size_t i = 0; i < wideLines.Count(); ++i)
            lines.Add(ozEncodeUtf8(wideLines[i]));
    } else {
        std::string_view want = lpAppName;
        auto match = [&](std::string_view name) { return ozAsciiSameIgnoringCase(name, want); };
        if (!ReadSection<char>(file.bytes, !file.empty, match, lines))
            return NotFound(lpReturnedString, nSize, true);
    }
    return CopyLines(lines, lpReturnedString, nSize);
}

DWORD GetPrivateProfileSectionW(const WCHAR* lpAppName, WCHAR* lpReturnedString, DWORD nSize,
                                const WCHAR* lpFileName)
{
    if (lpAppName == nullptr || lpReturnedString == nullptr || nSize == 0)
        return 0;
    std::string path = lpFileName == nullptr ? std::string() : ozEncodeUtf8(lpFileName);
    FileText file = ReadFileText(lpFileName == nullptr ? nullptr : path.c_str());
    if (!file.exists)
        return NotFound(lpReturnedString, nSize, file.fileNotFound);
    std::u16string_view want = lpAppName;
    auto match = [&](std::u16string_view name) { return ozAsciiSameIgnoringCase(name, want); };
    SectionLines<char16_t> lines;
    lines.Reserve(file.wide ? file.units.size() : file.bytes.size());
    if (file.wide) {
        if (!ReadSection<char16_t>(file.units, !file.empty, match, lines))
            return NotFound(lpReturnedString, nSize, true);
    } else {
        SectionLines<char> narrowLines;
        auto decoded = [&](std::string_view name) { return match(ozDecodeUtf8(name)); };
        if (!ReadSection<char>(file.bytes, !file.empty, decoded, narrowLines))
            return NotFound(lpReturnedString, nSize, true);
        for (size_t i = 0; i < narrowLines.Count(); ++i)
            lines.Add(ozDecodeUtf8(narrowLines[i]));
    }
    return CopyLines(lines, lpReturnedString, nSize);
}
