#pragma once

#include "Controls.h"

#include <cstdint>
#include <functional>

namespace velmo::controls {

/// A vertical scroll bar made of pictures: an arrow at each end, a track between them, a ticker on
/// it. The control itself is clear; its pieces are images of the same form, in front of it, and
/// their places are the form's. All in twips. With `Min` not below `Max` the bar only stores what
/// it is given.
///
/// The ticker's way has `Range` twips, `PerUnit` of them to the position. Kept: a position that is
/// set counts from 1, whatever `Min` is, while one that the ticker is moved to counts from 0.
class ScrollBar final : public Control
{
public:
    ScrollBar(Form& form, std::string name, Bounds bounds);

    Image imgResizeBar; ///< the box around the others
    Image imgVBar;      ///< the track
    Image imgResizeUp;
    Image imgResizeDown;
    Image imgResizeTicker;
    Timer tmrUp; ///< repeats the arrow that is held
    Timer tmrDown;

    Property<std::int32_t> Min{*this};
    Property<std::int32_t> Max{*this};

    std::int32_t Position() const;
    /// Held between `Min` and `Max` if `Min` is below `Max`; the ticker follows. Raises no event.
    void SetPosition(std::int32_t position);

    /// How often an arrow that is held moves the ticker, in milliseconds; 0 is never. Below 0 is
    /// taken as 0.
    std::int32_t ScrollInterval() const;
    void SetScrollInterval(std::int32_t milliseconds);

    /// The user has moved the bar: whether down the list, and the new position.
    std::function<void(bool goesDown, std::int32_t position)> Change;

    /// Whether there is anything to scroll: `Min` is below `Max`.
    bool CanMove() const;
    /// How far the ticker goes.
    double Range() const;
    /// Only if the bar `CanMove`.
    double PerUnit() const;
    /// Of the ticker from the top of the track. Outside the range it is where it is told; what lies
    /// outside the control isn't seen.
    double TickerOffset() const;
    /// Moves the ticker, and the position with it. Only if the bar `CanMove`.
    void MoveTicker(double offset);

    void PropertyChanged() override;

private:
    void Resize();
    void PlaceTicker(double offset);

    Property<std::int32_t> m_position{*this};
    double m_tickerOffset = 0;
};

} // namespace velmo::controls
