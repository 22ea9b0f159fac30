// The arguments the grammar actions hand on to each other while a template is read: an action
// that recognises a text, a value or an action list pushes it, and the action for the construct
// around it fetches it later (the last pushed first).
#pragma once

#include <memory>

#include "core/adm/ozADMActionList.h"
#include "core/adm/ozADMValue.h"
#include "ozLinkedStack.h"

enum tARGUMENTKIND : int {
    ArgumentString = 1,
    ArgumentValue = 2,
    ArgumentActionList = 3,
};

// One argument: its kind and the owned payload of that kind (the other two are null).
struct ozArgument {
    tARGUMENTKIND kind = ArgumentString;
    std::unique_ptr<char[]> text;
    std::unique_ptr<ozADMValue> value;
    std::unique_ptr<ozADMActionList> actionList;
};

// Owns every argument on it. The pushes throw std::bad_alloc when memory runs out; the payload
// passed in is then freed and the stack is unchanged.
class ozArgumentStack {
public:
    // The name error descriptions give a kind: "String", "Value", "Actionlist", and
    // "unknown element" for any other number.
    static const char* KindName(int kind);

    void PushString(std::unique_ptr<char[]> text);
    void PushValue(std::unique_ptr<ozADMValue> value);
    void PushActionList(std::unique_ptr<ozADMActionList> actionList);

    // The argument on top, still the stack's; null when the stack is empty.
    ozArgument* Top() const { return m_arguments.Top(); }
    // Takes the argument on top off the stack and hands it to the caller; null when empty.
    std::unique_ptr<ozArgument> Pop() { return m_arguments.Pop(); }
    bool Empty() const { return m_arguments.Empty(); }
    // Frees every argument with its payload.
    void Clear() { m_arguments.Clear(); }

private:
    void Push(std::unique_ptr<ozArgument> argument) { m_arguments.Push(std::move(argument)); }

    ozLinkedStack<std::unique_ptr<ozArgument>> m_arguments;
};
