#include "ozADMXPolicy.h"

#include <charconv>
#include <set>

#include "ozADMXLoad.h"
#include "ozActionSupport.h"
#include "ozGrammarActions.h"

// An element of the policy and the presentation element that shows it (null when none does),
// with the label the part is named by.
struct ozADMXPolicyBuilder::Part {
    const ozXmlElement& element;
    const ozXmlElement* shown;
    std::string label;
};

namespace {

// The text of a presentation element's child (<label>, <defaultValue>, <default>), or null.
const std::string* ChildText(const ozXmlElement* shown, std::string_view child)
{
    const ozXmlElement* found = shown != nullptr ? shown->Child(child) : nullptr;
    return found != nullptr ? &found->text : nullptr;
}

}  // namespace

bool ozADMXPolicyBuilder::Build(const ozXmlElement& policy, const std::vector<std::string>& path)
{
    ozADMXPlace at = Here(policy);
    for (const std::string& category : path)
        if (!m_calls.PushAndCall(category, BeginCategory, at))
            return false;
    const std::string* displayName = m_calls.Required(at, "displayName");
    const std::string* key = m_calls.Required(at, "key");
    std::string name;
    if (displayName == nullptr || key == nullptr ||
        !m_resources.Text(*displayName, at, m_calls, name) ||
        !m_calls.PushAndCall(name, BeginPolicy, at) || !m_calls.PushAndCall(*key, SetKeyname, at))
        return false;
    if (const std::string* valueName = policy.Attribute("valueName"))
        if (!m_calls.PushAndCall(*valueName, PolicyValuename, at))
            return false;
    if (const std::string* explain = policy.Attribute("explainText")) {
        std::string text;
        if (!m_resources.Text(*explain, at, m_calls, text) ||
            !m_calls.PushAndCall(text, PolicyExplain, at))
            return false;
    }
    if (const ozXmlElement* reference = policy.Child("supportedOn")) {
        std::string text;
        bool failed = false;
        if (SupportedOnText(*reference, text, failed)
                ? !m_calls.PushAndCall(text, PolicySupported, at)
                : failed)
            return false;
    }
    if (const std::string* extension = policy.Attribute("clientExtension"))
        if (!m_calls.PushAndCall(*extension, PolicyClientExt, at))
            return false;
    if (!Values(policy, {{"enabledValue", false, PolicyValueOn},
                         {"disabledValue", false, PolicyValueOff},
                         {"enabledList", true, PolicyActionlistOn},
                         {"disabledList", true, PolicyActionlistOff}}) ||
        !Parts(policy) || !m_calls.Call(EndPolicy, at))
        return false;
    for (std::size_t i = 0; i < path.size(); ++i)
        if (!m_calls.Call(EndCategory, at))
            return false;
    return true;
}

bool ozADMXPolicyBuilder::SupportedOnText(const ozXmlElement& reference, std::string& text,
                                          bool& failed)
{
    const std::string* name = reference.Attribute("ref");
    const ozXmlElement* definitions =
        m_supportedOn != nullptr ? m_supportedOn->Child("definitions") : nullptr;
    if (name == nullptr || definitions == nullptr || name->find(':') != std::string::npos)
        return false;
    for (const ozXmlElement& definition : definitions->children) {
        const std::string* definitionName = definition.Attribute("name");
        const std::string* displayName = definition.Attribute("displayName");
        if (definitionName == nullptr || *definitionName != *name || displayName == nullptr)
            continue;
        failed = !m_resources.Text(*displayName, Here(definition), m_calls, text);
        return !failed;
    }
    return false;
}

bool ozADMXPolicyBuilder::Parts(const ozXmlElement& policy)
{
    const ozXmlElement* elements = policy.Child("elements");
    auto elementOf = [&](const std::string& id) -> const ozXmlElement* {
        if (elements != nullptr)
            for (const ozXmlElement& element : elements->children)
                if (const std::string* elementId = element.Attribute("id");
                    elementId && *elementId == id)
                    return &element;
        return nullptr;
    };
    std::set<const ozXmlElement*> presented;
    if (const std::string* reference = policy.Attribute("presentation")) {
        std::string_view id = ozADMXReferenceId(*reference, "presentation");
        if (id.empty())
            return m_calls.Fail(
                ADMXErrorBadValue,
                "the presentation \"" + *reference + "\" is not of the form $(presentation.ID)",
                Here(policy));
        const ozXmlElement* presentation = m_resources.Presentation(id);
        if (presentation == nullptr)
            return m_calls.Fail(
                ADMXErrorNoPresentation,
                "the presentation \"" + std::string(id) + "\" is not in " + m_resources.File(),
                Here(policy));
        for (const ozXmlElement& shown : presentation->children) {
            if (shown.name == "text") {
                // A label alone: a text part, whose empty value name is never written.
                if (!m_calls.PushAndCall(ozADMXModelText(shown.text), CreateText, Shown(shown)) ||
                    !m_calls.PushAndCall("", PartValuename, Shown(shown)) ||
                    !m_calls.Call(EndPart, Shown(shown)))
                    return false;
                continue;
            }
            const std::string* refId = m_calls.Required(Shown(shown), "refId");
            if (refId == nullptr)
                return false;
            const ozXmlElement* element = elementOf(*refId);
            if (element == nullptr)
                return m_calls.Fail(ADMXErrorMissingReference,
                                    "the policy has no element \"" + *refId + "\"", Shown(shown));
            if (!AddPart(*element, &shown))
                return false;
            presented.insert(element);
        }
    }
    // Elements no presentation shows still write their values: they become parts named by
    // their ids, after the presented ones.
    if (elements != nullptr)
        for (const ozXmlElement& element : elements->children)
            if (presented.count(&element) == 0 && !AddPart(element, nullptr))
                return false;
    return true;
}

bool ozADMXPolicyBuilder::AddPart(const ozXmlElement& element, const ozXmlElement* shown)
{
    Part part{element, shown, {}};
    if (shown == nullptr) {
        const std::string* id = m_calls.Required(Here(element), "id");
        if (id == nullptr)
            return false;
        part.label = *id;
    } else if (const std::string* label = ChildText(shown, "label")) {
        part.label = ozADMXModelText(*label);
    } else {
        part.label = ozADMXModelText(shown->text);
    }
    const std::string& kind = element.name;
    if (kind == "boolean")
        return CheckBox(part);
    if (kind == "decimal" || kind == "longDecimal")
        return Flag(element, "storeAsText") ? NumberAsText(part)
                                            : Numeric(part, kind == "longDecimal");
    if (kind == "text")
        return Text(part);
    if (kind == "enum")
        return Dropdown(part);
    if (kind == "list")
        return ListBox(part);
    if (kind == "multiText")
        return MultiText(part);
    return m_calls.Fail(ADMXErrorBadValue, "<" + kind + "> is not an element of a policy",
                        Here(element));
}

bool ozADMXPolicyBuilder::PartSettings(const Part& part)
{
    ozADMXPlace at = Here(part.element);
    if (const std::string* key = part.element.Attribute("key"))
        if (!m_calls.PushAndCall(*key, SetKeyname, at))
            return false;
    if (const std::string* valueName = part.element.Attribute("valueName"))
        if (!m_calls.PushAndCall(*valueName, PartValuename, at))
            return false;
    if (Flag(part.element, "required") && !m_calls.Call(PartRequired, at))
        return false;
    if (const std::string* extension = part.element.Attribute("clientExtension"))
        if (!m_calls.PushAndCall(*extension, PartClientExt, at))
            return false;
    return true;
}

bool ozADMXPolicyBuilder::CheckBox(const Part& part)
{
    ozADMXPlace at = Here(part.element);
    if (!m_calls.PushAndCall(part.label, CreateCheckbox, at) || !PartSettings(part))
        return false;
    if (!Values(part.element, {{"trueValue", false, CheckboxValueOn},
                               {"falseValue", false, CheckboxValueOff},
                               {"trueList", true, CheckboxActionlistOn},
                               {"falseList", true, CheckboxActionlistOff}}))
        return false;
    if (part.shown != nullptr && Flag(*part.shown, "defaultChecked") &&
        !m_calls.Call(CheckboxChecked, Shown(*part.shown)))
        return false;
    return m_calls.Call(EndPart, at);
}

bool ozADMXPolicyBuilder::NumberAsText(const Part& part)
{
    // The number is meant to be stored as a REG_SZ text: an edit text part writes that, where
    // a numeric part always writes a REG_DWORD or REG_QWORD (docs/admx.md).
    ozADMXPlace at = Here(part.element);
    if (!m_calls.PushAndCall(part.label, CreateEdittext, at) || !PartSettings(part))
        return false;
    if (const std::string* initial =
            part.shown != nullptr ? part.shown->Attribute("defaultValue") : nullptr)
        if (!m_calls.PushAndCall(*initial, ComboboxDefault, Shown(*part.shown)))
            return false;
    return m_calls.Call(EndPart, at);
}

bool ozADMXPolicyBuilder::Numeric(const Part& part, bool qword)
{
    ozADMXPlace at = Here(part.element);
    if (!m_calls.PushAndCall(part.label, CreateNumeric, at) || !PartSettings(part) ||
        (qword && !m_calls.Call(NumericQword, at)))
        return false;
    // A 64-bit number goes to its action as text, which the action reads and checks.
    auto setNumber = [&](const ozXmlElement& holder, const char* attribute, ozEBNFAction action,
                         ozEBNFAction qwordAction, const ozADMXPlace& place,
                         const std::string& file) {
        if (holder.Attribute(attribute) == nullptr)
            return true;
        if (qword)
            return m_calls.PushAndCall(*holder.Attribute(attribute), qwordAction, place);
        uint32_t number = 0;
        return Number(holder, attribute, 0, number, file) &&
               m_calls.CallWithNumber(action, number, place);
    };
    if (!setNumber(part.element, "minValue", NumericMin, NumericQwordMin, at, m_file) ||
        !setNumber(part.element, "maxValue", NumericMax, NumericQwordMax, at, m_file))
        return false;
    if (part.shown != nullptr) {
        ozADMXPlace shownAt = Shown(*part.shown);
        if (!setNumber(*part.shown, "defaultValue", NumericDefault, NumericQwordDefault, shownAt,
                       m_resources.File()))
            return false;
        // Without a spin control the step is 0, as SPIN 0 says in an ADM template.
        uint32_t step = 0;
        bool spins = part.shown->Attribute("spin") == nullptr || Flag(*part.shown, "spin");
        if (!Number(*part.shown, "spinStep", 1, step, m_resources.File()) ||
            !m_calls.CallWithNumber(NumericSpin, spins ? step : 0, shownAt))
            return false;
    }
    return m_calls.Call(EndPart, at);
}

bool ozADMXPolicyBuilder::MultiText(const Part& part)
{
    ozADMXPlace at = Here(part.element);
    if (!m_calls.PushAndCall(part.label, CreateMultitext, at) || !PartSettings(part))
        return false;
    struct Limit {
        const char* attribute;
        ozEBNFAction action;
    } limits[] = {{"maxLength", MultitextMaxlen}, {"maxStrings", MultitextMaxstrings}};
    for (const Limit& limit : limits)
        if (part.element.Attribute(limit.attribute) != nullptr) {
            uint32_t number = 0;
            if (!Number(part.element, limit.attribute, 0, number, m_file) ||
                !m_calls.CallWithNumber(limit.action, number, at))
                return false;
        }
    return m_calls.Call(EndPart, at);
}

bool ozADMXPolicyBuilder::Text(const Part& part)
{
    ozADMXPlace at = Here(part.element);
    bool combo = part.shown != nullptr && part.shown->name == "comboBox";
    if (!m_calls.PushAndCall(part.label, combo ? CreateCombobox : CreateEdittext, at) ||
        !PartSettings(part))
        return false;
    if (part.element.Attribute("maxLength") != nullptr) {
        uint32_t length = 0;
        if (!Number(part.element, "maxLength", 0, length, m_file) ||
            !m_calls.CallWithNumber(ComboboxMaxlen, length, at))
            return false;
    }
    if (Flag(part.element, "expandable") && !m_calls.Call(ComboboxExpandable, at))
        return false;
    if (part.shown == nullptr)
        return m_calls.Call(EndPart, at);
    ozADMXPlace shownAt = Shown(*part.shown);
    if (const std::string* initial = ChildText(part.shown, combo ? "default" : "defaultValue"))
        if (!m_calls.PushAndCall(*initial, ComboboxDefault, shownAt))
            return false;
    if (combo) {
        for (const ozXmlElement& suggestion : part.shown->children)
            if (suggestion.name == "suggestion" &&
                !m_calls.PushAndCall(suggestion.text, ComboboxSuggestion, Shown(suggestion)))
                return false;
        if (Flag(*part.shown, "noSort") && !m_calls.Call(ComboboxNosort, shownAt))
            return false;
    }
    return m_calls.Call(EndPart, at);
}

bool ozADMXPolicyBuilder::Dropdown(const Part& part)
{
    ozADMXPlace at = Here(part.element);
    if (!m_calls.PushAndCall(part.label, CreateDropdown, at) || !PartSettings(part))
        return false;
    bool hasDefault = part.shown != nullptr && part.shown->Attribute("defaultItem") != nullptr;
    uint32_t defaultItem = 0;
    if (hasDefault && !Number(*part.shown, "defaultItem", 0, defaultItem, m_resources.File()))
        return false;
    if (part.shown != nullptr && Flag(*part.shown, "noSort") &&
        !m_calls.Call(DropdownNosort, Shown(*part.shown)))
        return false;
    uint32_t index = 0;
    for (const ozXmlElement& item : part.element.children) {
        if (item.name != "item")
            continue;
        ozADMXPlace itemAt = Here(item);
        const std::string* displayName = m_calls.Required(itemAt, "displayName");
        std::string name;
        if (displayName == nullptr || !m_resources.Text(*displayName, itemAt, m_calls, name) ||
            !m_calls.Push(name, itemAt))
            return false;
        const ozXmlElement* value = item.Child("value");
        if (value == nullptr)
            return m_calls.Fail(ADMXErrorMissingAttribute, "<item> has no <value>", itemAt);
        if (!PushValue(*value))
            return false;
        if (const ozXmlElement* list = item.Child("valueList"); list && !PushValueList(*list))
            return false;
        if (hasDefault && index == defaultItem && !m_calls.Call(DropdownSetSel, itemAt))
            return false;
        if (!m_calls.Call(DropdownAddItem, itemAt))
            return false;
        ++index;
    }
    return m_calls.Call(EndPart, at);
}

bool ozADMXPolicyBuilder::ListBox(const Part& part)
{
    ozADMXPlace at = Here(part.element);
    if (!m_calls.PushAndCall(part.label, CreateListbox, at) || !PartSettings(part))
        return false;
    // Explicit value names make a prefix meaningless; real templates give both, the prefix
    // empty, where ADM would refuse the pair.
    if (Flag(part.element, "explicitValue")) {
        if (!m_calls.Call(ListboxExplicit, at))
            return false;
    } else if (const std::string* prefix = part.element.Attribute("valuePrefix")) {
        if (!m_calls.PushAndCall(*prefix, ListboxValueprefix, at))
            return false;
    }
    if (Flag(part.element, "additive") && !m_calls.Call(ListboxAdditive, at))
        return false;
    return m_calls.Call(EndPart, at);
}

bool ozADMXPolicyBuilder::Values(const ozXmlElement& owner,
                                 std::initializer_list<ValueAction> actions)
{
    for (const ValueAction& each : actions)
        if (const ozXmlElement* holder = owner.Child(each.holder))
            if (!(each.list ? PushValueList(*holder) : PushValue(*holder)) ||
                !m_calls.Call(each.action, Here(*holder)))
                return false;
    return true;
}

bool ozADMXPolicyBuilder::PushValue(const ozXmlElement& holder)
{
    if (holder.children.empty())
        return m_calls.Fail(ADMXErrorMissingAttribute, "<" + holder.name + "> holds no value",
                            Here(holder));
    const ozXmlElement& value = holder.children.front();
    ozADMXPlace at = Here(value);
    if (value.name == "decimal") {
        uint32_t number = 0;
        if (m_calls.Required(at, "value") == nullptr || !Number(value, "value", 0, number, m_file))
            return false;
        return m_calls.CallWithNumber(ValueNumeric, number, at);
    }
    if (value.name == "longDecimal") {
        const std::string* number = m_calls.Required(at, "value");
        return number != nullptr && m_calls.PushAndCall(*number, ValueQword, at);
    }
    if (value.name == "string")
        return m_calls.PushAndCall(value.text, ValueString, at);
    if (value.name == "delete")
        return m_calls.Call(ValueDelete, at);
    return m_calls.Fail(ADMXErrorBadValue, "<" + value.name + "> is not a value", at);
}

bool ozADMXPolicyBuilder::PushValueList(const ozXmlElement& list)
{
    ozADMXPlace at = Here(list);
    if (!m_calls.Call(BeginActionlist, at))
        return false;
    const char* inherited = ozCurrentKeyName();
    const std::string* defaultKey = list.Attribute("defaultKey");
    std::string listKey = defaultKey != nullptr ? *defaultKey : inherited ? inherited : "";
    for (const ozXmlElement& item : list.children) {
        if (item.name != "item")
            continue;
        ozADMXPlace itemAt = Here(item);
        const std::string* key = item.Attribute("key");
        const std::string* valueName = m_calls.Required(itemAt, "valueName");
        const ozXmlElement* value = item.Child("value");
        if (valueName == nullptr)
            return false;
        if (value == nullptr)
            return m_calls.Fail(ADMXErrorMissingAttribute, "<item> has no <value>", itemAt);
        if (!m_calls.PushAndCall(key != nullptr ? *key : listKey, SetKeyname, itemAt) ||
            !m_calls.Push(*valueName, itemAt) || !PushValue(*value) ||
            !m_calls.Call(ActionlistValue, itemAt))
            return false;
    }
    return m_calls.Call(EndActionlist, at);
}

bool ozADMXPolicyBuilder::Number(const ozXmlElement& element, const char* attribute,
                                 uint32_t fallback, uint32_t& number, const std::string& file)
{
    const std::string* text = element.Attribute(attribute);
    if (text == nullptr) {
        number = fallback;
        return true;
    }
    uint64_t parsed = 0;
    const char* end = text->data() + text->size();
    auto [stop, error] = std::from_chars(text->data(), end, parsed);
    if (error != std::errc() || stop != end || text->empty() || parsed > UINT32_MAX)
        return m_calls.Fail(ADMXErrorBadValue,
                            "the " + std::string(attribute) + " \"" + *text +
                                "\" is not a number from 0 to 4294967295",
                            {file, element});
    number = static_cast<uint32_t>(parsed);
    return true;
}

bool ozADMXPolicyBuilder::Flag(const ozXmlElement& element, const char* attribute)
{
    const std::string* value = element.Attribute(attribute);
    return value != nullptr && (*value == "true" || *value == "1");
}
