#pragma once

#include "decode/Source.h"
#include "dsp/Resampler.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace velmo::engine {

/// Whether a channel keeps its sides apart.
enum class Reduction
{
    None,
    ToMono,
};

/// A source as the mixer wants it: frames of two channels at the device's rate.
///
/// Made and asked for its format by the thread that opens a channel; `Seek` and `Read` belong to
/// the decoding thread alone.
class Feed
{
public:
    Feed(std::unique_ptr<Source> source, std::uint32_t deviceRate, Reduction reduction);
    ~Feed();
    Feed(const Feed&) = delete;
    Feed& operator=(const Feed&) = delete;

    const BASS_SOURCE_FORMAT& Format() const noexcept { return m_format; }
    /// As `Source::Plugin`. Any thread.
    const std::shared_ptr<const void>& Plugin() const noexcept { return m_source->Plugin(); }

    /// Whether samples beyond -1..1 may come: from the source, or from the conversion of its rate.
    bool MayExceed() const noexcept
    {
        return m_format.limited == 0 || m_format.sampleRate != m_deviceRate;
    }

    /// The next `Read` begins with the source's frame `frame`. False if the source can't be moved:
    /// it then gives nothing more.
    bool Seek(std::uint64_t frame);

    /// Fills `out` with up to `frames` frames; fewer only at the end.
    std::size_t Read(float* out, std::size_t frames);

private:
    std::size_t ReadStereo(float* out, std::size_t frames);
    std::size_t ReadResampled(float* out, std::size_t frames);
    void RefillPending();

    std::unique_ptr<Source> m_source;
    BASS_SOURCE_FORMAT m_format;
    std::uint32_t m_deviceRate;
    Reduction m_reduction;
    std::vector<float> m_raw; ///< frames as the source gives them, where it has not two channels
    // With another rate than the device's:
    std::unique_ptr<Resampler> m_resampler;
    std::vector<float> m_pending; ///< frames at the source's rate, not yet taken by the resampler
    std::size_t m_pendingStart = 0;
    std::size_t m_pendingEnd = 0;
    bool m_sourceEnded = false;
};

} // namespace velmo::engine
