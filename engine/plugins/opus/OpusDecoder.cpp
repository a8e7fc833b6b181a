/// Opus in Ogg, by libopusfile.
///
/// A file may be a chain of streams. Those that have the first one's channels are played as one;
/// the file ends before the first stream that differs. All of Opus is at 48 kHz.
#include "PluginDecoders.h"
#include "bass.h"

#include "decode/DecoderTable.h"
#include "decode/VorbisOrder.h"

#include <opusfile.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

namespace velmo::engine {
namespace {

constexpr std::uint32_t SampleRate = 48000;
constexpr std::uint32_t MostChannels = 8;
/// Decoded and thrown away before the frame that a seek asks for: what the decoder remembers of
/// other sound has faded by then. The format asks for 80 ms at least.
constexpr std::uint64_t PrerollFrames = SampleRate / 2;

int WindowRead(void* user, unsigned char* out, int bytes)
{
    if (bytes <= 0)
        return 0;
    return static_cast<int>(
        static_cast<FileWindow*>(user)->Read({out, static_cast<std::size_t>(bytes)}));
}

int WindowSeek(void* user, opus_int64 offset, int whence)
{
    return static_cast<FileWindow*>(user)->Seek(offset, whence) < 0 ? -1 : 0;
}

opus_int64 WindowTell(void* user)
{
    return static_cast<opus_int64>(static_cast<FileWindow*>(user)->Position());
}

class OpusSource
{
public:
    explicit OpusSource(FileWindow window) noexcept
        : m_window(std::move(window))
    {}
    OpusSource(const OpusSource&) = delete;
    OpusSource& operator=(const OpusSource&) = delete;
    ~OpusSource() = default;

    /// 0, or why the window cannot be played.
    int OpenContents();

    BASS_SOURCE_FORMAT Format() const noexcept { return m_format; }
    std::size_t Read(float* out, std::size_t frames) noexcept;
    bool Seek(std::uint64_t frame) noexcept;

private:
    struct Deleter
    {
        void operator()(OggOpusFile* file) const noexcept { op_free(file); }
    };

    bool LinkHasFormat(int link) noexcept;
    bool PassOver(std::uint64_t frames) noexcept;

    FileWindow m_window;
    std::unique_ptr<OggOpusFile, Deleter> m_file;
    BASS_SOURCE_FORMAT m_format = {};
    std::uint64_t m_position = 0;
};

int OpusSource::OpenContents()
{
    constexpr OpusFileCallbacks Callbacks = {
        .read = &WindowRead, .seek = &WindowSeek, .tell = &WindowTell, .close = nullptr};
    int error = 0;
    m_file.reset(op_open_callbacks(&m_window, &Callbacks, nullptr, 0, &error));
    if (!m_file)
        return error == OP_EIMPL || error == OP_EVERSION ? BASS_DECODER_BAD_FORMAT
                                                         : BASS_DECODER_NOT_MINE;
    const int channels = op_channel_count(m_file.get(), 0);
    if (channels < 1 || channels > static_cast<int>(MostChannels))
        return BASS_DECODER_BAD_FORMAT;
    m_format = {.sampleRate = SampleRate,
                .channels = static_cast<std::uint32_t>(channels),
                .lengthFrames = 0,
                .ctype = BASS_CTYPE_STREAM_OPUS,
                .limited = 0};
    for (int link = 0; link < op_link_count(m_file.get()) && LinkHasFormat(link); ++link) {
        const ogg_int64_t frames = op_pcm_total(m_file.get(), link);
        m_format.lengthFrames += frames > 0 ? static_cast<std::uint64_t>(frames) : 0;
    }
    return BASS_DECODER_OK;
}

bool OpusSource::LinkHasFormat(int link) noexcept
{
    return op_channel_count(m_file.get(), link) == static_cast<int>(m_format.channels);
}

std::size_t OpusSource::Read(float* out, std::size_t frames) noexcept
{
    constexpr int MostErrors = 1000;
    const std::size_t channels = m_format.channels;
    const std::size_t wanted = std::min<std::uint64_t>(frames, m_format.lengthFrames - m_position);
    std::size_t got = 0;
    for (int errors = 0; got < wanted && errors < MostErrors;) {
        float* const place = out + got * channels;
        const int room = static_cast<int>(std::min<std::size_t>((wanted - got) * channels, 65536));
        int link = 0;
        const int read = op_read_float(m_file.get(), place, room, &link);
        if (read == 0 || (read > 0 && !LinkHasFormat(link)))
            break;
        errors = read < 0 ? errors + 1 : 0;
        if (read < 0)
            continue;
        ToWavOrder({place, static_cast<std::size_t>(read) * channels}, channels);
        got += static_cast<std::size_t>(read);
    }
    m_position += got;
    return got;
}

bool OpusSource::Seek(std::uint64_t frame) noexcept
{
    if (frame > m_format.lengthFrames)
        return false;
    if (frame == m_format.lengthFrames) {
        m_position = frame;
        return true;
    }
    const std::uint64_t early = std::min(frame, PrerollFrames);
    if (op_pcm_seek(m_file.get(), static_cast<ogg_int64_t>(frame - early)) != 0)
        return false;
    m_position = frame - early;
    return PassOver(early);
}

bool OpusSource::PassOver(std::uint64_t frames) noexcept
{
    std::array<float, 4096> discarded; // NOLINT(*-member-init): written only
    const std::size_t most = discarded.size() / m_format.channels;
    while (frames > 0) {
        const std::size_t got = Read(discarded.data(), std::min<std::uint64_t>(frames, most));
        if (got == 0)
            return false;
        frames -= got;
    }
    return true;
}

Result<std::unique_ptr<OpusSource>> OpenOpus(FileWindow window, std::uint32_t)
{
    auto source = std::make_unique<OpusSource>(std::move(window));
    const int error = source->OpenContents();
    if (error != BASS_DECODER_OK)
        return Result<std::unique_ptr<OpusSource>>::Failure(error);
    return {.value = std::move(source)};
}

int ProbeOpus(const std::uint8_t* head, std::size_t size) noexcept
{
    constexpr std::string_view Magic = "OggS";
    constexpr std::string_view Identification = "OpusHead";
    if (size < Magic.size() || std::memcmp(head, Magic.data(), Magic.size()) != 0)
        return 0;
    const std::uint8_t* const end = head + size;
    return std::search(head, end, Identification.begin(), Identification.end()) == end ? 0 : 1;
}

} // namespace

constexpr BASS_DECODER OpusDecoder = MakeDecoder<OpusSource, &OpenOpus>(
    {.name = "Opus", .masks = "*.opus", .kind = BASS_DECODER_STREAM, .probe = &ProbeOpus});

} // namespace velmo::engine
