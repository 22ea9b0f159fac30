#include "ozQtPanel.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QScrollArea>
#include <algorithm>

namespace {

constexpr int Margin = 4;
constexpr int Gap = 2;

}  // namespace

// The panel's area inside the scroll area: placing the controls follows its width.
class ozQtPanel::Content final : public QWidget {
public:
    explicit Content(ozQtPanel& panel) : m_panel(panel) {}

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QWidget::resizeEvent(event);
        if (!m_placing)
            m_panel.Layout();
    }

private:
    friend class ozQtPanel;
    ozQtPanel& m_panel;
    bool m_placing = false;
};

ozQtPanel::ozQtPanel(QWidget* parent) : m_area(std::make_unique<QScrollArea>(parent))
{
    m_content = new Content(*this);
    m_area->setWidget(m_content);
    m_area->setWidgetResizable(true);
    m_area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

ozQtPanel::~ozQtPanel()
{
    m_controls.Destroy();
}

QScrollArea& ozQtPanel::Widget() const
{
    return *m_area;
}

std::size_t ozQtPanel::Count() const
{
    return const_cast<ozQtFormControls&>(m_controls).Controls().size();
}

void ozQtPanel::Build(const std::vector<ozControlSpec>& controls, ozFormEvents* events)
{
    m_events = events;
    m_controls.Create(*m_content, controls, [this](int id, ozFormEvent event) {
        if (m_events != nullptr)
            m_events->Command(*this, id, event);
    });
    Layout();
}

void ozQtPanel::Clear()
{
    m_events = nullptr;
    m_controls.Destroy();
    Layout();
}

void ozQtPanel::Layout()
{
    m_content->m_placing = true;
    const int width = std::max(1, m_area->viewport()->width() - 2 * Margin);
    int top = Margin;
    for (ozQtFormControls::Control& control : m_controls.Controls()) {
        if (control.label != nullptr) {
            const int height = control.label->heightForWidth(width);
            control.label->setGeometry(Margin, top, width, height);
            control.label->show();
            top += height + Gap;
        }
        int height = m_controls.FieldHeight(control, m_controls.PixelsY(control.spec.height));
        if (control.spec.kind == ozControlKind::Label) {
            height = std::max(height, control.widget->heightForWidth(width));
        } else if (control.spec.kind != ozControlKind::List &&
                   control.spec.kind != ozControlKind::Tree &&
                   control.spec.kind != ozControlKind::TextBox &&
                   (control.spec.style & ozControlMultiLine) == 0) {
            height = std::max(height, control.widget->sizeHint().height());
        }
        m_controls.Place(control, QRect(Margin, top, width, height));
        top += height + Gap;
    }
    m_content->setMinimumHeight(top + Margin - Gap);
    m_content->m_placing = false;
}
