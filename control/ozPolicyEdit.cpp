#include "ozPolicyEdit.h"

#include <memory>
#include <vector>

#include "CADMCtrl.h"
#include "core/adm/ozADMCheckBox.h"
#include "core/adm/ozADMComboBox.h"
#include "core/adm/ozADMDropdownList.h"
#include "core/adm/ozADMEditText.h"
#include "core/adm/ozADMListBox.h"
#include "core/adm/ozADMListItem.h"
#include "core/adm/ozADMMultiText.h"
#include "core/adm/ozADMNumeric.h"
#include "core/adm/tTreeCodeHandle.h"
#include "ozParameterText.h"
#include "platform/ozAsciiCase.h"

namespace {

std::string EscapeEntry(const char* text)
{
    std::string escaped;
    for (const char* c = text != nullptr ? text : ""; *c != '\0'; ++c) {
        escaped += *c;
        if (*c == ';')
            escaped += ';';
    }
    return escaped;
}

}  // namespace

std::vector<std::string> ozSplitListText(const std::string& text)
{
    std::vector<std::string> entries;
    std::string entry;
    for (std::size_t pos = 0; pos < text.size(); ++pos) {
        if (text[pos] != ';') {
            entry += text[pos];
        } else if (pos + 1 < text.size() && text[pos + 1] == ';') {
            entry += ';';
            ++pos;
        } else {
            if (!entry.empty())
                entries.push_back(entry);
            entry.clear();
        }
    }
    if (!entry.empty())
        entries.push_back(entry);
    return entries;
}

std::string ozJoinListText(const std::vector<std::string>& entries)
{
    std::string text;
    for (const std::string& entry : entries) {
        if (!text.empty())
            text += ';';
        text += EscapeEntry(entry.c_str());
    }
    return text;
}

namespace {

struct ListEntry {
    std::string name;
    std::string value;
};

bool ReadListEntries(const ozADMListBox& list, const std::string& text,
                     std::vector<ListEntry>& entries, std::string& why)
{
    std::vector<std::string> parts = ozSplitListText(text);
    const char* prefix = list.ValuePrefix() != nullptr ? list.ValuePrefix() : "";
    for (std::size_t i = 0; i < parts.size(); ++i) {
        ListEntry entry;
        if (list.ExplicitValue()) {
            std::size_t equals = parts[i].find('=');
            if (equals == std::string::npos || equals == 0) {
                why = "entry \"" + parts[i] +
                      "\" of a list box with value names must read "
                      "name=value";
                return false;
            }
            entry.name = parts[i].substr(0, equals);
            entry.value = parts[i].substr(equals + 1);
        } else {
            entry.name = prefix + std::to_string(i + 1);
            entry.value = parts[i];
        }
        for (const ListEntry& earlier : entries)
            if (ozAsciiSameIgnoringCase(earlier.name, entry.name)) {
                why = "the value name \"" + entry.name + "\" is given twice";
                return false;
            }
        entries.push_back(std::move(entry));
    }
    return true;
}

bool SetListBox(ozADMListBox& list, const std::string& text, std::string& why)
{
    std::vector<ListEntry> entries;
    if (!ReadListEntries(list, text, entries, why))
        return false;
    CCollection<ozADMListItem>& items = list.ClearValues();
    for (const ListEntry& entry : entries) {
        auto item = std::make_unique<ozADMListItem>();
        item->Name(entry.name.c_str());
        item->Value().SetString(entry.value.c_str());
        if (!items.Add(item.release())) {
            why = "out of memory";
            return false;
        }
    }
    return true;
}

bool SetNumeric(ozADMNumeric& numeric, const std::string& text, std::string& why)
{
    if (text.empty()) {
        numeric.Empty(true);
        return true;
    }
    std::uint64_t number = 0;
    if (!ozReadUnsigned(text, numeric.Min(), numeric.Max(), number)) {
        why = "\"" + text + "\" is not a whole number from " + std::to_string(numeric.Min()) +
              " to " + std::to_string(numeric.Max());
        return false;
    }
    numeric.Value(number);
    numeric.Empty(false);
    return true;
}

bool SetMultiText(ozADMMultiText& part, const std::string& text, std::string& why)
{
    std::vector<std::string> lines = ozSplitListText(text);
    if (part.MaxStrings() != 0 && lines.size() > part.MaxStrings()) {
        why = "the part takes at most " + std::to_string(part.MaxStrings()) + " lines, not " +
              std::to_string(lines.size());
        return false;
    }
    for (const std::string& line : lines)
        if (part.MaxLength() != 0 && line.size() > part.MaxLength()) {
            why = "the line \"" + line + "\" is longer than the part's " +
                  std::to_string(part.MaxLength()) + " characters";
            return false;
        }
    part.Lines(lines);
    return true;
}

bool SetDropdown(ozADMDropdownList& list, const std::string& text, std::string& why)
{
    if (text.empty())
        return list.DeSelect();
    const CCollection<ozADMListItem>& items = list.ItemList();
    for (int pos = 0; pos < items.Count(); ++pos) {
        const char* name = items.At(pos)->Name();
        if (name != nullptr && ozAsciiSameIgnoringCase(name, text)) {
            list.Selected(pos);
            return true;
        }
    }
    why = "the drop-down list has no item \"" + text + "\"";
    return false;
}

}  // namespace

ozADMPolicy* ozFindPolicy(tTreeCodeHandle* code, const std::string& path)
{
    if (code == nullptr || code->tree == nullptr)
        return nullptr;
    ozADMNode* node = code->tree->FindNode(path.c_str());
    if (node == nullptr || node->NodeType() != NodePolicy)
        return nullptr;
    return static_cast<ozADMPolicy*>(node);
}

const char* ozPolicyStateName(tPOLICYSTATE state)
{
    switch (state) {
        case PolicyEnabled:
            return "enabled";
        case PolicyDisabled:
            return "disabled";
        case PolicyNotConfigured:
            break;
    }
    return "notconfigured";
}

bool ozReadPolicyState(const std::string& text, tPOLICYSTATE& state)
{
    for (tPOLICYSTATE candidate : {PolicyEnabled, PolicyDisabled, PolicyNotConfigured})
        if (ozAsciiSameIgnoringCase(text, ozPolicyStateName(candidate))) {
            state = candidate;
            return true;
        }
    return false;
}

const char* ozPartTypeName(const ozADMCtrl& part)
{
    switch (part.CtrlType()) {
        case CtrlCheckBox:
            return "CHECKBOX";
        case CtrlNumeric:
            return "NUMERIC";
        case CtrlEditText:
            return "EDITTEXT";
        case CtrlComboBox:
            return "COMBOBOX";
        case CtrlText:
            return "TEXT";
        case CtrlDropdownList:
            return "DROPDOWNLIST";
        case CtrlListBox:
            return "LISTBOX";
        case CtrlMultiText:
            return "MULTITEXT";
    }
    return "PART";
}

ozADMCtrl* ozFindPart(ozADMPolicy& policy, const std::string& name)
{
    CCollection<ozADMCtrl>& parts = policy.Controls();
    for (int pos = 0; pos < parts.Count(); ++pos) {
        ozADMCtrl* part = parts.At(pos);
        if (part != nullptr && part->Name() != nullptr &&
            ozAsciiSameIgnoringCase(part->Name(), name))
            return part;
    }
    return nullptr;
}

bool ozSetPartValue(ozADMCtrl& part, const std::string& text, std::string& why)
{
    switch (part.CtrlType()) {
        case CtrlCheckBox: {
            bool checked = false;
            if (!ozReadBool(text, checked)) {
                why = "a check box takes TRUE or FALSE, not \"" + text + "\"";
                return false;
            }
            static_cast<ozADMCheckBox&>(part).Checked(checked);
            return true;
        }
        case CtrlNumeric:
            return SetNumeric(static_cast<ozADMNumeric&>(part), text, why);
        case CtrlEditText:
        case CtrlComboBox: {
            auto& edit = static_cast<ozADMEditText&>(part);
            if (edit.MaxLen() != 0 && text.size() > edit.MaxLen()) {
                why = "the text is longer than the part's " + std::to_string(edit.MaxLen()) +
                      " characters";
                return false;
            }
            edit.Value(text.c_str());
            return true;
        }
        case CtrlDropdownList:
            return SetDropdown(static_cast<ozADMDropdownList&>(part), text, why);
        case CtrlListBox:
            return SetListBox(static_cast<ozADMListBox&>(part), text, why);
        case CtrlMultiText:
            return SetMultiText(static_cast<ozADMMultiText&>(part), text, why);
        default:
            why = std::string("a ") + ozPartTypeName(part) + " part has no value to set";
            return false;
    }
}

std::string ozPartValueText(const ozADMCtrl& part)
{
    switch (part.CtrlType()) {
        case CtrlCheckBox:
            return static_cast<const ozADMCheckBox&>(part).Checked() ? "TRUE" : "FALSE";
        case CtrlNumeric: {
            const auto& numeric = static_cast<const ozADMNumeric&>(part);
            return numeric.Empty() ? "" : std::to_string(numeric.Value());
        }
        case CtrlEditText:
        case CtrlComboBox: {
            const char* value = static_cast<const ozADMEditText&>(part).Value();
            return value != nullptr ? value : "";
        }
        case CtrlDropdownList: {
            const auto& list = static_cast<const ozADMDropdownList&>(part);
            const ozADMListItem* item = list.ItemList().At(list.Selected());
            return item != nullptr && item->Name() != nullptr ? item->Name() : "";
        }
        case CtrlListBox: {
            const auto& list = static_cast<const ozADMListBox&>(part);
            std::string text;
            const CCollection<ozADMListItem>* values = list.Values();
            for (int pos = 0; values != nullptr && pos < values->Count(); ++pos) {
                const ozADMListItem* item = values->At(pos);
                if (!text.empty())
                    text += ';';
                if (list.ExplicitValue())
                    text += EscapeEntry(item->Name()) + "=";
                text += EscapeEntry(static_cast<const char*>(item->Value()));
            }
            return text;
        }
        case CtrlMultiText:
            return ozJoinListText(static_cast<const ozADMMultiText&>(part).Lines());
        default:
            return "";
    }
}

void ozMarkDocumentEdited(CADMCtrl& control)
{
    if (control.Code() != nullptr)
        control.Code()->modified = 1;
}

void ozEditPolicyState(CADMCtrl& control, ozADMPolicy& policy, tPOLICYSTATE state)
{
    policy.State(state);
    ozMarkDocumentEdited(control);
}

bool ozEditPartValue(CADMCtrl& control, ozADMCtrl& part, const std::string& text, std::string& why)
{
    if (!ozSetPartValue(part, text, why))
        return false;
    ozMarkDocumentEdited(control);
    return true;
}
