// The options every ozadm command takes: what to load before the work (grammar, host string
// table), how to answer the control's questions, which profile library to use and which
// registry to read. docs/cli.md describes them.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

// A command line that cannot be used as written; the message says which option or argument.
class ozUsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct ozHostOptions {
    std::string grammar;  // empty: the bundled grammar
    bool loadGrammar = true;
    std::string strings;  // empty: the bundled table of `language`
    bool loadStrings = true;
    std::string language = "en";
    std::string templateLanguage;  // empty: the user's interface language
    bool answerYes = false;
    std::string library;   // empty: the control's default (the .ozp library)
    std::string registry;  // empty: taken from OZADM_REGISTRY
    std::string registryUser;
};

// When args[i] is one of the common options, takes it (and its value, advancing i) into
// options and returns true; false for any other argument. Throws ozUsageError for a missing
// or bad value.
bool ozTakeCommonOption(const std::vector<std::string>& args, std::size_t& i,
                        ozHostOptions& options);

// The value after the option at args[i], advancing i; throws ozUsageError when it is missing.
const std::string& ozOptionValue(const std::vector<std::string>& args, std::size_t& i);

// The help text of the common options, for every command's --help.
const char* ozCommonOptionsHelp();
