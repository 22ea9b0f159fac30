// One line of an ozadm script, taken apart: a member name with its arguments, or a property
// assignment `Name = value`. Arguments are words separated by blanks; a word with blanks, an
// empty one or one beginning with a double quote is written in double quotes, inside which \"
// stands for a double quote and \\ for a backslash (any other backslash stands for itself, so
// that registry paths need no doubling). A line whose first character that is not a blank is
// '#' is a comment.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

struct ozScriptLine {
    enum class Kind {
        Blank,        // empty, only blanks, or a comment
        Call,         // a member read or called: name and arguments
        PropertySet,  // `name = value`: arguments holds the one value
    };
    Kind kind = Kind::Blank;
    std::string name;
    std::vector<std::string> arguments;
};

// Why a line could not be taken apart, and where (column counted from 1, in bytes).
struct ozScriptLineError {
    std::size_t column = 0;
    std::string message;
};

// Parses line (without its line feed; a carriage return at its end is ignored). False with
// error filled in when the line is malformed: an unterminated quoted text, text right after
// a closing quote, a quote inside a word, a line that does not begin with a name, or an
// assignment without exactly one value.
bool ozParseScriptLine(std::string_view line, ozScriptLine& parsed, ozScriptLineError& error);

// A text in the quoted form results are printed in: double quotes around it, \" and \\ inside
// (as the parser reads them back), and line feeds, carriage returns and tabs as \n, \r and \t
// so that every result stays on one line.
std::string ozQuoteScriptText(std::string_view text);
