#include "SampleCopy.h"

extern "C" {
#include <libavutil/frame.h>
#include <libavutil/samplefmt.h>
}

#include <cmath>
#include <cstddef>
#include <cstdint>

namespace velmo::engine {
namespace {

float ToFloat(std::uint8_t sample) noexcept
{
    return (static_cast<float>(sample) - 128.0f) / 128.0f;
}

float ToFloat(std::int16_t sample) noexcept
{
    return static_cast<float>(sample) / 32768.0f;
}

float ToFloat(std::int32_t sample) noexcept
{
    return static_cast<float>(sample) / 2147483648.0f;
}

float ToFloat(float sample) noexcept
{
    return std::abs(sample) <= 1e6f ? sample : 0.0f;
}

float ToFloat(double sample) noexcept
{
    return ToFloat(static_cast<float>(sample));
}

template<typename Sample>
void CopyPlanes(const AVFrame& frame, std::span<float> out) noexcept
{
    const auto channels = static_cast<std::size_t>(frame.ch_layout.nb_channels);
    const bool isPlanar = av_sample_fmt_is_planar(static_cast<AVSampleFormat>(frame.format)) != 0;
    for (std::size_t channel = 0; channel < channels; ++channel) {
        // One plane a channel, or one for all of them.
        const auto* const plane = // NOLINTNEXTLINE(*-reinterpret-cast): the library has bytes
            reinterpret_cast<const Sample*>(frame.extended_data[isPlanar ? channel : 0]);
        const std::size_t step = isPlanar ? 1 : channels;
        const Sample* sample = isPlanar ? plane : plane + channel;
        for (std::size_t i = channel; i < out.size(); i += channels, sample += step)
            out[i] = ToFloat(*sample);
    }
}

} // namespace

bool CanCopySamples(const AVFrame& frame) noexcept
{
    switch (av_get_packed_sample_fmt(static_cast<AVSampleFormat>(frame.format))) {
    case AV_SAMPLE_FMT_U8:
    case AV_SAMPLE_FMT_S16:
    case AV_SAMPLE_FMT_S32:
    case AV_SAMPLE_FMT_FLT:
    case AV_SAMPLE_FMT_DBL: return true;
    default: return false;
    }
}

void CopySamples(const AVFrame& frame, std::span<float> out) noexcept
{
    switch (av_get_packed_sample_fmt(static_cast<AVSampleFormat>(frame.format))) {
    case AV_SAMPLE_FMT_U8: CopyPlanes<std::uint8_t>(frame, out); break;
    case AV_SAMPLE_FMT_S16: CopyPlanes<std::int16_t>(frame, out); break;
    case AV_SAMPLE_FMT_S32: CopyPlanes<std::int32_t>(frame, out); break;
    case AV_SAMPLE_FMT_FLT: CopyPlanes<float>(frame, out); break;
    case AV_SAMPLE_FMT_DBL: CopyPlanes<double>(frame, out); break;
    default: break;
    }
}

} // namespace velmo::engine
