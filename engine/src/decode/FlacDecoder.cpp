#include "BuiltinDecoders.h"
#include "DecoderTable.h"
#include "SndfileSource.h"
#include "bass.h"

#include <array>
#include <cstring>

namespace velmo::engine {
namespace {

constexpr auto Containers = std::to_array<int>({SF_FORMAT_FLAC});

Result<std::unique_ptr<SndfileSource>> OpenFlac(FileWindow window, std::uint32_t)
{
    return SndfileSource::Open(std::move(window), Containers, BASS_CTYPE_STREAM_FLAC);
}

int ProbeFlac(const std::uint8_t* head, std::size_t size) noexcept
{
    return size >= 4 && std::memcmp(head, "fLaC", 4) == 0 ? 1 : 0;
}

} // namespace

constexpr BASS_DECODER FlacDecoder = MakeDecoder<SndfileSource, &OpenFlac>(
    {.name = "FLAC", .masks = "*.flac", .kind = BASS_DECODER_STREAM, .probe = &ProbeFlac});

} // namespace velmo::engine
