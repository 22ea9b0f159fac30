// An item of a drop-down list (a name, the value it stands for, and an optional action list)
// or an entry gathered by a list box (name and string value).
#pragma once

#include <memory>

#include "ozADMActionList.h"
#include "ozADMValue.h"

class ozADMListItem {
public:
    ozADMListItem() = default;
    ozADMListItem(const ozADMListItem& other);
    ozADMListItem& operator=(const ozADMListItem& other);
    virtual ~ozADMListItem();

    virtual void Name(const char* name);
    virtual const char* Name() const;
    virtual ozADMValue& Value();
    virtual const ozADMValue& Value() const;
    // Takes ownership of the list, destroying the one held before.
    virtual void ActionList(ozADMActionList* list);
    virtual ozADMActionList* ActionList();
    virtual const ozADMActionList* ActionList() const;
    virtual ozADMListItem* Copy() const;

private:
    std::unique_ptr<char[]> m_name;
    ozADMValue m_value;
    std::unique_ptr<ozADMActionList> m_actionList;
};
