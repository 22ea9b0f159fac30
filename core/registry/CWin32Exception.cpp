#include "CWin32Exception.h"

#include <utility>

#include "platform/ozSystemMessage.h"

CWin32Exception::CWin32Exception(const std::string& where, unsigned long error)
    : CWin32Exception(where, error, ozSystemMessage(error))
{
}

CWin32Exception::CWin32Exception(const std::string& where, unsigned long error, std::string message)
    : std::runtime_error(where + " - " + message),
      m_where(where),
      m_error(error),
      m_message(std::move(message))
{
}
