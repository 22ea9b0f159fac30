// The pages of the list parts: the drop-down list with its items, and the list box.
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/adm/ozADMActionList.h"
#include "core/adm/ozADMDropdownList.h"
#include "core/adm/ozADMListBox.h"
#include "ozEditorFields.h"
#include "ozPartPage.h"

namespace {

using K = ozControlKind;

// An item being edited: the value is kept as typed, so that a half-typed number is checked
// only on OK.
struct ItemDraft {
    std::string name;
    int kindRow = 1;  // of the kind list without "None": string
    std::string value;
    std::unique_ptr<ozADMActionList> actions;
};

class DropdownListPage : public ozPartPage {
public:
    DropdownListPage(ozADMDropdownList& part, const ozEditorContext& context)
        : ozPartPage(part, context, "Drop-down list",
                     WithKey | WithValueName | WithRequired | WithClientExt,
                     {
                         {NoSortCheck, K::CheckBox, "Do not sort", 14, 0, 110, 10},
                         {ItemList, K::List, "Items", 14, 14, 170, 74},
                         {AddItemButton, K::Button, "Add", 190, 14, 56, 14},
                         {RemoveItemButton, K::Button, "Remove", 190, 32, 56, 14},
                         {UpButton, K::Button, "Up", 190, 50, 56, 14},
                         {DownButton, K::Button, "Down", 190, 68, 56, 14},
                         {ItemNameEdit, K::Edit, "Item name", 14, 94, 232, 14},
                         {ItemKindList, K::DropDown, "Item value", 14, 112, 110, 14},
                         {ItemValueEdit, K::Edit, "Item data", 130, 112, 116, 14},
                         {DefaultItemCheck, K::CheckBox, "Default item", 14, 132, 100, 10},
                         {ItemActionListButton, K::Button, "Action list", 166, 130, 80, 14},
                     },
                     144),
          m_list(part),
          m_default(part.Default())
    {
        const CCollection<ozADMListItem>& items = part.ItemList();
        for (int pos = 0; pos < items.Count(); ++pos) {
            const ozADMListItem* item = items.At(pos);
            ItemDraft& draft = *m_items.emplace_back(std::make_unique<ItemDraft>());
            draft.name = item->Name() != nullptr ? item->Name() : "";
            draft.kindRow = ozValueKindRow(item->Value(), false);
            draft.value = ozValueKindText(item->Value());
            if (item->ActionList() != nullptr)
                draft.actions.reset(item->ActionList()->Copy());
        }
    }

private:
    void InitType(ozForm& form) override
    {
        form.Check(NoSortCheck, m_list.NoSort());
        form.Rows(ItemKindList, ozValueKindRows(false));
        ShowItems(form, -1);
    }
    bool CheckType(ozForm& form) override
    {
        for (size_t pos = 0; pos < m_items.size(); ++pos) {
            const ItemDraft& draft = *m_items[pos];
            unsigned long number = 0;
            bool badName = draft.name.empty();
            if (!badName &&
                (!KindIsNumeric(draft.kindRow, false) || ParseNumber(draft.value, number)))
                continue;
            // The item refused is shown, so that the focus lands on its field.
            form.SelectRow(ItemList, static_cast<int>(pos));
            ShowItem(form);
            std::string item = " (item " + std::to_string(pos + 1) + ")";
            return badName
                       ? Refuse(form, ItemNameEdit, HostMessagePartFieldEmpty, {"Item name" + item})
                       : Refuse(form, ItemValueEdit, HostMessagePartFieldNotNumber,
                                {"Item value" + item});
        }
        return true;
    }
    void StoreType(ozForm& form) override
    {
        m_list.NoSort(form.Checked(NoSortCheck));
        int selected = m_list.Selected();
        m_list.ItemList().RemoveAll();
        for (auto& draft : m_items) {
            ozADMValue value;
            ozStoreValueKind(value, draft->kindRow, false, draft->value);
            m_list.AddItem(draft->name.c_str(), value, draft->actions.release());
        }
        m_list.Default(m_default);
        // The selection stays on its item where it still exists.
        m_list.Selected(selected < static_cast<int>(m_items.size()) ? selected : -1);
    }
    void TypeCommand(ozForm& form, int id, ozFormEvent event) override
    {
        int row = form.SelectedRow(ItemList);
        ItemDraft* draft =
            row >= 0 && row < static_cast<int>(m_items.size()) ? m_items[row].get() : nullptr;
        switch (id) {
            case ItemList:
                ShowItem(form);
                return;
            case AddItemButton:
                m_items.emplace_back(std::make_unique<ItemDraft>())->name = "New item";
                ShowItems(form, static_cast<int>(m_items.size()) - 1);
                return;
            case RemoveItemButton:
                if (draft == nullptr)
                    return;
                m_items.erase(m_items.begin() + row);
                m_default = m_default == row ? -1 : m_default - (m_default > row ? 1 : 0);
                ShowItems(form, -1);
                return;
            case UpButton:
            case DownButton:
                Move(form, row, id == UpButton ? row - 1 : row + 1);
                return;
            default:
                break;
        }
        if (draft == nullptr)
            return;
        if (id == ItemNameEdit && event == ozFormEvent::TextChanged)
            draft->name = form.Text(ItemNameEdit);
        else if (id == ItemValueEdit && event == ozFormEvent::TextChanged)
            draft->value = form.Text(ItemValueEdit);
        else if (id == ItemKindList && event == ozFormEvent::SelectionChanged)
            draft->kindRow = form.SelectedRow(ItemKindList);
        else if (id == DefaultItemCheck)
            m_default = form.Checked(DefaultItemCheck) ? row : (m_default == row ? -1 : m_default);
        else if (id == ItemActionListButton)
            EditActionList(draft->actions);
        else
            return;
        ShowItems(form, row);
    }

    // Swaps the item at row with the one at other, the selection and the default following.
    void Move(ozForm& form, int row, int other)
    {
        if (row < 0 || other < 0 || other >= static_cast<int>(m_items.size()))
            return;
        std::swap(m_items[row], m_items[other]);
        m_default = m_default == row ? other : (m_default == other ? row : m_default);
        ShowItems(form, other);
    }
    // The rows "name = value", the default marked; the item at row selected.
    void ShowItems(ozForm& form, int row)
    {
        std::vector<std::string> rows;
        for (const auto& draft : m_items) {
            int kind = draft->kindRow;
            std::string value = KindIsNumeric(kind, false) ? draft->value
                                : KindHasText(kind, false) ? "\"" + draft->value + "\""
                                                           : "DELETE";
            rows.push_back(draft->name + " = " + value);
        }
        if (m_default >= 0 && m_default < static_cast<int>(rows.size()))
            rows[m_default] += " (default)";
        form.Rows(ItemList, rows);
        form.SelectRow(ItemList, row);
        ShowItem(form);
    }
    // The fields of the selected item, disabled and empty without one.
    void ShowItem(ozForm& form)
    {
        int row = form.SelectedRow(ItemList);
        const ItemDraft* draft =
            row >= 0 && row < static_cast<int>(m_items.size()) ? m_items[row].get() : nullptr;
        for (int id : {RemoveItemButton, ItemNameEdit, ItemKindList, ItemValueEdit,
                       DefaultItemCheck, ItemActionListButton})
            form.Enable(id, draft != nullptr);
        form.Enable(UpButton, draft != nullptr && row > 0);
        form.Enable(DownButton, draft != nullptr && row + 1 < static_cast<int>(m_items.size()));
        form.Text(ItemNameEdit, draft != nullptr ? draft->name : "");
        form.SelectRow(ItemKindList, draft != nullptr ? draft->kindRow : -1);
        form.Text(ItemValueEdit, draft != nullptr ? draft->value : "");
        form.Enable(ItemValueEdit, draft != nullptr && KindHasText(draft->kindRow, false));
        form.Check(DefaultItemCheck, draft != nullptr && row == m_default);
    }

    ozADMDropdownList& m_list;
    // Each draft stays where it is while the list is reordered: an open action list dialog
    // refers to its item's list.
    std::vector<std::unique_ptr<ItemDraft>> m_items;
    int m_default;
};

class ListBoxPage : public ozPartPage {
public:
    ListBoxPage(ozADMListBox& part, const ozEditorContext& context)
        : ozPartPage(part, context, "List box", WithKey | WithClientExt,
                     {
                         {ValuePrefixEdit, K::Edit, "Value prefix", 14, 0, 232, 14},
                         {AdditiveCheck, K::CheckBox, "Additive", 14, 18, 100, 10},
                         {ExplicitValueCheck, K::CheckBox, "Explicit value", 120, 18, 100, 10},
                     },
                     28),
          m_box(part)
    {
    }

private:
    void InitType(ozForm& form) override
    {
        form.Text(ValuePrefixEdit, m_box.ValuePrefix() != nullptr ? m_box.ValuePrefix() : "");
        form.Check(AdditiveCheck, m_box.Additive());
        form.Check(ExplicitValueCheck, m_box.ExplicitValue());
        form.Enable(ValuePrefixEdit, !m_box.ExplicitValue());
    }
    void StoreType(ozForm& form) override
    {
        // Entries named by the user have no prefix: a template cannot hold both.
        bool explicitValue = form.Checked(ExplicitValueCheck);
        std::string prefix = explicitValue ? "" : form.Text(ValuePrefixEdit);
        m_box.ValuePrefix(prefix.empty() ? nullptr : prefix.c_str());
        m_box.Additive(form.Checked(AdditiveCheck));
        m_box.ExplicitValue(explicitValue);
    }
    void TypeCommand(ozForm& form, int id, ozFormEvent) override
    {
        if (id == ExplicitValueCheck)
            form.Enable(ValuePrefixEdit, !form.Checked(ExplicitValueCheck));
    }

    ozADMListBox& m_box;
};

}  // namespace

std::unique_ptr<ozDialog> ozCreateListPartPage(ozADMCtrl& part, const ozEditorContext& context)
{
    switch (part.CtrlType()) {
        case CtrlDropdownList:
            return std::make_unique<DropdownListPage>(static_cast<ozADMDropdownList&>(part),
                                                      context);
        case CtrlListBox:
            return std::make_unique<ListBoxPage>(static_cast<ozADMListBox&>(part), context);
        default:
            return nullptr;
    }
}
