// The editors of the parts panel: one per part of the shown policy, each owning a few
// consecutive control numbers in the panel's form. An editor describes its controls, puts its
// part's value into them, and reads back what the user made of it in the part value text form
// (control/ozPolicyEdit.h). It never changes the part: the panel stores what it reads through
// the part-editing rules, so that the editors need not know them.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ozForm.h"

class ozADMCtrl;
class ozADMListBox;
class ozViewPlatform;

class ozPartEditor {
public:
    virtual ~ozPartEditor() = default;
    ozPartEditor(const ozPartEditor&) = delete;
    ozPartEditor& operator=(const ozPartEditor&) = delete;

    // The part edited (not owned; it outlives the editor).
    ozADMCtrl& Part() const { return m_part; }
    // The part's name, which the editor shows as its label ("" without one).
    std::string Label() const;
    // Whether the part takes a value (all but a TEXT part).
    virtual bool HasValue() const { return true; }

    // Appends the descriptions of its controls, numbered from its first number on.
    virtual void Describe(std::vector<ozControlSpec>& controls) const = 0;
    // The controls exist: shows the part's value in them.
    virtual void Load(ozForm& form) = 0;
    // The value as the controls show it, in the part value text form.
    virtual std::string Text(const ozForm& form) const = 0;
    // Puts text (the part value text form) into the controls as a user would. False, leaving
    // the controls as they were, when no user could enter it there (a drop-down list without
    // that item, a check box given neither TRUE nor FALSE, a line of text).
    virtual bool Type(ozForm& form, const std::string& text) = 0;
    // A user's action on control id, one of the editor's; platform runs dialogs.
    virtual void Command(ozForm&, int /*id*/, ozFormEvent, ozViewPlatform&) {}

    void Enable(ozForm& form, bool enabled) const;
    bool Enabled(const ozForm& form) const { return form.Enabled(m_firstId); }
    // Gives its first control the keyboard focus.
    void Focus(ozForm& form) const { form.Focus(m_firstId); }
    bool Owns(int id) const { return id >= m_firstId && id < m_firstId + m_controlCount; }

protected:
    ozPartEditor(ozADMCtrl& part, int firstId, int controlCount)
        : m_part(part), m_firstId(firstId), m_controlCount(controlCount)
    {
    }
    // The number of the editor's control k (0 the first).
    int Id(int k) const { return m_firstId + k; }

private:
    ozADMCtrl& m_part;
    int m_firstId;
    int m_controlCount;
};

// The editor for part, its controls numbered from firstId on (at most ten); null for a part
// type the panel does not show.
std::unique_ptr<ozPartEditor> ozCreatePartEditor(ozADMCtrl& part, int firstId);
// The list box's editor (a label and a "Show..." button that opens the list box dialog).
std::unique_ptr<ozPartEditor> ozCreateListBoxEditor(ozADMListBox& part, int firstId);
