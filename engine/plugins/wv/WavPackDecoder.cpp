/// WavPack by libwavpack. What is damaged the library reads as silence.
#include "PluginDecoders.h"
#include "bass.h"

#include "decode/DecoderTable.h"

#include <wavpack/wavpack.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <vector>

namespace velmo::engine {
namespace {

constexpr int MostChannels = 8;
constexpr std::size_t PieceSamples = 8192;

FileWindow& WindowOf(void* user)
{
    return *static_cast<FileWindow*>(user);
}

std::int32_t WindowRead(void* user, void* out, std::int32_t bytes)
{
    if (bytes <= 0)
        return 0;
    const std::span place(static_cast<std::uint8_t*>(out), static_cast<std::size_t>(bytes));
    return static_cast<std::int32_t>(WindowOf(user).Read(place));
}

std::int64_t WindowPosition(void* user)
{
    return static_cast<std::int64_t>(WindowOf(user).Position());
}

int WindowSeek(void* user, std::int64_t position)
{
    return WindowOf(user).Seek(position) ? 0 : -1;
}

int WindowMove(void* user, std::int64_t offset, int whence)
{
    return WindowOf(user).Seek(offset, whence) < 0 ? -1 : 0;
}

/// The byte is always the one that was read last.
int WindowPushBack(void* user, int byte)
{
    return WindowOf(user).Seek(-1, SEEK_CUR) < 0 ? EOF : byte;
}

std::int64_t WindowSize(void* user)
{
    return static_cast<std::int64_t>(WindowOf(user).Size());
}

int WindowCanSeek(void* /*user*/)
{
    return 1;
}

constexpr WavpackStreamReader64 Reader = {.read_bytes = &WindowRead,
                                          .write_bytes = nullptr,
                                          .get_pos = &WindowPosition,
                                          .set_pos_abs = &WindowSeek,
                                          .set_pos_rel = &WindowMove,
                                          .push_back_byte = &WindowPushBack,
                                          .get_length = &WindowSize,
                                          .can_seek = &WindowCanSeek,
                                          .truncate_here = nullptr,
                                          .close = nullptr};

class WavPackSource
{
public:
    explicit WavPackSource(FileWindow window) noexcept
        : m_window(std::move(window))
    {}
    WavPackSource(const WavPackSource&) = delete;
    WavPackSource& operator=(const WavPackSource&) = delete;
    ~WavPackSource() = default;

    /// 0, or why the window cannot be played.
    int OpenContents();

    BASS_SOURCE_FORMAT Format() const noexcept { return m_format; }
    std::size_t Read(float* out, std::size_t frames) noexcept;
    bool Seek(std::uint64_t frame) noexcept;

private:
    struct Closer
    {
        void operator()(WavpackContext* context) const noexcept { WavpackCloseFile(context); }
    };

    bool OpenContext() noexcept;
    void Convert(std::size_t samples, float* out) const noexcept;

    FileWindow m_window;
    WavpackStreamReader64 m_reader = Reader;           ///< the library keeps a pointer to it
    std::unique_ptr<WavpackContext, Closer> m_context; ///< null once it can't be used any more
    BASS_SOURCE_FORMAT m_format = {};
    bool m_holdsFloats = false;
    float m_scale = 1;
    std::uint64_t m_position = 0;
    std::vector<std::int32_t> m_piece;
};

int WavPackSource::OpenContents()
{
    if (!OpenContext())
        return BASS_DECODER_NOT_MINE;
    WavpackContext* const context = m_context.get();
    const int channels = WavpackGetNumChannels(context);
    const int bytes = WavpackGetBytesPerSample(context);
    const std::int64_t frames = WavpackGetNumSamples64(context);
    if (channels < 1 || channels > MostChannels || bytes < 1 || bytes > 4 || frames < 0
        || WavpackGetSampleRate(context) == 0)
        return BASS_DECODER_BAD_FORMAT;
    m_format = {.sampleRate = WavpackGetSampleRate(context),
                .channels = static_cast<std::uint32_t>(channels),
                .lengthFrames = static_cast<std::uint64_t>(frames),
                .ctype = BASS_CTYPE_STREAM_WV,
                .limited = 0};
    m_holdsFloats = (static_cast<unsigned>(WavpackGetMode(context)) & MODE_FLOAT) != 0;
    m_scale = std::ldexp(1.0f, 1 - 8 * bytes);
    m_piece.resize(PieceSamples);
    return BASS_DECODER_OK;
}

bool WavPackSource::OpenContext() noexcept
{
    std::array<char, 128> error = {}; // the library writes up to 80 bytes
    m_window.Seek(0);
    m_context.reset(WavpackOpenFileInputEx64(
        &m_reader, &m_window, nullptr, error.data(), OPEN_NORMALIZE | OPEN_DSD_AS_PCM, 0));
    return m_context != nullptr;
}

std::size_t WavPackSource::Read(float* out, std::size_t frames) noexcept
{
    const std::size_t channels = m_format.channels;
    const std::size_t wanted = std::min<std::uint64_t>(frames, m_format.lengthFrames - m_position);
    std::size_t got = 0;
    while (got < wanted && m_context != nullptr) {
        const std::size_t ask = std::min(wanted - got, PieceSamples / channels);
        const std::size_t unpacked =
            WavpackUnpackSamples(m_context.get(), m_piece.data(), static_cast<std::uint32_t>(ask));
        if (unpacked == 0)
            break;
        Convert(unpacked * channels, out + got * channels);
        got += unpacked;
    }
    m_position += got;
    return got;
}

void WavPackSource::Convert(std::size_t samples, float* out) const noexcept
{
    if (m_holdsFloats)
        std::transform(m_piece.data(), m_piece.data() + samples, out, [](std::int32_t bits) {
            const auto sample = std::bit_cast<float>(bits);
            return std::abs(sample) <= 1e6f ? sample : 0.0f;
        });
    else
        std::transform(m_piece.data(), m_piece.data() + samples, out, [this](std::int32_t sample) {
            return static_cast<float>(sample) * m_scale;
        });
}

bool WavPackSource::Seek(std::uint64_t frame) noexcept
{
    if (frame > m_format.lengthFrames)
        return false;
    const bool isEnd = frame == m_format.lengthFrames;
    if (m_context == nullptr && !OpenContext())
        return false;
    if (!isEnd && WavpackSeekSample64(m_context.get(), static_cast<std::int64_t>(frame)) == 0) {
        m_context.reset(); // it's not to be used after this
        return false;
    }
    m_position = frame;
    return true;
}

Result<std::unique_ptr<WavPackSource>> OpenWavPack(FileWindow window, std::uint32_t)
{
    auto source = std::make_unique<WavPackSource>(std::move(window));
    const int error = source->OpenContents();
    if (error != BASS_DECODER_OK)
        return Result<std::unique_ptr<WavPackSource>>::Failure(error);
    return {.value = std::move(source)};
}

int ProbeWavPack(const std::uint8_t* head, std::size_t size) noexcept
{
    constexpr std::string_view Magic = "wvpk";
    return size >= Magic.size() && std::memcmp(head, Magic.data(), Magic.size()) == 0 ? 1 : 0;
}

} // namespace

constexpr BASS_DECODER WavPackDecoder = MakeDecoder<WavPackSource, &OpenWavPack>(
    {.name = "WavPack", .masks = "*.wv", .kind = BASS_DECODER_STREAM, .probe = &ProbeWavPack});

} // namespace velmo::engine
