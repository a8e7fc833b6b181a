#include "SpectrumViews.h"

#include "core/NumberText.h"

#include <algorithm>
#include <cmath>

namespace velmo {

namespace {

/// Height of a column in pixels; below 1 there is nothing to see.
std::int32_t HeightOf(double level, double scale, const SpectrumBuffer& buffer)
{
    const std::int32_t height = RoundHalfEven(std::sqrt(level) * scale * buffer.height - 4);
    return std::min(height, buffer.height);
}

/// Pixels from the bottom up, each in the entry that its height is.
void FillColumn(std::int32_t column, std::int32_t height, SpectrumBuffer& buffer)
{
    for (std::int32_t row = height - 1; row >= 0; --row)
        buffer.At(column, row) = static_cast<std::uint8_t>(row + 1);
}

} // namespace

SpectrumBuffer::SpectrumBuffer(std::int32_t pixelWidth, std::int32_t pixelHeight)
    : width(pixelWidth)
    , height(pixelHeight)
    , bytes(static_cast<std::size_t>(pixelWidth) * (static_cast<std::size_t>(pixelHeight) + 1))
{}

std::uint8_t& SpectrumBuffer::At(std::int32_t column, std::int32_t row)
{
    return bytes[static_cast<std::size_t>(row) * static_cast<std::size_t>(width)
                 + static_cast<std::size_t>(column)];
}

void SpectrumBuffer::Clear()
{
    std::fill(bytes.begin(), bytes.end(), std::uint8_t{0});
}

void DrawFineSpectrum(std::span<const float> spectrum, SpectrumBuffer& buffer)
{
    constexpr double Scale = 3;
    std::int32_t previous = 0;
    for (std::int32_t x = 0; x < buffer.width / 2; ++x) {
        const std::int32_t height =
            HeightOf(spectrum[static_cast<std::size_t>(x) + 1], Scale, buffer);
        if (x != 0)
            FillColumn(2 * x - 1, RoundHalfEven((height + previous) / 2.0), buffer);
        previous = height;
        FillColumn(2 * x, height, buffer);
    }
}

BarScale::BarScale()
{
    constexpr std::int32_t LastValue = 1023;
    constexpr double Octaves = 10;
    std::int32_t begin = 0;
    for (std::size_t band = 0; band < bands.size(); ++band) {
        const double octaves =
            static_cast<double>(band) * Octaves / static_cast<double>(bands.size() - 1);
        const std::int32_t end = std::min(RoundHalfEven(std::pow(2.0, octaves)), LastValue);
        bands[band].end = std::max(end, begin + 1);
        bands[band].divisor = std::log10(10.0 + bands[band].end - begin);
        begin = bands[band].end;
    }
}

void DrawBars(std::span<const float> spectrum, const BarScale& scale, SpectrumBuffer& buffer)
{
    constexpr double Scale = 1.7;
    const std::int32_t barWidth = RoundHalfEven(buffer.width / 28.0 - 2);
    const std::int32_t pitch = buffer.width / 28;
    std::int32_t value = 0;
    std::int32_t column = 0;
    for (const auto& [end, divisor] : scale.bands) {
        float sum = 0;
        for (; value < end; ++value)
            sum += spectrum[static_cast<std::size_t>(value) + 1];
        const std::int32_t height = HeightOf(static_cast<double>(sum) / divisor, Scale, buffer);
        for (std::int32_t bar = 0; bar < barWidth; ++bar)
            FillColumn(column + bar, height, buffer);
        column += pitch;
    }
}

std::int32_t DrawHistory(std::span<const float> spectrum,
                         std::int32_t position,
                         SpectrumBuffer& buffer)
{
    constexpr std::int32_t Darkest = 128;
    constexpr std::int32_t Brightest = 127;
    constexpr std::uint8_t White = 255;
    constexpr double Scale = 3;
    for (std::int32_t row = 0; row < buffer.height; ++row) {
        const double level = spectrum[static_cast<std::size_t>(row) + 1];
        const std::int32_t brightness =
            std::min(RoundHalfEven(std::sqrt(level) * Scale * Brightest), Brightest);
        buffer.At(position, row) = static_cast<std::uint8_t>(Darkest + brightness);
    }
    const std::int32_t next = (position + 1) % buffer.width;
    for (std::int32_t row = 0; row < buffer.height; ++row)
        buffer.At(next, row) = White;
    return next;
}

void DrawWave(std::span<const float> samples, std::int32_t channels, SpectrumBuffer& buffer)
{
    constexpr std::uint8_t Even = 1;
    constexpr std::uint8_t Odd = 127;
    std::int32_t y = 0;
    for (std::int32_t channel = 0; channel < channels; ++channel)
        for (std::int32_t x = 0; x < buffer.width; ++x) {
            const double sample =
                samples[static_cast<std::size_t>(x) * static_cast<std::size_t>(channels)
                        + static_cast<std::size_t>(channel)];
            const std::int32_t target =
                std::clamp(RoundHalfEven((1 - sample) * buffer.height / 2), 0, buffer.height - 1);
            if (x == 0)
                y = target;
            do {
                y += (target > y ? 1 : 0) - (target < y ? 1 : 0);
                buffer.At(x, y) = channel % 2 != 0 ? Odd : Even;
            } while (y != target);
        }
}

} // namespace velmo
