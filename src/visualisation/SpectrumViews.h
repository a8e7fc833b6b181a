#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace velmo {

/// The picture that the views draw into: a palette index a pixel, row by row from the bottom row
/// up. One row more than is shown lies above the top one and catches what runs over.
struct SpectrumBuffer
{
    SpectrumBuffer(std::int32_t pixelWidth, std::int32_t pixelHeight);

    std::uint8_t& At(std::int32_t column, std::int32_t row);
    void Clear();

    std::int32_t width;
    std::int32_t height; ///< without the row above
    std::vector<std::uint8_t> bytes;
};

// The views are pure: they read sound and write the buffer, which is all black unless told
// otherwise. A spectrum has 1025 values, of which the first is never drawn. All rounding is to the
// nearest whole number, a half to the even one.

/// Two columns a value, of which the one between two values has their mean height.
void DrawFineSpectrum(std::span<const float> spectrum, SpectrumBuffer& buffer);

/// Which values of a spectrum each of 35 bars sums up, by a logarithmic scale of frequency.
struct BarScale
{
    BarScale();

    struct Band
    {
        std::int32_t end = 0; ///< the first value behind it; it begins where the one before ends
        double divisor = 1;   ///< of the sum: wider bands count less
    };
    std::array<Band, 35> bands;
};

/// Bars of two columns and one of gap.
/// Kept: the last two stand beyond the row's end and run on into the start of the row above.
void DrawBars(std::span<const float> spectrum, const BarScale& scale, SpectrumBuffer& buffer);

/// One column of the history at `position`, brighter where it is louder, with low tones at the
/// bottom, and a white mark on the column behind it. What the buffer holds otherwise stays. Gives
/// the next position.
std::int32_t DrawHistory(std::span<const float> spectrum,
                         std::int32_t position,
                         SpectrumBuffer& buffer);

/// The trace of each channel, one above the other; even ones in entry 1 of the palette, odd ones in
/// entry 127. `samples` are `channels` times the buffer's width, interleaved.
void DrawWave(std::span<const float> samples, std::int32_t channels, SpectrumBuffer& buffer);

} // namespace velmo
