#include "ozTreeDescription.h"

#include <algorithm>

#include "core/adm/ozADMCheckBox.h"
#include "core/adm/ozADMComboBox.h"
#include "core/adm/ozADMDropdownList.h"
#include "core/adm/ozADMListBox.h"
#include "core/adm/ozADMNumeric.h"
#include "core/adm/ozADMPolicy.h"
#include "core/adm/ozADMRoot.h"
#include "core/adm/ozADMTree.h"
#include "core/registry/ozRegTree.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozRootKey.h"
#include "core/registry/ozSubKey.h"

namespace {

std::string Text(const char* text)
{
    return text != nullptr ? "\"" + std::string(text) + "\"" : "none";
}

std::string Flag(bool flag)
{
    return flag ? "yes" : "no";
}

std::string Key(ozSubKey* key)
{
    return key != nullptr ? std::to_string(key->Root()) + ":" + key->KeyPath() : "none";
}

std::string Value(const ozADMValue& value)
{
    switch (value.Type()) {
        case ozADMValue::ValueDelete:
            return "DELETE";
        case ozADMValue::ValueNumeric:
            return "NUMERIC " + std::to_string(static_cast<unsigned long>(value));
        case ozADMValue::ValueString:
            return "STRING " + Text(static_cast<const char*>(value));
        default:
            return "empty";
    }
}

class Description {
public:
    std::vector<std::string> lines;

    void Add(int depth, const std::string& line)
    {
        lines.push_back(std::string(depth * 2, ' ') + line);
    }

    void ActionList(int depth, const char* title, const ozADMActionList* list)
    {
        if (list == nullptr)
            return;
        Add(depth, std::string(title) + " " + std::to_string(list->Count()));
        for (int pos = 0; pos < list->Count(); ++pos) {
            const ozActionItem* item = list->At(pos);
            Add(depth + 1, "key " + Key(item->RegKey()) + " value name " + Text(item->ValueName()) +
                               " value " + Value(item->Value()));
        }
    }

    void Part(int depth, ozADMCtrl* part)
    {
        std::string line =
            "PART " + Text(part->Name()) + " type " + std::to_string(part->CtrlType());
        // A text part's key, value name and client extension are never written back.
        if (part->CtrlType() != CtrlText)
            line += " key " + Key(part->Key()) + " value name " + Text(part->ValueName()) +
                    " required " + Flag(part->Required()) + " client ext " +
                    Text(part->ClientExt());
        Add(depth, line);
        ++depth;
        switch (part->CtrlType()) {
            case CtrlCheckBox: {
                auto* box = static_cast<ozADMCheckBox*>(part);
                Add(depth, "default " + Flag(box->Default()) + " on " + Value(box->ValueOn()) +
                               " off " + Value(box->ValueOff()));
                ActionList(depth, "on actions", box->ActionListOn());
                ActionList(depth, "off actions", box->ActionListOff());
                break;
            }
            case CtrlNumeric: {
                auto* number = static_cast<ozADMNumeric*>(part);
                Add(depth,
                    "default " +
                        (number->DefaultEmpty() ? "none" : std::to_string(number->Default())) +
                        " min " + std::to_string(number->Min()) + " max " +
                        std::to_string(number->Max()) + " spin " + std::to_string(number->Spin()) +
                        " txtconvert " + Flag(number->TxtConvert()));
                break;
            }
            case CtrlEditText:
            case CtrlComboBox: {
                auto* edit = static_cast<ozADMEditText*>(part);
                Add(depth, "default " + Text(edit->Default()) + " maxlen " +
                               std::to_string(edit->MaxLen()) + " expandable " +
                               Flag(edit->Expandable()));
                if (part->CtrlType() == CtrlComboBox) {
                    auto* combo = static_cast<ozADMComboBox*>(part);
                    Add(depth, "nosort " + Flag(combo->NoSort()));
                    for (int pos = 0; pos < combo->Suggestions().Count(); ++pos)
                        Add(depth, "suggestion " + Text(combo->Suggestions().At(pos)));
                }
                break;
            }
            case CtrlDropdownList: {
                auto* list = static_cast<ozADMDropdownList*>(part);
                Add(depth, "default " + std::to_string(list->Default()) + " nosort " +
                               Flag(list->NoSort()));
                for (int pos = 0; pos < list->ItemList().Count(); ++pos) {
                    ozADMListItem* item = list->ItemList().At(pos);
                    Add(depth, "item " + Text(item->Name()) + " value " + Value(item->Value()));
                    ActionList(depth + 1, "actions", item->ActionList());
                }
                break;
            }
            case CtrlListBox: {
                auto* list = static_cast<ozADMListBox*>(part);
                Add(depth, "prefix " + Text(list->ValuePrefix()) + " explicit " +
                               Flag(list->ExplicitValue()) + " additive " + Flag(list->Additive()));
                break;
            }
            default:
                break;
        }
    }

    void Policy(int depth, ozADMPolicy* policy)
    {
        Add(depth, "POLICY " + Text(policy->Name()) + " key " + Key(policy->RegKey()) +
                       " value name " + Text(policy->Valuename()) + " client ext " +
                       Text(policy->ClientExt()));
        ++depth;
        Add(depth,
            "explain " + Text(policy->Explain()) + " supported on " + Text(policy->SupportedOn()));
        // The on and off values mean something only with a value name.
        if (policy->Valuename() != nullptr)
            Add(depth, "on " + Value(policy->ValueOn()) + " off " + Value(policy->ValueOff()));
        ActionList(depth, "on actions", policy->ActionListOn());
        ActionList(depth, "off actions", policy->ActionListOff());
        for (int pos = 0; pos < policy->Controls().Count(); ++pos)
            Part(depth, policy->Controls().At(pos));
    }

    void Nodes(int depth, ozTreeNode* first)
    {
        for (ozTreeNode* node = first; node != nullptr; node = node->Next()) {
            auto* templateNode = static_cast<ozADMNode*>(node);
            switch (templateNode->NodeType()) {
                case NodeRoot:
                    Add(depth, "CLASS " + Text(templateNode->Name()) + " type " +
                                   std::to_string(static_cast<ozADMRoot*>(node)->RootType()));
                    break;
                case NodeCategory:
                    Add(depth, "CATEGORY " + Text(templateNode->Name()));
                    break;
                case NodePolicy:
                    Policy(depth, static_cast<ozADMPolicy*>(node));
                    break;
            }
            Nodes(depth + 1, node->Down());
        }
    }
};

std::string Hex(const unsigned char* data, unsigned long size)
{
    if (data == nullptr)
        return "none";
    static const char digits[] = "0123456789ABCDEF";
    std::string hex;
    for (unsigned long at = 0; at < size; ++at) {
        hex += digits[data[at] >> 4];
        hex += digits[data[at] & 15];
    }
    return "[" + hex + "]";
}

void DescribeKeys(ozTreeNode* first, std::vector<std::string>& lines)
{
    for (ozTreeNode* node = first; node != nullptr; node = node->Next()) {
        auto* key = static_cast<ozRegKey*>(node);
        if (key->Type() == KeySub) {
            auto* subKey = static_cast<ozSubKey*>(key);
            lines.push_back("KEY " + Key(subKey) + " op " + static_cast<char>(subKey->Op()) +
                            " save " + Flag(subKey->Save()) + " adm " + Flag(subKey->ADM()) +
                            " selected " + Flag(subKey->Selected()) + " wvar " +
                            Flag(subKey->WVar()));
            const CCollection<ozRegValue>& values = subKey->Values();
            for (int pos = 0; pos < values.Count(); ++pos) {
                const ozRegValue* value = values.At(pos);
                lines.push_back(
                    "  VALUE " + Text(value->Name()) + " type " + std::to_string(value->Type()) +
                    " item " + static_cast<char>(value->RIT()) + " op " +
                    static_cast<char>(value->Op()) + " root " + std::to_string(value->Root()) +
                    " data " + Hex(value->Data(), value->Size()) + " data2 " +
                    Hex(value->Data2(), value->Size2()));
            }
        } else {
            lines.push_back("ROOT " +
                            std::to_string(ozRootNumber(static_cast<ozRootKey*>(key)->HKey())));
        }
        DescribeKeys(node->Down(), lines);
    }
}

}  // namespace

std::vector<std::string> ozDescribeRegistry(ozRegTree& tree)
{
    std::vector<std::string> lines;
    DescribeKeys(tree.Down(), lines);
    return lines;
}

std::vector<std::string> ozDescribeTree(ozADMTree& tree)
{
    Description description;
    description.Nodes(0, tree.Down());
    return std::move(description.lines);
}

std::string ozFirstDifference(const std::vector<std::string>& expected,
                              const std::vector<std::string>& actual)
{
    size_t common = std::min(expected.size(), actual.size());
    for (size_t line = 0; line < common; ++line) {
        if (expected[line] != actual[line])
            return "line " + std::to_string(line + 1) + ":\n  expected: " + expected[line] +
                   "\n  actual:   " + actual[line];
    }
    if (expected.size() != actual.size())
        return "expected " + std::to_string(expected.size()) + " lines, got " +
               std::to_string(actual.size());
    return "";
}
