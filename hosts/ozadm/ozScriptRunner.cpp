#include "ozScriptRunner.h"

#include "ozScriptLine.h"
#include "ozScriptMembers.h"

namespace {

std::string Arguments(int count)
{
    return count == 1 ? "1 argument" : std::to_string(count) + " arguments";
}

}  // namespace

int ozScriptRunner::Run(std::istream& in, const std::string& source)
{
    std::string text;
    for (unsigned long number = 1; std::getline(in, text); ++number) {
        std::string where = source + ":" + std::to_string(number);
        ozScriptLine line;
        ozScriptLineError error;
        if (!ozParseScriptLine(text, line, error)) {
            m_out.flush();
            m_err << "ozadm: " << where << ":" << error.column << ": " << error.message << '\n';
            return 2;
        }
        if (line.kind == ozScriptLine::Kind::Blank)
            continue;
        const ozScriptMember* member = ozFindScriptMember(line.name);
        std::string problem;
        if (member == nullptr) {
            problem = "no member is called " + line.name + " (ozadm script --help lists them)";
        } else if (line.kind == ozScriptLine::Kind::PropertySet && !member->set) {
            problem = std::string(member->name) +
                      (member->isProperty ? " is read-only" : " is a method, not a property");
        } else if (line.kind == ozScriptLine::Kind::Call &&
                   member->argumentCount != AnyArgumentCount &&
                   static_cast<int>(line.arguments.size()) != member->argumentCount) {
            problem = std::string(member->name) + " takes " + Arguments(member->argumentCount);
            if (member->argumentCount > 0)
                problem += std::string(" (") + member->signature + ")";
            problem += ", not " + std::to_string(line.arguments.size());
        }
        try {
            if (problem.empty() && line.kind == ozScriptLine::Kind::PropertySet) {
                member->set(m_control, line.arguments[0]);
                m_out << member->name << ":\n";
            } else if (problem.empty()) {
                ozScriptCall call{m_control, line.arguments, m_out, {}, m_views};
                ozScriptResult result = member->call(call);
                result.Write(m_out, member->name);
                if (!call.note.empty()) {
                    m_out.flush();
                    m_err << "ozadm: " << where << ": " << member->name << ": " << call.note
                          << '\n';
                }
            }
        } catch (const ozScriptUsageError& usage) {
            problem = usage.what();
        }
        if (!problem.empty()) {
            m_out.flush();
            m_err << "ozadm: " << where << ": " << problem << '\n';
            return 2;
        }
        m_out.flush();
    }
    return 0;
}
