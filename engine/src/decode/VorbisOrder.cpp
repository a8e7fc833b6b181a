#include "VorbisOrder.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace velmo::engine {
namespace {

constexpr std::size_t MostChannels = 8;

/// For every channel count, which of the given channels stands at each place of a WAV file's order.
using ChannelOrder = std::array<std::uint8_t, MostChannels>;
constexpr std::array<ChannelOrder, MostChannels + 1> WavOrder = {
    {{},
     {0},
     {0, 1},
     {0, 2, 1},
     {0, 1, 2, 3},
     {0, 2, 1, 3, 4},
     {0, 2, 1, 5, 3, 4},
     {0, 2, 1, 6, 5, 3, 4},
     {0, 2, 1, 7, 5, 6, 3, 4}}
};

} // namespace

std::size_t VorbisChannelAt(std::size_t place, std::size_t channels) noexcept
{
    return WavOrder.at(channels).at(place);
}

void ToWavOrder(std::span<float> samples, std::size_t channels) noexcept
{
    if (channels < 3 || channels == 4 || channels > MostChannels)
        return;
    const ChannelOrder& order = WavOrder.at(channels);
    std::array<float, MostChannels> frame = {};
    for (std::size_t at = 0; at + channels <= samples.size(); at += channels) {
        std::copy_n(samples.data() + at, channels, frame.data());
        for (std::size_t channel = 0; channel < channels; ++channel)
            samples[at + channel] = frame.at(order.at(channel));
    }
}

} // namespace velmo::engine
