// The Qt side of a form: one Qt widget per control description, children of one parent widget
// (a dialog or the parts panel), addressed by their control numbers, and the ozForm operations
// over them. What the user does is reported through a callback; the program's own changes (every
// ozForm call) report nothing.
//
// A labelled control (edit, number, combo box, drop-down, list, tree) gets a QLabel that the
// owner places; a number is a line edit with two arrow buttons that step its text within the
// range set by Range (the logic checks the text itself; a step of 0 hides the arrows). Radio
// buttons form one exclusive set from one group frame (or the first control) to the next. A
// two-column list is a QTreeWidget with the columns' captions; a Tree control is an ozQtTree,
// reached through TreeControl.
#pragma once

#include <QtCore/QPointer>
#include <QtCore/QRect>
#include <climits>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "ozQtTree.h"
#include "ui/ozForm.h"

class QButtonGroup;
class QLabel;
class QWidget;

class ozQtFormControls {
public:
    // One control: its description, its widget, the label in front of it and the arrows of a
    // number (null where it has none).
    struct Control {
        ozControlSpec spec;
        QPointer<QWidget> widget;
        QPointer<QLabel> label;
        QPointer<QWidget> arrows;
        std::unique_ptr<ozQtTree> tree;
        long long min = LLONG_MIN, max = LLONG_MAX, step = 1;
        std::vector<std::pair<int, std::string>> imageRows;
        bool withImages = false;
        // An edit that reports when left: the user typed since it last reported.
        bool typed = false;
        // Where the owner placed the control (with a number's arrows), once it did.
        QRect area;
        bool placed = false;
    };
    // What the user did to the control id.
    using Report = std::function<void(int id, ozFormEvent event)>;

    ozQtFormControls() = default;
    ~ozQtFormControls();
    ozQtFormControls(const ozQtFormControls&) = delete;
    ozQtFormControls& operator=(const ozQtFormControls&) = delete;

    // Creates the controls in parent (hidden until the owner places and shows them), replacing
    // those there were; what the user does goes to report. The pixels of 4 horizontal and 8
    // vertical dialog units are those of parent's font.
    void Create(QWidget& parent, const std::vector<ozControlSpec>& specs, Report report);
    // Deletes the controls.
    void Destroy();
    std::vector<Control>& Controls() { return m_controls; }
    // The widget of control id (null for a number the form does not have).
    QWidget* Widget(int id) const;
    // The pixels of x horizontal or y vertical dialog units.
    int PixelsX(int x) const { return x * m_baseX / 4; }
    int PixelsY(int y) const { return y * m_baseY / 8; }
    // The height of the control's area for height pixels of its description: a combo box or
    // drop-down describes itself with its list, but shows one line.
    int FieldHeight(const Control& control, int height) const;
    // Puts the control (a number with its arrows at its right, unless its step is 0) into area
    // of the parent and shows it.
    void Place(Control& control, const QRect& area);
    // Reports the typing of edits that report when left and were not left yet: a dialog ended
    // with OK from the keyboard takes what they hold.
    void ReportTyping();

    void Text(int id, const std::string& text);
    std::string Text(int id) const;
    void Enable(int id, bool enabled);
    bool Enabled(int id) const;
    void Check(int id, bool checked);
    bool Checked(int id) const;
    void Rows(int id, const std::vector<std::string>& rows);
    std::vector<std::string> Rows(int id) const;
    void SelectRow(int id, int row);
    int SelectedRow(int id) const;
    void Range(int id, long long min, long long max, long long step);
    void Focus(int id);
    void ImageRows(int id, const std::vector<std::pair<int, std::string>>& rows, bool withImages);
    ozTreeWidget* TreeControl(int id);

private:
    Control* Find(int id);
    const Control* Find(int id) const;
    QWidget* CreateWidget(Control& control, QWidget& parent);
    // Steps a number's text by delta steps, as the user's arrow does.
    void Step(Control& control, int delta);
    void Raise(int id, ozFormEvent event) const;

    std::vector<Control> m_controls;
    std::vector<QButtonGroup*> m_radioSets;
    Report m_report;
    int m_baseX = 6, m_baseY = 13;
    int m_quiet = 0;
};

// An ozForm (or a form with more, such as ozPanelWidget) over ozQtFormControls.
template <class Form>
class ozQtForm : public Form {
public:
    void Text(int id, const std::string& text) override { m_controls.Text(id, text); }
    std::string Text(int id) const override { return m_controls.Text(id); }
    void Enable(int id, bool enabled) override { m_controls.Enable(id, enabled); }
    bool Enabled(int id) const override { return m_controls.Enabled(id); }
    void Check(int id, bool checked) override { m_controls.Check(id, checked); }
    bool Checked(int id) const override { return m_controls.Checked(id); }
    void Rows(int id, const std::vector<std::string>& rows) override { m_controls.Rows(id, rows); }
    std::vector<std::string> Rows(int id) const override { return m_controls.Rows(id); }
    void SelectRow(int id, int row) override { m_controls.SelectRow(id, row); }
    int SelectedRow(int id) const override { return m_controls.SelectedRow(id); }
    void Range(int id, long long min, long long max, long long step) override
    {
        m_controls.Range(id, min, max, step);
    }
    void Focus(int id) override { m_controls.Focus(id); }
    void ImageRows(int id, const std::vector<std::pair<int, std::string>>& rows,
                   bool withImages) override
    {
        m_controls.ImageRows(id, rows, withImages);
    }
    ozTreeWidget* TreeControl(int id) override { return m_controls.TreeControl(id); }

    ozQtFormControls& Controls() { return m_controls; }

protected:
    ozQtFormControls m_controls;
};
