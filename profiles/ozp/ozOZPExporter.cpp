#include "ozOZPExporter.h"

#include <new>

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

bool ozOZPExporter::Fail(const std::string& error)
{
    if (m_problem.empty())
        m_problem = error;
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
    // Nothing may be thrown back across the library's interface.
    try {
        if (m_failed)
            return false;
        std::string target = file != nullptr ? file : "";
        if (m_current != nullptr && target == m_current->Target())
            return true;
        m_current = nullptr;
        if (target.empty())
            return true;
        std::unique_ptr<ozReplacementFile>& side = m_first == nullptr ? m_first : m_second;
        side = std::make_unique<ozReplacementFile>(target);
        ozStatus opened = side->Open();
        if (opened)
            opened = side->Write("OZ Registry Profile 1\n");
        if (!opened)
            return Fail(opened.Message());
        m_current = side.get();
        return true;
    } catch (const std::bad_alloc&) {
        return Fail("out of memory");
    }
}

bool ozOZPExporter::ExportKey(ozSubKey* key)
{
    // Nothing may be thrown back across the library's interface.
    try {
        if (m_failed)
            return false;
        if (m_current == nullptr)
            return true;  // a profile without file passes its keys over
        if (key == nullptr)
            return Fail("no key to write");
        std::string section = "\n[" + ozOZPRootName(key->Root()) + "\\" + key->KeyPath() + "]\n" +
                              "key op=" + static_cast<char>(key->Op()) +
                              " flags=" + KeyFlags(*key) + "\n";
        const CCollection<ozRegValue>& values = key->Values();
        for (int pos = 0; pos < values.Count(); ++pos)
            section += ValueLine(*values.At(pos)) + "\n";
        if (ozStatus written = m_current->Write(section); !written)
            return Fail(written.Message());
        return true;
    } catch (const std::bad_alloc&) {
        return Fail("out of memory");
    }
}

bool ozOZPExporter::Flush()
{
    return Complete(true);
}

bool ozOZPExporter::Complete(bool commit)
{
    if (m_completed)
        return m_inPlace;
    m_completed = true;
    m_current = nullptr;
    if (commit && !m_failed) {
        ozStatus committed = ozReplacementFile::CommitAll({m_first.get(), m_second.get()});
        m_inPlace = committed.IsOk();
        if (!m_inPlace)
            Fail(committed.Message());
    }
    m_first.reset();  // what was not committed goes with its temporary file
    m_second.reset();
    return m_inPlace;
}
