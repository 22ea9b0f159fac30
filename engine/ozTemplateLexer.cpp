#include "ozTemplateLexer.h"

#include <cctype>
#include <cstdio>

#include "ozEBNF.h"
#include "platform/ozAsciiCase.h"

namespace {

enum CharClass : uint8_t { WordChar, Blank, Newline, Quote, Semicolon, Control };

struct CharClasses {
    CharClass of[256];
    CharClasses()
    {
        for (int c = 0; c < 256; ++c)
            of[c] = c < 0x20 ? Control : WordChar;
        for (int c : {0x20, 0x09, 0x0D, 0x0B, 0x0C, 0x1A})  // 0x1A: the old end-of-file mark
            of[c] = Blank;
        of[static_cast<int>('\n')] = Newline;
        of[static_cast<int>('"')] = Quote;
        of[static_cast<int>(';')] = Semicolon;
    }
};

const CharClasses Classes;

CharClass ClassOf(char c)
{
    return Classes.of[static_cast<unsigned char>(c)];
}

// The value of text when it is a decimal number within 32 bits.
bool ParseNumber(std::string_view text, uint32_t& value)
{
    if (text.empty() || text.size() > 10)
        return false;
    uint64_t number = 0;
    for (char c : text) {
        if (c < '0' || c > '9')
            return false;
        number = number * 10 + static_cast<unsigned>(c - '0');
    }
    if (number > 0xFFFFFFFFu)
        return false;
    value = static_cast<uint32_t>(number);
    return true;
}

bool SameWordIgnoringCase(std::string_view word, const char* lower)
{
    size_t i = 0;
    for (; i < word.size() && lower[i] != '\0'; ++i)
        if (ozAsciiLower(word[i]) != lower[i])
            return false;
    return i == word.size() && lower[i] == '\0';
}

}  // namespace

ozTemplateLexer::ozTemplateLexer(std::string_view text, const ozGrammar& grammar)
    : m_text(text), m_grammar(grammar)
{
}

void ozTemplateLexer::Error(ozTemplateToken& token, int code, std::string message, size_t offset)
{
    token = ozTemplateToken();
    token.kind = TokenError;
    token.signature = TokenError;
    token.offset = offset;
    m_errorCode = code;
    m_errorMessage = std::move(message);
}

const ozTemplateToken& ozTemplateLexer::Peek()
{
    if (m_peeked)
        return m_token;
    while (true) {
        bool wasDirective = false;
        ReadRaw(m_token, wasDirective);
        if (m_token.kind == TokenError)
            break;
        if (wasDirective)
            continue;
        if (m_token.kind == TokenEnd) {
            if (!m_conditions.empty())
                Error(m_token, EBNFErrorPreprocessor, "#if without #endif",
                      m_conditions.back().offset);
            break;
        }
        if (Active())
            break;
    }
    m_peeked = true;
    return m_token;
}

void ozTemplateLexer::SkipToEnd()
{
    m_position = m_text.size();
    m_conditions.clear();
    m_peeked = false;
}

void ozTemplateLexer::ReadRaw(ozTemplateToken& token, bool& wasDirective)
{
    // Blanks, line ends and comments.
    while (m_position < m_text.size()) {
        CharClass kind = ClassOf(m_text[m_position]);
        if (kind == Blank || kind == Newline) {
            ++m_position;
        } else if (kind == Semicolon) {
            size_t end = m_text.find('\n', m_position);
            m_position = end == std::string_view::npos ? m_text.size() : end;
        } else {
            break;
        }
    }
    token = ozTemplateToken();
    token.offset = m_position;
    if (m_position >= m_text.size())
        return;  // TokenEnd
    char c = m_text[m_position];
    switch (ClassOf(c)) {
        case Quote:
            ReadQuoted(token);
            return;
        case Control:
            if (!Active()) {  // what no branch reads is not judged
                ++m_position;
                wasDirective = true;
                return;
            }
            {
                char code[8];
                snprintf(code, sizeof code, "0x%02X", static_cast<unsigned char>(c));
                Error(token, EBNFErrorSyntax, std::string("unexpected control character ") + code,
                      m_position);
            }
            return;
        default:
            break;
    }
    if (c == '#') {
        wasDirective = true;
        ReadDirective(token);
        return;
    }
    ReadWord(token);
}

void ozTemplateLexer::ReadQuoted(ozTemplateToken& token)
{
    size_t start = m_position;
    size_t end = start + 1;
    // A carriage return ends a line too, as it does for the [strings] reader: a text written
    // back as a reference must not hold one.
    while (end < m_text.size() && m_text[end] != '"' && m_text[end] != '\n' && m_text[end] != '\r')
        ++end;
    if (end >= m_text.size() || m_text[end] != '"') {
        m_position = end;
        if (Active())
            Error(token, EBNFErrorSyntax, "a text in quotes is not closed on its line", start);
        else
            token.kind = TokenQuoted, token.signature = TokenQuoted;
        return;
    }
    m_position = end + 1;
    token.text = m_text.substr(start + 1, end - start - 1);
    token.source = m_text.substr(start, m_position - start);
    bool isNumber = ParseNumber(token.text, token.number);
    token.kind = isNumber ? TokenQuotedDigits : TokenQuoted;
    token.signature = token.kind;
}

void ozTemplateLexer::ReadWord(ozTemplateToken& token)
{
    size_t start = m_position;
    size_t end = start;
    while (end < m_text.size() && ClassOf(m_text[end]) == WordChar)
        ++end;
    m_position = end;
    token.source = m_text.substr(start, end - start);
    token.text = token.source;
    if (token.source.size() >= 2 && token.source[0] == '!' && token.source[1] == '!') {
        token.kind = TokenReference;
        token.text = token.source.substr(2);
    } else if (token.source[0] == '[' && IsLineStart(start)) {
        size_t close = token.source.find(']');
        token.kind = TokenSection;
        token.text = token.source.substr(
            1, close == std::string_view::npos ? std::string_view::npos : close - 1);
    } else if (ParseNumber(token.source, token.number)) {
        token.kind = TokenDigits;
    } else {
        token.kind = TokenWord;
        int keyword = m_grammar.FindKeyword(token.source);
        if (keyword >= 0) {
            token.signature = SignatureFirstKeyword + static_cast<unsigned>(keyword);
            return;
        }
    }
    token.signature = token.kind;
}

bool ozTemplateLexer::IsLineStart(size_t offset) const
{
    while (offset > 0 && ClassOf(m_text[offset - 1]) == Blank)
        --offset;
    return offset == 0 || m_text[offset - 1] == '\n';
}

// "version <op> N" after "#if", on the same line, followed by nothing but a comment.
bool ozTemplateLexer::ReadCondition(bool& value)
{
    auto skipBlanks = [&] {
        while (m_position < m_text.size() && ClassOf(m_text[m_position]) == Blank)
            ++m_position;
    };
    auto readWhile = [&](auto accept) {
        size_t start = m_position;
        while (m_position < m_text.size() && accept(m_text[m_position]))
            ++m_position;
        return m_text.substr(start, m_position - start);
    };
    skipBlanks();
    std::string_view subject =
        readWhile([](char c) { return isalpha(static_cast<unsigned char>(c)) != 0; });
    if (!SameWordIgnoringCase(subject, "version"))
        return false;
    skipBlanks();
    std::string_view op =
        readWhile([](char c) { return c == '<' || c == '>' || c == '=' || c == '!'; });
    skipBlanks();
    uint32_t number;
    if (!ParseNumber(readWhile([](char c) { return c >= '0' && c <= '9'; }), number))
        return false;
    skipBlanks();
    if (m_position < m_text.size() && m_text[m_position] != '\n' && m_text[m_position] != ';')
        return false;
    int64_t version = m_grammar.version, n = number;
    if (op == ">=")
        value = version >= n;
    else if (op == "<=")
        value = version <= n;
    else if (op == ">")
        value = version > n;
    else if (op == "<")
        value = version < n;
    else if (op == "==" || op == "=")
        value = version == n;
    else if (op == "!=")
        value = version != n;
    else
        return false;
    return true;
}

void ozTemplateLexer::ReadDirective(ozTemplateToken& token)
{
    size_t start = m_position++;
    size_t nameStart = m_position;
    while (m_position < m_text.size() && isalpha(static_cast<unsigned char>(m_text[m_position])))
        ++m_position;
    std::string_view name = m_text.substr(nameStart, m_position - nameStart);
    if (SameWordIgnoringCase(name, "if")) {
        bool value = false;
        if (!ReadCondition(value)) {
            Error(token, EBNFErrorPreprocessor,
                  "expected \"#if version <op> N\" with <op> one of >, >=, <, <=, ==, !=", start);
            return;
        }
        m_conditions.push_back({Active(), value, false, start});
    } else if (SameWordIgnoringCase(name, "else")) {
        if (m_conditions.empty() || m_conditions.back().inElse) {
            Error(token, EBNFErrorPreprocessor, "#else without #if", start);
            return;
        }
        m_conditions.back().inElse = true;
    } else if (SameWordIgnoringCase(name, "endif")) {
        if (m_conditions.empty()) {
            Error(token, EBNFErrorPreprocessor, "#endif without #if", start);
            return;
        }
        m_conditions.pop_back();
    } else {
        Error(token, EBNFErrorPreprocessor, "unknown directive \"#" + std::string(name) + "\"",
              start);
    }
}
