/// All that FFmpeg's libraries decode.
///
/// Where a frame stands in the sound: read straight on, frames follow each other, and their number
/// is counted. After a seek or a damaged place the first frame is placed by the time that its
/// packet bears. Times may be rounded, to thousandths of a second in ASF; frames begin at multiples
/// of their length, which makes the number exact again. Files without a container bear no times:
/// there all packets are of one length, and are counted once at the opening.
#include "FfmpegFile.h"
#include "FrameQueue.h"
#include "MusepackHeader.h"
#include "PluginDecoders.h"
#include "SampleCopy.h"
#include "ToldLength.h"
#include "bass.h"

#include "decode/DecoderTable.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/mathematics.h>
}

#include <algorithm>
#include <array>
#include <numeric>
#include <optional>
#include <vector>

namespace velmo::engine {
namespace {

constexpr int MostChannels = 8;
constexpr int MostSampleRate = 1'000'000;
/// What a container tells rounded may be longer than the sound by this much, which is silence then.
constexpr std::uint64_t MostFill = 8192;

std::uint32_t ContentType(ContainerKind kind, AVCodecID codec) noexcept
{
    switch (kind) {
    case ContainerKind::Asf: return BASS_CTYPE_STREAM_WMA;
    case ContainerKind::Ape: return BASS_CTYPE_STREAM_APE;
    case ContainerKind::Musepack7:
    case ContainerKind::Musepack8: return BASS_CTYPE_STREAM_MPC;
    case ContainerKind::Tta: return BASS_CTYPE_STREAM_TTA;
    case ContainerKind::Adts: return BASS_CTYPE_STREAM_AAC;
    case ContainerKind::Ac3:
    case ContainerKind::Eac3: return BASS_CTYPE_STREAM_AC3;
    default: return codec == AV_CODEC_ID_ALAC ? BASS_CTYPE_STREAM_ALAC : BASS_CTYPE_STREAM_MP4;
    }
}

bool HasContainer(ContainerKind kind) noexcept
{
    return kind != ContainerKind::Adts && kind != ContainerKind::Ac3 && kind != ContainerKind::Eac3;
}

class FfmpegSource
{
public:
    /// `musepack` is what a file of that kind tells of itself.
    FfmpegSource(FileWindow window,
                 ContainerKind kind,
                 const std::optional<MusepackSound>& musepack) noexcept
        : m_kind(kind)
        , m_musepack(musepack)
        , m_file(std::move(window), kind)
    {}

    /// 0, or why the window cannot be played.
    int OpenContents();

    BASS_SOURCE_FORMAT Format() const noexcept { return m_format; }
    std::size_t Read(float* out, std::size_t frames) noexcept;
    bool Seek(std::uint64_t frame) noexcept;

private:
    int OpenFirstFrame() noexcept;
    int CountPackets();
    bool Rewind() noexcept;
    bool SeekNear(std::uint64_t frame) noexcept;
    bool DecodeBlock() noexcept;
    void PassDamage() noexcept;
    void TakeFrame() noexcept;
    std::uint64_t PositionByTime(std::int64_t time) const noexcept;
    std::uint64_t RunInFrames() const noexcept;
    bool TimesAreExact() const noexcept;

    const ContainerKind m_kind;
    const std::optional<MusepackSound> m_musepack;
    FfmpegFile m_file;
    BASS_SOURCE_FORMAT m_format = {};
    /// Frames that decoding gives before the sound. All that follows counts from the first of them.
    std::uint64_t m_lead = 0;
    FrameQueue m_queue;
    bool m_isStart = true;       ///< opened, and nothing read or sought since
    bool m_isStraight = true;    ///< read from the beginning, without damage so far
    bool m_isPlaced = true;      ///< `m_next` is known
    bool m_hasFilled = false;    ///< nothing comes behind what the queue holds
    std::uint64_t m_dropped = 0; ///< packets at the beginning whose frames count for nothing
    std::uint64_t m_next = 0;    ///< number of the frame that the decoder gives next
    // A frame and its packet's time. The first packet may give less than it holds: then it's the
    // second's.
    bool m_hasOrigin = false;
    std::uint64_t m_originFrame = 0;
    std::int64_t m_originTime = 0;
    std::uint64_t m_grid = 0;                ///< what frames begin at multiples of
    std::uint64_t m_packet = 0;              ///< that the last frame is of
    std::uint64_t m_packetFrames = 0;        ///< of it so far
    std::uint64_t m_mostFrames = 0;          ///< of one packet
    std::vector<std::int64_t> m_packetBytes; ///< without a container: where packets begin
};

int FfmpegSource::OpenContents()
{
    int error = OpenFirstFrame();
    if (error != BASS_DECODER_OK)
        return error;
    const AVFrame& frame = m_file.Frame();
    if (frame.ch_layout.nb_channels < 1 || frame.ch_layout.nb_channels > MostChannels
        || frame.sample_rate < 1 || frame.sample_rate > MostSampleRate || frame.nb_samples < 1
        || !CanCopySamples(frame))
        return BASS_DECODER_BAD_FORMAT;
    m_format = {.sampleRate = static_cast<std::uint32_t>(frame.sample_rate),
                .channels = static_cast<std::uint32_t>(frame.ch_layout.nb_channels),
                .lengthFrames = 0,
                .ctype = ContentType(m_kind, m_file.Codec().codec_id),
                .limited = 0};
    if (m_musepack) {
        m_lead = m_musepack->delayFrames;
        m_format.lengthFrames = m_musepack->lengthFrames;
    } else if (HasContainer(m_kind)) {
        m_format.lengthFrames =
            ToldLength(m_file, m_kind, {.firstTime = frame.pts, .sampleRate = m_format.sampleRate});
    } else {
        error = CountPackets();
    }
    m_queue.Start(m_format.channels, m_lead + m_format.lengthFrames);
    m_queue.SeekTo(m_lead);
    TakeFrame();
    return m_format.lengthFrames == 0 ? BASS_DECODER_BAD_FORMAT : error;
}

/// Opens the file and decodes up to its first frame.
int FfmpegSource::OpenFirstFrame() noexcept
{
    constexpr int MostDamage = 200;
    const int error = m_file.Open();
    if (error != BASS_DECODER_OK)
        return error;
    for (int damage = 0; damage < MostDamage; ++damage) {
        const FfmpegFile::Step step = m_file.Decode();
        if (step == FfmpegFile::Step::Frame)
            return BASS_DECODER_OK;
        if (step == FfmpegFile::Step::End)
            break;
    }
    return m_file.Packets() == 0 ? BASS_DECODER_NOT_MINE : BASS_DECODER_BAD_FORMAT;
}

/// The length of what has no container, by its packets: each gives as much as the first.
int FfmpegSource::CountPackets()
{
    const auto each = static_cast<std::uint64_t>(m_file.Frame().nb_samples);
    const int error = m_file.Open();
    if (error != BASS_DECODER_OK)
        return error;
    m_packetBytes = m_file.ListPackets();
    m_format.lengthFrames = m_packetBytes.size() * each;
    return OpenFirstFrame();
}

std::size_t FfmpegSource::Read(float* out, std::size_t frames) noexcept
{
    m_isStart = false;
    std::size_t got = 0;
    while (got < frames) {
        const std::size_t taken = m_queue.Take(out + got * m_format.channels, frames - got);
        got += taken;
        if (taken == 0 && !(m_queue.Empty() && DecodeBlock()))
            break;
    }
    return got;
}

bool FfmpegSource::Seek(std::uint64_t frame) noexcept
{
    if (frame > m_format.lengthFrames)
        return false;
    if (m_isStart && frame == 0)
        return true;
    m_isStart = false;
    m_hasFilled = false;
    m_queue.SeekTo(m_lead + frame);
    if (frame == m_format.lengthFrames)
        return true;
    if (SeekNear(m_lead + frame) && DecodeBlock() && !m_hasFilled && !m_queue.BeganLate())
        return true;
    m_queue.SeekTo(m_lead + frame);
    return Rewind();
}

/// Opens the file anew: the decoder is then as it was at first.
bool FfmpegSource::Rewind() noexcept
{
    m_hasFilled = false;
    m_isStraight = true;
    m_isPlaced = true;
    m_dropped = 0;
    m_next = 0;
    if (OpenFirstFrame() != BASS_DECODER_OK)
        return false;
    TakeFrame();
    return true;
}

/// Goes so far before `frame` that the decoder has run in when it's there. False if the beginning
/// is near, or there is no way but from there.
bool FfmpegSource::SeekNear(std::uint64_t frame) noexcept
{
    const std::uint64_t runIn = RunInFrames();
    if (frame <= 2 * runIn)
        return false;
    m_isStraight = false;
    m_dropped = runIn == 0 ? 0 : 1;
    if (!HasContainer(m_kind)) {
        const std::uint64_t packet = (frame - runIn) / m_grid;
        m_isPlaced = true;
        m_next = packet * m_grid;
        return packet < m_packetBytes.size() && m_file.SeekByte(m_packetBytes[packet]);
    }
    if (!m_hasOrigin)
        return false;
    m_isPlaced = false;
    const auto distance =
        static_cast<std::int64_t>(frame - runIn) - static_cast<std::int64_t>(m_originFrame);
    const AVRational unit = {.num = 1, .den = static_cast<int>(m_format.sampleRate)};
    std::int64_t time = 0;
    return !__builtin_add_overflow(
               m_originTime, av_rescale_q(distance, unit, m_file.Track().time_base), &time)
           && m_file.SeekTime(time);
}

/// Decodes until the queue holds something; false at the end.
bool FfmpegSource::DecodeBlock() noexcept
{
    while (m_queue.Empty() && !m_hasFilled) {
        switch (m_file.Decode()) {
        case FfmpegFile::Step::Frame: TakeFrame(); break;
        case FfmpegFile::Step::Damage: PassDamage(); break;
        case FfmpegFile::Step::End:
            m_hasFilled = true;
            m_queue.FillUp(MostFill);
            break;
        }
    }
    return !m_queue.Empty();
}

void FfmpegSource::PassDamage() noexcept
{
    m_isStraight = false;
    if (HasContainer(m_kind))
        m_isPlaced = !m_hasOrigin && m_isPlaced;
    else
        m_next += m_grid;
}

/// Takes over the frame that has been decoded.
void FfmpegSource::TakeFrame() noexcept
{
    const AVFrame& frame = m_file.Frame();
    const auto frames = static_cast<std::uint64_t>(std::max(frame.nb_samples, 0));
    if (frames == 0 || frame.sample_rate != static_cast<int>(m_format.sampleRate)
        || frame.ch_layout.nb_channels != static_cast<int>(m_format.channels)
        || !CanCopySamples(frame))
        return PassDamage();
    const bool hasTime = frame.pts != AV_NOPTS_VALUE;
    if (m_isStraight && !m_hasOrigin)
        m_grid = std::gcd(m_grid, frames);
    const std::uint64_t firstGood = RunInFrames() == 0 ? 1 : 2;
    if (m_isStraight && !m_hasOrigin && hasTime && m_file.Packets() >= firstGood) {
        m_hasOrigin = true;
        m_originFrame = m_next;
        m_originTime = frame.pts;
    }
    m_packetFrames = m_file.Packets() == m_packet ? m_packetFrames + frames : frames;
    m_packet = m_file.Packets();
    m_mostFrames = std::max(m_mostFrames, m_packetFrames);
    if (m_file.Packets() <= m_dropped) {
        m_next += frames;
        return;
    }
    if (!m_isPlaced && hasTime)
        m_next = PositionByTime(frame.pts);
    m_isPlaced = true;
    CopySamples(frame, m_queue.Add(m_next, frames));
    m_next += frames;
}

/// The times of a damaged file may be any numbers: what can't be is taken to follow what came.
std::uint64_t FfmpegSource::PositionByTime(std::int64_t time) const noexcept
{
    constexpr std::int64_t Farthest = std::int64_t{1} << 48U;
    std::int64_t ticks = 0;
    if (__builtin_sub_overflow(time, m_originTime, &ticks))
        return m_next;
    const AVRational unit = {.num = 1, .den = static_cast<int>(m_format.sampleRate)};
    std::int64_t distance = av_rescale_q(ticks, m_file.Track().time_base, unit);
    if (distance < -Farthest || distance > Farthest)
        return m_next;
    const auto grid = static_cast<std::int64_t>(m_grid);
    if (!TimesAreExact() && grid > 0)
        distance = (distance + (distance < 0 ? -grid : grid) / 2) / grid * grid;
    const std::int64_t position = static_cast<std::int64_t>(m_originFrame) + distance;
    return position > 0 ? static_cast<std::uint64_t>(position) : 0;
}

/// What is decoded and thrown away before the frame that a seek asks for. Lossless packets need
/// nothing of those before them.
std::uint64_t FfmpegSource::RunInFrames() const noexcept
{
    const AVCodecDescriptor* const descriptor = m_file.Codec().codec_descriptor;
    const bool isLossless =
        descriptor != nullptr
        && (static_cast<unsigned>(descriptor->props) & AV_CODEC_PROP_LOSSY) == 0;
    if (isLossless && TimesAreExact())
        return 0;
    return std::max<std::uint64_t>(4 * m_mostFrames, m_format.sampleRate / 4);
}

/// Whether the track counts its time in frames, or in parts of them.
bool FfmpegSource::TimesAreExact() const noexcept
{
    const AVRational unit = m_file.Track().time_base;
    return unit.num == 1 && unit.den % static_cast<int>(m_format.sampleRate) == 0;
}

Result<std::unique_ptr<FfmpegSource>> OpenFfmpeg(FileWindow window, std::uint32_t)
{
    std::array<std::uint8_t, BASS_DECODER_HEAD> head = {};
    const std::size_t size = window.ReadAt(0, head);
    const ContainerKind kind = TellContainer(std::span(head).first(size));
    if (kind == ContainerKind::None)
        return Result<std::unique_ptr<FfmpegSource>>::Failure(BASS_DECODER_NOT_MINE);
    auto source = std::make_unique<FfmpegSource>(
        std::move(window), kind, TellMusepackSound(kind, std::span(head).first(size)));
    const int error = source->OpenContents();
    if (error != BASS_DECODER_OK)
        return Result<std::unique_ptr<FfmpegSource>>::Failure(error);
    return {.value = std::move(source)};
}

int ProbeFfmpeg(const std::uint8_t* head, std::size_t size) noexcept
{
    return TellContainer({head, size}) == ContainerKind::None ? 0 : 1;
}

} // namespace

constexpr BASS_DECODER FfmpegDecoder = MakeDecoder<FfmpegSource, &OpenFfmpeg>(
    {.name = "FFmpeg", .masks = "*", .kind = BASS_DECODER_STREAM, .probe = &ProbeFfmpeg});

} // namespace velmo::engine
