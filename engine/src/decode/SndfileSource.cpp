#include "SndfileSource.h"

#include "dsp/SampleFormat.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

namespace velmo::engine {
namespace {

constexpr int MostChannels = 8;
constexpr int MostSampleRate = 1'000'000;
/// Behind a sound of no length there are never so many bytes, unless the length is wrong.
constexpr std::uint64_t LeastUnclosedBytes = 65536;

FileWindow& WindowOf(void* user)
{
    return *static_cast<FileWindow*>(user);
}

sf_count_t WindowSize(void* user)
{
    return static_cast<sf_count_t>(WindowOf(user).Size());
}

sf_count_t WindowSeek(sf_count_t offset, int whence, void* user)
{
    return WindowOf(user).Seek(offset, whence);
}

sf_count_t WindowRead(void* out, sf_count_t count, void* user)
{
    if (count <= 0)
        return 0;
    const std::span bytes(static_cast<std::uint8_t*>(out), static_cast<std::size_t>(count));
    return static_cast<sf_count_t>(WindowOf(user).Read(bytes));
}

/// The same of a WAV file whose recorder was cut off before it wrote how long the sound is. Where
/// the whole file is told to have 8 bytes, the library takes the sound to go on to the file's end.
sf_count_t WindowReadUnclosed(void* out, sf_count_t count, void* user)
{
    constexpr std::array<std::uint8_t, 4> Length = {8, 0, 0, 0};
    constexpr std::uint64_t LengthAt = 4;
    const std::uint64_t start = WindowOf(user).Position();
    const sf_count_t read = WindowRead(out, count, user);
    const std::span bytes(static_cast<std::uint8_t*>(out), static_cast<std::size_t>(read));
    for (std::size_t i = 0; i < Length.size(); ++i)
        if (LengthAt + i >= start && LengthAt + i - start < bytes.size())
            bytes[LengthAt + i - start] = Length.at(i);
    return read;
}

sf_count_t WindowTell(void* user)
{
    return static_cast<sf_count_t>(WindowOf(user).Position());
}

/// Whether the container tells the number of frames to the very one. Formats of blocks tell it
/// rounded to blocks.
bool TellsExactLength(int format)
{
    switch (format & SF_FORMAT_SUBMASK) {
    case SF_FORMAT_PCM_S8:
    case SF_FORMAT_PCM_U8:
    case SF_FORMAT_PCM_16:
    case SF_FORMAT_PCM_24:
    case SF_FORMAT_PCM_32:
    case SF_FORMAT_FLOAT:
    case SF_FORMAT_DOUBLE:
    case SF_FORMAT_ULAW:
    case SF_FORMAT_ALAW: return true;
    default: return false;
    }
}

/// One sample that is no number would stay in every filter behind for good.
void SilenceNonNumbers(std::span<float> samples)
{
    for (float& sample : samples)
        sample = std::abs(sample) <= 1e6f ? sample : 0.0f;
}

} // namespace

SndfileSource::SndfileSource(FileWindow window) noexcept
    : m_window(std::move(window))
{}

Result<std::unique_ptr<SndfileSource>> SndfileSource::Open(FileWindow window,
                                                           std::span<const int> containers,
                                                           std::uint32_t ctype)
{
    std::unique_ptr<SndfileSource> source(new SndfileSource(std::move(window)));
    const int error = source->OpenContents(containers, ctype);
    if (error != BASS_DECODER_OK)
        return Result<std::unique_ptr<SndfileSource>>::Failure(error);
    return {.value = std::move(source)};
}

int SndfileSource::OpenContents(std::span<const int> containers, std::uint32_t ctype)
{
    SF_INFO info = OpenFile(&WindowRead);
    const int container = info.format & SF_FORMAT_TYPEMASK;
    const bool isWav = container == SF_FORMAT_WAV || container == SF_FORMAT_WAVEX;
    if (m_file && isWav && info.frames == 0 && m_window.Size() >= LeastUnclosedBytes)
        info = OpenFile(&WindowReadUnclosed);
    if (!m_file || std::ranges::find(containers, container) == containers.end())
        return BASS_DECODER_NOT_MINE;
    if (info.channels < 1 || info.channels > MostChannels || info.samplerate < 1
        || info.samplerate > MostSampleRate || info.frames < 0 || info.frames == SF_COUNT_MAX
        || info.seekable == 0)
        return BASS_DECODER_BAD_FORMAT;
    m_holdsFloats = (info.format & SF_FORMAT_SUBMASK) == SF_FORMAT_FLOAT
                    || (info.format & SF_FORMAT_SUBMASK) == SF_FORMAT_DOUBLE;
    m_holdsInt16 = (info.format & SF_FORMAT_SUBMASK) == SF_FORMAT_PCM_16;
    m_format = {.sampleRate = static_cast<std::uint32_t>(info.samplerate),
                .channels = static_cast<std::uint32_t>(info.channels),
                .lengthFrames = static_cast<std::uint64_t>(info.frames),
                .ctype = ctype,
                .limited = m_holdsFloats ? 0U : 1U};
    if (!TellsExactLength(info.format))
        m_format.lengthFrames = CountRounded(m_format.lengthFrames);
    return BASS_DECODER_OK;
}

SF_INFO SndfileSource::OpenFile(sf_vio_read read)
{
    SF_VIRTUAL_IO io = {.get_filelen = &WindowSize,
                        .seek = &WindowSeek,
                        .read = read,
                        .write = nullptr,
                        .tell = &WindowTell};
    SF_INFO info = {};
    m_window.Seek(0);
    m_file.reset(sf_open_virtual(&io, SFM_READ, &info, &m_window));
    return info;
}

/// The exact length where the container tells it rounded to blocks. The rounding concerns the last
/// blocks only: they alone are read.
std::uint64_t SndfileSource::CountRounded(std::uint64_t told)
{
    constexpr std::uint64_t LastFrames = 65536;
    if (!Seek(told - std::min(told, LastFrames)))
        return told;
    ReadToEnd();
    const std::uint64_t count = m_position;
    return Seek(0) ? count : told;
}

void SndfileSource::ReadToEnd()
{
    constexpr std::size_t Step = 4096;
    std::vector<float> discarded(Step * m_format.channels);
    while (Read(discarded.data(), Step) > 0) {}
}

std::size_t SndfileSource::Read(float* out, std::size_t frames) noexcept
{
    const std::size_t wanted = std::min<std::uint64_t>(frames, m_format.lengthFrames - m_position);
    const sf_count_t read = m_holdsInt16 ? ReadInt16(out, wanted) : ReadFloats(out, wanted);
    const std::size_t got = read > 0 ? static_cast<std::size_t>(read) : 0;
    m_position += got;
    return got;
}

sf_count_t SndfileSource::ReadFloats(float* out, std::size_t frames) noexcept
{
    const sf_count_t read = sf_readf_float(m_file.get(), out, static_cast<sf_count_t>(frames));
    if (m_holdsFloats && read > 0)
        SilenceNonNumbers({out, static_cast<std::size_t>(read) * m_format.channels});
    return read;
}

/// The library reads these straight from the file, where for floats it goes through a small buffer
/// of its own: half the time.
sf_count_t SndfileSource::ReadInt16(float* out, std::size_t frames) noexcept
{
    std::array<std::int16_t, 8192> piece; // NOLINT(*-member-init): filled below
    const std::size_t channels = m_format.channels;
    std::size_t done = 0;
    while (done < frames) {
        const std::size_t wanted = std::min(frames - done, piece.size() / channels);
        const sf_count_t read =
            sf_readf_short(m_file.get(), piece.data(), static_cast<sf_count_t>(wanted));
        const std::size_t got = read > 0 ? static_cast<std::size_t>(read) : 0;
        FromInt16(piece.data(), got * channels, out + done * channels);
        done += got;
        if (got < wanted)
            break;
    }
    return static_cast<sf_count_t>(done);
}

bool SndfileSource::Seek(std::uint64_t frame) noexcept
{
    if (frame > m_format.lengthFrames)
        return false;
    const bool isEnd = frame == m_format.lengthFrames;
    if (!isEnd && sf_seek(m_file.get(), static_cast<sf_count_t>(frame), SEEK_SET) < 0)
        return false;
    m_position = frame;
    return true;
}

} // namespace velmo::engine
