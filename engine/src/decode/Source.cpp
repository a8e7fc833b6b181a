#include "Source.h"

#include "File.h"
#include "SoundStart.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <new>
#include <optional>
#include <utility>

namespace velmo::engine {
namespace {

using Head = std::array<std::uint8_t, BASS_DECODER_HEAD>;

/// A file whose decoder is looked for.
struct Candidate
{
    std::optional<File> file; ///< until a decoder has taken it
    std::uint64_t start = 0;  ///< of the sound, behind the tags
    std::size_t headSize = 0;
};

/// Opens the file and reads what the probes get to see: its beginning, or what stands behind its
/// tags.
Result<Candidate> LookAt(const char* path, Head& head) noexcept
{
    Result<File> opened = File::Open(path);
    if (!opened)
        return Result<Candidate>::Failure(opened.error);
    const File& file = opened.value;
    std::size_t size = file.ReadAt(0, head);
    if (size == 0 && file.Size() > 0)
        return Result<Candidate>::Failure(BASS_DECODER_CANNOT_OPEN);
    const std::uint64_t start = SoundStart(file, std::span(head).first(size));
    if (start > 0)
        size = file.ReadAt(start, head);
    return {
        .value = {.file = std::move(opened.value), .start = start, .headSize = size}
    };
}

bool IsPlayable(const BASS_SOURCE_FORMAT& format) noexcept
{
    constexpr std::uint32_t MostSampleRate = 1'000'000;
    constexpr std::uint64_t MostFrames = std::uint64_t{1} << 48U; // so that bytes can be counted
    return format.sampleRate > 0 && format.sampleRate <= MostSampleRate && format.channels >= 1
           && format.channels <= 8 && format.lengthFrames <= MostFrames;
}

/// Whether a decoder that opens nothing says more than that the file is none of its own.
bool IsReason(int error) noexcept
{
    return error == BASS_DECODER_CANNOT_OPEN || error == BASS_DECODER_BAD_FORMAT;
}

/// What `call` gives, a call of a decoder's function. The functions of a plugin ought not to throw,
/// and it's not known that they don't: what one throws ends here, and it has then given `failed`.
template<typename Value, typename Call>
Value Guarded(Value failed, Call call) noexcept
{
    try {
        return call();
    } catch (...) {
        return failed;
    }
}

void CloseOpened(const BASS_DECODER& decoder, void* opened) noexcept
{
    Guarded(0, [&] {
        decoder.close(opened);
        return 0;
    });
}

/// What the decoder has opened, or null.
void* OpenWith(const DecoderEntry& entry,
               const char* path,
               Candidate& candidate,
               std::uint32_t deviceRate,
               BASS_SOURCE_FORMAT& format,
               int& error) noexcept
{
    if (entry.openSound != nullptr && candidate.file) {
        FileWindow sound(*std::exchange(candidate.file, std::nullopt), candidate.start);
        return entry.openSound(std::move(sound), deviceRate, &format, &error);
    }
    return Guarded<void*>(nullptr,
                          [&] { return entry.decoder->open(path, deviceRate, &format, &error); });
}

/// One sample that is no number would stay in every filter behind for good.
void SilenceNonNumbers(float* samples, std::size_t count) noexcept
{
    for (std::size_t i = 0; i < count; ++i)
        samples[i] = std::abs(samples[i]) <= 1e6f ? samples[i] : 0.0f;
}

} // namespace

Result<std::unique_ptr<Source>> Source::Open(const char* path,
                                             SourceKind kind,
                                             std::uint32_t deviceRate,
                                             std::span<const DecoderEntry> decoders) noexcept
{
    using Opened = Result<std::unique_ptr<Source>>;
    Head head;
    Result<Candidate> candidate = LookAt(path, head);
    if (!candidate)
        return Opened::Failure(candidate.error);
    const std::size_t size = candidate.value.headSize;
    int failure = BASS_DECODER_NOT_MINE;
    for (const DecoderEntry& entry : decoders) {
        const BASS_DECODER& decoder = *entry.decoder;
        if (decoder.kind != static_cast<std::uint32_t>(kind)
            || Guarded(0, [&] { return decoder.probe(head.data(), size); }) == 0)
            continue;
        BASS_SOURCE_FORMAT format = {};
        int error = BASS_DECODER_NOT_MINE;
        void* const opened = OpenWith(entry, path, candidate.value, deviceRate, format, error);
        if (opened == nullptr) {
            failure = IsReason(error) ? error : failure;
            continue;
        }
        std::unique_ptr<Source> source(new (std::nothrow) Source(entry, opened, format));
        if (!source)
            CloseOpened(decoder, opened);
        if (!source || !IsPlayable(format))
            return Opened::Failure(source ? BASS_DECODER_BAD_FORMAT : BASS_DECODER_CANNOT_OPEN);
        return {.value = std::move(source)};
    }
    return Opened::Failure(failure);
}

Source::Source(DecoderEntry entry, void* opened, const BASS_SOURCE_FORMAT& format) noexcept
    : m_entry(std::move(entry))
    , m_opened(opened)
    , m_format(format)
{}

Source::~Source()
{
    CloseOpened(*m_entry.decoder, m_opened);
}

std::size_t Source::Read(float* out, std::size_t frames) noexcept
{
    const std::size_t wanted = std::min<std::uint64_t>(frames, m_format.lengthFrames - m_position);
    const auto said =
        Guarded<std::size_t>(0, [&] { return m_entry.decoder->read(m_opened, out, wanted); });
    const std::size_t got = std::min(said, wanted);
    // The engine's own decoders give numbers alone.
    if (m_entry.owner != nullptr)
        SilenceNonNumbers(out, got * m_format.channels);
    m_position += got;
    return got;
}

bool Source::Seek(std::uint64_t frame) noexcept
{
    if (frame > m_format.lengthFrames
        || Guarded(0, [&] { return m_entry.decoder->seek(m_opened, frame); }) == 0)
        return false;
    m_position = frame;
    return true;
}

} // namespace velmo::engine
