#include "Source.h"

#include "File.h"
#include "SoundStart.h"

#include <array>
#include <new>
#include <utility>

namespace velmo::engine {
namespace {

using Head = std::array<std::uint8_t, BASS_DECODER_HEAD>;

/// Reads what the probes get to see: the file's beginning, or what stands behind its tags.
Result<std::size_t> ReadHead(const char* path, Head& head) noexcept
{
    const Result<File> file = File::Open(path);
    if (!file)
        return Result<std::size_t>::Failure(file.error);
    std::size_t size = file.value.ReadAt(0, head);
    if (size == 0 && file.value.Size() > 0)
        return Result<std::size_t>::Failure(BASS_DECODER_CANNOT_OPEN);
    const std::uint64_t start = SoundStart(file.value, std::span(head).first(size));
    if (start > 0)
        size = file.value.ReadAt(start, head);
    return {.value = size};
}

bool IsPlayable(const BASS_SOURCE_FORMAT& format) noexcept
{
    return format.sampleRate > 0 && format.channels >= 1 && format.channels <= 8;
}

} // namespace

Result<std::unique_ptr<Source>> Source::Open(const char* path,
                                             SourceKind kind,
                                             std::uint32_t deviceRate,
                                             std::span<const DecoderEntry> decoders) noexcept
{
    using Opened = Result<std::unique_ptr<Source>>;
    Head head;
    const Result<std::size_t> size = ReadHead(path, head);
    if (!size)
        return Opened::Failure(size.error);
    int failure = BASS_DECODER_NOT_MINE;
    for (const DecoderEntry& entry : decoders) {
        const BASS_DECODER& decoder = *entry.decoder;
        if (decoder.kind != static_cast<std::uint32_t>(kind)
            || decoder.probe(head.data(), size.value) == 0)
            continue;
        BASS_SOURCE_FORMAT format = {};
        int error = BASS_DECODER_NOT_MINE;
        void* const opened = decoder.open(path, deviceRate, &format, &error);
        if (opened == nullptr) {
            failure = error == BASS_DECODER_NOT_MINE ? failure : error;
            continue;
        }
        std::unique_ptr<Source> source(new (std::nothrow) Source(entry, opened, format));
        if (!source)
            decoder.close(opened);
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
    m_entry.decoder->close(m_opened);
}

std::size_t Source::Read(float* out, std::size_t frames) noexcept
{
    return m_entry.decoder->read(m_opened, out, frames);
}

bool Source::Seek(std::uint64_t frame) noexcept
{
    return frame <= m_format.lengthFrames && m_entry.decoder->seek(m_opened, frame) != 0;
}

} // namespace velmo::engine
