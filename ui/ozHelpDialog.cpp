#include "ozHelpDialog.h"

#include "core/adm/ozADMPolicy.h"

namespace {

constexpr int HelpDialogResource = 102;

}  // namespace

ozHelpDialog::ozHelpDialog(const ozADMPolicy& policy) : m_text(ShownText(policy))
{
    const char* name = policy.Name();
    m_layout.resource = HelpDialogResource;
    m_layout.caption = name != nullptr && *name != '\0' ? name : "Help";
    m_layout.width = 320;
    m_layout.height = 200;
    m_layout.controls = {
        ozControlSpec(ExplainText, ozControlKind::TextBox, "", 7, 7, 306, 163, ozControlReadOnly),
        ozControlSpec(ozDialogOK, ozControlKind::Button, "OK", 263, 179, 50, 14, ozControlDefault),
    };
}

std::string ozHelpDialog::DisplayText(const char* explain)
{
    std::string text;
    for (const char* c = explain; c != nullptr && *c != '\0'; ++c) {
        if (c[0] == '\\' && c[1] == 'n') {
            text += "\r\n";
            ++c;
        } else {
            text += *c;
        }
    }
    return text;
}

std::string ozHelpDialog::ShownText(const ozADMPolicy& policy)
{
    std::string text = DisplayText(policy.Explain());
    if (policy.SupportedOn() != nullptr && *policy.SupportedOn() != '\0')
        text += (text.empty() ? "" : "\r\n\r\n") + DisplayText(policy.SupportedOn());
    return text;
}

void ozHelpDialog::Init(ozForm& form)
{
    form.Text(ExplainText, m_text);
}
