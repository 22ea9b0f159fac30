#include "ozScriptLine.h"

namespace {

bool IsBlank(char c)
{
    return c == ' ' || c == '\t';
}

bool IsNameStart(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

bool IsName(std::string_view word)
{
    if (word.empty() || !IsNameStart(word[0]))
        return false;
    for (char c : word)
        if (!IsNameStart(c) && !(c >= '0' && c <= '9'))
            return false;
    return true;
}

struct Word {
    std::string text;
    bool quoted = false;
    std::size_t column = 0;
};

bool Fail(ozScriptLineError& error, std::size_t pos, std::string message)
{
    error.column = pos + 1;
    error.message = std::move(message);
    return false;
}

// Reads the quoted text starting at line[pos] (the opening quote); pos ends after the closing
// quote.
bool ReadQuoted(std::string_view line, std::size_t& pos, Word& word, ozScriptLineError& error)
{
    std::size_t open = pos++;
    while (pos < line.size()) {
        char c = line[pos];
        if (c == '"') {
            ++pos;
            if (pos < line.size() && !IsBlank(line[pos]))
                return Fail(error, pos, "a blank must follow the closing double quote");
            return true;
        }
        if (c == '\\' && pos + 1 < line.size() && (line[pos + 1] == '"' || line[pos + 1] == '\\')) {
            word.text += line[pos + 1];
            pos += 2;
            continue;
        }
        word.text += c;
        ++pos;
    }
    return Fail(error, open, "the double quote opened here is not closed");
}

bool ReadWords(std::string_view line, std::vector<Word>& words, ozScriptLineError& error)
{
    std::size_t pos = 0;
    while (true) {
        while (pos < line.size() && IsBlank(line[pos]))
            ++pos;
        if (pos >= line.size())
            return true;
        Word word;
        word.column = pos + 1;
        if (line[pos] == '"') {
            word.quoted = true;
            if (!ReadQuoted(line, pos, word, error))
                return false;
        } else {
            while (pos < line.size() && !IsBlank(line[pos])) {
                if (line[pos] == '"')
                    return Fail(error, pos,
                                "a double quote inside a word (quote the whole argument)");
                word.text += line[pos++];
            }
        }
        words.push_back(std::move(word));
    }
}

}  // namespace

bool ozParseScriptLine(std::string_view line, ozScriptLine& parsed, ozScriptLineError& error)
{
    parsed = ozScriptLine{};
    error = ozScriptLineError{};
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    std::size_t first = 0;
    while (first < line.size() && IsBlank(line[first]))
        ++first;
    if (first == line.size() || line[first] == '#')
        return true;

    std::vector<Word> words;
    if (!ReadWords(line, words, error))
        return false;
    const Word& name = words.front();
    if (name.quoted || !IsName(name.text)) {
        std::string message = "a line begins with a member name, not \"" + name.text + "\"";
        if (name.text.find('=') != std::string::npos)
            message += " (write Name = value with blanks around =)";
        return Fail(error, name.column - 1, message);
    }
    parsed.name = name.text;
    if (words.size() >= 2 && !words[1].quoted && words[1].text == "=") {
        if (words.size() != 3)
            return Fail(error, words[1].column - 1,
                        "an assignment takes exactly one value after = (quote a value with "
                        "blanks; \"\" for an empty one)");
        parsed.kind = ozScriptLine::Kind::PropertySet;
        parsed.arguments.push_back(words[2].text);
        return true;
    }
    parsed.kind = ozScriptLine::Kind::Call;
    for (std::size_t i = 1; i < words.size(); ++i)
        parsed.arguments.push_back(std::move(words[i].text));
    return true;
}

std::string ozQuoteScriptText(std::string_view text)
{
    std::string quoted = "\"";
    for (char c : text) {
        switch (c) {
            case '"':
                quoted += "\\\"";
                break;
            case '\\':
                quoted += "\\\\";
                break;
            case '\n':
                quoted += "\\n";
                break;
            case '\r':
                quoted += "\\r";
                break;
            case '\t':
                quoted += "\\t";
                break;
            default:
                quoted += c;
        }
    }
    quoted += '"';
    return quoted;
}
