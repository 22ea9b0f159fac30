// The files the hosts bring with them (the grammar adm.bnf, the host string tables
// strings-en.txt and strings-de.txt, the empty template empty.adm), and the name a template is
// handed to the control by.
#pragma once

#include <string>

// The bundled file `name`, looked for in the folder "ozadm-data" beside the executable, then
// in share/ozadm of the prefix an installed executable runs from (PREFIX/bin), then in the
// source tree the host was built from. The last candidate is returned when none exists, so
// that opening it fails naming a real place.
std::string ozBundledFile(const std::string& name);

// The name a template file is handed to the control by. On Windows a relative name becomes
// absolute: the [strings] section is read through the system's private-profile functions,
// which look for a relative name in the Windows folder, not the working folder.
std::string ozTemplatePath(const std::string& file);
