#include "BuiltinDecoders.h"
#include "DecoderTable.h"
#include "SndfileSource.h"
#include "bass.h"

#include <array>
#include <cstring>

namespace velmo::engine {
namespace {

constexpr auto Containers = std::to_array<int>({SF_FORMAT_WAV, SF_FORMAT_WAVEX, SF_FORMAT_RF64});

Result<std::unique_ptr<SndfileSource>> OpenWav(FileWindow window, std::uint32_t)
{
    return SndfileSource::Open(std::move(window), Containers, BASS_CTYPE_STREAM_WAV);
}

int ProbeWav(const std::uint8_t* head, std::size_t size) noexcept
{
    if (size < 12 || std::memcmp(head + 8, "WAVE", 4) != 0)
        return 0;
    const bool isRiff = std::memcmp(head, "RIFF", 4) == 0 || std::memcmp(head, "RIFX", 4) == 0
                        || std::memcmp(head, "RF64", 4) == 0;
    return isRiff ? 1 : 0;
}

} // namespace

constexpr BuiltinDecoder WavDecoder = MakeBuiltin<SndfileSource, &OpenWav>(
    {.name = "WAV", .masks = "*.wav", .kind = BASS_DECODER_STREAM, .probe = &ProbeWav});

} // namespace velmo::engine
