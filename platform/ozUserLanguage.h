// The language the user reads the system's user interface in, as a language tag such as
// "de-DE": the language folder a template's texts are looked up in first.
#pragma once

#include <string>

// The user's interface language as "language-REGION" (or "language" alone); empty when the
// system names none. POSIX: the first of LC_ALL, LC_MESSAGES and LANG that is set, "de_DE.UTF-8"
// giving "de-DE" and "C" or "POSIX" giving none. Windows: the user's interface language.
std::string ozUserInterfaceLanguage();
