/// The equalizer of one channel.
#pragma once

#include "BandRow.h"

#include "dsp/TripleBuffer.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace velmo::fx {

/// Peaking filters in a row, in the order of their numbers. `Set` and `Get` are called by one
/// thread at a time, `Process` and `Reset` by the one that mixes, at the same time as the others;
/// neither side waits for the other, and nothing allocates.
///
/// What is set before the first `Process` holds from the first frame on. A later change is reached
/// on a smooth curve (all derivatives up to the second are continuous) in 30 ms, and one that comes
/// meanwhile in as many after it. Bands that do nothing aren't calculated: without any other the
/// sound is the same to the bit. A band on its way to 0 dB is in the row until its part of the
/// output has come down to exactly 0. No delay is added.
class Equalizer
{
public:
    explicit Equalizer(std::uint32_t sampleRate, RunCascade run = FastestCascade()) noexcept;

    /// Makes or changes the band of the record: `BASS_OK`, or `BASS_ERROR_ILLPARAM` for one that
    /// can't be.
    int Set(const BASS_BFX_PEAKEQ& record) noexcept;

    /// Fills the record of the band `record.lBand`: `BASS_OK`, or `BASS_ERROR_ILLPARAM` where there
    /// is none.
    int Get(BASS_BFX_PEAKEQ& record) const noexcept;

    /// Filters interleaved stereo frames in place. Where the filters have gone beyond all numbers,
    /// as after a sample that is none, they begin anew with the next call, and such samples of this
    /// one are 0.
    void Process(float* samples, std::size_t frames) noexcept;

    /// Forgets the sound so far; changes under way are done.
    void Reset() noexcept;

private:
    void TakeChange() noexcept;
    void BeginMove(const BandSet& goal) noexcept;
    void Settle() noexcept;
    void Move(float* samples, std::size_t frames) noexcept;

    // Of the thread that sets:
    std::uint32_t m_sampleRate;
    std::array<BASS_BFX_PEAKEQ, MaxBands> m_records = {};
    std::uint64_t m_present = 0; ///< a bit a band
    BandSet m_wanted;

    engine::TripleBuffer<BandSet> m_handover;

    // Of the thread that mixes:
    RunCascade m_run;
    BandRow m_row;
    BandSet m_goal;            ///< reached, or on the way to
    std::size_t m_moveFrames;  ///< that a change takes
    std::size_t m_movedFrames; ///< of the change under way; `m_moveFrames`: there is none
    bool m_started = false;
};

} // namespace velmo::fx
