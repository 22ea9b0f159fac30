#include "ozGrammar.h"

#include <functional>

#include "platform/ozAsciiCase.h"

uint32_t ozKeywordHash(std::string_view word)
{
    uint32_t hash = 2166136261u;
    for (unsigned char c : word)
        hash = (hash ^ ozAsciiUpper(c)) * 16777619u;
    return hash;
}

namespace {

bool SameWord(std::string_view word, std::string_view upperCased)
{
    if (word.size() != upperCased.size())
        return false;
    for (size_t i = 0; i < word.size(); ++i)
        if (ozAsciiUpper(word[i]) != upperCased[i])
            return false;
    return true;
}

}  // namespace

namespace {

// The position of text in names, adding it at the end when it is not there.
uint32_t NumberOf(std::vector<std::string>& names, std::string_view text)
{
    for (uint32_t i = 0; i < names.size(); ++i)
        if (names[i] == text)
            return i;
    names.emplace_back(text);
    return static_cast<uint32_t>(names.size() - 1);
}

}  // namespace

uint32_t ozGrammar::Keyword(std::string_view upperCased)
{
    return NumberOf(keywords, upperCased);
}

uint32_t ozGrammar::Action(std::string_view name)
{
    return NumberOf(actions, name);
}

void ozGrammar::BuildKeywordIndex()
{
    size_t size = 16;
    while (size < keywords.size() * 4)
        size *= 2;
    m_keywordIndex.assign(size, -1);
    for (uint32_t i = 0; i < keywords.size(); ++i) {
        size_t slot = ozKeywordHash(keywords[i]) & (size - 1);
        while (m_keywordIndex[slot] >= 0)
            slot = (slot + 1) & (size - 1);
        m_keywordIndex[slot] = static_cast<int32_t>(i);
    }
}

int ozGrammar::FindKeyword(std::string_view word) const
{
    if (m_keywordIndex.empty())
        return -1;
    size_t mask = m_keywordIndex.size() - 1;
    for (size_t slot = ozKeywordHash(word) & mask; m_keywordIndex[slot] >= 0;
         slot = (slot + 1) & mask) {
        int32_t keyword = m_keywordIndex[slot];
        if (SameWord(word, keywords[static_cast<size_t>(keyword)]))
            return keyword;
    }
    return -1;
}

bool ozGrammar::Matches(const ozGrammarNode& terminal, unsigned signature) const
{
    bool isKeyword = signature >= SignatureFirstKeyword;
    if (isKeyword) {
        uint32_t keyword = signature - SignatureFirstKeyword;
        for (uint32_t excluded : terminal.excludedKeywords)
            if (excluded == keyword)
                return false;
        if (terminal.tokenClass == ClassKeyword)
            return terminal.keyword == keyword;
    }
    switch (terminal.tokenClass) {
        case ClassKeyword:
            return false;
        case ClassWord:
            return isKeyword || signature == TokenWord || signature == TokenDigits;
        case ClassString:
            return signature == TokenQuoted || signature == TokenQuotedDigits;
        case ClassNumber:
            return signature == TokenDigits || signature == TokenQuotedDigits;
        case ClassReference:
            return signature == TokenReference;
        case ClassSection:
            return signature == TokenSection;
    }
    return false;
}

std::string ozGrammar::Describe(const ozGrammarNode& terminal) const
{
    switch (terminal.tokenClass) {
        case ClassKeyword:
            return '"' + keywords[terminal.keyword] + '"';
        case ClassWord:
            return "a word";
        case ClassString:
            return "a text in quotes";
        case ClassNumber:
            return "a number";
        case ClassReference:
            return "a string reference";
        case ClassSection:
            return "a section header";
    }
    return "a token";
}

std::string ozGrammar::DescribeFirst(const ozGrammarNode& node) const
{
    // Names the token classes and keywords that could begin node, at most a few of them.
    static const char* const kindNames[SignatureFirstKeyword] = {"the end of the file",
                                                                 "",
                                                                 "a number",
                                                                 "a text in quotes",
                                                                 "a number in quotes",
                                                                 "a string reference",
                                                                 "a section header",
                                                                 "a word"};
    std::string list;
    unsigned named = 0;
    bool more = false;
    for (unsigned signature = SignatureCount(); signature-- > 0;) {
        if (!node.first[signature])
            continue;
        if (signature < SignatureFirstKeyword && *kindNames[signature] == '\0')
            continue;
        if (named == 6) {
            more = true;
            break;
        }
        if (named > 0)
            list += ", ";
        list += signature >= SignatureFirstKeyword
                    ? '"' + keywords[signature - SignatureFirstKeyword] + '"'
                    : std::string(kindNames[signature]);
        ++named;
    }
    if (more)
        list += ", ...";
    return list;
}

ozStatus ozGrammar::FindLeftRecursion() const
{
    // The rules each rule can call before it has read a token.
    std::vector<std::vector<uint32_t>> leftCalls(rules.size());
    std::function<void(uint32_t, std::vector<uint32_t>&)> collect =
        [&](uint32_t index, std::vector<uint32_t>& calls) {
            const ozGrammarNode& node = nodes[index];
            switch (node.kind) {
                case ozGrammarNode::Sequence:
                    for (uint32_t child : node.children) {
                        collect(child, calls);
                        if (!nodes[child].nullable)
                            break;
                    }
                    break;
                case ozGrammarNode::Choice:
                case ozGrammarNode::Optional:
                case ozGrammarNode::Repeat:
                    for (uint32_t child : node.children)
                        collect(child, calls);
                    break;
                case ozGrammarNode::RuleCall:
                    calls.push_back(node.target);
                    break;
                default:
                    break;
            }
        };
    for (uint32_t rule = 0; rule < rules.size(); ++rule)
        collect(rules[rule].body, leftCalls[rule]);

    enum Mark : uint8_t { Unvisited, OnPath, Done };
    std::vector<Mark> marks(rules.size(), Unvisited);
    ozStatus recursion;
    std::function<bool(uint32_t)> visit = [&](uint32_t rule) {
        marks[rule] = OnPath;
        for (uint32_t called : leftCalls[rule]) {
            if (marks[called] == OnPath) {
                recursion = ozStatus::Error("rule \"" + rules[called].name +
                                                "\" calls itself before reading a token (left "
                                                "recursion)",
                                            0, rules[called].line, rules[called].column);
                return false;
            }
            if (marks[called] == Unvisited && !visit(called))
                return false;
        }
        marks[rule] = Done;
        return true;
    };
    for (uint32_t rule = 0; rule < rules.size(); ++rule)
        if (marks[rule] == Unvisited && !visit(rule))
            break;
    return recursion;
}

ozStatus ozGrammar::Complete()
{
    BuildKeywordIndex();
    const unsigned signatures = SignatureCount();
    for (ozGrammarNode& node : nodes) {
        node.first.assign(signatures, 0);
        node.nullable = node.kind == ozGrammarNode::Action || node.kind == ozGrammarNode::Rest ||
                        node.kind == ozGrammarNode::Optional || node.kind == ozGrammarNode::Repeat;
        if (node.kind == ozGrammarNode::Terminal)
            for (unsigned signature = 0; signature < signatures; ++signature)
                node.first[signature] = Matches(node, signature);
    }
    // What can begin a node depends on rules called from it, so iterate to a fixed point.
    auto addFirst = [](ozGrammarNode& to, const ozGrammarNode& from) {
        bool changed = false;
        for (size_t i = 0; i < to.first.size(); ++i)
            if (from.first[i] && !to.first[i]) {
                to.first[i] = 1;
                changed = true;
            }
        return changed;
    };
    for (bool changed = true; changed;) {
        changed = false;
        for (ozGrammarNode& node : nodes) {
            bool nullable = node.nullable;
            switch (node.kind) {
                case ozGrammarNode::Sequence:
                    nullable = true;
                    for (uint32_t child : node.children) {
                        changed |= addFirst(node, nodes[child]);
                        if (!nodes[child].nullable) {
                            nullable = false;
                            break;
                        }
                    }
                    break;
                case ozGrammarNode::Choice:
                    nullable = false;
                    for (uint32_t child : node.children) {
                        changed |= addFirst(node, nodes[child]);
                        nullable |= nodes[child].nullable;
                    }
                    break;
                case ozGrammarNode::Optional:
                case ozGrammarNode::Repeat:
                    changed |= addFirst(node, nodes[node.children[0]]);
                    break;
                case ozGrammarNode::RuleCall:
                    changed |= addFirst(node, nodes[rules[node.target].body]);
                    nullable = nodes[rules[node.target].body].nullable;
                    break;
                default:
                    break;
            }
            if (nullable != node.nullable) {
                node.nullable = nullable;
                changed = true;
            }
        }
    }
    if (ozStatus noRecursion = FindLeftRecursion(); !noRecursion)
        return noRecursion;
    for (ozGrammarNode& node : nodes) {
        if (node.kind != ozGrammarNode::Choice)
            continue;
        node.decision.assign(signatures, -1);
        for (unsigned signature = 0; signature < signatures; ++signature) {
            for (size_t i = 0; i < node.children.size() && node.decision[signature] < 0; ++i)
                if (nodes[node.children[i]].first[signature])
                    node.decision[signature] = static_cast<int16_t>(i);
            for (size_t i = 0; i < node.children.size() && node.decision[signature] < 0; ++i)
                if (nodes[node.children[i]].nullable)
                    node.decision[signature] = static_cast<int16_t>(i);
        }
    }
    return ozStatus::Ok();
}
