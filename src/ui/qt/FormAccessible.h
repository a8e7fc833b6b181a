#pragma once

#include <QAccessibleWidget>

namespace velmo::qt {

/// A form's window to screen readers: its children are the controls that have a role.
class FormAccessible final : public QAccessibleWidget
{
public:
    explicit FormAccessible(QWidget& window);

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;

private:
    QList<QWidget*> Children() const;
};

} // namespace velmo::qt
