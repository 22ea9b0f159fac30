// What the view calls of a script drive: the control's views on headless widgets, and the
// host user interface whose answers to questions a script can change (Answer).
#pragma once

class ozConsoleHostUI;
class ozHeadlessPlatform;
class ozViews;

struct ozScriptViews {
    ozViews& views;
    ozHeadlessPlatform& platform;
    ozConsoleHostUI& ui;
};
