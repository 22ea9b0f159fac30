// What a script call gives back, and its line in the script output:
//   NAME:                 a call without result
//   NAME: TRUE | FALSE    a BOOL
//   NAME: 42              a number, in decimal
//   NAME: "text"          a string, quoted as ozQuoteScriptText does
//   NAME: EMPTY           an empty array result
//   NAME: ARRAY n         an array, followed by its n elements, one per line, quoted and
//                         indented by two blanks
#pragma once

#include <cstdint>
#include <ostream>
#include <string>

#include "control/ozStringArray.h"

class ozScriptResult {
public:
    enum class Kind { None, Bool, Number, Text, Array };

    ozScriptResult() = default;
    static ozScriptResult Bool(bool value);
    static ozScriptResult Number(std::int64_t value);
    static ozScriptResult Unsigned(std::uint64_t value);
    static ozScriptResult Text(std::string value);
    static ozScriptResult Array(ozStringArray value);

    Kind GetKind() const { return m_kind; }
    // Writes the result line for the member `name` (and an array's element lines).
    void Write(std::ostream& out, const std::string& name) const;

private:
    Kind m_kind = Kind::None;
    bool m_bool = false;
    std::string m_number;  // already in decimal
    std::string m_text;
    ozStringArray m_array;
};
