#pragma once

#include <QAccessibleWidget>

namespace velmo::qt {

class ControlWidget;

/// What screen readers know of a control: name, role, text and value, and what they may do with it.
/// A slider's value runs from 0 to 100; a new one is set by the mouse events of a drag. A scroll
/// bar's value is its position.
class ControlAccessible
    : public QAccessibleWidget
    , public QAccessibleValueInterface
{
public:
    explicit ControlAccessible(ControlWidget& widget);

    QAccessible::Role role() const override;
    QString text(QAccessible::Text kind) const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString& name) override;

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant& value) override;
    QVariant maximumValue() const override;
    QVariant minimumValue() const override;
    QVariant minimumStepSize() const override;

private:
    ControlWidget& m_widget;
};

/// The role of a control; `NoRole` for one that only carries or divides others, and for a piece of
/// another control: screen readers are not told of these.
QAccessible::Role RoleOf(const ControlWidget& widget);

} // namespace velmo::qt
