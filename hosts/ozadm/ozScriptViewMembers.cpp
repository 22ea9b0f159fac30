// The view calls of a script: each stands for what a user does with mouse and keyboard, or
// prints what the user sees, on the control's views over headless widgets.
#include <cstdlib>

#include "control/CADMCtrl.h"
#include "control/ozParameterText.h"
#include "ozConsoleHostUI.h"
#include "ozScriptMembers.h"
#include "ozViewText.h"
#include "platform/ozAsciiCase.h"
#include "ui/headless/ozHeadlessPlatform.h"
#include "ui/ozViews.h"

namespace {

using Result = ozScriptResult;

ozScriptViews& Views(const char* member, ozScriptCall& call)
{
    if (call.views == nullptr)
        throw ozScriptUsageError(std::string(member) + ": this host shows no views");
    return *call.views;
}

// The tree of the visible view: the registry view's in display mode 1, the policy view's
// otherwise.
ozHeadlessTree& Tree(const char* member, ozScriptCall& call)
{
    ozScriptViews& views = Views(member, call);
    return views.views.VisibleMode() == DisplayRegistry ? views.platform.RegistryTree()
                                                        : views.platform.Tree();
}

// The item at PATH in the visible view's tree; a path that names no item cannot run.
ozTreeItem Item(const char* member, ozScriptCall& call, const std::string& path)
{
    ozHeadlessTree& tree = Tree(member, call);
    ozTreeItem item = tree.Find(path);
    // An item whose children have not come yet (a collapsed registry key) is opened on the way,
    // as the user opens it to reach what lies below.
    for (std::size_t end = path.find('\\'); item == ozNoItem && end != std::string::npos;
         end = path.find('\\', end + 1)) {
        ozTreeItem above = tree.Find(path.substr(0, end));
        if (above != ozNoItem && tree.ChildrenToCome(above))
            tree.ExpandByUser(above, true);
    }
    if (item == ozNoItem)
        item = tree.Find(path);
    if (item == ozNoItem)
        throw ozScriptUsageError(std::string(member) + ": the view has no item \"" + path + "\"");
    return item;
}

Result Print(ozScriptCall& call, const std::vector<std::string>& lines)
{
    for (const std::string& line : lines)
        call.out << line << '\n';
    return Result();
}

// A member taking PATH and acting on its item.
ozScriptMember ItemAction(const char* name, void (ozHeadlessTree::*action)(ozTreeItem))
{
    return {name,
            false,
            1,
            "Path",
            [name, action](ozScriptCall& call) {
                ozTreeItem item = Item(name, call, call.arguments[0]);
                (Tree(name, call).*action)(item);
                return Result();
            },
            nullptr};
}

Result View(ozScriptCall& call)
{
    ozScriptViews& views = Views("View", call);
    if (views.views.VisibleMode() == DisplayRegistry) {
        Print(call, ozTreeViewLines(views.platform.RegistryTree()));
        Print(call, ozValueListLines(views.platform.RegistryValues()));
        return Print(call, ozPartsPanelLines(views.views.PartsPanel()));
    }
    if (views.views.VisibleMode() == DisplayValueGrid)
        return Print(call, ozGridLines(views.platform.RegistryGrid()));
    if (views.views.VisibleMode() != DisplayPolicies)
        return Result();
    Print(call, ozTreeViewLines(views.platform.Tree()));
    return Print(call, ozPartsPanelLines(views.views.PartsPanel()));
}

// F2, Insert, Delete, Tab or a virtual-key number.
int VirtualKey(const std::string& text)
{
    static const struct {
        const char* name;
        int key;
    } names[] = {
        {"F2", ozKeyF2}, {"Insert", ozKeyInsert}, {"Delete", ozKeyDelete}, {"Tab", ozKeyTab}};
    for (const auto& name : names)
        if (ozAsciiSameIgnoringCase(text, name.name))
            return name.key;
    long long key = 0;
    if (!ozReadInteger(text, 1, 255, key))
        throw ozScriptUsageError(
            "Key: KEY must be F2, Insert, Delete, Tab or a virtual-key number "
            "from 1 to 255, not \"" +
            text + "\"");
    return static_cast<int>(key);
}

// The key goes to the tree with the item selected, as a tree takes keys for its selection.
Result Key(ozScriptCall& call)
{
    ozTreeItem item = Item("Key", call, call.arguments[0]);
    int key = VirtualKey(call.arguments[1]);
    ozHeadlessTree& tree = Tree("Key", call);
    if (!tree.SelectByUser(item)) {
        call.note = "the selection did not move to \"" + call.arguments[0] + "\"";
        return Result::Bool(false);
    }
    tree.Key(key);
    return Result::Bool(true);
}

Result Edit(ozScriptCall& call)
{
    ozTreeItem item = Item("Edit", call, call.arguments[0]);
    ozScriptViews& views = Views("Edit", call);
    if (!Tree("Edit", call).SelectByUser(item)) {
        call.note = "the selection did not move to \"" + call.arguments[0] + "\"";
        return Result::Bool(false);
    }
    if (!views.views.PartsPanel().Type(call.arguments[1], call.arguments[2])) {
        call.note = "no enabled editor for a part \"" + call.arguments[1] + "\"";
        return Result::Bool(false);
    }
    return Result::Bool(views.views.PartsPanel().Commit());
}

Result Menu(ozScriptCall& call)
{
    ozTreeItem item = Item("Menu", call, call.arguments[0]);
    ozScriptViews& views = Views("Menu", call);
    views.platform.DismissMenu();
    Tree("Menu", call).RightClick(item);
    if (const ozMenu* menu = views.platform.OpenMenu())
        Print(call, ozMenuLines(*menu));
    return Result();
}

Result Choose(ozScriptCall& call)
{
    ozHeadlessPlatform& platform = Views("Choose", call).platform;
    if (platform.OpenMenu() == nullptr) {
        call.note = "no menu is open";
        return Result::Bool(false);
    }
    bool chosen = platform.Choose(call.arguments[0]);
    if (!chosen)
        call.note = "the menu has no enabled entry \"" + call.arguments[0] + "\"";
    return Result::Bool(chosen);
}

// The tree of the dialog on top (its first), with the item at path: a user's click into a tree
// moves the focus there first. False, with a note, when there is no such tree or item.
bool DialogTreeItem(ozScriptCall& call, ozHeadlessForm& form, const std::string& path,
                    ozHeadlessTree*& tree, ozTreeItem& item)
{
    for (const ozHeadlessForm::Control& control : form.Controls())
        if ((tree = form.Tree(control.spec.id)) != nullptr) {
            item = tree->Find(path);
            if (item == ozNoItem) {
                call.note = "the dialog's tree has no item \"" + path + "\"";
                return false;
            }
            return form.FocusByUser(control.spec.id);
        }
    call.note = "the dialog has no tree";
    return false;
}

// Dialog, Dialog Set "label" "text", Dialog Check "caption" on|off, Dialog Click "caption",
// Dialog Row "list label" N, Dialog Select|Expand "path", Dialog OK, Dialog Cancel.
Result Dialog(ozScriptCall& call)
{
    ozHeadlessPlatform& platform = Views("Dialog", call).platform;
    const std::vector<std::string>& args = call.arguments;
    ozHeadlessForm* form = platform.TopForm();
    if (args.empty()) {
        if (form != nullptr)
            Print(call, ozDialogLines(platform.TopDialog()->Layout().caption, *form));
        return Result();
    }
    struct Action {
        const char* name;
        std::size_t arguments;
    };
    static const Action actions[] = {{"Set", 3}, {"Check", 3},  {"Click", 2},  {"Row", 3},
                                     {"OK", 1},  {"Cancel", 1}, {"Select", 2}, {"Expand", 2}};
    const Action* action = nullptr;
    for (const Action& candidate : actions)
        if (ozAsciiSameIgnoringCase(args[0], candidate.name))
            action = &candidate;
    if (action == nullptr)
        throw ozScriptUsageError(
            "Dialog: \"" + args[0] +
            "\" is none of Set, Check, Click, Row, Select, Expand, OK, Cancel");
    if (args.size() != action->arguments)
        throw ozScriptUsageError(std::string("Dialog ") + action->name + " takes " +
                                 std::to_string(action->arguments - 1) + " arguments");
    if (form == nullptr) {
        call.note = "no dialog is open";
        return Result::Bool(false);
    }
    const std::string& what = action->name;
    if (what == "OK" || what == "Cancel")
        return Result::Bool(platform.EndDialog(what == "OK"));
    if (what == "Select" || what == "Expand") {
        ozHeadlessTree* tree = nullptr;
        ozTreeItem item = ozNoItem;
        if (!DialogTreeItem(call, *form, args[1], tree, item))
            return Result::Bool(false);
        if (what == "Select")
            return Result::Bool(tree->SelectByUser(item));
        tree->ExpandByUser(item, true);
        return Result::Bool(true);
    }
    using Kind = ozControlKind;
    const ozHeadlessForm::Control* control = nullptr;
    if (what == "Set")
        control = form->Find(args[1], {Kind::Edit, Kind::Number, Kind::ComboBox});
    else if (what == "Check")
        control = form->Find(args[1], {Kind::CheckBox, Kind::Radio});
    else if (what == "Click")
        control = form->Find(args[1], {Kind::Button});
    else
        control = form->Find(args[1], {Kind::List, Kind::DropDown, Kind::ComboBox});
    if (control == nullptr) {
        call.note = "the dialog has no such control \"" + args[1] + "\"";
        return Result::Bool(false);
    }
    int id = control->spec.id;
    if (what == "Set")
        return Result::Bool(form->Type(id, args[2]));
    if (what == "Check") {
        bool on = ozAsciiSameIgnoringCase(args[2], "on");
        if (!on && !ozAsciiSameIgnoringCase(args[2], "off"))
            throw ozScriptUsageError("Dialog Check: the state must be on or off, not \"" + args[2] +
                                     "\"");
        return Result::Bool(form->CheckByUser(id, on));
    }
    if (what == "Click")
        return Result::Bool(platform.ClickDialogButton(id));
    long long row = 0;
    if (!ozReadInteger(args[2], -1, 2147483647, row))
        throw ozScriptUsageError("Dialog Row: N must be a row number, not \"" + args[2] + "\"");
    // A click into the list moves the focus there first.
    return Result::Bool(form->FocusByUser(id) && form->ChooseRow(id, static_cast<int>(row)));
}

Result Answer(ozScriptCall& call)
{
    const std::string& answer = call.arguments[0];
    bool yes = ozAsciiSameIgnoringCase(answer, "yes");
    if (!yes && !ozAsciiSameIgnoringCase(answer, "no"))
        throw ozScriptUsageError("Answer: the answer must be yes or no, not \"" + answer + "\"");
    Views("Answer", call).ui.AnswerYes(yes);
    return Result();
}

// The registry view's value list; its calls need the registry view shown.
ozHeadlessList& Values(const char* member, ozScriptCall& call)
{
    ozScriptViews& views = Views(member, call);
    if (views.views.VisibleMode() != DisplayRegistry)
        throw ozScriptUsageError(std::string(member) + ": the registry view is not shown");
    return views.platform.RegistryValues();
}

// The row named NAME ("(Default)" for the empty name); a name no row shows cannot run.
int ValueRow(const char* member, ozScriptCall& call, const std::string& name)
{
    int row = Values(member, call).Find(name);
    if (row < 0)
        throw ozScriptUsageError(std::string(member) + ": the value list has no row \"" + name +
                                 "\"");
    return row;
}

Result SelectValue(ozScriptCall& call)
{
    int row = ValueRow("SelectValue", call, call.arguments[0]);
    Values("SelectValue", call).SelectByUser(row);
    return Result();
}

Result ValueMenu(ozScriptCall& call)
{
    if (call.arguments.size() > 1)
        throw ozScriptUsageError("ValueMenu takes at most one argument, the value's name");
    int row = call.arguments.empty() ? -1 : ValueRow("ValueMenu", call, call.arguments[0]);
    ozHeadlessPlatform& platform = Views("ValueMenu", call).platform;
    platform.DismissMenu();
    Values("ValueMenu", call).RightClick(row);
    if (const ozMenu* menu = platform.OpenMenu())
        Print(call, ozMenuLines(*menu));
    return Result();
}

// The key goes to the list with the row selected, as a list takes keys for its selection.
Result ValueKey(ozScriptCall& call)
{
    int row = ValueRow("ValueKey", call, call.arguments[0]);
    int key = VirtualKey(call.arguments[1]);
    ozHeadlessList& list = Values("ValueKey", call);
    list.SelectByUser(row);
    list.Key(key);
    return Result();
}

// The registry-value grid; its calls need it shown.
ozHeadlessGrid& Grid(const char* member, ozScriptCall& call)
{
    ozScriptViews& views = Views(member, call);
    if (views.views.VisibleMode() != DisplayValueGrid)
        throw ozScriptUsageError(std::string(member) + ": the registry-value grid is not shown");
    return views.platform.RegistryGrid();
}

// A row number of the grid, or a column by its number or caption.
int GridRow(const char* member, const std::string& text)
{
    long long row = 0;
    if (!ozReadInteger(text, 0, 2147483647, row))
        throw ozScriptUsageError(std::string(member) + ": ROW must be a row number, not \"" + text +
                                 "\"");
    return static_cast<int>(row);
}

int GridColumn(const char* member, const ozHeadlessGrid& grid, const std::string& text)
{
    const std::vector<std::string>& captions = grid.ColumnCaptions();
    for (std::size_t column = 0; column < captions.size(); ++column)
        if (ozAsciiSameIgnoringCase(captions[column], text))
            return static_cast<int>(column);
    long long column = 0;
    if (!ozReadInteger(text, 0, static_cast<long long>(captions.size()) - 1, column))
        throw ozScriptUsageError(std::string(member) +
                                 ": COLUMN must be a column number or caption, not \"" + text +
                                 "\"");
    return static_cast<int>(column);
}

// Select ROW COLUMN in the grid; Select PATH in a tree.
Result Select(ozScriptCall& call)
{
    const std::vector<std::string>& args = call.arguments;
    if (args.size() == 1) {
        ozTreeItem item = Item("Select", call, args[0]);
        return Result::Bool(Tree("Select", call).SelectByUser(item));
    }
    if (args.size() != 2)
        throw ozScriptUsageError("Select takes a tree item's path, or a grid's ROW and COLUMN");
    ozHeadlessGrid& grid = Grid("Select", call);
    return Result::Bool(
        grid.SelectByUser(GridRow("Select", args[0]), GridColumn("Select", grid, args[1])));
}

Result SelectRange(ozScriptCall& call)
{
    ozHeadlessGrid& grid = Grid("SelectRange", call);
    const std::vector<std::string>& args = call.arguments;
    ozGridRange range{GridRow("SelectRange", args[0]), GridColumn("SelectRange", grid, args[1]),
                      GridRow("SelectRange", args[2]), GridColumn("SelectRange", grid, args[3])};
    return Result::Bool(grid.SelectRangeByUser(range));
}

Result Cell(ozScriptCall& call)
{
    ozHeadlessGrid& grid = Grid("Cell", call);
    const std::vector<std::string>& args = call.arguments;
    bool taken =
        grid.EditByUser(GridRow("Cell", args[0]), GridColumn("Cell", grid, args[1]), args[2]);
    if (!taken)
        call.note = "the cell was not taken";
    return Result::Bool(taken);
}

}  // namespace

void ozAddViewMembers(std::vector<ozScriptMember>& members)
{
    members.push_back({"View", false, 0, "", View, nullptr});
    members.push_back(ItemAction("Click", &ozHeadlessTree::Click));
    members.push_back(ItemAction("Press", &ozHeadlessTree::Press));
    members.push_back(ItemAction("Release", &ozHeadlessTree::Release));
    members.push_back({"Select", false, AnyArgumentCount, "Path | Row Column", Select, nullptr});
    members.push_back({"Expand", false, 1, "Path",
                       [](ozScriptCall& call) {
                           // Each collapsed item on the way first, as the user opens them.
                           const std::string& path = call.arguments[0];
                           ozHeadlessTree& tree = Tree("Expand", call);
                           for (std::size_t end = path.find('\\'); end != std::string::npos;
                                end = path.find('\\', end + 1)) {
                               ozTreeItem above = Item("Expand", call, path.substr(0, end));
                               if (!tree.Expanded(above))
                                   tree.ExpandByUser(above, true);
                           }
                           tree.ExpandByUser(Item("Expand", call, path), true);
                           return Result();
                       },
                       nullptr});
    members.push_back({"Collapse", false, 1, "Path",
                       [](ozScriptCall& call) {
                           ozTreeItem item = Item("Collapse", call, call.arguments[0]);
                           Tree("Collapse", call).ExpandByUser(item, false);
                           return Result();
                       },
                       nullptr});
    members.push_back(ItemAction("DoubleClick", &ozHeadlessTree::DoubleClick));
    members.push_back({"Key", false, 2, "Path Key", Key, nullptr});
    members.push_back({"Edit", false, 3, "Path Part Value", Edit, nullptr});
    members.push_back({"Menu", false, 1, "Path", Menu, nullptr});
    members.push_back({"Choose", false, 1, "Entry", Choose, nullptr});
    members.push_back(
        {"Dialog", false, AnyArgumentCount,
         "[Set Label Text | Check Caption on|off | Click Caption | Row Label N | Select Path | "
         "Expand Path | OK | Cancel]",
         Dialog, nullptr});
    members.push_back({"Answer", false, 1, "yes|no", Answer, nullptr});
    members.push_back({"SelectValue", false, 1, "Name", SelectValue, nullptr});
    members.push_back({"ValueMenu", false, AnyArgumentCount, "[Name]", ValueMenu, nullptr});
    members.push_back({"ValueKey", false, 2, "Name Key", ValueKey, nullptr});
    members.push_back({"Cell", false, 3, "Row Column Text", Cell, nullptr});
    members.push_back({"SelectRange", false, 4, "Row1 Column1 Row2 Column2", SelectRange, nullptr});
    members.push_back({"EndLabelEdit", false, 1, "Text",
                       [](ozScriptCall& call) {
                           return Result::Bool(
                               Tree("EndLabelEdit", call).EndLabelEdit(call.arguments[0]));
                       },
                       nullptr});
    members.push_back({"CancelLabelEdit", false, 0, "",
                       [](ozScriptCall& call) {
                           return Result::Bool(Tree("CancelLabelEdit", call).CancelLabelEdit());
                       },
                       nullptr});
}
