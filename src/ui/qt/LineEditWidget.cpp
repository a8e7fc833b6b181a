#include "LineEditWidget.h"

#include "QtText.h"

#include <QLineEdit>
#include <QVariant>

namespace velmo::qt {

LineEditWidget::LineEditWidget(controls::TextBox& box, ControlHost& host, QWidget* parent)
    : ControlWidget(box, host, parent)
    , m_box(box)
    , m_edit(new QLineEdit(this))
{
    setFocusProxy(m_edit);
    QObject::connect(m_edit, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_box.Text = ToBytes(text);
    });
}

void LineEditWidget::Sync()
{
    ControlWidget::Sync();
    m_edit->setReadOnly(m_box.Locked);
    m_edit->setAccessibleName(AccessibleLabel());
    const QString text = FromBytes(m_box.Text.Get());
    setProperty("text", text);
    // Setting what the user has just typed would move his cursor.
    if (text != m_edit->text())
        m_edit->setText(text);
}

QAccessible::Role LineEditWidget::AccessibleRole() const
{
    return QAccessible::Grouping;
}

void LineEditWidget::resizeEvent(QResizeEvent* /*event*/)
{
    m_edit->setGeometry(rect());
}

} // namespace velmo::qt
