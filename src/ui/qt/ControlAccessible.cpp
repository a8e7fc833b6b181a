#include "ControlAccessible.h"

#include "ControlWidget.h"

#include <QAccessibleWidget>

namespace velmo::qt {

namespace {

/// A slider's value runs from 0 to 100 and is only read: seeking belongs to the program's own keys
/// and mouse.
class ControlAccessible final
    : public QAccessibleWidget
    , public QAccessibleValueInterface
{
public:
    explicit ControlAccessible(ControlWidget& widget)
        : QAccessibleWidget(&widget, widget.AccessibleRole())
        , m_widget(widget)
    {}

    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Name)
            return m_widget.AccessibleLabel();
        if (kind != QAccessible::Value)
            return QAccessibleWidget::text(kind);
        return HasShare() ? QString::number(qRound(Percent())) + QLatin1Char('%')
                          : m_widget.AccessibleText();
    }
    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface && HasShare())
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QVariant currentValue() const override { return Percent(); }
    void setCurrentValue(const QVariant& /*value*/) override {}
    QVariant maximumValue() const override { return 100.0; }
    QVariant minimumValue() const override { return 0.0; }
    QVariant minimumStepSize() const override { return 1.0; }

private:
    bool HasShare() const { return m_widget.AccessibleShare() >= 0; }
    double Percent() const { return m_widget.AccessibleShare() * 100; }

    ControlWidget& m_widget;
};

QAccessibleInterface* MakeAccessible(const QString& /*className*/, QObject* object)
{
    auto* widget = dynamic_cast<ControlWidget*>(object);
    // The caller keeps the interface and destroys it.
    return widget == nullptr ? nullptr : new ControlAccessible(*widget);
}

} // namespace

void InstallControlAccessibility()
{
    QAccessible::installFactory(MakeAccessible);
}

} // namespace velmo::qt
