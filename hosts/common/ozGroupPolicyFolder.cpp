#include "ozGroupPolicyFolder.h"

#include <filesystem>
#include <optional>
#include <ostream>

#include "platform/ozAsciiCase.h"
#include "platform/ozReplacementFile.h"
#include "platform/ozWholeFile.h"

namespace fs = std::filesystem;

namespace {

// GPT.INI as a row of characters: single bytes, or UTF-16 units after a byte-order mark.
class IniUnits {
public:
    explicit IniUnits(std::string& bytes) : m_bytes(bytes)
    {
        if (bytes.size() >= 2 &&
            (bytes.compare(0, 2, "\xFF\xFE") == 0 || bytes.compare(0, 2, "\xFE\xFF") == 0)) {
            m_width = 2;
            m_start = 2;
            m_bigEndian = bytes[0] == '\xFE';
        }
    }
    std::size_t Count() const { return (m_bytes.size() - m_start) / m_width; }
    char16_t At(std::size_t unit) const
    {
        std::size_t at = m_start + unit * m_width;
        if (m_width == 1)
            return static_cast<unsigned char>(m_bytes[at]);
        auto byte = [&](std::size_t i) { return static_cast<unsigned char>(m_bytes[at + i]); };
        return static_cast<char16_t>(m_bigEndian ? byte(0) << 8 | byte(1) : byte(1) << 8 | byte(0));
    }
    // Replaces units [from, to) with the ASCII text.
    void Replace(std::size_t from, std::size_t to, const std::string& text)
    {
        std::string encoded;
        for (char c : text) {
            if (m_width == 2 && m_bigEndian)
                encoded += '\0';
            encoded += c;
            if (m_width == 2 && !m_bigEndian)
                encoded += '\0';
        }
        m_bytes.replace(m_start + from * m_width, (to - from) * m_width, encoded);
    }

private:
    std::string& m_bytes;
    std::size_t m_width = 1, m_start = 0;
    bool m_bigEndian = false;
};

bool IsBlank(char16_t c)
{
    return c == ' ' || c == '\t';
}

// The units [from, to) equal the ASCII name without regard to case.
bool UnitsAre(const IniUnits& units, std::size_t from, std::size_t to, std::string_view name)
{
    if (to - from != name.size())
        return false;
    std::string ascii;
    for (std::size_t i = from; i < to; ++i) {
        if (units.At(i) > 0x7F)
            return false;
        ascii += static_cast<char>(units.At(i));
    }
    return ozAsciiSameIgnoringCase(ascii, name);
}

std::size_t TrimStart(const IniUnits& units, std::size_t from, std::size_t to)
{
    while (from < to && IsBlank(units.At(from)))
        ++from;
    return from;
}

std::size_t TrimEnd(const IniUnits& units, std::size_t from, std::size_t to)
{
    while (to > from && IsBlank(units.At(to - 1)))
        --to;
    return to;
}

// The file's bytes; none when it cannot be read.
std::optional<std::string> ReadBytes(const fs::path& file)
{
    std::string bytes;
    if (!ozReadWholeFile(file.string().c_str(), bytes))
        return std::nullopt;
    return bytes;
}

// The entry of `folder` named `name` without regard to case; folder/name when there is none.
fs::path FindIgnoringCase(const fs::path& folder, const std::string& name)
{
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        if (ozAsciiSameIgnoringCase(entry->path().filename().string(), name))
            return entry->path();
    return folder / name;
}

ozStatus NotAVersion()
{
    return ozStatus::Error("the Version line does not hold a number of 32 bits");
}

}  // namespace

ozStatus ozRaiseGptVersion(std::string& bytes, bool machine, bool user)
{
    IniUnits units(bytes);
    const std::size_t count = units.Count();
    std::string lineEnd = "\r\n";  // the file's first line end, for a line added
    for (std::size_t i = 0; i < count; ++i)
        if (units.At(i) == '\r' || units.At(i) == '\n') {
            lineEnd = units.At(i) == '\n'                        ? "\n"
                      : i + 1 < count && units.At(i + 1) == '\n' ? "\r\n"
                                                                 : "\r";
            break;
        }
    std::size_t afterGeneral = std::string::npos;  // where the [General] header line ends
    bool inGeneral = false;
    for (std::size_t start = 0, next = 0; start < count; start = next) {
        std::size_t end = start;
        while (end < count && units.At(end) != '\n' && units.At(end) != '\r')
            ++end;
        next = end;
        if (next < count && units.At(next) == '\r')
            ++next;
        if (next < count && units.At(next) == '\n')
            ++next;
        std::size_t from = TrimStart(units, start, end), to = TrimEnd(units, start, end);
        if (from < to && units.At(from) == '[') {
            std::size_t close = from;
            while (close < to && units.At(close) != ']')
                ++close;
            inGeneral = UnitsAre(units, TrimStart(units, from + 1, close),
                                 TrimEnd(units, from + 1, close), "General");
            if (inGeneral && afterGeneral == std::string::npos)
                afterGeneral = next;
        } else if (inGeneral) {
            std::size_t equals = from;
            while (equals < to && units.At(equals) != '=')
                ++equals;
            if (equals < to && UnitsAre(units, from, TrimEnd(units, from, equals), "Version")) {
                std::size_t digits = TrimStart(units, equals + 1, to);
                unsigned long long version = 0;
                for (std::size_t i = digits; i < to; ++i) {
                    if (units.At(i) < '0' || units.At(i) > '9' || version > 0xFFFFFFFFull / 10)
                        return NotAVersion();
                    version = version * 10 + (units.At(i) - '0');
                }
                if (digits == to || version > 0xFFFFFFFFull)
                    return NotAVersion();
                unsigned long low = version & 0xFFFF, high = version >> 16;
                if (machine)
                    low = (low + 1) & 0xFFFF;
                if (user)
                    high = (high + 1) & 0xFFFF;
                units.Replace(digits, to, std::to_string(high << 16 | low));
                return ozStatus::Ok();
            }
        }
    }
    std::string version =
        "Version=" + std::to_string((user ? 1ul << 16 : 0ul) | (machine ? 1ul : 0ul)) + lineEnd;
    std::size_t at = afterGeneral != std::string::npos ? afterGeneral : count;
    bool lineEnded = at == 0 || units.At(at - 1) == '\n' || units.At(at - 1) == '\r';
    units.Replace(at, at,
                  (lineEnded ? "" : lineEnd) +
                      (afterGeneral != std::string::npos ? "" : "[General]" + lineEnd) + version);
    return ozStatus::Ok();
}

ozGroupPolicyFolder::ozGroupPolicyFolder(const std::string& folder) : m_folder(folder)
{
    m_machineFile = FindIgnoringCase(FindIgnoringCase(m_folder, "Machine"), "Registry.pol");
    m_userFile = FindIgnoringCase(FindIgnoringCase(m_folder, "User"), "Registry.pol");
    m_gptIni = FindIgnoringCase(m_folder, "GPT.INI");
}

bool ozGroupPolicyFolder::BeforeSave(const std::string& userTarget,
                                     const std::string& machineTarget, std::ostream& err)
{
    std::error_code error;
    if (!fs::is_directory(m_folder, error)) {
        err << "ozadm: the group-policy folder " << m_folder.string() << " does not exist\n";
        return false;
    }
    if (fs::exists(m_gptIni, error)) {
        m_gptBytes = ReadBytes(m_gptIni);
        std::string copy = m_gptBytes.value_or("");
        ozStatus raisable =
            m_gptBytes ? ozRaiseGptVersion(copy, true, true) : ozStatus::Error("it cannot be read");
        if (!raisable) {
            err << "ozadm: " << m_gptIni.string() << ": " << raisable.Message()
                << "; nothing was saved\n";
            return false;
        }
    }
    m_machineBefore = ReadBytes(m_machineFile);
    m_userBefore = ReadBytes(m_userFile);
    for (const fs::path& file : {m_machineFile, m_userFile}) {
        if ((file.string() != userTarget && file.string() != machineTarget) ||
            fs::is_directory(file.parent_path(), error))
            continue;
        if (!fs::create_directory(file.parent_path(), error)) {
            err << "ozadm: the folder " << file.parent_path().string()
                << " cannot be created: " << error.message() << '\n';
            SaveFailed();
            return false;
        }
        m_created.push_back(file.parent_path());
    }
    return true;
}

void ozGroupPolicyFolder::SaveFailed()
{
    std::error_code error;
    for (const fs::path& folder : m_created)
        fs::remove(folder, error);  // only when still empty
    m_created.clear();
}

bool ozGroupPolicyFolder::AfterSave(std::ostream& out, std::ostream& err)
{
    bool machine = ReadBytes(m_machineFile) != m_machineBefore;
    bool user = ReadBytes(m_userFile) != m_userBefore;
    if (!m_gptBytes || (!machine && !user))
        return true;
    std::string bytes = *m_gptBytes;
    ozReplacementFile file(m_gptIni.string());
    ozStatus raised = ozRaiseGptVersion(bytes, machine, user);
    if (raised)
        raised = file.Open();
    if (raised)
        raised = file.Write(bytes);
    if (raised)
        raised = file.Commit();
    if (!raised) {
        err << "ozadm: the profiles were saved, but the version in " << m_gptIni.string()
            << " cannot be raised: " << raised.Message() << '\n';
        return false;
    }
    out << "raised the "
        << (machine && user ? "machine and user versions"
            : machine       ? "machine version"
                            : "user version")
        << " in " << m_gptIni.string() << '\n';
    return true;
}
