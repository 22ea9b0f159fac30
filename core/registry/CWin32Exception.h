// An exception that carries where a Win32 call failed and the error code it returned; the
// message is the system's text for the code.
#pragma once

#include <stdexcept>
#include <string>

class CWin32Exception : public std::runtime_error {
public:
    CWin32Exception(const std::string& where, unsigned long error);

    // Where the failure arose, e.g. "CRegistryKey::CRegistryKey(HKEY hKey ...)".
    const std::string& GetWhere() const { return m_where; }
    // The Win32 error code.
    unsigned long GetError() const { return m_error; }
    // The system's message for the error code.
    const std::string& GetErrorMessage() const { return m_message; }

private:
    CWin32Exception(const std::string& where, unsigned long error, std::string message);

    std::string m_where;
    unsigned long m_error;
    std::string m_message;
};
