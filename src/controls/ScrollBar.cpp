#include "ScrollBar.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace velmo::controls {

namespace {

constexpr int RepeatMs = 25;
/// Height of the arrows and of the ticker; all pieces are as wide as the bar.
constexpr double PieceHeight = 240;

/// The nearest whole number, a half to the even one, whatever the rounding mode.
double Rounded(double value)
{
    return value - std::remainder(value, 1.0);
}

std::int32_t ToPosition(double value)
{
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp<double>(value, Limits::min(), Limits::max()));
}

} // namespace

ScrollBar::ScrollBar(Form& form, std::string name, Bounds bounds)
    : Control(form, ControlKind::ScrollBar, std::move(name), bounds)
    , imgResizeBar(form, "imgResizeBar", {})
    , imgVBar(form, "imgVBar", {})
    , imgResizeUp(form, "imgResizeUp", {.height = PieceHeight})
    , imgResizeDown(form, "imgResizeDown", {.height = PieceHeight})
    , imgResizeTicker(form, "imgResizeTicker", {.height = PieceHeight})
    , tmrUp(form, "tmrUp", RepeatMs, false, TimerAccuracy::Coarse)
    , tmrDown(form, "tmrDown", RepeatMs, false, TimerAccuracy::Coarse)
{
    imgVBar.TakeStates(PictureList::scrollBar, 1);
    imgResizeDown.TakeStates(PictureList::scrollBar, 4);
    imgResizeUp.TakeStates(PictureList::scrollBar, 7);
    imgResizeTicker.TakeStates(PictureList::scrollBar, 10);
    imgResizeBar.AccessibleName = "Scroll box";
    imgVBar.AccessibleName = "Scroll track";
    imgResizeDown.AccessibleName = "Scroll down";
    imgResizeUp.AccessibleName = "Scroll up";
    imgResizeTicker.AccessibleName = "Scroll ticker";
    for (Image* piece : {&imgVBar, &imgResizeUp, &imgResizeDown, &imgResizeTicker}) {
        piece->Stretch = true;
        piece->TabStop = false; // the rows themselves have the keys
        piece->Container = this;
    }
    Resize();
}

std::int32_t ScrollBar::Position() const
{
    return m_position;
}

void ScrollBar::SetPosition(std::int32_t position)
{
    if (CanMove()) {
        position = std::clamp<std::int32_t>(position, Min, Max);
        PlaceTicker((static_cast<double>(position) - 1) * PerUnit());
    }
    m_position = position;
}

std::int32_t ScrollBar::ScrollInterval() const
{
    return tmrUp.Interval;
}

void ScrollBar::SetScrollInterval(std::int32_t milliseconds)
{
    for (Timer* timer : {&tmrUp, &tmrDown})
        timer->Interval = std::max(milliseconds, 0);
}

bool ScrollBar::CanMove() const
{
    return Min < Max;
}

double ScrollBar::Range() const
{
    return Rounded(imgVBar.Height - imgResizeTicker.Height);
}

double ScrollBar::PerUnit() const
{
    return Range() / (static_cast<double>(Max) - static_cast<double>(Min));
}

double ScrollBar::TickerOffset() const
{
    return m_tickerOffset;
}

void ScrollBar::MoveTicker(double offset)
{
    PlaceTicker(offset);
    m_position = ToPosition(Rounded(offset / PerUnit()));
}

void ScrollBar::PropertyChanged()
{
    Resize();
    Control::PropertyChanged();
}

/// Lays the pieces out again. The ticker keeps its height.
void ScrollBar::Resize()
{
    for (Image* piece : {&imgResizeBar, &imgVBar, &imgResizeUp, &imgResizeDown, &imgResizeTicker}) {
        piece->Left = Left;
        piece->Width = Width;
    }
    imgResizeBar.Top = Top;
    imgResizeBar.Height = Height;
    imgResizeUp.Top = Top;
    imgResizeDown.Top = Top + Height - imgResizeDown.Height;
    imgVBar.Top = Top + imgResizeUp.Height;
    imgVBar.Height = Height - imgResizeUp.Height - imgResizeDown.Height;
    PlaceTicker(m_tickerOffset);
}

void ScrollBar::PlaceTicker(double offset)
{
    m_tickerOffset = offset;
    imgResizeTicker.Top = imgVBar.Top + offset;
}

} // namespace velmo::controls
