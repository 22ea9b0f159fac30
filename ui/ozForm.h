// A form: a set of controls with numbers, as a dialog or the parts panel shows them. The views
// describe a form's controls (ozControlSpec) and drive them through ozForm; the controls report
// what the user does through ozFormEvents. The Windows widgets create real controls from the
// description; the headless ones keep them in memory and print them.
//
// Programmatic changes (Text, Check, Rows, ...) raise no events: only the user's typing,
// clicking and choosing do.
#pragma once

#include <string>
#include <utility>
#include <vector>

enum class ozControlKind {
    Label,    // static text
    Edit,     // a one-line edit; caption is the label in front of it
    TextBox,  // a multi-line, read-only text
    Number,   // an edit with a spin control; caption is the label in front of it
    CheckBox,
    Radio,     // a radio button; each Group starts a new set of radio buttons
    Button,    // a push button
    Group,     // a frame with its caption
    ComboBox,  // an edit with a list of suggestions; caption is the label in front of it
    DropDown,  // a list to choose one row from; caption is the label in front of it
    List,      // a list box; caption is the label in front of it (may be empty)
    Tree,      // a tree; caption is the label in front of it
    // Rows the dialog paints itself, one every 15 dialog units from the top of the control's
    // area: an image of the registry view's (11 by 10 units at the left) and a label beside it.
    ImageRows,
};

// Control styles.
enum : unsigned int {
    ozControlReadOnly = 1,    // an edit the user cannot change
    ozControlSorted = 2,      // a list, drop-down or combo box that sorts its rows
    ozControlDefault = 4,     // the default push button
    ozControlTwoColumns = 8,  // a list whose rows hold two columns separated by '\t'
    // An edit whose typing is reported once, when the user leaves it (or ends the dialog with
    // OK), not at every keystroke: for text that is only meaningful whole, such as a key path
    // that would otherwise create a key for every prefix typed.
    ozControlReportOnLeave = 16,
    // An edit of several lines: the return key starts a new line, and lines end in "\r\n".
    ozControlMultiLine = 32,
    // A list or tree that reports when it gets the keyboard focus (ozFormEvent::FocusGained),
    // for dialogs that act on whichever of their panes the user worked in last.
    ozControlReportsFocus = 64,
};

struct ozControlSpec {
    ozControlSpec() = default;
    ozControlSpec(int id, ozControlKind kind, std::string caption = {}, int x = 0, int y = 0,
                  int width = 0, int height = 0, unsigned int style = 0)
        : id(id),
          kind(kind),
          caption(std::move(caption)),
          x(x),
          y(y),
          width(width),
          height(height),
          style(style)
    {
    }

    int id = 0;
    ozControlKind kind = ozControlKind::Label;
    std::string caption;  // caption of the control, or the label in front of it
    // Place and size in dialog units, within the dialog; the parts panel stacks its controls
    // and uses only the height.
    int x = 0, y = 0, width = 0, height = 0;
    unsigned int style = 0;
    // For a two-column list: the column captions.
    std::vector<std::string> columns;
    // For an edit: the most characters the user can type (0: no limit).
    int maxLength = 0;
};

// Whether a control of spec's kind shows its caption as a label in front of it (edits, numbers,
// combo boxes, drop-downs, lists and trees with a caption), the same for every widget set.
inline bool ozControlHasLabel(const ozControlSpec& spec)
{
    switch (spec.kind) {
        case ozControlKind::Edit:
        case ozControlKind::Number:
        case ozControlKind::ComboBox:
        case ozControlKind::DropDown:
        case ozControlKind::List:
        case ozControlKind::Tree:
            return !spec.caption.empty();
        default:
            return false;
    }
}

// What the user did to a control.
enum class ozFormEvent {
    Clicked,           // a button, check box or radio button
    TextChanged,       // the text of an edit, number or combo box
    SelectionChanged,  // the chosen row of a list, drop-down or combo box
    FocusGained,       // a list or tree with ozControlReportsFocus got the keyboard focus
};

class ozForm;
class ozTreeWidget;

class ozFormEvents {
public:
    virtual ~ozFormEvents() = default;
    virtual void Command(ozForm& form, int id, ozFormEvent event) = 0;
};

// The controls of a form, by number. Calls for a number the form does not have do nothing
// and read as empty, unchecked, disabled and no row.
class ozForm {
public:
    virtual ~ozForm() = default;

    virtual void Text(int id, const std::string& text) = 0;
    virtual std::string Text(int id) const = 0;
    virtual void Enable(int id, bool enabled) = 0;
    virtual bool Enabled(int id) const = 0;
    virtual void Check(int id, bool checked) = 0;
    virtual bool Checked(int id) const = 0;
    // The rows of a list, drop-down or combo box (a sorted control keeps them sorted).
    virtual void Rows(int id, const std::vector<std::string>& rows) = 0;
    virtual std::vector<std::string> Rows(int id) const = 0;
    // Selects a row (-1: none); a drop-down also shows the row as its text.
    virtual void SelectRow(int id, int row) = 0;
    virtual int SelectedRow(int id) const = 0;
    // A number control's range and spin step.
    virtual void Range(int id, long long min, long long max, long long step) = 0;
    // Puts the keyboard focus on the control.
    virtual void Focus(int id) = 0;
    // The rows of an ImageRows control: each an image index of the registry view's images and
    // a label. Without images the rows are kept but not drawn: only the background shows.
    virtual void ImageRows(int id, const std::vector<std::pair<int, std::string>>& rows,
                           bool withImages) = 0;
    // The tree widget of a Tree control, owned by the form and valid while the form shows its
    // controls (null for another number or where the form has no tree widgets). Its events go
    // where ozTreeWidget::Events sends them; the form's own events for it are FocusGained only.
    virtual ozTreeWidget* TreeControl(int /*id*/) { return nullptr; }
};

// A dialog's layout: its resource number, caption, size in dialog units and controls in tab
// order. The buttons OK (1) and Cancel (2) end a dialog; the logic decides whether OK may.
enum : int {
    ozDialogOK = 1,
    ozDialogCancel = 2,
};

struct ozDialogTemplate {
    int resource = 0;
    std::string caption;
    int width = 0, height = 0;
    std::vector<ozControlSpec> controls;
};

// The logic of one dialog. The dialog host creates the controls from Layout(), calls Init,
// forwards every other command, and asks Accept when OK is pressed.
class ozDialog : public ozFormEvents {
public:
    virtual const ozDialogTemplate& Layout() const = 0;
    // The controls exist: fill them.
    virtual void Init(ozForm& form) = 0;
    // OK was pressed: true ends the dialog as accepted, false keeps it open (after telling
    // the user why).
    virtual bool Accept(ozForm&) { return true; }
    void Command(ozForm&, int, ozFormEvent) override {}
};
