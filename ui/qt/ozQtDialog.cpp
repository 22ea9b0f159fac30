#include "ozQtDialog.h"

#include <QtWidgets/QLabel>
#include <algorithm>
#include <map>

#include "ozQtSupport.h"

namespace {

constexpr int LabelHeight = 8;
constexpr int LabelGap = 3;

// Whether a control's label goes above it rather than in front of it.
bool SpansRows(const ozControlSpec& spec)
{
    return spec.kind == ozControlKind::List || spec.kind == ozControlKind::Tree ||
           (spec.style & ozControlMultiLine) != 0;
}

}  // namespace

ozQtDialogWindow::ozQtDialogWindow(ozDialog& dialog, QWidget* parent, bool modeless)
    : QDialog(parent), m_dialog(dialog), m_modeless(modeless)
{
    setWindowTitle(ozQtText(dialog.Layout().caption));
    Build();
}

ozQtDialogWindow::~ozQtDialogWindow()
{
    m_form.Controls().Destroy();
}

QWidget* ozQtDialogWindow::ControlWidget(int id) const
{
    return const_cast<ozQtForm<ozForm>&>(m_form).Controls().Widget(id);
}

void ozQtDialogWindow::Build()
{
    const ozDialogTemplate& layout = m_dialog.Layout();
    ozQtFormControls& controls = m_form.Controls();
    controls.Create(*this, layout.controls,
                    [this](int id, ozFormEvent event) { Command(id, event); });
    // One-line controls of one column share the widest of their labels.
    std::map<int, int> columnLabels;
    for (const ozQtFormControls::Control& control : controls.Controls())
        if (control.label != nullptr && !SpansRows(control.spec)) {
            int& column = columnLabels[control.spec.x];
            column = std::max(column, control.label->sizeHint().width());
        }
    for (ozQtFormControls::Control& control : controls.Controls()) {
        const ozControlSpec& spec = control.spec;
        QRect area(controls.PixelsX(spec.x), controls.PixelsY(spec.y), controls.PixelsX(spec.width),
                   controls.FieldHeight(control, controls.PixelsY(spec.height)));
        if (control.label != nullptr && ozControlHasLabel(spec)) {
            const int labelHeight = controls.PixelsY(LabelHeight);
            if (SpansRows(spec)) {
                control.label->setGeometry(area.left(), area.top(), area.width(), labelHeight);
                area.setTop(area.top() + labelHeight + 1);
            } else {
                const int labelWidth = std::min(area.width() / 2, columnLabels[spec.x]);
                control.label->setGeometry(area.left(), area.top(), labelWidth, area.height());
                control.label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
                area.setLeft(area.left() + labelWidth + controls.PixelsX(LabelGap));
            }
            control.label->show();
        }
        controls.Place(control, area);
        // Frames lie behind the controls they hold.
        if (spec.kind == ozControlKind::Group)
            control.widget->lower();
    }
    setFixedSize(controls.PixelsX(layout.width), controls.PixelsY(layout.height));
    m_dialog.Init(m_form);
}

void ozQtDialogWindow::Command(int id, ozFormEvent event)
{
    if (id == ozDialogOK && event == ozFormEvent::Clicked) {
        PressOK();
        return;
    }
    if (id == ozDialogCancel && event == ozFormEvent::Clicked) {
        reject();
        return;
    }
    m_dialog.Command(m_form, id, event);
}

void ozQtDialogWindow::PressOK()
{
    m_form.Controls().ReportTyping();
    if (!m_dialog.Accept(m_form))
        return;
    if (m_modeless)
        hide();
    else
        accept();
}

void ozQtDialogWindow::reject()
{
    if (m_modeless)
        hide();
    else
        QDialog::reject();
}

ozQtModeless::ozQtModeless(std::unique_ptr<ozQtDialogWindow> window) : m_window(std::move(window))
{
}

ozQtModeless::~ozQtModeless() = default;

void ozQtModeless::Show(bool visible)
{
    m_window->setVisible(visible);
}

bool ozQtModeless::Shown() const
{
    return m_window->isVisible();
}
