#include "ozADMListItem.h"

#include "core/tree/ozOwnedText.h"

namespace {

std::unique_ptr<ozADMActionList> CopyList(const ozADMActionList* list)
{
    return std::unique_ptr<ozADMActionList>(list != nullptr ? list->Copy() : nullptr);
}

}  // namespace

ozADMListItem::ozADMListItem(const ozADMListItem& other)
    : m_name(ozCopyText(other.m_name.get())),
      m_value(other.m_value),
      m_actionList(CopyList(other.m_actionList.get()))
{
}

ozADMListItem& ozADMListItem::operator=(const ozADMListItem& other)
{
    if (this != &other) {
        m_name = ozCopyText(other.m_name.get());
        m_value = other.m_value;
        m_actionList = CopyList(other.m_actionList.get());
    }
    return *this;
}

ozADMListItem::~ozADMListItem() = default;

void ozADMListItem::Name(const char* name)
{
    m_name = ozCopyText(name);
}

const char* ozADMListItem::Name() const
{
    return m_name.get();
}

ozADMValue& ozADMListItem::Value()
{
    return m_value;
}

const ozADMValue& ozADMListItem::Value() const
{
    return m_value;
}

void ozADMListItem::ActionList(ozADMActionList* list)
{
    // Handing the item the list it already holds must not destroy that list.
    if (list != m_actionList.get())
        m_actionList.reset(list);
}

ozADMActionList* ozADMListItem::ActionList()
{
    return m_actionList.get();
}

const ozADMActionList* ozADMListItem::ActionList() const
{
    return m_actionList.get();
}

ozADMListItem* ozADMListItem::Copy() const
{
    return new ozADMListItem(*this);
}
