#include "ozRegistryValueList.h"

#include "control/CADMCtrl.h"
#include "control/ozPolicyEdit.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "ozPartsPanel.h"
#include "ozPolicyView.h"
#include "ozTreeWidget.h"
#include "ozViewPlatform.h"
#include "platform/ozTextConversion.h"

namespace {

// The bitmaps of the value images, in image-index order.
const std::vector<int> ValueBitmaps = {235, 236, 258, 259, 260, 261};
// The bitmaps beside the menu's entries (the key menu's "New" and "Delete").
constexpr int NewBitmap = 255;
constexpr int DeleteBitmap = 256;
// The narrowest a resize leaves the name column: the list's width less this.
constexpr int NameColumnSlack = 10;

}  // namespace

int ozRegValueImage(const ozRegValue& value)
{
    unsigned long type = value.Type();
    bool text = type == RegSz || type == RegExpandSz || type == RegMultiSz;
    if (value.Op() == OpChange)
        return text ? RegValueImageStringChange : RegValueImageNumberChange;
    if (value.Op() == OpDelete)
        return text ? RegValueImageStringDelete : RegValueImageNumberDelete;
    return text ? RegValueImageString : RegValueImageNumber;
}

std::string ozRegValueRowName(const ozRegValue& value)
{
    const char* name = value.Name();
    return name != nullptr && *name != '\0' ? name : "(Default)";
}

ozRegistryValueList::ozRegistryValueList(ozViewPlatform& platform, ozPartsPanel& panel)
    : m_platform(platform), m_panel(panel)
{
}

std::string ozRegistryValueList::HostText(unsigned short number) const
{
    return m_control != nullptr ? m_control->GetString(number) : std::string();
}

void ozRegistryValueList::Create()
{
    ozListWidget& list = m_platform.RegistryValues();
    list.Events(this);
    list.Images(ValueBitmaps);
    UpdateColumns();
    m_panel.OnValueChanged([this](ozRegValue& value) { RefreshRow(value); });
}

void ozRegistryValueList::UpdateColumns()
{
    std::vector<std::string> captions = {HostText(HostTextValueName), HostText(HostTextValueData)};
    if (captions == m_captions)
        return;
    ozListWidget& list = m_platform.RegistryValues();
    m_captions = captions;
    list.Columns(captions);
    m_sized = false;
    Resized(list.Width());
}

void ozRegistryValueList::ShowKey(ozRegKey* key)
{
    ozListWidget& list = m_platform.RegistryValues();
    m_filling = true;
    list.DeleteAll();
    m_key = key != nullptr && key->Type() == KeySub ? static_cast<ozSubKey*>(key) : nullptr;
    // Without a key the control may be going: its texts are not read then.
    if (m_key != nullptr) {
        UpdateColumns();
        const CCollection<ozRegValue>& values = m_key->Values();
        for (int at = 0; at < values.Count(); ++at)
            if (ozRegValue* value = values.At(at))
                AppendRow(*value);
        if (list.Count() > 0)
            list.Select(0);
    }
    m_filling = false;
}

void ozRegistryValueList::AppendRow(ozRegValue& value)
{
    m_platform.RegistryValues().Append({ozRegValueRowName(value), value.FormattedValue(false)},
                                       ozRegValueImage(value), &value);
}

ozRegValue* ozRegistryValueList::Value(int row) const
{
    return static_cast<ozRegValue*>(m_platform.RegistryValues().Data(row));
}

void ozRegistryValueList::RefreshRow(const ozRegValue& value)
{
    ozListWidget& list = m_platform.RegistryValues();
    m_filling = true;
    for (int row = 0; row < list.Count(); ++row)
        if (Value(row) == &value)
            list.SetRow(row, {ozRegValueRowName(value), value.FormattedValue(false)},
                        ozRegValueImage(value));
    m_filling = false;
}

void ozRegistryValueList::RowSelected(int row)
{
    if (m_filling || m_platform.RegistryValues().Count() == 0)
        return;
    ozRegValue* value = Value(row);
    // A click on the row whose editor shows already keeps what the editor holds.
    if (value != nullptr && value != m_panel.Value())
        m_panel.ShowValue(value);
}

void ozRegistryValueList::RightClicked(int row)
{
    ozMenu menu;
    // Without a host text an entry keeps its own caption (an empty one would be a separator).
    auto entry = [&](unsigned short text, const std::string& fallback, unsigned int command,
                     int bitmap, bool enabled) {
        ozMenuEntry made;
        made.caption = HostText(text);
        if (made.caption.empty())
            made.caption = fallback;
        made.command = command;
        made.bitmap = bitmap;
        made.state = enabled ? ozMenuState::Enabled : ozMenuState::Greyed;
        menu.entries.push_back(made);
    };
    entry(HostTextNewValueMenu, "&Neu", ValueCommandNew, NewBitmap, m_key != nullptr);
    entry(HostTextDeleteValueMenu, ozNarrowFromUtf8("&L\xC3\xB6schen"), ValueCommandDelete,
          DeleteBitmap, Value(row) != nullptr);
    m_platform.PopupMenu(menu, [this, row](unsigned int command) {
        if (command == ValueCommandNew)
            NewValue();
        else if (command == ValueCommandDelete)
            DeleteValue(row);
    });
}

void ozRegistryValueList::KeyPressed(int virtualKey)
{
    if (virtualKey == ozKeyInsert)
        NewValue();
    else if (virtualKey == ozKeyDelete)
        DeleteValue(m_platform.RegistryValues().Selection());
}

void ozRegistryValueList::Resized(int width)
{
    ozListWidget& list = m_platform.RegistryValues();
    if (width <= 0)
        return;
    if (!m_sized) {
        list.ColumnWidth(0, width / 4);
        list.ColumnWidth(1, width / 4);
        m_sized = true;
    } else if (list.ColumnWidth(0) > width - NameColumnSlack) {
        list.ColumnWidth(0, width - NameColumnSlack);
    }
}

void ozRegistryValueList::NewValue()
{
    if (m_key == nullptr)
        return;
    std::string base = HostText(HostTextNewElementName);
    std::string name;
    for (int number = 1;; ++number) {
        name = base + " " + std::to_string(number);
        if (m_key->HasValue(name.c_str()) == nullptr)
            break;
    }
    ozRegValue* value = m_key->FindValue(name.c_str());
    if (value == nullptr)
        return;
    // A new value starts as an empty string, the kind most values are.
    value->SetString("");
    AppendRow(*value);
    ozListWidget& list = m_platform.RegistryValues();
    list.Select(list.Count() - 1);
    if (m_control != nullptr)
        ozMarkDocumentEdited(*m_control);
}

void ozRegistryValueList::DeleteValue(int row)
{
    ozRegValue* value = Value(row);
    if (value == nullptr || m_key == nullptr)
        return;
    if (!m_platform.UI().ShowMessage(HostMessageQuestion, HostText(HostTextDeleteValueAsk)))
        return;
    m_panel.Clear();
    m_platform.RegistryValues().Delete(row);
    m_key->RemoveValue(value);
    if (m_control != nullptr)
        ozMarkDocumentEdited(*m_control);
}
