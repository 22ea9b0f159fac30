// The dialog "Policy Properties" (dialog 106): a policy's registry key, value name, on and off
// values, client extension and explain text. The controls hold what the user types; nothing
// reaches the policy before OK, which checks every field (a message naming the first one
// refused, and the dialog stays open), then stores them all through the policy's setters and
// reports the edit through the context. Cancel changes nothing.
//
// The policy is not owned and must outlive the dialog.
#pragma once

#include <string>

#include "ozElementEditors.h"

class ozPolicyPropertiesDialog : public ozDialog {
public:
    // The controls, in tab order.
    enum : int {
        KeyEdit = 1001,
        BrowseButton = 1002,
        ValueNameEdit = 1003,
        OnKindList = 1004,
        OnValueEdit = 1005,
        OffKindList = 1006,
        OffValueEdit = 1007,
        ClientExtEdit = 1008,
        ExplainEdit = 1009,
    };
    // The rows of the kind lists, in this order.
    enum ValueKind : int { KindNone, KindNumeric, KindString, KindDelete };

    // The host messages of the checks on OK: `%s` the field's label, `%s` what was typed.
    enum : unsigned short {
        HostMessageKeyPathHasEmptyPart = 190,  // an empty key path or an empty component in it
        HostMessageKeyPathUnbound = 191,       // a key path the registry model cannot hold
        HostMessageNotAWholeNumber = 192,      // not a whole number from 0 to 4294967295
    };

    ozPolicyPropertiesDialog(ozADMPolicy& policy, ozEditorContext context);

    // The explain text as the dialog edits it and back: the template's line-break escape
    // (backslash n) becomes a line break ("\r\n"), and every line break the user types ("\r\n",
    // "\n" or "\r") becomes the escape again.
    static std::string ExplainForEditing(const char* explain);
    static std::string ExplainFromEditing(const std::string& text);

    const ozDialogTemplate& Layout() const override;
    void Init(ozForm& form) override;
    void Command(ozForm& form, int id, ozFormEvent event) override;
    bool Accept(ozForm& form) override;

private:
    void Browse(ozForm& form);
    // Enables a value edit exactly when its kind has data (numeric or string).
    static void EnableValueEdits(ozForm& form);
    // Tells the user that the field labelled `label` does not take `text`, through host message
    // `number`, and puts the focus on the field.
    void Refuse(ozForm& form, int id, unsigned short number, const std::string& text) const;

    ozADMPolicy& m_policy;
    ozEditorContext m_context;
};
