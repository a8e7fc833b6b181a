#include "ToldLength.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/mathematics.h>
}

#include <algorithm>
#include <cstdio>

namespace velmo::engine {
namespace {

/// Of a track's end a container may say that so much of it is padding.
constexpr std::uint64_t MostPadding = 16384;

/// `told`, or where the number of packets in the track's list speaks against it, what they give. A
/// file in fragments has no such list, only what has been met of them.
std::uint64_t Believed(std::uint64_t told, const FfmpegFile& file) noexcept
{
    const bool hasList = file.Track().nb_frames > 0;
    const int packets = hasList ? avformat_index_get_entries_count(&file.Track()) : 0;
    const int each = std::max(file.Frame().nb_samples, file.Codec().frame_size);
    const std::uint64_t listed = static_cast<std::uint64_t>(std::max(packets, 0))
                                 * static_cast<std::uint64_t>(std::max(each, 0));
    return listed > 0 && (told < listed / 2 || told / 2 > listed) ? listed : told;
}

/// `frames` less what is padding at the end, by what an MPEG-4 file says beside its track's length:
/// the length of what is presented, or a note of how many frames there were before the encoding.
std::uint64_t WithoutPadding(std::uint64_t frames,
                             const FfmpegFile& file,
                             std::uint32_t sampleRate) noexcept
{
    const auto believable = [frames](std::uint64_t told) {
        return told < frames && frames - told <= MostPadding;
    };
    const AVFormatContext& container = file.Container();
    const AVDictionaryEntry* const note = av_dict_get(container.metadata, "iTunSMPB", nullptr, 0);
    unsigned long long told = 0;
    // NOLINTNEXTLINE(cert-err34-c,*-vararg): what can't be read leaves 0
    if (note != nullptr && std::sscanf(note->value, "%*x %*x %*x %16llx", &told) == 1
        && believable(told))
        return told;
    const std::int64_t rate = sampleRate;
    if (container.duration <= 0)
        return frames; // as in a file in fragments
    // It's often rounded to thousandths of a second.
    const auto exact =
        static_cast<std::uint64_t>(av_rescale(container.duration, rate, AV_TIME_BASE));
    return believable(exact) && frames - exact > sampleRate / 500 ? exact : frames;
}

} // namespace

std::uint64_t ToldLength(const FfmpegFile& file,
                         ContainerKind kind,
                         const FirstFrame& first) noexcept
{
    const AVStream& track = file.Track();
    std::int64_t ticks = track.duration;
    if (ticks == AV_NOPTS_VALUE || ticks <= 0)
        return 0;
    std::int64_t late = 0; // what was decoded before it gave nothing
    if (first.firstTime != AV_NOPTS_VALUE && file.FirstTime() != AV_NOPTS_VALUE
        && !__builtin_sub_overflow(first.firstTime, file.FirstTime(), &late))
        late = std::clamp<std::int64_t>(late, 0, ticks);
    else
        late = 0;
    const AVRational unit = {.num = 1, .den = static_cast<int>(first.sampleRate)};
    const std::int64_t frames = av_rescale_q(ticks - late, track.time_base, unit);
    // A decoder that is a frame behind gives that at the end.
    const auto capabilities = static_cast<unsigned>(file.Codec().codec->capabilities);
    const bool isBehind = late > 0 && (capabilities & AV_CODEC_CAP_DELAY) != 0;
    auto length = static_cast<std::uint64_t>(std::max<std::int64_t>(frames, 0));
    if (kind == ContainerKind::Mp4)
        length = WithoutPadding(Believed(length, file), file, first.sampleRate);
    return length + static_cast<std::uint64_t>(isBehind ? file.Frame().nb_samples : 0);
}

} // namespace velmo::engine
