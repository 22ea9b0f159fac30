#include "ozStringTable.h"

#include <cstring>
#include <new>

bool ozStringTable::Insert(const char* name, const char* value)
{
    if (name == nullptr || value == nullptr)
        return false;
    return m_texts.try_emplace(name, value).second;
}

const char* ozStringTable::Find(const char* name) const
{
    if (name == nullptr)
        return nullptr;
    auto found = m_texts.find(name);
    return found != m_texts.end() ? found->second.c_str() : nullptr;
}

std::string ozStringTable::UnquotedValue(std::string value)
{
    if (value.empty() || value[0] != '"')
        return value;
    value.erase(0, 1);
    size_t lastQuote = value.rfind('"');
    if (lastQuote != std::string::npos && lastQuote > 0)
        value.resize(lastQuote);
    return value;
}

bool ozStringTable::AddSection(const char* lines)
{
    if (lines == nullptr)
        return true;
    try {
        // Room for every line at once: growing the table while filing it would move each
        // entry again at every step.
        size_t lineCount = 0;
        for (const char* line = lines; *line != '\0'; line += std::strlen(line) + 1)
            ++lineCount;
        m_texts.reserve(m_texts.size() + lineCount);
        for (const char* line = lines; *line != '\0'; line += std::strlen(line) + 1) {
            const char* equals = std::strchr(line, '=');
            std::string name = equals != nullptr ? std::string(line, equals) : std::string(line);
            for (char& c : name)
                if (c >= 'a' && c <= 'z')
                    c = static_cast<char>(c - 'a' + 'A');
            std::string value = equals != nullptr ? std::string(equals + 1) : std::string();
            if (!value.empty() && value.back() == '\\') {
                value.pop_back();
                const char* next = line + std::strlen(line) + 1;
                if (*next != '\0') {
                    value += next;
                    line = next;  // the continuation line is consumed
                }
            }
            Insert(name.c_str(), UnquotedValue(std::move(value)).c_str());
        }
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}
