// JSON text for ozadm's --json output: strings escaped as JSON requires. The texts are UTF-8
// (as the templates and profiles are read on Linux); bytes are passed on as they are.
#pragma once

#include <string>
#include <string_view>

// text in double quotes, with ", \ and the control characters escaped.
std::string ozJsonString(std::string_view text);
