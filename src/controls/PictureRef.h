#pragma once

#include <cstdint>

namespace velmo::controls {

/// The lists of pictures that the windows are made of.
enum class PictureList : std::uint8_t
{
    None,
    wmain,     ///< the main window's own
    wnd,       ///< shared by all windows
    fx,        ///< the equalizer's
    pl,        ///< the playlist's
    listmgr,   ///< the list manager's
    scrollBar, ///< the scroll bar's, 12: track, down, up, ticker
};

/// One picture of the skin: the list that owns it and its place there, from 1. It costs nothing to
/// copy and compare; the pixels stay with the skin.
struct PictureRef
{
    PictureList list = PictureList::None;
    std::uint8_t index = 0;

    bool operator==(const PictureRef&) const = default;
    /// False for "no picture".
    explicit operator bool() const { return list != PictureList::None; }
};

/// The three pictures of a control, by what the mouse does to it.
struct PictureStates
{
    PictureRef normal;
    PictureRef pressed;
    PictureRef hover;
};

/// Three pictures that stand one after the other from `first` on: normal, pressed, hover.
constexpr PictureStates StatesFrom(PictureList list, std::uint8_t first)
{
    const auto at = [&](unsigned step) {
        return PictureRef{list, static_cast<std::uint8_t>(first + step)};
    };
    return {.normal = at(0), .pressed = at(1), .hover = at(2)};
}

} // namespace velmo::controls
