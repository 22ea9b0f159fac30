#include "ozArgumentStack.h"

#include <utility>

const char* ozArgumentStack::KindName(int kind)
{
    switch (kind) {
        case ArgumentString:
            return "String";
        case ArgumentValue:
            return "Value";
        case ArgumentActionList:
            return "Actionlist";
        default:
            return "unknown element";
    }
}

void ozArgumentStack::PushString(std::unique_ptr<char[]> text)
{
    auto argument = std::make_unique<ozArgument>();
    argument->kind = ArgumentString;
    argument->text = std::move(text);
    Push(std::move(argument));
}

void ozArgumentStack::PushValue(std::unique_ptr<ozADMValue> value)
{
    auto argument = std::make_unique<ozArgument>();
    argument->kind = ArgumentValue;
    argument->value = std::move(value);
    Push(std::move(argument));
}

void ozArgumentStack::PushActionList(std::unique_ptr<ozADMActionList> actionList)
{
    auto argument = std::make_unique<ozArgument>();
    argument->kind = ArgumentActionList;
    argument->actionList = std::move(actionList);
    Push(std::move(argument));
}
