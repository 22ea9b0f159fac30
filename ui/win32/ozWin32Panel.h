// The parts panel's widget on Windows: a child window (class ozADMPartsPanel) holding one
// control per ozControlSpec, stacked from the top 4 pixels in from every side, narrowed by the
// width of a vertical scroll bar, 2 pixels apart. The label of an edit, number, combo box,
// drop-down or list is a static above it; a number has an up-down control at its right. Heights
// come from the specs in dialog units of the panel's font; labels and check boxes grow to the
// lines their captions wrap to. When the controls are taller than the panel, it scrolls.
//
// The object exists before its window: until Create and after the window goes, Build only
// remembers the controls and every other call does nothing.
#pragma once

#include <windows.h>

#include "ozWin32Form.h"
#include "ui/ozViewPlatform.h"

class ozWin32Panel final : public ozWin32Form<ozPanelWidget> {
public:
    static constexpr const wchar_t* WindowClass = L"ozADMPartsPanel";

    ozWin32Panel() = default;
    ~ozWin32Panel() override;
    ozWin32Panel(const ozWin32Panel&) = delete;
    ozWin32Panel& operator=(const ozWin32Panel&) = delete;

    // Creates the panel window (visible, empty) in parent; false when it cannot be created.
    bool Create(HWND parent, HINSTANCE instance);
    HWND Window() const { return m_controls.Parent(); }
    // Removes the window class; a module about to be unloaded calls this.
    static void UnregisterClass(HINSTANCE instance);

    void Build(const std::vector<ozControlSpec>& controls, ozFormEvents* events) override;
    // A number without a spin control takes the width its arrows leave.
    void Range(int id, long long min, long long max, long long step) override;
    void Clear() override;
    // How many controls the panel shows.
    size_t Count() const { return m_items.size(); }

private:
    struct Item {
        ozControlSpec spec;
        HWND label = nullptr;
        HWND control = nullptr;
        HWND upDown = nullptr;
    };
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void CreateControls();
    void DestroyControls();
    // Places the controls for the panel's width and the scroll position.
    void Layout();
    void Scroll(int code);
    // The area text takes in the panel's font (DrawText's format), in pixels.
    RECT TextArea(const std::string& text, int width, UINT format) const;
    // The height of text wrapped to width; the width of text on one line.
    int TextHeight(const std::string& text, int width) const;
    int TextWidth(const std::string& text) const;

    std::vector<Item> m_items;
    ozFormEvents* m_events = nullptr;
    HINSTANCE m_instance = nullptr;
    HFONT m_font = nullptr;
    // The pixels of 4 horizontal and 8 vertical dialog units.
    int m_baseX = 6, m_baseY = 13;
    int m_scroll = 0;
    int m_contentHeight = 0;
};
