/// Conversion between sample rates.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

struct soxr;

namespace velmo::engine {

/// Converts interleaved float frames from one fixed rate to another, by libsoxr in its quality HQ:
/// about 125 dB. A stream of n frames gives round(n * outRate / inRate) frames altogether, aligned
/// in time with its input. One thread at a time; starts no threads of its own. The constructor
/// allocates, and the first calls may.
class Resampler
{
public:
    /// What one call has done, in frames.
    struct Step
    {
        std::size_t used = 0; ///< taken from the input
        std::size_t made = 0; ///< written to the output
    };

    /// Rates in Hz, above 0; `channels` 1 to 8. Without memory, or for rates that can't be
    /// converted, every call does nothing.
    Resampler(std::uint32_t inRate, std::uint32_t outRate, std::uint32_t channels);

    /// Converts up to `inFrames` frames of `in` into at most `outCapacity` frames at `out`. May
    /// take all input and give nothing yet; takes less only when the output is full. Not after
    /// `Flush`, unless `Clear` comes between.
    Step Process(const float* in,
                 std::size_t inFrames,
                 float* out,
                 std::size_t outCapacity) noexcept;

    /// After the last input: gives the frames that are still inside, up to `outCapacity`. To be
    /// called until it gives 0.
    std::size_t Flush(float* out, std::size_t outCapacity) noexcept;

    /// Forgets what is inside, as after a seek: the next frames are the first of a new stream.
    void Clear() noexcept;

private:
    struct Deleter
    {
        void operator()(soxr* resampler) const noexcept;
    };

    std::unique_ptr<soxr, Deleter> m_soxr;
};

} // namespace velmo::engine
