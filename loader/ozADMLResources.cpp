#include "ozADMLResources.h"

#include "ozADMXLoad.h"
#include "platform/ozWholeFile.h"

namespace {

// The element path below the document element where the tables are.
const ozXmlElement* Table(const ozXmlElement& root, std::string_view name)
{
    const ozXmlElement* resources = root.Child("resources");
    return resources != nullptr ? resources->Child(name) : nullptr;
}

}  // namespace

std::string ozADMXModelText(std::string_view text)
{
    std::string escaped;
    escaped.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
            continue;
        if (text[i] == '\n')
            escaped += "\\n";
        else
            escaped += text[i];
    }
    return escaped;
}

std::string_view ozADMXReferenceId(std::string_view reference, std::string_view kind)
{
    if (reference.size() < kind.size() + 4 || reference.substr(0, 2) != "$(" ||
        reference.back() != ')' || reference.substr(2, kind.size()) != kind ||
        reference[2 + kind.size()] != '.')
        return {};
    return reference.substr(kind.size() + 3, reference.size() - kind.size() - 4);
}

bool ozADMLResources::Read(const std::string& path, ozADMXActionCalls& calls)
{
    m_file = path;
    std::string bytes;
    if (ozStatus read = ozReadWholeFile(path.c_str(), bytes); !read)
        return calls.FailDocument(read, path);
    if (ozStatus parsed = ozReadXmlDocument(bytes, m_root); !parsed)
        return calls.FailDocument(parsed, path);
    if (const ozXmlElement* strings = Table(m_root, "stringTable"))
        for (const ozXmlElement& entry : strings->children)
            if (const std::string* id = entry.Attribute("id"))
                m_strings.emplace(*id, &entry.text);
    if (const ozXmlElement* presentations = Table(m_root, "presentationTable"))
        for (const ozXmlElement& entry : presentations->children)
            if (const std::string* id = entry.Attribute("id"))
                m_presentations.emplace(*id, &entry);
    return true;
}

const std::string* ozADMLResources::String(std::string_view id) const
{
    auto found = m_strings.find(id);
    return found != m_strings.end() ? found->second : nullptr;
}

const ozXmlElement* ozADMLResources::Presentation(std::string_view id) const
{
    auto found = m_presentations.find(id);
    return found != m_presentations.end() ? found->second : nullptr;
}

bool ozADMLResources::Text(const std::string& reference, const ozADMXPlace& at,
                           ozADMXActionCalls& calls, std::string& text) const
{
    std::string_view id = ozADMXReferenceId(reference, "string");
    if (id.empty()) {
        text = ozADMXModelText(reference);
        return true;
    }
    const std::string* found = String(id);
    if (found == nullptr)
        return calls.Fail(ADMXErrorNoString,
                          "the string \"" + std::string(id) + "\" is not in " + m_file, at);
    text = ozADMXModelText(*found);
    return true;
}
