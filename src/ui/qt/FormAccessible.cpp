#include "FormAccessible.h"

#include "ControlAccessible.h"
#include "ControlWidget.h"

namespace velmo::qt {

FormAccessible::FormAccessible(QWidget& window)
    : QAccessibleWidget(&window, QAccessible::Window)
{}

QList<QWidget*> FormAccessible::Children() const
{
    QList<QWidget*> children = widget()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    children.removeIf([](QWidget* child) {
        const auto* control = dynamic_cast<ControlWidget*>(child);
        return child->isWindow() || (control != nullptr && RoleOf(*control) == QAccessible::NoRole);
    });
    return children;
}

int FormAccessible::childCount() const
{
    return static_cast<int>(Children().size());
}

QAccessibleInterface* FormAccessible::child(int index) const
{
    const QList<QWidget*> children = Children();
    return index < 0 || index >= children.size()
               ? nullptr
               : QAccessible::queryAccessibleInterface(children[index]);
}

int FormAccessible::indexOfChild(const QAccessibleInterface* child) const
{
    return child == nullptr
               ? -1
               : static_cast<int>(Children().indexOf(dynamic_cast<QWidget*>(child->object())));
}

} // namespace velmo::qt
