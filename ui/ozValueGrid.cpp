#include "ozValueGrid.h"

#include <algorithm>

#include "control/CADMCtrl.h"
#include "control/ozApplication.h"
#include "control/ozMessageFormat.h"
#include "control/ozPolicyEdit.h"
#include "core/adm/ozADMTree.h"
#include "core/adm/tTreeCodeHandle.h"
#include "core/registry/ozRegTree.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozRootKey.h"
#include "core/registry/ozSubKey.h"
#include "ozPartsPanel.h"
#include "ozPolicyView.h"
#include "ozRegistryView.h"
#include "ozTreeWidget.h"
#include "ozValueData.h"
#include "ozViewPlatform.h"
#include "platform/ozAsciiCase.h"

namespace {

// Numbers show in hexadecimal, the editor's first choice; decimal is taken as well.
constexpr bool HexNumbers = true;

std::string KeyText(const ozRegKey& key)
{
    if (key.Type() == KeyRoot)
        return ozRootKeyName(ozRootNumber(static_cast<const ozRootKey&>(key).HKey()));
    const char* name = static_cast<const ozSubKey&>(key).Name();
    return name != nullptr ? name : "";
}

}  // namespace

const std::vector<std::string>& ozValueGrid::Captions()
{
    static const std::vector<std::string> captions = {"Counter", "Subkey", "Valuename", "Type",
                                                      "Size",    "Data",   "Size Old",  "Data Old"};
    return captions;
}

ozValueGrid::ozValueGrid(ozViewPlatform& platform) : m_platform(platform) {}

ozGridWidget& ozValueGrid::Widget() const
{
    return m_platform.RegistryGrid();
}

void ozValueGrid::Create()
{
    Widget().Events(this);
    // Wide enough for a key path and a datum; the numbers narrow.
    Widget().Columns(Captions(), {55, 300, 130, 110, 45, 220, 60, 150});
}

void ozValueGrid::Fill(tTreeCodeHandle* code, bool showUser, bool showMachine)
{
    m_rows.clear();
    if (code != nullptr && code->tree != nullptr) {
        if (showUser)
            AppendKeys(code->tree->UsrTree());
        if (showMachine)
            AppendKeys(code->tree->MacTree());
    }
    Widget().RowCount(RowCount());
    Widget().Current(m_rows.empty() ? -1 : 0, m_rows.empty() ? -1 : GridColumnValueName);
}

void ozValueGrid::AppendKeys(const ozTreeNode& above)
{
    // The registry view's order of siblings: by their texts without regard to case.
    struct Sorted {
        std::string order;
        std::string text;
        ozRegKey* key;
    };
    std::vector<Sorted> keys;
    for (ozTreeNode* node = above.Down(); node != nullptr; node = node->Next()) {
        auto* key = static_cast<ozRegKey*>(node);
        std::string text = KeyText(*key);
        keys.push_back({ozAsciiLowerCased(text), std::move(text), key});
    }
    std::stable_sort(keys.begin(), keys.end(), [](const Sorted& a, const Sorted& b) {
        return a.order != b.order ? a.order < b.order : a.text < b.text;
    });
    for (const Sorted& sorted : keys) {
        if (sorted.key->Type() == KeySub) {
            const CCollection<ozRegValue>& values = static_cast<ozSubKey*>(sorted.key)->Values();
            for (int at = 0; at < values.Count(); ++at)
                if (ozRegValue* value = values.At(at))
                    m_rows.push_back(value);
        }
        AppendKeys(*sorted.key);
    }
}

ozRegValue* ozValueGrid::RowValue(int row) const
{
    return row >= 0 && row < RowCount() ? m_rows[static_cast<std::size_t>(row)] : nullptr;
}

std::vector<std::string> ozValueGrid::RowCells(int row)
{
    std::vector<std::string> cells(GridColumnCount);
    ozRegValue* value = RowValue(row);
    if (value == nullptr)
        return cells;
    cells[GridColumnCounter] = std::to_string(row + 1);
    if (ozSubKey* key = value->SubKey())
        cells[GridColumnSubkey] = ozRootKeyName(key->Root()) + "\\" + key->KeyPath();
    cells[GridColumnValueName] = value->Name() != nullptr ? value->Name() : "";
    cells[GridColumnType] = ozValueTypeName(value->Type());
    cells[GridColumnSize] = std::to_string(value->Size());
    cells[GridColumnData] = ozValueDataText(*value, false, HexNumbers);
    if (ozValueTakesSecondDatum(*value)) {
        cells[GridColumnSizeOld] = std::to_string(value->Size2());
        cells[GridColumnDataOld] = ozValueDataText(*value, true, HexNumbers);
    }
    return cells;
}

bool ozValueGrid::CellText(int row, int column, std::string& text)
{
    if (RowValue(row) == nullptr || column < 0 || column >= GridColumnCount)
        return false;
    text = RowCells(row)[static_cast<std::size_t>(column)];
    return true;
}

bool ozValueGrid::Editable(int row, int column)
{
    ozRegValue* value = RowValue(row);
    if (value == nullptr)
        return false;
    return column == GridColumnValueName || column == GridColumnType || column == GridColumnData ||
           (column == GridColumnDataOld && ozValueTakesSecondDatum(*value));
}

bool ozValueGrid::SetCellText(int row, int column, const std::string& text, std::string& problem)
{
    if (!Editable(row, column)) {
        problem = "the cell cannot be edited";
        return false;
    }
    ozRegValue& value = *RowValue(row);
    if (column == GridColumnValueName) {
        ozSubKey* key = value.SubKey();
        ozRegValue* named = key != nullptr ? key->HasValue(text.c_str()) : nullptr;
        if (named != nullptr && named != &value) {
            problem = "the key has a value named \"" + text + "\" already";
            return false;
        }
        value.Name(text.c_str());
    } else if (column == GridColumnType) {
        unsigned long type = 0;
        if (!ozValueTypeFromName(text, type)) {
            problem = "\"" + text + "\" is no registry type (REG_SZ, REG_DWORD, ... or TYPE n)";
            return false;
        }
        // The data keep their text, taken in the new type's form; tried on a copy first.
        const std::string data = ozValueDataText(value, false, HexNumbers);
        const bool second = ozValueTakesSecondDatum(value);
        const std::string oldData = second ? ozValueDataText(value, true, HexNumbers) : "";
        for (ozRegValue* target : {static_cast<ozRegValue*>(nullptr), &value}) {
            ozRegValue trial(value);
            ozRegValue& into = target != nullptr ? *target : trial;
            if (!ozSetValueData(into, type, data, false, problem) ||
                (second && !ozSetValueData(into, type, oldData, true, problem)))
                return false;
        }
    } else if (!ozSetValueData(value, value.Type(), text, column == GridColumnDataOld, problem)) {
        return false;
    }
    MarkEdited();
    Widget().RowsChanged(row, row);
    return true;
}

bool ozValueGrid::CellEdited(int row, int column, const std::string& text)
{
    std::string shown;
    if (CellText(row, column, shown) && shown == text)
        return true;
    std::string problem;
    if (SetCellText(row, column, text, problem))
        return true;
    std::string message = m_control != nullptr
                              ? m_control->GetString(HostMessagePartValueRefused)
                              : ozApplication::Instance().MessageText(HostMessagePartValueRefused);
    const std::string& caption =
        column >= 0 && column < GridColumnCount ? Captions()[static_cast<std::size_t>(column)] : "";
    m_platform.UI().ShowMessage(HostMessageError, ozFormatMessage(message, {caption, problem}));
    Widget().RowsChanged(row, row);
    return false;
}

void ozValueGrid::KeyPressed(int virtualKey)
{
    if (virtualKey == ozKeyInsert)
        Insert();
    else if (virtualKey == ozKeyDelete)
        Delete();
}

bool ozValueGrid::Insert()
{
    ozRegValue* current = RowValue(CurrentRow());
    ozSubKey* key = current != nullptr ? current->SubKey() : nullptr;
    if (key == nullptr)
        return false;
    std::string base = m_control != nullptr ? m_control->GetString(HostTextNewElementName) : "";
    std::string name;
    for (int number = 1;; ++number) {
        name = base + " " + std::to_string(number);
        if (key->HasValue(name.c_str()) == nullptr)
            break;
    }
    ozRegValue* value = key->FindValue(name.c_str());
    if (value == nullptr)
        return false;
    // A new value starts as an empty string, as in the value list.
    value->SetString("");
    // The key's rows stand together: the new one goes after the last of them.
    int row = CurrentRow();
    while (row < RowCount() && m_rows[static_cast<std::size_t>(row)]->SubKey() == key)
        ++row;
    m_rows.insert(m_rows.begin() + row, value);
    Widget().RowCount(RowCount());
    Widget().Current(row, GridColumnValueName);
    MarkEdited();
    return true;
}

bool ozValueGrid::Delete()
{
    int row = CurrentRow();
    ozRegValue* value = RowValue(row);
    ozSubKey* key = value != nullptr ? value->SubKey() : nullptr;
    if (key == nullptr)
        return false;
    int column = CurrentColumn();
    m_rows.erase(m_rows.begin() + row);
    key->RemoveValue(value);
    Widget().RowCount(RowCount());
    row = std::min(row, RowCount() - 1);
    Widget().Current(row, row < 0 ? -1 : column);
    MarkEdited();
    return true;
}

void ozValueGrid::StorePendingEdit()
{
    Widget().CommitEdit();
}

void ozValueGrid::EditCell(int row, int column, std::size_t begin, std::size_t end)
{
    Widget().EditCell(row, column, begin, end);
}

int ozValueGrid::CurrentRow() const
{
    return Widget().CurrentRow();
}

int ozValueGrid::CurrentColumn() const
{
    return Widget().CurrentColumn();
}

ozGridRange ozValueGrid::Selection() const
{
    return Widget().Selection();
}

void ozValueGrid::CellsChanged()
{
    if (RowCount() > 0)
        Widget().RowsChanged(0, RowCount() - 1);
    MarkEdited();
}

void ozValueGrid::MarkEdited()
{
    if (m_control != nullptr)
        ozMarkDocumentEdited(*m_control);
}
