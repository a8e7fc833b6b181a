// Plain loops over plain arrays, which the compiler turns into vector code.

#include "MixLoops.h"

#include <algorithm>
#include <cstdint>

namespace velmo::engine {

void AddSamples(float* __restrict out, const float* __restrict in, std::size_t samples) noexcept
{
    for (std::size_t i = 0; i < samples; ++i)
        out[i] += in[i];
}

void AddFaded(float* __restrict out,
              const float* __restrict in,
              std::size_t frames,
              Fade& fade,
              Fade::Way way) noexcept
{
    for (std::size_t i = 0; i < frames; ++i) {
        const float gain = fade.Step(way);
        out[2 * i] += in[2 * i] * gain;
        out[2 * i + 1] += in[2 * i + 1] * gain;
    }
}

void Blend(float* __restrict wet,
           const float* __restrict dry,
           std::size_t frames,
           Fade& fade,
           Fade::Way way) noexcept
{
    for (std::size_t i = 0; i < frames; ++i) {
        const float gain = fade.Step(way);
        wet[2 * i] = dry[2 * i] + (wet[2 * i] - dry[2 * i]) * gain;
        wet[2 * i + 1] = dry[2 * i + 1] + (wet[2 * i + 1] - dry[2 * i + 1]) * gain;
    }
}

void Scale(float* out, std::size_t samples, float gain) noexcept
{
    for (std::size_t i = 0; i < samples; ++i)
        out[i] *= gain;
}

void MakeMono(float* out, std::size_t frames) noexcept
{
    for (std::size_t i = 0; i < frames; ++i) {
        const float mean = (out[2 * i] + out[2 * i + 1]) * 0.5f;
        out[2 * i] = mean;
        out[2 * i + 1] = mean;
    }
}

void AddToSide(float* __restrict out,
               const float* __restrict in,
               std::size_t frames,
               std::size_t side) noexcept
{
    for (std::size_t i = 0; i < frames; ++i)
        out[2 * i + side] += (in[2 * i] + in[2 * i + 1]) * 0.5f;
}

void Interleave(float* __restrict out,
                const float* __restrict in,
                std::size_t stride,
                std::size_t pairs,
                std::size_t frames) noexcept
{
    for (std::size_t pair = 0; pair < pairs; ++pair) {
        const float* const from = in + pair * stride;
        for (std::size_t i = 0; i < frames; ++i) {
            out[2 * (pairs * i + pair)] = from[2 * i];
            out[2 * (pairs * i + pair) + 1] = from[2 * i + 1];
        }
    }
}

std::size_t CountBeyond(const float* in, std::size_t samples) noexcept
{
    constexpr std::size_t Piece = 1U << 20U; // no lane of 32 bits runs over
    std::size_t count = 0;
    for (std::size_t done = 0; done < samples; done += Piece) {
        const std::size_t end = std::min(samples, done + Piece);
        std::uint32_t beyond = 0;
        for (std::size_t i = done; i < end; ++i)
            beyond += std::fabs(in[i]) > 1.0f ? 1U : 0U;
        count += beyond;
    }
    return count;
}

} // namespace velmo::engine
