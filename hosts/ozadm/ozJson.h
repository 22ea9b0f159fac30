// JSON text for ozadm's --json output: strings escaped as JSON requires. The texts are UTF-8
// (as the templates and profiles are read on Linux); bytes are passed on as they are.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// text in double quotes, with ", \ and the control characters escaped.
std::string ozJsonString(std::string_view text);
// The texts as a JSON array of strings.
std::string ozJsonStrings(const std::vector<std::string>& texts);
