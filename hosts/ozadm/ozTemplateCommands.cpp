// The commands that work on templates: show, set, configured, configures, write-adm.
#include <iostream>

#include "control/CADMCtrl.h"
#include "control/ozPolicyEdit.h"
#include "core/adm/ozADMCtrl.h"
#include "core/adm/ozADMRegEntry.h"
#include "core/adm/ozADMValue.h"
#include "core/adm/tTreeCodeHandle.h"
#include "ozCommandSupport.h"
#include "ozCommands.h"
#include "ozHostSession.h"
#include "ozJson.h"
#include "ozScriptLine.h"
#include "ozTreeText.h"

namespace {

// The registry entries a policy configures as JSON objects, so that a program reading them
// needs no second parser: the key with its root, the value name, what is done ("set",
// "delete" or "deleteAllValues") and, for a value set, its type and data (a number for a
// REG_DWORD, else text).
std::string EntriesJson(const ozADMPolicy& policy)
{
    CCollection<ozADMRegEntry> entries;
    policy.Configures(entries);
    std::string json = "[";
    for (int i = 0; i < entries.Count(); ++i) {
        const ozADMRegEntry& entry = *entries.At(i);
        static const char* const roots[] = {"HKCR", "HKCU", "HKLM", "HKU"};
        std::string key = entry.Root() < 4 ? std::string(roots[entry.Root()]) + "\\" : "";
        key += entry.Key() != nullptr ? entry.Key() : "";
        json += std::string(i == 0 ? "" : ", ") + "{\"key\": " + ozJsonString(key);
        const ozADMValue& value = entry.Value();
        if (entry.ClearKey()) {
            json += ", \"operation\": \"deleteAllValues\"}";
            continue;
        }
        json += ", \"valueName\": " +
                ozJsonString(entry.Valuename() != nullptr ? entry.Valuename() : "");
        if (value.Type() == ozADMValue::ValueDelete) {
            json += ", \"operation\": \"delete\"}";
        } else if (value.Type() == ozADMValue::ValueNumeric) {
            json += ", \"operation\": \"set\", \"type\": \"REG_DWORD\", \"data\": " +
                    std::to_string(static_cast<unsigned long>(value)) + "}";
        } else {
            const char* text = static_cast<const char*>(value);
            json += std::string(", \"operation\": \"set\", \"type\": \"") +
                    (entry.Expand() ? "REG_EXPAND_SZ" : "REG_SZ") +
                    "\", \"data\": " + ozJsonString(text != nullptr ? text : "") + "}";
        }
    }
    return json + "]";
}

// Prepares the session and loads the templates and the profiles.
bool Open(ozHostSession& session, const ozCommandLine& line, bool skipMissingProfiles)
{
    return session.Prepare(std::cerr) &&
           ozLoadTemplates(session.Control(), line.positional, std::cerr) &&
           ozLoadProfiles(session.Control(), line.profiles, skipMissingProfiles, std::cerr);
}

std::string PartsJson(ozADMPolicy& policy)
{
    std::string json = "[";
    const CCollection<ozADMCtrl>& parts = policy.Controls();
    for (int pos = 0; pos < parts.Count(); ++pos) {
        const ozADMCtrl& part = *parts.At(pos);
        json += std::string(pos == 0 ? "" : ", ") +
                "{\"name\": " + ozJsonString(part.Name() != nullptr ? part.Name() : "") +
                ", \"type\": " + ozJsonString(ozPartTypeName(part));
        if (part.CtrlType() != CtrlText)
            json += ", \"value\": " + ozJsonString(ozPartValueText(part));
        json += "}";
    }
    return json + "]";
}

std::string NodesJson(ozTreeNode* first, bool withParts, int depth)
{
    std::string pad(static_cast<std::size_t>(depth) * 2 + 2, ' ');
    std::string json = "[";
    for (ozTreeNode* child = first; child != nullptr; child = child->Next()) {
        auto* node = static_cast<ozADMNode*>(child);
        static const char* const kinds[] = {"class", "category", "policy"};
        json += std::string(child == first ? "\n" : ",\n") + pad + "{\"kind\": \"" +
                kinds[node->NodeType()] +
                "\", \"name\": " + ozJsonString(node->Name() != nullptr ? node->Name() : "") +
                ", \"path\": " + ozJsonString(node->Path() != nullptr ? node->Path() : "");
        if (node->NodeType() == NodePolicy) {
            auto* policy = static_cast<ozADMPolicy*>(node);
            json += std::string(", \"state\": \"") + ozPolicyStateName(policy->State()) + "\"";
            if (withParts)
                json += ", \"parts\": " + PartsJson(*policy);
        }
        if (node->Down() != nullptr)
            json += ", \"children\": " + NodesJson(node->Down(), withParts, depth + 1);
        json += "}";
    }
    return json + (first != nullptr ? "\n" + pad.substr(2) + "]" : "]");
}

// "+ path" -> path and state.
void SplitConfigured(const std::string& element, std::string& path, const char*& state)
{
    state = element[0] == '+' ? "enabled" : element[0] == '-' ? "disabled" : "notconfigured";
    path = element.size() > 2 ? element.substr(2) : "";
}

std::vector<std::string> Elements(const ozStringArray& array)
{
    return array.Elements();
}

const char* kShowHelp = R"(Usage: ozadm show [options] TEMPLATE...

Loads the templates (and the profiles named) and prints the policy tree, one node per line,
two blanks of indentation per depth: CLASS name, CATEGORY name, POLICY name = state (enabled,
disabled or notconfigured).

  --parts               also print each policy's parts: PART name TYPE = "value"
  --json                print the tree as JSON)";

const char* kSetHelp = R"(Usage: ozadm set [options] TEMPLATE... EDIT... 

Loads the templates and the profiles named (a profile file that does not exist yet starts
empty), makes the edits in order, and saves the profiles.

Edits:
  --state PATH STATE        set the policy at PATH (CLASS\Category\...\Policy) to enabled,
                            disabled or notconfigured
  --part PATH PART VALUE    set the value of the policy's part PART (value forms: see
                            docs/cli.md; list box entries separated by ;)
  --reset                   reset every part to its default first)";

const char* kConfiguredHelp = R"(Usage: ozadm configured [options] TEMPLATE...

Loads the templates and the profiles named and lists the configured policies, one per line:
"+ path" enabled, "- path" disabled.

  --entries             below each policy, the registry entries it configures
  --json                print the list as JSON)";

const char* kConfiguresHelp = R"(Usage: ozadm configures [options] TEMPLATE... --policy PATH

Loads the templates and the profiles named and lists the registry entries the policy at PATH
configures in its present state, one per line ("KEY","VALUE","TYPE","DATA").

  --policy PATH         the policy (CLASS\Category\...\Policy); required
  --json                print the entries as JSON)";

const char* kWriteAdmHelp = R"(Usage: ozadm write-adm [options] TEMPLATE... --output FILE

Loads the templates and writes them back as one template file. What the
template language cannot express is written in its closest form and reported
as a warning per policy.

  --output FILE         the template file to write; required)";

}  // namespace

int ozShowCommand(const ozCommandArgs& args)
{
    ozCommandLine line;
    bool withParts = false;
    int status = ozReadCommand("show", args, line, true, tPOSITIONALS::Templates, kShowHelp,
                               [&](const std::vector<std::string>& a, std::size_t& i) {
                                   return a[i] == "--parts" && (withParts = true);
                               });
    if (status >= 0)
        return status;
    ozHostSession session(line.host, std::cerr);
    if (!Open(session, line, false))
        return 1;
    tTreeCodeHandle* code = session.Control().Code();
    if (line.json) {
        std::cout << "{\"tree\": " << NodesJson(code->tree->Down(), withParts, 0) << "}\n";
        return 0;
    }
    for (const std::string& text : ozPolicyTreeLines(code, withParts))
        std::cout << text << '\n';
    return 0;
}

int ozSetCommand(const ozCommandArgs& args)
{
    struct Edit {
        std::string path, part, value;
        bool isState;
    };
    std::vector<Edit> edits;
    bool reset = false;
    ozCommandLine line;
    int status =
        ozReadCommand("set", args, line, false, tPOSITIONALS::Templates, kSetHelp,
                      [&](const std::vector<std::string>& a, std::size_t& i) {
                          if (a[i] == "--reset")
                              return reset = true;
                          bool state = a[i] == "--state";
                          if (!state && a[i] != "--part")
                              return false;
                          std::size_t count = state ? 2 : 3;
                          if (i + count >= a.size())
                              throw ozUsageError(a[i] + (state ? " needs PATH and STATE"
                                                               : " needs PATH, PART and VALUE"));
                          Edit edit{a[i + 1], state ? "" : a[i + 2], a[i + count], state};
                          edits.push_back(edit);
                          i += count;
                          return true;
                      });
    if (status >= 0)
        return status;
    if (edits.empty() && !reset)
        return ozUsageFailure("set", "give at least one --state or --part edit", std::cerr);
    for (const Edit& edit : edits) {
        tPOLICYSTATE state = PolicyNotConfigured;
        if (edit.isState && !ozReadPolicyState(edit.value, state))
            return ozUsageFailure(
                "set",
                "STATE must be enabled, disabled or notconfigured, not \"" + edit.value + "\"",
                std::cerr);
    }
    if (line.profiles.UserTarget().empty() && line.profiles.MachineTarget().empty())
        return ozUsageFailure(
            "set", "name the profiles to save (--user, --machine, --profile, --gpo)", std::cerr);
    ozHostSession session(line.host, std::cerr);
    CADMCtrl& control = session.Control();
    // Policy edits reach the registry trees from the policy view only.
    control.DisplayMode(DisplayPolicies);
    if (!Open(session, line, true))
        return 1;
    if (reset) {
        control.Reset();
        ozMarkDocumentEdited(control);
    }
    for (const Edit& edit : edits) {
        ozADMPolicy* policy = ozFindPolicy(control.Code(), edit.path);
        if (policy == nullptr) {
            std::cerr << "ozadm set: no policy at \"" << edit.path << "\"\n";
            return 1;
        }
        if (edit.isState) {
            tPOLICYSTATE state = PolicyNotConfigured;
            ozReadPolicyState(edit.value, state);
            ozEditPolicyState(control, *policy, state);
            continue;
        }
        ozADMCtrl* part = ozFindPart(*policy, edit.part);
        std::string why;
        if (part == nullptr) {
            std::cerr << "ozadm set: the policy \"" << edit.path << "\" has no part \"" << edit.part
                      << "\"\n";
            return 1;
        }
        if (!ozEditPartValue(control, *part, edit.value, why)) {
            std::cerr << "ozadm set: part \"" << edit.part << "\" of \"" << edit.path
                      << "\": " << why << '\n';
            return 1;
        }
    }
    return ozSaveProfiles(control, line.profiles, std::cout, std::cerr) ? 0 : 1;
}

int ozConfiguredCommand(const ozCommandArgs& args)
{
    ozCommandLine line;
    bool withEntries = false;
    int status =
        ozReadCommand("configured", args, line, true, tPOSITIONALS::Templates, kConfiguredHelp,
                      [&](const std::vector<std::string>& a, std::size_t& i) {
                          return a[i] == "--entries" && (withEntries = true);
                      });
    if (status >= 0)
        return status;
    ozHostSession session(line.host, std::cerr);
    if (!Open(session, line, false))
        return 1;
    CADMCtrl& control = session.Control();
    std::vector<std::string> policies = Elements(control.ConfiguredPolicies());
    if (line.json)
        std::cout << "[";
    for (std::size_t i = 0; i < policies.size(); ++i) {
        std::string path;
        const char* state = nullptr;
        SplitConfigured(policies[i], path, state);
        std::vector<std::string> entries;
        if (withEntries && !line.json)
            entries = Elements(control.PolicyConfigures(path.c_str()));
        if (line.json) {
            std::cout << (i == 0 ? "\n" : ",\n") << "  {\"path\": " << ozJsonString(path)
                      << ", \"state\": \"" << state << "\"";
            // Every path the control lists as configured names a policy of the tree.
            if (const ozADMPolicy* policy = ozFindPolicy(control.Code(), path);
                withEntries && policy != nullptr)
                std::cout << ", \"entries\": " << EntriesJson(*policy);
            std::cout << "}";
            continue;
        }
        std::cout << policies[i] << '\n';
        for (const std::string& entry : entries)
            std::cout << "    " << entry << '\n';
    }
    if (line.json)
        std::cout << (policies.empty() ? "]\n" : "\n]\n");
    return 0;
}

int ozConfiguresCommand(const ozCommandArgs& args)
{
    ozCommandLine line;
    std::string path;
    int status =
        ozReadCommand("configures", args, line, true, tPOSITIONALS::Templates, kConfiguresHelp,
                      [&](const std::vector<std::string>& a, std::size_t& i) {
                          if (a[i] != "--policy")
                              return false;
                          path = ozOptionValue(a, i);
                          return true;
                      });
    if (status >= 0)
        return status;
    if (path.empty())
        return ozUsageFailure("configures", "name the policy with --policy PATH", std::cerr);
    ozHostSession session(line.host, std::cerr);
    if (!Open(session, line, false))
        return 1;
    ozADMPolicy* policy = ozFindPolicy(session.Control().Code(), path);
    if (policy == nullptr) {
        std::cerr << "ozadm configures: no policy at \"" << path << "\"\n";
        return 1;
    }
    std::vector<std::string> entries = Elements(session.Control().PolicyConfigures(path.c_str()));
    if (line.json) {
        std::cout << "{\"policy\": " << ozJsonString(path) << ", \"state\": \""
                  << ozPolicyStateName(policy->State())
                  << "\", \"entries\": " << EntriesJson(*policy) << "}\n";
        return 0;
    }
    for (const std::string& entry : entries)
        std::cout << entry << '\n';
    return 0;
}

int ozWriteAdmCommand(const ozCommandArgs& args)
{
    ozCommandLine line;
    std::string output;
    int status =
        ozReadCommand("write-adm", args, line, false, tPOSITIONALS::Templates, kWriteAdmHelp,
                      [&](const std::vector<std::string>& a, std::size_t& i) {
                          if (a[i] != "--output")
                              return false;
                          output = ozOptionValue(a, i);
                          return true;
                      });
    if (status >= 0)
        return status;
    if (output.empty())
        return ozUsageFailure("write-adm", "name the file to write with --output FILE", std::cerr);
    ozHostSession session(line.host, std::cerr);
    if (!Open(session, line, false))
        return 1;
    if (!session.Control().WriteADM(output.c_str())) {
        std::cerr << "ozadm write-adm: " << output << " cannot be written\n";
        return 1;
    }
    for (const std::string& loss : session.Control().WriteADMLosses())
        std::cerr << "ozadm write-adm: warning: " << loss << '\n';
    return 0;
}
