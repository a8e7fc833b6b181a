#include "ucScrollBar.h"

#include "core/CallIfSet.h"
#include "core/Ignoring.h"
#include "core/NumberText.h"

#include <algorithm>
#include <limits>

namespace velmo {

namespace {

using controls::Image;
using controls::MouseEvent;

} // namespace

ucScrollBar::ucScrollBar(controls::ScrollBar& bar)
    : m_bar(bar)
{
    BindTrack();
    BindTicker();
    BindArrow(bar.imgResizeUp, bar.tmrUp, -1);
    BindArrow(bar.imgResizeDown, bar.tmrDown, 1);
    for (Image* piece : {&bar.imgResizeBar,
                         &bar.imgVBar,
                         &bar.imgResizeUp,
                         &bar.imgResizeDown,
                         &bar.imgResizeTicker})
        PassOn(*piece);
}

void ucScrollBar::BindTrack()
{
    Image& track = m_bar.imgVBar;
    track.MouseDown = [this](const MouseEvent& event) { imgVBar_MouseDown(event); };
    track.MouseMove = [this, &track](const MouseEvent&) { ShowUnderPointer(track); };
    track.MouseUp = [&track](const MouseEvent&) { track.ShowHover(); };
}

void ucScrollBar::BindTicker()
{
    Image& ticker = m_bar.imgResizeTicker;
    ticker.MouseDown = [this](const MouseEvent& event) { imgResizeTicker_MouseDown(event); };
    ticker.MouseMove = [this](const MouseEvent& event) { imgResizeTicker_MouseMove(event); };
    ticker.MouseUp = [this, &ticker](const MouseEvent&) {
        m_pressed = false;
        ticker.ShowHover();
    };
}

/// `step` is by how many positions a repetition moves the ticker.
void ucScrollBar::BindArrow(Image& arrow, controls::Timer& timer, double step)
{
    arrow.MouseDown = [this, &arrow, &timer](const MouseEvent&) {
        m_pressed = true;
        timer.Enabled = true;
        arrow.ShowPressed();
    };
    arrow.MouseMove = [this, &arrow](const MouseEvent&) { ShowUnderPointer(arrow); };
    arrow.MouseUp = [this, &arrow, &timer](const MouseEvent&) {
        timer.Enabled = false;
        m_pressed = false;
        arrow.ShowHover();
    };
    // Lost on failure: what the owner of the bar makes of the event.
    timer.Tick = [this, step] { Ignoring([&] { Repeat(step); }); };
}

/// The bar's owner gets the piece's events after the bar itself.
void ucScrollBar::PassOn(Image& piece)
{
    const auto then = [](auto own, auto& bars) {
        return [own, &bars](const MouseEvent& event) {
            CallIfSet(own, event);
            CallIfSet(bars, event);
        };
    };
    piece.MouseDown = then(piece.MouseDown, m_bar.MouseDown);
    piece.MouseMove = then(piece.MouseMove, m_bar.MouseMove);
    piece.MouseUp = then(piece.MouseUp, m_bar.MouseUp);
    piece.Click = [this] { CallIfSet(m_bar.Click); };
}

void ucScrollBar::imgVBar_MouseDown(const MouseEvent& event)
{
    m_bar.imgVBar.ShowPressed();
    if (!m_bar.CanMove())
        return;
    double y = event.y;
    // Below the ticker the press brings the ticker's bottom there, not its top.
    if (m_bar.TickerOffset() < y)
        y -= m_bar.imgResizeTicker.Height;
    const std::int32_t before = m_bar.Position();
    m_bar.MoveTicker(RoundHalfEven(y / m_bar.PerUnit()) * m_bar.PerUnit());
    const std::int32_t position = m_bar.Position();
    CallIfSet(m_bar.Change, position > before, position);
}

void ucScrollBar::imgResizeTicker_MouseDown(const MouseEvent& event)
{
    m_bar.imgResizeTicker.ShowPressed();
    m_tickerDragStart = RoundHalfEven(event.y);
    m_pressed = true;
}

/// A move by more positions than 16 bits hold goes as many as they do; the ticker catches up with
/// the next ones.
void ucScrollBar::imgResizeTicker_MouseMove(const MouseEvent& event)
{
    ShowUnderPointer(m_bar.imgResizeTicker);
    if (!m_pressed || !m_bar.CanMove())
        return;
    using Limits = std::numeric_limits<std::int16_t>;
    const std::int32_t way = RoundHalfEven(event.y - m_tickerDragStart);
    const std::int32_t delta = std::clamp<std::int32_t>(
        RoundHalfEven(way / m_bar.PerUnit()), Limits::min(), Limits::max());
    MoveHeld(m_bar.TickerOffset() + delta * m_bar.PerUnit(), delta >= 0);
}

/// Kept: a piece stays lit until the pointer comes to another one.
void ucScrollBar::ShowUnderPointer(Image& piece)
{
    for (Image* other :
         {&m_bar.imgVBar, &m_bar.imgResizeUp, &m_bar.imgResizeDown, &m_bar.imgResizeTicker})
        if (other != &piece)
            other->ShowNormal();
    if (m_pressed)
        piece.ShowPressed();
    else
        piece.ShowHover();
}

/// At the end of its way the ticker stays, and the event comes all the same.
void ucScrollBar::Repeat(double step)
{
    if (m_pressed && m_bar.CanMove())
        MoveHeld(m_bar.TickerOffset() + step * m_bar.PerUnit(), step > 0);
}

void ucScrollBar::MoveHeld(double offset, bool goesDown)
{
    m_bar.MoveTicker(std::clamp(offset, 0.0, m_bar.Range()));
    CallIfSet(m_bar.Change, goesDown, m_bar.Position());
}

} // namespace velmo
