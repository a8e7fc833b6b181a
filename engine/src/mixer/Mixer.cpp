#include "Mixer.h"

#include "MixLoops.h"

#include "dsp/SampleFormat.h"

#include <algorithm>
#include <array>
#include <utility>

namespace velmo::engine {

namespace {

constexpr std::size_t PieceFrames = 4096; ///< mixed at once; room of the reverb's send
constexpr std::uint32_t GainRampMs = 20;

/// How many of the next `frames` frames a voice takes part in.
std::size_t FramesDue(const Voice& voice, std::size_t frames) noexcept
{
    if (voice.now == Wish::Play)
        return frames;
    return voice.begun ? std::min(frames, voice.fade.Left(Fade::Way::Down)) : 0;
}

void Increase(std::atomic<std::uint64_t>& count, std::uint64_t by) noexcept
{
    if (by > 0) // one thread writes
        count.store(count.load(std::memory_order_relaxed) + by, std::memory_order_relaxed);
}

Fade::Way WayOf(Wish wish) noexcept
{
    return wish == Wish::Play ? Fade::Way::Up : Fade::Way::Down;
}

/// Adds frames to what is at `out`, faded as far as the fade goes on.
void AddTo(float* out, std::span<const float> in, Fade& fade, Wish wish) noexcept
{
    const Fade::Way way = WayOf(wish);
    const std::size_t faded = std::min(in.size() / 2, fade.Left(way));
    AddFaded(out, in.data(), faded, fade, way);
    AddSamples(out + faded * 2, in.data() + faded * 2, in.size() - faded * 2);
}

/// The same where there's nothing at `out`. One voice alone costs a copy, and stays the same bit
/// for bit.
void CopyTo(float* out, std::span<const float> in, Fade& fade, Wish wish) noexcept
{
    const Fade::Way way = WayOf(wish);
    const std::size_t faded = std::min(in.size() / 2, fade.Left(way));
    std::fill_n(out, faded * 2, 0.0f);
    AddFaded(out, in.data(), faded, fade, way);
    std::copy(in.begin() + static_cast<std::ptrdiff_t>(faded * 2), in.end(), out + faded * 2);
}

} // namespace

/// Frames of a block that are mixed at once.
struct Mixer::Piece
{
    float* out = nullptr;  ///< the front pair's sum
    float* send = nullptr; ///< to the reverb; null while it's off
    std::size_t frames = 0;
    std::uint64_t start = 0; ///< output frame
    /// Nothing has been written to the sum of this pair, not even zeros.
    std::array<bool, MaxSpeakerPairs> silent{true, true, true, true};
};

Mixer::Mixer(MixFormat format, Wake& decoder)
    : m_format(format)
    , m_decoder(decoder)
    , m_send(std::make_unique_for_overwrite<float[]>(PieceFrames * 2))
{}

void Mixer::Prepare(std::uint32_t sampleRate, Reverb* reverb) noexcept
{
    m_ramp.SetLength(std::size_t{sampleRate} * GainRampMs / 1000);
    m_reverb = reverb;
}

void Mixer::PrepareSpeakers(std::uint32_t channels)
{
    m_solo = std::make_unique_for_overwrite<float[]>(PieceFrames * 2);
    if (channels > 2)
        m_sums = std::make_unique_for_overwrite<float[]>(PieceFrames * channels);
    m_pairs = channels / 2;
}

void Mixer::Render(float* out, std::size_t frames) noexcept
{
    const bool reserved = std::exchange(m_reserved, false);
    if (!reserved && m_owned.test_and_set(std::memory_order_acquire)) {
        std::fill_n(out, frames * 2 * m_pairs, 0.0f);
    } else {
        if (!reserved) {
            TakeIncoming();
            Settle();
        }
        MixBlock(out, frames);
        Settle();
        m_owned.clear(std::memory_order_release);
    }
    m_frames.store(m_frames.load(std::memory_order_relaxed) + frames, std::memory_order_release);
}

std::size_t Mixer::FramesReady(std::size_t wanted) noexcept
{
    if (!m_reserved && m_owned.test_and_set(std::memory_order_acquire))
        return 0; // who holds it signals afterwards
    TakeIncoming();
    Settle();
    std::size_t gapless = wanted;                    // until a voice being decoded runs dry
    std::size_t left = Reverberating() ? wanted : 0; // until there is nothing more to hear
    bool decoding = false;
    for (const Voice* voice = m_voices; voice != nullptr; voice = voice->next) {
        const std::size_t fill = voice->ring.Fill();
        left = std::max(left, FramesDue(*voice, fill));
        if (voice->now != Wish::Play || voice->ended.load(std::memory_order_acquire))
            continue;
        gapless = std::min(gapless, fill);
        decoding = true;
    }
    const std::size_t ready = decoding ? gapless : std::min(wanted, left);
    m_reserved = ready > 0;
    if (!m_reserved)
        m_owned.clear(std::memory_order_release);
    return ready;
}

void Mixer::WaitForFrames() noexcept
{
    m_framesReady.WaitAlert();
}

void Mixer::WakeWaiting() noexcept
{
    m_framesReady.Signal();
}

void Mixer::Add(Voice& voice) noexcept
{
    voice.stage.store(VoiceStage::Mixed, std::memory_order_relaxed);
    voice.next = m_incoming.load(std::memory_order_relaxed);
    while (!m_incoming.compare_exchange_weak(voice.next, &voice, std::memory_order_acq_rel)) {}
}

void Mixer::SettleUnheard() noexcept
{
    if (m_owned.test_and_set(std::memory_order_acquire))
        return; // a block is being rendered, which does the same
    TakeIncoming();
    for (Voice* voice = m_voices; voice != nullptr; voice = voice->next) {
        if (voice->begun && voice->wish.load(std::memory_order_acquire) != Wish::Play)
            voice->fade.Finish(Fade::Way::Down);
    }
    Settle();
    m_owned.clear(std::memory_order_release);
    m_framesReady.Signal();
}

void Mixer::TakeIncoming() noexcept
{
    // Looked at first, since an exchange costs as much when there is nothing.
    if (m_incoming.load(std::memory_order_relaxed) == nullptr)
        return;
    Voice* voice = m_incoming.exchange(nullptr, std::memory_order_acq_rel);
    while (voice != nullptr) {
        Voice* const following = voice->next;
        voice->next = m_voices;
        m_voices = voice;
        voice = following;
    }
}

/// Takes note of the wishes, and lets go of the voices that are done.
void Mixer::Settle() noexcept
{
    Voice** link = &m_voices;
    bool released = false;
    while (Voice* const voice = *link) {
        if (Done(*voice)) {
            *link = voice->next;
            voice->stage.store(VoiceStage::Released, std::memory_order_release);
            released = true;
        } else {
            link = &voice->next;
        }
    }
    if (released)
        m_decoder.Signal();
}

bool Mixer::Done(Voice& voice) noexcept
{
    voice.now = voice.wish.load(std::memory_order_acquire);
    // The mark of the end is read before the fill, else frames written in between would be lost.
    const bool ended = voice.ended.load(std::memory_order_acquire);
    const bool empty = voice.ring.Fill() == 0;
    if (voice.now != Wish::Play && voice.begun && empty)
        voice.fade.Finish(Fade::Way::Down);
    if (voice.now == Wish::Play || FramesDue(voice, 1) == 0)
        voice.seenWish.store(voice.now, std::memory_order_release);
    if (voice.now == Wish::Drop && FramesDue(voice, 1) == 0)
        return true;
    if (ended && empty)
        voice.finished.store(true, std::memory_order_release);
    return ended && empty;
}

void Mixer::MixBlock(float* out, std::size_t frames) noexcept
{
    m_gap = false;
    const std::uint64_t start = m_frames.load(std::memory_order_relaxed);
    for (std::size_t done = 0; done < frames; done += PieceFrames) {
        const bool reverb = m_reverb != nullptr && m_reverb->Active();
        float* const to = out + done * 2 * m_pairs;
        Piece piece{.out = m_pairs > 1 ? m_sums.get() : to,
                    .send = reverb ? m_send.get() : nullptr,
                    .frames = std::min(PieceFrames, frames - done),
                    .start = start + done};
        const bool sounding = MixPiece(piece);
        if (sounding)
            Finish(piece);
        m_sounding = sounding;
        if (m_pairs > 1)
            Interleave(to, m_sums.get(), PieceFrames * 2, m_pairs, piece.frames);
    }
    Increase(m_underruns, m_gap ? 1 : 0);
}

/// False if it is silence.
bool Mixer::MixPiece(Piece& piece) noexcept
{
    m_loud = false;
    if (piece.send != nullptr)
        std::fill_n(piece.send, piece.frames * 2, 0.0f);
    // What a channel gives up comes before what it begins: both go through the same effects.
    for (Voice* voice = m_voices; voice != nullptr; voice = voice->next) {
        if (voice->now == Wish::Drop)
            MixVoice(*voice, piece);
    }
    for (Voice* voice = m_voices; voice != nullptr; voice = voice->next) {
        if (voice->now != Wish::Drop && !FollowsTail(*voice))
            MixVoice(*voice, piece);
    }
    bool sounding = false;
    for (std::size_t pair = 0; pair < m_pairs; ++pair) {
        if (piece.silent[pair])
            std::fill_n(PairOf(piece, pair), piece.frames * 2, 0.0f);
        sounding = sounding || !piece.silent[pair];
    }
    if (piece.send == nullptr)
        return sounding;
    m_reverb->Process(piece.send, piece.out, piece.frames);
    m_loud = true;
    return true;
}

/// The sum of a pair of speakers.
float* Mixer::PairOf(const Piece& piece, std::size_t pair) const noexcept
{
    return piece.out + pair * PieceFrames * 2;
}

/// Whether a voice has to wait, because the one before it still fades.
bool Mixer::FollowsTail(const Voice& voice) const noexcept
{
    if (voice.begun)
        return false;
    for (const Voice* other = m_voices; other != nullptr; other = other->next) {
        if (other->strip == voice.strip && other->now == Wish::Drop && FramesDue(*other, 1) > 0)
            return true;
    }
    return false;
}

void Mixer::MixVoice(Voice& voice, Piece& piece) noexcept
{
    const std::size_t due = FramesDue(voice, piece.frames);
    if (due == 0)
        return;
    if (!std::exchange(voice.begun, true))
        voice.strip->effects.Begin();
    const bool ended = voice.ended.load(std::memory_order_acquire);
    const SpeakerRoute route = voice.strip->route;
    const bool solo = route.sides != SpeakerRoute::Sides::Both;
    float* const out = solo ? m_solo.get() : PairOf(piece, route.pair);
    const bool first = solo || std::exchange(piece.silent[route.pair], false);
    m_loud = m_loud || !first;
    std::size_t done = 0;
    while (done < due) {
        const std::span<float> in = voice.ring.ReadSpan(due - done);
        if (in.empty())
            break;
        RunStrip(voice, in);
        const auto to = [done](float* start) { return start + done * 2; };
        Fade fade = voice.fade;
        if (piece.send != nullptr && voice.strip->reverberates)
            AddTo(to(piece.send), in, fade, voice.now);
        if (first)
            CopyTo(to(out), in, voice.fade, voice.now);
        else
            AddTo(to(out), in, voice.fade, voice.now);
        voice.ring.Release(in.size() / 2);
        done += in.size() / 2;
    }
    if (first)
        std::fill(out + done * 2, out + piece.frames * 2, 0.0f);
    if (solo)
        AddSolo(piece, route);
    if (done > 0)
        voice.heard.Append(piece.start, done);
    const bool gap = done < due && !ended && voice.now == Wish::Play;
    voice.starved.store(gap, std::memory_order_relaxed);
    m_gap = m_gap || gap;
    if (!ended && voice.ring.Fill() < voice.ring.Capacity() / 2)
        m_decoder.Signal();
}

/// Adds the piece of a voice for one speaker to that.
void Mixer::AddSolo(Piece& piece, SpeakerRoute route) noexcept
{
    float* const out = PairOf(piece, route.pair);
    if (std::exchange(piece.silent[route.pair], false))
        std::fill_n(out, piece.frames * 2, 0.0f);
    else
        m_loud = true;
    const bool right = route.sides == SpeakerRoute::Sides::Right;
    AddToSide(out, m_solo.get(), piece.frames, right ? 1 : 0);
}

/// Takes frames of a voice through its channel's effects, and counts what is too loud.
void Mixer::RunStrip(Voice& voice, std::span<float> samples) noexcept
{
    const bool changed = voice.strip->effects.Update();
    if (changed)
        voice.strip->effects.Process(samples.data(), samples.size() / 2);
    if (changed || voice.loud.load(std::memory_order_relaxed)) {
        Increase(voice.strip->clipped, CountBeyond(samples.data(), samples.size()));
        m_loud = true;
    }
}

/// What the sums go through on their way to the output.
void Mixer::Finish(const Piece& piece) noexcept
{
    const float gain = m_gain.load(std::memory_order_relaxed);
    if (!m_sounding)
        m_ramp.Jump(gain);
    const GainRamp ramp = m_ramp;
    for (std::size_t pair = 0; pair < m_pairs; ++pair) {
        float* const out = PairOf(piece, pair);
        m_ramp = ramp; // all of them go the same way
        m_ramp.Apply(out, piece.frames, gain);
        if (m_format.mono && pair != CentrePair)
            MakeMono(out, piece.frames);
        if (m_loud)
            Increase(m_clipped, CountBeyond(out, piece.frames * 2));
        if (m_format.eightBits)
            Quantise8Bit(out, piece.frames * 2);
    }
}

} // namespace velmo::engine
