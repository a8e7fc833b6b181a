/// Vorbis in Ogg, by libvorbisfile.
///
/// A file may be a chain of streams. Those that have the first one's rate and channels are played
/// as one; the file ends before the first stream that differs.
#include "BuiltinDecoders.h"
#include "DecoderTable.h"
#include "VorbisOrder.h"
#include "bass.h"

#include <vorbis/vorbisfile.h>

#include <algorithm>
#include <cstring>
#include <string_view>

namespace velmo::engine {
namespace {

constexpr int MostChannels = 8;

std::size_t WindowRead(void* out, std::size_t size, std::size_t count, void* user)
{
    const std::span bytes(static_cast<std::uint8_t*>(out), size * count);
    return size == 0 ? 0 : static_cast<FileWindow*>(user)->Read(bytes) / size;
}

int WindowSeek(void* user, ogg_int64_t offset, int whence)
{
    return static_cast<FileWindow*>(user)->Seek(offset, whence) < 0 ? -1 : 0;
}

long WindowTell(void* user)
{
    return static_cast<long>(static_cast<FileWindow*>(user)->Position());
}

class VorbisSource
{
public:
    explicit VorbisSource(FileWindow window) noexcept
        : m_window(std::move(window))
    {}
    VorbisSource(const VorbisSource&) = delete;
    VorbisSource& operator=(const VorbisSource&) = delete;
    ~VorbisSource();

    /// 0, or why the window cannot be played.
    int OpenContents();

    BASS_SOURCE_FORMAT Format() const noexcept { return m_format; }
    std::size_t Read(float* out, std::size_t frames) noexcept;
    bool Seek(std::uint64_t frame) noexcept;

private:
    bool LinkHasFormat(int link) noexcept;
    void Interleave(float* const* planes, std::size_t frames, float* out) const noexcept;

    FileWindow m_window;
    OggVorbis_File m_file = {};
    bool m_isOpen = false;
    BASS_SOURCE_FORMAT m_format = {};
    std::uint64_t m_position = 0;
};

VorbisSource::~VorbisSource()
{
    if (m_isOpen)
        ov_clear(&m_file);
}

int VorbisSource::OpenContents()
{
    const ov_callbacks callbacks = {.read_func = &WindowRead,
                                    .seek_func = &WindowSeek,
                                    .close_func = nullptr,
                                    .tell_func = &WindowTell};
    m_isOpen = ov_open_callbacks(&m_window, &m_file, nullptr, 0, callbacks) == 0;
    const vorbis_info* const info = m_isOpen ? ov_info(&m_file, 0) : nullptr;
    if (info == nullptr)
        return BASS_DECODER_NOT_MINE;
    if (info->channels < 1 || info->channels > MostChannels || info->rate < 1
        || info->rate > 1'000'000)
        return BASS_DECODER_BAD_FORMAT;
    m_format = {.sampleRate = static_cast<std::uint32_t>(info->rate),
                .channels = static_cast<std::uint32_t>(info->channels),
                .lengthFrames = 0,
                .ctype = BASS_CTYPE_STREAM_OGG,
                .limited = 0};
    // A first stream of one page would be passed over: the library stands behind that page.
    if (ov_streams(&m_file) > 1 && ov_pcm_seek(&m_file, 0) != 0)
        return BASS_DECODER_NOT_MINE;
    for (int link = 0; link < ov_streams(&m_file) && LinkHasFormat(link); ++link) {
        const ogg_int64_t frames = ov_pcm_total(&m_file, link);
        m_format.lengthFrames += frames > 0 ? static_cast<std::uint64_t>(frames) : 0;
    }
    return BASS_DECODER_OK;
}

bool VorbisSource::LinkHasFormat(int link) noexcept
{
    const vorbis_info* const info = ov_info(&m_file, link);
    return info != nullptr && info->rate == static_cast<long>(m_format.sampleRate)
           && info->channels == static_cast<int>(m_format.channels);
}

std::size_t VorbisSource::Read(float* out, std::size_t frames) noexcept
{
    constexpr int MostErrors = 1000;
    const std::size_t wanted = std::min<std::uint64_t>(frames, m_format.lengthFrames - m_position);
    std::size_t got = 0;
    for (int errors = 0; got < wanted && errors < MostErrors;) {
        float** planes = nullptr;
        int link = 0;
        const int ask = static_cast<int>(std::min<std::size_t>(wanted - got, 65536));
        const long read = ov_read_float(&m_file, &planes, ask, &link);
        if (read == 0 || (read > 0 && !LinkHasFormat(link)))
            break;
        errors = read < 0 ? errors + 1 : 0;
        if (read < 0)
            continue;
        Interleave(planes, static_cast<std::size_t>(read), out + got * m_format.channels);
        got += static_cast<std::size_t>(read);
    }
    m_position += got;
    return got;
}

void VorbisSource::Interleave(float* const* planes, std::size_t frames, float* out) const noexcept
{
    const std::size_t channels = m_format.channels;
    if (channels == 2) {
        const float* const left = planes[0];
        const float* const right = planes[1];
        for (std::size_t i = 0; i < frames; ++i) {
            out[2 * i] = left[i];
            out[2 * i + 1] = right[i];
        }
        return;
    }
    for (std::size_t channel = 0; channel < channels; ++channel) {
        const float* const plane = planes[VorbisChannelAt(channel, channels)];
        for (std::size_t i = 0; i < frames; ++i)
            out[i * channels + channel] = plane[i];
    }
}

bool VorbisSource::Seek(std::uint64_t frame) noexcept
{
    if (frame > m_format.lengthFrames)
        return false;
    const bool isEnd = frame == m_format.lengthFrames;
    if (!isEnd && ov_pcm_seek(&m_file, static_cast<ogg_int64_t>(frame)) != 0)
        return false;
    m_position = frame;
    return true;
}

Result<std::unique_ptr<VorbisSource>> OpenVorbis(FileWindow window, std::uint32_t)
{
    auto source = std::make_unique<VorbisSource>(std::move(window));
    const int error = source->OpenContents();
    if (error != BASS_DECODER_OK)
        return Result<std::unique_ptr<VorbisSource>>::Failure(error);
    return {.value = std::move(source)};
}

int ProbeVorbis(const std::uint8_t* head, std::size_t size) noexcept
{
    // The first pages of all streams come first: Vorbis' may be behind a picture's or text's.
    constexpr std::string_view Identification = "\x01vorbis";
    if (size < 4 || std::memcmp(head, "OggS", 4) != 0)
        return 0;
    const std::uint8_t* const end = head + size;
    return std::search(head, end, Identification.begin(), Identification.end()) == end ? 0 : 1;
}

} // namespace

constexpr BuiltinDecoder VorbisDecoder =
    MakeBuiltin<VorbisSource, &OpenVorbis>({.name = "Ogg Vorbis",
                                            .masks = "*.ogg;*.oga",
                                            .kind = BASS_DECODER_STREAM,
                                            .probe = &ProbeVorbis});

} // namespace velmo::engine
