// The control's look at messages before they are dispatched. Hosts do not always hand the
// messages of an embedded control to it (IOleInPlaceActiveObject::TranslateAccelerator), so
// the control watches its thread's message retrieval itself: a WH_GETMESSAGE hook, installed
// for a thread when the first control window there is created and removed with the last one.
// Every message removed from the queue for a window inside the current control (the control
// constructed last, ozApplication::CurrentControl) is offered to that control's
// pre-translation; a message handled there becomes WM_NULL, which nobody acts on.
#pragma once

#include <windows.h>

class CADMCtrl;

// A control window that takes part.
class ozHookClient {
public:
    virtual const CADMCtrl* Control() const = 0;
    // True when the message was handled and must not be dispatched.
    virtual bool PreTranslateMessage(const MSG& message) = 0;

protected:
    ~ozHookClient() = default;
};

namespace ozMessageHook {

// A control window of this thread was created: counts it, installing the hook for the first.
// False when the hook cannot be installed (the control then relies on its host).
bool Attach(ozHookClient& client);
// A control window of this thread is being destroyed: the hook is removed when fewer than two
// control windows use it, and the count goes down.
void Detach(ozHookClient& client);
// Whether this thread's hook is installed, and how many control windows use it.
bool Installed();
int Users();

}  // namespace ozMessageHook
