#include "PositionSlider.h"

#include "core/NumberText.h"

#include <algorithm>
#include <cmath>

namespace velmo {

PositionSlider::PositionSlider(forms::wmain& form,
                               const modBass& bass,
                               const TransportState& state,
                               Monitor& monitor)
    : m_form(form)
    , m_state(state)
    , m_monitor(monitor)
    , m_queries(bass)
{}

void PositionSlider::imgPositionBar_MouseDown(const controls::MouseEvent& event)
{
    if (event.button == controls::MouseButton::Left)
        SeekToOffset(RoundHalfEven(event.x));
}

void PositionSlider::imgPositionTicker_MouseDown(const controls::MouseEvent& event)
{
    if (event.button != controls::MouseButton::Left)
        return;
    m_dragging = true;
    m_form.tmrBASS.Enabled = false; // the monitor must not fight the mouse
    m_dragStart = RoundHalfEven(event.x);
}

void PositionSlider::imgPositionTicker_MouseMove(const controls::MouseEvent& event)
{
    if (!m_dragging || LengthSeconds() <= 0)
        return;
    const double left = m_form.imgPositionTicker.Left - m_dragStart + RoundHalfEven(event.x);
    // Kept: past either end the knob stays where it was last.
    if (left >= m_form.imgPositionBar.Left && left < m_form.imgPositionBar.Left + Range())
        m_form.imgPositionTicker.Left = left;
}

void PositionSlider::imgPositionTicker_MouseUp(const controls::MouseEvent& event)
{
    if (event.button != controls::MouseButton::Left)
        return;
    m_dragging = false;
    m_form.tmrBASS.Enabled = true;
    SeekToOffset(m_form.imgPositionTicker.Left - m_form.imgPositionBar.Left);
}

double PositionSlider::Range() const
{
    return m_form.imgPositionBar.Width - m_form.imgPositionTicker.Width;
}

float PositionSlider::LengthSeconds() const
{
    return m_queries.ChannelLengthSeconds(m_state.CurrentChannel);
}

/// Seeks to the whole second at that many twips from the bar's left end. Beyond the range it is one
/// second before the end.
void PositionSlider::SeekToOffset(double offsetTwips)
{
    const auto length = static_cast<double>(LengthSeconds());
    if (length <= 0)
        return;
    const double step = Range() / length;
    double snapped = RoundHalfEven(std::floor(offsetTwips / step) * step);
    if (snapped > Range())
        snapped = RoundHalfEven(Range() - step);
    const double bytes = snapped / step * m_queries.BytesPerSecond(m_state.CurrentChannel);
    m_queries.SeekBytes(
        m_state.CurrentChannel, static_cast<DWORD>(std::llround(std::max(bytes, 0.0))), 0);
    m_monitor.ShowTimes();
    const auto seconds = static_cast<double>(m_queries.ChannelSeconds(m_state.CurrentChannel));
    m_form.imgPositionTicker.Left =
        m_form.imgPositionBar.Left + std::clamp(seconds * step, 0.0, Range());
}

} // namespace velmo
