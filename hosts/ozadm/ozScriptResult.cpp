#include "ozScriptResult.h"

#include "ozScriptLine.h"

ozScriptResult ozScriptResult::Bool(bool value)
{
    ozScriptResult result;
    result.m_kind = Kind::Bool;
    result.m_bool = value;
    return result;
}

ozScriptResult ozScriptResult::Number(std::int64_t value)
{
    ozScriptResult result;
    result.m_kind = Kind::Number;
    result.m_number = std::to_string(value);
    return result;
}

ozScriptResult ozScriptResult::Unsigned(std::uint64_t value)
{
    ozScriptResult result;
    result.m_kind = Kind::Number;
    result.m_number = std::to_string(value);
    return result;
}

ozScriptResult ozScriptResult::Text(std::string value)
{
    ozScriptResult result;
    result.m_kind = Kind::Text;
    result.m_text = std::move(value);
    return result;
}

ozScriptResult ozScriptResult::Array(ozStringArray value)
{
    ozScriptResult result;
    result.m_kind = Kind::Array;
    result.m_array = std::move(value);
    return result;
}

void ozScriptResult::Write(std::ostream& out, const std::string& name) const
{
    out << name << ':';
    switch (m_kind) {
        case Kind::None:
            break;
        case Kind::Bool:
            out << (m_bool ? " TRUE" : " FALSE");
            break;
        case Kind::Number:
            out << ' ' << m_number;
            break;
        case Kind::Text:
            out << ' ' << ozQuoteScriptText(m_text);
            break;
        case Kind::Array:
            if (m_array.IsEmpty()) {
                out << " EMPTY";
                break;
            }
            out << " ARRAY " << m_array.Elements().size();
            for (const std::string& element : m_array.Elements())
                out << "\n  " << ozQuoteScriptText(element);
            break;
    }
    out << '\n';
}
