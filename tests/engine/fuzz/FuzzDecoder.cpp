/// Hands one decoder a file of any contents: opens it, reads a little, moves about, reads on.
#include "PluginDecoders.h"

#include "decode/BuiltinDecoders.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

namespace {

constexpr std::size_t PieceFrames = 512;
constexpr int MostPieces = 200;

/// Reads on; the first frame beyond what was asked for must stay untouched.
void ReadSome(const BASS_DECODER& decoder, void* source, std::uint32_t channels)
{
    std::array<float, (PieceFrames + 1)* 8> out = {};
    constexpr float Untouched = 1234.5f;
    for (int piece = 0; piece < MostPieces; ++piece) {
        out.at(PieceFrames * channels) = Untouched;
        const std::size_t got = decoder.read(source, out.data(), PieceFrames);
        if (got > PieceFrames || out.at(PieceFrames * channels) != Untouched)
            std::abort();
        if (got == 0)
            return;
    }
}

void Play(const BASS_DECODER& decoder, const char* path)
{
    BASS_SOURCE_FORMAT format = {};
    int error = 0;
    void* const source = decoder.open(path, 44100, &format, &error);
    if (source == nullptr) {
        if (error == BASS_DECODER_OK)
            std::abort();
        return;
    }
    if (format.channels < 1 || format.channels > 8 || format.sampleRate < 1)
        std::abort();
    ReadSome(decoder, source, format.channels);
    // Far into a module all that lies before is computed: bounded here, not in the player.
    constexpr std::uint64_t FarFrames = 441000;
    const std::uint64_t last = std::min(format.lengthFrames, FarFrames);
    for (const std::uint64_t frame : {last / 2, std::uint64_t{0}, last, last / 3}) {
        if (decoder.seek(source, frame) == 1)
            ReadSome(decoder, source, format.channels);
    }
    decoder.close(source);
}

} // namespace

// On some damaged files the library keeps eight bytes of an opening that it refuses.
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the sanitizer's name
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions()
{
    return "leak:libvorbisfile.so\n";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const BASS_DECODER& decoder = velmo::engine::VELMO_FUZZ_DECODER;
    decoder.probe(data, std::min<std::size_t>(size, BASS_DECODER_HEAD));
    const int file = memfd_create("input", MFD_CLOEXEC);
    if (file < 0 || write(file, data, size) != static_cast<ssize_t>(size))
        std::abort();
    Play(decoder, ("/proc/self/fd/" + std::to_string(file)).c_str());
    close(file);
    return 0;
}
