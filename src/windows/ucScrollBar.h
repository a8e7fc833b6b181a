#pragma once

#include "controls/ScrollBar.h"

#include <cstdint>

namespace velmo {

/// What the mouse does to the pieces of a scroll bar made of pictures. A press on the track brings
/// the ticker there, the ticker can be dragged, an arrow that is held repeats; each tells the
/// bar's `Change`. The mouse events of all pieces go on to the bar's own slots, with their places
/// in the piece. With nothing to scroll only the pictures change. User-interface thread only.
class ucScrollBar final
{
public:
    /// Takes the slots of the bar's pieces. `bar` must outlive this.
    explicit ucScrollBar(controls::ScrollBar& bar);
    ucScrollBar(const ucScrollBar&) = delete;
    ucScrollBar& operator=(const ucScrollBar&) = delete;
    ~ucScrollBar() = default;

private:
    void BindTrack();
    void BindTicker();
    void BindArrow(controls::Image& arrow, controls::Timer& timer, double step);
    void PassOn(controls::Image& piece);

    void imgVBar_MouseDown(const controls::MouseEvent& event);
    void imgResizeTicker_MouseDown(const controls::MouseEvent& event);
    void imgResizeTicker_MouseMove(const controls::MouseEvent& event);
    void ShowUnderPointer(controls::Image& piece);
    void Repeat(double step);
    void MoveHeld(double offset, bool goesDown);

    controls::ScrollBar& m_bar;
    bool m_pressed = false; ///< an arrow or the ticker is held
    std::int32_t m_tickerDragStart = 0;
};

} // namespace velmo
