// What the grammar actions share (internal to the loader): reporting errors to the engine,
// guarding against running out of memory, fetching arguments, the key scopes, and finding the
// current policy, part and registry tree in the load context.
#pragma once

#include <cstdint>
#include <memory>
#include <new>

#include "core/adm/ozADMActionList.h"
#include "core/adm/ozADMCtrl.h"
#include "core/adm/ozADMPolicy.h"
#include "core/adm/ozADMValue.h"
#include "engine/ozEBNF.h"
#include "ozGrammarActions.h"
#include "platform/ozRegistryTypes.h"

// Reports a failure to the engine: the description first when there is one, then the number.
// Returns false, so that an action can `return ozFail(number);`.
bool ozFail(int number, const char* description = nullptr);

// Runs an action's body (a callable returning bool) and turns its result into the action's
// result. When memory runs out inside it, reports outOfMemoryError and fails instead.
template <class Body>
intptr_t ozRunAction(int outOfMemoryError, Body&& body) noexcept
{
    try {
        return body() ? 1 : 0;
    } catch (const std::bad_alloc&) {
        ozFail(outOfMemoryError);
        return 0;
    }
}

// The token record an action was given, or null.
inline ozEBNFToken* ozTokenOf(intptr_t argument)
{
    return reinterpret_cast<ozEBNFToken*>(argument);
}
// The number of a number token; false, with 1118 reported, for any other token.
bool ozTokenNumber(intptr_t argument, unsigned long* number);
// Fetches a String holding an unsigned 64-bit decimal number; false, with 1118 described by
// the text reported, for any other text, and false without a report when no String is there.
bool ozFetchQword(std::uint64_t* number);

// Fetch the argument on top of the argument stack as the kind named: null, having reported
// 1134 described by the kind's name and freed the argument, when it is of another kind; null
// without a report when the stack is empty or absent.
std::unique_ptr<char[]> ozFetchString();
std::unique_ptr<ozADMValue> ozFetchValue();
std::unique_ptr<ozADMActionList> ozFetchActionList();
// The action list on top of the argument stack, left there; null with 1133 reported for an
// empty (or absent) stack, with 1134 when the top is of another kind.
ozADMActionList* ozPeekActionList();

// Fetches a Value and copies it into (owner.*target)(), the owner's on or off value; without
// one, 1115 described by `action` (the action's own name).
template <class Owner>
bool ozTakeValue(Owner& owner, ozADMValue& (Owner::*target)(), const char* action);
// Fetches an Actionlist and hands it, owned, to (owner.*target)(list).
template <class Owner>
bool ozTakeActionList(Owner& owner, void (Owner::*target)(ozADMActionList*));
// Push onto the argument stack; false without one. Throw std::bad_alloc when memory runs out.
bool ozPushString(std::unique_ptr<char[]> text);
bool ozPushValue(std::unique_ptr<ozADMValue> value);
bool ozPushActionList(std::unique_ptr<ozADMActionList> actionList);

// Opens a key scope; false without a key-name stack or when memory runs out.
bool ozOpenKeyScope() noexcept;
// Closes the innermost key scope, if any.
void ozCloseKeyScope();
// The key name in force, or null outside every scope.
const char* ozCurrentKeyName();

// The current node of the tree when it is a policy, else null.
ozADMPolicy* ozCurrentPolicy();
// The current part (the last part of the current policy) when it is a Part; null otherwise,
// with 1113 reported (and 1103 before it when the current policy has no parts).
template <class Part>
Part* ozCurrentPart();

// Where the keys of parts and action items are found or created: the registry tree and root
// key of the current class (user for the user class, else machine). tree is null without a
// code object.
struct ozClassRegistry {
    ozRegTree* tree;
    HKEY root;
};
ozClassRegistry ozCurrentClassRegistry();

// The last part of the current policy; null without a current policy, and null with 1103
// reported when the current policy has no parts.
ozADMCtrl* ozLastPartOfCurrentPolicy();

template <class Part>
Part* ozCurrentPart()
{
    // The grammar calls a kind's actions only on parts of that kind; the cast keeps a grammar
    // that does otherwise from reaching members a part does not have.
    Part* part = dynamic_cast<Part*>(ozLastPartOfCurrentPolicy());
    if (part == nullptr)
        ozFail(LoadErrorNoPart);
    return part;
}

template <class Owner>
bool ozTakeValue(Owner& owner, ozADMValue& (Owner::*target)(), const char* action)
{
    std::unique_ptr<ozADMValue> value = ozFetchValue();
    if (value == nullptr)
        return ozFail(LoadErrorNoValue, action);
    (owner.*target)() = *value;
    return true;
}

template <class Owner>
bool ozTakeActionList(Owner& owner, void (Owner::*target)(ozADMActionList*))
{
    std::unique_ptr<ozADMActionList> list = ozFetchActionList();
    if (list == nullptr)
        return false;
    (owner.*target)(list.release());
    return true;
}
