#include "ozTreeText.h"

#include "control/ozPolicyEdit.h"
#include "core/adm/ozADMCtrl.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozRootKey.h"
#include "core/registry/ozSubKey.h"
#include "ozScriptLine.h"

namespace {

std::string Indent(int depth)
{
    return std::string(static_cast<std::size_t>(depth) * 2, ' ');
}

const char* NameOf(const ozADMNode& node)
{
    return node.Name() != nullptr ? node.Name() : "";
}

void AddPolicyNodes(ozTreeNode* first, int depth, bool withParts, std::vector<std::string>& lines)
{
    for (ozTreeNode* child = first; child != nullptr; child = child->Next()) {
        auto* node = static_cast<ozADMNode*>(child);
        switch (node->NodeType()) {
            case NodeRoot:
                lines.push_back(Indent(depth) + "CLASS " + NameOf(*node));
                break;
            case NodeCategory:
                lines.push_back(Indent(depth) + "CATEGORY " + NameOf(*node));
                break;
            case NodePolicy: {
                auto* policy = static_cast<ozADMPolicy*>(node);
                lines.push_back(Indent(depth) + "POLICY " + NameOf(*node) + " = " +
                                ozPolicyStateName(policy->State()));
                const CCollection<ozADMCtrl>& parts = policy->Controls();
                for (int pos = 0; withParts && pos < parts.Count(); ++pos) {
                    const ozADMCtrl& part = *parts.At(pos);
                    std::string line = Indent(depth + 1) + "PART " +
                                       (part.Name() != nullptr ? part.Name() : "") + " " +
                                       ozPartTypeName(part);
                    if (part.CtrlType() != CtrlText)
                        line += " = " + ozQuoteScriptText(ozPartValueText(part));
                    lines.push_back(line);
                }
                break;
            }
        }
        AddPolicyNodes(node->Down(), depth + 1, withParts, lines);
    }
}

std::string ValueLine(const ozRegValue& value)
{
    std::string line = "VALUE " + ozQuoteScriptText(value.Name() != nullptr ? value.Name() : "");
    line += ' ';
    line += static_cast<char>(value.Op());
    line += " " + ozRegTypeName(value.Type()) + " " + ozQuoteScriptText(value.FormattedValue());
    if (value.GetNumValue(static_cast<tOPVALUE>(0)) == NumTwo)
        line += " " + ozQuoteScriptText(value.FormattedValue(true));
    if (value.RIT() != RitR) {
        line += " item=";
        line += static_cast<char>(value.RIT());
    }
    return line;
}

void AddKeys(ozTreeNode* first, int depth, std::vector<std::string>& lines)
{
    for (ozTreeNode* child = first; child != nullptr; child = child->Next()) {
        auto* key = static_cast<ozRegKey*>(child);
        if (key->Type() == KeyRoot) {
            lines.push_back(Indent(depth) +
                            ozRootName(ozRootNumber(static_cast<ozRootKey*>(key)->HKey())));
        } else {
            auto* sub = static_cast<ozSubKey*>(key);
            std::string line = Indent(depth) + "KEY " + (sub->Name() != nullptr ? sub->Name() : "");
            if (sub->Op() == KeyOpEraseValues)
                line += " [erase values]";
            lines.push_back(line);
            const CCollection<ozRegValue>& values = sub->Values();
            for (int pos = 0; pos < values.Count(); ++pos)
                lines.push_back(Indent(depth + 1) + ValueLine(*values.At(pos)));
        }
        AddKeys(key->Down(), depth + 1, lines);
    }
}

}  // namespace

std::vector<std::string> ozPolicyTreeLines(tTreeCodeHandle* code, bool withParts)
{
    std::vector<std::string> lines;
    if (code != nullptr && code->tree != nullptr)
        AddPolicyNodes(code->tree->Down(), 0, withParts, lines);
    return lines;
}

std::vector<std::string> ozRegistryTreeLines(tTreeCodeHandle* code)
{
    std::vector<std::string> lines;
    if (code == nullptr || code->tree == nullptr)
        return lines;
    lines.push_back("USER");
    AddKeys(code->tree->UsrTree().Down(), 1, lines);
    lines.push_back("MACHINE");
    AddKeys(code->tree->MacTree().Down(), 1, lines);
    return lines;
}

std::string ozRootName(unsigned int rootNumber)
{
    static const char* const names[] = {
        "HKEY_CLASSES_ROOT",     "HKEY_CURRENT_USER",   "HKEY_LOCAL_MACHINE", "HKEY_USERS",
        "HKEY_PERFORMANCE_DATA", "HKEY_CURRENT_CONFIG", "HKEY_DYN_DATA"};
    if (rootNumber < sizeof names / sizeof names[0])
        return names[rootNumber];
    return "ROOT" + std::to_string(rootNumber);
}

std::string ozRegTypeName(unsigned long type)
{
    switch (type) {
        case RegNone:
            return "REG_NONE";
        case RegSz:
            return "REG_SZ";
        case RegExpandSz:
            return "REG_EXPAND_SZ";
        case RegBinary:
            return "REG_BINARY";
        case RegDword:
            return "REG_DWORD";
        case RegDwordBigEndian:
            return "REG_DWORD_BIG_ENDIAN";
        case RegMultiSz:
            return "REG_MULTI_SZ";
    }
    return "TYPE" + std::to_string(type);
}
