// The language resources of ADMX definitions, read from their ADML file: the string table
// (display names, explain texts, item names) and the presentation table (how a policy's
// elements appear as parts: labels, defaults, spin steps, suggestions).
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "ozADMXActionCalls.h"
#include "platform/ozXmlDocument.h"

class ozADMLResources {
public:
    ozADMLResources() = default;
    // The tables point into the document this object holds.
    ozADMLResources(const ozADMLResources&) = delete;
    ozADMLResources& operator=(const ozADMLResources&) = delete;

    // Reads the ADML file at path. False, with 1140 recorded through calls, for a file that
    // cannot be read or is not well-formed XML.
    bool Read(const std::string& path, ozADMXActionCalls& calls);

    const std::string& File() const { return m_file; }
    // The text of the string id, or null without one.
    const std::string* String(std::string_view id) const;
    // The presentation id, or null without one. It lives as long as this object.
    const ozXmlElement* Presentation(std::string_view id) const;

    // What a display name or explain text of the definitions says, as a model text
    // (ozADMXModelText): "$(string.ID)" is the text of ID, any other text is taken as written.
    // False, with 1142 recorded at `at`, for an id the string table lacks.
    bool Text(const std::string& reference, const ozADMXPlace& at, ozADMXActionCalls& calls,
              std::string& text) const;

private:
    std::string m_file;
    ozXmlElement m_root;
    std::unordered_map<std::string_view, const std::string*> m_strings;
    std::unordered_map<std::string_view, const ozXmlElement*> m_presentations;
};

// A text of the resources as the policy model holds template texts: each line break as the
// two characters "\n", the line-break escape of ADM [strings] that the views show as a line
// break and the ADM writer writes as it is.
std::string ozADMXModelText(std::string_view text);

// The id inside "$(kind.ID)", or an empty view when reference is not of that form.
std::string_view ozADMXReferenceId(std::string_view reference, std::string_view kind);
