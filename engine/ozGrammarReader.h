// Reading a grammar file (the dialect is described in docs/grammar.md) into an ozGrammar.
#pragma once

#include <string>
#include <string_view>

#include "ozGrammar.h"

// Reads text, the contents of a grammar file, into grammar and completes it. Fails, with the
// reason placed at its line and column, for text that is not a well-formed grammar: a syntax
// error, a rule defined twice or called but never defined, an unknown token class, a keyword
// that is not a word, nesting too deep, or left recursion.
ozStatus ozReadGrammar(std::string_view text, ozGrammar& grammar);
