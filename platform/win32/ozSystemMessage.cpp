#include "platform/ozSystemMessage.h"

#include <windows.h>

std::string ozSystemMessage(unsigned long code)
{
    char* text = nullptr;
    DWORD length = FormatMessageA(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, static_cast<DWORD>(code), 0, reinterpret_cast<char*>(&text), 0, nullptr);
    std::string message = length > 0 ? std::string(text, length) : std::string();
    LocalFree(text);
    while (!message.empty() && (message.back() == '\n' || message.back() == '\r'))
        message.pop_back();
    if (message.empty())
        message = "Unknown error " + std::to_string(code) + ".";
    return message;
}
