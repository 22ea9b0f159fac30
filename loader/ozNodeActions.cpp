// The actions for classes, categories and policies: where a begun node goes in the tree, the
// key scopes of categories and policies, and the policy's own settings.
#include <cstring>
#include <memory>
#include <utility>

#include "core/adm/ozADMCategory.h"
#include "core/adm/ozADMRoot.h"
#include "core/tree/ozOwnedText.h"
#include "ozActionSupport.h"
#include "ozGrammarActions.h"
#include "ozLoadContext.h"
#include "platform/ozAsciiCase.h"

namespace {

// The merge rule: a node goes among its siblings next to the first one, in sibling order, that
// has its name or no name at all. A sibling of the same name that is of the same kind takes the
// new node's place: node is deleted and the sibling becomes the current node, so that a second
// template extends what the first built. Otherwise node is added after that sibling (one of the
// same name but another kind, or one without a name), or after the last sibling when none
// matched, or as the first child. Names compare exactly, byte for byte.
//
// Places node among the top-level nodes of tree (a class; there are few of them, so they are
// searched directly). False, node deleted, when it cannot be added.
bool MergeOrInsertClass(ozADMTree& tree, std::unique_ptr<ozADMNode> node)
{
    ozTreeNode* first = tree.GetRoot();
    if (first == nullptr) {
        if (!tree.AddBelow(node.get()))
            return false;
        node.release();
        return true;
    }
    for (;;) {
        const auto* sibling = static_cast<const ozADMNode*>(tree.GetCurr());
        if (sibling->Name() == nullptr)
            break;
        if (std::strcmp(sibling->Name(), node->Name()) == 0) {
            if (sibling->NodeType() == node->NodeType())
                return true;
            break;
        }
        if (tree.GetNext() == nullptr)
            break;
    }
    if (!tree.AddAfter(node.get()))
        return false;
    node.release();
    return true;
}

// Places node among the children of the current node (a category or policy), by the merge rule
// above, through the parent's index of its children's names: placing each of many siblings
// takes constant time. Without a current node, node becomes the first top-level node.
bool MergeOrInsertChild(ozADMTree& tree, std::unique_ptr<ozADMNode> node)
{
    auto* parent = static_cast<ozADMNode*>(tree.GetCurr());
    if (parent == nullptr) {
        if (!tree.AddBelow(node.get()))
            return false;
        node.release();
        return true;
    }
    ozADMNode* sibling = parent->FirstChildNamedOrNameless(node->Name());
    if (sibling != nullptr && sibling->Name() != nullptr && sibling->NodeType() == node->NodeType())
        return tree.MoveDownTo(sibling);
    bool added = sibling != nullptr ? tree.MoveDownTo(sibling) && tree.AddAfter(node.get())
                                    : tree.AppendChild(parent, parent->LastChild(), node.get());
    if (!added)
        return false;
    node.release();
    return true;
}

// BeginCategory and BeginPolicy: a key scope, the fetched name, the node merged or inserted.
template <class Node>
intptr_t BeginNamedNode(int error)
{
    return ozRunAction(error, [error] {
        if (!ozOpenKeyScope())
            return ozFail(error);
        std::unique_ptr<char[]> name = ozFetchString();
        if (name == nullptr)
            return false;
        ozADMTree* tree = ozLoadContext::Instance().Tree();
        if (tree == nullptr)
            return ozFail(error);
        auto node = std::make_unique<Node>();
        node->Name(name.get());
        return MergeOrInsertChild(*tree, std::move(node)) || ozFail(error);
    });
}

// Runs apply on the current policy; 1102 without one. Out of memory counts as 1007.
template <class Apply>
intptr_t OnPolicy(Apply&& apply)
{
    return ozRunAction(StringsErrorOutOfMemory, [&apply] {
        ozADMPolicy* policy = ozCurrentPolicy();
        if (policy == nullptr)
            return ozFail(LoadErrorNoPolicy);
        return apply(*policy);
    });
}

// Fetches a String and hands it to apply with the current policy.
template <class Apply>
intptr_t PolicyText(Apply&& apply)
{
    return OnPolicy([&apply](ozADMPolicy& policy) {
        std::unique_ptr<char[]> text = ozFetchString();
        if (text == nullptr)
            return false;
        apply(policy, text.get());
        return true;
    });
}

}  // namespace

intptr_t BeginClass(intptr_t token)
{
    return ozRunAction(LoadErrorCreateClass, [token] {
        ozLoadContext& context = ozLoadContext::Instance();
        const ozEBNFToken* classToken = ozTokenOf(token);
        ozADMTree* tree = context.Tree();
        if (classToken == nullptr || classToken->morph == nullptr || tree == nullptr)
            return ozFail(LoadErrorCreateClass);
        std::unique_ptr<char[]> name = ozCopyText(classToken->morph);
        ozAsciiUpperCase(name.get());
        auto root = std::make_unique<ozADMRoot>();
        root->RootType(name.get());
        root->Name(name.get());
        if (!MergeOrInsertClass(*tree, std::move(root)))
            return ozFail(LoadErrorInsertClass);
        // The current node is the class root now, the new one or the one merged with.
        context.CurrentClass(static_cast<ozADMRoot*>(tree->GetCurr())->RootType());
        return true;
    });
}

intptr_t BeginCategory(intptr_t)
{
    return BeginNamedNode<ozADMCategory>(LoadErrorCategory);
}

intptr_t EndCategory(intptr_t)
{
    ozCloseKeyScope();
    ozADMTree* tree = ozLoadContext::Instance().Tree();
    if (tree == nullptr || tree->GetUp() == nullptr)
        return ozFail(LoadErrorEndCategory);
    return 1;
}

intptr_t BeginPolicy(intptr_t)
{
    return BeginNamedNode<ozADMPolicy>(LoadErrorPolicy);
}

intptr_t PolicyValuename(intptr_t)
{
    return PolicyText([](ozADMPolicy& policy, const char* text) { policy.Valuename(text); });
}

intptr_t PolicyExplain(intptr_t)
{
    return PolicyText([](ozADMPolicy& policy, const char* text) { policy.Explain(text); });
}

intptr_t PolicyClientExt(intptr_t)
{
    return PolicyText([](ozADMPolicy& policy, const char* text) { policy.ClientExt(text); });
}

intptr_t PolicySupported(intptr_t)
{
    return PolicyText([](ozADMPolicy& policy, const char* text) { policy.SupportedOn(text); });
}

intptr_t PolicyValueOn(intptr_t)
{
    return OnPolicy([](ozADMPolicy& policy) {
        return ozTakeValue(policy, &ozADMPolicy::ValueOn, "PolicyValueOn");
    });
}

intptr_t PolicyValueOff(intptr_t)
{
    return OnPolicy([](ozADMPolicy& policy) {
        return ozTakeValue(policy, &ozADMPolicy::ValueOff, "PolicyValueOff");
    });
}

intptr_t PolicyActionlistOn(intptr_t)
{
    return OnPolicy(
        [](ozADMPolicy& policy) { return ozTakeActionList(policy, &ozADMPolicy::ActionListOn); });
}

intptr_t PolicyActionlistOff(intptr_t)
{
    return OnPolicy(
        [](ozADMPolicy& policy) { return ozTakeActionList(policy, &ozADMPolicy::ActionListOff); });
}

intptr_t EndPolicy(intptr_t)
{
    return ozRunAction(StringsErrorOutOfMemory, [] {
        ozADMPolicy* policy = ozCurrentPolicy();
        if (policy == nullptr)
            return ozFail(LoadErrorEndPolicy);
        const char* keyName = ozCurrentKeyName();
        if (keyName == nullptr || *keyName == '\0')
            return ozFail(LoadErrorNoKeyName);
        if (!policy->RegKey(keyName))
            return ozFail(LoadErrorBindKey);
        ozCloseKeyScope();
        return ozLoadContext::Instance().Tree()->GetUp() != nullptr || ozFail(LoadErrorEndPolicy);
    });
}
