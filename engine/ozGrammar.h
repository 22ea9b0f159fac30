// A grammar read from a grammar file: its rules as a graph of nodes, the keywords it uses,
// the actions it names, and for every decision (alternatives, optional and repeated parts)
// the table that picks the way by the next token's signature.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ozStatus.h"

// What the lexer makes of a piece of template text. A token's signature is its kind, or for a
// word that is a keyword of the grammar, SignatureFirstKeyword plus the keyword's number.
enum tTOKENKIND : uint8_t {
    TokenEnd = 0,           // the end of the text
    TokenError = 1,         // text the lexer cannot read (its message says why)
    TokenDigits = 2,        // a bare word of decimal digits within 32 bits
    TokenQuoted = 3,        // a text in double quotes
    TokenQuotedDigits = 4,  // a text in double quotes that is a number within 32 bits
    TokenReference = 5,     // !!name
    TokenSection = 6,       // [name] at the start of a line
    TokenWord = 7,          // any other bare word
};
constexpr unsigned SignatureFirstKeyword = 8;

// The token classes a grammar can ask for.
enum tTOKENCLASS : uint8_t {
    ClassKeyword,    // one keyword, in any case
    ClassWord,       // a bare word (keywords and digits included)
    ClassString,     // a text in double quotes
    ClassNumber,     // a number, bare or in double quotes
    ClassReference,  // a string reference
    ClassSection,    // a section header
};

struct ozGrammarNode {
    enum Kind : uint8_t { Sequence, Choice, Optional, Repeat, Terminal, RuleCall, Action, Rest };
    Kind kind = Sequence;
    std::vector<uint32_t> children;          // Sequence, Choice: the parts; Optional, Repeat: one
    uint32_t target = 0;                     // RuleCall: the rule; Action: the action
    tTOKENCLASS tokenClass = ClassWord;      // Terminal
    uint32_t keyword = 0;                    // Terminal of ClassKeyword
    std::vector<uint32_t> excludedKeywords;  // Terminal: keywords a class leaves out
    bool hasArgument = false;                // Action: called with a literal
    std::string argument;                    // Action: the literal
    unsigned line = 0, column = 0;           // where the grammar file has it

    // Computed when the grammar is complete.
    bool nullable = false;
    std::vector<uint8_t> first;     // per signature: whether a token of it can begin this node
    std::vector<int16_t> decision;  // Choice: per signature, the part to take, or -1
};

struct ozGrammarRule {
    std::string name;
    uint32_t body = 0;
    unsigned line = 0, column = 0;
    bool defined = false;
};

class ozGrammar {
public:
    std::vector<ozGrammarNode> nodes;
    std::vector<ozGrammarRule> rules;   // the first is the start rule
    std::vector<std::string> keywords;  // upper-cased
    std::vector<std::string> actions;   // names, each once
    int version = 4;                    // what #if version compares with

    unsigned SignatureCount() const { return SignatureFirstKeyword + keywords.size(); }
    // The number of an upper-cased keyword, adding it when new.
    uint32_t Keyword(std::string_view upperCased);
    uint32_t Action(std::string_view name);
    // The number of the keyword `word` is in any case, or -1.
    int FindKeyword(std::string_view word) const;
    // Whether a token of signature satisfies a terminal.
    bool Matches(const ozGrammarNode& terminal, unsigned signature) const;
    // Human-readable: what a terminal or node expects ("\"END\"", "a number", ...).
    std::string Describe(const ozGrammarNode& terminal) const;
    std::string DescribeFirst(const ozGrammarNode& node) const;

    // Computes what can begin each node and the decision tables. Fails, placed at the rule,
    // for a rule that calls itself before reading a token.
    ozStatus Complete();

private:
    ozStatus FindLeftRecursion() const;
    void BuildKeywordIndex();

    std::vector<int32_t> m_keywordIndex;  // open addressing over upper-cased hashes
};

// The case-insensitive hash the keyword index uses.
uint32_t ozKeywordHash(std::string_view word);
