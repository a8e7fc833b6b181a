#include "ControlWidget.h"

#include "QtText.h"
#include "Twips.h"

#include "controls/Controls.h"
#include "controls/EventEntry.h"
#include "controls/KeyActions.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTextDocument>
#include <QWindow>

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

QRect PlaceOf(const controls::Control& control)
{
    return ToPixels(control.Left, control.Top, control.Width, control.Height);
}

const controls::Image* ImageOf(const controls::Control& control)
{
    return control.Kind == controls::ControlKind::Image
               ? &static_cast<const controls::Image&>(control)
               : nullptr;
}

/// A tool tip covers what lies below the pointer, often the next button: clicks and moves go
/// through it.
void LetMouseThroughToolTip()
{
    for (const QWidget* window : QApplication::topLevelWidgets())
        if (window->inherits("QTipLabel") && window->windowHandle() != nullptr)
            window->windowHandle()->setFlag(Qt::WindowTransparentForInput);
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
    Standing standing{.place = PlaceOf(m_control),
                      .container =
                          m_control.Container == nullptr ? QRect() : PlaceOf(*m_control.Container),
                      .isEnabled = m_control.Enabled,
                      .isVisible = m_control.Visible,
                      .isTabStop = IsTabStop(),
                      .tip = m_control.ToolTipText,
                      .accessibleName = m_control.AccessibleName};
    if (standing == m_standing)
        return;
    m_standing = std::move(standing);
    setGeometry(m_standing->place);
    setEnabled(m_control.Enabled);
    setVisible(CutToContainer() && m_control.Visible);
    if (focusPolicy() == Qt::NoFocus && m_standing->isTabStop)
        setFocusPolicy(Qt::TabFocus);
    const QString tip = FromBytes(m_control.ToolTipText.Get());
    setToolTip(Qt::mightBeRichText(tip) ? tip.toHtmlEscaped() : tip);
    const QString label = AccessibleLabel();
    if (label != accessibleName())
        setAccessibleName(label);
}

/// False if nothing is left.
bool ControlWidget::CutToContainer()
{
    if (m_control.Container == nullptr)
        return true;
    const QRect seen = geometry() & m_standing->container;
    if (seen == geometry())
        clearMask();
    else
        setMask(seen.translated(-pos()));
    return !seen.isEmpty();
}

QAccessible::Role ControlWidget::AccessibleRole() const
{
    return m_control.Kind == controls::ControlKind::ScrollBar ? QAccessible::ScrollBar
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

controls::Control& ControlWidget::Model() const
{
    return m_control;
}

bool ControlWidget::IsTabStop() const
{
    const controls::Image* const image = ImageOf(m_control);
    const bool isTrack = image != nullptr && image->Knob() != nullptr && image->Knob() != image;
    return m_control.TabStop && !isTrack;
}

bool ControlWidget::IsRingShown() const
{
    return m_ring.IsShown();
}

void ControlWidget::Press()
{
    ActAt(rect().center(), [this] { controls::Press(m_control); });
}

std::optional<QPoint> ControlWidget::KeyPlace() const
{
    return m_keyPlace;
}

void ControlWidget::ActAt(QPoint place, const std::function<void()>& action)
{
    m_keyPlace = mapToGlobal(place);
    action();
    m_keyPlace.reset();
}

ControlHost& ControlWidget::Host() const
{
    return m_host;
}

bool ControlWidget::event(QEvent* event)
{
    const bool isHandled = QWidget::event(event);
    if (event->type() == QEvent::Paint && m_ring.IsShown())
        m_ring.Paint();
    if (event->type() == QEvent::ToolTip)
        LetMouseThroughToolTip();
    return isHandled;
}

void ControlWidget::keyPressEvent(QKeyEvent* event)
{
    event->setAccepted(IsTabStop() && TakeKey(*event));
}

bool ControlWidget::TakeKey(const QKeyEvent& event)
{
    constexpr Qt::KeyboardModifiers Others =
        Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    if ((event.modifiers() & Others) != Qt::NoModifier)
        return false;
    const int key = event.key();
    if (key == Qt::Key_Escape) {
        m_ring.GiveFocusBack();
        return true;
    }
    if (const controls::Image* image = ImageOf(m_control);
        image != nullptr && image->Knob() != nullptr)
        return Slide(key);
    if (key != Qt::Key_Space && key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    if (!event.isAutoRepeat())
        Press();
    return true;
}

/// Whether the key moves the slider.
bool ControlWidget::Slide(int key)
{
    constexpr double Page = 4 * controls::SliderStep;
    const controls::Image& image = *ImageOf(m_control);
    const auto to = [&](double share) {
        controls::SlideTo(image, share);
        return true;
    };
    const double share = image.AccessibleValue();
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Down: return to(share - controls::SliderStep);
    case Qt::Key_Right:
    case Qt::Key_Up: return to(share + controls::SliderStep);
    case Qt::Key_PageDown: return to(share - Page);
    case Qt::Key_PageUp: return to(share + Page);
    case Qt::Key_Home: return to(0);
    case Qt::Key_End: return to(1);
    default: return false;
    }
}

void ControlWidget::focusInEvent(QFocusEvent* event)
{
    m_ring.FocusIn(event->reason());
}

void ControlWidget::focusOutEvent(QFocusEvent* event)
{
    m_ring.FocusOut(event->reason());
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
