#include "ozMenu.h"

const ozMenuEntry* ozFindMenuEntry(const ozMenu& menu, const std::string& captionPath)
{
    const std::vector<ozMenuEntry>* entries = &menu.entries;
    std::string::size_type start = 0;
    for (;;) {
        std::string::size_type end = captionPath.find('\\', start);
        std::string caption = captionPath.substr(start, end - start);
        const ozMenuEntry* found = nullptr;
        for (const ozMenuEntry& entry : *entries)
            if (!entry.IsSeparator() && entry.caption == caption) {
                found = &entry;
                break;
            }
        if (found == nullptr || end == std::string::npos)
            return found;
        entries = &found->submenu;
        start = end + 1;
    }
}
