// One control with ozadm's user interface, prepared as the options say: the host string
// table added, the grammar loaded, the profile library and the registry chosen. Bundled files
// (the grammar, the string tables) are found as ozBundledFile says.
#pragma once

#include <memory>
#include <ostream>
#include <string>

#include "control/CADMCtrl.h"
#include "ozConsoleHostUI.h"
#include "ozHostOptions.h"
#include "ozScriptViews.h"
#include "ui/headless/ozHeadlessPlatform.h"
#include "ui/ozViews.h"

class ozHostSession {
public:
    // Messages of the control go to `messages`.
    ozHostSession(const ozHostOptions& options, std::ostream& messages);

    // Adds the string table and loads the grammar as the options say and chooses the registry
    // and the library. False, after telling err why (or the control showing its message), when
    // one of them fails.
    bool Prepare(std::ostream& err);

    CADMCtrl& Control() { return m_control; }
    // The control's views on headless widgets, for the script's view calls.
    ozScriptViews ScriptViews() { return {m_views, m_platform, m_ui}; }

private:
    ozHostOptions m_options;
    ozConsoleHostUI m_ui;
    ozHeadlessPlatform m_platform;
    ozViews m_views;
    CADMCtrl m_control;
};
