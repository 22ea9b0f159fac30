#include "ozViewText.h"

#include "ozScriptLine.h"
#include "ui/headless/ozHeadlessForm.h"
#include "ui/headless/ozHeadlessGrid.h"
#include "ui/headless/ozHeadlessList.h"
#include "ui/headless/ozHeadlessTree.h"
#include "ui/ozMenu.h"
#include "ui/ozPartsPanel.h"

namespace {

void AddItemLines(const ozHeadlessTree& tree, ozTreeItem item, const std::string& indent,
                  std::vector<std::string>& lines)
{
    for (; item != ozNoItem; item = tree.NextSibling(item)) {
        std::string line = indent + "ITEM " + ozQuoteScriptText(tree.Text(item)) +
                           " image=" + std::to_string(tree.Image(item));
        if (tree.SelectedImage(item) != tree.Image(item))
            line += " selimage=" + std::to_string(tree.SelectedImage(item));
        if (tree.Expanded(item))
            line += " expanded";
        if (tree.ChildrenToCome(item))
            line += " collapsed";
        if (tree.Selection() == item)
            line += " selected";
        lines.push_back(line);
        AddItemLines(tree, tree.FirstChild(item), indent + "  ", lines);
    }
}

const char* StateName(ozMenuState state)
{
    switch (state) {
        case ozMenuState::Enabled:
            return "enabled";
        case ozMenuState::Greyed:
            return "greyed";
        case ozMenuState::Disabled:
            return "disabled";
    }
    return "disabled";
}

void AddMenuLines(const std::vector<ozMenuEntry>& entries, const std::string& indent,
                  std::vector<std::string>& lines)
{
    for (const ozMenuEntry& entry : entries) {
        if (entry.IsSeparator()) {
            lines.push_back(indent + "MENU -");
            continue;
        }
        lines.push_back(indent + "MENU " + ozQuoteScriptText(entry.caption) + " " +
                        StateName(entry.state) +
                        (entry.bitmap != 0 ? " bitmap=" + std::to_string(entry.bitmap) : ""));
        AddMenuLines(entry.submenu, indent + "  ", lines);
    }
}

const char* KindName(ozControlKind kind)
{
    switch (kind) {
        case ozControlKind::Label:
            return "LABEL";
        case ozControlKind::Edit:
            return "EDIT";
        case ozControlKind::TextBox:
            return "TEXTBOX";
        case ozControlKind::Number:
            return "NUMBER";
        case ozControlKind::CheckBox:
            return "CHECKBOX";
        case ozControlKind::Radio:
            return "RADIO";
        case ozControlKind::Button:
            return "BUTTON";
        case ozControlKind::Group:
            return "GROUP";
        case ozControlKind::ComboBox:
            return "COMBOBOX";
        case ozControlKind::DropDown:
            return "DROPDOWN";
        case ozControlKind::List:
            return "LIST";
        case ozControlKind::Tree:
            return "TREE";
        case ozControlKind::ImageRows:
            return "IMAGEROWS";
    }
    return "LABEL";
}

}  // namespace

std::vector<std::string> ozTreeViewLines(const ozHeadlessTree& tree)
{
    std::vector<std::string> lines;
    AddItemLines(tree, tree.Root(), "", lines);
    return lines;
}

std::vector<std::string> ozValueListLines(const ozHeadlessList& list)
{
    std::vector<std::string> lines;
    for (int row = 0; row < list.Count(); ++row)
        lines.push_back("VALUE " + ozQuoteScriptText(list.Text(row, 0)) +
                        " image=" + std::to_string(list.Image(row)) + " " +
                        ozQuoteScriptText(list.Text(row, 1)) +
                        (list.Selection() == row ? " selected" : ""));
    return lines;
}

std::vector<std::string> ozGridLines(const ozHeadlessGrid& grid)
{
    std::string columns = "COLUMNS";
    for (const std::string& caption : grid.ColumnCaptions())
        columns += " " + ozQuoteScriptText(caption);
    std::vector<std::string> lines = {columns};
    for (int row = 0; row < grid.RowCount(); ++row) {
        std::string line = "ROW " + std::to_string(row);
        for (const std::string& cell : grid.Cells(row))
            line += " " + ozQuoteScriptText(cell);
        if (row == grid.CurrentRow())
            line += " selected column=" + std::to_string(grid.CurrentColumn());
        lines.push_back(line);
    }
    ozGridRange range = grid.Selection();
    if (range.firstRow != range.lastRow || range.firstColumn != range.lastColumn)
        lines.push_back("RANGE " + std::to_string(range.firstRow) + " " +
                        std::to_string(range.firstColumn) + " " + std::to_string(range.lastRow) +
                        " " + std::to_string(range.lastColumn));
    return lines;
}

std::vector<std::string> ozPartsPanelLines(const ozPartsPanel& panel)
{
    std::vector<std::string> lines;
    for (const ozPartsPanel::EditorView& editor : panel.Editors())
        lines.push_back("EDITOR " + editor.type + " " + ozQuoteScriptText(editor.label) +
                        (editor.enabled ? " enabled" : " disabled") + " = " +
                        ozQuoteScriptText(editor.value));
    return lines;
}

std::vector<std::string> ozMenuLines(const ozMenu& menu)
{
    std::vector<std::string> lines;
    AddMenuLines(menu.entries, "", lines);
    return lines;
}

std::vector<std::string> ozDialogLines(const std::string& caption, const ozHeadlessForm& form)
{
    std::vector<std::string> lines = {"DIALOG " + ozQuoteScriptText(caption)};
    for (const ozHeadlessForm::Control& control : form.Controls()) {
        std::string line = std::string("CONTROL ") + KindName(control.spec.kind) + " " +
                           ozQuoteScriptText(control.spec.caption) +
                           (control.enabled ? " enabled" : " disabled");
        if (control.checked)
            line += " checked";
        if (form.Focused() == control.spec.id)
            line += " selected";
        lines.push_back(line + " = " + ozQuoteScriptText(control.text));
        if (const ozHeadlessTree* tree = form.Tree(control.spec.id))
            AddItemLines(*tree, tree->Root(), "", lines);
        for (std::size_t row = 0; row < control.rows.size(); ++row)
            lines.push_back("ROW " + std::to_string(row) + " " +
                            (row < control.images.size()
                                 ? "image=" + std::to_string(control.images[row]) + " "
                                 : "") +
                            ozQuoteScriptText(control.rows[row]) +
                            (control.selectedRow == static_cast<int>(row) ? " selected" : ""));
    }
    return lines;
}
