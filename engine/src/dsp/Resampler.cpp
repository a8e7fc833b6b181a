#include "Resampler.h"

#include <soxr.h>

namespace velmo::engine {

Resampler::Resampler(std::uint32_t inRate, std::uint32_t outRate, std::uint32_t channels)
{
    const soxr_io_spec_t floats = soxr_io_spec(SOXR_FLOAT32_I, SOXR_FLOAT32_I);
    const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_HQ, 0);
    const soxr_runtime_spec_t oneThread = soxr_runtime_spec(1);
    soxr_error_t error = nullptr;
    m_soxr.reset(soxr_create(inRate, outRate, channels, &error, &floats, &quality, &oneThread));
    if (error != nullptr)
        m_soxr.reset();
}

void Resampler::Deleter::operator()(soxr* resampler) const noexcept
{
    soxr_delete(resampler);
}

Resampler::Step Resampler::Process(const float* in,
                                   std::size_t inFrames,
                                   float* out,
                                   std::size_t outCapacity) noexcept
{
    Step step;
    // No input would tell the library that the stream has ended.
    if (m_soxr && inFrames > 0
        && soxr_process(m_soxr.get(), in, inFrames, &step.used, out, outCapacity, &step.made)
               != nullptr)
        return {};
    return step;
}

std::size_t Resampler::Flush(float* out, std::size_t outCapacity) noexcept
{
    std::size_t made = 0;
    if (m_soxr
        && soxr_process(m_soxr.get(), nullptr, 0, nullptr, out, outCapacity, &made) != nullptr)
        return 0;
    return made;
}

void Resampler::Clear() noexcept
{
    if (m_soxr && soxr_clear(m_soxr.get()) != nullptr)
        m_soxr.reset();
}

} // namespace velmo::engine
