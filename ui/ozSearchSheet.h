// The sheet "Suchen": a modeless window over the registry-value grid with two pages, "Suchen"
// (find) and "Ersetzen" (replace). The pages keep no data of their own: they copy what the
// user types and checks into the grid's search state and ask it to find, replace, replace all
// or restart. The edits carry their labels in front of them. Both pages have a row of two page
// buttons at the top ("Suchen" and the replace page's caption), which switch the page, the same on
// every platform.
//
// Texts come from the host when a page opens: 107 the replace page's caption and its
// "Ersetzen" button, 114 "Weitersuchen", 115 "Alle Ersetzen", 4 "Abbrechen", 108 and 109 the
// labels, 110 to 113 the four options; 105 (with the search text) says nothing was found.
#pragma once

#include <functional>
#include <memory>

#include "ozForm.h"
#include "ozSearchReplace.h"

class CADMCtrl;
class ozModelessDialog;
class ozViewPlatform;

class ozSearchSheet final : public ozDialog {
public:
    enum : int {
        SearchEdit = 284,
        FindNextButton = 285,
        CancelButton = 286,
        BackwardsBox = 287,  // the four options, in the order 287 to 290
        SelectedRangeBox = 288,
        CaseSensitiveBox = 289,
        WholeWordBox = 290,
        ReplaceEdit = 293,
        ReplaceButton = 294,
        ReplaceAllButton = 295,
        SearchPageButton = 297,  // the page buttons
        ReplacePageButton = 298,
    };
    enum : int { SearchPage = 0, ReplacePage = 1 };
    enum : int {
        CancelText = 4,
        NotFoundText = 105,
        ReplaceCaptionText = 107,
        SearchLabelText = 108,
        ReplaceLabelText = 109,
        FirstOptionText = 110,
        FindNextText = 114,
        ReplaceAllText = 115,
    };

    // The grid's search state (null while there is no grid); the sheet asks for it whenever a
    // page opens.
    using StateSource = std::function<ozSearchReplace*()>;

    // The platform, the control (for the texts) and the source must outlive the sheet.
    ozSearchSheet(ozViewPlatform& platform, const CADMCtrl& control, StateSource state);
    ~ozSearchSheet() override;

    // Opens the page (creating the window on first use) and shows the sheet; false without a
    // search state or when the window cannot be created.
    bool ShowPage(int page);
    // Hides the sheet; false when it is not shown.
    bool Hide();
    bool Shown() const;
    int Page() const { return m_page; }

    // ozDialog
    const ozDialogTemplate& Layout() const override { return m_layout; }
    void Init(ozForm& form) override;
    void Command(ozForm& form, int id, ozFormEvent event) override;

private:
    void BuildLayout();
    // The caption a control keeps when the host gives no text `hostText`.
    static std::string OwnCaption(int hostText);
    void UpdateButtons(ozForm& form);
    void Found(ozForm& form, bool found);

    ozViewPlatform& m_platform;
    const CADMCtrl& m_control;
    StateSource m_source;
    ozSearchReplace* m_state = nullptr;
    int m_page = SearchPage;
    ozDialogTemplate m_layout;
    std::unique_ptr<ozModelessDialog> m_window;
};
