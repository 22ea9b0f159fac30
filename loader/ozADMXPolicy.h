// One ADMX policy built into the tree: its category path, key, value name, values and value
// lists, explain text, and its elements as parts in the order and with the labels and
// defaults of its presentation.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "ozADMLResources.h"
#include "ozADMXActionCalls.h"
#include "platform/ozXmlDocument.h"

class ozADMXPolicyBuilder {
public:
    // file names the definitions; supportedOn is the document's <supportedOn> element (null
    // without one). resources, calls and supportedOn must outlive the builder.
    ozADMXPolicyBuilder(const std::string& file, const ozADMLResources& resources,
                        ozADMXActionCalls& calls, const ozXmlElement* supportedOn = nullptr)
        : m_file(file), m_resources(resources), m_calls(calls), m_supportedOn(supportedOn)
    {
    }

    // Adds the policy below the categories of path (display names, outermost first) in the
    // class begun last, and moves back up to the class. False at the first failure, recorded.
    bool Build(const ozXmlElement& policy, const std::vector<std::string>& path);

private:
    struct Part;

    bool Parts(const ozXmlElement& policy);
    // The display name of the definition a policy's <supportedOn ref> names in this document;
    // false, with nothing set, for a reference into another namespace or to a definition the
    // document lacks (real templates refer to the system's own), and for a display name the
    // language file lacks (recorded).
    bool SupportedOnText(const ozXmlElement& reference, std::string& text, bool& failed);
    bool AddPart(const ozXmlElement& element, const ozXmlElement* shown);
    bool PartSettings(const Part& part);
    bool CheckBox(const Part& part);
    bool Numeric(const Part& part, bool qword);
    bool NumberAsText(const Part& part);
    bool MultiText(const Part& part);
    bool Text(const Part& part);
    bool Dropdown(const Part& part);
    bool ListBox(const Part& part);

    // A child of the owner holding a value or a value list, and the action that takes it.
    struct ValueAction {
        const char* holder;
        bool list;
        ozEBNFAction action;
    };
    // For each child of owner named by actions: pushes its value or value list and calls the
    // action.
    bool Values(const ozXmlElement& owner, std::initializer_list<ValueAction> actions);
    // Pushes the Value that the element's one child (<decimal>, <longDecimal>, <string>,
    // <delete>) means.
    bool PushValue(const ozXmlElement& holder);
    // Pushes an Actionlist of the list's <item>s, each in its own key or else the list's
    // defaultKey or else the key in force.
    bool PushValueList(const ozXmlElement& list);

    // A number attribute (decimal, at most 32 bits); fallback when absent. False, recorded
    // (1147), for any other text.
    bool Number(const ozXmlElement& element, const char* attribute, uint32_t fallback,
                uint32_t& number, const std::string& file);
    // A boolean attribute ("true" / "1"); false when absent.
    static bool Flag(const ozXmlElement& element, const char* attribute);
    ozADMXPlace Here(const ozXmlElement& element) const { return {m_file, element}; }
    ozADMXPlace Shown(const ozXmlElement& element) const { return {m_resources.File(), element}; }

    const std::string& m_file;
    const ozADMLResources& m_resources;
    ozADMXActionCalls& m_calls;
    const ozXmlElement* m_supportedOn;
};
