#include "ozHostStrings.h"

#include <sstream>

#include "control/ozParameterText.h"
#include "platform/ozTextConversion.h"
#include "platform/ozWholeFile.h"

bool ozReadHostStrings(const std::string& file, std::map<unsigned short, std::string>& table,
                       std::string& error)
{
    std::string bytes;
    if (ozStatus read = ozReadWholeFile(file.c_str(), bytes); !read) {
        error = file + ": the string table cannot be opened (" + read.Message() + ")";
        return false;
    }
    std::istringstream in(bytes);
    std::string line;
    for (unsigned long lineNumber = 1; std::getline(in, line); ++lineNumber) {
        if (lineNumber == 1 && line.rfind("\xEF\xBB\xBF", 0) == 0)
            line.erase(0, 3);
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (line.empty() || line[0] == '#')
            continue;
        std::size_t blank = line.find(' ');
        long long number = 0;
        std::string where = file + ":" + std::to_string(lineNumber) + ": ";
        if (blank == std::string::npos || !ozReadInteger(line.substr(0, blank), 1, 65535, number)) {
            error = where +
                    "a line reads NUMBER TEXT (a message number from 1 to 65535, a "
                    "blank, the text)";
            return false;
        }
        auto code = static_cast<unsigned short>(number);
        if (!table.emplace(code, ozNarrowFromUtf8(line.substr(blank + 1))).second) {
            error = where + "message " + std::to_string(number) + " is given twice";
            return false;
        }
    }
    return true;
}
