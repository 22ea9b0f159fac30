#include "ozHelpDialog.h"

#include "core/adm/ozADMPolicy.h"

namespace {

constexpr int HelpDialogResource = 102;

}  // namespace

ozHelpDialog::ozHelpDialog(const ozADMPolicy& policy) : m_text(DisplayText(policy.Explain()))
{
    const char* name = policy.Name();
    m_layout.resource = HelpDialogResource;
    m_layout.caption = name != nullptr && *name != '\0' ? name : "Help";
    m_layout.width = 320;
    m_layout.height = 200;
    ozControlSpec text;
    text.id = ExplainText;
    text.kind = ozControlKind::TextBox;
    text.x = 7;
    text.y = 7;
    text.width = 306;
    text.height = 163;
    text.style = ozControlReadOnly;
    ozControlSpec ok;
    ok.id = ozDialogOK;
    ok.kind = ozControlKind::Button;
    ok.caption = "OK";
    ok.x = 263;
    ok.y = 179;
    ok.width = 50;
    ok.height = 14;
    ok.style = ozControlDefault;
    m_layout.controls = {text, ok};
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

void ozHelpDialog::Init(ozForm& form)
{
    form.Text(ExplainText, m_text);
}
