// The property page of a part (dialog 110 + the part type, "<type> properties"): the settings
// every part shares in a "General" group (name, key, value name, required, client extension, as
// far as the part's type writes them into a template) and the settings of its type in a second
// group. ozCreatePartPage (ozElementEditors.h) makes the page that fits the part.
//
// The page works on copies: the fields hold the settings, the lists (suggestions, items, action
// lists) are the page's own until OK. OK checks every field (a message through the host naming
// the field, and the page stays open), then stores everything through the part's setters and
// calls the context's edited(). Cancel changes nothing. The part (not owned) outlives the page.
#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "ozElementEditors.h"
#include "ozForm.h"

class ozADMActionList;
class ozADMValue;
class ozSubKey;

// Host message numbers the part pages show; %s the field (its caption) first.
enum : unsigned short {
    HostMessagePartFieldEmpty = 200,      // %s the field
    HostMessagePartFieldNotNumber = 201,  // %s the field
    HostMessagePartKeyNotBound = 202,     // %s the field, %s the key path typed
    HostMessagePartRangeReversed = 203,   // %s the lower field, %s the upper field
    HostMessagePartOutsideRange = 204,    // %s the field, %s the lower field, %s the upper field
};

class ozPartPage : public ozDialog {
public:
    // The controls of every type, in tab order within each page.
    enum : int {
        GeneralGroup = 400,
        NameEdit,
        KeyEdit,
        ValueNameEdit,
        RequiredCheck,
        ClientExtEdit,
        TypeGroup,
        // check box
        DefCheckedCheck = 410,
        OnKindList,
        OnValueEdit,
        OffKindList,
        OffValueEdit,
        ActionListOnButton,
        ActionListOffButton,
        // numeric
        MinEdit = 420,
        MaxEdit,
        SpinEdit,
        DefaultNumberEdit,
        TxtConvertCheck,
        QwordCheck,
        // edit text and combo box
        MaxLenEdit = 430,
        DefaultTextEdit,
        ExpandableCheck,
        SuggestionList,
        SuggestionEdit,
        AddSuggestionButton,
        RemoveSuggestionButton,
        NoSortCheck,
        // drop-down list (and NoSortCheck)
        ItemList = 440,
        AddItemButton,
        RemoveItemButton,
        UpButton,
        DownButton,
        ItemNameEdit,
        ItemKindList,
        ItemValueEdit,
        DefaultItemCheck,
        ItemActionListButton,
        // list box
        ValuePrefixEdit = 460,
        AdditiveCheck,
        ExplicitValueCheck,
        // multi-line text (and MaxLenEdit)
        MaxStringsEdit = 470,
    };

    // The general fields a type has.
    enum : unsigned int {
        WithKey = 1,
        WithValueName = 2,
        WithRequired = 4,
        WithClientExt = 8,
    };

    const ozDialogTemplate& Layout() const override { return m_layout; }
    void Init(ozForm& form) override;
    bool Accept(ozForm& form) override;
    void Command(ozForm& form, int id, ozFormEvent event) override;

protected:
    // typeName: the caption's "<type>"; fields: the general fields (With...); typeControls:
    // the type's controls placed from y 0 within the type's group, typeHeight high.
    ozPartPage(ozADMCtrl& part, const ozEditorContext& context, const char* typeName,
               unsigned int fields, std::vector<ozControlSpec> typeControls, int typeHeight);

    // What the type adds to Init, Accept and Command. CheckType tells the user and returns
    // false at the first field it refuses; StoreType runs only after every check passed.
    virtual void InitType(ozForm&) {}
    virtual bool CheckType(ozForm&) { return true; }
    virtual void StoreType(ozForm&) {}
    virtual void TypeCommand(ozForm&, int, ozFormEvent) {}

    // Shows message (args filled in), puts the focus on the field id and returns false.
    bool Refuse(ozForm& form, int id, unsigned short message,
                std::initializer_list<std::string> args) const;
    // A whole number 0..4294967295 from the field id (named field); empty gives `empty` when
    // it is set, else the field is refused like any other non-number.
    bool ReadNumber(ozForm& form, int id, const char* field, unsigned long& number,
                    const unsigned long* empty = nullptr) const;
    // A whole number 0..4294967295 written in decimal digits only.
    static bool ParseNumber(const std::string& text, unsigned long& number);
    // The key the part's lists inherit: the part's own, else its policy's.
    ozSubKey* DefaultKey() const;
    // Opens the action list dialog on a copy of list (null: a new list) and takes the edited
    // list into list on OK; an empty list is kept as none.
    void EditActionList(std::unique_ptr<ozADMActionList>& list);

    // Whether the kind row of a kind list takes a text (numeric or string).
    static bool KindHasText(int row, bool withNone);
    static bool KindIsNumeric(int row, bool withNone);

    ozADMCtrl& m_part;
    ozEditorContext m_context;

private:
    bool CheckKey(ozForm& form) const;

    unsigned int m_fields;
    ozDialogTemplate m_layout;
};

// The pages of each group of types (ozPartPagesValues.cpp, ozPartPagesLists.cpp); null for a
// part of another type.
std::unique_ptr<ozDialog> ozCreateValuePartPage(ozADMCtrl& part, const ozEditorContext& context);
std::unique_ptr<ozDialog> ozCreateListPartPage(ozADMCtrl& part, const ozEditorContext& context);
