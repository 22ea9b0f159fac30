#include "ozMessageBoxHostUI.h"

#include <windows.h>

#include <cstdio>
#include <cstdlib>

#include "control/ozApplication.h"

namespace {

const char* KindName(tHOSTMESSAGEKIND kind)
{
    switch (kind) {
        case HostMessageQuestion:
            return "question";
        case HostMessageWarning:
            return "warning";
        case HostMessageInfo:
            return "information";
        case HostMessageError:
            break;
    }
    return "error";
}

UINT BoxStyle(tHOSTMESSAGEKIND kind)
{
    switch (kind) {
        case HostMessageQuestion:
            // Questions come before deleting: No is the answer a stray Enter gives.
            return MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2;
        case HostMessageWarning:
            return MB_OK | MB_ICONWARNING;
        case HostMessageInfo:
            return MB_OK | MB_ICONINFORMATION;
        case HostMessageError:
            break;
    }
    return MB_OK | MB_ICONERROR;
}

}  // namespace

bool ozMessageBoxHostUI::ShowMessage(tHOSTMESSAGEKIND kind, const std::string& text)
{
    const std::string& caption = ozApplication::Instance().Name();
    if (std::getenv("OZADM_NO_MESSAGE_BOXES") != nullptr) {
        std::fprintf(stderr, "%s %s: %s\n", caption.c_str(), KindName(kind), text.c_str());
        std::fflush(stderr);
        return false;
    }
    // Owned by the window the user works in, so that the box stays in front of the host.
    int answer = MessageBoxA(GetActiveWindow(), text.c_str(), caption.c_str(),
                             BoxStyle(kind) | MB_SETFOREGROUND);
    return answer == IDYES;
}
