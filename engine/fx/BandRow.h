/// The filters of an equalizer's bands in a row, as many as there are.
#pragma once

#include "Cascade.h"
#include "PeakingBand.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace velmo::fx {

constexpr int MaxBands = 64;

/// What an equalizer is to be: the bands that change the sound, and their filters.
struct BandSet
{
    std::uint64_t active = 0; ///< a bit a band
    std::array<PeakingBand, MaxBands> bands = {};

    bool IsActive(int band) const noexcept { return (active >> band & 1) != 0; }
};

/// Filters in the order of their bands' numbers, with the states of those that are in the row. All
/// by the thread that mixes; doesn't allocate.
class BandRow
{
public:
    /// Makes the row one of the bands in `from`, on their way to `to`, which has the same ones.
    /// Those that were in the row before keep their states.
    void Arrange(const BandSet& from, const BandSet& to) noexcept;

    /// Filters stereo frames in place; `weights` as in `RunCascade`.
    void Run(RunCascade run, float* samples, std::size_t frames, const float* weights) noexcept;

    bool IsEmpty() const noexcept { return m_count == 0; }

    /// Whether no state is infinite or no number.
    bool IsFinite() const noexcept;

    void ClearStates() noexcept;

private:
    /// Of both sides.
    struct State
    {
        std::array<float, 2> s1 = {};
        std::array<float, 2> s2 = {};
    };

    static constexpr int MaxCascades = (MaxBands + Cascade::MaxBands - 1) / Cascade::MaxBands;

    int Cascades() const noexcept { return (m_count + Cascade::MaxBands - 1) / Cascade::MaxBands; }
    std::array<State, MaxBands> States() const noexcept;
    void Place(int place,
               const PeakingBand& from,
               const PeakingBand& to,
               const State& state) noexcept;

    std::array<Cascade, MaxCascades> m_cascades = {};
    std::array<int, MaxBands> m_bandAt = {}; ///< band at a place of the row
    int m_count = 0;
};

} // namespace velmo::fx
