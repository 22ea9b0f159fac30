// The actions that fill the argument stack and the key names: KEYNAME, values, action lists
// and the texts of the template (quoted, as written, or by [strings] reference).
#include <cstdint>
#include <memory>
#include <utility>

#include "core/tree/ozOwnedText.h"
#include "ozActionSupport.h"
#include "ozGrammarActions.h"
#include "ozLoadContext.h"
#include "platform/ozAsciiCase.h"

namespace {

// Pushes value once set, which `set` (returning the setter's result) does; 1124 when refused.
template <class Set>
bool PushSetValue(Set&& set)
{
    auto value = std::make_unique<ozADMValue>();
    if (!set(*value))
        return ozFail(LoadErrorValueRefused);
    return ozPushValue(std::move(value)) || ozFail(StringsErrorOutOfMemory);
}

}  // namespace

intptr_t SetKeyname(intptr_t)
{
    return ozRunAction(LoadErrorKeyName, [] {
        std::unique_ptr<char[]> keyName = ozFetchString();
        if (keyName == nullptr)
            return false;
        ozKeyNameStack* keyNames = ozLoadContext::Instance().KeyNames();
        return (keyNames != nullptr && keyNames->Replace(std::move(keyName))) ||
               ozFail(LoadErrorKeyName);
    });
}

intptr_t ValueNumeric(intptr_t token)
{
    return ozRunAction(StringsErrorOutOfMemory, [token] {
        unsigned long number = 0;
        if (!ozTokenNumber(token, &number))
            return false;
        return PushSetValue([number](ozADMValue& value) { return value.SetNumeric(number); });
    });
}

intptr_t ValueQword(intptr_t)
{
    return ozRunAction(StringsErrorOutOfMemory, [] {
        std::uint64_t number = 0;
        if (!ozFetchQword(&number))
            return false;
        return PushSetValue([number](ozADMValue& value) { return value.SetQword(number); });
    });
}

intptr_t ValueString(intptr_t)
{
    return ozRunAction(StringsErrorOutOfMemory, [] {
        std::unique_ptr<char[]> text = ozFetchString();
        if (text == nullptr)
            return false;
        return PushSetValue([&text](ozADMValue& value) { return value.SetString(text.get()); });
    });
}

intptr_t ValueDelete(intptr_t)
{
    return ozRunAction(StringsErrorOutOfMemory, [] {
        return PushSetValue([](ozADMValue& value) { return value.SetDelete(); });
    });
}

intptr_t BeginActionlist(intptr_t)
{
    return ozRunAction(StringsErrorOutOfMemory, [] {
        if (!ozPushActionList(std::make_unique<ozADMActionList>()))
            return ozFail(StringsErrorOutOfMemory);
        return ozOpenKeyScope() || ozFail(StringsErrorOutOfMemory);
    });
}

intptr_t EndActionlist(intptr_t)
{
    ozCloseKeyScope();
    return 1;
}

intptr_t ActionlistValue(intptr_t)
{
    return ozRunAction(LoadErrorActionItem, [] {
        std::unique_ptr<ozADMValue> value = ozFetchValue();
        if (value == nullptr)
            return false;
        std::unique_ptr<char[]> valueName = ozFetchString();
        if (valueName == nullptr)
            return false;
        ozADMActionList* list = ozPeekActionList();
        if (list == nullptr)
            return false;
        auto* added = new ozActionItem;
        if (!list->Add(added))
            return ozFail(LoadErrorActionListFull);
        ozClassRegistry registry = ozCurrentClassRegistry();
        if (registry.tree == nullptr ||
            !added->RegKey(*registry.tree, registry.root, ozCurrentKeyName()))
            return ozFail(LoadErrorBindKey);
        added->ValueName(valueName.get());
        added->Value() = *value;
        return true;
    });
}

intptr_t SaveString(intptr_t token)
{
    return ozRunAction(StringsErrorOutOfMemory, [token] {
        ozEBNFToken* text = ozTokenOf(token);
        if (text == nullptr || (text->type != EBNFTokenWord && text->type != EBNFTokenString))
            return ozFail(LoadErrorTextRequired);
        return ozPushString(ozCopyText(ozEBNFTokenText(text))) || ozFail(StringsErrorOutOfMemory);
    });
}

intptr_t SaveMorphString(intptr_t token)
{
    return ozRunAction(StringsErrorOutOfMemory, [token] {
        const ozEBNFToken* written = ozTokenOf(token);
        if (written == nullptr || written->morph == nullptr)
            return false;
        return ozPushString(ozCopyText(written->morph)) || ozFail(StringsErrorOutOfMemory);
    });
}

intptr_t SaveStringFromName(intptr_t token)
{
    return ozRunAction(StringsErrorOutOfMemory, [token] {
        ozEBNFToken* reference = ozTokenOf(token);
        if (reference == nullptr || reference->type != EBNFTokenReference)
            return ozFail(LoadErrorUnknownString);
        char* name = ozEBNFTokenText(reference);
        ozAsciiUpperCase(name);
        const ozStringTable* strings = ozLoadContext::Instance().Strings();
        const char* text = strings != nullptr ? strings->Find(name) : nullptr;
        if (text == nullptr)  // named, so that the message says which string is missing
            return ozFail(LoadErrorUnknownString, name);
        return ozPushString(ozCopyText(text)) || ozFail(StringsErrorOutOfMemory);
    });
}
