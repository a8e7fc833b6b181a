#include "FocusRing.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QWidget>

namespace velmo::qt {

namespace {

/// The window goes to the back or lets a menu in front: the focus comes back as it was.
bool IsForAWhile(Qt::FocusReason reason)
{
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
}

} // namespace

FocusRing::FocusRing(QWidget& widget)
    : m_widget(widget)
{}

void FocusRing::FocusIn(Qt::FocusReason reason)
{
    const bool isHome = (m_widget.focusPolicy() & Qt::ClickFocus) != 0;
    if (reason == Qt::MouseFocusReason)
        Show(false);
    else if (!IsForAWhile(reason))
        Show(true);
    else if (!m_isShown && !isHome)
        GiveFocusBack(); // the toolkit chose the first control that there is
    else
        m_widget.update();
}

void FocusRing::FocusOut(Qt::FocusReason reason)
{
    if (!IsForAWhile(reason))
        Show(false);
    else
        m_widget.update();
}

bool FocusRing::IsShown() const
{
    return m_isShown && m_widget.isActiveWindow();
}

void FocusRing::GiveFocusBack()
{
    Show(false);
    for (QWidget* widget : m_widget.window()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        if (widget->isVisible() && (widget->focusPolicy() & Qt::ClickFocus) != 0)
            return widget->setFocus(Qt::MouseFocusReason);
    m_widget.clearFocus();
}

void FocusRing::Paint() const
{
    const QColor light(0x00, 0xff, 0xff);
    QPainter painter(&m_widget);
    // A neighbour may stand over an edge.
    const QRect whole = m_widget.visibleRegion().boundingRect();
    painter.fillRect(QRect(whole.left(), whole.top(), whole.width(), 1), light);
    painter.fillRect(QRect(whole.left(), whole.bottom(), whole.width(), 1), light);
    painter.fillRect(QRect(whole.left(), whole.top() + 1, 1, whole.height() - 2), light);
    painter.fillRect(QRect(whole.right(), whole.top() + 1, 1, whole.height() - 2), light);
}

bool FocusRing::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::MouseButtonPress || !watched->isWidgetType()
        || static_cast<QWidget*>(watched)->window() != m_widget.window())
        return false;
    GiveFocusBack();
    return false;
}

void FocusRing::Show(bool isShown)
{
    if (isShown == m_isShown)
        return;
    m_isShown = isShown;
    if (isShown)
        qApp->installEventFilter(this);
    else
        qApp->removeEventFilter(this);
    m_widget.update();
}

} // namespace velmo::qt
