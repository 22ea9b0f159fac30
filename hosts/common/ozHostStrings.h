// Host string tables: the message texts a host hands the control with AddString, kept as UTF-8
// text files with one message per line: its number (1 to 65535), a blank, and the text up to the
// end of the line. Empty lines and lines beginning with '#' are skipped; a UTF-8 byte order
// mark at the start and a carriage return at a line's end are ignored. "%s" in a text takes
// an argument of the message (the control fills it in; "%%" is a percent sign).
#pragma once

#include <map>
#include <string>

// Reads the table in `file`, its texts converted into the narrow encoding the control works in
// (the ANSI code page on Windows). False with error naming the file (and line) when the file cannot
// be read or a line is not a number followed by a blank and text, or a number repeats.
bool ozReadHostStrings(const std::string& file, std::map<unsigned short, std::string>& table,
                       std::string& error);
