#include "ozSearchSheet.h"

#include "control/CADMCtrl.h"
#include "control/ozHostUI.h"
#include "control/ozMessageFormat.h"
#include "ozViewPlatform.h"

namespace {

constexpr int SheetWidth = 297;
constexpr int PageHeight = 71;
// The row of page buttons above the page.
constexpr int PageRow = 18;

constexpr int OptionBoxes[ozSearchReplace::OptionCount] = {
    ozSearchSheet::SelectedRangeBox, ozSearchSheet::WholeWordBox, ozSearchSheet::CaseSensitiveBox,
    ozSearchSheet::BackwardsBox};

}  // namespace

ozSearchSheet::ozSearchSheet(ozViewPlatform& platform, const CADMCtrl& control, StateSource state)
    : m_platform(platform), m_control(control), m_source(std::move(state))
{
    BuildLayout();
}

ozSearchSheet::~ozSearchSheet() = default;

void ozSearchSheet::BuildLayout()
{
    using K = ozControlKind;
    // A text the host has not given keeps the control's own caption.
    const auto text = [this](int number) {
        std::string text = m_control.GetString(static_cast<unsigned short>(number));
        return text.empty() ? OwnCaption(number) : text;
    };
    const bool replace = m_page == ReplacePage;
    const int y = PageRow;
    m_layout.resource = replace ? ReplacePage : SearchPage;
    m_layout.caption = "Suchen";
    m_layout.width = SheetWidth;
    m_layout.height = PageRow + PageHeight + 4;
    // The edits carry their labels ("Suchen nach:", "Ersetzen durch:") in front of them.
    m_layout.controls = {
        {SearchPageButton, K::Radio, "Suchen", 5, 3, 60, 12},
        {ReplacePageButton, K::Radio, text(ReplaceCaptionText), 70, 3, 60, 12},
        {SearchEdit, K::Edit, text(SearchLabelText), 7, y + 5, 211, 13},
    };
    if (replace)
        m_layout.controls.push_back(
            {ReplaceEdit, K::Edit, text(ReplaceLabelText), 7, y + 22, 211, 13});
    const int optionsTop = y + 41;
    const int optionX[] = {7, 7, 112, 112}, optionY[] = {0, 13, 0, 13};
    for (int box = BackwardsBox; box <= WholeWordBox; ++box)
        m_layout.controls.push_back({box, K::CheckBox, text(FirstOptionText + box - BackwardsBox),
                                     optionX[box - BackwardsBox],
                                     optionsTop + optionY[box - BackwardsBox], 104, 10});
    m_layout.controls.push_back(
        {FindNextButton, K::Button, text(FindNextText), 230, y + 5, 60, 14, ozControlDefault});
    if (replace) {
        m_layout.controls.push_back(
            {ReplaceButton, K::Button, text(ReplaceCaptionText), 230, y + 22, 60, 14});
        m_layout.controls.push_back(
            {ReplaceAllButton, K::Button, text(ReplaceAllText), 230, y + 39, 60, 14});
    }
    m_layout.controls.push_back(
        {CancelButton, K::Button, text(CancelText), 230, replace ? y + 56 : y + 22, 60, 14});
}

bool ozSearchSheet::ShowPage(int page)
{
    if (m_source == nullptr || m_source() == nullptr)
        return false;
    m_page = page;
    // The texts are the host's as they are now; showing a page again clears its options and
    // starts over, as opening it does.
    BuildLayout();
    if (m_window == nullptr) {
        m_window = m_platform.OpenModeless(*this, DisplayValueGrid);
        return m_window != nullptr;
    }
    m_window->Rebuild();
    m_window->Show(true);
    return true;
}

bool ozSearchSheet::Hide()
{
    if (!Shown())
        return false;
    m_window->Show(false);
    return true;
}

bool ozSearchSheet::Shown() const
{
    return m_window != nullptr && m_window->Shown();
}

void ozSearchSheet::Init(ozForm& form)
{
    form.Check(m_page == SearchPage ? SearchPageButton : ReplacePageButton, true);
    m_state = m_source ? m_source() : nullptr;
    if (m_state == nullptr)
        return;
    for (int option = 0; option < ozSearchReplace::OptionCount; ++option) {
        m_state->SetOption(static_cast<ozSearchReplace::Flag>(option), false);
        form.Check(OptionBoxes[option], false);
    }
    m_state->Restart();
    form.Text(SearchEdit, m_state->SearchText());
    form.Text(ReplaceEdit, m_state->ReplaceText());
    // Whole word and backwards are kept but not searched by: they stay disabled.
    form.Enable(BackwardsBox, false);
    form.Enable(WholeWordBox, false);
    form.Enable(ReplaceButton, false);
    UpdateButtons(form);
    form.Focus(SearchEdit);
}

void ozSearchSheet::UpdateButtons(ozForm& form)
{
    const bool search = !m_state->SearchText().empty();
    if (m_page == SearchPage) {
        form.Enable(FindNextButton, search);
        return;
    }
    // An empty replace text cannot be used: replacing with nothing is not offered.
    const bool both = search && !m_state->ReplaceText().empty();
    form.Enable(FindNextButton, both);
    form.Enable(ReplaceAllButton, both);
    if (!both)
        form.Enable(ReplaceButton, false);
}

void ozSearchSheet::Found(ozForm& form, bool found)
{
    form.Enable(ReplaceButton, found && m_page == ReplacePage);
    if (!found)
        m_platform.UI().ShowMessage(
            HostMessageInfo,
            ozFormatMessage(m_control.GetString(NotFoundText), {m_state->SearchText()}));
}

void ozSearchSheet::Command(ozForm& form, int id, ozFormEvent event)
{
    if (event == ozFormEvent::Clicked && (id == SearchPageButton || id == ReplacePageButton)) {
        // The page is rebuilt: nothing of this form may be used after this.
        const int page = id == SearchPageButton ? SearchPage : ReplacePage;
        if (page != m_page)
            ShowPage(page);
        return;
    }
    if (event == ozFormEvent::Clicked && id == CancelButton) {
        Hide();
        return;
    }
    if (m_state == nullptr)
        return;
    if (event == ozFormEvent::TextChanged && (id == SearchEdit || id == ReplaceEdit)) {
        if (id == SearchEdit)
            m_state->SearchText(form.Text(SearchEdit));
        else
            m_state->ReplaceText(form.Text(ReplaceEdit));
        UpdateButtons(form);
        return;
    }
    if (event != ozFormEvent::Clicked)
        return;
    for (int option = 0; option < ozSearchReplace::OptionCount; ++option)
        if (id == OptionBoxes[option]) {
            m_state->SetOption(static_cast<ozSearchReplace::Flag>(option), form.Checked(id));
            // The selected range takes effect at once: the search covers the selection now.
            if (option == ozSearchReplace::SelectedRange)
                m_state->Restart();
            return;
        }
    switch (id) {
        case FindNextButton:
            Found(form, m_state->FindNext());
            break;
        case ReplaceButton: {
            const bool found = m_state->Replace();
            if (!m_state->Problem().empty())
                m_platform.UI().ShowMessage(HostMessageError, m_state->Problem());
            Found(form, found);
            break;
        }
        case ReplaceAllButton:
            m_state->ReplaceAll();
            if (!m_state->Problem().empty())
                m_platform.UI().ShowMessage(HostMessageError, m_state->Problem());
            form.Enable(ReplaceButton, false);
            break;
        default:
            break;
    }
}
