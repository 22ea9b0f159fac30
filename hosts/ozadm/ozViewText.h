// The views as a script prints them (docs/cli.md, "Headless views"): the policy view's items
// and editors, a popup menu, a dialog's controls. Texts are quoted as script results are.
#pragma once

#include <string>
#include <vector>

class ozHeadlessForm;
class ozHeadlessGrid;
class ozHeadlessList;
class ozHeadlessTree;
class ozPartsPanel;
struct ozMenu;

// One line per item in display order, indented by two blanks per depth:
// ITEM "text" image=N[ selimage=M][ expanded][ selected]
std::vector<std::string> ozTreeViewLines(const ozHeadlessTree& tree);
// One line per row of the registry view's value list, in list order:
// VALUE "name" image=N "data"[ selected]
std::vector<std::string> ozValueListLines(const ozHeadlessList& list);
// The registry-value grid: COLUMNS "caption" ..., then per row ROW n "cell" ...; the current
// cell's row ends in " selected column=C", and a range wider than the current cell follows as
// RANGE r1 c1 r2 c2.
std::vector<std::string> ozGridLines(const ozHeadlessGrid& grid);
// One line per editor of the panel: EDITOR TYPE "label" enabled|disabled = "value"
std::vector<std::string> ozPartsPanelLines(const ozPartsPanel& panel);
// MENU "entry" enabled|disabled|greyed, MENU - for a separator, submenu entries indented.
std::vector<std::string> ozMenuLines(const ozMenu& menu);
// DIALOG "caption", then per control in tab order
// CONTROL KIND "caption or label" enabled|disabled[ checked][ selected] = "text"
// with a list's rows under it as ROW n "text"[ selected] and a tree's items as ITEM lines.
std::vector<std::string> ozDialogLines(const std::string& caption, const ozHeadlessForm& form);
