// The sheet's own captions, in the system's encoding. Apart from the sheet's logic, as the
// text conversion brings the system's headers, whose macros take some of the sheet's names.
#include "ozSearchSheet.h"
#include "platform/ozTextConversion.h"

std::string ozSearchSheet::OwnCaption(int hostText)
{
    switch (hostText) {
        case ReplaceCaptionText:
            return "Ersetzen";
        case SearchLabelText:
            return "Suchen nach:";
        case ReplaceLabelText:
            return "Ersetzen durch:";
        case FirstOptionText:
            return ozNarrowFromUtf8(
                "R\xC3\xBC"
                "ckw\xC3\xA4"
                "rts suchen");
        case FirstOptionText + 1:
            return "Selektierter Bereich";
        case FirstOptionText + 2:
            return ozNarrowFromUtf8("Gro\xC3\x9F-/Kleinschreibung");
        case FirstOptionText + 3:
            return "Nur ganzes Wort";
        case FindNextText:
            return "Weitersuchen";
        case ReplaceAllText:
            return "Alle Ersetzen";
        case CancelText:
            return "Abbrechen";
        default:
            return {};
    }
}
