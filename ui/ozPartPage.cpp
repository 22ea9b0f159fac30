#include "ozPartPage.h"

#include <cstdlib>
#include <utility>

#include "control/ozHostUI.h"
#include "control/ozMessageFormat.h"
#include "core/adm/ozADMActionList.h"
#include "core/adm/ozADMCtrl.h"
#include "core/adm/ozADMPolicy.h"
#include "core/adm/ozADMValue.h"
#include "core/registry/ozRegTree.h"
#include "core/registry/ozSubKey.h"
#include "ozActionListDialog.h"
#include "ozEditorFields.h"
#include "ozViewPlatform.h"

namespace {

constexpr int PageWidth = 260;
constexpr int RowHeight = 18;
constexpr int GroupLeft = 7, GroupWidth = PageWidth - 14;
constexpr int FieldLeft = 14, FieldWidth = PageWidth - 28;

std::string TextOf(const char* text)
{
    return text != nullptr ? text : "";
}

}  // namespace

ozPartPage::ozPartPage(ozADMCtrl& part, const ozEditorContext& context, const char* typeName,
                       unsigned int fields, std::vector<ozControlSpec> typeControls, int typeHeight)
    : m_part(part), m_context(context), m_fields(fields)
{
    using K = ozControlKind;
    m_layout.resource = DialogPartPageBase + static_cast<int>(part.CtrlType());
    m_layout.caption = std::string(typeName) + " properties";
    std::vector<ozControlSpec>& controls = m_layout.controls;
    int y = 19;
    auto row = [&](int id, K kind, const char* caption) {
        controls.emplace_back(id, kind, caption, FieldLeft, y, FieldWidth,
                              kind == K::Edit ? 14 : 10);
        y += RowHeight;
    };
    controls.emplace_back(GeneralGroup, K::Group, "General", GroupLeft, 7, GroupWidth, 0);
    row(NameEdit, K::Edit, "Name");
    if (fields & WithKey)
        row(KeyEdit, K::Edit, "Key");
    if (fields & WithValueName)
        row(ValueNameEdit, K::Edit, "Valuename");
    if (fields & WithRequired)
        row(RequiredCheck, K::CheckBox, "Required");
    if (fields & WithClientExt)
        row(ClientExtEdit, K::Edit, "Client extension");
    controls.front().height = y - 7;
    if (!typeControls.empty()) {
        int top = y + 4;
        controls.emplace_back(TypeGroup, K::Group, "Settings", GroupLeft, top, GroupWidth,
                              typeHeight + 16);
        for (ozControlSpec& spec : typeControls) {
            spec.y += top + 12;
            controls.push_back(std::move(spec));
        }
        y = top + typeHeight + 16;
    }
    y += 6;
    controls.emplace_back(ozDialogOK, K::Button, "OK", PageWidth - 114, y, 50, 14,
                          ozControlDefault);
    controls.emplace_back(ozDialogCancel, K::Button, "Cancel", PageWidth - 57, y, 50, 14);
    m_layout.width = PageWidth;
    m_layout.height = y + 21;
}

void ozPartPage::Init(ozForm& form)
{
    form.Text(NameEdit, TextOf(m_part.Name()));
    ozADMPolicy* policy = m_part.Policy();
    ozSubKey* key = m_part.Key();
    form.Text(KeyEdit, key != nullptr && (policy == nullptr || key != policy->RegKey())
                           ? key->KeyPath()
                           : "");
    form.Text(ValueNameEdit, TextOf(m_part.ValueName()));
    form.Check(RequiredCheck, m_part.Required());
    form.Text(ClientExtEdit, TextOf(m_part.ClientExt()));
    InitType(form);
}

bool ozPartPage::Accept(ozForm& form)
{
    if (form.Text(NameEdit).empty())
        return Refuse(form, NameEdit, HostMessagePartFieldEmpty, {"Name"});
    if ((m_fields & WithKey) && !CheckKey(form))
        return false;
    if (!CheckType(form))
        return false;

    m_part.Name(form.Text(NameEdit).c_str());
    if (m_fields & WithKey) {
        std::string path = form.Text(KeyEdit);
        ozADMPolicy* policy = m_part.Policy();
        ozSubKey* policyKey = policy != nullptr ? policy->RegKey() : nullptr;
        if (path.empty()) {
            if (policyKey != nullptr)
                m_part.Key(policyKey);
        } else {
            ozSubKey* home = policyKey != nullptr ? policyKey : m_part.Key();
            m_part.Key(*dynamic_cast<ozRegTree*>(home->GetTree()), ozRootHandle(home->Root()),
                       path.c_str());
        }
    }
    if (m_fields & WithValueName)
        m_part.ValueName(form.Text(ValueNameEdit).c_str());
    if (m_fields & WithRequired)
        m_part.Required(form.Checked(RequiredCheck));
    if (m_fields & WithClientExt) {
        std::string clientExt = form.Text(ClientExtEdit);
        m_part.ClientExt(clientExt.empty() ? nullptr : clientExt.c_str());
    }
    StoreType(form);
    if (m_context.edited)
        m_context.edited();
    return true;
}

void ozPartPage::Command(ozForm& form, int id, ozFormEvent event)
{
    TypeCommand(form, id, event);
}

bool ozPartPage::CheckKey(ozForm& form) const
{
    std::string path = form.Text(KeyEdit);
    if (path.empty())
        return true;
    // The key is found (or created) where the policy's is: in its tree, below its root.
    ozADMPolicy* policy = m_part.Policy();
    ozSubKey* home =
        policy != nullptr && policy->RegKey() != nullptr ? policy->RegKey() : m_part.Key();
    auto* tree = home != nullptr ? dynamic_cast<ozRegTree*>(home->GetTree()) : nullptr;
    if (tree == nullptr || !ozWellFormedKeyPath(path) ||
        tree->FindKey(ozRootHandle(home->Root()), path.c_str()) == nullptr)
        return Refuse(form, KeyEdit, HostMessagePartKeyNotBound, {"Key", path});
    return true;
}

bool ozPartPage::Refuse(ozForm& form, int id, unsigned short message,
                        std::initializer_list<std::string> args) const
{
    std::string text = ozEditorMessageText(m_context, message);
    m_context.platform.UI().ShowMessage(HostMessageError, ozFormatMessage(text, args));
    form.Focus(id);
    return false;
}

bool ozPartPage::ReadNumber(ozForm& form, int id, const char* field, unsigned long& number,
                            const unsigned long* empty) const
{
    std::string text = form.Text(id);
    if (text.empty() && empty != nullptr) {
        number = *empty;
        return true;
    }
    if (!ParseNumber(text, number))
        return Refuse(form, id, HostMessagePartFieldNotNumber, {field});
    return true;
}

bool ozPartPage::ParseNumber(const std::string& text, unsigned long& number)
{
    return ozParseWholeNumber(text, number);
}

ozSubKey* ozPartPage::DefaultKey() const
{
    if (m_part.Key() != nullptr)
        return m_part.Key();
    return m_part.Policy() != nullptr ? m_part.Policy()->RegKey() : nullptr;
}

void ozPartPage::EditActionList(std::unique_ptr<ozADMActionList>& list)
{
    m_context.platform.RunDialog(
        std::make_unique<ozActionListDialog>(DefaultKey(), list.get(), m_context.browse),
        [&list](ozDialog& dialog, bool accepted) {
            if (!accepted)
                return;
            list = static_cast<ozActionListDialog&>(dialog).TakeList();
            if (list != nullptr && list->Count() == 0)
                list.reset();
        });
}

bool ozPartPage::KindHasText(int row, bool withNone)
{
    int kind = row - (withNone ? 1 : 0);
    return kind == 0 || kind == 1;
}

bool ozPartPage::KindIsNumeric(int row, bool withNone)
{
    return row - (withNone ? 1 : 0) == 0;
}

std::unique_ptr<ozDialog> ozCreatePartPage(ozADMCtrl& part, const ozEditorContext& context)
{
    std::unique_ptr<ozDialog> page = ozCreateValuePartPage(part, context);
    return page != nullptr ? std::move(page) : ozCreateListPartPage(part, context);
}
