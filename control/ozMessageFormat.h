// Host message texts with their arguments filled in. The texts come from the host, so they are
// never handed to printf: each "%s" takes the next argument (nothing once they run out), "%%"
// gives "%", and everything else is kept as it stands.
#pragma once

#include <initializer_list>
#include <string>

std::string ozFormatMessage(const std::string& text, std::initializer_list<std::string> arguments);
