// The editors whose value lives in one control: check box, number, edit, combo box, line of
// text and drop-down list.
#include <algorithm>
#include <climits>

#include "control/ozParameterText.h"
#include "control/ozPolicyEdit.h"
#include "core/adm/ozADMCheckBox.h"
#include "core/adm/ozADMComboBox.h"
#include "core/adm/ozADMDropdownList.h"
#include "core/adm/ozADMEditText.h"
#include "core/adm/ozADMListBox.h"
#include "core/adm/ozADMMultiText.h"
#include "core/adm/ozADMNumeric.h"
#include "ozPartEditor.h"
#include "platform/ozAsciiCase.h"

namespace {

// Heights in dialog units: a line of text, a check box, an edit-like control.
constexpr int LabelHeight = 10;
constexpr int CheckBoxHeight = 12;
constexpr int EditHeight = 14;
constexpr int MultiLineHeight = 48;

// An editor of one control of the given kind whose text is the value.
class ozOneControlEditor : public ozPartEditor {
public:
    ozOneControlEditor(ozADMCtrl& part, int firstId, ozControlKind kind, unsigned int style = 0)
        : ozPartEditor(part, firstId, 1), m_kind(kind), m_style(style)
    {
    }
    void Describe(std::vector<ozControlSpec>& controls) const override
    {
        ozControlSpec spec;
        spec.id = Id(0);
        spec.kind = m_kind;
        spec.caption = Label();
        spec.height = m_kind == ozControlKind::Label      ? LabelHeight
                      : m_kind == ozControlKind::CheckBox ? CheckBoxHeight
                                                          : EditHeight;
        spec.style = m_style;
        controls.push_back(spec);
    }
    void Load(ozForm& form) override { form.Text(Id(0), ozPartValueText(Part())); }
    std::string Text(const ozForm& form) const override { return form.Text(Id(0)); }
    // The text is kept as typed, even beyond a MAXLEN: the commit refuses it, naming the limit,
    // rather than cutting characters the user may not notice are gone.
    bool Type(ozForm& form, const std::string& text) override
    {
        form.Text(Id(0), text);
        return true;
    }

private:
    ozControlKind m_kind;
    unsigned int m_style;
};

class ozCheckBoxEditor : public ozOneControlEditor {
public:
    ozCheckBoxEditor(ozADMCheckBox& part, int firstId)
        : ozOneControlEditor(part, firstId, ozControlKind::CheckBox), m_checkBox(part)
    {
    }
    void Load(ozForm& form) override { form.Check(Id(0), m_checkBox.Checked()); }
    std::string Text(const ozForm& form) const override
    {
        return form.Checked(Id(0)) ? "TRUE" : "FALSE";
    }
    bool Type(ozForm& form, const std::string& text) override
    {
        bool checked = false;
        if (!ozReadBool(text, checked))
            return false;
        form.Check(Id(0), checked);
        return true;
    }

private:
    ozADMCheckBox& m_checkBox;
};

class ozNumberEditor : public ozOneControlEditor {
public:
    ozNumberEditor(ozADMNumeric& part, int firstId)
        : ozOneControlEditor(part, firstId, ozControlKind::Number), m_numeric(part)
    {
    }
    // A part left empty shows its default, which is what it writes when saved.
    void Load(ozForm& form) override
    {
        // The spin control counts in signed 64 bits; a larger number can still be typed.
        auto spinBound = [](std::uint64_t number) {
            return static_cast<long long>(std::min<std::uint64_t>(number, LLONG_MAX));
        };
        form.Range(Id(0), spinBound(m_numeric.Min()), spinBound(m_numeric.Max()), m_numeric.Spin());
        bool showDefault = m_numeric.Empty() && !m_numeric.DefaultEmpty();
        form.Text(Id(0),
                  showDefault ? std::to_string(m_numeric.Default()) : ozPartValueText(m_numeric));
    }

private:
    ozADMNumeric& m_numeric;
};

// One line of the edit per string; the part value text form separates them by ';'.
class ozMultiTextEditor : public ozOneControlEditor {
public:
    ozMultiTextEditor(ozADMMultiText& part, int firstId)
        : ozOneControlEditor(part, firstId, ozControlKind::Edit, ozControlMultiLine)
    {
    }
    void Describe(std::vector<ozControlSpec>& controls) const override
    {
        ozOneControlEditor::Describe(controls);
        controls.back().height = MultiLineHeight;
    }
    void Load(ozForm& form) override { Type(form, ozPartValueText(Part())); }
    std::string Text(const ozForm& form) const override
    {
        ozADMMultiText lines;
        lines.Text(form.Text(Id(0)).c_str());
        return ozJoinListText(lines.Lines());
    }
    bool Type(ozForm& form, const std::string& text) override
    {
        std::string shown;
        for (const std::string& line : ozSplitListText(text))
            shown += (shown.empty() ? "" : "\r\n") + line;
        form.Text(Id(0), shown);
        return true;
    }
};

class ozComboBoxEditor : public ozOneControlEditor {
public:
    ozComboBoxEditor(ozADMComboBox& part, int firstId)
        : ozOneControlEditor(part, firstId, ozControlKind::ComboBox,
                             part.NoSort() ? 0u : static_cast<unsigned int>(ozControlSorted)),
          m_comboBox(part)
    {
    }
    void Load(ozForm& form) override
    {
        std::vector<std::string> rows;
        const CCollection<char>& suggestions = m_comboBox.Suggestions();
        for (int pos = 0; pos < suggestions.Count(); ++pos)
            if (suggestions.At(pos) != nullptr)
                rows.emplace_back(suggestions.At(pos));
        form.Rows(Id(0), rows);
        ozOneControlEditor::Load(form);
    }

private:
    ozADMComboBox& m_comboBox;
};

class ozLineOfTextEditor : public ozOneControlEditor {
public:
    ozLineOfTextEditor(ozADMCtrl& part, int firstId)
        : ozOneControlEditor(part, firstId, ozControlKind::Label)
    {
    }
    bool HasValue() const override { return false; }
    void Load(ozForm&) override {}
    std::string Text(const ozForm&) const override { return ""; }
    bool Type(ozForm&, const std::string&) override { return false; }
};

// Rows are the items' names; the control sorts them unless the part has NOSORT, so a row is
// found by its name, never by the item's position.
class ozDropDownEditor : public ozOneControlEditor {
public:
    ozDropDownEditor(ozADMDropdownList& part, int firstId)
        : ozOneControlEditor(part, firstId, ozControlKind::DropDown,
                             part.NoSort() ? 0u : static_cast<unsigned int>(ozControlSorted)),
          m_list(part)
    {
    }
    void Load(ozForm& form) override
    {
        std::vector<std::string> rows;
        const CCollection<ozADMListItem>& items = m_list.ItemList();
        for (int pos = 0; pos < items.Count(); ++pos) {
            const char* name = items.At(pos)->Name();
            rows.emplace_back(name != nullptr ? name : "");
        }
        form.Rows(Id(0), rows);
        Type(form, ozPartValueText(m_list));
    }
    std::string Text(const ozForm& form) const override
    {
        std::vector<std::string> rows = form.Rows(Id(0));
        int row = form.SelectedRow(Id(0));
        return row >= 0 && row < static_cast<int>(rows.size()) ? rows[row] : "";
    }
    bool Type(ozForm& form, const std::string& text) override
    {
        if (text.empty()) {
            form.SelectRow(Id(0), -1);
            return true;
        }
        std::vector<std::string> rows = form.Rows(Id(0));
        auto found = std::find_if(rows.begin(), rows.end(), [&](const std::string& row) {
            return ozAsciiSameIgnoringCase(row, text);
        });
        if (found == rows.end())
            return false;
        form.SelectRow(Id(0), static_cast<int>(found - rows.begin()));
        return true;
    }

private:
    ozADMDropdownList& m_list;
};

}  // namespace

std::string ozPartEditor::Label() const
{
    return m_part.Name() != nullptr ? m_part.Name() : "";
}

void ozPartEditor::Enable(ozForm& form, bool enabled) const
{
    for (int k = 0; k < m_controlCount; ++k)
        form.Enable(Id(k), enabled);
}

std::unique_ptr<ozPartEditor> ozCreatePartEditor(ozADMCtrl& part, int firstId)
{
    switch (part.CtrlType()) {
        case CtrlCheckBox:
            return std::make_unique<ozCheckBoxEditor>(static_cast<ozADMCheckBox&>(part), firstId);
        case CtrlNumeric:
            return std::make_unique<ozNumberEditor>(static_cast<ozADMNumeric&>(part), firstId);
        case CtrlEditText:
            return std::make_unique<ozOneControlEditor>(part, firstId, ozControlKind::Edit);
        case CtrlComboBox:
            return std::make_unique<ozComboBoxEditor>(static_cast<ozADMComboBox&>(part), firstId);
        case CtrlText:
            return std::make_unique<ozLineOfTextEditor>(part, firstId);
        case CtrlDropdownList:
            return std::make_unique<ozDropDownEditor>(static_cast<ozADMDropdownList&>(part),
                                                      firstId);
        case CtrlListBox:
            return ozCreateListBoxEditor(static_cast<ozADMListBox&>(part), firstId);
        case CtrlMultiText:
            return std::make_unique<ozMultiTextEditor>(static_cast<ozADMMultiText&>(part), firstId);
        default:
            return nullptr;
    }
}
