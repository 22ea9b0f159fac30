#include "ozOZPImporter.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <new>
#include <optional>
#include <vector>

#include "core/registry/ozSubKey.h"
#include "ozOZPText.h"

namespace {

const char* const Magic = "OZ Registry Profile ";
constexpr unsigned long FormatVersion = 1;

// Reads `name=` at line[pos] and moves pos past it.
bool Field(const std::string& line, size_t& pos, const char* name)
{
    std::string field = std::string(name) + "=";
    if (line.compare(pos, field.size(), field) != 0)
        return false;
    pos += field.size();
    return true;
}

// Reads the blank between two fields.
bool Blank(const std::string& line, size_t& pos)
{
    if (pos >= line.size() || line[pos] != ' ')
        return false;
    ++pos;
    return true;
}

// A single character of the given set at line[pos].
std::optional<char> Code(const std::string& line, size_t& pos, const char* allowed)
{
    if (pos >= line.size() || std::string(allowed).find(line[pos]) == std::string::npos)
        return std::nullopt;
    return line[pos++];
}

}  // namespace

bool ozOZPImporter::ImportUserProfile(const char* file)
{
    return Import(file);
}

bool ozOZPImporter::ImportMachineProfile(const char* file)
{
    return Import(file);
}

bool ozOZPImporter::Fail(const std::string& file, size_t line, const std::string& message)
{
    m_lastError = file + (line > 0 ? ":" + std::to_string(line) : "") + ": " + message;
    std::fprintf(stderr, "%s\n", m_lastError.c_str());
    return false;
}

bool ozOZPImporter::Import(const char* file)
{
    // Nothing may be thrown back across the library's interface.
    try {
        return ReadFile(file);
    } catch (const std::bad_alloc&) {
        return Fail(file != nullptr ? file : "", 0, "out of memory");
    }
}

bool ozOZPImporter::ReadFile(const char* file)
{
    m_lastError.clear();
    std::string name = file != nullptr ? file : "";
    // No file named: the control reads the user profile first, also when only a machine
    // profile is to be read.
    if (name.empty())
        return true;
    if (CodeHandle() == nullptr)
        return Fail(name, 0, "no registry trees to read into");
    std::ifstream in(name, std::ios::binary);
    if (!in)
        return Fail(name, 0, "cannot be opened");
    std::string line;
    size_t lineNumber = 0, sectionLine = 0;
    bool haveMagic = false;
    std::optional<Section> section;
    bool keyLineAllowed = false;
    auto applySection = [&]() {
        return !section || Apply(*section) ||
               Fail(name, sectionLine, "the key or one of its values cannot be created");
    };
    while (std::getline(in, line)) {
        ++lineNumber;
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (line.empty() || line[0] == ';')
            continue;
        if (!haveMagic) {
            if (line.compare(0, std::string(Magic).size(), Magic) != 0)
                return Fail(name, lineNumber, "not an OZ Registry Profile");
            std::string version = line.substr(std::string(Magic).size());
            if (version.empty() || version.size() > 9 ||
                version.find_first_not_of("0123456789") != std::string::npos)
                return Fail(name, lineNumber, "the format version is not a number");
            if (std::strtoul(version.c_str(), nullptr, 10) != FormatVersion)
                return Fail(name, lineNumber,
                            "format version " + version + " is not read by this library (" +
                                std::to_string(FormatVersion) + " is)");
            haveMagic = true;
            continue;
        }
        if (line[0] == '[') {
            if (!applySection())
                return false;
            section.emplace();
            sectionLine = lineNumber;
            if (!ReadSection(line, *section))
                return Fail(name, lineNumber, "a key section reads [ROOT\\path]");
            keyLineAllowed = true;
        } else if (line.compare(0, 4, "key ") == 0) {
            if (!keyLineAllowed)
                return Fail(name, lineNumber, "a key line belongs right after its section");
            if (!ReadKeyLine(line, *section))
                return Fail(name, lineNumber,
                            "a key line reads: key op=I|E flags=save,adm,selected,wvar");
            keyLineAllowed = false;
        } else if (line.compare(0, 6, "value ") == 0) {
            if (!section)
                return Fail(name, lineNumber, "a value before any key section");
            Value value;
            if (!ReadValueLine(line, value))
                return Fail(name, lineNumber,
                            "a value line reads: value \"name\" type=N item=r|m|f|a "
                            "op=I|D|L|A|R|C data=DATUM [data2=DATUM]");
            section->values.push_back(std::move(value));
            keyLineAllowed = false;
        } else {
            return Fail(name, lineNumber, "unknown line");
        }
    }
    if (!haveMagic)
        return Fail(name, lineNumber, "not an OZ Registry Profile (empty)");
    return applySection();
}

bool ozOZPImporter::ReadSection(const std::string& header, Section& section)
{
    size_t close = header.rfind(']');
    size_t slash = header.find('\\');
    if (close == std::string::npos || close + 1 != header.size() || slash == std::string::npos ||
        slash > close || slash + 1 == close)
        return false;
    std::optional<unsigned int> number = ozOZPRootNumber(header.substr(1, slash - 1));
    if (!number)
        return false;
    section.root = *number;
    section.path = header.substr(slash + 1, close - slash - 1);
    return true;
}

bool ozOZPImporter::ReadKeyLine(const std::string& line, Section& section)
{
    size_t pos = 4;
    std::optional<char> op;
    if (!Field(line, pos, "op") || !(op = Code(line, pos, "IE")) || !Blank(line, pos) ||
        !Field(line, pos, "flags"))
        return false;
    section.op = *op;
    std::string flags = line.substr(pos);
    size_t start = 0;
    while (start < flags.size()) {
        size_t end = flags.find(',', start);
        std::string flag = flags.substr(start, end == std::string::npos ? end : end - start);
        if (flag == "save")
            section.save = true;
        else if (flag == "adm")
            section.adm = true;
        else if (flag == "selected")
            section.selected = true;
        else if (flag == "wvar")
            section.wvar = true;
        else
            return false;
        if (end == std::string::npos)
            break;
        start = end + 1;
    }
    return true;
}

bool ozOZPImporter::ReadValueLine(const std::string& line, Value& value)
{
    size_t pos = 6;
    std::optional<std::string> name = ozOZPUnquote(line, pos);
    if (!name || !Blank(line, pos) || !Field(line, pos, "type"))
        return false;
    value.name = *name;
    size_t digits = line.find_first_not_of("0123456789", pos);
    // A registry type is 32 bits wide: at most ten digits, up to 4294967295.
    if (digits == pos || digits == std::string::npos || digits - pos > 10)
        return false;
    unsigned long long type = std::strtoull(line.c_str() + pos, nullptr, 10);
    if (type > 0xFFFFFFFFull)
        return false;
    value.type = static_cast<unsigned long>(type);
    pos = digits;
    std::optional<char> item, op;
    if (!Blank(line, pos) || !Field(line, pos, "item") || !(item = Code(line, pos, "rmfa")) ||
        !Blank(line, pos) || !Field(line, pos, "op") || !(op = Code(line, pos, "IDLARC")) ||
        !Blank(line, pos) || !Field(line, pos, "data"))
        return false;
    value.item = *item;
    value.op = *op;
    std::optional<std::vector<unsigned char>> data = ozOZPParseDatum(line, pos, &value.hasData);
    if (!data)
        return false;
    value.data = std::move(*data);
    if (pos == line.size())
        return true;
    std::optional<std::vector<unsigned char>> data2;
    if (!Blank(line, pos) || !Field(line, pos, "data2") ||
        !(data2 = ozOZPParseDatum(line, pos, &value.hasData2)) || pos != line.size())
        return false;
    value.data2 = std::move(*data2);
    return true;
}

bool ozOZPImporter::Apply(const Section& section)
{
    static const unsigned char noBytes = 0;
    auto bytes = [](const std::vector<unsigned char>& data) {
        return data.empty() ? &noBytes : data.data();
    };
    bool allMachineItems = !section.values.empty();
    for (const Value& value : section.values)
        allMachineItems = allMachineItems && value.item == RitM;
    ozSubKey* key = allMachineItems ? nullptr : _CreateKey(section.root, section.path.c_str());
    if (key == nullptr && !allMachineItems)
        return false;
    for (const Value& read : section.values) {
        ozRegValue* value = _CreateValue(section.root, section.path.c_str(), read.name.c_str(),
                                         static_cast<tREGITEMTYPE>(read.item));
        if (value == nullptr)
            return false;
        if (key == nullptr)
            key = value->SubKey();
        value->RIT(static_cast<tREGITEMTYPE>(read.item));
        value->Op(static_cast<tOPVALUE>(read.op));
        value->Type(read.type);
        if (read.hasData && !value->SetData(read.type, static_cast<unsigned long>(read.data.size()),
                                            bytes(read.data)))
            return false;
        if (read.hasData2 &&
            !value->SetData2(read.type, static_cast<unsigned long>(read.data2.size()),
                             bytes(read.data2)))
            return false;
    }
    if (key == nullptr)
        return false;
    key->Op(static_cast<tOPKEY>(section.op));
    key->Save(section.save);
    key->ADM(section.adm);
    key->Selected(section.selected);
    key->WVar(section.wvar);
    return true;
}
