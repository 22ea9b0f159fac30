#include "ozTemplateParser.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "ozEngineErrors.h"

namespace {

std::string DescribeToken(const ozTemplateToken& token)
{
    constexpr size_t MaxShown = 40;
    auto shown = [&](std::string_view text) {
        return text.size() > MaxShown ? std::string(text.substr(0, MaxShown)) + "..."
                                      : std::string(text);
    };
    switch (token.kind) {
        case TokenEnd:
            return "the end of the file";
        case TokenQuoted:
        case TokenQuotedDigits:
            return "the text \"" + shown(token.text) + "\"";
        default:
            return "\"" + shown(token.source) + "\"";
    }
}

}  // namespace

ozTemplateParser::ozTemplateParser(const ozGrammar& grammar,
                                   const std::vector<ozEBNFAction>& actions, ozTemplateLexer& lexer)
    : m_grammar(grammar), m_actions(actions), m_lexer(lexer)
{
}

bool ozTemplateParser::Parse()
{
    if (!Run(m_grammar.rules[0].body))
        return false;
    const ozTemplateToken& token = m_lexer.Peek();
    if (token.kind == TokenError)
        return Fail(m_lexer.ErrorCode(), m_lexer.ErrorMessage(), token.offset);
    if (token.kind != TokenEnd)
        return Fail(EBNFErrorSyntax, "expected the end of the file, found " + DescribeToken(token),
                    token.offset);
    return true;
}

bool ozTemplateParser::Fail(int code, std::string description, size_t offset)
{
    m_errorCode = code;
    m_errorDescription = std::move(description);
    m_errorOffset = offset;
    return false;
}

bool ozTemplateParser::Expected(const ozGrammarNode& node)
{
    const ozTemplateToken& token = m_lexer.Peek();
    if (token.kind == TokenError)
        return Fail(m_lexer.ErrorCode(), m_lexer.ErrorMessage(), token.offset);
    std::string expected = node.kind == ozGrammarNode::Terminal ? m_grammar.Describe(node)
                                                                : m_grammar.DescribeFirst(node);
    return Fail(EBNFErrorSyntax, "expected " + expected + ", found " + DescribeToken(token),
                token.offset);
}

bool ozTemplateParser::Run(uint32_t index)
{
    const ozGrammarNode& node = m_grammar.nodes[index];
    switch (node.kind) {
        case ozGrammarNode::Sequence:
            for (uint32_t child : node.children)
                if (!Run(child))
                    return false;
            return true;
        case ozGrammarNode::Choice: {
            int taken = node.decision[m_lexer.Peek().signature];
            if (taken < 0)
                return Expected(node);
            return Run(node.children[static_cast<size_t>(taken)]);
        }
        case ozGrammarNode::Optional:
            if (node.first[m_lexer.Peek().signature])
                return Run(node.children[0]);
            return true;
        case ozGrammarNode::Repeat:
            while (node.first[m_lexer.Peek().signature]) {
                uint64_t before = m_consumed;
                if (!Run(node.children[0]))
                    return false;
                if (m_consumed == before)  // a part that reads nothing would repeat for ever
                    break;
            }
            return true;
        case ozGrammarNode::Terminal: {
            const ozTemplateToken& token = m_lexer.Peek();
            if (!node.first[token.signature])
                return Expected(node);
            m_last = token;
            m_haveLast = true;
            m_lastReadAsNumber = node.tokenClass == ClassNumber;
            m_lexer.Consume();
            ++m_consumed;
            return true;
        }
        case ozGrammarNode::RuleCall: {
            if (m_depth >= MaxDepth)
                return Fail(EBNFErrorSyntax,
                            "nested more than " + std::to_string(MaxDepth) + " levels deep",
                            m_lexer.Peek().offset);
            ++m_depth;
            bool result = Run(m_grammar.rules[node.target].body);
            --m_depth;
            return result;
        }
        case ozGrammarNode::Action:
            return CallAction(node);
        case ozGrammarNode::Rest:
            m_lexer.SkipToEnd();
            ++m_consumed;
            return true;
    }
    return false;
}

ozEBNFToken* ozTemplateParser::Record(const ozGrammarNode& action)
{
    uint32_t type = 0;
    std::string_view text;
    uint32_t number = 0;
    if (action.hasArgument) {
        type = EBNFTokenString;
        text = action.argument;
        m_morph = action.argument;
    } else if (m_haveLast) {
        m_morph = m_last.source;
        if (m_lastReadAsNumber) {
            type = EBNFTokenNumber;
            number = m_last.number;
        } else {
            switch (m_last.kind) {
                case TokenQuoted:
                case TokenQuotedDigits:
                    type = EBNFTokenString;
                    break;
                case TokenReference:
                    type = EBNFTokenReference;
                    break;
                default:
                    type = EBNFTokenWord;
                    break;
            }
            text = m_last.text;
        }
    } else {
        m_morph.clear();
    }
    // The buffer only grows: records are made for every action call.
    size_t size = offsetof(ozEBNFToken, text) + std::max(text.size() + 1, sizeof(uint32_t));
    size_t words = (size + sizeof(uint64_t) - 1) / sizeof(uint64_t);
    if (m_record.size() < words)
        m_record.resize(words);
    auto* record = new (m_record.data()) ozEBNFToken{};
    record->type = type;
    record->morph = m_morph.c_str();
    if (type == EBNFTokenNumber) {
        record->number = number;
    } else {
        char* inlineText = ozEBNFTokenText(record);
        if (!text.empty())
            memcpy(inlineText, text.data(), text.size());
        inlineText[text.size()] = '\0';
    }
    return record;
}

bool ozTemplateParser::CallAction(const ozGrammarNode& action)
{
    ozEBNFToken* record = Record(action);
    ozEngineError& error = ozEngineError::Instance();
    error.Code(0);
    error.Description({});
    if (m_actions[action.target](reinterpret_cast<intptr_t>(record)) != 0)
        return true;
    std::string description = error.Description();
    if (error.Code() == 0 && description.empty())
        description = "action " + m_grammar.actions[action.target] + " failed";
    size_t offset = m_haveLast ? m_last.offset : 0;
    return Fail(error.Code(), std::move(description), offset);
}
