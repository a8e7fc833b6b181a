#include "HeardSound.h"

#include "dsp/Spectrum.h"

#include <algorithm>
#include <array>

namespace velmo::engine {

namespace {

constexpr std::size_t PieceFrames = 256;

/// Writes frames of two samples as frames of `channels`.
void Spread(std::span<const float> stereo, std::uint32_t channels, float* out) noexcept
{
    for (std::size_t i = 0; i < stereo.size(); i += 2) {
        out = std::copy_n(stereo.data() + i, std::min(channels, 2U), out);
        out = std::fill_n(out, channels - std::min(channels, 2U), 0.0f);
    }
}

} // namespace

// In the order of the members: once a voice has finished, no more frames come; and the frame that
// is heard may have been mixed after the look began.
HeardSound::HeardSound(const Voice& voice, std::uint64_t heardOut) noexcept
    : m_finished(voice.finished.load(std::memory_order_acquire))
    , m_past(voice.ring)
    , m_heard(std::clamp(voice.heard.FramesHeard(heardOut), m_past.Begin(), m_past.End()))
{}

std::size_t HeardSound::CopyFromHere(std::span<float> out, std::uint32_t channels) const noexcept
{
    const std::size_t wanted = out.size() / channels;
    const std::size_t kept = m_past.End() - m_past.Begin();
    const std::size_t most = m_finished            ? m_past.End() - m_heard
                             : m_past.Begin() == 0 ? wanted
                                                   : kept;
    const std::size_t frames = std::min(wanted, most);
    CopyAround(out.first(frames * channels), channels);
    return frames;
}

void HeardSound::SumAround(std::span<float> sums) const noexcept
{
    auto [silent, next, left] = Around(sums.size());
    float* place = std::fill_n(sums.data(), silent, 0.0f);
    while (left > 0) {
        const std::span<const float> piece = m_past.Piece(next, left);
        const std::size_t frames = piece.size() / 2;
        Spectrum::SumSides(piece, place);
        next += frames;
        left -= frames;
        place += frames;
    }
}

HeardSound::Stretch HeardSound::Around(std::size_t frames) const noexcept
{
    const std::size_t kept = std::min<std::uint64_t>(frames, m_past.End() - m_past.Begin());
    return {
        .silent = frames - kept, .start = std::min(m_heard, m_past.End() - kept), .frames = kept};
}

void HeardSound::CopyAround(std::span<float> out, std::uint32_t channels) const noexcept
{
    auto [silent, next, left] = Around(out.size() / channels);
    float* place = std::fill_n(out.data(), silent * channels, 0.0f);
    if (channels == 2) {
        m_past.Copy(next, {place, left * 2});
        return;
    }
    std::array<float, PieceFrames * 2> piece; // NOLINT(*-member-init): filled below
    while (left > 0) {
        const std::size_t frames = std::min(left, PieceFrames);
        const std::span<float> stereo = std::span(piece).first(frames * 2);
        m_past.Copy(next, stereo);
        Spread(stereo, channels, place);
        next += frames;
        left -= frames;
        place += frames * channels;
    }
}

} // namespace velmo::engine
