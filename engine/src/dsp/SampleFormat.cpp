#include "SampleFormat.h"

#include <algorithm>
#include <bit>
#include <cmath>

#ifdef __SSE2__
#  include <emmintrin.h>
#endif

// NOLINTBEGIN(portability-simd-intrinsics): a plain loop stands beside every use

namespace velmo::engine {
namespace {

/// `sample` scaled and limited; 0 for what is no number.
float Limited(float sample, float scale, float least, float most) noexcept
{
    const float scaled = sample * scale;
    return std::isnan(scaled) ? 0.0f : std::clamp(scaled, least, most);
}

#ifdef __SSE2__
/// The same for four samples. The smaller and the larger of two take the second operand where one
/// is no number, so those are made 0 before.
__m128 Limited(const float* samples, float scale, float least, float most) noexcept
{
    const __m128 scaled = _mm_mul_ps(_mm_loadu_ps(samples), _mm_set1_ps(scale));
    const __m128 numbers = _mm_and_ps(scaled, _mm_cmpord_ps(scaled, scaled));
    return _mm_max_ps(_mm_min_ps(numbers, _mm_set1_ps(most)), _mm_set1_ps(least));
}
#endif

} // namespace

void ToInt16(const float* in, std::size_t count, std::int16_t* out) noexcept
{
    std::size_t i = 0;
#ifdef __SSE2__
    for (; i + 8 <= count; i += 8) {
        const __m128i low = _mm_cvtps_epi32(Limited(in + i, 32768.0f, -32768.0f, 32767.0f));
        const __m128i high = _mm_cvtps_epi32(Limited(in + i + 4, 32768.0f, -32768.0f, 32767.0f));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), _mm_packs_epi32(low, high));
    }
#endif
    for (; i < count; ++i)
        out[i] =
            static_cast<std::int16_t>(std::lrintf(Limited(in[i], 32768.0f, -32768.0f, 32767.0f)));
}

void FromInt16(const std::int16_t* in, std::size_t count, float* out) noexcept
{
    for (std::size_t i = 0; i < count; ++i)
        out[i] = static_cast<float>(in[i]) * (1.0f / 32768.0f);
}

void ToInt16LittleEndian(const float* in, std::size_t count, std::uint8_t* out) noexcept
{
    constexpr std::size_t Piece = 512;
    std::int16_t piece[Piece]; // NOLINT(*-member-init): filled below
    for (std::size_t done = 0; done < count; done += Piece) {
        const std::size_t samples = std::min(Piece, count - done);
        ToInt16(in + done, samples, piece);
        for (std::size_t i = 0; i < samples; ++i) {
            const auto bits = static_cast<std::uint16_t>(piece[i]);
            out[2 * (done + i)] = static_cast<std::uint8_t>(bits);
            out[2 * (done + i) + 1] = static_cast<std::uint8_t>(bits >> 8U);
        }
    }
}

void Quantise8Bit(float* samples, std::size_t count) noexcept
{
    std::size_t i = 0;
#ifdef __SSE2__
    for (; i + 4 <= count; i += 4) {
        const __m128i steps = _mm_cvtps_epi32(Limited(samples + i, 128.0f, -128.0f, 127.0f));
        _mm_storeu_ps(samples + i, _mm_mul_ps(_mm_cvtepi32_ps(steps), _mm_set1_ps(1.0f / 128.0f)));
    }
#endif
    for (; i < count; ++i)
        samples[i] = std::nearbyint(Limited(samples[i], 128.0f, -128.0f, 127.0f)) / 128.0f;
}

} // namespace velmo::engine

// NOLINTEND(portability-simd-intrinsics)
