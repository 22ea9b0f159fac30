// A popup menu as the views describe it: entries with captions, command numbers and states,
// separators and submenus. The Windows widgets build a real menu from it; the headless ones
// print it and let a script choose an entry.
#pragma once

#include <string>
#include <vector>

// An entry's state, with the numbers the menu functions use.
enum class ozMenuState : int {
    Enabled = 0,
    Greyed = 1,
    Disabled = 2,
};

struct ozMenuEntry {
    std::string caption;       // empty for a separator
    unsigned int command = 0;  // 0 for a separator or a submenu
    ozMenuState state = ozMenuState::Enabled;
    std::vector<ozMenuEntry> submenu;  // a submenu's entries; empty for a plain entry
    // A bitmap shown beside the caption (the bitmap resource number), or 0 for none.
    int bitmap = 0;

    bool IsSeparator() const { return caption.empty() && submenu.empty(); }
};

struct ozMenu {
    std::vector<ozMenuEntry> entries;
};

// The entry by its caption path ("New\Policy" for a submenu's entry), or null.
const ozMenuEntry* ozFindMenuEntry(const ozMenu& menu, const std::string& captionPath);
