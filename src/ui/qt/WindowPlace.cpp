#include "WindowPlace.h"

#include "EnvironmentSetup.h"
#include "QtScreens.h"
#include "Twips.h"
#include "Xcb.h"

#include "controls/EventEntry.h"
#include "controls/WindowRect.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <cmath>
#include <cstdlib>
#include <functional>

namespace velmo::qt {

using ports::ScreenPoint;
using ports::ScreenRect;

namespace {

constexpr int RestMs = 150;

} // namespace

WindowPlace::WindowPlace(controls::Form& form, QWidget& window)
    : m_form(form)
    , m_window(window)
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(RestMs);
    QObject::connect(&m_rest, &QTimer::timeout, &m_rest, [this] { TakeFound(); });
    if (form.Border != controls::BorderStyle::None)
        return;
    const controls::PixelGrid grid = Grid();
    form.Width = grid.ToTwips(grid.FromLogical(ToPixels(form.Width)));
    form.Height = grid.ToTwips(grid.FromLogical(ToPixels(form.Height)));
}

/// Frames are the window manager's, and are not worth a pixel.
bool WindowPlace::IsExact() const
{
    return m_form.Border == controls::BorderStyle::None && IsX11();
}

controls::PixelGrid WindowPlace::Grid() const
{
    return controls::PixelGrid(ScreenScale());
}

ScreenPoint WindowPlace::Wanted() const
{
    const ScreenRect rect = controls::WindowRect(m_form, Grid());
    return {.x = rect.left, .y = rect.top};
}

void WindowPlace::PlaceFirst()
{
    if (m_form.Place == controls::StartPlace::ScreenCentre)
        Centre();
    m_shown = Wanted();
    // Of this the toolkit takes that the window has a place; on X the place itself comes after.
    m_window.move(FromScreenPoint(m_shown));
    PutOnX11();
}

void WindowPlace::Centre()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen == nullptr)
        return;
    QRect place = m_window.rect();
    place.moveCenter(screen->availableGeometry().center());
    const ScreenPoint corner = ToScreenPoint(place.topLeft());
    controls::MoveWindow(m_form, Grid(), corner.x, corner.y);
}

void WindowPlace::Assert()
{
    PutOnX11();
}

void WindowPlace::PutOnX11()
{
    if (IsExact())
        MoveX11({NextMove()});
}

X11Move WindowPlace::NextMove()
{
    const ScreenRect from =
        controls::WindowRect(m_form, Grid()).MovedBy(m_sent.x - Wanted().x, m_sent.y - Wanted().y);
    m_sent = m_shown;
    m_isManagerBehind = m_frame.id != 0;
    return {.target = m_isManagerBehind ? m_frame : X11Target{.id = XcbWindowOf(m_window)},
            .from = from,
            .to = m_shown};
}

void WindowPlace::LeaveScreen()
{
    if (IsX11())
        UnmapUnmanagedX11(m_window);
}

void WindowPlace::Sync()
{
    const ScreenPoint wanted = Wanted();
    if (wanted == m_shown)
        return;
    m_shown = wanted;
    m_seen.reset();
    m_rest.stop(); // what was found before would undo this move before it's sent
    if (IsExact())
        m_isMoveLeft = true;
    else
        m_window.move(FromScreenPoint(m_shown));
}

std::optional<X11Move> WindowPlace::TakeMove()
{
    if (!std::exchange(m_isMoveLeft, false))
        return std::nullopt;
    return NextMove();
}

/// The toolkit's pointer has whole logical pixels. At other scales than 1 the server is asked for
/// the rest, and believed as long as the pointer hasn't gone on since the event.
ScreenPoint WindowPlace::PointerAt(QPointF global) const
{
    const ScreenPoint told = ToScreenPoint(global);
    const double ratio = m_window.devicePixelRatioF();
    if (!IsExact() || ratio == 1.0)
        return told;
    const auto found = PointerOnX11();
    const auto isSame = [ratio](int a, int b) { return std::abs(a - b) <= ratio; };
    return found && isSame(found->x, told.x) && isSame(found->y, told.y) ? *found : told;
}

void WindowPlace::Pressed(QPointF global, QPointF local)
{
    m_pressed = ToScreenPoint(global);
    if (!IsExact())
        return;
    const QPointF inWindow = local * m_window.devicePixelRatioF();
    m_pressed = {.x = m_shown.x + static_cast<int>(std::lround(inWindow.x())),
                 .y = m_shown.y + static_cast<int>(std::lround(inWindow.y()))};
}

void WindowPlace::BeginDrag()
{
    if (!HasWindowPlaces() && m_window.windowHandle() != nullptr) {
        m_window.windowHandle()->startSystemMove();
        return;
    }
    m_isDragging = true;
    m_start = controls::WindowRect(m_form, Grid());
    controls::CallSlot(m_form.EnterSizeMove, m_pressed);
}

bool WindowPlace::Drag(QPointF pointer)
{
    if (!m_isDragging)
        return false;
    const ScreenPoint now = PointerAt(pointer);
    ScreenRect rect = m_start.MovedBy(now.x - m_pressed.x, now.y - m_pressed.y);
    controls::CallSlot(m_form.Moving, now, std::ref(rect));
    controls::MoveWindow(m_form, Grid(), rect.left, rect.top);
    Sync();
    return true;
}

void WindowPlace::EndDrag()
{
    if (!std::exchange(m_isDragging, false))
        return;
    controls::CallSlot(m_form.ExitSizeMove);
}

/// Under X the server itself is asked: under a window manager that gives windows new parents, the
/// toolkit at times takes a window to stand at 0, 0.
ScreenPoint WindowPlace::Found() const
{
    if (!IsExact())
        return ToScreenPoint(m_window.pos());
    return PlaceOnX11(m_window).value_or(m_shown);
}

void WindowPlace::TakeFromManager()
{
    if (IsExact() && m_window.isVisible())
        m_frame = FrameOnX11(m_window);
}

void WindowPlace::GiveToManager()
{
    m_frame = {};
    if (m_isManagerBehind)
        m_isMoveLeft = true;
}

void WindowPlace::Moved()
{
    m_rest.start();
}

void WindowPlace::TakeFound()
{
    // Late reports of a drag tell of places that the window has left, and so do those of windows
    // that are carried along.
    if (m_isDragging || QGuiApplication::mouseButtons().testFlag(Qt::LeftButton))
        return;
    const ScreenPoint found = Found();
    const bool isSeenAgain = std::exchange(m_seen, found) == found;
    if (found == m_shown || (!IsX11() && found == ScreenPoint{}))
        return;
    // The server is ahead of the events: that a screen has gone may still be among them.
    if (!isSeenAgain)
        return m_rest.start();
    m_shown = found;
    m_sent = found;
    controls::MoveWindow(m_form, Grid(), found.x, found.y);
    controls::CallSlot(m_form.ExitSizeMove); // another hand has moved it: what is glued may change
}

} // namespace velmo::qt
