// The Windows side of a form: the window classes and styles of each control kind, and the
// ozForm operations over the child windows of one parent window (a dialog or the parts panel),
// addressed by their control numbers. The parent's window procedure hands its WM_COMMAND and
// WM_NOTIFY messages to Command and Notify, which turn what the user did into ozFormEvents;
// while a programmatic change is under way (every ozForm call) nothing is reported, as the
// controls notify their own changes too.
//
// A number is an edit with an up-down control beside it whose arrows step the edit's text
// within the range set by Range (the up-down keeps no number of its own: the logic decides);
// a step of 0 hides the up-down control.
#pragma once

#include <windows.h>

#include <climits>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "ui/ozForm.h"

// The window class and styles of the window that stands for a control of spec's kind.
struct ozWin32ControlStyle {
    const wchar_t* windowClass;
    DWORD style;
    DWORD extendedStyle;
};
ozWin32ControlStyle ozWin32StyleOf(const ozControlSpec& spec);
// What a freshly created control needs besides its styles: the columns of a two-column list.
void ozWin32PrepareControl(HWND control, const ozControlSpec& spec);
// Converts text between the model's narrow encoding and the windows' UTF-16.
std::wstring ozWin32Wide(const std::string& text);
std::string ozWin32Narrow(const std::wstring& text);
// A window's text.
std::string ozWin32WindowText(HWND window);
// Creates a child control of the views (sunken edge, visible, a tab stop, the dialog font) with
// the class's own styles added; null on failure.
HWND ozWin32CreateChild(const wchar_t* windowClass, DWORD style, HWND parent, int id,
                        HINSTANCE instance);
// Replaces the columns of a report list: one per caption, as wide as widths gives (pixels) and
// otherWidth where it gives none.
void ozWin32ListColumns(HWND list, const std::vector<std::string>& captions,
                        const std::vector<int>& widths, int otherWidth);

// Counts programmatic changes under way in a widget: while the count is positive, the widget
// reports no event.
class ozWin32QuietCount {
public:
    explicit ozWin32QuietCount(int& count) : m_count(count) { ++m_count; }
    ~ozWin32QuietCount() { --m_count; }
    ozWin32QuietCount(const ozWin32QuietCount&) = delete;
    ozWin32QuietCount& operator=(const ozWin32QuietCount&) = delete;

private:
    int& m_count;
};

class ozWin32FormControls {
public:
    // The parent window of the controls (null: none, every call does nothing).
    void Parent(HWND parent) { m_parent = parent; }
    HWND Parent() const { return m_parent; }
    // The windows that go with control id: its label and its up-down control, enabled and
    // disabled with it.
    void Companion(int id, HWND companion) { m_companions[id].push_back(companion); }
    void ForgetControls();

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
    // The parent's WM_DRAWITEM: paints an ImageRows control (true), in the status-bar font on
    // the button face, each row's image transparent at its place and the label 10 pixels to
    // the right of the image area.
    bool DrawItem(LPARAM lParam);

    // The parent's WM_COMMAND and WM_NOTIFY: true when the message concerned a control and
    // was handled (result: what the parent's procedure returns).
    bool Command(WPARAM wParam, LPARAM lParam, ozForm& form, ozFormEvents* events);
    bool Notify(LPARAM lParam, ozForm& form, ozFormEvents* events, LRESULT& result);
    // Reports the typing of edits that report when left (ozControlReportOnLeave) and were not
    // left yet: a dialog ended with OK from the keyboard takes what they hold.
    void ReportTyping(ozForm& form, ozFormEvents* events);

    // Counts programmatic changes under way: while positive no event is reported.
    class Quiet : public ozWin32QuietCount {
    public:
        explicit Quiet(const ozWin32FormControls& controls) : ozWin32QuietCount(controls.m_quiet) {}
    };

private:
    struct NumberRange {
        long long min = LLONG_MIN, max = LLONG_MAX, step = 1;
    };
    HWND Control(int id) const;
    // Steps the number whose up-down control reported delta arrow presses.
    void StepNumber(HWND upDown, int delta);

    struct ImageRowSet {
        std::vector<std::pair<int, std::string>> rows;
        bool withImages = false;
    };

    HWND m_parent = nullptr;
    std::map<int, std::vector<HWND>> m_companions;
    std::map<int, ImageRowSet> m_imageRows;
    std::map<int, NumberRange> m_ranges;
    mutable int m_quiet = 0;
};

// An ozForm (or a form with more, such as ozPanelWidget) over ozWin32FormControls.
template <class Form>
class ozWin32Form : public Form {
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

protected:
    ozWin32FormControls m_controls;
};
