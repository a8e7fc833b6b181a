#include "Feed.h"

#include "dsp/ChannelMap.h"

#include <algorithm>
#include <utility>

namespace velmo::engine {

namespace {

constexpr std::size_t PendingFrames = 2048;
constexpr std::size_t RawFrames = 1024;

/// What a read of a source that has to be converted asks for at once.
std::size_t RawSamples(const BASS_SOURCE_FORMAT& format, Reduction reduction)
{
    return format.channels == 2 && reduction == Reduction::None ? 0 : RawFrames * format.channels;
}

} // namespace

Feed::Feed(std::unique_ptr<Source> source, std::uint32_t deviceRate, Reduction reduction)
    : m_source(std::move(source))
    , m_format(m_source->Format())
    , m_deviceRate(deviceRate)
    , m_reduction(reduction)
{}

Feed::~Feed() = default;

/// What decoding needs is made here, by the first seek: a file that is only asked for its length
/// doesn't pay for it.
bool Feed::Seek(std::uint64_t frame)
{
    m_raw.resize(RawSamples(m_format, m_reduction));
    if (m_format.sampleRate != m_deviceRate) {
        m_pending.resize(PendingFrames * 2);
        if (m_resampler == nullptr)
            m_resampler = std::make_unique<Resampler>(m_format.sampleRate, m_deviceRate, 2U);
        else
            m_resampler->Clear();
    }
    m_pendingStart = 0;
    m_pendingEnd = 0;
    m_sourceEnded = !m_source->Seek(frame);
    return !m_sourceEnded;
}

std::size_t Feed::Read(float* out, std::size_t frames)
{
    return m_resampler == nullptr ? ReadStereo(out, frames) : ReadResampled(out, frames);
}

/// At the source's own rate; two channels come straight from the decoder.
std::size_t Feed::ReadStereo(float* out, std::size_t frames)
{
    if (m_raw.empty())
        return m_source->Read(out, frames);
    std::size_t done = 0;
    while (done < frames) {
        const std::size_t wanted = std::min(frames - done, RawFrames);
        const std::size_t got = m_source->Read(m_raw.data(), wanted);
        float* const place = out + done * 2;
        if (m_reduction == Reduction::ToMono) {
            MixToMono(m_raw.data(), got, m_format.channels, m_raw.data());
            MapToStereo(m_raw.data(), got, 1, place);
        } else {
            MapToStereo(m_raw.data(), got, m_format.channels, place);
        }
        done += got;
        if (got < wanted)
            break;
    }
    return done;
}

std::size_t Feed::ReadResampled(float* out, std::size_t frames)
{
    std::size_t done = 0;
    while (done < frames) {
        if (m_pendingStart == m_pendingEnd)
            RefillPending();
        float* const place = out + done * 2;
        if (m_pendingStart == m_pendingEnd) {
            const std::size_t made = m_resampler->Flush(place, frames - done);
            if (made == 0)
                break;
            done += made;
            continue;
        }
        const Resampler::Step step = m_resampler->Process(m_pending.data() + m_pendingStart * 2,
                                                          m_pendingEnd - m_pendingStart,
                                                          place,
                                                          frames - done);
        if (step.used == 0 && step.made == 0)
            break; // it can't convert: better an end than a standstill
        m_pendingStart += step.used;
        done += step.made;
    }
    return done;
}

void Feed::RefillPending()
{
    m_pendingStart = 0;
    m_pendingEnd = m_sourceEnded ? 0 : ReadStereo(m_pending.data(), PendingFrames);
    m_sourceEnded = m_pendingEnd < PendingFrames;
}

} // namespace velmo::engine
