// The editor of one registry value in the parts panel, shown when the registry view's value list
// selects a value. Its fields: the value's name, its registry type, its item type and operation
// (only the operations the item type allows), the number format (decimal or hexadecimal, for
// numbers), the data and, for the operations that take two data, the old data.
//
// The data are edited by type (ozValueData.h). A field is taken when the user leaves it
// (an edit) or chooses a row (a drop-down), and by Commit; a refusal shows message 180 naming
// the field and what is wrong, and the editor shows the value as it was. An accepted change
// marks the document modified and is reported, so that the value list redraws the row.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ozForm.h"

class CADMCtrl;
class ozRegValue;
class ozViewPlatform;

class ozValueEditor {
public:
    // The value edited (not owned; it must outlive the editor); control gives the host texts
    // and the document that changes (may be null); its controls are numbered from firstId on;
    // hex: numbers show in hexadecimal at first (else in decimal).
    ozValueEditor(ozRegValue& value, CADMCtrl* control, ozViewPlatform& platform, int firstId,
                  bool hex);

    ozRegValue& Value() const { return m_value; }
    // Whether numbers show in hexadecimal now (the user's last choice).
    bool Hex() const { return m_hex; }
    // Called after every accepted change with the value.
    void OnChanged(std::function<void(ozRegValue&)> changed) { m_changed = std::move(changed); }

    void Describe(std::vector<ozControlSpec>& controls) const;
    // Shows the value in the controls.
    void Load(ozForm& form);
    bool Owns(int id) const { return id >= m_firstId && id < m_firstId + FieldCount; }
    // The user changed control id: takes it over (or refuses it).
    void Command(ozForm& form, int id, ozFormEvent event);
    // Takes over every field whose text differs from the value's; false after a refusal.
    bool Commit(ozForm& form);

    // Puts text into the field labelled label (without regard to case) as a user types or
    // chooses it, without taking it over; a drop-down takes the text of one of its rows. False
    // for no such field, a disabled one, or a row the drop-down lacks.
    bool Type(ozForm& form, const std::string& label, const std::string& text);
    struct FieldView {
        std::string kind;  // EDIT or DROPDOWN
        std::string label;
        bool enabled = false;
        std::string text;
    };
    std::vector<FieldView> Fields(const ozForm& form) const;

private:
    enum Field {
        NameField,
        TypeField,
        ItemTypeField,
        OperationField,
        FormatField,
        DataField,
        OldDataField,
        FieldCount
    };
    struct State;

    int Id(Field field) const { return m_firstId + static_cast<int>(field); }
    // What the fields show for the value; and what the form holds.
    State Shown() const;
    State Held(const ozForm& form) const;
    // Stores state into target; false with why (and the field at fault) when refused.
    bool Store(ozRegValue& target, const State& state, Field& fault, std::string& why) const;
    // Takes the form's fields over: true when stored (or nothing changed).
    bool Take(ozForm& form);
    // Puts rows into a drop-down and selects the row whose code is selected.
    template <typename Code>
    void Fill(ozForm& form, Field field, const std::vector<std::string>& rows,
              const std::vector<Code>& codes, Code selected);
    std::string OperationName(int op) const;
    std::string ItemTypeName(int itemType) const;
    std::string Label(Field field) const;

    ozRegValue& m_value;
    CADMCtrl* m_control;
    ozViewPlatform& m_platform;
    int m_firstId;
    // Numbers show in hexadecimal (else in decimal).
    bool m_hex;
    // The codes behind the drop-downs' rows, as Load filled them.
    std::vector<unsigned long> m_typeCodes;
    std::vector<int> m_itemTypeCodes;
    std::vector<int> m_operationCodes;
    std::function<void(ozRegValue&)> m_changed;
};
