#pragma once

#include <cstddef>
#include <cstdint>

namespace velmo::engine {

/// Which speakers a channel's two sides go to.
///
/// A frame of the device is made of pairs: front, centre and low frequency, back, side, of which it
/// has the first, the first three or all. That is the order of a WAVE file.
struct SpeakerRoute
{
    enum class Sides : std::uint8_t
    {
        Both,
        Left, ///< the pair's left speaker plays the mean of both sides
        Right,
    };

    std::size_t pair = 0;
    Sides sides = Sides::Both;
};

inline constexpr std::size_t MaxSpeakerPairs = 4;
inline constexpr std::size_t CentrePair = 1; ///< the one whose two speakers aren't sides

} // namespace velmo::engine
