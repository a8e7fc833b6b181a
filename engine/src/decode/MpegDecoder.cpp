/// MPEG audio, by libmpg123.
///
/// The length is exact at once where a Xing or Info header tells it. Any other file is scanned: its
/// frames are counted, which reads the whole file. So are files whose header tells more than the
/// file holds, or far less. The library gets to see the file from its first frame on: it neither
/// looks for that frame nor reads tags.
#include "BuiltinDecoders.h"
#include "DecoderTable.h"
#include "MpegHeader.h"
#include "bass.h"

#include <mpg123.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace velmo::engine {
namespace {

/// Other bytes than tags that may stand in front of the first frame.
constexpr std::size_t MostGarbageBytes = 65536;

/// A layer 3 frame may begin up to 511 bytes before itself, in frames of 24 bytes at the least.
constexpr long FramesBeforeSeekTarget = 24;

/// Bytes that small tags behind the last frame may take. With more of them a file is scanned.
constexpr std::uint64_t MostTrailingBytes = 4096;

/// No kind of frame is shorter.
constexpr std::uint64_t ShortestFrameBytes = 24;

mpg123_ssize_t WindowRead(void* user, void* out, std::size_t size)
{
    const std::span bytes(static_cast<std::uint8_t*>(out), size);
    return static_cast<mpg123_ssize_t>(static_cast<FileWindow*>(user)->Read(bytes));
}

off_t WindowSeek(void* user, off_t offset, int whence)
{
    return static_cast<FileWindow*>(user)->Seek(offset, whence);
}

struct HandleCloser
{
    void operator()(mpg123_handle* handle) const noexcept { mpg123_delete(handle); }
};

class MpegSource
{
public:
    static Result<std::unique_ptr<MpegSource>> Open(FileWindow window);

    explicit MpegSource(FileWindow window) noexcept
        : m_window(std::move(window))
    {}

    BASS_SOURCE_FORMAT Format() const noexcept { return m_format; }
    std::size_t Read(float* out, std::size_t frames) noexcept;
    bool Seek(std::uint64_t frame) noexcept;

private:
    bool OpenHandle();
    int OpenContents(const MpegHeader& first, const MpegInfo& info);
    bool FixFormat();
    bool IsFirstOfMore(const MpegInfo& info) const noexcept;
    bool NeedsScan(const MpegInfo& info) const noexcept;

    FileWindow m_window;
    std::unique_ptr<mpg123_handle, HandleCloser> m_handle;
    BASS_SOURCE_FORMAT m_format = {};
    std::uint64_t m_position = 0;
};

/// Cuts an APE tag off the end, with the ID3v1 tag behind it: pictures in there hold what looks
/// like frames.
void DropApeTag(FileWindow& window)
{
    constexpr std::size_t FooterBytes = 32;
    constexpr std::size_t Id3v1Bytes = 128;
    std::array<std::uint8_t, FooterBytes + Id3v1Bytes> tail = {};
    if (window.Size() < tail.size())
        return;
    window.ReadAt(window.Size() - tail.size(), tail);
    const bool hasId3v1 = std::memcmp(&tail[FooterBytes], "TAG", 3) == 0;
    const std::uint8_t* footer = hasId3v1 ? tail.data() : tail.data() + Id3v1Bytes;
    if (std::memcmp(footer, "APETAGEX", 8) != 0)
        return;
    const auto field = [&](std::size_t at) {
        return static_cast<std::uint32_t>(footer[at])
               | static_cast<std::uint32_t>(footer[at + 1]) << 8U
               | static_cast<std::uint32_t>(footer[at + 2]) << 16U
               | static_cast<std::uint32_t>(footer[at + 3]) << 24U;
    };
    const bool hasHeader = (field(20) & 0x80000000U) != 0;
    const std::uint64_t bytes = static_cast<std::uint64_t>(field(12))
                                + (hasHeader ? FooterBytes : 0) + (hasId3v1 ? Id3v1Bytes : 0);
    if (bytes < window.Size())
        window.DropEnd(bytes);
}

/// Offset of the first frame in the window. The window's own buffer holds what most files need to
/// be read for it.
std::optional<std::size_t> FindFirstFrame(FileWindow& window, std::vector<std::uint8_t>& bytes)
{
    for (const std::size_t wanted : {std::size_t{BASS_DECODER_HEAD}, MostGarbageBytes}) {
        bytes.resize(std::min<std::uint64_t>(wanted, window.Size()));
        window.Seek(0);
        bytes.resize(window.Read(bytes));
        const auto extent = bytes.size() == window.Size() ? MpegBytes::Whole : MpegBytes::Begin;
        if (const auto found = FindFirstMpegFrame(bytes, extent))
            return found;
    }
    return std::nullopt;
}

Result<std::unique_ptr<MpegSource>> OpenMpeg(FileWindow window, std::uint32_t)
{
    return MpegSource::Open(std::move(window));
}

Result<std::unique_ptr<MpegSource>> MpegSource::Open(FileWindow window)
{
    using Opened = Result<std::unique_ptr<MpegSource>>;
    std::vector<std::uint8_t> bytes;
    const std::optional<std::size_t> offset = FindFirstFrame(window, bytes);
    if (!offset)
        return Opened::Failure(BASS_DECODER_NOT_MINE);
    window.DropBegin(*offset);
    DropApeTag(window);
    auto source = std::make_unique<MpegSource>(std::move(window));
    const auto frame = std::span<const std::uint8_t>(bytes).subspan(*offset);
    const int error = source->OpenContents(*ParseMpegHeader(frame), ParseMpegInfo(frame));
    if (error != BASS_DECODER_OK)
        return Opened::Failure(error);
    return {.value = std::move(source)};
}

int MpegSource::OpenContents(const MpegHeader& first, const MpegInfo& info)
{
    if (!OpenHandle())
        return BASS_DECODER_CANNOT_OPEN;
    // The library would end the sound where the header says, even after a scan.
    if (IsFirstOfMore(info))
        mpg123_param(m_handle.get(), MPG123_ADD_FLAGS, MPG123_IGNORE_INFOFRAME, 0);
    if (mpg123_open_handle(m_handle.get(), &m_window) != MPG123_OK || !FixFormat())
        return BASS_DECODER_NOT_MINE;
    if (NeedsScan(info) && mpg123_scan(m_handle.get()) != MPG123_OK)
        return BASS_DECODER_NOT_MINE;
    const off_t length = mpg123_length(m_handle.get());
    if (length <= 0)
        return BASS_DECODER_NOT_MINE;
    constexpr std::array<std::uint32_t, 3> Kinds = {
        BASS_CTYPE_STREAM_MP1, BASS_CTYPE_STREAM_MP2, BASS_CTYPE_STREAM_MP3};
    m_format.ctype = Kinds.at(first.layer - 1);
    m_format.lengthFrames = static_cast<std::uint64_t>(length);
    return BASS_DECODER_OK;
}

bool MpegSource::OpenHandle()
{
    m_handle.reset(mpg123_new(nullptr, nullptr));
    mpg123_handle* const handle = m_handle.get();
    if (handle == nullptr)
        return false;
    constexpr long Flags = MPG123_FORCE_FLOAT | MPG123_QUIET | MPG123_GAPLESS | MPG123_SKIP_ID3V2
                           | MPG123_NO_FRANKENSTEIN;
    mpg123_param(handle, MPG123_ADD_FLAGS, Flags, 0);
    mpg123_param(handle, MPG123_REMOVE_FLAGS, MPG123_AUTO_RESAMPLE, 0);
    mpg123_param(handle, MPG123_RESYNC_LIMIT, -1, 0);
    mpg123_param(handle, MPG123_PREFRAMES, FramesBeforeSeekTarget, 0);
    const long* rates = nullptr;
    std::size_t count = 0;
    mpg123_rates(&rates, &count);
    mpg123_format_none(handle);
    for (const long rate : std::span(rates, count))
        mpg123_format(handle, rate, MPG123_MONO | MPG123_STEREO, MPG123_ENC_FLOAT_32);
    return mpg123_replace_reader_handle(handle, &WindowRead, &WindowSeek, nullptr) == MPG123_OK;
}

/// Takes the first frame's rate and channels for the whole file's: what differs later is converted
/// or left out.
bool MpegSource::FixFormat()
{
    long rate = 0;
    int channels = 0;
    int encoding = 0;
    if (mpg123_getformat(m_handle.get(), &rate, &channels, &encoding) != MPG123_OK || rate <= 0
        || encoding != MPG123_ENC_FLOAT_32 || channels < 1 || channels > 2)
        return false;
    mpg123_format_none(m_handle.get());
    mpg123_format(m_handle.get(), rate, channels, MPG123_ENC_FLOAT_32);
    m_format.sampleRate = static_cast<std::uint32_t>(rate);
    m_format.channels = static_cast<std::uint32_t>(channels);
    return true;
}

/// Whether the header counts far fewer bytes than there are: it is that of the first of joined
/// files.
bool MpegSource::IsFirstOfMore(const MpegInfo& info) const noexcept
{
    return info.bytes != 0 && info.bytes + MostTrailingBytes < m_window.Size();
}

bool MpegSource::NeedsScan(const MpegInfo& info) const noexcept
{
    return info.frames == 0 || IsFirstOfMore(info) || info.bytes > m_window.Size()
           || info.frames * ShortestFrameBytes > m_window.Size();
}

std::size_t MpegSource::Read(float* out, std::size_t frames) noexcept
{
    constexpr int MostErrors = 64;
    const std::size_t frameBytes = m_format.channels * sizeof(float);
    const std::size_t wanted =
        std::min<std::uint64_t>(frames, m_format.lengthFrames - m_position) * frameBytes;
    std::size_t got = 0;
    for (int errors = 0; got < wanted && errors < MostErrors;) {
        std::size_t done = 0;
        float* const at = out + got / sizeof(float);
        const int code = mpg123_read(m_handle.get(), at, wanted - got, &done);
        got += done;
        errors = done == 0 ? errors + 1 : 0;
        if (code == MPG123_DONE || code == MPG123_NEED_MORE)
            break;
    }
    m_position += got / frameBytes;
    return got / frameBytes;
}

bool MpegSource::Seek(std::uint64_t frame) noexcept
{
    if (frame > m_format.lengthFrames)
        return false;
    const bool isEnd = frame == m_format.lengthFrames;
    const auto target = static_cast<off_t>(frame);
    if (!isEnd && mpg123_seek(m_handle.get(), target, SEEK_SET) != target)
        return false;
    m_position = frame;
    return true;
}

int ProbeMpeg(const std::uint8_t* head, std::size_t size) noexcept
{
    // In a longer file the first frame may stand behind the head.
    return size >= BASS_DECODER_HEAD || FindFirstMpegFrame({head, size}, MpegBytes::Whole) ? 1 : 0;
}

} // namespace

constexpr BuiltinDecoder MpegDecoder =
    MakeBuiltin<MpegSource, &OpenMpeg>({.name = "MPEG audio",
                                        .masks = "*.mp3;*.mp2;*.mp1",
                                        .kind = BASS_DECODER_STREAM,
                                        .probe = &ProbeMpeg});

} // namespace velmo::engine
