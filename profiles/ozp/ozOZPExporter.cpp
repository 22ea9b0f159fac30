#include "ozOZPExporter.h"

#include <cstdio>

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
    Flush();
}

bool ozOZPExporter::Fail(const std::string& error)
{
    std::fprintf(stderr, "ozRegOZP: %s\n", error.c_str());
    m_file.reset();  // the previous profile stays
    m_failed = true;
    return false;
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
    if (m_file != nullptr && target == m_file->Target())
        return true;
    if (!Flush())
        return false;
    if (target.empty())
        return true;
    m_file = std::make_unique<ozReplacementFile>(target);
    std::string error;
    if (!m_file->Open(error) || !m_file->Write("OZ Registry Profile 1\n", error))
        return Fail(error);
    return true;
}

bool ozOZPExporter::ExportKey(ozSubKey* key)
{
    if (m_failed)
        return false;
    if (m_file == nullptr)
        return true;  // a profile without file passes its keys over
    if (key == nullptr)
        return Fail("no key to write");
    std::string section = "\n[" + ozOZPRootName(key->Root()) + "\\" + key->KeyPath() + "]\n" +
                          "key op=" + static_cast<char>(key->Op()) + " flags=" + KeyFlags(*key) +
                          "\n";
    const CCollection<ozRegValue>& values = key->Values();
    for (int pos = 0; pos < values.Count(); ++pos)
        section += ValueLine(*values.At(pos)) + "\n";
    std::string error;
    if (!m_file->Write(section, error))
        return Fail(error);
    return true;
}

bool ozOZPExporter::Flush()
{
    if (m_failed)
        return false;
    if (m_file == nullptr)
        return true;
    std::string error;
    if (!m_file->Commit(error))
        return Fail(error);
    m_file.reset();
    return true;
}
