// Cutting template text into the tokens a grammar reads: bare words (keywords among them),
// numbers, texts in double quotes, !!string references and [section] headers; ';' starts a
// comment to the end of the line. The lexer also evaluates "#if version <op> N", "#else" and
// "#endif" (nested), handing on only the tokens of the branches that apply.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ozGrammar.h"

struct ozTemplateToken {
    tTOKENKIND kind = TokenEnd;
    unsigned signature = TokenEnd;  // the kind, or the keyword's signature
    uint32_t number = 0;            // TokenDigits, TokenQuotedDigits
    std::string_view text;          // the word, the text between the quotes, the referenced
                                    // name, the section's name
    std::string_view source;        // the token as written
    size_t offset = 0;              // where it starts in the text
};

class ozTemplateLexer {
public:
    // text must outlive the lexer; grammar gives the keywords and the version #if compares.
    ozTemplateLexer(std::string_view text, const ozGrammar& grammar);

    // The next token that applies (read on first call); TokenEnd at the end, TokenError for
    // text that cannot be read (then ErrorMessage says why).
    const ozTemplateToken& Peek();
    // Moves past the token Peek gave.
    void Consume() { m_peeked = false; }
    // Moves to the end of the text, reading nothing of what is left.
    void SkipToEnd();
    // The position of the last character read (for errors at the end of a text).
    size_t Position() const { return m_position; }

    // Why the lexer gave TokenError, and the number of the error (a syntax or preprocessor
    // error).
    const std::string& ErrorMessage() const { return m_errorMessage; }
    int ErrorCode() const { return m_errorCode; }

private:
    struct Condition {
        bool enclosingActive;  // whether the branch around this #if applies
        bool value;            // the #if's condition
        bool inElse;
        size_t offset;
    };

    // Reads one token whatever the conditions; directives come back as handled (true) or as
    // an error token.
    void ReadRaw(ozTemplateToken& token, bool& wasDirective);
    void ReadDirective(ozTemplateToken& token);
    void ReadQuoted(ozTemplateToken& token);
    void ReadWord(ozTemplateToken& token);
    bool ReadCondition(bool& value);
    bool IsLineStart(size_t offset) const;
    bool Active() const { return m_conditions.empty() || ActiveAt(m_conditions.back()); }
    static bool ActiveAt(const Condition& condition)
    {
        return condition.enclosingActive && (condition.inElse ? !condition.value : condition.value);
    }
    void Error(ozTemplateToken& token, int code, std::string message, size_t offset);

    std::string_view m_text;
    const ozGrammar& m_grammar;
    size_t m_position = 0;
    ozTemplateToken m_token;
    bool m_peeked = false;
    std::vector<Condition> m_conditions;
    std::string m_errorMessage;
    int m_errorCode = 0;
};
