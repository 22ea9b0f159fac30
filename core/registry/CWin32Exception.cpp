#include "CWin32Exception.h"

#include "platform/ozSystemMessage.h"

CWin32Exception::CWin32Exception(const std::string& where, unsigned long error)
    : std::runtime_error(where + " - " + ozSystemMessage(error)),
      m_where(where),
      m_error(error),
      m_message(ozSystemMessage(error))
{
}
