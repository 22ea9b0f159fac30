#include "ozValueEditor.h"

#include <algorithm>
#include <iterator>

#include "control/CADMCtrl.h"
#include "control/ozApplication.h"
#include "control/ozMessageFormat.h"
#include "control/ozPolicyEdit.h"
#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "ozPartsPanel.h"
#include "ozValueData.h"
#include "ozViewPlatform.h"
#include "platform/ozAsciiCase.h"

namespace {

// Host texts naming the item types r, m, f, a and the operations I, D, L, A, R, C.
constexpr unsigned short HostTextFirstItemType = 36;
constexpr unsigned short HostTextFirstOperation = 40;
constexpr int ItemTypes[] = {RitR, RitM, RitF, RitA};
constexpr int Operations[] = {OpInsert, OpDelete, OpCodeL, OpAppend, OpCodeR, OpChange};

const char* const FormatRows[] = {"Hexadecimal", "Decimal"};

}  // namespace

struct ozValueEditor::State {
    std::string name;
    unsigned long type = 0;
    int itemType = RitR;
    int op = OpInsert;
    bool hex = true;
    std::string data;
    std::string oldData;
};

ozValueEditor::ozValueEditor(ozRegValue& value, CADMCtrl* control, ozViewPlatform& platform,
                             int firstId, bool hex)
    : m_value(value), m_control(control), m_platform(platform), m_firstId(firstId), m_hex(hex)
{
}

std::string ozValueEditor::Label(Field field) const
{
    static const char* const labels[] = {"Name",          "Type", "Item type", "Operation",
                                         "Number format", "Data", "Old data"};
    return labels[field];
}

void ozValueEditor::Describe(std::vector<ozControlSpec>& controls) const
{
    using Kind = ozControlKind;
    const unsigned int leave = ozControlReportOnLeave;
    // The data take a few lines: a multi-string's strings, or a long binary value's bytes.
    const int dataHeight = 32;
    controls.emplace_back(Id(NameField), Kind::Edit, Label(NameField), 0, 0, 0, 0, leave);
    for (Field field : {TypeField, ItemTypeField, OperationField, FormatField})
        controls.emplace_back(Id(field), Kind::DropDown, Label(field));
    for (Field field : {DataField, OldDataField})
        controls.emplace_back(Id(field), Kind::Edit, Label(field), 0, 0, 0, dataHeight,
                              leave | ozControlMultiLine);
}

std::string ozValueEditor::OperationName(int op) const
{
    for (std::size_t at = 0; at < std::size(Operations); ++at)
        if (Operations[at] == op && m_control != nullptr) {
            std::string name =
                m_control->GetString(static_cast<unsigned short>(HostTextFirstOperation + at));
            if (!name.empty())
                return name;
        }
    return std::string(1, static_cast<char>(op));
}

std::string ozValueEditor::ItemTypeName(int itemType) const
{
    for (std::size_t at = 0; at < std::size(ItemTypes); ++at)
        if (ItemTypes[at] == itemType && m_control != nullptr) {
            std::string name =
                m_control->GetString(static_cast<unsigned short>(HostTextFirstItemType + at));
            if (!name.empty())
                return name;
        }
    return std::string(1, static_cast<char>(itemType));
}

ozValueEditor::State ozValueEditor::Shown() const
{
    State state;
    state.name = m_value.Name() != nullptr ? m_value.Name() : "";
    state.type = m_value.Type();
    state.itemType = m_value.RIT();
    state.op = m_value.Op();
    state.hex = m_hex;
    state.data = ozValueDataText(m_value, false, m_hex);
    if (ozValueTakesSecondDatum(m_value))
        state.oldData = ozValueDataText(m_value, true, m_hex);
    return state;
}

namespace {

// The code behind the drop-down's selected row: codes[row], or fallback for none.
template <typename Code>
Code Chosen(const ozForm& form, int id, const std::vector<Code>& codes, Code fallback)
{
    int row = form.SelectedRow(id);
    return row >= 0 && row < static_cast<int>(codes.size()) ? codes[static_cast<size_t>(row)]
                                                            : fallback;
}

}  // namespace

ozValueEditor::State ozValueEditor::Held(const ozForm& form) const
{
    State state = Shown();
    state.name = form.Text(Id(NameField));
    state.type = Chosen(form, Id(TypeField), m_typeCodes, state.type);
    state.itemType = Chosen(form, Id(ItemTypeField), m_itemTypeCodes, state.itemType);
    state.op = Chosen(form, Id(OperationField), m_operationCodes, state.op);
    state.hex = form.SelectedRow(Id(FormatField)) != 1;
    state.data = form.Text(Id(DataField));
    if (form.Enabled(Id(OldDataField)))
        state.oldData = form.Text(Id(OldDataField));
    return state;
}

void ozValueEditor::Load(ozForm& form)
{
    State state = Shown();
    form.Text(Id(NameField), state.name);

    m_typeCodes.clear();
    std::vector<std::string> rows;
    for (unsigned long type : ozNamedValueTypes()) {
        m_typeCodes.push_back(type);
        rows.push_back(ozValueTypeName(type));
    }
    if (std::find(m_typeCodes.begin(), m_typeCodes.end(), state.type) == m_typeCodes.end()) {
        m_typeCodes.push_back(state.type);
        rows.push_back(ozValueTypeName(state.type));
    }
    Fill(form, TypeField, rows, m_typeCodes, state.type);

    m_itemTypeCodes.assign(std::begin(ItemTypes), std::end(ItemTypes));
    rows.clear();
    for (int itemType : ItemTypes)
        rows.push_back(ItemTypeName(itemType));
    Fill(form, ItemTypeField, rows, m_itemTypeCodes, state.itemType);

    // The operations the item type allows, and the value's own even when it does not.
    m_operationCodes.clear();
    rows.clear();
    for (int op : Operations)
        if (op == state.op || ozRegValue::GetNumValue(static_cast<tREGITEMTYPE>(state.itemType),
                                                      static_cast<tOPVALUE>(op)) != NumNone) {
            m_operationCodes.push_back(op);
            rows.push_back(OperationName(op));
        }
    Fill(form, OperationField, rows, m_operationCodes, state.op);

    form.Rows(Id(FormatField), {FormatRows[0], FormatRows[1]});
    form.SelectRow(Id(FormatField), m_hex ? 0 : 1);
    form.Enable(Id(FormatField), ozValueIsNumber(state.type));
    form.Text(Id(DataField), state.data);
    form.Text(Id(OldDataField), state.oldData);
    form.Enable(Id(OldDataField), ozValueTakesSecondDatum(m_value));
}

template <typename Code>
void ozValueEditor::Fill(ozForm& form, Field field, const std::vector<std::string>& rows,
                         const std::vector<Code>& codes, Code selected)
{
    form.Rows(Id(field), rows);
    int row = -1;
    for (std::size_t at = 0; at < codes.size(); ++at)
        if (codes[at] == selected)
            row = static_cast<int>(at);
    form.SelectRow(Id(field), row);
}

bool ozValueEditor::Store(ozRegValue& target, const State& state, Field& fault,
                          std::string& why) const
{
    const char* oldName = target.Name() != nullptr ? target.Name() : "";
    if (state.name != oldName) {
        ozSubKey* key = target.SubKey();
        ozRegValue* named = key != nullptr ? key->HasValue(state.name.c_str()) : nullptr;
        if (named != nullptr && named != &m_value) {
            fault = NameField;
            why = "the key has a value named \"" + state.name + "\" already";
            return false;
        }
        target.Name(state.name.c_str());
    }
    if ((state.itemType != target.RIT() || state.op != target.Op()) &&
        ozRegValue::GetNumValue(static_cast<tREGITEMTYPE>(state.itemType),
                                static_cast<tOPVALUE>(state.op)) == NumNone) {
        fault = state.op != target.Op() ? OperationField : ItemTypeField;
        why = "the item type " + ItemTypeName(state.itemType) + " does not take the operation " +
              OperationName(state.op);
        return false;
    }
    target.RIT(static_cast<tREGITEMTYPE>(state.itemType));
    if (state.op != target.Op())
        target.Op(static_cast<tOPVALUE>(state.op));
    const bool retyped = state.type != target.Type();
    if (retyped || state.data != ozValueDataText(target, false, m_hex)) {
        if (!ozSetValueData(target, state.type, state.data, false, why)) {
            fault = DataField;
            return false;
        }
    }
    if (ozValueTakesSecondDatum(target) &&
        (retyped || state.oldData != ozValueDataText(target, true, m_hex)) &&
        !ozSetValueData(target, state.type, state.oldData, true, why)) {
        fault = OldDataField;
        return false;
    }
    return true;
}

bool ozValueEditor::Take(ozForm& form)
{
    State held = Held(form);
    State shown = Shown();
    const bool changed = held.name != shown.name || held.type != shown.type ||
                         held.itemType != shown.itemType || held.op != shown.op ||
                         held.data != shown.data || held.oldData != shown.oldData;
    if (changed) {
        ozRegValue trial(m_value);
        Field fault = NameField;
        std::string why;
        if (!Store(trial, held, fault, why)) {
            std::string message =
                m_control != nullptr
                    ? m_control->GetString(HostMessagePartValueRefused)
                    : ozApplication::Instance().MessageText(HostMessagePartValueRefused);
            m_platform.UI().ShowMessage(HostMessageError,
                                        ozFormatMessage(message, {Label(fault), why}));
            Load(form);
            form.Focus(Id(fault));
            return false;
        }
        Store(m_value, held, fault, why);
        if (m_control != nullptr)
            ozMarkDocumentEdited(*m_control);
    }
    m_hex = held.hex;
    Load(form);
    if (changed && m_changed)
        m_changed(m_value);
    return true;
}

void ozValueEditor::Command(ozForm& form, int id, ozFormEvent event)
{
    if (Owns(id) && event != ozFormEvent::Clicked)
        Take(form);
}

bool ozValueEditor::Commit(ozForm& form)
{
    return Take(form);
}

bool ozValueEditor::Type(ozForm& form, const std::string& label, const std::string& text)
{
    for (int field = NameField; field < FieldCount; ++field) {
        if (!ozAsciiSameIgnoringCase(Label(static_cast<Field>(field)), label))
            continue;
        int id = Id(static_cast<Field>(field));
        if (!form.Enabled(id))
            return false;
        if (field == NameField || field == DataField || field == OldDataField) {
            form.Text(id, text);
            return true;
        }
        std::vector<std::string> rows = form.Rows(id);
        for (std::size_t row = 0; row < rows.size(); ++row)
            if (ozAsciiSameIgnoringCase(rows[row], text)) {
                form.SelectRow(id, static_cast<int>(row));
                return true;
            }
        return false;
    }
    return false;
}

std::vector<ozValueEditor::FieldView> ozValueEditor::Fields(const ozForm& form) const
{
    std::vector<FieldView> fields;
    for (int field = NameField; field < FieldCount; ++field) {
        int id = Id(static_cast<Field>(field));
        bool edit = field == NameField || field == DataField || field == OldDataField;
        fields.push_back({edit ? "EDIT" : "DROPDOWN", Label(static_cast<Field>(field)),
                          form.Enabled(id), form.Text(id)});
    }
    return fields;
}
