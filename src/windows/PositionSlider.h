#pragma once

#include "forms/wmain.h"
#include "sound/ChannelQueries.h"
#include "sound/Monitor.h"
#include "sound/TransportState.h"

#include <cstdint>

namespace velmo {

/// The position slider of the main window: the knob's way, 3255 twips, is the length of the current
/// channel. Without a length it does nothing. User-interface thread only.
class PositionSlider
{
public:
    PositionSlider(forms::wmain& form,
                   const modBass& bass,
                   const TransportState& state,
                   Monitor& monitor);

    bool IsDragging() const { return m_dragging; }
    /// At the window's load: nobody drags.
    void LetGo() { m_dragging = false; }

    void imgPositionBar_MouseDown(const controls::MouseEvent& event);
    void imgPositionTicker_MouseDown(const controls::MouseEvent& event);
    void imgPositionTicker_MouseMove(const controls::MouseEvent& event);
    void imgPositionTicker_MouseUp(const controls::MouseEvent& event);

private:
    double Range() const;
    float LengthSeconds() const;
    void SeekToOffset(double offsetTwips);

    forms::wmain& m_form;
    const TransportState& m_state;
    Monitor& m_monitor;
    ChannelQueries m_queries;
    bool m_dragging = false;
    std::int32_t m_dragStart = 0;
};

} // namespace velmo
