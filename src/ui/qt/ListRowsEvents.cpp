/// What the user does to a list: mouse, wheel, keys and drops.
#include "ListRowsWidget.h"
#include "Twips.h"
#include "UriList.h"
#include "VirtualKey.h"

#include "controls/EventEntry.h"

#include <QContextMenuEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QTimerEvent>

#include <cstdlib>
#include <optional>

namespace velmo::qt {

namespace {

using controls::ListStep;
using controls::Marking;

constexpr int HoverMs = 400;

std::optional<ListStep> StepOf(int key)
{
    switch (key) {
    case Qt::Key_Up: return ListStep::Up;
    case Qt::Key_Down: return ListStep::Down;
    case Qt::Key_PageUp: return ListStep::PageUp;
    case Qt::Key_PageDown: return ListStep::PageDown;
    case Qt::Key_Home: return ListStep::First;
    case Qt::Key_End: return ListStep::Last;
    default: return std::nullopt;
    }
}

QString UriListType()
{
    return QStringLiteral("text/uri-list");
}

} // namespace

void ListRowsWidget::mousePressEvent(QMouseEvent* event)
{
    controls::CallSlot(m_rows.MouseDown, ToMouseEvent(*event));
    ChooseByMouse(*event);
}

void ListRowsWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return mousePressEvent(event);
    m_isDoubleClick = true;
    ChooseByMouse(*event);
    controls::CallSlot(m_rows.DblClick);
}

/// The right button leaves the marks as they are if its row is marked: the menu may be meant for
/// all of them.
void ListRowsWidget::ChooseByMouse(const QMouseEvent& event)
{
    const std::size_t row = RowAt(event.position().toPoint().y());
    const bool isLeft = event.button() == Qt::LeftButton;
    if (!isLeft && event.button() != Qt::RightButton)
        return;
    const bool toggles = isLeft && event.modifiers().testFlag(Qt::ControlModifier);
    const bool extends = isLeft && event.modifiers().testFlag(Qt::ShiftModifier);
    if (row == 0) {
        if (!toggles && !extends)
            m_rows.DeselectAll();
        return;
    }
    if (extends)
        m_rows.Choose(row, Marking::Extend);
    else if (toggles)
        m_rows.Choose(row, Marking::Toggle);
    else
        m_rows.Choose(row, !isLeft && m_rows.IsMarked(row) ? Marking::Keep : Marking::Only);
}

void ListRowsWidget::mouseMoveEvent(QMouseEvent* event)
{
    ControlWidget::mouseMoveEvent(event);
    SetPointer(event->position().toPoint().y());
}

void ListRowsWidget::mouseReleaseEvent(QMouseEvent* event)
{
    // A double click has had its click.
    if (std::exchange(m_isDoubleClick, false))
        controls::CallSlot(m_rows.MouseUp, ToMouseEvent(*event));
    else
        ControlWidget::mouseReleaseEvent(event);
}

void ListRowsWidget::leaveEvent(QEvent* event)
{
    ControlWidget::leaveEvent(event);
    SetPointer(-1);
}

void ListRowsWidget::SetPointer(int y)
{
    const std::size_t before = RowAt(std::exchange(m_pointerY, y));
    const std::size_t row = RowAt(y);
    if (row == before)
        return;
    if (m_rows.HotTracking)
        FollowRows();
    if (m_rows.HoverSelection && row > 0)
        m_hover.start(HoverMs, this);
    else
        m_hover.stop();
}

void ListRowsWidget::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_hover.timerId())
        return ControlWidget::timerEvent(event);
    m_hover.stop();
    if (const std::size_t row = RowAt(m_pointerY); row > 0)
        m_rows.Choose(row, Marking::Only);
}

/// Finer wheels and touch pads add up to whole steps.
void ListRowsWidget::wheelEvent(QWheelEvent* event)
{
    constexpr int Step = 120;
    const int delta = event->angleDelta().y();
    if ((delta > 0) != (m_wheel > 0))
        m_wheel = 0;
    m_wheel += delta;
    for (int steps = std::abs(m_wheel) / Step; steps > 0; --steps)
        controls::CallSlot(m_rows.MouseWheel, delta > 0 ? Step : -Step);
    m_wheel %= Step;
    event->ignore();
}

void ListRowsWidget::keyPressEvent(QKeyEvent* event)
{
    controls::CallSlot(m_rows.KeyDown, VirtualKey(*event));
    if (MoveByKey(*event))
        return;
    if (IsTyped(*event))
        for (const uint character : event->text().toUcs4())
            controls::CallSlot(m_rows.KeyPress, static_cast<char32_t>(character));
    event->ignore(); // the form's turn
}

/// Whether the key is the list's own.
bool ListRowsWidget::MoveByKey(const QKeyEvent& event)
{
    const bool withControl = event.modifiers().testFlag(Qt::ControlModifier);
    const bool withShift = event.modifiers().testFlag(Qt::ShiftModifier);
    if (event.modifiers().testFlag(Qt::AltModifier))
        return false;
    if (const auto step = StepOf(event.key())) {
        m_rows.Move(*step,
                    withShift     ? Marking::Extend
                    : withControl ? Marking::Keep
                                  : Marking::Only);
        return true;
    }
    const std::size_t focus = m_rows.SelectedEntry();
    if (event.key() == Qt::Key_Space && focus > 0)
        m_rows.Choose(focus, withControl ? Marking::Toggle : Marking::Only);
    else if (event.key() == Qt::Key_A && withControl)
        m_rows.MarkAll();
    else if (event.key() == Qt::Key_F10 && withShift)
        OpenMenu();
    else
        return false;
    return true;
}

void ListRowsWidget::contextMenuEvent(QContextMenuEvent* event)
{
    if (event->reason() == QContextMenuEvent::Keyboard)
        OpenMenu();
}

/// The release of the right button opens the list's menu. Keys do the same on the row that has the
/// focus.
void ListRowsWidget::OpenMenu()
{
    const std::size_t row = m_rows.SelectedEntry();
    if (row > 0) {
        m_rows.Choose(row, m_rows.IsMarked(row) ? Marking::Keep : Marking::Only);
        Sync();
    }
    const QRect place = row > 0 ? m_painter.TextPlace(PlaceOf(row)) : QRect();
    ActAt(place.bottomLeft(), [&] {
        const controls::MouseEvent event{.button = controls::MouseButton::Right,
                                         .x = place.left() * TwipsPerPixel,
                                         .y = place.center().y() * TwipsPerPixel};
        controls::CallSlot(m_rows.MouseDown, event);
        controls::CallSlot(m_rows.MouseUp, event);
    });
}

void ListRowsWidget::dragEnterEvent(QDragEnterEvent* event)
{
    if (m_rows.OLEDragDrop && event->mimeData()->hasFormat(UriListType())) {
        event->setDropAction(Qt::CopyAction);
        event->accept();
    }
}

/// The paths are worked on after the other program has been let go.
void ListRowsWidget::dropEvent(QDropEvent* event)
{
    std::vector<std::string> paths = LocalFiles(event->mimeData()->data(UriListType()));
    event->setDropAction(Qt::CopyAction);
    event->accept();
    if (!paths.empty())
        QMetaObject::invokeMethod(
            this,
            [this, paths = std::move(paths)] { controls::CallSlot(m_rows.OLEDragDrop, paths); },
            Qt::QueuedConnection);
}

} // namespace velmo::qt
