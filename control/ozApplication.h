// The control module's per-process state: the application name that captions every message
// box, the current control (the one constructed last), and the host message list, which the
// grammar engine also takes its error texts from. The variable markers are process-wide as
// well (ozVariableMarkers). Everything runs on the host's user-interface thread; nothing here
// is guarded.
#pragma once

#include <string>

class CADMCtrl;

class ozApplication {
public:
    // The one application object, created on first use: it creates the host message list and
    // hands it to the engine; the list goes when the process ends.
    static ozApplication& Instance();

    ozApplication(const ozApplication&) = delete;
    ozApplication& operator=(const ozApplication&) = delete;

    const std::string& Name() const { return m_name; }
    void Name(const std::string& name) { m_name = name; }

    // The control constructed last, or null once it is gone.
    CADMCtrl* CurrentControl() const { return m_currentControl; }
    // Controls announce themselves on construction and leave on destruction; the last one to
    // leave releases the engine's grammar.
    void ControlCreated(CADMCtrl* control);
    void ControlDestroyed(CADMCtrl* control);

    // Files text under number in the host message list (replacing an earlier text); false when
    // memory runs out.
    bool AddMessage(unsigned short number, const char* text);
    // The host's text of number; empty when none was added.
    std::string MessageText(unsigned short number) const;

private:
    ozApplication();
    ~ozApplication();

    std::string m_name = "ozADM";
    CADMCtrl* m_currentControl = nullptr;
    int m_controlCount = 0;
    void* m_messages = nullptr;
};
