#include "ChannelMap.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace velmo::engine {
namespace {

constexpr std::uint32_t MostChannels = 8;

constexpr float Aside = 0.70710678f; ///< -3 dB

/// What a channel adds to the left and the right side.
struct Share
{
    float left;
    float right;
};

constexpr Share Left = {1, 0};
constexpr Share Right = {0, 1};
constexpr Share Middle = {Aside, Aside};
constexpr Share LowFrequency = {0, 0};
constexpr Share LeftAside = {Aside, 0};
constexpr Share RightAside = {0, Aside};

using Shares = std::array<Share, MostChannels>;

/// By channel count, before scaling.
constexpr std::array<Shares, MostChannels + 1> Layouts = {
    {{},
     {Share{1, 1}},
     {Left, Right},
     {Left, Right, Middle},
     {Left, Right, LeftAside, RightAside},
     {Left, Right, Middle, LeftAside, RightAside},
     {Left, Right, Middle, LowFrequency, LeftAside, RightAside},
     {Left, Right, Middle, LowFrequency, Middle, LeftAside, RightAside},
     {Left, Right, Middle, LowFrequency, LeftAside, RightAside, LeftAside, RightAside}}
};

constexpr Shares Scaled(Shares shares)
{
    float sum = 0; // both sides have the same
    for (const Share& share : shares)
        sum += share.left;
    for (Share& share : shares)
        share = {.left = share.left / std::max(sum, 1.0f),
                 .right = share.right / std::max(sum, 1.0f)};
    return shares;
}

/// The channel count is known to the compiler, which unrolls the inner loop.
template<std::uint32_t Channels>
void Downmix(const float* in, std::size_t frames, float* out) noexcept
{
    static constexpr Shares Mix = Scaled(Layouts[Channels]);
    for (std::size_t i = 0; i < frames; ++i) {
        float left = 0;
        float right = 0;
        for (std::uint32_t channel = 0; channel < Channels; ++channel) {
            const float sample = in[i * Channels + channel];
            left += sample * Mix[channel].left;
            right += sample * Mix[channel].right;
        }
        out[2 * i] = left;
        out[2 * i + 1] = right;
    }
}

void Double(const float* in, std::size_t frames, float* out) noexcept
{
    for (std::size_t i = 0; i < frames; ++i) {
        out[2 * i] = in[i];
        out[2 * i + 1] = in[i];
    }
}

void HalfSum(const float* in, std::size_t frames, float* out) noexcept
{
    for (std::size_t i = 0; i < frames; ++i)
        out[i] = 0.5f * (in[2 * i] + in[2 * i + 1]);
}

} // namespace

void MapToStereo(const float* in, std::size_t frames, std::uint32_t channels, float* out) noexcept
{
    switch (channels) {
    case 1: return Double(in, frames, out);
    case 2: std::memcpy(out, in, frames * 2 * sizeof(float)); return;
    case 3: return Downmix<3>(in, frames, out);
    case 4: return Downmix<4>(in, frames, out);
    case 5: return Downmix<5>(in, frames, out);
    case 6: return Downmix<6>(in, frames, out);
    case 7: return Downmix<7>(in, frames, out);
    case 8: return Downmix<8>(in, frames, out);
    default: std::fill_n(out, frames * 2, 0.0f);
    }
}

void MixToMono(const float* in, std::size_t frames, std::uint32_t channels, float* out) noexcept
{
    if (channels == 1) {
        std::memmove(out, in, frames * sizeof(float));
        return;
    }
    constexpr std::size_t Piece = 256;
    std::array<float, 2 * Piece> stereo; // NOLINT(*-member-init): filled below, piece by piece
    for (std::size_t done = 0; done < frames; done += Piece) {
        const std::size_t count = std::min(Piece, frames - done);
        MapToStereo(in + done * channels, count, channels, stereo.data());
        HalfSum(stereo.data(), count, out + done);
    }
}

} // namespace velmo::engine
