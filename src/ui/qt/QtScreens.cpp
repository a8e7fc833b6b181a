#include "QtScreens.h"

#include <QGuiApplication>
#include <QPointF>
#include <QScreen>

#include <cmath>

namespace velmo::qt {

namespace {

using ports::ScreenPoint;
using ports::ScreenRect;

int Rounded(double value)
{
    return static_cast<int>(std::lround(value));
}

/// A place of the screen in its pixels. The toolkit leaves a screen's own corner unscaled.
ScreenPoint OnScreen(const QScreen& screen, QPointF place)
{
    const QPointF corner = screen.geometry().topLeft();
    const QPointF pixels = corner + (place - corner) * screen.devicePixelRatio();
    return {.x = Rounded(pixels.x()), .y = Rounded(pixels.y())};
}

ScreenRect OnScreen(const QScreen& screen, const QRect& area)
{
    const ScreenPoint corner = OnScreen(screen, QPointF(area.topLeft()));
    const ScreenPoint end =
        OnScreen(screen, QPointF(area.topLeft() + QPoint(area.width(), area.height())));
    return {.left = corner.x, .top = corner.y, .right = end.x, .bottom = end.y};
}

/// 0 inside.
int DistanceOf(const ScreenRect& rect, ScreenPoint place)
{
    const int dx = std::max({rect.left - place.x, place.x - (rect.right - 1), 0});
    const int dy = std::max({rect.top - place.y, place.y - (rect.bottom - 1), 0});
    return dx + dy;
}

/// Null if there is none.
const QScreen* NearestScreen(ScreenPoint place)
{
    const QScreen* nearest = nullptr;
    int least = 0;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const int distance = DistanceOf(OnScreen(*screen, screen->geometry()), place);
        if (nearest == nullptr || distance < least) {
            nearest = screen;
            least = distance;
        }
    }
    return nearest;
}

} // namespace

double ScreenScale()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen == nullptr ? 1.0 : screen->devicePixelRatio();
}

ScreenPoint ToScreenPoint(QPointF global)
{
    const QPoint floored(static_cast<int>(std::floor(global.x())),
                         static_cast<int>(std::floor(global.y())));
    const QScreen* screen = QGuiApplication::screenAt(floored);
    if (screen == nullptr)
        screen = QGuiApplication::primaryScreen();
    if (screen == nullptr)
        return {.x = floored.x(), .y = floored.y()};
    return OnScreen(*screen, global);
}

QPoint FromScreenPoint(ScreenPoint place)
{
    const QPoint pixel(place.x, place.y);
    const QScreen* screen = NearestScreen(place);
    if (screen == nullptr)
        return pixel;
    const QPoint corner = screen->geometry().topLeft();
    return corner + (QPointF(pixel - corner) / screen->devicePixelRatio()).toPoint();
}

QtScreens::QtScreens()
{
    for (QScreen* screen : QGuiApplication::screens())
        Watch(screen);
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &m_context, [this](QScreen* screen) {
        Watch(screen);
        Tell();
    });
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &m_context, [this] { Tell(); });
}

void QtScreens::Watch(QScreen* screen)
{
    QObject::connect(screen, &QScreen::geometryChanged, &m_context, [this] { Tell(); });
    QObject::connect(screen, &QScreen::availableGeometryChanged, &m_context, [this] { Tell(); });
}

/// Once for all that changes together, and after the toolkit has finished with it.
void QtScreens::Tell()
{
    if (m_isTelling)
        return;
    m_isTelling = true;
    QMetaObject::invokeMethod(
        &m_context,
        [this] {
            m_isTelling = false;
            if (Changed)
                Changed();
        },
        Qt::QueuedConnection);
}

double QtScreens::Scale()
{
    return ScreenScale();
}

ScreenRect QtScreens::WorkArea(ScreenPoint place)
{
    const QScreen* const nearest = NearestScreen(place);
    return nearest == nullptr ? ScreenRect{} : OnScreen(*nearest, nearest->availableGeometry());
}

std::vector<ScreenRect> QtScreens::All()
{
    std::vector<ScreenRect> all;
    for (const QScreen* screen : QGuiApplication::screens())
        all.push_back(OnScreen(*screen, screen->geometry()));
    return all;
}

} // namespace velmo::qt
