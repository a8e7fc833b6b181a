/// From the parameters of a reverb to the numbers that its network works with.
#pragma once

#include "Reverb.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace velmo::engine {

/// What a `ReverbNetwork` is built of. Lengths in frames, each at least 1.
struct ReverbDesign
{
    static constexpr std::size_t Lines = 8;
    static constexpr std::size_t Diffusers = 4;

    /// What can't be changed while it sounds.
    struct Delays
    {
        std::uint32_t before = 1; ///< from the send to the first reflection's way
        std::array<std::array<std::uint32_t, Diffusers>, 2> diffusers = {}; ///< left, right
        std::array<std::uint32_t, Lines> lines = {};
        float diffusion = 0; ///< coefficient of the diffusers

        bool operator==(const Delays&) const = default;

        /// All of them: the network's memory.
        std::size_t Total() const noexcept;

        /// A sound goes through each place of the memory in this time.
        std::size_t Longest() const noexcept;
    };

    /// What can. A line's output y goes round as gain * y + damp * (what went round before).
    struct Tuning
    {
        std::array<float, Lines> gain = {};
        std::array<float, Lines> damp = {};
        float scale = 0; ///< of the output: noise comes out as loud as it goes in
    };

    Delays delays;
    Tuning tuning;
    float level = 0;
};

/// The network for the parameters, whose ranges `Reverb::Set` tells.
///
/// After J.-M. Jot and A. Chaigne, "Digital delay networks for designing artificial reverberators":
/// a line of n frames is followed by the gain by which sound fades in n frames, 10^(-3 n / (decay *
/// rate)), and a low-pass of one pole that makes it the power 1 + 2 * damping of that at 5 kHz.
/// Lines are no longer than a quarter of the decay, so that they don't fade in a few coarse steps.
ReverbDesign DesignReverb(const ReverbParameters& parameters, std::uint32_t sampleRate);

/// Frames of memory that any design for the rate does with.
std::size_t MostReverbFrames(std::uint32_t sampleRate);

} // namespace velmo::engine
