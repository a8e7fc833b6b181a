// Samples are converted straight into one buffer, which goes to the file by plain writes. The file
// is opened without blocking: a pipe whose reader hangs must hold up the writing thread only until
// the file is abandoned.

#include "WavFile.h"

#include "WavHeader.h"

#include "dsp/SampleFormat.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace velmo::engine {

namespace {

constexpr std::size_t BufferBytes = std::size_t{128} * 1024;
constexpr int PollMs = 100;
constexpr int PollsWhenAbandoned = 5;

void ConvertToPcm16(const float* samples, std::size_t count, std::uint8_t* out) noexcept
{
    // By far the faster of the two, and the one that is right here.
    if constexpr (std::endian::native == std::endian::little)
        ToInt16(samples, count, reinterpret_cast<std::int16_t*>(out));
    else
        ToInt16LittleEndian(samples, count, out);
}

} // namespace

std::unique_ptr<WavFile> WavFile::Create(const std::string& path,
                                         WavFormat format,
                                         std::uint32_t sampleRate,
                                         std::uint32_t channels)
{
    const int file =
        open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0666);
    if (file < 0)
        return nullptr;
    return std::unique_ptr<WavFile>(new WavFile(file, format, sampleRate, channels));
}

WavFile::WavFile(int file, WavFormat format, std::uint32_t sampleRate, std::uint32_t channels)
    : m_file(file)
    , m_format(format)
    , m_sampleRate(sampleRate)
    , m_channels(channels)
    , m_sampleBytes(WavSampleBytes(format))
    , m_buffer(BufferBytes)
{}

WavFile::~WavFile()
{
    if (m_headerWritten && !m_failed)
        CorrectSizes();
    close(m_file);
}

void WavFile::Write(const float* samples, std::size_t frames) noexcept
{
    std::size_t left = frames * m_channels;
    while (left > 0 && !m_failed) {
        const std::size_t taken = Convert(samples, left);
        samples += taken;
        left -= taken;
        if (m_buffered + m_sampleBytes > BufferBytes)
            Flush();
    }
}

void WavFile::Abandon() noexcept
{
    m_abandoned.store(true);
}

/// Appends as many of `count` samples as the buffer takes, and says how many.
std::size_t WavFile::Convert(const float* samples, std::size_t count) noexcept
{
    const std::size_t taken = std::min(count, (BufferBytes - m_buffered) / m_sampleBytes);
    std::uint8_t* const end = m_buffer.data() + m_buffered;
    if (m_format == WavFormat::Float32)
        std::memcpy(end, samples, taken * sizeof(float));
    else
        ConvertToPcm16(samples, taken, end);
    m_buffered += taken * m_sampleBytes;
    return taken;
}

void WavFile::Flush() noexcept
{
    if (!m_headerWritten)
        WriteHeader();
    if (!m_failed && WriteAll(m_buffer.data(), m_buffered))
        m_dataBytes += m_buffered;
    m_buffered = 0;
}

void WavFile::WriteHeader() noexcept
{
    const WavSizes unknown{
        .riff = WavSizeUnknown, .frames = WavSizeUnknown, .data = WavSizeUnknown};
    const auto header = WavHeader(m_format, m_sampleRate, m_channels, unknown);
    m_headerWritten = WriteAll(header.data(), header.size());
}

bool WavFile::WriteAll(const void* bytes, std::size_t size) noexcept
{
    const auto* next = static_cast<const std::uint8_t*>(bytes);
    while (size > 0 && !m_failed) {
        const ssize_t written = write(m_file, next, size);
        if (written >= 0) {
            next += written;
            size -= static_cast<std::size_t>(written);
        } else if (errno != EINTR) {
            m_failed = errno != EAGAIN || !AwaitRoom();
        }
    }
    return !m_failed;
}

/// Waits until a full pipe takes bytes again. False if it's given up.
bool WavFile::AwaitRoom() noexcept
{
    int pollsLeft = PollsWhenAbandoned;
    while (pollsLeft > 0) {
        pollfd room{.fd = m_file, .events = POLLOUT, .revents = 0};
        if (poll(&room, 1, PollMs) > 0)
            return true;
        if (m_abandoned.load())
            --pollsLeft;
    }
    return false;
}

void WavFile::CorrectSizes() noexcept
{
    const WavSizes sizes = SizesOfWav(m_format, m_channels, m_dataBytes);
    const WavSizeOffsets offsets = OffsetsOfWavSizes(m_format, m_channels);
    const auto correct = [this](std::size_t offset, std::uint32_t value) {
        std::array<std::uint8_t, 4> bytes{};
        for (unsigned i = 0; i < bytes.size(); ++i)
            bytes.at(i) = static_cast<std::uint8_t>(value >> (8 * i) & 0xFF);
        // What cannot be corrected keeps "unknown", which readers understand.
        return pwrite(m_file, bytes.data(), bytes.size(), static_cast<off_t>(offset)) == 4;
    };
    if (correct(offsets.riff, sizes.riff) && correct(offsets.data, sizes.data) && offsets.fact != 0)
        correct(offsets.fact, sizes.frames);
}

} // namespace velmo::engine
