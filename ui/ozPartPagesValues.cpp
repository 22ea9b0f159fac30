// The pages of the parts that hold one value: check box, numeric, edit text, combo box,
// multi-line text, and the text part, which has its name only.
#include <cstdint>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "control/ozParameterText.h"
#include "core/adm/ozADMActionList.h"
#include "core/adm/ozADMCheckBox.h"
#include "core/adm/ozADMComboBox.h"
#include "core/adm/ozADMEditText.h"
#include "core/adm/ozADMMultiText.h"
#include "core/adm/ozADMNumeric.h"
#include "ozEditorFields.h"
#include "ozPartPage.h"

namespace {

using K = ozControlKind;
using P = ozPartPage;

constexpr unsigned int ValueFields = P::WithKey | P::WithValueName | P::WithClientExt;

std::string TextOf(const char* text)
{
    return text != nullptr ? text : "";
}

class CheckBoxPage : public ozPartPage {
public:
    CheckBoxPage(ozADMCheckBox& part, const ozEditorContext& context)
        : ozPartPage(part, context, "Check box", ValueFields,
                     {
                         {DefCheckedCheck, K::CheckBox, "Checked by default", 14, 0, 120, 10},
                         {OnKindList, K::DropDown, "Value on", 14, 16, 110, 14},
                         {OnValueEdit, K::Edit, "Data on", 130, 16, 116, 14},
                         {OffKindList, K::DropDown, "Value off", 14, 34, 110, 14},
                         {OffValueEdit, K::Edit, "Data off", 130, 34, 116, 14},
                         {ActionListOnButton, K::Button, "Action list on", 14, 54, 80, 14},
                         {ActionListOffButton, K::Button, "Action list off", 98, 54, 80, 14},
                     },
                     68),
          m_box(part)
    {
        if (part.ActionListOn() != nullptr)
            m_on.reset(part.ActionListOn()->Copy());
        if (part.ActionListOff() != nullptr)
            m_off.reset(part.ActionListOff()->Copy());
    }

private:
    void InitType(ozForm& form) override
    {
        form.Check(DefCheckedCheck, m_box.Default());
        for (auto [kind, edit, value] :
             {std::tuple{OnKindList, OnValueEdit, &m_box.ValueOn()},
              std::tuple{OffKindList, OffValueEdit, &m_box.ValueOff()}}) {
            form.Rows(kind, ozValueKindRows(true));
            form.SelectRow(kind, ozValueKindRow(*value, true));
            form.Text(edit, ozValueKindText(*value));
            form.Enable(edit, KindHasText(ozValueKindRow(*value, true), true));
        }
    }
    bool CheckType(ozForm& form) override
    {
        unsigned long number = 0;
        for (auto [kind, edit, field] : {std::tuple{OnKindList, OnValueEdit, "Value on"},
                                         std::tuple{OffKindList, OffValueEdit, "Value off"}})
            if (KindIsNumeric(form.SelectedRow(kind), true) &&
                !ReadNumber(form, edit, field, number))
                return false;
        return true;
    }
    void StoreType(ozForm& form) override
    {
        m_box.Default(form.Checked(DefCheckedCheck));
        ozStoreValueKind(m_box.ValueOn(), form.SelectedRow(OnKindList), true,
                         form.Text(OnValueEdit));
        ozStoreValueKind(m_box.ValueOff(), form.SelectedRow(OffKindList), true,
                         form.Text(OffValueEdit));
        m_box.ActionListOn(m_on.release());
        m_box.ActionListOff(m_off.release());
    }
    void TypeCommand(ozForm& form, int id, ozFormEvent) override
    {
        if (id == OnKindList || id == OffKindList)
            form.Enable(id == OnKindList ? OnValueEdit : OffValueEdit,
                        KindHasText(form.SelectedRow(id), true));
        else if (id == ActionListOnButton)
            EditActionList(m_on);
        else if (id == ActionListOffButton)
            EditActionList(m_off);
    }

    ozADMCheckBox& m_box;
    std::unique_ptr<ozADMActionList> m_on, m_off;
};

class NumericPage : public ozPartPage {
public:
    NumericPage(ozADMNumeric& part, const ozEditorContext& context)
        : ozPartPage(part, context, "Numeric", ValueFields | WithRequired,
                     {
                         {MinEdit, K::Edit, "Minimum", 14, 0, 110, 14},
                         {MaxEdit, K::Edit, "Maximum", 136, 0, 110, 14},
                         {SpinEdit, K::Edit, "Spin step", 14, 18, 110, 14},
                         {DefaultNumberEdit, K::Edit, "Default", 136, 18, 110, 14},
                         {TxtConvertCheck, K::CheckBox, "Text conversion", 14, 36, 110, 10},
                         {QwordCheck, K::CheckBox, "64-bit number (REG_QWORD)", 136, 36, 110, 10},
                     },
                     46),
          m_numeric(part)
    {
    }

private:
    void InitType(ozForm& form) override
    {
        form.Text(MinEdit, std::to_string(m_numeric.Min()));
        form.Text(MaxEdit, std::to_string(m_numeric.Max()));
        form.Text(SpinEdit, std::to_string(static_cast<unsigned long>(m_numeric.Spin())));
        form.Text(DefaultNumberEdit,
                  m_numeric.DefaultEmpty() ? "" : std::to_string(m_numeric.Default()));
        form.Check(TxtConvertCheck, m_numeric.TxtConvert());
        form.Check(QwordCheck, m_numeric.Qword());
    }
    // A number of the part's width: 32 bits, or 64 with QwordCheck.
    bool ReadBound(ozForm& form, int id, const char* field, std::uint64_t& number) const
    {
        std::uint64_t max = form.Checked(QwordCheck) ? UINT64_MAX : UINT32_MAX;
        if (!ozReadUnsigned(form.Text(id), 0, max, number))
            return Refuse(form, id, HostMessagePartFieldNotNumber, {field});
        return true;
    }
    bool CheckType(ozForm& form) override
    {
        if (!ReadBound(form, MinEdit, "Minimum", m_min) ||
            !ReadBound(form, MaxEdit, "Maximum", m_max) ||
            !ReadNumber(form, SpinEdit, "Spin step", m_spin))
            return false;
        if (m_min > m_max)
            return Refuse(form, MinEdit, HostMessagePartRangeReversed, {"Minimum", "Maximum"});
        m_defaultEmpty = form.Text(DefaultNumberEdit).empty();
        m_default = 0;
        if (!m_defaultEmpty && !ReadBound(form, DefaultNumberEdit, "Default", m_default))
            return false;
        if (!m_defaultEmpty && (m_default < m_min || m_default > m_max))
            return Refuse(form, DefaultNumberEdit, HostMessagePartOutsideRange,
                          {"Default", "Minimum", "Maximum"});
        return true;
    }
    void StoreType(ozForm& form) override
    {
        m_numeric.Min(m_min);
        m_numeric.Max(m_max);
        m_numeric.Spin(static_cast<long>(m_spin));
        m_numeric.Default(m_default);
        m_numeric.DefaultEmpty(m_defaultEmpty);
        m_numeric.TxtConvert(form.Checked(TxtConvertCheck));
        m_numeric.Qword(form.Checked(QwordCheck));
    }

    ozADMNumeric& m_numeric;
    std::uint64_t m_min = 0, m_max = 0, m_default = 0;
    unsigned long m_spin = 0;
    bool m_defaultEmpty = true;
};

// The edit text's controls; a combo box adds its suggestions below them.
std::vector<ozControlSpec> EditTextControls(bool withSuggestions)
{
    std::vector<ozControlSpec> controls = {
        {P::MaxLenEdit, K::Edit, "Maximum length", 14, 0, 110, 14},
        {P::DefaultTextEdit, K::Edit, "Default", 14, 18, 232, 14},
        {P::ExpandableCheck, K::CheckBox, "Expandable text", 14, 36, 110, 10},
    };
    if (withSuggestions) {
        controls.push_back({P::NoSortCheck, K::CheckBox, "Do not sort", 136, 36, 110, 10});
        controls.push_back({P::SuggestionList, K::List, "Suggestions", 14, 52, 160, 56});
        controls.push_back({P::SuggestionEdit, K::Edit, "Suggestion", 14, 112, 160, 14});
        controls.push_back({P::AddSuggestionButton, K::Button, "Add", 180, 112, 50, 14});
        controls.push_back({P::RemoveSuggestionButton, K::Button, "Remove", 180, 52, 50, 14});
    }
    return controls;
}

class EditTextPage : public ozPartPage {
public:
    EditTextPage(ozADMEditText& part, const ozEditorContext& context, const char* typeName,
                 bool withSuggestions)
        : ozPartPage(part, context, typeName, ValueFields | WithRequired,
                     EditTextControls(withSuggestions), withSuggestions ? 126 : 46),
          m_edit(part)
    {
    }

protected:
    void InitType(ozForm& form) override
    {
        form.Text(MaxLenEdit, m_edit.MaxLen() == 0 ? "" : std::to_string(m_edit.MaxLen()));
        form.Text(DefaultTextEdit, TextOf(m_edit.Default()));
        form.Check(ExpandableCheck, m_edit.Expandable());
    }
    bool CheckType(ozForm& form) override
    {
        const unsigned long none = 0;
        return ReadNumber(form, MaxLenEdit, "Maximum length", m_maxLen, &none);
    }
    void StoreType(ozForm& form) override
    {
        m_edit.MaxLen(m_maxLen);
        std::string text = form.Text(DefaultTextEdit);
        m_edit.Default(text.empty() ? nullptr : text.c_str());
        m_edit.Expandable(form.Checked(ExpandableCheck));
    }

private:
    ozADMEditText& m_edit;
    unsigned long m_maxLen = 0;
};

class ComboBoxPage : public EditTextPage {
public:
    ComboBoxPage(ozADMComboBox& part, const ozEditorContext& context)
        : EditTextPage(part, context, "Combo box", true), m_combo(part)
    {
        for (int pos = 0; pos < part.Suggestions().Count(); ++pos)
            m_suggestions.emplace_back(TextOf(part.Suggestions().At(pos)));
    }

private:
    void InitType(ozForm& form) override
    {
        EditTextPage::InitType(form);
        form.Check(NoSortCheck, m_combo.NoSort());
        form.Rows(SuggestionList, m_suggestions);
    }
    void StoreType(ozForm& form) override
    {
        EditTextPage::StoreType(form);
        m_combo.NoSort(form.Checked(NoSortCheck));
        m_combo.ClearSuggestions();
        for (const std::string& suggestion : m_suggestions)
            m_combo.AddSuggestion(suggestion.c_str());
    }
    void TypeCommand(ozForm& form, int id, ozFormEvent) override
    {
        int row = form.SelectedRow(SuggestionList);
        if (id == AddSuggestionButton && !form.Text(SuggestionEdit).empty()) {
            m_suggestions.push_back(form.Text(SuggestionEdit));
            form.Text(SuggestionEdit, "");
        } else if (id == RemoveSuggestionButton && row >= 0 &&
                   row < static_cast<int>(m_suggestions.size())) {
            m_suggestions.erase(m_suggestions.begin() + row);
        } else {
            return;
        }
        form.Rows(SuggestionList, m_suggestions);
    }

    ozADMComboBox& m_combo;
    std::vector<std::string> m_suggestions;
};

class MultiTextPage : public ozPartPage {
public:
    MultiTextPage(ozADMMultiText& part, const ozEditorContext& context)
        : ozPartPage(part, context, "Multi-line text", ValueFields | WithRequired,
                     {
                         {MaxLenEdit, K::Edit, "Maximum line length", 14, 0, 110, 14},
                         {MaxStringsEdit, K::Edit, "Maximum lines", 136, 0, 110, 14},
                     },
                     18),
          m_multiText(part)
    {
    }

private:
    static std::string Limit(unsigned long limit)
    {
        return limit == 0 ? "" : std::to_string(limit);
    }
    void InitType(ozForm& form) override
    {
        form.Text(MaxLenEdit, Limit(m_multiText.MaxLength()));
        form.Text(MaxStringsEdit, Limit(m_multiText.MaxStrings()));
    }
    bool CheckType(ozForm& form) override
    {
        const unsigned long none = 0;
        return ReadNumber(form, MaxLenEdit, "Maximum line length", m_maxLength, &none) &&
               ReadNumber(form, MaxStringsEdit, "Maximum lines", m_maxStrings, &none);
    }
    void StoreType(ozForm&) override
    {
        m_multiText.MaxLength(m_maxLength);
        m_multiText.MaxStrings(m_maxStrings);
    }

    ozADMMultiText& m_multiText;
    unsigned long m_maxLength = 0, m_maxStrings = 0;
};

// A template keeps a text part's name only.
class TextPage : public ozPartPage {
public:
    TextPage(ozADMCtrl& part, const ozEditorContext& context)
        : ozPartPage(part, context, "Text", 0, {}, 0)
    {
    }
};

}  // namespace

std::unique_ptr<ozDialog> ozCreateValuePartPage(ozADMCtrl& part, const ozEditorContext& context)
{
    switch (part.CtrlType()) {
        case CtrlCheckBox:
            return std::make_unique<CheckBoxPage>(static_cast<ozADMCheckBox&>(part), context);
        case CtrlNumeric:
            return std::make_unique<NumericPage>(static_cast<ozADMNumeric&>(part), context);
        case CtrlEditText:
            return std::make_unique<EditTextPage>(static_cast<ozADMEditText&>(part), context,
                                                  "Edit text", false);
        case CtrlComboBox:
            return std::make_unique<ComboBoxPage>(static_cast<ozADMComboBox&>(part), context);
        case CtrlText:
            return std::make_unique<TextPage>(part, context);
        case CtrlMultiText:
            return std::make_unique<MultiTextPage>(static_cast<ozADMMultiText&>(part), context);
        default:
            return nullptr;
    }
}
