#include "Channel.h"

#include "HeardSound.h"
#include "SpeakerFlags.h"

#include <algorithm>
#include <utility>

namespace velmo::engine {

namespace {

/// Beside `BASS_SAMPLE_3D` the flag names the kind of source that is placed in the room, and the
/// sound keeps its sides.
Reduction ReductionOf(DWORD flags)
{
    const bool mono = (flags & BASS_SAMPLE_MONO) != 0 && (flags & BASS_SAMPLE_3D) == 0;
    return mono ? Reduction::ToMono : Reduction::None;
}

// The longest block of any output lies between the mixer and the ear, and what is looked at around
// the ear shall be there whole.
constexpr std::uint32_t HistoryMs = 700;
constexpr std::size_t LookFrames = Spectrum::Frames;
constexpr std::uint32_t FadeMs = 5;

std::size_t FramesOf(std::uint32_t ms, std::uint32_t rate)
{
    return static_cast<std::size_t>(std::uint64_t{ms} * rate / 1000);
}

} // namespace

Channel::Channel(std::string path, std::unique_ptr<Source> source, const ChannelOptions& options)
    : m_path(std::make_shared<const std::string>(std::move(path)))
    , m_flags(options.flags & ~BASS_UNICODE)
    , m_deviceRate(options.deviceRate)
    , m_bufferMs(options.bufferMs)
    , m_feed(std::make_shared<Feed>(std::move(source), options.deviceRate, ReductionOf(m_flags)))
    , m_format(m_feed->Format())
    , m_chans(ReductionOf(m_flags) == Reduction::ToMono ? 1 : m_format.channels)
    , m_strip(std::make_shared<Strip>(
          options.deviceRate, (m_flags & BASS_SAMPLE_3D) != 0, RouteOf(m_flags, options.speakers)))
{}

Channel::~Channel()
{
    // The decoding thread may keep the voice for a while, but it shall not sound.
    if (m_voice != nullptr)
        m_voice->wish.store(Wish::Drop, std::memory_order_release);
}

void Channel::Play(DecodeThread& decoder, bool restart)
{
    decoder.HoldOutput(false);
    if (restart || m_ended)
        Stop(decoder);
    if (m_voice == nullptr) {
        StartVoice(decoder);
    } else {
        // What the last block before the pause lacked is there by now, or will be told anew.
        if (m_state == State::Paused)
            m_voice->starved.store(false, std::memory_order_relaxed);
        m_voice->wish.store(Wish::Play, std::memory_order_release);
        decoder.WishesChanged();
    }
    // Last, since without memory there is no voice, and what plays has one.
    m_state = State::Playing;
}

bool Channel::Pause(DecodeThread& decoder)
{
    if (m_state != State::Playing)
        return false;
    m_state = State::Paused;
    m_voice->wish.store(Wish::Pause, std::memory_order_release);
    decoder.WishesChanged();
    return true;
}

void Channel::Stop(DecodeThread& decoder)
{
    DropVoice(decoder);
    m_former.reset();
    m_state = State::Stopped;
    m_ended = false;
    m_place = 0;
}

bool Channel::Seek(DecodeThread& decoder, std::uint64_t bytes)
{
    if (bytes > LengthBytes())
        return false;
    const State before = std::exchange(m_state, State::Stopped);
    if (m_voice != nullptr && m_voice->heard.OutEnd() > 0)
        m_former = m_voice;
    DropVoice(decoder);
    m_ended = false;
    m_place = bytes / FrameBytes();
    // A paused channel decodes when it goes on; then its first sound is there within a chunk's
    // time.
    if (before == State::Playing)
        StartVoice(decoder);
    m_state = before;
    return true;
}

void Channel::Settle(std::uint64_t heardOut) noexcept
{
    m_strip->effects.Tidy();
    if (m_voice != nullptr && m_voice->heard.OutEnd() > 0)
        m_former.reset();
    if (m_state != State::Playing || !m_voice->FinishedAsHeard(heardOut))
        return;
    m_place = FrameHeard(heardOut);
    m_voice.reset();
    m_state = State::Stopped;
    m_ended = true;
}

DWORD Channel::Activity() const noexcept
{
    if (m_state == State::Stopped)
        return BASS_ACTIVE_STOPPED;
    if (m_state == State::Paused)
        return BASS_ACTIVE_PAUSED;
    const bool stalled = m_voice->starved.load(std::memory_order_relaxed)
                         && !m_voice->ended.load(std::memory_order_relaxed);
    return stalled ? BASS_ACTIVE_STALLED : BASS_ACTIVE_PLAYING;
}

std::uint64_t Channel::PositionBytes(std::uint64_t heardOut) const noexcept
{
    return FrameHeard(heardOut) * FrameBytes();
}

std::uint64_t Channel::LengthBytes() const noexcept
{
    return m_format.lengthFrames * FrameBytes();
}

double Channel::Seconds(std::uint64_t bytes) const noexcept
{
    return static_cast<double>(bytes)
           / (static_cast<double>(FrameBytes()) * static_cast<double>(m_format.sampleRate));
}

/// The voice whose sound is heard; null if there is none.
const Voice* Channel::Audible() const noexcept
{
    const bool begun = m_voice != nullptr && m_voice->heard.OutEnd() > 0;
    return begun || m_former == nullptr ? m_voice.get() : m_former.get();
}

std::size_t Channel::HeardSamples(std::uint64_t heardOut, std::span<float> out) const noexcept
{
    std::size_t frames = out.size() / m_chans;
    if (const Voice* const voice = Audible())
        frames = HeardSound(*voice, heardOut).CopyFromHere(out, m_chans);
    else
        std::fill_n(out.begin(), frames * m_chans, 0.0f);
    return frames * m_chans * sizeof(float);
}

void Channel::HeardSpectrum(std::uint64_t heardOut,
                            const Spectrum& spectrum,
                            float* magnitudes) const noexcept
{
    Spectrum::Sums sums; // NOLINT(*-member-init): filled below
    if (const Voice* const voice = Audible())
        HeardSound(*voice, heardOut).SumAround(sums);
    else
        sums.fill(0);
    spectrum.Compute(sums, magnitudes);
}

BASS_CHANNELINFO Channel::Info() const noexcept
{
    return {.freq = m_format.sampleRate,
            .chans = m_chans,
            .flags = m_flags,
            .ctype = m_format.ctype,
            .filename = m_path->c_str()};
}

void Channel::StartVoice(DecodeThread& decoder)
{
    const VoiceSettings settings{.capacityFrames =
                                     std::max<std::size_t>(FramesOf(m_bufferMs, m_deviceRate), 1),
                                 .historyFrames = FramesOf(HistoryMs, m_deviceRate) + LookFrames,
                                 .fadeFrames = FramesOf(FadeMs, m_deviceRate),
                                 .start = m_place == 0 ? Fade::Start::Full : Fade::Start::Silent};
    auto voice = std::make_shared<Voice>(settings, m_strip);
    decoder.Add(voice, m_feed, m_place);
    m_voice = std::move(voice);
}

void Channel::DropVoice(DecodeThread& decoder) noexcept
{
    if (m_voice == nullptr)
        return;
    m_voice->wish.store(Wish::Drop, std::memory_order_release);
    m_voice.reset();
    decoder.WishesChanged();
}

/// Frame of the source that is being heard. A voice counts in the device's frames; the last of them
/// falls onto the source's end, though for other rates than the device's it's rounded.
std::uint64_t Channel::FrameHeard(std::uint64_t heardOut) const noexcept
{
    if (m_voice == nullptr)
        return m_place;
    const std::uint64_t heard = m_voice->heard.FramesHeard(heardOut);
    const std::uint64_t frame = m_place + heard * m_format.sampleRate / m_deviceRate;
    const std::uint64_t rounding =
        m_format.sampleRate == m_deviceRate ? 0 : m_format.sampleRate / m_deviceRate + 1;
    if (frame >= m_format.lengthFrames
        || (m_voice->FinishedAsHeard(heardOut) && frame + rounding >= m_format.lengthFrames))
        return m_format.lengthFrames;
    return frame;
}

std::uint64_t Channel::FrameBytes() const noexcept
{
    const bool eightBits = (m_flags & BASS_SAMPLE_8BITS) != 0;
    const bool floats = (m_flags & BASS_SAMPLE_FLOAT) != 0;
    return std::uint64_t{m_chans} * (eightBits ? 1 : floats ? 4 : 2);
}

} // namespace velmo::engine
