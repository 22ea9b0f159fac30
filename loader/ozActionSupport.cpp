#include "ozActionSupport.h"

#include <utility>

#include "core/adm/ozADMRoot.h"
#include "ozLoadContext.h"

namespace {

// Pops the argument on top when it is of `kind`; see ozFetchString.
std::unique_ptr<ozArgument> Fetch(tARGUMENTKIND kind)
{
    ozArgumentStack* arguments = ozLoadContext::Instance().Arguments();
    std::unique_ptr<ozArgument> argument = arguments != nullptr ? arguments->Pop() : nullptr;
    if (argument != nullptr && argument->kind != kind) {
        ozFail(LoadErrorWrongArgument, ozArgumentStack::KindName(kind));
        return nullptr;
    }
    return argument;
}

}  // namespace

bool ozFail(int number, const char* description)
{
    if (description != nullptr)
        error_set_desc(description);
    error_set_code(number);
    return false;
}

bool ozTokenNumber(intptr_t argument, unsigned long* number)
{
    const ozEBNFToken* token = ozTokenOf(argument);
    if (token == nullptr || token->type != EBNFTokenNumber)
        return ozFail(LoadErrorNumberRequired);
    *number = token->number;
    return true;
}

bool ozFetchQword(std::uint64_t* number)
{
    std::unique_ptr<char[]> text = ozFetchString();
    if (text == nullptr)
        return false;
    std::uint64_t read = 0;
    const char* digit = text.get();
    for (; *digit >= '0' && *digit <= '9'; ++digit) {
        unsigned value = static_cast<unsigned>(*digit - '0');
        if (read > (UINT64_MAX - value) / 10)
            break;
        read = read * 10 + value;
    }
    if (digit == text.get() || *digit != '\0')
        return ozFail(LoadErrorNumberRequired, text.get());
    *number = read;
    return true;
}

std::unique_ptr<char[]> ozFetchString()
{
    std::unique_ptr<ozArgument> argument = Fetch(ArgumentString);
    return argument != nullptr ? std::move(argument->text) : nullptr;
}

std::unique_ptr<ozADMValue> ozFetchValue()
{
    std::unique_ptr<ozArgument> argument = Fetch(ArgumentValue);
    return argument != nullptr ? std::move(argument->value) : nullptr;
}

std::unique_ptr<ozADMActionList> ozFetchActionList()
{
    std::unique_ptr<ozArgument> argument = Fetch(ArgumentActionList);
    return argument != nullptr ? std::move(argument->actionList) : nullptr;
}

ozADMActionList* ozPeekActionList()
{
    ozArgumentStack* arguments = ozLoadContext::Instance().Arguments();
    ozArgument* top = arguments != nullptr ? arguments->Top() : nullptr;
    if (top == nullptr) {
        ozFail(LoadErrorNoArgument);
        return nullptr;
    }
    if (top->kind != ArgumentActionList) {
        ozFail(LoadErrorWrongArgument, ozArgumentStack::KindName(ArgumentActionList));
        return nullptr;
    }
    return top->actionList.get();
}

bool ozPushString(std::unique_ptr<char[]> text)
{
    ozArgumentStack* arguments = ozLoadContext::Instance().Arguments();
    if (arguments == nullptr)
        return false;
    arguments->PushString(std::move(text));
    return true;
}

bool ozPushValue(std::unique_ptr<ozADMValue> value)
{
    ozArgumentStack* arguments = ozLoadContext::Instance().Arguments();
    if (arguments == nullptr)
        return false;
    arguments->PushValue(std::move(value));
    return true;
}

bool ozPushActionList(std::unique_ptr<ozADMActionList> actionList)
{
    ozArgumentStack* arguments = ozLoadContext::Instance().Arguments();
    if (arguments == nullptr)
        return false;
    arguments->PushActionList(std::move(actionList));
    return true;
}

bool ozOpenKeyScope() noexcept
{
    ozKeyNameStack* keyNames = ozLoadContext::Instance().KeyNames();
    if (keyNames == nullptr)
        return false;
    try {
        keyNames->OpenScope();
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

void ozCloseKeyScope()
{
    ozKeyNameStack* keyNames = ozLoadContext::Instance().KeyNames();
    if (keyNames != nullptr)
        keyNames->CloseScope();
}

const char* ozCurrentKeyName()
{
    ozKeyNameStack* keyNames = ozLoadContext::Instance().KeyNames();
    return keyNames != nullptr ? keyNames->Current() : nullptr;
}

ozADMPolicy* ozCurrentPolicy()
{
    ozADMTree* tree = ozLoadContext::Instance().Tree();
    auto* node = tree != nullptr ? static_cast<ozADMNode*>(tree->GetCurr()) : nullptr;
    return node != nullptr && node->NodeType() == NodePolicy ? static_cast<ozADMPolicy*>(node)
                                                             : nullptr;
}

ozADMCtrl* ozLastPartOfCurrentPolicy()
{
    ozADMPolicy* policy = ozCurrentPolicy();
    if (policy == nullptr)
        return nullptr;
    int count = policy->Controls().Count();
    if (count == 0) {
        ozFail(LoadErrorPolicyWithoutParts);
        return nullptr;
    }
    return policy->Controls().At(count - 1);
}

ozClassRegistry ozCurrentClassRegistry()
{
    const ozLoadContext& context = ozLoadContext::Instance();
    ozADMTree* tree = context.Tree();
    if (tree == nullptr)
        return {nullptr, HKEY_LOCAL_MACHINE};
    if (context.CurrentClass() == RootUser)
        return {&tree->UsrTree(), HKEY_CURRENT_USER};
    return {&tree->MacTree(), HKEY_LOCAL_MACHINE};
}
