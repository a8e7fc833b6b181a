// Plain loops over plain arrays, which the compiler turns into vector code.

#include "MixLoops.h"

namespace velmo::engine {

void AddSamples(float* __restrict out, const float* __restrict in, std::size_t samples) noexcept
{
    for (std::size_t i = 0; i < samples; ++i)
        out[i] += in[i];
}

void Scale(float* out, std::size_t samples, float gain) noexcept
{
    for (std::size_t i = 0; i < samples; ++i)
        out[i] *= gain;
}

void ScaleRamp(float* out, std::size_t frames, float from, float to) noexcept
{
    const float step = (to - from) / static_cast<float>(frames);
    for (std::size_t i = 0; i < frames; ++i) {
        const float gain = i + 1 == frames ? to : from + step * static_cast<float>(i + 1);
        out[2 * i] *= gain;
        out[2 * i + 1] *= gain;
    }
}

void MakeMono(float* out, std::size_t frames) noexcept
{
    for (std::size_t i = 0; i < frames; ++i) {
        const float mean = (out[2 * i] + out[2 * i + 1]) * 0.5f;
        out[2 * i] = mean;
        out[2 * i + 1] = mean;
    }
}

} // namespace velmo::engine
