#include "ozADMXActionCalls.h"

#include <cstring>
#include <memory>
#include <new>
#include <vector>

#include "ozADMXLoad.h"
#include "ozActionSupport.h"

bool ozADMXActionCalls::Call(ozEBNFAction action, const ozADMXPlace& at)
{
    return action(0) != 0 || Failed(at);
}

bool ozADMXActionCalls::CallWithNumber(ozEBNFAction action, uint32_t number, const ozADMXPlace& at)
{
    ozEBNFToken token{};
    token.type = EBNFTokenNumber;
    token.morph = "";
    token.number = number;
    return action(reinterpret_cast<intptr_t>(&token)) != 0 || Failed(at);
}

bool ozADMXActionCalls::CallWithText(ozEBNFAction action, const std::string& text,
                                     const ozADMXPlace& at)
{
    // A token record with the text both as source and inline, as the engine lays it out.
    std::vector<char> record(sizeof(ozEBNFToken) + text.size() + 1);
    auto* token = reinterpret_cast<ozEBNFToken*>(record.data());
    token->type = EBNFTokenString;
    token->morph = text.c_str();
    std::memcpy(ozEBNFTokenText(token), text.c_str(), text.size() + 1);
    return action(reinterpret_cast<intptr_t>(token)) != 0 || Failed(at);
}

bool ozADMXActionCalls::Push(std::string_view text, const ozADMXPlace& at)
{
    try {
        auto copy = std::make_unique<char[]>(text.size() + 1);
        std::memcpy(copy.get(), text.data(), text.size());
        copy[text.size()] = '\0';
        if (ozPushString(std::move(copy)))
            return true;
    } catch (const std::bad_alloc&) {
        return Fail(StringsErrorOutOfMemory, "out of memory", at);
    }
    return Fail(LoadErrorStacks, "no argument stack", at);
}

bool ozADMXActionCalls::PushAndCall(std::string_view text, ozEBNFAction action,
                                    const ozADMXPlace& at)
{
    return Push(text, at) && Call(action, at);
}

const std::string* ozADMXActionCalls::Required(const ozADMXPlace& at, const char* attribute)
{
    const std::string* value = at.element.Attribute(attribute);
    if (value == nullptr)
        Fail(ADMXErrorMissingAttribute,
             "<" + at.element.name + "> has no attribute \"" + attribute + "\"", at);
    return value;
}

bool ozADMXActionCalls::Fail(int code, std::string description, const ozADMXPlace& at)
{
    m_failure = {code, std::move(description), at.file, at.element.line, at.element.column};
    return false;
}

bool ozADMXActionCalls::FailDocument(const ozStatus& status, const std::string& file)
{
    // The reason without the place the message begins with, which the report puts first.
    std::string reason = status.Message();
    if (status.Line() != 0)
        reason = reason.substr(reason.find(": ") + 2);
    m_failure = {ADMXErrorXml, reason, file, status.Line(), status.Column()};
    return false;
}

bool ozADMXActionCalls::Fail(int code, std::string description, const std::string& file)
{
    m_failure = {code, std::move(description), file, 0, 0};
    return false;
}

bool ozADMXActionCalls::Failed(const ozADMXPlace& at)
{
    // The action has reported its number and description to the engine already.
    m_failure = {0, {}, at.file, at.element.line, at.element.column};
    return false;
}
