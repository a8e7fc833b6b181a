#include "ControlAccessible.h"

#include "ControlWidget.h"
#include "QtText.h"

#include "controls/Controls.h"
#include "controls/EventEntry.h"
#include "controls/KeyActions.h"
#include "controls/ScrollBar.h"

namespace velmo::qt {

namespace {

constexpr double WholeSlider = 100;

/// The control as a scroll bar; null if it is none.
controls::ScrollBar* ScrollBarOf(const ControlWidget& widget)
{
    controls::Control& control = widget.Model();
    return control.Kind == controls::ControlKind::ScrollBar
               ? &static_cast<controls::ScrollBar&>(control)
               : nullptr;
}

/// The control as an image of a slider; null if it is none.
const controls::Image* SliderOf(const ControlWidget& widget)
{
    if (widget.Model().Kind != controls::ControlKind::Image)
        return nullptr;
    const auto& image = static_cast<const controls::Image&>(widget.Model());
    return image.Knob() == nullptr ? nullptr : &image;
}

void Slide(const controls::Image& slider, double steps)
{
    controls::SlideTo(slider, slider.AccessibleValue() + steps * controls::SliderStep);
}

} // namespace

QAccessible::Role RoleOf(const ControlWidget& widget)
{
    if (widget.Model().Container != nullptr)
        return QAccessible::NoRole; // the whole speaks for its pieces
    if (SliderOf(widget) != nullptr)
        return QAccessible::Slider;
    if (widget.IsTabStop())
        return QAccessible::PushButton;
    if (widget.Model().Kind != controls::ControlKind::Image)
        return widget.AccessibleRole();
    const auto& image = static_cast<const controls::Image&>(widget.Model());
    return image.Picture.Get() ? widget.AccessibleRole() : QAccessible::NoRole;
}

ControlAccessible::ControlAccessible(ControlWidget& widget)
    : QAccessibleWidget(&widget, widget.AccessibleRole())
    , m_widget(widget)
{}

QAccessible::Role ControlAccessible::role() const
{
    return RoleOf(m_widget);
}

QString ControlAccessible::text(QAccessible::Text kind) const
{
    QString name = m_widget.AccessibleLabel();
    switch (kind) {
    case QAccessible::Name: return name;
    case QAccessible::Description: {
        const QString tip = FromBytes(m_widget.Model().ToolTipText.Get());
        return tip == name ? QString() : tip;
    }
    case QAccessible::Value:
        return SliderOf(m_widget) != nullptr
                   ? QString::number(qRound(currentValue().toDouble())) + QLatin1Char('%')
                   : m_widget.AccessibleText();
    default: return QAccessibleWidget::text(kind);
    }
}

void* ControlAccessible::interface_cast(QAccessible::InterfaceType type)
{
    const bool hasValue = SliderOf(m_widget) != nullptr || ScrollBarOf(m_widget) != nullptr;
    if (type == QAccessible::ValueInterface && hasValue)
        return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QStringList ControlAccessible::actionNames() const
{
    QStringList names = QAccessibleWidget::actionNames();
    if (!m_widget.isEnabled())
        return names;
    if (SliderOf(m_widget) != nullptr)
        names << increaseAction() << decreaseAction();
    else if (m_widget.IsTabStop())
        names.prepend(pressAction());
    return names;
}

void ControlAccessible::doAction(const QString& name)
{
    if (!actionNames().contains(name))
        return;
    const controls::Image* const slider = SliderOf(m_widget);
    if (name == pressAction())
        m_widget.Press();
    else if (name == increaseAction())
        Slide(*slider, 1);
    else if (name == decreaseAction())
        Slide(*slider, -1);
    else
        QAccessibleWidget::doAction(name);
}

QVariant ControlAccessible::currentValue() const
{
    if (const auto* bar = ScrollBarOf(m_widget))
        return bar->Position();
    return m_widget.AccessibleShare() * WholeSlider;
}

void ControlAccessible::setCurrentValue(const QVariant& value)
{
    if (controls::ScrollBar* const bar = ScrollBarOf(m_widget)) {
        const std::int32_t before = bar->Position();
        bar->SetPosition(value.toInt());
        controls::CallSlot(bar->Change, bar->Position() > before, bar->Position());
    } else if (const controls::Image* const slider = SliderOf(m_widget)) {
        controls::SlideTo(*slider, value.toDouble() / WholeSlider);
    }
}

QVariant ControlAccessible::maximumValue() const
{
    const auto* bar = ScrollBarOf(m_widget);
    return bar == nullptr ? QVariant(WholeSlider) : QVariant(bar->Max.Get());
}

QVariant ControlAccessible::minimumValue() const
{
    const auto* bar = ScrollBarOf(m_widget);
    return bar == nullptr ? QVariant(0.0) : QVariant(bar->Min.Get());
}

QVariant ControlAccessible::minimumStepSize() const
{
    return 1.0;
}

} // namespace velmo::qt
