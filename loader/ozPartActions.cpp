// The actions that create parts and end them by binding their keys.
#include <memory>

#include "core/adm/ozADMCheckBox.h"
#include "core/adm/ozADMComboBox.h"
#include "core/adm/ozADMDropdownList.h"
#include "core/adm/ozADMEditText.h"
#include "core/adm/ozADMListBox.h"
#include "core/adm/ozADMMultiText.h"
#include "core/adm/ozADMNumeric.h"
#include "core/adm/ozADMText.h"
#include "ozActionSupport.h"
#include "ozGrammarActions.h"

namespace {

// A new Part named by the fetched String, in a key scope of its own, added to the current
// policy.
template <class Part>
intptr_t CreatePart()
{
    return ozRunAction(LoadErrorPart, [] {
        auto part = std::make_unique<Part>();
        std::unique_ptr<char[]> name = ozFetchString();
        if (name == nullptr)
            return false;
        part->Name(name.get());
        if (!ozOpenKeyScope())
            return ozFail(LoadErrorPartScope);
        ozADMPolicy* policy = ozCurrentPolicy();
        if (policy == nullptr)
            return false;
        if (!policy->AddControl(part.release()))
            return ozFail(LoadErrorPart);
        return true;
    });
}

}  // namespace

intptr_t CreateCheckbox(intptr_t)
{
    return CreatePart<ozADMCheckBox>();
}

intptr_t CreateNumeric(intptr_t)
{
    return CreatePart<ozADMNumeric>();
}

intptr_t CreateEdittext(intptr_t)
{
    return CreatePart<ozADMEditText>();
}

intptr_t CreateCombobox(intptr_t)
{
    return CreatePart<ozADMComboBox>();
}

intptr_t CreateText(intptr_t)
{
    return CreatePart<ozADMText>();
}

intptr_t CreateDropdown(intptr_t)
{
    return CreatePart<ozADMDropdownList>();
}

intptr_t CreateListbox(intptr_t)
{
    return CreatePart<ozADMListBox>();
}

intptr_t CreateMultitext(intptr_t)
{
    return CreatePart<ozADMMultiText>();
}

intptr_t EndPart(intptr_t)
{
    return ozRunAction(LoadErrorBindKey, [] {
        if (ozCurrentPolicy() == nullptr)
            return ozFail(LoadErrorNoPolicy);
        ozADMCtrl* part = ozCurrentPart<ozADMCtrl>();
        if (part == nullptr)
            return false;
        // A policy implies a code object, so the tree is there.
        ozClassRegistry registry = ozCurrentClassRegistry();
        part->Key(*registry.tree, registry.root, ozCurrentKeyName());
        if (part->Key() == nullptr)
            return ozFail(LoadErrorBindKey);
        if (part->ValueName() == nullptr)
            return ozFail(LoadErrorNoValueName);
        ozCloseKeyScope();
        return true;
    });
}
