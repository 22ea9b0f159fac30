// The parts panel's widget in Qt: a scroll area whose controls are stacked from the top, 4 pixels
// in from every side, 2 pixels apart, each as wide as the area. The label of an edit, number,
// combo box, drop-down or list stands above it; heights come from the descriptions in dialog
// units of the panel's font, and labels grow to the lines their captions wrap to. When the
// controls are taller than the panel, it scrolls.
//
// The object owns its scroll area (Widget()), which the platform puts into the window of the
// view shown.
#pragma once

#include <memory>

#include "ozQtForm.h"
#include "ui/ozViewPlatform.h"

class QScrollArea;

class ozQtPanel final : public ozQtForm<ozPanelWidget> {
public:
    explicit ozQtPanel(QWidget* parent = nullptr);
    ~ozQtPanel() override;
    ozQtPanel(const ozQtPanel&) = delete;
    ozQtPanel& operator=(const ozQtPanel&) = delete;

    QScrollArea& Widget() const;
    // The widget of control id, for whoever stands for the user.
    QWidget* ControlWidget(int id) const { return m_controls.Widget(id); }
    // How many controls the panel shows.
    std::size_t Count() const;

    void Build(const std::vector<ozControlSpec>& controls, ozFormEvents* events) override;
    void Clear() override;

private:
    class Content;
    // Places the controls for the panel's width.
    void Layout();

    std::unique_ptr<QScrollArea> m_area;
    Content* m_content = nullptr;
    ozFormEvents* m_events = nullptr;
};
