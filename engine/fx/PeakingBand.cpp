#include "PeakingBand.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velmo::fx {

namespace {

constexpr int MaxBands = 64;

/// 1/Q, for a bandwidth in octaves between the points of half the gain in dB (the cookbook's
/// formula for digital filters), or of Q itself. Limited where a centre next to half the rate would
/// make it infinite.
double InverseQ(const BASS_BFX_PEAKEQ& record, double angle)
{
    constexpr double Limit = 1e6;
    if (record.fBandwidth <= 0)
        return std::min(1.0 / static_cast<double>(record.fQ), Limit);
    const auto octaves = static_cast<double>(record.fBandwidth);
    const double width = std::numbers::ln2 / 2.0 * octaves * angle / std::sin(angle);
    return std::clamp(2.0 * std::sinh(width), 1.0 / Limit, Limit);
}

} // namespace

bool IsPossible(const BASS_BFX_PEAKEQ& record) noexcept
{
    return record.lBand >= 0 && record.lBand < MaxBands && std::isfinite(record.fBandwidth)
           && std::isfinite(record.fQ) && std::isfinite(record.fCenter)
           && std::isfinite(record.fGain) && record.fCenter > 0
           && (record.fBandwidth > 0 || record.fQ > 0) && record.lChannel == BASS_BFX_CHANALL;
}

bool IsActive(const BASS_BFX_PEAKEQ& record, std::uint32_t sampleRate) noexcept
{
    return record.fGain != 0 && static_cast<double>(record.fCenter) * 2.0 < sampleRate;
}

PeakingBand DesignPeakingBand(const BASS_BFX_PEAKEQ& record, std::uint32_t sampleRate) noexcept
{
    const double angle = 2.0 * std::numbers::pi * static_cast<double>(record.fCenter) / sampleRate;
    const double gainDb = std::clamp(static_cast<double>(record.fGain), -96.0, 96.0);
    const double amplitude = std::pow(10.0, gainDb / 40.0);
    const double g = std::tan(angle / 2.0);
    const double k = InverseQ(record, angle) / amplitude;
    const double a1 = 1.0 / (1.0 + g * (g + k));
    const double a2 = g * a1;
    const double a3 = g * a2;
    const double mix = k * (amplitude * amplitude - 1.0);
    return {.keep = static_cast<float>(2.0 * a1 - 1.0),
            .couple = static_cast<float>(2.0 * a2),
            .follow = static_cast<float>(2.0 * a3),
            .ring = static_cast<float>(mix * a1),
            .direct = static_cast<float>(mix * a2)};
}

} // namespace velmo::fx
