#include "ozApplication.h"

#include "engine/ozEBNF.h"

ozApplication& ozApplication::Instance()
{
    static ozApplication application;
    return application;
}

ozApplication::ozApplication() : m_messages(stringlist_create())
{
    error_set_string_list(m_messages);
}

ozApplication::~ozApplication()
{
    error_set_string_list(nullptr);
    stringlist_destroy(m_messages);
}

void ozApplication::ControlCreated(CADMCtrl* control)
{
    m_currentControl = control;
    ++m_controlCount;
}

void ozApplication::ControlDestroyed(CADMCtrl* control)
{
    if (m_currentControl == control)
        m_currentControl = nullptr;
    if (--m_controlCount == 0)
        EBNFDestroy();
}

bool ozApplication::AddMessage(unsigned short number, const char* text)
{
    return m_messages != nullptr && stringlist_add(m_messages, number, text != nullptr ? text : "");
}

std::string ozApplication::MessageText(unsigned short number) const
{
    return stringlist_get(m_messages, number);
}
