#include "BuiltinDecoders.h"
#include "DecoderTable.h"
#include "SndfileSource.h"
#include "bass.h"

#include <array>
#include <cstring>

namespace velmo::engine {
namespace {

constexpr auto Containers = std::to_array<int>({SF_FORMAT_AIFF});

Result<std::unique_ptr<SndfileSource>> OpenAiff(FileWindow window, std::uint32_t)
{
    return SndfileSource::Open(std::move(window), Containers, BASS_CTYPE_STREAM_AIFF);
}

int ProbeAiff(const std::uint8_t* head, std::size_t size) noexcept
{
    if (size < 12 || std::memcmp(head, "FORM", 4) != 0)
        return 0;
    const bool isAiff =
        std::memcmp(head + 8, "AIFF", 4) == 0 || std::memcmp(head + 8, "AIFC", 4) == 0;
    return isAiff ? 1 : 0;
}

} // namespace

constexpr BuiltinDecoder AiffDecoder =
    MakeBuiltin<SndfileSource, &OpenAiff>({.name = "AIFF",
                                           .masks = "*.aiff;*.aif;*.aifc",
                                           .kind = BASS_DECODER_STREAM,
                                           .probe = &ProbeAiff});

} // namespace velmo::engine
