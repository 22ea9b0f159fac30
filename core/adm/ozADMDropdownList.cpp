#include "ozADMDropdownList.h"

#include <memory>
#include <new>

#include "core/registry/ozRegValue.h"
#include "core/registry/ozSubKey.h"
#include "ozADMTree.h"
#include "ozADMWriterLines.h"

ozADMDropdownList::ozADMDropdownList() : ozADMCtrl(CtrlDropdownList) {}

ozADMDropdownList::~ozADMDropdownList() = default;

bool ozADMDropdownList::_AddRegWrites(ozADMRegWrites& writes, bool enabled) const
{
    if (!enabled)
        return AddOwnWrite(writes, false, ozADMValue());
    // Without a selection the first item is written, the one the list shows first; a list
    // without items writes nothing.
    if (m_selected < 0 && m_items.Count() == 0)
        return Key() != nullptr && ValueName() != nullptr;
    const ozADMListItem* item = m_items.At(m_selected < 0 ? 0 : m_selected);
    if (item == nullptr || !AddOwnWrite(writes, true, item->Value()))
        return false;
    return item->ActionList() == nullptr || item->ActionList()->AddRegWrites(writes);
}

bool ozADMDropdownList::LeftEmpty() const
{
    return m_selected < 0;
}

bool ozADMDropdownList::SaveADM(FILE* file, ozADMTree& tree, ozSubKey* policyKey)
{
    if (!_SaveHeadADM(file, tree, policyKey, "DROPDOWNLIST") ||
        !_SaveValueNameADM(file, tree, /*withRequired=*/true) ||
        !ozWriteLine(file, tree, "ITEMLIST"))
        return false;
    if (m_items.Count() > 0) {
        tree.IndentInc();
        for (int pos = 0; pos < m_items.Count(); ++pos) {
            ozADMListItem* item = m_items.At(pos);
            if (!ozWriteTextLine(file, tree, "NAME", item->Name()) || !tree.WriteIndent(file) ||
                std::fputs("VALUE ", file) == EOF || !item->Value().SaveADM(file, tree) ||
                (pos == m_default && std::fprintf(file, "\t%s", "DEFAULT") < 0) ||
                std::fputc('\n', file) == EOF ||
                !ozWriteActionListBlock(file, tree, "ACTIONLIST", item->ActionList(),
                                        _CurrentKey(policyKey)))
                return false;
        }
        tree.IndentDec();
    }
    if (!ozWriteLine(file, tree, "END ITEMLIST"))
        return false;
    // Unlike a combo box's, this block is not indented.
    if (m_noSort && !(ozWriteLine(file, tree, "#if VERSION > 1") &&
                      ozWriteLine(file, tree, "NOSORT") && ozWriteLine(file, tree, "#endif")))
        return false;
    return _SaveClientExtADM(file, tree);
}

bool ozADMDropdownList::SetDefault()
{
    Selected(m_default);
    return true;
}

tSYNCSTATE ozADMDropdownList::Sync()
{
    tSYNCSTATE early = SyncNeutral;
    ozRegValue* value = SyncOwnValue(&early);
    if (value == nullptr)
        return early;
    if (!value->IsInsert() && !value->IsDelete())
        return SyncConflict;
    // Several items may stand for the same value and differ in their action lists: the last
    // one whose action list is fully present wins. An item whose list is incomplete cannot
    // undo a match found before it. An item that deletes the value is selected by a deletion
    // but cannot speak for the policy, whose disabled state deletes the value too.
    tSYNCSTATE result = NotAnInsert(*value);
    ozADMListItem* item = nullptr;
    for (int pos = 0; (item = m_items.At(pos)) != nullptr; ++pos) {
        if (!item->Value().IsEqualWith(*value))
            continue;
        if (item->ActionList() != nullptr && !item->ActionList()->Sync())
            continue;
        m_selected = pos;
        result = value->IsDelete() ? SyncNeutral : SyncEnabled;
    }
    return result;
}

ozADMCtrl* ozADMDropdownList::Copy() const
{
    auto* copy = new ozADMDropdownList;
    copy->CopyBaseFrom(*this);
    copy->m_selected = m_selected;
    copy->m_default = m_default;
    for (int pos = 0; pos < m_items.Count(); ++pos)
        copy->m_items.Add(m_items.At(pos)->Copy(), m_items.NameAt(pos));
    copy->m_noSort = m_noSort;
    return copy;
}

ozADMCtrl* ozADMDropdownList::New() const
{
    return new ozADMDropdownList;
}

void ozADMDropdownList::Selected(int i)
{
    if (i >= m_items.Count())
        m_selected = m_items.Count() - 1;
    else if (i < -1)
        m_selected = -1;
    else
        m_selected = i;
}

int ozADMDropdownList::Selected() const
{
    return m_selected;
}

bool ozADMDropdownList::DeSelect()
{
    m_selected = -1;
    return true;
}

void ozADMDropdownList::Default(int i)
{
    m_default = i;
}

int ozADMDropdownList::Default() const
{
    return m_default;
}

CCollection<ozADMListItem>& ozADMDropdownList::ItemList()
{
    return m_items;
}

const CCollection<ozADMListItem>& ozADMDropdownList::ItemList() const
{
    return m_items;
}

bool ozADMDropdownList::AddItem(const char* name, const ozADMValue& value,
                                ozADMActionList* actionList)
{
    std::unique_ptr<ozADMActionList> taken(actionList);
    if (name == nullptr)
        return false;
    try {
        auto item = std::make_unique<ozADMListItem>();
        item->Name(name);
        item->Value() = value;
        item->ActionList(taken.release());
        return m_items.Add(item.release());
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void ozADMDropdownList::NoSort(bool noSort)
{
    m_noSort = noSort;
}

bool ozADMDropdownList::NoSort() const
{
    return m_noSort;
}
