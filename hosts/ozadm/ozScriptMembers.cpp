#include "ozScriptMembers.h"

#include "control/CADMCtrl.h"
#include "control/ozParameterText.h"
#include "control/ozPolicyEdit.h"
#include "core/adm/ozADMCtrl.h"
#include "core/adm/tTreeCodeHandle.h"
#include "ozBundledFiles.h"
#include "ozTreeText.h"
#include "platform/ozAsciiCase.h"

namespace {

using Result = ozScriptResult;

std::string Usage(const char* member, const std::string& what)
{
    return std::string(member) + ": " + what;
}

long long Integer(const char* member, const std::string& text, const char* argument, long long min,
                  long long max)
{
    long long value = 0;
    if (!ozReadInteger(text, min, max, value))
        throw ozScriptUsageError(Usage(
            member, std::string(argument) + " must be a whole number from " + std::to_string(min) +
                        " to " + std::to_string(max) + ", not \"" + text + "\""));
    return value;
}

bool Boolean(const char* member, const std::string& text, const char* argument)
{
    bool value = false;
    if (!ozReadBool(text, value))
        throw ozScriptUsageError(Usage(
            member,
            std::string(argument) + " must be TRUE, FALSE or a number, not \"" + text + "\""));
    return value;
}

short Short(const char* member, const std::string& text, const char* argument)
{
    return static_cast<short>(Integer(member, text, argument, -32768, 32767));
}

// A property read and written as a BOOL.
ozScriptMember BoolProperty(const char* name, bool (CADMCtrl::*get)() const,
                            void (CADMCtrl::*set)(bool))
{
    return {name,
            true,
            0,
            "",
            [get](ozScriptCall& call) { return Result::Bool((call.control.*get)()); },
            [name, set](CADMCtrl& control, const std::string& text) {
                (control.*set)(Boolean(name, text, "the value"));
            }};
}

ozScriptMember TextProperty(const char* name, std::function<std::string(const CADMCtrl&)> get,
                            std::function<void(CADMCtrl&, const std::string&)> set)
{
    return {
        name, true, 0, "", [get](ozScriptCall& call) { return Result::Text(get(call.control)); },
        set};
}

// A method with no result.
ozScriptMember Procedure(const char* name, void (CADMCtrl::*method)())
{
    return {name,
            false,
            0,
            "",
            [method](ozScriptCall& call) {
                (call.control.*method)();
                return Result();
            },
            nullptr};
}

// A method without arguments that gives a BOOL.
ozScriptMember Predicate(const char* name, bool (CADMCtrl::*method)())
{
    return {name,
            false,
            0,
            "",
            [method](ozScriptCall& call) { return Result::Bool((call.control.*method)()); },
            nullptr};
}

// A method taking one file name that gives a BOOL.
ozScriptMember FileMethod(const char* name, const char* signature,
                          bool (CADMCtrl::*method)(const char*))
{
    return {name,
            false,
            1,
            signature,
            [method](ozScriptCall& call) {
                return Result::Bool((call.control.*method)(call.arguments[0].c_str()));
            },
            nullptr};
}

// A key event: Key and CtrlCode, giving a BOOL.
ozScriptMember KeyMethod(const char* name, bool (CADMCtrl::*method)(short, short))
{
    return {name,
            false,
            2,
            "Key CtrlCode",
            [name, method](ozScriptCall& call) {
                short key = Short(name, call.arguments[0], "Key");
                short ctrlCode = Short(name, call.arguments[1], "CtrlCode");
                return Result::Bool((call.control.*method)(key, ctrlCode));
            },
            nullptr};
}

Result SetState(ozScriptCall& call)
{
    tPOLICYSTATE state = PolicyNotConfigured;
    if (!ozReadPolicyState(call.arguments[1], state))
        throw ozScriptUsageError(Usage("SetState",
                                       "STATE must be enabled, disabled or "
                                       "notconfigured, not \"" +
                                           call.arguments[1] + "\""));
    ozADMPolicy* policy = ozFindPolicy(call.control.Code(), call.arguments[0]);
    if (policy == nullptr) {
        call.note = "no policy at \"" + call.arguments[0] + "\"";
        return Result::Bool(false);
    }
    ozEditPolicyState(call.control, *policy, state);
    return Result::Bool(true);
}

Result SetPart(ozScriptCall& call)
{
    ozADMPolicy* policy = ozFindPolicy(call.control.Code(), call.arguments[0]);
    if (policy == nullptr) {
        call.note = "no policy at \"" + call.arguments[0] + "\"";
        return Result::Bool(false);
    }
    ozADMCtrl* part = ozFindPart(*policy, call.arguments[1]);
    if (part == nullptr) {
        call.note = "the policy has no part \"" + call.arguments[1] + "\"";
        return Result::Bool(false);
    }
    return Result::Bool(ozEditPartValue(call.control, *part, call.arguments[2], call.note));
}

Result Parts(ozScriptCall& call)
{
    ozADMPolicy* policy = ozFindPolicy(call.control.Code(), call.arguments[0]);
    if (policy == nullptr)
        return Result::Array({});
    std::vector<std::string> elements;
    const CCollection<ozADMCtrl>& parts = policy->Controls();
    for (int pos = 0; pos < parts.Count(); ++pos) {
        const ozADMCtrl& part = *parts.At(pos);
        std::string element =
            std::string(part.Name() != nullptr ? part.Name() : "") + " " + ozPartTypeName(part);
        if (part.CtrlType() != CtrlText)
            element += " = " + ozPartValueText(part);
        elements.push_back(element);
    }
    return Result::Array(ozStringArray(std::move(elements)));
}

Result PrintLines(ozScriptCall& call, const std::vector<std::string>& lines)
{
    for (const std::string& line : lines)
        call.out << line << '\n';
    return Result();
}

std::vector<ozScriptMember> MakeMembers()
{
    std::vector<ozScriptMember> members;
    members.push_back(BoolProperty("ShowUser", &CADMCtrl::ShowUser, &CADMCtrl::ShowUser));
    members.push_back(BoolProperty("ShowMachine", &CADMCtrl::ShowMachine, &CADMCtrl::ShowMachine));
    members.push_back(BoolProperty("WithADMEdit", &CADMCtrl::WithADMEdit, &CADMCtrl::WithADMEdit));
    members.push_back({"ShouldSave", true, 0, "",
                       [](ozScriptCall& call) { return Result::Bool(call.control.ShouldSave()); },
                       nullptr});
    members.push_back(TextProperty(
        "ozImpExLibrary", [](const CADMCtrl& c) { return c.ozImpExLibrary(); },
        [](CADMCtrl& c, const std::string& v) { c.ozImpExLibrary(v); }));
    members.push_back(TextProperty(
        "ozVariableStart", [](const CADMCtrl& c) { return c.ozVariableStart(); },
        [](CADMCtrl& c, const std::string& v) { c.ozVariableStart(v); }));
    members.push_back(TextProperty(
        "ozVariableEnd", [](const CADMCtrl& c) { return c.ozVariableEnd(); },
        [](CADMCtrl& c, const std::string& v) { c.ozVariableEnd(v); }));
    members.push_back(
        {"ConfiguredPolicies", true, 0, "",
         [](ozScriptCall& call) { return Result::Array(call.control.ConfiguredPolicies()); },
         nullptr});

    members.push_back(Procedure("Reset", &CADMCtrl::Reset));
    members.push_back({"Save", false, 2, "UsrReg MacReg",
                       [](ozScriptCall& call) {
                           return Result::Bool(call.control.Save(call.arguments[0].c_str(),
                                                                 call.arguments[1].c_str()));
                       },
                       nullptr});
    members.push_back({"Load", false, 2, "UsrReg MacReg",
                       [](ozScriptCall& call) {
                           return Result::Bool(call.control.Load(call.arguments[0].c_str(),
                                                                 call.arguments[1].c_str()));
                       },
                       nullptr});
    members.push_back(Procedure("Cleanup", &CADMCtrl::Cleanup));
    members.push_back(FileMethod("SetEBNF", "Filename", &CADMCtrl::SetEBNF));
    members.push_back({"SetADM", false, 1, "Filename",
                       [](ozScriptCall& call) {
                           std::string file = ozTemplatePath(call.arguments[0]);
                           return Result::Bool(call.control.SetADM(file.c_str()));
                       },
                       nullptr});
    members.push_back(FileMethod("LoadOZReg", "OzReg", &CADMCtrl::LoadOZReg));
    members.push_back({"AddString", false, 2, "Code Text",
                       [](ozScriptCall& call) {
                           auto code = static_cast<unsigned short>(
                               Integer("AddString", call.arguments[0], "Code", 0, 65535));
                           return Result::Bool(
                               call.control.AddString(code, call.arguments[1].c_str()));
                       },
                       nullptr});
    members.push_back({"GetString", false, 1, "Code",
                       [](ozScriptCall& call) {
                           auto code = static_cast<unsigned short>(
                               Integer("GetString", call.arguments[0], "Code", 0, 65535));
                           return Result::Text(call.control.GetString(code));
                       },
                       nullptr});
    members.push_back({"GetCode", false, 0, "",
                       [](ozScriptCall& call) { return Result::Unsigned(call.control.GetCode()); },
                       nullptr});
    members.push_back(Procedure("Refresh", &CADMCtrl::Refresh));
    members.push_back(Predicate("SaveSelState", &CADMCtrl::SaveSelState));
    members.push_back({"WriteReport", false, 3, "Filename Indentation WithData",
                       [](ozScriptCall& call) {
                           short indentation =
                               Short("WriteReport", call.arguments[1], "Indentation");
                           bool withData = Boolean("WriteReport", call.arguments[2], "WithData");
                           return Result::Bool(call.control.WriteReport(call.arguments[0].c_str(),
                                                                        indentation, withData));
                       },
                       nullptr});
    members.push_back(Procedure("ShowLegend", &CADMCtrl::ShowLegend));
    members.push_back(KeyMethod("SendKeyDown", &CADMCtrl::SendKeyDown));
    members.push_back(KeyMethod("SendKeyUp", &CADMCtrl::SendKeyUp));
    members.push_back(FileMethod("WriteADM", "Filename", &CADMCtrl::WriteADM));
    members.push_back(Predicate("ozInsert", &CADMCtrl::ozInsert));
    members.push_back(Predicate("ozDelete", &CADMCtrl::ozDelete));
    members.push_back(Predicate("ozSRShowSearch", &CADMCtrl::ozSRShowSearch));
    members.push_back(Predicate("ozSRShowReplace", &CADMCtrl::ozSRShowReplace));
    members.push_back(Predicate("ozSRHide", &CADMCtrl::ozSRHide));
    members.push_back(
        {"AddFromRegistry", false, 4, "Root Key Value Recursive",
         [](ozScriptCall& call) {
             long root = static_cast<long>(
                 Integer("AddFromRegistry", call.arguments[0], "Root", -2147483648LL, 2147483647));
             bool recursive = Boolean("AddFromRegistry", call.arguments[3], "Recursive");
             return Result::Bool(call.control.AddFromRegistry(
                 root, call.arguments[1].c_str(), call.arguments[2].c_str(), recursive));
         },
         nullptr});
    members.push_back(Predicate("ShowImportReg", &CADMCtrl::ShowImportReg));
    members.push_back({"PolicyConfigures", false, 1, "Path",
                       [](ozScriptCall& call) {
                           return Result::Array(
                               call.control.PolicyConfigures(call.arguments[0].c_str()));
                       },
                       nullptr});
    members.push_back(Procedure("AboutBox", &CADMCtrl::AboutBox));

    members.push_back(
        {"DisplayMode", true, 0, "",
         [](ozScriptCall& call) { return Result::Number(call.control.DisplayMode()); },
         [](CADMCtrl& control, const std::string& text) {
             control.DisplayMode(static_cast<int>(Integer("DisplayMode", text, "the mode", 0, 2)));
         }});
    members.push_back({"SetState", false, 2, "Path State", SetState, nullptr});
    members.push_back({"SetPart", false, 3, "Path Part Value", SetPart, nullptr});
    members.push_back({"Parts", false, 1, "Path", Parts, nullptr});
    members.push_back({"Tree", false, 0, "",
                       [](ozScriptCall& call) {
                           return PrintLines(call, ozPolicyTreeLines(call.control.Code(), false));
                       },
                       nullptr});
    members.push_back({"RegTree", false, 0, "",
                       [](ozScriptCall& call) {
                           return PrintLines(call, ozRegistryTreeLines(call.control.Code()));
                       },
                       nullptr});
    ozAddViewMembers(members);
    return members;
}

}  // namespace

const std::vector<ozScriptMember>& ozScriptMembers()
{
    static const std::vector<ozScriptMember> members = MakeMembers();
    return members;
}

const ozScriptMember* ozFindScriptMember(std::string_view name)
{
    for (const ozScriptMember& member : ozScriptMembers())
        if (ozAsciiSameIgnoringCase(member.name, name))
            return &member;
    return nullptr;
}
