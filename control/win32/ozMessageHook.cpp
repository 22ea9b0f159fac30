#include "ozMessageHook.h"

#include <algorithm>
#include <mutex>
#include <vector>

#include "control/ozApplication.h"

namespace {

// Per thread, as the hook is: plain values, which every thread starts with.
thread_local HHOOK t_hook = nullptr;
thread_local int t_users = 0;

// The clients of all threads; the current control may live on any of them.
std::mutex g_clientsLock;
std::vector<ozHookClient*> g_clients;

ozHookClient* CurrentClient()
{
    const CADMCtrl* current = ozApplication::Instance().CurrentControl();
    if (current == nullptr)
        return nullptr;
    std::lock_guard<std::mutex> lock(g_clientsLock);
    auto found = std::find_if(g_clients.begin(), g_clients.end(),
                              [&](ozHookClient* client) { return client->Control() == current; });
    return found != g_clients.end() ? *found : nullptr;
}

LRESULT CALLBACK GetMessageProc(int code, WPARAM removal, LPARAM lParam)
{
    if (code == HC_ACTION && removal == PM_REMOVE) {
        auto* message = reinterpret_cast<MSG*>(lParam);
        ozHookClient* client = CurrentClient();
        // The client takes only messages for its own windows.
        if (client != nullptr && client->PreTranslateMessage(*message)) {
            message->message = WM_NULL;
            message->wParam = 0;
            message->lParam = 0;
        }
    }
    return CallNextHookEx(nullptr, code, removal, lParam);
}

}  // namespace

bool ozMessageHook::Attach(ozHookClient& client)
{
    {
        std::lock_guard<std::mutex> lock(g_clientsLock);
        g_clients.push_back(&client);
    }
    if (t_users == 0)
        t_hook = SetWindowsHookExW(WH_GETMESSAGE, GetMessageProc, nullptr, GetCurrentThreadId());
    ++t_users;
    return t_hook != nullptr;
}

void ozMessageHook::Detach(ozHookClient& client)
{
    {
        std::lock_guard<std::mutex> lock(g_clientsLock);
        g_clients.erase(std::remove(g_clients.begin(), g_clients.end(), &client), g_clients.end());
    }
    if (t_users < 2 && t_hook != nullptr) {
        UnhookWindowsHookEx(t_hook);
        t_hook = nullptr;
    }
    if (t_users > 0)
        --t_users;
}

bool ozMessageHook::Installed()
{
    return t_hook != nullptr;
}

int ozMessageHook::Users()
{
    return t_users;
}
