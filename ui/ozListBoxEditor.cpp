// The list box's editor: a label with the part's name and a "Show..." button that opens the
// list box dialog. The entries live in the editor (in the list box text form) until the panel
// commits them.
#include <memory>

#include "control/ozPolicyEdit.h"
#include "core/adm/ozADMListBox.h"
#include "ozListBoxDialog.h"
#include "ozPartEditor.h"
#include "ozViewPlatform.h"

namespace {

constexpr int LabelHeight = 10;
constexpr int ButtonHeight = 14;

class ozListBoxEditor : public ozPartEditor {
public:
    ozListBoxEditor(ozADMListBox& part, int firstId)
        : ozPartEditor(part, firstId, 2),
          m_list(part),
          m_entries(std::make_shared<std::string>(ozPartValueText(part)))
    {
    }
    void Describe(std::vector<ozControlSpec>& controls) const override
    {
        ozControlSpec label;
        label.id = Id(0);
        label.kind = ozControlKind::Label;
        label.caption = Label();
        label.height = LabelHeight;
        controls.push_back(label);
        ozControlSpec button;
        button.id = Id(1);
        button.kind = ozControlKind::Button;
        button.caption = "Show...";
        button.height = ButtonHeight;
        controls.push_back(button);
    }
    void Load(ozForm&) override { *m_entries = ozPartValueText(m_list); }
    std::string Text(const ozForm&) const override { return *m_entries; }
    bool Type(ozForm&, const std::string& text) override
    {
        *m_entries = text;
        return true;
    }
    // The dialog may outlive the editor where dialogs stay open (headless), so its ending
    // reaches the entries only while the editor still holds them.
    void Command(ozForm&, int id, ozFormEvent event, ozViewPlatform& platform) override
    {
        if (id != Id(1) || event != ozFormEvent::Clicked)
            return;
        std::weak_ptr<std::string> entries = m_entries;
        platform.RunDialog(
            std::make_unique<ozListBoxDialog>(Label(), m_list.ExplicitValue(), *m_entries),
            [entries](ozDialog& dialog, bool accepted) {
                if (std::shared_ptr<std::string> held = entries.lock(); held && accepted)
                    *held = static_cast<ozListBoxDialog&>(dialog).Text();
            });
    }

private:
    ozADMListBox& m_list;
    std::shared_ptr<std::string> m_entries;
};

}  // namespace

std::unique_ptr<ozPartEditor> ozCreateListBoxEditor(ozADMListBox& part, int firstId)
{
    return std::make_unique<ozListBoxEditor>(part, firstId);
}
