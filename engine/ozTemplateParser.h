// Reading a template's tokens by a grammar and calling the grammar's actions as its rules
// fire, in document order. A decision between alternatives (and whether an optional or
// repeated part comes) is taken on the next token alone, in the order the grammar lists them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ozEBNF.h"
#include "ozGrammar.h"
#include "ozTemplateLexer.h"

class ozTemplateParser {
public:
    // actions[i] is the function of the grammar's action i.
    ozTemplateParser(const ozGrammar& grammar, const std::vector<ozEBNFAction>& actions,
                     ozTemplateLexer& lexer);

    // Reads the whole text by the grammar's first rule. False when the text does not follow
    // the grammar, is nested deeper than the parser goes, or an action returns zero; then
    // ErrorCode, ErrorDescription and ErrorOffset say what and where (an action's failure:
    // the number and description the action set, at the token it was called for).
    bool Parse();
    int ErrorCode() const { return m_errorCode; }
    const std::string& ErrorDescription() const { return m_errorDescription; }
    size_t ErrorOffset() const { return m_errorOffset; }

    // How deep rules may call each other; deeper templates are refused, not overflowed.
    static constexpr unsigned MaxDepth = 200;

private:
    bool Run(uint32_t node);
    bool CallAction(const ozGrammarNode& action);
    bool Expected(const ozGrammarNode& node);
    bool Fail(int code, std::string description, size_t offset);
    // The token record for the token read last (or the action's literal).
    ozEBNFToken* Record(const ozGrammarNode& action);

    const ozGrammar& m_grammar;
    const std::vector<ozEBNFAction>& m_actions;
    ozTemplateLexer& m_lexer;
    ozTemplateToken m_last;
    bool m_haveLast = false;
    bool m_lastReadAsNumber = false;
    uint64_t m_consumed = 0;
    unsigned m_depth = 0;
    std::vector<uint64_t> m_record;
    std::string m_morph;
    int m_errorCode = 0;
    std::string m_errorDescription;
    size_t m_errorOffset = 0;
};
