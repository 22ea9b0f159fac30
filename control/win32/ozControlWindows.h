// The control window's child windows, and the control's views over them: a frame window that
// fills the control's client area, the three views (policy view for display mode 0, registry
// view for 1, registry-value grid for 2) and a hidden keyboard-handler window that takes the
// Tab key; the views and the keyboard window cover the client area less a margin on the right
// and at the bottom. Each child has a window class of its own (the names below), so that a
// host or a test can find it under the control's window.
//
// The object exists before its windows: until Create and after Forget every call leaves the
// windows alone and no view is visible, so that the control can hold it from construction.
// The views have no contents yet; Show makes the view visible, Hide hides it.
#pragma once

#include <windows.h>

#include <array>

class ozControlWindows final {
public:
    // The space left free on the right and at the bottom of the views, in pixels.
    static constexpr int Margin = 6;
    // The window classes of the children.
    static constexpr const wchar_t* FrameClass = L"ozADMFrame";
    static constexpr const wchar_t* PolicyViewClass = L"ozADMPolicyView";
    static constexpr const wchar_t* RegistryViewClass = L"ozADMRegistryView";
    static constexpr const wchar_t* ValueGridClass = L"ozADMValueGrid";
    static constexpr const wchar_t* KeyboardClass = L"ozADMKeyboard";

    ozControlWindows() = default;
    ozControlWindows(const ozControlWindows&) = delete;
    ozControlWindows& operator=(const ozControlWindows&) = delete;

    // Creates the children in control (all views hidden) with window classes registered for
    // instance; false, with nothing left behind, when a window cannot be created.
    bool Create(HWND control, HINSTANCE instance);
    // The control's window is going: its children go with it.
    void Forget();
    // Places the children in the control's client area.
    void Layout() const;
    // Removes the window classes; a module about to be unloaded calls this.
    static void UnregisterClasses(HINSTANCE instance);

    HWND Control() const { return m_control; }
    HWND Frame() const { return m_frame; }
    // The view of displayMode; null for a mode that is none or before Create.
    HWND View(int displayMode) const;
    std::array<HWND, 3> Views() const { return {m_views[0], m_views[1], m_views[2]}; }
    HWND Keyboard() const { return m_keyboard; }

    // What the control does with a message before it is dispatched: a key-down of Tab goes to
    // the keyboard window, a key-down or key-up of End, Home or an arrow key to the window with
    // the focus (containers would otherwise keep those keys for themselves). Only messages for
    // the control's window or its descendants are taken; true when the message was handled
    // here and must not be dispatched.
    bool PreTranslateMessage(const MSG& message) const;

private:
    HWND m_control = nullptr;
    HWND m_frame = nullptr;
    HWND m_views[3] = {nullptr, nullptr, nullptr};
    HWND m_keyboard = nullptr;
};
