#include "ozGrammarReader.h"

#include <cctype>
#include <cstdlib>
#include <unordered_map>

#include "platform/ozAsciiCase.h"

namespace {

constexpr unsigned MaxNesting = 100;
constexpr size_t MaxRules = 2000;
constexpr size_t MaxAlternatives = 10000;

bool IsNameStart(char c)
{
    return isalpha(static_cast<unsigned char>(c)) || c == '_';
}

bool IsNameChar(char c)
{
    return isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '-';
}

// A keyword must read as one bare word of a template, and not as a number.
bool IsKeywordText(std::string_view text)
{
    if (text.empty() || text[0] == '[' || text[0] == '#' || text.substr(0, 2) == "!!")
        return false;
    bool allDigits = true;
    for (unsigned char c : text) {
        if (isspace(c) || c == '"' || c == ';' || c < 0x20)
            return false;
        allDigits &= isdigit(c) != 0;
    }
    return !allDigits;
}

class GrammarReader {
public:
    GrammarReader(std::string_view text, ozGrammar& grammar) : m_text(text), m_grammar(grammar) {}

    // Why Read failed.
    const ozStatus& Failure() const { return m_failure; }

    bool Read()
    {
        SkipBlanks();
        while (m_position < m_text.size()) {
            if (Peek() == '%') {
                if (!Directive())
                    return false;
            } else if (!Rule()) {
                return false;
            }
            SkipBlanks();
        }
        if (m_grammar.rules.empty())
            return Fail("the grammar has no rules");
        for (const ozGrammarRule& rule : m_grammar.rules)
            if (!rule.defined)
                return FailAt(rule.line, rule.column,
                              "rule \"" + rule.name + "\" is used but never defined");
        m_failure = m_grammar.Complete();
        return m_failure.IsOk();
    }

private:
    char Peek() const { return m_position < m_text.size() ? m_text[m_position] : '\0'; }

    void Advance()
    {
        if (m_text[m_position] == '\n') {
            ++m_line;
            m_lineStart = m_position + 1;
        }
        ++m_position;
    }

    void SkipBlanks()
    {
        while (m_position < m_text.size()) {
            char c = m_text[m_position];
            if (c == '#') {
                while (m_position < m_text.size() && m_text[m_position] != '\n')
                    Advance();
            } else if (isspace(static_cast<unsigned char>(c))) {
                Advance();
            } else {
                break;
            }
        }
    }

    unsigned Column() const { return static_cast<unsigned>(m_position - m_lineStart) + 1; }

    bool Fail(std::string message) { return FailAt(m_line, Column(), std::move(message)); }

    bool FailAt(unsigned line, unsigned column, std::string message)
    {
        m_failure = ozStatus::Error(std::move(message), 0, line, column);
        return false;
    }

    std::string Found() const
    {
        if (m_position >= m_text.size())
            return "the end of the file";
        unsigned char c = static_cast<unsigned char>(Peek());
        if (c < 0x20 || c >= 0x7F) {
            char code[8];
            snprintf(code, sizeof code, "0x%02X", c);
            return std::string("the byte ") + code;
        }
        return std::string("\"") + static_cast<char>(c) + "\"";
    }

    bool Expect(char c, const char* what)
    {
        SkipBlanks();
        if (Peek() != c)
            return Fail(std::string("expected ") + what + ", found " + Found());
        Advance();
        return true;
    }

    std::string_view Name()
    {
        size_t start = m_position;
        while (m_position < m_text.size() && IsNameChar(m_text[m_position]))
            Advance();
        return m_text.substr(start, m_position - start);
    }

    // A text in double quotes, with \" and \\ inside.
    bool Quoted(std::string& text)
    {
        Advance();  // the opening quote
        text.clear();
        while (true) {
            if (m_position >= m_text.size() || Peek() == '\n')
                return Fail("a text in quotes is not closed on its line");
            char c = Peek();
            Advance();
            if (c == '"')
                return true;
            if (c == '\\' && (Peek() == '"' || Peek() == '\\')) {
                c = Peek();
                Advance();
            }
            text += c;
        }
    }

    bool Directive()
    {
        Advance();  // '%'
        std::string_view name = Name();
        if (name != "version")
            return Fail("unknown directive \"%" + std::string(name) + "\"");
        SkipBlanks();
        size_t start = m_position;
        while (isdigit(static_cast<unsigned char>(Peek())))
            Advance();
        if (start == m_position || m_position - start > 9)
            return Fail("expected a version number, found " + Found());
        m_grammar.version = atoi(std::string(m_text.substr(start, m_position - start)).c_str());
        return Expect(';', "\";\"");
    }

    uint32_t RuleNumber(std::string_view name, unsigned line, unsigned column)
    {
        auto [entry, added] = m_ruleIndex.try_emplace(
            std::string(name), static_cast<uint32_t>(m_grammar.rules.size()));
        if (added) {
            ozGrammarRule rule;
            rule.name = name;
            rule.line = line;
            rule.column = column;
            m_grammar.rules.push_back(rule);
        }
        return entry->second;
    }

    bool Rule()
    {
        unsigned line = m_line, column = Column();
        if (!IsNameStart(Peek()))
            return Fail("expected a rule name, found " + Found());
        std::string_view name = Name();
        if (IsTokenClass(name))
            return Fail("\"" + std::string(name) + "\" is a token class, not a rule name");
        if (m_grammar.rules.size() >= MaxRules && m_ruleIndex.count(std::string(name)) == 0)
            return Fail("too many rules");
        uint32_t rule = RuleNumber(name, line, column);
        if (m_grammar.rules[rule].defined) {
            m_position -= name.size();
            return Fail("rule \"" + std::string(name) + "\" is defined twice");
        }
        m_grammar.rules[rule].defined = true;
        m_grammar.rules[rule].line = line;
        m_grammar.rules[rule].column = column;
        if (!Expect('=', "\"=\""))
            return false;
        uint32_t body;
        if (!Expression(body, 0))
            return false;
        m_grammar.rules[rule].body = body;
        return Expect(';', "\";\" or \"|\"");
    }

    static bool IsTokenClass(std::string_view name)
    {
        return name == "WORD" || name == "STRING" || name == "NUMBER" || name == "REF" ||
               name == "SECTION" || name == "REST";
    }

    uint32_t AddNode(ozGrammarNode node)
    {
        m_grammar.nodes.push_back(std::move(node));
        return static_cast<uint32_t>(m_grammar.nodes.size() - 1);
    }

    ozGrammarNode NodeHere(ozGrammarNode::Kind kind) const
    {
        ozGrammarNode node;
        node.kind = kind;
        node.line = m_line;
        node.column = Column();
        return node;
    }

    bool Expression(uint32_t& result, unsigned depth)
    {
        if (depth > MaxNesting)
            return Fail("brackets nested too deep");
        ozGrammarNode choice = NodeHere(ozGrammarNode::Choice);
        while (true) {
            uint32_t sequence;
            if (!Sequence(sequence, depth))
                return false;
            choice.children.push_back(sequence);
            if (choice.children.size() > MaxAlternatives)
                return Fail("too many alternatives");
            SkipBlanks();
            if (Peek() != '|')
                break;
            Advance();
        }
        result = choice.children.size() == 1 ? choice.children[0] : AddNode(std::move(choice));
        return true;
    }

    bool Sequence(uint32_t& result, unsigned depth)
    {
        ozGrammarNode sequence = NodeHere(ozGrammarNode::Sequence);
        while (true) {
            SkipBlanks();
            char c = Peek();
            if (c == '|' || c == ';' || c == ')' || c == ']' || c == '}' || c == '\0')
                break;
            uint32_t element;
            if (!Element(element, depth))
                return false;
            sequence.children.push_back(element);
        }
        result =
            sequence.children.size() == 1 ? sequence.children[0] : AddNode(std::move(sequence));
        return true;
    }

    bool Group(ozGrammarNode::Kind kind, char close, const char* closeText, uint32_t& result,
               unsigned depth)
    {
        ozGrammarNode group = NodeHere(kind);
        Advance();
        uint32_t inner;
        if (!Expression(inner, depth + 1) || !Expect(close, closeText))
            return false;
        if (kind == ozGrammarNode::Sequence) {  // ( ... ) only groups
            result = inner;
            return true;
        }
        group.children.push_back(inner);
        result = AddNode(std::move(group));
        return true;
    }

    bool Element(uint32_t& result, unsigned depth)
    {
        char c = Peek();
        if (c == '(')
            return Group(ozGrammarNode::Sequence, ')', "\")\"", result, depth);
        if (c == '[')
            return Group(ozGrammarNode::Optional, ']', "\"]\"", result, depth);
        if (c == '{')
            return Group(ozGrammarNode::Repeat, '}', "\"}\"", result, depth);
        if (c == '"')
            return Keyword(result);
        if (c == '@')
            return Action(result);
        if (IsNameStart(c))
            return NameElement(result);
        return Fail("expected a keyword, token class, rule name, action or bracket, found " +
                    Found());
    }

    bool KeywordNumber(uint32_t& keyword)
    {
        unsigned line = m_line, column = Column();
        std::string text;
        if (!Quoted(text))
            return false;
        if (!IsKeywordText(text))
            return FailAt(line, column,
                          "keyword \"" + text +
                              "\" cannot be written as one word of a template (no blanks, "
                              "quotes or semicolons, not a number)");
        keyword = m_grammar.Keyword(ozAsciiUpperCased(text));
        return true;
    }

    bool Keyword(uint32_t& result)
    {
        ozGrammarNode terminal = NodeHere(ozGrammarNode::Terminal);
        terminal.tokenClass = ClassKeyword;
        if (!KeywordNumber(terminal.keyword))
            return false;
        result = AddNode(std::move(terminal));
        return true;
    }

    bool Action(uint32_t& result)
    {
        ozGrammarNode action = NodeHere(ozGrammarNode::Action);
        Advance();  // '@'
        if (!IsNameStart(Peek()))
            return Fail("expected an action name after \"@\", found " + Found());
        std::string_view name = Name();
        action.target = m_grammar.Action(name);
        if (Peek() == '(') {
            Advance();
            SkipBlanks();
            if (Peek() != '"')
                return Fail("expected a text in quotes as the action's argument, found " + Found());
            if (!Quoted(action.argument) || !Expect(')', "\")\""))
                return false;
            action.hasArgument = true;
        }
        result = AddNode(std::move(action));
        return true;
    }

    bool NameElement(uint32_t& result)
    {
        ozGrammarNode node = NodeHere(ozGrammarNode::Terminal);
        std::string_view name = Name();
        if (name == "REST") {
            node.kind = ozGrammarNode::Rest;
        } else if (IsTokenClass(name)) {
            node.tokenClass = name == "WORD"     ? ClassWord
                              : name == "STRING" ? ClassString
                              : name == "NUMBER" ? ClassNumber
                              : name == "REF"    ? ClassReference
                                                 : ClassSection;
            // WORD - "END" - "PART": the class without these keywords.
            while (true) {
                SkipBlanks();
                if (Peek() != '-')
                    break;
                Advance();
                SkipBlanks();
                if (Peek() != '"')
                    return Fail("expected a keyword in quotes after \"-\", found " + Found());
                uint32_t keyword;
                if (!KeywordNumber(keyword))
                    return false;
                node.excludedKeywords.push_back(keyword);
            }
        } else {
            node.kind = ozGrammarNode::RuleCall;
            if (m_grammar.rules.size() >= MaxRules && m_ruleIndex.count(std::string(name)) == 0)
                return Fail("too many rules");
            node.target = RuleNumber(name, node.line, node.column);
        }
        result = AddNode(std::move(node));
        return true;
    }

    std::string_view m_text;
    ozGrammar& m_grammar;
    ozStatus m_failure;
    size_t m_position = 0;
    size_t m_lineStart = 0;
    unsigned m_line = 1;
    std::unordered_map<std::string, uint32_t> m_ruleIndex;
};

}  // namespace

ozStatus ozReadGrammar(std::string_view text, ozGrammar& grammar)
{
    grammar = ozGrammar();
    GrammarReader reader(text, grammar);
    return reader.Read() ? ozStatus::Ok() : reader.Failure();
}
