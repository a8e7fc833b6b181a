/// A file as FFmpeg's libraries read it: its first track of sound, packet by packet and frame by
/// frame. Where a frame stands in the sound is not told here.
#pragma once

#include "ContainerKind.h"

#include "decode/FileWindow.h"

#include <cstdint>
#include <memory>
#include <vector>

struct AVCodecContext;
struct AVFormatContext;
struct AVFrame;
struct AVIOContext;
struct AVPacket;
struct AVStream;

namespace velmo::engine {

/// One thread at a time.
class FfmpegFile
{
public:
    enum class Step
    {
        Frame,  ///< `Frame` holds the next one
        Damage, ///< a packet could not be read or decoded
        End
    };

    FfmpegFile(FileWindow window, ContainerKind kind) noexcept;
    ~FfmpegFile();
    FfmpegFile(const FfmpegFile&) = delete;
    FfmpegFile& operator=(const FfmpegFile&) = delete;

    /// Opens it at its beginning, also once more. 0, or why it cannot be played, a number of
    /// `BASS_DECODER`; it can only be opened anew then.
    int Open() noexcept;

    const AVFormatContext& Container() const noexcept { return *m_container; }
    const AVStream& Track() const noexcept;
    const AVCodecContext& Codec() const noexcept { return *m_codec; }

    /// Decodes the next frame. Each `Damage` has used up a packet.
    Step Decode() noexcept;
    const AVFrame& Frame() const noexcept { return *m_frame; }

    /// How many packets the decoder has got since the opening or the last seek.
    std::uint64_t Packets() const noexcept { return m_packets; }
    /// Time of the first packet in the track's unit; AV_NOPTS_VALUE where it tells none.
    std::int64_t FirstTime() const noexcept { return m_firstTime; }

    /// Reads all packets that are left without decoding them, and gives the bytes of the file at
    /// which they begin.
    std::vector<std::int64_t> ListPackets();

    /// Goes on with a packet at or before `time`, in the track's unit.
    bool SeekTime(std::int64_t time) noexcept;
    /// Goes on with the packet at a byte that `ListPackets` gave.
    bool SeekByte(std::int64_t byte) noexcept;

private:
    struct Freer
    {
        void operator()(AVIOContext* io) const noexcept;
        void operator()(AVFormatContext* container) const noexcept;
        void operator()(AVCodecContext* codec) const noexcept;
        void operator()(AVPacket* packet) const noexcept;
        void operator()(AVFrame* frame) const noexcept;
    };

    int OpenContainer() noexcept;
    int OpenCodec() noexcept;
    bool ReadPacket() noexcept;
    bool SendPacket() noexcept;
    void AfterSeek() noexcept;

    FileWindow m_window;
    const ContainerKind m_kind;
    std::unique_ptr<AVIOContext, Freer> m_io;
    std::unique_ptr<AVFormatContext, Freer> m_container;
    std::unique_ptr<AVCodecContext, Freer> m_codec;
    std::unique_ptr<AVPacket, Freer> m_packet;
    std::unique_ptr<AVFrame, Freer> m_frame;
    int m_track = 0;
    std::uint64_t m_packets = 0;
    std::int64_t m_firstTime = 0;
    int m_readFailures = 0;
    int m_standstills = 0; ///< failures of the decoder since it got its last packet
};

} // namespace velmo::engine
