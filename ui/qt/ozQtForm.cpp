#include "ozQtForm.h"

#include <QtGui/QPainter>
#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>
#include <algorithm>
#include <cstdlib>

#include "ozQtSupport.h"
#include "platform/ozAsciiCase.h"
#include "ui/ozImages.h"
#include "ui/ozSpinStep.h"

namespace {

// Rows painted by the form: an image of the registry view's beside each label.
class ImageRowsWidget final : public QWidget {
public:
    ImageRowsWidget(QWidget* parent, const ozQtFormControls& form) : QWidget(parent), m_form(form)
    {
    }
    std::vector<std::pair<int, std::string>> rows;
    bool withImages = false;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        if (!withImages)
            return;
        static const std::vector<QIcon> icons = ozQtBitmaps(ozRegistryViewBitmaps());
        const int rowHeight = m_form.PixelsY(15);
        const int imageWidth = m_form.PixelsX(11), imageHeight = m_form.PixelsY(10);
        int top = 0;
        for (const auto& [image, label] : rows) {
            if (image >= 0 && image < static_cast<int>(icons.size()))
                icons[image].paint(&painter, QRect(0, top, imageWidth, imageHeight));
            painter.drawText(QRect(imageWidth + 10, top, width() - imageWidth - 10, imageHeight),
                             Qt::AlignVCenter | Qt::AlignLeft, ozQtText(label));
            top += rowHeight;
        }
    }

private:
    const ozQtFormControls& m_form;
};

// Calls back when the watched widget gets the keyboard focus.
class FocusReporter final : public QObject {
public:
    FocusReporter(QObject* parent, std::function<void()> gained)
        : QObject(parent), m_gained(std::move(gained))
    {
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::FocusIn)
            m_gained();
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> m_gained;
};

bool TwoColumns(const ozControlSpec& spec)
{
    return spec.kind == ozControlKind::List && (spec.style & ozControlTwoColumns) != 0;
}

bool MultiLine(const ozControlSpec& spec)
{
    return spec.kind == ozControlKind::TextBox ||
           (spec.kind == ozControlKind::Edit && (spec.style & ozControlMultiLine) != 0);
}

// A multi-line edit's text with its lines ending in "\r\n", and back.
std::string WithCarriageReturns(const QString& text)
{
    QString lines = text;
    lines.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    return ozQtNarrow(lines);
}

QString WithoutCarriageReturns(const std::string& text)
{
    QString lines = ozQtText(text);
    lines.remove(QLatin1Char('\r'));
    return lines;
}

std::vector<std::string> SortedRows(const ozControlSpec& spec, std::vector<std::string> rows)
{
    if ((spec.style & ozControlSorted) != 0)
        std::stable_sort(rows.begin(), rows.end(), [](const std::string& a, const std::string& b) {
            return ozAsciiLowerCased(a) < ozAsciiLowerCased(b);
        });
    return rows;
}

}  // namespace

ozQtFormControls::~ozQtFormControls()
{
    Destroy();
}

void ozQtFormControls::Destroy()
{
    ozQtQuiet quietly(m_quiet);
    for (Control& control : m_controls) {
        control.tree.reset();
        delete control.label;
        delete control.arrows;
        delete control.widget;
    }
    m_controls.clear();
    for (QButtonGroup* set : m_radioSets)
        delete set;
    m_radioSets.clear();
}

ozQtFormControls::Control* ozQtFormControls::Find(int id)
{
    for (Control& control : m_controls)
        if (control.spec.id == id && control.widget != nullptr)
            return &control;
    return nullptr;
}

const ozQtFormControls::Control* ozQtFormControls::Find(int id) const
{
    return const_cast<ozQtFormControls*>(this)->Find(id);
}

QWidget* ozQtFormControls::Widget(int id) const
{
    const Control* control = Find(id);
    return control != nullptr ? control->widget.data() : nullptr;
}

void ozQtFormControls::Raise(int id, ozFormEvent event) const
{
    if (m_quiet == 0 && m_report)
        m_report(id, event);
}

void ozQtFormControls::Create(QWidget& parent, const std::vector<ozControlSpec>& specs,
                              Report report)
{
    Destroy();
    m_report = std::move(report);
    const QFontMetrics metrics(parent.font());
    m_baseX = std::max(1, metrics.averageCharWidth());
    m_baseY = std::max(1, metrics.height());
    ozQtQuiet quietly(m_quiet);
    m_controls.reserve(specs.size());
    QButtonGroup* radios = nullptr;
    for (const ozControlSpec& spec : specs) {
        m_controls.push_back(Control{});
        Control& control = m_controls.back();
        control.spec = spec;
        if (spec.kind == ozControlKind::Group)
            radios = nullptr;
        if (ozControlHasLabel(spec)) {
            control.label = new QLabel(ozQtText(spec.caption), &parent);
            control.label->setWordWrap(true);
        }
        control.widget = CreateWidget(control, parent);
        control.widget->hide();
        if (spec.kind == ozControlKind::Radio) {
            if (radios == nullptr) {
                radios = new QButtonGroup;
                m_radioSets.push_back(radios);
            }
            radios->addButton(static_cast<QRadioButton*>(control.widget.data()));
        }
    }
}

QWidget* ozQtFormControls::CreateWidget(Control& control, QWidget& parent)
{
    const ozControlSpec& spec = control.spec;
    const int id = spec.id;
    const QString caption = ozQtText(spec.caption);
    switch (spec.kind) {
        case ozControlKind::Label: {
            auto* label = new QLabel(caption, &parent);
            label->setWordWrap(true);
            label->setTextFormat(Qt::PlainText);
            return label;
        }
        case ozControlKind::Edit:
        case ozControlKind::Number:
        case ozControlKind::TextBox: {
            if (MultiLine(spec)) {
                auto* edit = new QPlainTextEdit(&parent);
                edit->setReadOnly(spec.kind == ozControlKind::TextBox ||
                                  (spec.style & ozControlReadOnly) != 0);
                QObject::connect(edit, &QPlainTextEdit::textChanged, edit,
                                 [this, id] { Raise(id, ozFormEvent::TextChanged); });
                return edit;
            }
            auto* edit = new QLineEdit(&parent);
            edit->setReadOnly((spec.style & ozControlReadOnly) != 0);
            if (spec.maxLength > 0)
                edit->setMaxLength(spec.maxLength);
            if ((spec.style & ozControlReportOnLeave) != 0) {
                QObject::connect(edit, &QLineEdit::textEdited, edit, [this, id] {
                    if (Control* found = Find(id))
                        found->typed = true;
                });
                QObject::connect(edit, &QLineEdit::editingFinished, edit, [this, id] {
                    Control* found = Find(id);
                    if (found == nullptr || !found->typed)
                        return;
                    found->typed = false;
                    Raise(id, ozFormEvent::TextChanged);
                });
            } else {
                QObject::connect(edit, &QLineEdit::textEdited, edit,
                                 [this, id] { Raise(id, ozFormEvent::TextChanged); });
            }
            if (spec.kind == ozControlKind::Number) {
                control.arrows = new QWidget(&parent);
                auto* column = new QVBoxLayout(control.arrows);
                column->setContentsMargins(0, 0, 0, 0);
                column->setSpacing(0);
                for (int delta : {1, -1}) {
                    auto* arrow = new QToolButton(control.arrows);
                    arrow->setArrowType(delta > 0 ? Qt::UpArrow : Qt::DownArrow);
                    arrow->setAutoRepeat(true);
                    arrow->setFocusPolicy(Qt::NoFocus);
                    arrow->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
                    column->addWidget(arrow);
                    QObject::connect(arrow, &QToolButton::clicked, arrow, [this, id, delta] {
                        if (Control* found = Find(id))
                            Step(*found, delta);
                    });
                }
                control.arrows->hide();
            }
            return edit;
        }
        case ozControlKind::CheckBox: {
            auto* box = new QCheckBox(caption, &parent);
            QObject::connect(box, &QCheckBox::clicked, box,
                             [this, id] { Raise(id, ozFormEvent::Clicked); });
            return box;
        }
        case ozControlKind::Radio: {
            auto* radio = new QRadioButton(caption, &parent);
            QObject::connect(radio, &QRadioButton::clicked, radio,
                             [this, id] { Raise(id, ozFormEvent::Clicked); });
            return radio;
        }
        case ozControlKind::Button: {
            auto* button = new QPushButton(caption, &parent);
            button->setAutoDefault(false);
            button->setDefault((spec.style & ozControlDefault) != 0);
            QObject::connect(button, &QPushButton::clicked, button,
                             [this, id] { Raise(id, ozFormEvent::Clicked); });
            return button;
        }
        case ozControlKind::Group:
            return new QGroupBox(caption, &parent);
        case ozControlKind::ComboBox:
        case ozControlKind::DropDown: {
            auto* combo = new QComboBox(&parent);
            combo->setEditable(spec.kind == ozControlKind::ComboBox);
            combo->setInsertPolicy(QComboBox::NoInsert);
            QObject::connect(combo, &QComboBox::activated, combo,
                             [this, id] { Raise(id, ozFormEvent::SelectionChanged); });
            if (combo->lineEdit() != nullptr) {
                if (spec.maxLength > 0)
                    combo->lineEdit()->setMaxLength(spec.maxLength);
                QObject::connect(combo->lineEdit(), &QLineEdit::textEdited, combo,
                                 [this, id] { Raise(id, ozFormEvent::TextChanged); });
            }
            return combo;
        }
        case ozControlKind::List: {
            QAbstractItemView* view = nullptr;
            if (TwoColumns(spec)) {
                auto* list = new QTreeWidget(&parent);
                list->setRootIsDecorated(false);
                QStringList captions;
                for (const std::string& column : spec.columns)
                    captions.append(ozQtText(column));
                list->setColumnCount(std::max<int>(1, captions.size()));
                list->setHeaderLabels(captions);
                QObject::connect(list, &QTreeWidget::itemSelectionChanged, list,
                                 [this, id] { Raise(id, ozFormEvent::SelectionChanged); });
                view = list;
            } else {
                auto* list = new QListWidget(&parent);
                QObject::connect(list, &QListWidget::itemSelectionChanged, list,
                                 [this, id] { Raise(id, ozFormEvent::SelectionChanged); });
                view = list;
            }
            view->setSelectionMode(QAbstractItemView::SingleSelection);
            view->setEditTriggers(QAbstractItemView::NoEditTriggers);
            if ((spec.style & ozControlReportsFocus) != 0)
                view->installEventFilter(
                    new FocusReporter(view, [this, id] { Raise(id, ozFormEvent::FocusGained); }));
            return view;
        }
        case ozControlKind::Tree: {
            control.tree = std::make_unique<ozQtTree>(&parent);
            QWidget* tree = &control.tree->Widget();
            if ((spec.style & ozControlReportsFocus) != 0)
                tree->installEventFilter(
                    new FocusReporter(tree, [this, id] { Raise(id, ozFormEvent::FocusGained); }));
            return tree;
        }
        case ozControlKind::ImageRows:
            return new ImageRowsWidget(&parent, *this);
    }
    return new QWidget(&parent);
}

void ozQtFormControls::Step(Control& control, int delta)
{
    auto* edit = qobject_cast<QLineEdit*>(control.widget.data());
    if (edit == nullptr || !edit->isEnabled())
        return;
    const long long stepped =
        ozSpinStep(ozQtNarrow(edit->text()), control.min, control.max, control.step, delta);
    {
        ozQtQuiet quietly(m_quiet);
        edit->setText(QString::number(stepped));
    }
    // The arrows change the text as typing does.
    Raise(control.spec.id, ozFormEvent::TextChanged);
}

void ozQtFormControls::ReportTyping()
{
    for (Control& control : m_controls)
        if (control.typed) {
            control.typed = false;
            Raise(control.spec.id, ozFormEvent::TextChanged);
        }
}

void ozQtFormControls::Text(int id, const std::string& text)
{
    Control* control = Find(id);
    if (control == nullptr)
        return;
    ozQtQuiet quietly(m_quiet);
    QWidget* widget = control->widget;
    const QString value = ozQtText(text);
    if (auto* edit = qobject_cast<QLineEdit*>(widget)) {
        edit->setText(value);
        control->typed = false;
    } else if (auto* lines = qobject_cast<QPlainTextEdit*>(widget)) {
        lines->setPlainText(WithoutCarriageReturns(text));
    } else if (auto* combo = qobject_cast<QComboBox*>(widget)) {
        if (combo->isEditable())
            combo->setEditText(value);
        else
            combo->setCurrentIndex(combo->findText(value, Qt::MatchExactly));
    } else if (auto* label = qobject_cast<QLabel*>(widget)) {
        label->setText(value);
    } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
        button->setText(value);
    } else if (auto* group = qobject_cast<QGroupBox*>(widget)) {
        group->setTitle(value);
    }
}

std::string ozQtFormControls::Text(int id) const
{
    const Control* control = Find(id);
    if (control == nullptr)
        return {};
    QWidget* widget = control->widget;
    if (auto* edit = qobject_cast<QLineEdit*>(widget))
        return ozQtNarrow(edit->text());
    if (auto* lines = qobject_cast<QPlainTextEdit*>(widget))
        return WithCarriageReturns(lines->toPlainText());
    if (auto* combo = qobject_cast<QComboBox*>(widget))
        return ozQtNarrow(combo->currentText());
    if (auto* label = qobject_cast<QLabel*>(widget))
        return ozQtNarrow(label->text());
    if (auto* button = qobject_cast<QAbstractButton*>(widget))
        return ozQtNarrow(button->text());
    if (auto* group = qobject_cast<QGroupBox*>(widget))
        return ozQtNarrow(group->title());
    if (control->tree != nullptr)
        return control->tree->Text(control->tree->Selection());
    if (auto* list = qobject_cast<QListWidget*>(widget))
        return list->currentRow() >= 0 && list->currentItem()->isSelected()
                   ? ozQtNarrow(list->currentItem()->text())
                   : std::string();
    if (auto* list = qobject_cast<QTreeWidget*>(widget)) {
        const int row = SelectedRow(id);
        return row >= 0 ? ozQtNarrow(list->topLevelItem(row)->text(0)) : std::string();
    }
    return {};
}

void ozQtFormControls::Enable(int id, bool enabled)
{
    Control* control = Find(id);
    if (control == nullptr)
        return;
    control->widget->setEnabled(enabled);
    if (control->label != nullptr)
        control->label->setEnabled(enabled);
    if (control->arrows != nullptr)
        control->arrows->setEnabled(enabled);
}

bool ozQtFormControls::Enabled(int id) const
{
    const Control* control = Find(id);
    return control != nullptr && control->widget->isEnabled();
}

void ozQtFormControls::Check(int id, bool checked)
{
    Control* control = Find(id);
    auto* button = control != nullptr ? qobject_cast<QAbstractButton*>(control->widget) : nullptr;
    if (button == nullptr || !button->isCheckable())
        return;
    ozQtQuiet quietly(m_quiet);
    // An exclusive set keeps one button checked: unchecking one needs the set open for a moment.
    QButtonGroup* set = button->group();
    if (set != nullptr && !checked)
        set->setExclusive(false);
    button->setChecked(checked);
    if (set != nullptr && !checked)
        set->setExclusive(true);
}

bool ozQtFormControls::Checked(int id) const
{
    const Control* control = Find(id);
    auto* button = control != nullptr ? qobject_cast<QAbstractButton*>(control->widget) : nullptr;
    return button != nullptr && button->isChecked();
}

void ozQtFormControls::Rows(int id, const std::vector<std::string>& rows)
{
    Control* control = Find(id);
    if (control == nullptr)
        return;
    ozQtQuiet quietly(m_quiet);
    const std::vector<std::string> sorted = SortedRows(control->spec, rows);
    QWidget* widget = control->widget;
    if (control->tree != nullptr) {
        control->tree->DeleteAll();
        for (const std::string& row : rows)
            control->tree->Append(ozNoItem, row, -1, -1, false, nullptr);
    } else if (auto* combo = qobject_cast<QComboBox*>(widget)) {
        const QString text = combo->currentText();
        combo->clear();
        for (const std::string& row : sorted)
            combo->addItem(ozQtText(row));
        combo->setCurrentIndex(-1);
        if (combo->isEditable())
            combo->setEditText(text);
    } else if (auto* list = qobject_cast<QListWidget*>(widget)) {
        list->clear();
        for (const std::string& row : sorted)
            list->addItem(ozQtText(row));
    } else if (auto* table = qobject_cast<QTreeWidget*>(widget)) {
        table->clear();
        for (const std::string& row : sorted)
            table->addTopLevelItem(new QTreeWidgetItem(ozQtText(row).split(QLatin1Char('\t'))));
    }
}

std::vector<std::string> ozQtFormControls::Rows(int id) const
{
    std::vector<std::string> rows;
    const Control* control = Find(id);
    if (control == nullptr)
        return rows;
    QWidget* widget = control->widget;
    if (control->tree != nullptr) {
        for (ozTreeItem item = control->tree->Root(); item != ozNoItem;
             item = control->tree->NextSibling(item))
            rows.push_back(control->tree->Text(item));
    } else if (auto* combo = qobject_cast<QComboBox*>(widget)) {
        for (int row = 0; row < combo->count(); ++row)
            rows.push_back(ozQtNarrow(combo->itemText(row)));
    } else if (auto* list = qobject_cast<QListWidget*>(widget)) {
        for (int row = 0; row < list->count(); ++row)
            rows.push_back(ozQtNarrow(list->item(row)->text()));
    } else if (auto* table = qobject_cast<QTreeWidget*>(widget)) {
        for (int row = 0; row < table->topLevelItemCount(); ++row) {
            QStringList columns;
            for (int column = 0; column < table->columnCount(); ++column)
                columns.append(table->topLevelItem(row)->text(column));
            rows.push_back(ozQtNarrow(columns.join(QLatin1Char('\t'))));
        }
    }
    return rows;
}

void ozQtFormControls::SelectRow(int id, int row)
{
    Control* control = Find(id);
    if (control == nullptr)
        return;
    ozQtQuiet quietly(m_quiet);
    QWidget* widget = control->widget;
    if (control->tree != nullptr) {
        ozTreeItem item = control->tree->Root();
        for (int at = 0; at < row && item != ozNoItem; ++at)
            item = control->tree->NextSibling(item);
        control->tree->Select(row >= 0 ? item : ozNoItem);
    } else if (auto* combo = qobject_cast<QComboBox*>(widget)) {
        const int index = row >= 0 && row < combo->count() ? row : -1;
        if (index >= 0 || !combo->isEditable())
            combo->setCurrentIndex(index);
    } else if (auto* list = qobject_cast<QListWidget*>(widget)) {
        list->clearSelection();
        if (QListWidgetItem* item = row >= 0 ? list->item(row) : nullptr) {
            list->setCurrentItem(item);
            item->setSelected(true);
            list->scrollToItem(item);
        }
    } else if (auto* table = qobject_cast<QTreeWidget*>(widget)) {
        table->clearSelection();
        if (QTreeWidgetItem* item = row >= 0 ? table->topLevelItem(row) : nullptr) {
            table->setCurrentItem(item);
            item->setSelected(true);
            table->scrollToItem(item);
        }
    }
}

int ozQtFormControls::SelectedRow(int id) const
{
    const Control* control = Find(id);
    if (control == nullptr)
        return -1;
    QWidget* widget = control->widget;
    if (control->tree != nullptr) {
        int row = 0;
        for (ozTreeItem item = control->tree->Root(); item != ozNoItem;
             item = control->tree->NextSibling(item), ++row)
            if (item == control->tree->Selection())
                return row;
        return -1;
    }
    if (auto* combo = qobject_cast<QComboBox*>(widget))
        return combo->currentIndex();
    if (auto* list = qobject_cast<QListWidget*>(widget)) {
        const QList<QListWidgetItem*> items = list->selectedItems();
        return items.isEmpty() ? -1 : list->row(items.front());
    }
    if (auto* table = qobject_cast<QTreeWidget*>(widget)) {
        const QList<QTreeWidgetItem*> items = table->selectedItems();
        return items.isEmpty() ? -1 : table->indexOfTopLevelItem(items.front());
    }
    return -1;
}

void ozQtFormControls::Range(int id, long long min, long long max, long long step)
{
    Control* control = Find(id);
    if (control == nullptr)
        return;
    control->min = min;
    control->max = max;
    control->step = step;
    if (control->placed)
        Place(*control, control->area);
}

int ozQtFormControls::FieldHeight(const Control& control, int height) const
{
    const ozControlKind kind = control.spec.kind;
    if (kind == ozControlKind::ComboBox || kind == ozControlKind::DropDown)
        return control.widget->sizeHint().height();
    return height;
}

void ozQtFormControls::Place(Control& control, const QRect& area)
{
    control.area = area;
    control.placed = true;
    QRect field = area;
    if (control.arrows != nullptr) {
        const bool arrows = control.step != 0;
        const int width = arrows ? std::min(area.width() / 2, area.height() * 3 / 4) : 0;
        field.setWidth(area.width() - width);
        control.arrows->setGeometry(field.right() + 1, area.top(), width, area.height());
        control.arrows->setVisible(arrows);
    }
    control.widget->setGeometry(field);
    control.widget->show();
}

void ozQtFormControls::Focus(int id)
{
    if (Control* control = Find(id))
        control->widget->setFocus();
}

void ozQtFormControls::ImageRows(int id, const std::vector<std::pair<int, std::string>>& rows,
                                 bool withImages)
{
    Control* control = Find(id);
    auto* painted =
        control != nullptr ? dynamic_cast<ImageRowsWidget*>(control->widget.data()) : nullptr;
    if (painted == nullptr)
        return;
    painted->rows = rows;
    painted->withImages = withImages;
    painted->update();
}

ozTreeWidget* ozQtFormControls::TreeControl(int id)
{
    Control* control = Find(id);
    return control != nullptr ? control->tree.get() : nullptr;
}
