// How the ADMX reader builds the policy tree: through the grammar actions themselves, called
// as the grammar engine calls them for an ADM template, so that merging, key binding and the
// errors of the actions are those of ADM templates. A call that fails leaves its reason (the
// number and description the action reported, or the reader's own) with the place of the
// XML element it came from.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "engine/ozEBNF.h"
#include "platform/ozXmlDocument.h"

// Why a load of ADMX definitions failed: an error number with its description (number 0 when
// a grammar action reported the number itself), and the file, line and column it concerns.
struct ozADMXFailure {
    int code = 0;
    std::string description;
    std::string file;
    unsigned line = 0;
    unsigned column = 0;
};

// One XML element of one file: where a call or a refusal is placed.
struct ozADMXPlace {
    const std::string& file;
    const ozXmlElement& element;
};

class ozADMXActionCalls {
public:
    // failure receives the reason of the first failing call; it must outlive this object.
    explicit ozADMXActionCalls(ozADMXFailure& failure) : m_failure(failure) {}

    // Calls an action that takes no token. False when it fails.
    bool Call(ozEBNFAction action, const ozADMXPlace& at);
    // Calls an action with a number token / a token whose source text is text.
    bool CallWithNumber(ozEBNFAction action, uint32_t number, const ozADMXPlace& at);
    bool CallWithText(ozEBNFAction action, const std::string& text, const ozADMXPlace& at);
    // Pushes a String holding a copy of text onto the argument stack, as SaveString does.
    bool Push(std::string_view text, const ozADMXPlace& at);
    // Pushes text and calls action, which fetches it.
    bool PushAndCall(std::string_view text, ozEBNFAction action, const ozADMXPlace& at);

    // The element's attribute; null, with 1146 recorded, when it has none.
    const std::string* Required(const ozADMXPlace& at, const char* attribute);

    // Records the reader's own refusal (number and description) at a place; returns false.
    bool Fail(int code, std::string description, const ozADMXPlace& at);
    // Records a document that cannot be read or is not well-formed XML (1140) at the place
    // the status names.
    bool FailDocument(const ozStatus& status, const std::string& file);
    // As Fail, with no element to point at (line and column unknown).
    bool Fail(int code, std::string description, const std::string& file);

private:
    bool Failed(const ozADMXPlace& at);

    ozADMXFailure& m_failure;
};
