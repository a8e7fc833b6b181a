#include "AccessibleFactory.h"

#include "FormAccessible.h"
#include "FormView.h"
#include "ListRowsWidget.h"
#include "RowsAccessible.h"

namespace velmo::qt {

namespace {

/// The caller keeps the interface and destroys it.
QAccessibleInterface* MakeAccessible(const QString& /*className*/, QObject* object)
{
    if (auto* list = dynamic_cast<ListRowsWidget*>(object))
        return new RowsAccessible(*list);
    if (auto* control = dynamic_cast<ControlWidget*>(object))
        return new ControlAccessible(*control);
    if (auto* form = dynamic_cast<FormView*>(object))
        return new FormAccessible(*form);
    return nullptr;
}

} // namespace

void InstallAccessibility()
{
    QAccessible::installFactory(MakeAccessible);
}

} // namespace velmo::qt
