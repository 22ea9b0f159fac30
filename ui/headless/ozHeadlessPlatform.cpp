#include "ozHeadlessPlatform.h"

#include <algorithm>

// A dialog with its form; the OK and Cancel buttons end it, every other command goes to the
// dialog's logic.
struct ozHeadlessPlatform::OpenDialog final : ozFormEvents {
    OpenDialog(ozHeadlessPlatform& platform, std::unique_ptr<ozDialog> logic,
               std::function<void(ozDialog&, bool)> ended)
        : platform(platform), owned(std::move(logic)), dialog(owned.get()), ended(std::move(ended))
    {
    }
    // A modeless dialog's entry: the logic is its owner's.
    OpenDialog(ozHeadlessPlatform& platform, ozDialog& logic, Modeless& modeless)
        : platform(platform), dialog(&logic), modeless(&modeless)
    {
    }

    void Command(ozForm& form, int id, ozFormEvent event) override
    {
        if (event == ozFormEvent::Clicked && (id == ozDialogOK || id == ozDialogCancel))
            platform.EndDialog(id == ozDialogOK);
        else
            dialog->Command(form, id, event);
    }

    ozHeadlessPlatform& platform;
    std::unique_ptr<ozDialog> owned;
    ozDialog* dialog = nullptr;
    Modeless* modeless = nullptr;
    std::function<void(ozDialog&, bool)> ended;
    ozHeadlessForm form;
};

namespace {

// The file-open question as a dialog: the path typed into "File name", the default extension
// added when the name has none.
class OpenFileDialog final : public ozDialog {
public:
    enum : int { FileName = 10 };

    explicit OpenFileDialog(std::string defaultExtension)
        : m_defaultExtension(std::move(defaultExtension))
    {
        m_layout.caption = "Open";
        m_layout.controls = {
            {FileName, ozControlKind::Edit, "File name"},
            {ozDialogOK, ozControlKind::Button, "OK", 0, 0, 0, 0, ozControlDefault},
            {ozDialogCancel, ozControlKind::Button, "Cancel"}};
    }
    const ozDialogTemplate& Layout() const override { return m_layout; }
    void Init(ozForm&) override {}
    bool Accept(ozForm& form) override
    {
        m_path = form.Text(FileName);
        std::string::size_type name = m_path.find_last_of("/\\");
        name = name == std::string::npos ? 0 : name + 1;
        if (!m_defaultExtension.empty() && !m_path.empty() &&
            m_path.find('.', name) == std::string::npos)
            m_path += "." + m_defaultExtension;
        return !m_path.empty();
    }
    const std::string& Path() const { return m_path; }

private:
    std::string m_defaultExtension;
    std::string m_path;
    ozDialogTemplate m_layout;
};

}  // namespace

void ozHeadlessPlatform::AskOpenFile(const ozOpenFileQuestion& question,
                                     std::function<void(const std::string& path)> chosen)
{
    RunDialog(std::make_unique<OpenFileDialog>(question.defaultExtension),
              [chosen = std::move(chosen)](ozDialog& dialog, bool accepted) {
                  if (accepted && chosen)
                      chosen(static_cast<OpenFileDialog&>(dialog).Path());
              });
}

// A modeless dialog joins the open dialogs while shown (so that a script reaches it as the
// dialog on top) and waits aside while hidden.
class ozHeadlessPlatform::Modeless final : public ozModelessDialog {
public:
    Modeless(ozHeadlessPlatform& platform, ozDialog& dialog)
        : m_platform(platform), m_parked(std::make_unique<OpenDialog>(platform, dialog, *this))
    {
        m_open = m_parked.get();
        Rebuild();
    }
    ~Modeless() override { Show(false); }

    void Show(bool visible) override
    {
        auto& dialogs = m_platform.m_dialogs;
        if (visible && m_parked) {
            dialogs.push_back(std::move(m_parked));
        } else if (!visible && !m_parked) {
            auto at = std::find_if(dialogs.begin(), dialogs.end(),
                                   [this](const auto& open) { return open.get() == m_open; });
            if (at == dialogs.end())
                return;
            m_parked = std::move(*at);
            dialogs.erase(at);
        }
    }
    bool Shown() const override { return !m_parked; }
    void Rebuild() override
    {
        m_open->form.Build(m_open->dialog->Layout().controls, m_open);
        m_open->dialog->Init(m_open->form);
    }
    ozForm& Form() override { return m_open->form; }

private:
    ozHeadlessPlatform& m_platform;
    std::unique_ptr<OpenDialog> m_parked;
    OpenDialog* m_open = nullptr;
};

// Out of line, where an open dialog's type is complete.
ozHeadlessPlatform::ozHeadlessPlatform(ozHostUI& ui) : m_ui(ui) {}

ozHeadlessPlatform::~ozHeadlessPlatform() = default;

bool ozHeadlessPlatform::ViewShown(int displayMode) const
{
    return displayMode >= 0 && displayMode < 3 && m_shown[displayMode];
}

void ozHeadlessPlatform::ShowView(int displayMode, bool visible)
{
    if (displayMode >= 0 && displayMode < 3)
        m_shown[displayMode] = visible;
}

void ozHeadlessPlatform::PopupMenu(const ozMenu& menu,
                                   std::function<void(unsigned int command)> chosen)
{
    m_menu = menu;
    m_chosen = std::move(chosen);
    m_menuOpen = true;
}

bool ozHeadlessPlatform::Choose(const std::string& captionPath)
{
    if (!m_menuOpen)
        return false;
    const ozMenuEntry* entry = ozFindMenuEntry(m_menu, captionPath);
    if (entry == nullptr || entry->state != ozMenuState::Enabled || !entry->submenu.empty())
        return false;
    m_menuOpen = false;
    // The command may open another menu: take the callback out first.
    std::function<void(unsigned int)> chosen = std::move(m_chosen);
    if (chosen)
        chosen(entry->command);
    return true;
}

void ozHeadlessPlatform::RunDialog(std::unique_ptr<ozDialog> dialog,
                                   std::function<void(ozDialog& dialog, bool accepted)> ended)
{
    auto open = std::make_unique<OpenDialog>(*this, std::move(dialog), std::move(ended));
    OpenDialog& opened = *open;
    m_dialogs.push_back(std::move(open));
    opened.form.Build(opened.dialog->Layout().controls, &opened);
    opened.dialog->Init(opened.form);
}

ozDialog* ozHeadlessPlatform::TopDialog() const
{
    return m_dialogs.empty() ? nullptr : m_dialogs.back()->dialog;
}

ozHeadlessForm* ozHeadlessPlatform::TopForm() const
{
    return m_dialogs.empty() ? nullptr : &m_dialogs.back()->form;
}

bool ozHeadlessPlatform::EndDialog(bool accept)
{
    if (m_dialogs.empty())
        return false;
    OpenDialog& top = *m_dialogs.back();
    if (accept && !top.dialog->Accept(top.form))
        return false;
    if (top.modeless != nullptr) {
        top.modeless->Show(false);
        return true;
    }
    std::unique_ptr<OpenDialog> ending = std::move(m_dialogs.back());
    m_dialogs.pop_back();
    if (ending->ended)
        ending->ended(*ending->dialog, accept);
    return true;
}

bool ozHeadlessPlatform::ClickDialogButton(int id)
{
    ozHeadlessForm* form = TopForm();
    return form != nullptr && form->Click(id);
}

std::unique_ptr<ozModelessDialog> ozHeadlessPlatform::OpenModeless(ozDialog& dialog, int)
{
    auto modeless = std::make_unique<Modeless>(*this, dialog);
    modeless->Show(true);
    return modeless;
}
