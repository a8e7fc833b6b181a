#include "FfmpegFile.h"

#include "bass_plugin.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/mem.h>
}

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace velmo::engine {
namespace {

constexpr int IoBytes = 32768;

/// What the containers hold that is played, of the first track that is one of them. Not all that
/// FFmpeg knows: a video's sound may be of any kind, and each one more is one more way to be
/// attacked by a file.
constexpr std::array Codecs = {AV_CODEC_ID_AAC,
                               AV_CODEC_ID_AC3,
                               AV_CODEC_ID_ALAC,
                               AV_CODEC_ID_APE,
                               AV_CODEC_ID_EAC3,
                               AV_CODEC_ID_MP3,
                               AV_CODEC_ID_MUSEPACK7,
                               AV_CODEC_ID_MUSEPACK8,
                               AV_CODEC_ID_TTA,
                               AV_CODEC_ID_WMALOSSLESS,
                               AV_CODEC_ID_WMAPRO,
                               AV_CODEC_ID_WMAV1,
                               AV_CODEC_ID_WMAV2,
                               AV_CODEC_ID_WMAVOICE};

const char* DemuxerName(ContainerKind kind) noexcept
{
    switch (kind) {
    case ContainerKind::Mp4: return "mov";
    case ContainerKind::Asf: return "asf";
    case ContainerKind::Ape: return "ape";
    case ContainerKind::Musepack7: return "mpc";
    case ContainerKind::Musepack8: return "mpc8";
    case ContainerKind::Tta: return "tta";
    case ContainerKind::Adts: return "aac";
    case ContainerKind::Ac3: return "ac3";
    case ContainerKind::Eac3: return "eac3";
    case ContainerKind::None: break;
    }
    return "";
}

int ReadWindow(void* user, std::uint8_t* out, int bytes)
{
    if (bytes <= 0)
        return AVERROR_EOF;
    const std::span place(out, static_cast<std::size_t>(bytes));
    const std::size_t got = static_cast<FileWindow*>(user)->Read(place);
    return got > 0 ? static_cast<int>(got) : AVERROR_EOF;
}

std::int64_t SeekWindow(void* user, std::int64_t offset, int whence)
{
    auto& window = *static_cast<FileWindow*>(user);
    const unsigned way = static_cast<unsigned>(whence) & ~unsigned{AVSEEK_FORCE};
    if (way == AVSEEK_SIZE)
        return static_cast<std::int64_t>(window.Size());
    return window.Seek(offset, static_cast<int>(way));
}

} // namespace

void FfmpegFile::Freer::operator()(AVIOContext* io) const noexcept
{
    av_freep(static_cast<void*>(&io->buffer));
    avio_context_free(&io);
}

void FfmpegFile::Freer::operator()(AVFormatContext* container) const noexcept
{
    avformat_close_input(&container);
}

void FfmpegFile::Freer::operator()(AVCodecContext* codec) const noexcept
{
    avcodec_free_context(&codec);
}

void FfmpegFile::Freer::operator()(AVPacket* packet) const noexcept
{
    av_packet_free(&packet);
}

void FfmpegFile::Freer::operator()(AVFrame* frame) const noexcept
{
    av_frame_free(&frame);
}

FfmpegFile::FfmpegFile(FileWindow window, ContainerKind kind) noexcept
    : m_window(std::move(window))
    , m_kind(kind)
{}

FfmpegFile::~FfmpegFile() = default;

int FfmpegFile::Open() noexcept
{
    av_log_set_level(AV_LOG_QUIET);
    m_codec.reset();
    m_container.reset();
    m_io.reset();
    m_packet.reset(av_packet_alloc());
    m_frame.reset(av_frame_alloc());
    if (!m_packet || !m_frame || !m_window.Seek(0))
        return BASS_DECODER_CANNOT_OPEN;
    AfterSeek();
    m_firstTime = AV_NOPTS_VALUE;
    const int error = OpenContainer();
    return error != BASS_DECODER_OK ? error : OpenCodec();
}

int FfmpegFile::OpenContainer() noexcept
{
    const AVInputFormat* const demuxer = av_find_input_format(DemuxerName(m_kind));
    if (demuxer == nullptr)
        return BASS_DECODER_BAD_FORMAT;
    auto* const buffer = static_cast<std::uint8_t*>(av_malloc(IoBytes));
    m_io.reset(
        avio_alloc_context(buffer, IoBytes, 0, &m_window, &ReadWindow, nullptr, &SeekWindow));
    AVFormatContext* container = avformat_alloc_context();
    if (!m_io || container == nullptr) {
        avformat_free_context(container);
        return BASS_DECODER_CANNOT_OPEN;
    }
    container->pb = m_io.get();
    AVDictionary* options = nullptr;
    av_dict_set(&options, "protocol_whitelist", "none", 0);
    // The newer way cuts the sound to the thousandths of a second that many files count in.
    av_dict_set(&options, "advanced_editlist", "0", 0);
    const int failure = avformat_open_input(&container, "", demuxer, &options); // frees on failure
    av_dict_free(&options);
    if (failure < 0)
        return BASS_DECODER_NOT_MINE;
    m_container.reset(container);
    return BASS_DECODER_OK;
}

int FfmpegFile::OpenCodec() noexcept
{
    const std::span tracks(m_container->streams, m_container->nb_streams);
    const auto found = std::ranges::find_if(tracks, [](const AVStream* track) {
        return std::ranges::find(Codecs, track->codecpar->codec_id) != Codecs.end();
    });
    if (found == tracks.end())
        return BASS_DECODER_BAD_FORMAT;
    m_track = (*found)->index;
    for (AVStream* const track : tracks)
        track->discard = track->index == m_track ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    const AVCodecParameters* const parameters = Track().codecpar;
    const AVCodec* const codec = avcodec_find_decoder(parameters->codec_id);
    m_codec.reset(codec == nullptr ? nullptr : avcodec_alloc_context3(codec));
    if (!m_codec || avcodec_parameters_to_context(m_codec.get(), parameters) < 0)
        return BASS_DECODER_BAD_FORMAT;
    m_codec->pkt_timebase = Track().time_base;
    m_codec->thread_count = 1;
    return avcodec_open2(m_codec.get(), codec, nullptr) < 0 ? BASS_DECODER_BAD_FORMAT
                                                            : BASS_DECODER_OK;
}

const AVStream& FfmpegFile::Track() const noexcept
{
    return *std::span(m_container->streams,
                      m_container->nb_streams)[static_cast<std::size_t>(m_track)];
}

FfmpegFile::Step FfmpegFile::Decode() noexcept
{
    constexpr int MostStandstills = 16;
    while (m_standstills < MostStandstills) {
        const int state = avcodec_receive_frame(m_codec.get(), m_frame.get());
        if (state == 0)
            return Step::Frame;
        if (state == AVERROR_EOF)
            return Step::End;
        ++m_standstills;
        if (state != AVERROR(EAGAIN) || !SendPacket())
            return Step::Damage;
    }
    return Step::End;
}

/// Gives the decoder a packet, or tells it that there are no more. False if it can't be decoded.
bool FfmpegFile::SendPacket() noexcept
{
    const bool isPacket = ReadPacket();
    if (isPacket) {
        m_standstills = 0;
        if (m_packets++ == 0 && m_firstTime == AV_NOPTS_VALUE)
            m_firstTime = m_packet->pts;
    }
    const int failure = avcodec_send_packet(m_codec.get(), isPacket ? m_packet.get() : nullptr);
    av_packet_unref(m_packet.get());
    return failure == 0;
}

/// Reads the next packet of the track; false at the end.
bool FfmpegFile::ReadPacket() noexcept
{
    constexpr int MostFailures = 1000;
    while (m_readFailures < MostFailures) {
        av_packet_unref(m_packet.get());
        const int failure = av_read_frame(m_container.get(), m_packet.get());
        if (failure == AVERROR_EOF)
            return false;
        m_readFailures = failure < 0 ? m_readFailures + 1 : 0;
        if (failure == 0 && m_packet->stream_index == m_track)
            return true;
    }
    return false;
}

std::vector<std::int64_t> FfmpegFile::ListPackets()
{
    std::vector<std::int64_t> bytes;
    while (ReadPacket())
        bytes.push_back(m_packet->pos);
    return bytes;
}

bool FfmpegFile::SeekTime(std::int64_t time) noexcept
{
    AfterSeek();
    return av_seek_frame(m_container.get(), m_track, time, AVSEEK_FLAG_BACKWARD) >= 0;
}

bool FfmpegFile::SeekByte(std::int64_t byte) noexcept
{
    AfterSeek();
    return av_seek_frame(m_container.get(), -1, byte, AVSEEK_FLAG_BYTE) >= 0;
}

void FfmpegFile::AfterSeek() noexcept
{
    m_packets = 0;
    m_readFailures = 0;
    m_standstills = 0;
    if (m_codec)
        avcodec_flush_buffers(m_codec.get());
}

} // namespace velmo::engine
