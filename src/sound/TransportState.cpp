#include "TransportState.h"

namespace velmo {

std::string DecoratedTitle(const std::string& title)
{
    return "Velmo Player - " + title + "   ***   ";
}

void SetSongName(forms::wmain& window, TransportState& state, const std::string& text)
{
    window.lblSongName.Caption = text;
    state.WindowTitle = text;
}

} // namespace velmo
