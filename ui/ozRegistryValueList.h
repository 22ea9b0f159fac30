// The registry view's value list beside the key tree: the values of the selected sub key, one
// row each in the key's order, with the name ("(Default)" for the empty name), an image by the
// value's type and operation, and the data in the value's text form. Selecting a row shows the
// value's editor in the parts panel; the list redraws the row after the editor changed it.
// Menu 244 and the Insert and Delete keys add a value (named by host text 18 and a number) and
// delete one (after the Yes/No question 59).
//
// Rows carry their ozRegValue as data; the list holds no row after the key it shows goes
// (ShowKey with null empties it).
#pragma once

#include <string>
#include <vector>

#include "ozListWidget.h"

class CADMCtrl;
class ozPartsPanel;
class ozRegKey;
class ozRegValue;
class ozSubKey;
class ozViewPlatform;

// Host string-table entries of the value list.
enum : unsigned short {
    HostTextValueName = 11,        // the caption of the name column
    HostTextValueData = 23,        // the caption of the data column
    HostTextNewValueMenu = 47,     // the menu's "New"
    HostTextDeleteValueMenu = 48,  // the menu's "Delete"
    HostTextDeleteValueAsk = 59,   // the question before a value is deleted
};

// The menu of the value list and its commands.
enum : unsigned int {
    ValueMenuResource = 244,
    ValueCommandNew = 32779,
    ValueCommandDelete = 32780,
};

// The image of a value row: by whether the type is a string kind (1, 2, 7) and whether the
// operation is change, delete or another.
enum tREGVALUEIMAGE : int {
    RegValueImageNumber = 0,
    RegValueImageString = 1,
    RegValueImageNumberDelete = 2,
    RegValueImageStringDelete = 3,
    RegValueImageNumberChange = 4,
    RegValueImageStringChange = 5,
};
int ozRegValueImage(const ozRegValue& value);
// The name a row shows: the value's name, or "(Default)" for the empty name.
std::string ozRegValueRowName(const ozRegValue& value);

class ozRegistryValueList : public ozListEvents {
public:
    ozRegistryValueList(ozViewPlatform& platform, ozPartsPanel& panel);

    // The control whose host texts the list shows and whose document it marks (not owned).
    void Control(CADMCtrl* control) { m_control = control; }
    // Sets up the list: its events, images and columns.
    void Create();
    // Shows the values of key when it is a sub key; empties the list otherwise (null: the key
    // goes). Row 0 is then selected and focused, without showing its editor.
    void ShowKey(ozRegKey* key);
    ozSubKey* Key() const { return m_key; }
    // Redraws the row of value (its name, image and data).
    void RefreshRow(const ozRegValue& value);

    // Adds a value to the key shown, named by host text 18, a blank and the first number from
    // 1 on that no value of the key has; appends and selects its row and marks the document.
    void NewValue();
    // Asks question 59; on Yes empties the parts panel, deletes the row and the value and
    // marks the document. Nothing for a row that is none.
    void DeleteValue(int row);

    // ozListEvents
    void RowSelected(int row) override;
    void RightClicked(int row) override;
    void KeyPressed(int virtualKey) override;
    void Resized(int width) override;

private:
    std::string HostText(unsigned short number) const;
    // Heads the columns with the host texts 11 and 23, which the host may add after the list
    // was created: each a quarter of the list's width again when they change.
    void UpdateColumns();
    ozRegValue* Value(int row) const;
    void AppendRow(ozRegValue& value);

    ozViewPlatform& m_platform;
    ozPartsPanel& m_panel;
    CADMCtrl* m_control = nullptr;
    ozSubKey* m_key = nullptr;
    // Set while the list is filled or a row redrawn: the list's own events are not the user's.
    bool m_filling = false;
    std::vector<std::string> m_captions;
    // The columns got their widths (a quarter of the list's width each).
    bool m_sized = false;
};
