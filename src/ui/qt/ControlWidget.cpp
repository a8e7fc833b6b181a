#include "ControlWidget.h"

#include "QtText.h"
#include "Twips.h"

#include "controls/EventEntry.h"

#include <QMouseEvent>
#include <QTextDocument>

namespace velmo::qt {

namespace {

using controls::MouseButton;

MouseButton FirstOf(Qt::MouseButtons buttons)
{
    if (buttons.testFlag(Qt::LeftButton))
        return MouseButton::Left;
    if (buttons.testFlag(Qt::RightButton))
        return MouseButton::Right;
    return buttons.testFlag(Qt::MiddleButton) ? MouseButton::Middle : MouseButton::None;
}

unsigned ShiftOf(Qt::KeyboardModifiers keys)
{
    unsigned shift = 0;
    shift |= keys.testFlag(Qt::ShiftModifier) ? controls::ShiftKey : 0U;
    shift |= keys.testFlag(Qt::ControlModifier) ? controls::ControlKey : 0U;
    shift |= keys.testFlag(Qt::AltModifier) ? controls::AltKey : 0U;
    return shift;
}

} // namespace

controls::MouseEvent ToMouseEvent(const QMouseEvent& event)
{
    const bool isMove = event.type() == QEvent::MouseMove;
    return {.button = FirstOf(isMove ? event.buttons() : Qt::MouseButtons(event.button())),
            .shift = ShiftOf(event.modifiers()),
            .x = event.position().x() * TwipsPerPixel,
            .y = event.position().y() * TwipsPerPixel};
}

ControlWidget::ControlWidget(controls::Control& control, ControlHost& host, QWidget* parent)
    : QWidget(parent)
    , m_control(control)
    , m_host(host)
{
    setObjectName(FromBytes(control.Name));
    setMouseTracking(true);
    control.Changed = [this] { m_host.MarkDirty(*this); };
}

ControlWidget::~ControlWidget()
{
    m_control.Changed = nullptr;
}

void ControlWidget::Sync()
{
    setGeometry(ToPixels(m_control.Left, m_control.Top, m_control.Width, m_control.Height));
    setEnabled(m_control.Enabled);
    setVisible(m_control.Visible);
    const QString tip = FromBytes(m_control.ToolTipText.Get());
    setToolTip(Qt::mightBeRichText(tip) ? tip.toHtmlEscaped() : tip);
    const QString label = AccessibleLabel();
    if (label != accessibleName())
        setAccessibleName(label);
}

QAccessible::Role ControlWidget::AccessibleRole() const
{
    return m_control.Kind == controls::ControlKind::ListRows ? QAccessible::List
                                                             : QAccessible::Graphic;
}

QString ControlWidget::AccessibleText() const
{
    return {};
}

double ControlWidget::AccessibleShare() const
{
    return -1.0;
}

QString ControlWidget::AccessibleLabel() const
{
    if (!m_control.AccessibleName.Get().empty())
        return FromBytes(m_control.AccessibleName.Get());
    const std::string& tip = m_control.ToolTipText;
    return FromBytes(tip.empty() ? m_control.Name : tip);
}

const ControlHost& ControlWidget::Host() const
{
    return m_host;
}

void ControlWidget::mousePressEvent(QMouseEvent* event)
{
    if (m_control.MouseDown || m_control.Click)
        controls::CallSlot(m_control.MouseDown, ToMouseEvent(*event));
    else if (event->button() == Qt::LeftButton)
        m_host.StartDrag();
}

void ControlWidget::mouseMoveEvent(QMouseEvent* event)
{
    controls::CallSlot(m_control.MouseMove, ToMouseEvent(*event));
}

void ControlWidget::mouseReleaseEvent(QMouseEvent* event)
{
    controls::CallSlot(m_control.MouseUp, ToMouseEvent(*event));
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        controls::CallSlot(m_control.Click);
}

} // namespace velmo::qt
