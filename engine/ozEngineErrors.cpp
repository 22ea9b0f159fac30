#include "ozEngineErrors.h"

#include <algorithm>

void ozMessageList::Add(unsigned short code, const char* text)
{
    m_texts[code] = text != nullptr ? text : "";
}

const char* ozMessageList::Get(unsigned short code) const
{
    auto found = m_texts.find(code);
    return found != m_texts.end() ? found->second.c_str() : "";
}

ozErrorPlace ozPlaceInText(std::string_view file, std::string_view text, size_t offset)
{
    offset = std::min(offset, text.size());
    std::string_view before = text.substr(0, offset);
    size_t lineStart = before.rfind('\n');
    lineStart = lineStart == std::string_view::npos ? 0 : lineStart + 1;
    ozErrorPlace place;
    place.file = file;
    place.line = static_cast<unsigned>(std::count(before.begin(), before.end(), '\n')) + 1;
    place.column = static_cast<unsigned>(offset - lineStart) + 1;
    return place;
}

ozEngineError& ozEngineError::Instance()
{
    static ozEngineError error;
    return error;
}

void ozEngineError::Clear()
{
    m_code = 0;
    m_description.clear();
    m_place = {};
    m_failed = false;
}

void ozEngineError::Fail(ozErrorPlace place)
{
    m_place = std::move(place);
    m_failed = true;
}

void ozEngineError::Fail(int code, std::string_view description, ozErrorPlace place)
{
    m_code = code;
    m_description = description;
    Fail(std::move(place));
}

const char* ozEngineError::Message()
{
    m_message.clear();
    if (!m_failed)
        return m_message.c_str();
    if (!m_place.file.empty()) {
        m_message += m_place.file;
        if (m_place.line != 0)
            m_message += ':' + std::to_string(m_place.line) + ':' + std::to_string(m_place.column);
        m_message += ": ";
    }
    m_message += "error " + std::to_string(m_code);
    const char* text = "";
    if (m_messages != nullptr && m_code >= 0 && m_code <= 0xFFFF)
        text = m_messages->Get(static_cast<unsigned short>(m_code));
    if (*text != '\0')
        m_message += std::string(": ") + text;
    if (!m_description.empty())
        m_message += ": " + m_description;
    return m_message.c_str();
}
