#include "ozOZPExporter.h"

#include <cstdio>
#include <filesystem>
#include <system_error>
#if defined(_WIN32)
#include <process.h>
#define OZ_PROCESS_ID _getpid()
#else
#include <unistd.h>
#define OZ_PROCESS_ID getpid()
#endif

#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "ozOZPText.h"

namespace {

std::string KeyFlags(const ozSubKey& key)
{
    std::string flags;
    auto add = [&](bool set, const char* name) {
        if (set)
            flags += (flags.empty() ? "" : ",") + std::string(name);
    };
    add(key.Save(), "save");
    add(key.ADM(), "adm");
    add(key.Selected(), "selected");
    add(key.WVar(), "wvar");
    return flags;
}

std::string ValueLine(const ozRegValue& value)
{
    std::string line = "value " + ozOZPQuote(value.Name() != nullptr ? value.Name() : "") +
                       " type=" + std::to_string(value.Type()) +
                       " item=" + static_cast<char>(value.RIT()) +
                       " op=" + static_cast<char>(value.Op()) +
                       " data=" + ozOZPFormatDatum(value.Data(), value.Size(), value.Type());
    if (value.Data2() != nullptr)
        line += " data2=" + ozOZPFormatDatum(value.Data2(), value.Size2(), value.Type());
    return line;
}

}  // namespace

ozOZPExporter::~ozOZPExporter()
{
    if (!Flush())
        std::fprintf(stderr, "ozRegOZP: the profile %s could not be completed\n", m_target.c_str());
}

bool ozOZPExporter::BeginMachineProfile(const char* file)
{
    return Begin(file);
}

bool ozOZPExporter::BeginUserProfile(const char* file)
{
    return Begin(file);
}

bool ozOZPExporter::Begin(const char* file)
{
    std::string target = file != nullptr ? file : "";
    if (m_stream != nullptr && target == m_target)
        return true;
    if (!Flush())
        return false;
    if (target.empty())
        return true;
    // The last profile is put in place only when the exporter is given back, too late to
    // report a failure: what can be known now is checked now.
    std::error_code error;
    if (std::filesystem::is_directory(target, error))
        return false;
    m_target = target;
    m_temporary = target + "." + std::to_string(OZ_PROCESS_ID) + ".saving";
    m_stream = std::fopen(m_temporary.c_str(), "wb");
    if (m_stream == nullptr)
        return false;
    if (std::fputs("OZ Registry Profile 1\n", m_stream) == EOF) {
        Abandon();
        return false;
    }
    return true;
}

bool ozOZPExporter::ExportKey(ozSubKey* key)
{
    if (m_stream == nullptr)
        return m_target.empty();  // a profile without file passes its keys over
    if (key == nullptr) {
        Abandon();
        return false;
    }
    std::string section = "\n[" + ozOZPRootName(key->Root()) + "\\" + key->KeyPath() + "]\n" +
                          "key op=" + static_cast<char>(key->Op()) + " flags=" + KeyFlags(*key) +
                          "\n";
    const CCollection<ozRegValue>& values = key->Values();
    for (int pos = 0; pos < values.Count(); ++pos)
        section += ValueLine(*values.At(pos)) + "\n";
    if (std::fwrite(section.data(), 1, section.size(), m_stream) != section.size()) {
        Abandon();
        return false;
    }
    return true;
}

bool ozOZPExporter::Flush()
{
    if (m_stream == nullptr)
        return m_target.empty();
    bool written = std::fflush(m_stream) == 0 && !std::ferror(m_stream);
    written = std::fclose(m_stream) == 0 && written;
    m_stream = nullptr;
    std::error_code error;
    if (written)
        std::filesystem::rename(m_temporary, m_target, error);
    if (!written || error) {
        std::filesystem::remove(m_temporary, error);
        return false;
    }
    m_target.clear();
    return true;
}

void ozOZPExporter::Abandon()
{
    if (m_stream != nullptr)
        std::fclose(m_stream);
    m_stream = nullptr;
    std::error_code error;
    std::filesystem::remove(m_temporary, error);
}
