#include "ButtonWidget.h"

#include "QtText.h"

#include "controls/EventEntry.h"

#include <QPushButton>

namespace velmo::qt {

ButtonWidget::ButtonWidget(controls::Button& button, ControlHost& host, QWidget* parent)
    : ControlWidget(button, host, parent)
    , m_button(button)
    , m_push(new QPushButton(this))
{
    QObject::connect(
        m_push, &QPushButton::clicked, this, [this] { controls::CallSlot(m_button.Click); });
}

void ButtonWidget::Sync()
{
    ControlWidget::Sync();
    m_push->setText(FromBytes(m_button.Caption.Get()));
    m_push->setAccessibleName(m_push->text());
}

QAccessible::Role ButtonWidget::AccessibleRole() const
{
    return QAccessible::Grouping;
}

void ButtonWidget::resizeEvent(QResizeEvent* /*event*/)
{
    m_push->setGeometry(rect());
}

} // namespace velmo::qt
