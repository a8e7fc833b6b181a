#include "WindowOutline.h"

#include "X11Window.h"
#include "Xcb.h"

#include <QRegion>
#include <QWidget>

#include <cmath>

namespace velmo::qt {

namespace {

using controls::PixelArea;

/// The first pixel of the screen whose middle lies past a logical edge; the last edge of a window
/// is that of all its pixels.
int ScreenEdge(int edge, int length, double ratio)
{
    constexpr double Middle = 0.5;
    const double place = edge * ratio;
    return static_cast<int>(edge == length ? std::round(place) : std::ceil(place - Middle));
}

ports::ScreenRect OnScreen(const PixelArea& area, const QWidget& window, double ratio)
{
    const auto across = [&](int edge) { return ScreenEdge(edge, window.width(), ratio); };
    const auto down = [&](int edge) { return ScreenEdge(edge, window.height(), ratio); };
    return {.left = across(area.left),
            .top = down(area.top),
            .right = across(area.left + area.width),
            .bottom = down(area.top + area.height)};
}

} // namespace

WindowOutline::WindowOutline(const controls::Form& form, QWidget& window)
    : m_form(form)
    , m_window(window)
{}

void WindowOutline::Sync()
{
    const double ratio = m_window.devicePixelRatioF();
    const std::uint32_t id = XcbWindowOf(m_window);
    if (m_applied == m_form.Outline.Get()
        && (m_applied.empty() || (ratio == m_ratio && id == m_id)))
        return;
    m_applied = m_form.Outline;
    m_ratio = ratio;
    m_id = id;
    Apply();
}

void WindowOutline::Apply()
{
    if (IsX11()) {
        std::vector<ports::ScreenRect> parts;
        parts.reserve(m_applied.size());
        for (const PixelArea& area : m_applied)
            parts.push_back(OnScreen(area, m_window, m_ratio));
        ShapeX11(m_window, parts);
        return;
    }
    QRegion region;
    for (const PixelArea& area : m_applied)
        region += QRect(area.left, area.top, area.width, area.height);
    m_window.setMask(region);
}

} // namespace velmo::qt
