/// FLAC by libFLAC.
///
/// The library gives blocks to a function of ours, one a call. It goes on behind a damaged place by
/// itself; the numbers of the blocks tell then what is missing.
#include "FrameQueue.h"
#include "PluginDecoders.h"
#include "bass.h"

#include "decode/DecoderTable.h"

#include <FLAC/stream_decoder.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <string_view>

namespace velmo::engine {
namespace {

constexpr std::string_view OggMagic = "OggS";
constexpr std::uint32_t MostChannels = 8;

class FlacSource
{
public:
    explicit FlacSource(FileWindow window) noexcept
        : m_window(std::move(window))
    {}
    FlacSource(const FlacSource&) = delete;
    FlacSource& operator=(const FlacSource&) = delete;
    ~FlacSource() = default;

    /// 0, or why the window cannot be played.
    int OpenContents();

    BASS_SOURCE_FORMAT Format() const noexcept { return m_format; }
    std::size_t Read(float* out, std::size_t frames) noexcept;
    bool Seek(std::uint64_t frame) noexcept;

private:
    struct Deleter
    {
        void operator()(FLAC__StreamDecoder* decoder) const noexcept
        {
            FLAC__stream_decoder_delete(decoder);
        }
    };

    static FLAC__StreamDecoderReadStatus OnRead(const FLAC__StreamDecoder*,
                                                FLAC__byte* out,
                                                std::size_t* bytes,
                                                void* user);
    static FLAC__StreamDecoderSeekStatus OnSeek(const FLAC__StreamDecoder*,
                                                FLAC__uint64 offset,
                                                void* user);
    static FLAC__StreamDecoderTellStatus OnTell(const FLAC__StreamDecoder*,
                                                FLAC__uint64* offset,
                                                void* user);
    static FLAC__StreamDecoderLengthStatus OnLength(const FLAC__StreamDecoder*,
                                                    FLAC__uint64* bytes,
                                                    void* user);
    static FLAC__bool OnEof(const FLAC__StreamDecoder*, void* user);
    static FLAC__StreamDecoderWriteStatus OnWrite(const FLAC__StreamDecoder*,
                                                  const FLAC__Frame* frame,
                                                  const FLAC__int32* const planes[],
                                                  void* user);
    static void OnMetadata(const FLAC__StreamDecoder*,
                           const FLAC__StreamMetadata* metadata,
                           void* user);
    static void OnError(const FLAC__StreamDecoder*, FLAC__StreamDecoderErrorStatus, void* /*user*/)
    {}

    bool Init();
    bool CountUntold() noexcept;
    bool DecodeBlock() noexcept;
    bool Rewind() noexcept;

    FileWindow m_window;
    std::unique_ptr<FLAC__StreamDecoder, Deleter> m_decoder;
    BASS_SOURCE_FORMAT m_format = {};
    FrameQueue m_queue;
};

FlacSource& Of(void* user)
{
    return *static_cast<FlacSource*>(user);
}

int FlacSource::OpenContents()
{
    if (!Init() || FLAC__stream_decoder_process_until_end_of_metadata(m_decoder.get()) == 0
        || m_format.channels == 0)
        return BASS_DECODER_NOT_MINE;
    if (m_format.channels > MostChannels || m_format.sampleRate == 0)
        return BASS_DECODER_BAD_FORMAT;
    m_queue.Start(m_format.channels, m_format.lengthFrames);
    if (m_format.lengthFrames == 0 && !CountUntold())
        return BASS_DECODER_BAD_FORMAT;
    return BASS_DECODER_OK;
}

bool FlacSource::Init()
{
    m_decoder.reset(FLAC__stream_decoder_new());
    if (!m_decoder)
        return false;
    std::array<std::uint8_t, OggMagic.size()> head = {};
    m_window.ReadAt(0, head);
    const bool isOgg = std::memcmp(head.data(), OggMagic.data(), head.size()) == 0;
    m_format.ctype = isOgg ? BASS_CTYPE_STREAM_FLAC_OGG : BASS_CTYPE_STREAM_FLAC;
    const auto init =
        isOgg ? &FLAC__stream_decoder_init_ogg_stream : &FLAC__stream_decoder_init_stream;
    return init(m_decoder.get(),
                &OnRead,
                &OnSeek,
                &OnTell,
                &OnLength,
                &OnEof,
                &OnWrite,
                &OnMetadata,
                &OnError,
                this)
           == FLAC__STREAM_DECODER_INIT_STATUS_OK;
}

/// The length where the container tells none, as in a file that was written to a pipe: the whole
/// file is decoded. False if there is no sound, or it can't be moved back to its beginning.
bool FlacSource::CountUntold() noexcept
{
    std::uint64_t frames = 0;
    while (DecodeBlock()) {
        frames = m_queue.End();
        m_queue.SeekTo(frames);
    }
    m_format.lengthFrames = frames;
    m_queue.Start(m_format.channels, frames);
    return frames > 0 && Rewind();
}

std::size_t FlacSource::Read(float* out, std::size_t frames) noexcept
{
    std::size_t got = 0;
    while (got < frames) {
        got += m_queue.Take(out + got * m_format.channels, frames - got);
        const bool isEnd = m_queue.End() >= m_format.lengthFrames;
        if (got == frames || (m_queue.Empty() ? isEnd || !DecodeBlock() : isEnd))
            break;
    }
    return got;
}

bool FlacSource::Seek(std::uint64_t frame) noexcept
{
    if (frame > m_format.lengthFrames)
        return false;
    m_queue.SeekTo(frame);
    if (frame == m_format.lengthFrames)
        return true;
    // It hands the block over that the frame is in.
    if (FLAC__stream_decoder_seek_absolute(m_decoder.get(), frame) != 0 && !m_queue.Empty())
        return true;
    // A damaged file may have no way there but from the beginning.
    m_queue.SeekTo(frame);
    return Rewind();
}

bool FlacSource::Rewind() noexcept
{
    return FLAC__stream_decoder_reset(m_decoder.get()) != 0
           && FLAC__stream_decoder_process_until_end_of_metadata(m_decoder.get()) != 0;
}

/// Decodes until the queue holds something; false at the end.
bool FlacSource::DecodeBlock() noexcept
{
    constexpr int MostFailures = 16;
    for (int failures = 0; m_queue.Empty() && failures < MostFailures;) {
        const bool done = FLAC__stream_decoder_process_single(m_decoder.get()) != 0;
        if (FLAC__stream_decoder_get_state(m_decoder.get()) == FLAC__STREAM_DECODER_END_OF_STREAM)
            break;
        failures = done ? 0 : failures + 1;
        if (!done)
            FLAC__stream_decoder_flush(m_decoder.get());
    }
    return !m_queue.Empty();
}

FLAC__StreamDecoderReadStatus FlacSource::OnRead(const FLAC__StreamDecoder*,
                                                 FLAC__byte* out,
                                                 std::size_t* bytes,
                                                 void* user)
{
    *bytes = Of(user).m_window.Read({out, *bytes});
    return *bytes > 0 ? FLAC__STREAM_DECODER_READ_STATUS_CONTINUE
                      : FLAC__STREAM_DECODER_READ_STATUS_END_OF_STREAM;
}

FLAC__StreamDecoderSeekStatus FlacSource::OnSeek(const FLAC__StreamDecoder*,
                                                 FLAC__uint64 offset,
                                                 void* user)
{
    FileWindow& window = Of(user).m_window;
    return offset <= window.Size() && window.Seek(static_cast<std::int64_t>(offset))
               ? FLAC__STREAM_DECODER_SEEK_STATUS_OK
               : FLAC__STREAM_DECODER_SEEK_STATUS_ERROR;
}

FLAC__StreamDecoderTellStatus FlacSource::OnTell(const FLAC__StreamDecoder*,
                                                 FLAC__uint64* offset,
                                                 void* user)
{
    *offset = Of(user).m_window.Position();
    return FLAC__STREAM_DECODER_TELL_STATUS_OK;
}

FLAC__StreamDecoderLengthStatus FlacSource::OnLength(const FLAC__StreamDecoder*,
                                                     FLAC__uint64* bytes,
                                                     void* user)
{
    *bytes = Of(user).m_window.Size();
    return FLAC__STREAM_DECODER_LENGTH_STATUS_OK;
}

FLAC__bool FlacSource::OnEof(const FLAC__StreamDecoder*, void* user)
{
    const FileWindow& window = Of(user).m_window;
    return window.Position() == window.Size() ? 1 : 0;
}

FLAC__StreamDecoderWriteStatus FlacSource::OnWrite(const FLAC__StreamDecoder*,
                                                   const FLAC__Frame* frame,
                                                   const FLAC__int32* const planes[],
                                                   void* user)
{
    FlacSource& source = Of(user);
    const FLAC__FrameHeader& header = frame->header;
    const std::size_t channels = source.m_format.channels;
    // A block of another shape is a damaged one, or another file's behind this one.
    if (header.channels != channels || header.sample_rate != source.m_format.sampleRate
        || header.bits_per_sample == 0 || !source.m_queue.Empty())
        return FLAC__STREAM_DECODER_WRITE_STATUS_CONTINUE;
    const std::span<float> out = source.m_queue.Add(header.number.sample_number, header.blocksize);
    const float scale = std::ldexp(1.0f, 1 - static_cast<int>(header.bits_per_sample));
    for (std::size_t channel = 0; channel < channels && !out.empty(); ++channel) {
        const FLAC__int32* const plane = planes[channel];
        for (std::size_t i = 0; i < header.blocksize; ++i)
            out[i * channels + channel] = static_cast<float>(plane[i]) * scale;
    }
    return FLAC__STREAM_DECODER_WRITE_STATUS_CONTINUE;
}

void FlacSource::OnMetadata(const FLAC__StreamDecoder*,
                            const FLAC__StreamMetadata* metadata,
                            void* user)
{
    BASS_SOURCE_FORMAT& format = Of(user).m_format;
    if (metadata->type != FLAC__METADATA_TYPE_STREAMINFO || format.channels != 0)
        return;
    const FLAC__StreamMetadata_StreamInfo& info = metadata->data.stream_info;
    format.sampleRate = info.sample_rate;
    format.channels = info.channels;
    format.lengthFrames = info.total_samples;
    format.limited = 1;
}

Result<std::unique_ptr<FlacSource>> OpenFlac(FileWindow window, std::uint32_t)
{
    auto source = std::make_unique<FlacSource>(std::move(window));
    const int error = source->OpenContents();
    if (error != BASS_DECODER_OK)
        return Result<std::unique_ptr<FlacSource>>::Failure(error);
    return {.value = std::move(source)};
}

int ProbeFlac(const std::uint8_t* head, std::size_t size) noexcept
{
    constexpr std::string_view Magic = "fLaC";
    constexpr std::string_view InOgg = "\x7F"
                                       "FLAC";
    if (size < Magic.size())
        return 0;
    if (std::memcmp(head, Magic.data(), Magic.size()) == 0)
        return 1;
    const std::uint8_t* const end = head + size;
    return std::memcmp(head, OggMagic.data(), OggMagic.size()) == 0
                   && std::search(head, end, InOgg.begin(), InOgg.end()) != end
               ? 1
               : 0;
}

} // namespace

constexpr BASS_DECODER FlacDecoder = MakeDecoder<FlacSource, &OpenFlac>(
    {.name = "FLAC", .masks = "*.flac;*.fla", .kind = BASS_DECODER_STREAM, .probe = &ProbeFlac});

} // namespace velmo::engine
