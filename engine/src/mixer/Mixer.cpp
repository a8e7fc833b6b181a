#include "Mixer.h"

#include "MixLoops.h"

#include "dsp/SampleFormat.h"

#include <algorithm>
#include <utility>

namespace velmo::engine {

Mixer::Mixer(MixFormat format, Wake& decoder) noexcept
    : m_format(format)
    , m_decoder(decoder)
{}

void Mixer::Render(float* out, std::size_t frames) noexcept
{
    const bool reserved = std::exchange(m_reserved, false);
    if (!reserved && m_owned.test_and_set(std::memory_order_acquire)) {
        std::fill_n(out, frames * 2, 0.0f);
    } else {
        if (!reserved) {
            TakeIncoming();
            ReleaseDone();
        }
        const bool sounding = MixVoices(out, frames);
        if (sounding)
            ApplyGain(out, frames);
        else
            std::fill_n(out, frames * 2, 0.0f);
        m_sounding = sounding;
        ReleaseDone();
        m_owned.clear(std::memory_order_release);
    }
    m_frames.store(m_frames.load(std::memory_order_relaxed) + frames, std::memory_order_release);
}

std::size_t Mixer::FramesReady(std::size_t wanted) noexcept
{
    if (!m_reserved && m_owned.test_and_set(std::memory_order_acquire))
        return 0; // who holds it signals afterwards
    TakeIncoming();
    ReleaseDone();
    std::size_t gapless = wanted; // until a voice that is still being decoded runs dry
    std::size_t left = 0;         // until the last voice is at its end
    bool decoding = false;
    for (const Voice* voice = m_voices; voice != nullptr; voice = voice->next) {
        if (voice->seenWish.load(std::memory_order_relaxed) != Wish::Play)
            continue;
        const bool ended = voice->ended.load(std::memory_order_acquire);
        const std::size_t fill = voice->ring.Fill();
        left = std::max(left, fill);
        if (!ended)
            gapless = std::min(gapless, fill);
        decoding = decoding || !ended;
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

void Mixer::ReleaseDropped() noexcept
{
    if (m_owned.test_and_set(std::memory_order_acquire))
        return; // a block is being rendered, which does the same
    TakeIncoming();
    ReleaseDone();
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

void Mixer::ReleaseDone() noexcept
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
    const Wish wish = voice.wish.load(std::memory_order_acquire);
    voice.seenWish.store(wish, std::memory_order_release);
    if (wish == Wish::Drop)
        return true;
    // The mark of the end is read before the fill, else frames written in between would be lost.
    if (!voice.ended.load(std::memory_order_acquire) || voice.ring.Fill() != 0)
        return false;
    voice.finished.store(true, std::memory_order_release);
    return true;
}

/// False if no voice plays: then `out` is not touched.
bool Mixer::MixVoices(float* out, std::size_t frames) noexcept
{
    bool first = true;
    for (Voice* voice = m_voices; voice != nullptr; voice = voice->next) {
        if (voice->seenWish.load(std::memory_order_relaxed) != Wish::Play)
            continue;
        MixVoice(*voice, out, frames, first);
        first = false;
    }
    return !first;
}

/// The first voice of a block is copied, so that one voice alone costs a copy and stays the same
/// bit for bit.
void Mixer::MixVoice(Voice& voice, float* out, std::size_t frames, bool first) noexcept
{
    const bool ended = voice.ended.load(std::memory_order_acquire);
    std::size_t done = 0;
    while (done < frames) {
        const std::span<const float> in = voice.ring.ReadSpan(frames - done);
        if (in.empty())
            break;
        if (first)
            std::copy(in.begin(), in.end(), out + done * 2);
        else
            AddSamples(out + done * 2, in.data(), in.size());
        voice.ring.Release(in.size() / 2);
        done += in.size() / 2;
    }
    if (first)
        std::fill(out + done * 2, out + frames * 2, 0.0f);
    if (done > 0)
        voice.heard.Append(m_frames.load(std::memory_order_relaxed), done);
    voice.starved.store(!ended && done < frames, std::memory_order_relaxed);
    if (!ended && voice.ring.Fill() < voice.ring.Capacity() / 2)
        m_decoder.Signal();
}

void Mixer::ApplyGain(float* out, std::size_t frames) noexcept
{
    const float gain = m_gain.load(std::memory_order_relaxed);
    if (m_sounding && gain != m_lastGain)
        ScaleRamp(out, frames, m_lastGain, gain);
    else if (gain != 1.0f)
        Scale(out, frames * 2, gain);
    m_lastGain = gain;
    if (m_format.mono)
        MakeMono(out, frames);
    if (m_format.eightBits)
        Quantise8Bit(out, frames * 2);
}

} // namespace velmo::engine
