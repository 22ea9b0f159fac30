#include "ozADMTree.h"

#include <memory>

#include "ozADMNode.h"
#include "ozADMPolicy.h"

namespace {

// Calls an operation on every node of the walk and remembers whether all succeeded, so that
// one failing node does not stop the others.
struct EveryNode {
    bool (ozADMNode::*operation)();
    bool allSucceeded = true;
};

bool CallOnNode(ozTreeNode* node, void* context)
{
    auto* every = static_cast<EveryNode*>(context);
    auto* templateNode = static_cast<ozADMNode*>(node);
    if (!(templateNode->*every->operation)())
        every->allSucceeded = false;
    return true;
}

bool CollectConfigured(ozTreeNode* node, void* context)
{
    auto* templateNode = static_cast<ozADMNode*>(node);
    if (templateNode->NodeType() == NodePolicy &&
        static_cast<ozADMPolicy*>(templateNode)->State() != PolicyNotConfigured)
        static_cast<ozADMKeyPolicies*>(context)->Policies().Add(
            static_cast<ozADMPolicy*>(templateNode));
    return true;
}

}  // namespace

ozADMTree::~ozADMTree()
{
    // The nodes go first, while the registry trees their parts point into still stand.
    while (Down() != nullptr)
        delete Down();
}

ozRegTree& ozADMTree::UsrTree()
{
    return m_userTree;
}

ozRegTree& ozADMTree::MacTree()
{
    return m_machineTree;
}

bool ozADMTree::SaveToRegistry()
{
    EveryNode every{&ozADMNode::SaveToRegistry};
    Execute(CallOnNode, &every);
    return every.allSucceeded;
}

bool ozADMTree::Sync()
{
    EveryNode every{&ozADMNode::Sync};
    Execute(CallOnNode, &every);
    return every.allSucceeded;
}

bool ozADMTree::SetDefaultValues()
{
    EveryNode every{&ozADMNode::SetDefault};
    Execute(CallOnNode, &every);
    return true;
}

bool ozADMTree::Save(FILE* file)
{
    if (file == nullptr)
        return false;
    m_strings.RemoveAll();
    m_stringCounter = 0;
    m_indentation = 0;
    m_conversionLosses.clear();
    m_writingPolicy.clear();
    // Buffered output fails only when it reaches the device, so the flush belongs to the save.
    bool saved = ozTree::Save(file) && SaveStringList(file) && std::fflush(file) == 0;
    m_strings.RemoveAll();
    return saved;
}

const std::vector<std::string>& ozADMTree::ConversionLosses() const
{
    return m_conversionLosses;
}

void ozADMTree::ReportConversionLoss(const std::string& what)
{
    m_conversionLosses.push_back(m_writingPolicy + ": " + what);
}

void ozADMTree::WritingPolicy(const char* path)
{
    m_writingPolicy = path != nullptr ? path : "";
}

bool ozADMTree::WriteString(FILE* file, const char* text)
{
    if (file == nullptr)
        return false;
    if (text == nullptr || *text == '\0')
        return std::fputs("\"\"", file) != EOF;
    auto entry = std::make_unique<ozADMStringEntry>();
    entry->Number(++m_stringCounter);
    entry->String(text);
    if (!m_strings.Add(entry.release()))
        return false;
    return std::fprintf(file, "!!%s%lu", "string", m_stringCounter) >= 0;
}

bool ozADMTree::SaveStringList(FILE* file)
{
    if (file == nullptr)
        return false;
    if (m_strings.Count() == 0)
        return true;
    if (std::fputs("\n[strings]\n\n", file) == EOF)
        return false;
    for (int pos = 0; pos < m_strings.Count(); ++pos) {
        const ozADMStringEntry* entry = m_strings.At(pos);
        if (std::fprintf(file, "%s%lu=\"%s\"\n", "string", entry->Number(), entry->String()) < 0)
            return false;
    }
    return true;
}

void ozADMTree::IndentInc()
{
    m_indentation += 4;
}

void ozADMTree::IndentDec()
{
    m_indentation = m_indentation < 5 ? 0 : m_indentation - 4;
}

bool ozADMTree::WriteIndent(FILE* file)
{
    if (file == nullptr)
        return false;
    for (unsigned long space = 0; space < m_indentation; ++space) {
        if (std::fputc(' ', file) == EOF)
            return false;
    }
    return true;
}

bool ozADMTree::GetPolicies(CCollection<ozADMPolicy>& policies) const
{
    ozADMKeyPolicies carrier(policies);
    return const_cast<ozADMTree*>(this)->Execute(CollectConfigured, &carrier);
}

ozADMNode* ozADMTree::FindNode(const char* path)
{
    return ozADMNode::FindAmong(Down(), path);
}

ozTreeNode* ozADMTree::GetUp()
{
    auto* current = static_cast<ozADMNode*>(GetCurr());
    ozTreeNode* parent = current != nullptr ? current->CachedUp() : nullptr;
    if (parent == nullptr || parent == this)
        return nullptr;
    _MoveCursor(parent);
    return parent;
}
