// A form in memory: the controls of a dialog or of the parts panel with their texts, states and
// rows, and calls that stand for what a user does to them, raising the form's events.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "ozHeadlessTree.h"
#include "ui/ozViewPlatform.h"

class ozHeadlessForm final : public ozPanelWidget {
public:
    struct Control {
        ozControlSpec spec;
        std::string text;
        bool enabled = true;
        bool checked = false;
        std::vector<std::string> rows;
        int selectedRow = -1;
        long long min = 0, max = 0, step = 1;
        // An ImageRows control's rows: their image indexes (empty when shown without images)
        // beside the labels in rows.
        std::vector<int> images;
    };

    // The controls in tab order.
    const std::vector<Control>& Controls() const { return m_controls; }
    const Control* Find(int id) const;
    // The first control whose caption (or label) is caption, among the kinds given (all when
    // none are given); null when there is none.
    const Control* Find(const std::string& caption,
                        std::initializer_list<ozControlKind> kinds = {}) const;

    // The user's actions; each is refused (false) for a disabled control or one of the wrong
    // kind. Type replaces the text of an edit, number or combo box; Click presses a button;
    // CheckByUser sets a check box, or chooses a radio button (clearing the others of its
    // group); ChooseRow selects a row of a list, drop-down or combo box (-1: none).
    bool Type(int id, const std::string& text);
    bool Click(int id);
    bool CheckByUser(int id, bool checked);
    bool ChooseRow(int id, int row);
    // Puts the keyboard focus on a control as a click into it does (FocusGained for a list or
    // tree that reports it, when the focus was elsewhere); false for a disabled control.
    bool FocusByUser(int id);
    // The tree widget of a Tree control (null for another number): ozadm's view calls and tests
    // drive it as the user does.
    ozHeadlessTree* Tree(int id) const;

    // ozPanelWidget
    void Build(const std::vector<ozControlSpec>& controls, ozFormEvents* events) override;
    void Clear() override;
    void Text(int id, const std::string& text) override;
    std::string Text(int id) const override;
    void Enable(int id, bool enabled) override;
    bool Enabled(int id) const override;
    void Check(int id, bool checked) override;
    bool Checked(int id) const override;
    void Rows(int id, const std::vector<std::string>& rows) override;
    std::vector<std::string> Rows(int id) const override;
    void SelectRow(int id, int row) override;
    int SelectedRow(int id) const override;
    void Range(int id, long long min, long long max, long long step) override;
    void Focus(int id) override { m_focus = id; }
    void ImageRows(int id, const std::vector<std::pair<int, std::string>>& rows,
                   bool withImages) override;
    int Focused() const { return m_focus; }
    ozTreeWidget* TreeControl(int id) override { return Tree(id); }

private:
    Control* FindControl(int id);
    void Raise(int id, ozFormEvent event);

    std::vector<Control> m_controls;
    std::map<int, std::unique_ptr<ozHeadlessTree>> m_trees;
    ozFormEvents* m_events = nullptr;
    int m_focus = 0;
};
