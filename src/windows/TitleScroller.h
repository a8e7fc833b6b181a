#pragma once

#include "core/modINI.h"
#include "forms/wmain.h"
#include "sound/TransportState.h"

namespace velmo {

/// The handler of `tmrScroll`: the title runs through `lblSongName` as a ring of characters, and,
/// if the settings want it, through the window's own title too. User-interface thread only.
class TitleScroller
{
public:
    TitleScroller(forms::wmain& form, modINI& settings, const TransportState& state);

    /// Moves the first character to the end. Without "ScrollTitle" the window keeps the title as it
    /// was set. Lets the picture move unless the window is minimised, whatever the settings say of
    /// that.
    void tmrScroll_Timer();

private:
    forms::wmain& m_form;
    modINI& m_settings;
    const TransportState& m_state;
};

/// `text` with its first character at its end.
std::string Rotated(const std::string& text);

} // namespace velmo
