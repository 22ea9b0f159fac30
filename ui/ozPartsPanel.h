// The parts panel beside the policy tree: one editor per part of the policy the tree has
// selected, enabled exactly when that policy is enabled. An editor shows its part's value and
// takes what the user types; nothing reaches the part until the panel is committed (when the
// selection moves on, and before the policy settings are saved), and then only through the
// part-editing rules every host uses (ozEditPartValue), so that a value typed here and one
// given to ozadm's SetPart are checked and stored alike.
//
// Editors by part type: a check box; a number with a spin control (MIN, MAX, SPIN, DEFAULT);
// an edit (MAXLEN, EXPANDABLETEXT, REQUIRED); a combo box with the SUGGESTIONS; a line of text;
// a drop-down list of the items (sorted unless NOSORT); for a list box a "Show..." button that
// opens the list's dialog (entries, with their value names in a second column when the part
// has EXPLICITVALUE, Add and Remove); a multi-line edit for a multi-line text, one line per
// string.
//
// In the registry view the panel shows instead the editor of one registry value (ozValueEditor),
// which takes each field over as the user leaves it.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ozForm.h"

class CADMCtrl;
class ozADMPolicy;
class ozViewPlatform;
class ozPartEditor;
class ozRegValue;
class ozValueEditor;

// Host message numbers the panel shows.
enum : unsigned short {
    // %s the part's name, %s what is wrong with the value the user gave it
    HostMessagePartValueRefused = 180,
};

class ozPartsPanel : private ozFormEvents {
public:
    explicit ozPartsPanel(ozViewPlatform& platform);
    ~ozPartsPanel() override;
    ozPartsPanel(const ozPartsPanel&) = delete;
    ozPartsPanel& operator=(const ozPartsPanel&) = delete;

    // The control whose document an accepted edit marks modified and whose host texts the
    // messages use (not owned; null until the views are attached).
    void Control(CADMCtrl* control) { m_control = control; }

    // Shows the parts of policy (null: none), replacing the editors. The policy is not owned
    // and must outlive the panel's showing it (Clear before the tree goes).
    void Show(ozADMPolicy* policy);
    ozADMPolicy* Policy() const { return m_policy; }
    // The policy's state changed: the editors are enabled exactly when it is enabled.
    void StateChanged();
    // Takes over every editor's value into its part: for an enabled policy each value must fit
    // its part (a number within MIN and MAX, a required text given, ...); the first that does
    // not stops the commit, tells the user (message 180 naming the part and what is wrong) and
    // gives false, leaving the editor as the user typed it. Values the user did not change are
    // not stored again; a policy that is not enabled stores nothing. True without a policy.
    bool Commit();
    // Forgets the policy (or the value) and removes the editors.
    void Clear();

    // Shows the editor of value (null: none) instead of a policy's parts. The value is not
    // owned and must outlive the panel's showing it (Clear before its key goes).
    void ShowValue(ozRegValue* value);
    ozRegValue* Value() const;
    // Called with the value after every change the value editor stores.
    void OnValueChanged(std::function<void(ozRegValue& value)> changed)
    {
        m_valueChanged = std::move(changed);
    }

    // What a user sees of each editor, in the order of the parts: the part type's name
    // (CHECKBOX ... LISTBOX), the label, whether it is enabled, and the value in the part value
    // text form (ozPartValueText; "" for a TEXT part).
    struct EditorView {
        std::string type;
        std::string label;
        bool enabled = false;
        std::string value;
    };
    std::vector<EditorView> Editors() const;
    // Types text (the part value text form) into the editor of the part named partName
    // (without regard to case), as a user does with keyboard and mouse; nothing is stored
    // until Commit. For a value, partName is the label of a field of its editor, and text is
    // what the field shows (a drop-down's row). False when no editor has that name, it is disabled,
    // or no user could enter the text there (a drop-down list without that item, a check box given
    // neither TRUE nor FALSE, a TEXT part). A text is kept as typed, even beyond MAXLEN: Commit
    // refuses it.
    bool Type(const std::string& partName, const std::string& text);

private:
    void Command(ozForm& form, int id, ozFormEvent event) override;

    ozViewPlatform& m_platform;
    CADMCtrl* m_control = nullptr;
    ozADMPolicy* m_policy = nullptr;
    std::vector<std::unique_ptr<ozPartEditor>> m_editors;
    std::unique_ptr<ozValueEditor> m_valueEditor;
    std::function<void(ozRegValue&)> m_valueChanged;
    bool m_valuesInHex = true;
};
