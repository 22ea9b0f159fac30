// The actions that set what every part has and what parts of one kind have: check boxes,
// numbers, edit texts and combo boxes, drop-down lists and list boxes. Each works on the current
// part when it is of a kind that has the setting (1113 otherwise).
#include <cstdint>
#include <memory>

#include "core/adm/ozADMCheckBox.h"
#include "core/adm/ozADMComboBox.h"
#include "core/adm/ozADMDropdownList.h"
#include "core/adm/ozADMEditText.h"
#include "core/adm/ozADMListBox.h"
#include "core/adm/ozADMMultiText.h"
#include "core/adm/ozADMNumeric.h"
#include "ozActionSupport.h"
#include "ozGrammarActions.h"

namespace {

// Runs apply (returning bool) on the current part as a Part; out of memory reports
// outOfMemoryError.
template <class Part, class Apply>
intptr_t OnPart(Apply&& apply, int outOfMemoryError = StringsErrorOutOfMemory)
{
    return ozRunAction(outOfMemoryError, [&apply] {
        Part* part = ozCurrentPart<Part>();
        return part != nullptr && apply(*part);
    });
}

// Hands the number of the token to apply with the current part as a Part; 1118 for a token
// that is not a number.
template <class Part, class Apply>
intptr_t PartNumber(intptr_t token, Apply&& apply)
{
    return OnPart<Part>([token, &apply](Part& part) {
        unsigned long number = 0;
        if (!ozTokenNumber(token, &number))
            return false;
        apply(part, number);
        return true;
    });
}

// Hands the 64-bit number of a fetched String to apply with the current numeric part.
template <class Apply>
intptr_t QwordNumber(Apply&& apply)
{
    return OnPart<ozADMNumeric>([&apply](ozADMNumeric& part) {
        std::uint64_t number = 0;
        if (!ozFetchQword(&number))
            return false;
        apply(part, number);
        return true;
    });
}

// Fetches a String and hands it to apply (returning bool) with the current part as a Part.
template <class Part, class Apply>
intptr_t PartText(Apply&& apply, int outOfMemoryError = StringsErrorOutOfMemory)
{
    return OnPart<Part>(
        [&apply](Part& part) {
            std::unique_ptr<char[]> text = ozFetchString();
            return text != nullptr && apply(part, text.get());
        },
        outOfMemoryError);
}

}  // namespace

intptr_t PartRequired(intptr_t)
{
    return OnPart<ozADMCtrl>([](ozADMCtrl& part) {
        part.Required(true);
        return true;
    });
}

intptr_t PartValuename(intptr_t)
{
    return PartText<ozADMCtrl>([](ozADMCtrl& part, const char* text) {
        part.ValueName(text);
        return true;
    });
}

intptr_t PartClientExt(intptr_t)
{
    return PartText<ozADMCtrl>([](ozADMCtrl& part, const char* text) {
        part.ClientExt(text);
        return true;
    });
}

intptr_t CheckboxChecked(intptr_t)
{
    return OnPart<ozADMCheckBox>([](ozADMCheckBox& part) {
        part.Checked(true);
        part.Default(true);
        return true;
    });
}

intptr_t CheckboxValueOn(intptr_t)
{
    return OnPart<ozADMCheckBox>([](ozADMCheckBox& part) {
        return ozTakeValue(part, &ozADMCheckBox::ValueOn, "CheckboxValueOn");
    });
}

intptr_t CheckboxValueOff(intptr_t)
{
    return OnPart<ozADMCheckBox>([](ozADMCheckBox& part) {
        return ozTakeValue(part, &ozADMCheckBox::ValueOff, "CheckboxValueOff");
    });
}

intptr_t CheckboxActionlistOn(intptr_t)
{
    return OnPart<ozADMCheckBox>(
        [](ozADMCheckBox& part) { return ozTakeActionList(part, &ozADMCheckBox::ActionListOn); });
}

intptr_t CheckboxActionlistOff(intptr_t)
{
    return OnPart<ozADMCheckBox>(
        [](ozADMCheckBox& part) { return ozTakeActionList(part, &ozADMCheckBox::ActionListOff); });
}

// A template's DEFAULT makes the default present, so that a template written back keeps it,
// and the part starts with it, as an edit text starts with its DEFAULT.
intptr_t NumericDefault(intptr_t token)
{
    return PartNumber<ozADMNumeric>(token, [](ozADMNumeric& part, unsigned long number) {
        part.Default(number);
        part.DefaultEmpty(false);
        part.Value(number);
        part.Empty(false);
    });
}

intptr_t NumericMin(intptr_t token)
{
    return PartNumber<ozADMNumeric>(
        token, [](ozADMNumeric& part, unsigned long number) { part.Min(number); });
}

intptr_t NumericMax(intptr_t token)
{
    return PartNumber<ozADMNumeric>(
        token, [](ozADMNumeric& part, unsigned long number) { part.Max(number); });
}

intptr_t NumericSpin(intptr_t token)
{
    return OnPart<ozADMNumeric>([token](ozADMNumeric& part) {
        const ozEBNFToken* step = ozTokenOf(token);
        bool isNumber = step != nullptr && step->type == EBNFTokenNumber;
        part.Spin(isNumber ? static_cast<long>(step->number) : 1);
        return true;
    });
}

intptr_t NumericTxtconvert(intptr_t)
{
    return OnPart<ozADMNumeric>([](ozADMNumeric& part) {
        part.TxtConvert(true);
        return true;
    });
}

intptr_t ComboboxDefault(intptr_t)
{
    return PartText<ozADMEditText>([](ozADMEditText& part, const char* text) {
        part.Default(text);
        part.Value(text);
        return true;
    });
}

intptr_t ComboboxMaxlen(intptr_t token)
{
    return PartNumber<ozADMEditText>(
        token, [](ozADMEditText& part, unsigned long number) { part.MaxLen(number); });
}

intptr_t ComboboxExpandable(intptr_t)
{
    return OnPart<ozADMEditText>([](ozADMEditText& part) {
        part.Expandable(true);
        return true;
    });
}

intptr_t ComboboxSuggestion(intptr_t)
{
    return PartText<ozADMComboBox>(
        [](ozADMComboBox& part, const char* text) {
            return part.AddSuggestion(text) || ozFail(LoadErrorSuggestion);
        },
        LoadErrorSuggestion);
}

intptr_t ComboboxNosort(intptr_t)
{
    return OnPart<ozADMComboBox>([](ozADMComboBox& part) {
        part.NoSort(true);
        return true;
    });
}

intptr_t DropdownAddItem(intptr_t)
{
    return OnPart<ozADMDropdownList>(
        [](ozADMDropdownList& part) {
            // An item without ACTIONLIST has its Value on top: the look reports 1134 (1133 on
            // an empty stack), which stays the last number reported only if nothing later
            // fails.
            std::unique_ptr<ozADMActionList> list;
            if (ozPeekActionList() != nullptr)
                list = ozFetchActionList();
            std::unique_ptr<ozADMValue> value = ozFetchValue();
            std::unique_ptr<char[]> name = ozFetchString();
            if (value == nullptr || name == nullptr)
                return ozFail(LoadErrorDropdownItem);
            if (!part.AddItem(name.get(), *value, list.release()))
                return ozFail(LoadErrorDropdownItem);
            // DEFAULT comes before its item is added, when it cannot select it yet.
            if (part.Default() == part.ItemList().Count() - 1)
                part.Selected(part.Default());
            return true;
        },
        LoadErrorDropdownItem);
}

intptr_t DropdownNosort(intptr_t)
{
    return OnPart<ozADMDropdownList>([](ozADMDropdownList& part) {
        part.NoSort(true);
        return true;
    });
}

intptr_t DropdownSetSel(intptr_t)
{
    return OnPart<ozADMDropdownList>([](ozADMDropdownList& part) {
        int next = part.ItemList().Count();
        part.Default(next);
        part.Selected(next);
        return true;
    });
}

intptr_t ListboxValueprefix(intptr_t)
{
    return OnPart<ozADMListBox>([](ozADMListBox& part) {
        if (part.ExplicitValue())
            return ozFail(LoadErrorPrefixAndExplicit);
        std::unique_ptr<char[]> prefix = ozFetchString();
        if (prefix == nullptr)
            return false;
        part.ValuePrefix(prefix.get());
        return true;
    });
}

intptr_t ListboxExplicit(intptr_t)
{
    return OnPart<ozADMListBox>([](ozADMListBox& part) {
        if (part.ValuePrefix() != nullptr)
            return ozFail(LoadErrorPrefixAndExplicit);
        part.ExplicitValue(true);
        return true;
    });
}

intptr_t ListboxAdditive(intptr_t)
{
    return OnPart<ozADMListBox>([](ozADMListBox& part) {
        part.Additive(true);
        return true;
    });
}

intptr_t MultitextMaxlen(intptr_t token)
{
    return PartNumber<ozADMMultiText>(
        token, [](ozADMMultiText& part, unsigned long number) { part.MaxLength(number); });
}

intptr_t MultitextMaxstrings(intptr_t token)
{
    return PartNumber<ozADMMultiText>(
        token, [](ozADMMultiText& part, unsigned long number) { part.MaxStrings(number); });
}

intptr_t NumericQword(intptr_t)
{
    return OnPart<ozADMNumeric>([](ozADMNumeric& part) {
        part.Qword(true);
        return true;
    });
}

intptr_t NumericQwordDefault(intptr_t)
{
    return QwordNumber([](ozADMNumeric& part, std::uint64_t number) {
        part.Default(number);
        part.DefaultEmpty(false);
        part.Value(number);
        part.Empty(false);
    });
}

intptr_t NumericQwordMin(intptr_t)
{
    return QwordNumber([](ozADMNumeric& part, std::uint64_t number) { part.Min(number); });
}

intptr_t NumericQwordMax(intptr_t)
{
    return QwordNumber([](ozADMNumeric& part, std::uint64_t number) { part.Max(number); });
}
