#include "ozHeadlessForm.h"

#include <algorithm>

#include "platform/ozAsciiCase.h"

namespace {

bool HasRows(ozControlKind kind)
{
    return kind == ozControlKind::List || kind == ozControlKind::DropDown ||
           kind == ozControlKind::ComboBox;
}

bool TakesText(ozControlKind kind)
{
    return kind == ozControlKind::Edit || kind == ozControlKind::Number ||
           kind == ozControlKind::ComboBox;
}

}  // namespace

ozHeadlessForm::Control* ozHeadlessForm::FindControl(int id)
{
    for (Control& control : m_controls)
        if (control.spec.id == id)
            return &control;
    return nullptr;
}

const ozHeadlessForm::Control* ozHeadlessForm::Find(int id) const
{
    for (const Control& control : m_controls)
        if (control.spec.id == id)
            return &control;
    return nullptr;
}

const ozHeadlessForm::Control* ozHeadlessForm::Find(
    const std::string& caption, std::initializer_list<ozControlKind> kinds) const
{
    for (const Control& control : m_controls)
        if (control.spec.caption == caption &&
            (kinds.size() == 0 ||
             std::find(kinds.begin(), kinds.end(), control.spec.kind) != kinds.end()))
            return &control;
    return nullptr;
}

void ozHeadlessForm::Raise(int id, ozFormEvent event)
{
    if (m_events != nullptr)
        m_events->Command(*this, id, event);
}

bool ozHeadlessForm::Type(int id, const std::string& text)
{
    Control* control = FindControl(id);
    if (control == nullptr || !control->enabled || !TakesText(control->spec.kind) ||
        (control->spec.style & ozControlReadOnly) != 0)
        return false;
    control->text = text;
    // An edit with a limit takes no more characters (UTF-8 continuation bytes do not count).
    if (control->spec.maxLength > 0) {
        int characters = 0;
        for (std::size_t at = 0; at < control->text.size(); ++at)
            if ((static_cast<unsigned char>(control->text[at]) & 0xC0) != 0x80 &&
                ++characters > control->spec.maxLength) {
                control->text.resize(at);
                break;
            }
    }
    Raise(id, ozFormEvent::TextChanged);
    return true;
}

bool ozHeadlessForm::Click(int id)
{
    Control* control = FindControl(id);
    if (control == nullptr || !control->enabled || control->spec.kind != ozControlKind::Button)
        return false;
    Raise(id, ozFormEvent::Clicked);
    return true;
}

bool ozHeadlessForm::CheckByUser(int id, bool checked)
{
    Control* control = FindControl(id);
    if (control == nullptr || !control->enabled)
        return false;
    if (control->spec.kind == ozControlKind::Radio) {
        if (!checked)
            return false;
        // The radio buttons of one group: from the group frame (or the start) to the next.
        auto at = m_controls.begin() + (control - m_controls.data());
        auto first = at;
        while (first != m_controls.begin() && (first - 1)->spec.kind != ozControlKind::Group)
            --first;
        for (auto other = first; other != m_controls.end() &&
                                 (other == first || other->spec.kind != ozControlKind::Group);
             ++other)
            if (other->spec.kind == ozControlKind::Radio)
                other->checked = false;
    } else if (control->spec.kind != ozControlKind::CheckBox) {
        return false;
    }
    control->checked = checked;
    Raise(id, ozFormEvent::Clicked);
    return true;
}

bool ozHeadlessForm::ChooseRow(int id, int row)
{
    Control* control = FindControl(id);
    if (control == nullptr || !control->enabled || !HasRows(control->spec.kind) || row < -1 ||
        row >= static_cast<int>(control->rows.size()))
        return false;
    SelectRow(id, row);
    Raise(id, ozFormEvent::SelectionChanged);
    return true;
}

bool ozHeadlessForm::FocusByUser(int id)
{
    Control* control = FindControl(id);
    if (control == nullptr || !control->enabled)
        return false;
    const bool moved = m_focus != id;
    m_focus = id;
    if (moved && (control->spec.style & ozControlReportsFocus) != 0)
        Raise(id, ozFormEvent::FocusGained);
    return true;
}

ozHeadlessTree* ozHeadlessForm::Tree(int id) const
{
    auto found = m_trees.find(id);
    return found != m_trees.end() ? found->second.get() : nullptr;
}

void ozHeadlessForm::Build(const std::vector<ozControlSpec>& controls, ozFormEvents* events)
{
    m_controls.clear();
    m_trees.clear();
    for (const ozControlSpec& spec : controls) {
        m_controls.push_back(Control{spec, {}, true, false, {}, -1, 0, 0, 1, {}});
        if (spec.kind == ozControlKind::Tree)
            m_trees[spec.id] = std::make_unique<ozHeadlessTree>();
    }
    m_events = events;
    m_focus = 0;
}

void ozHeadlessForm::Clear()
{
    m_controls.clear();
    m_trees.clear();
    m_events = nullptr;
    m_focus = 0;
}

void ozHeadlessForm::Text(int id, const std::string& text)
{
    if (Control* control = FindControl(id))
        control->text = text;
}

std::string ozHeadlessForm::Text(int id) const
{
    const Control* control = Find(id);
    return control != nullptr ? control->text : std::string();
}

void ozHeadlessForm::Enable(int id, bool enabled)
{
    if (Control* control = FindControl(id))
        control->enabled = enabled;
}

bool ozHeadlessForm::Enabled(int id) const
{
    const Control* control = Find(id);
    return control != nullptr && control->enabled;
}

void ozHeadlessForm::Check(int id, bool checked)
{
    if (Control* control = FindControl(id))
        control->checked = checked;
}

bool ozHeadlessForm::Checked(int id) const
{
    const Control* control = Find(id);
    return control != nullptr && control->checked;
}

void ozHeadlessForm::Rows(int id, const std::vector<std::string>& rows)
{
    Control* control = FindControl(id);
    if (control == nullptr)
        return;
    control->rows = rows;
    if ((control->spec.style & ozControlSorted) != 0)
        std::stable_sort(control->rows.begin(), control->rows.end(),
                         [](const std::string& a, const std::string& b) {
                             return ozAsciiLowerCased(a) < ozAsciiLowerCased(b);
                         });
    control->selectedRow = -1;
}

std::vector<std::string> ozHeadlessForm::Rows(int id) const
{
    const Control* control = Find(id);
    return control != nullptr ? control->rows : std::vector<std::string>();
}

void ozHeadlessForm::SelectRow(int id, int row)
{
    Control* control = FindControl(id);
    if (control == nullptr)
        return;
    control->selectedRow = row >= 0 && row < static_cast<int>(control->rows.size()) ? row : -1;
    if (control->spec.kind == ozControlKind::DropDown ||
        (control->spec.kind == ozControlKind::ComboBox && control->selectedRow >= 0))
        control->text = control->selectedRow >= 0 ? control->rows[control->selectedRow] : "";
}

int ozHeadlessForm::SelectedRow(int id) const
{
    const Control* control = Find(id);
    return control != nullptr ? control->selectedRow : -1;
}

void ozHeadlessForm::ImageRows(int id, const std::vector<std::pair<int, std::string>>& rows,
                               bool withImages)
{
    Control* control = FindControl(id);
    if (control == nullptr)
        return;
    control->rows.clear();
    control->images.clear();
    for (const auto& [image, label] : rows) {
        control->rows.push_back(label);
        if (withImages)
            control->images.push_back(image);
    }
}

void ozHeadlessForm::Range(int id, long long min, long long max, long long step)
{
    if (Control* control = FindControl(id)) {
        control->min = min;
        control->max = max;
        control->step = step;
    }
}
