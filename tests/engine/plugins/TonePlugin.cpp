// A plugin for tests: a file of its own is the text "TONE", a count of frames and a word that says
// how the decoder behaves. The sound is mono at 44.1 kHz, all samples 0.25.
#include "bass_plugin.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

struct Tone
{
    std::uint64_t frames = 0;
    std::uint64_t position = 0;
    std::string manner;
};

bool Is(const Tone& tone, const char* manner)
{
    return tone.manner == manner;
}

std::unique_ptr<Tone> Parse(const char* text)
{
    unsigned long long frames = 0;
    char manner[32] = "";
    // NOLINTNEXTLINE(cert-err34-c): the tests write it
    if (std::sscanf(text, "TONE %llu %31s", &frames, manner) != 2)
        return nullptr;
    return std::make_unique<Tone>(Tone{.frames = frames, .position = 0, .manner = manner});
}

int Probe(const std::uint8_t* head, std::size_t size)
{
    const std::string text(head, head + size);
    if (text.find("throw-probe") != std::string::npos)
        throw std::runtime_error("probe");
    return text.starts_with("TONE") ? 1 : 0;
}

void* Open(const char* path, std::uint32_t, BASS_SOURCE_FORMAT* format, int* error)
{
    *error = BASS_DECODER_CANNOT_OPEN;
    char text[100] = "";
    std::FILE* const file = std::fopen(path, "rb");
    if (file == nullptr)
        return nullptr;
    (void) std::fgets(text, sizeof text, file);
    (void) std::fclose(file);
    std::unique_ptr<Tone> tone = Parse(text);
    if (tone == nullptr)
        return nullptr;
    if (Is(*tone, "throw-open"))
        throw std::runtime_error("open");
    *format = {.sampleRate = Is(*tone, "no-rate") ? 0U : 44100U,
               .channels = Is(*tone, "no-channels") ? 0U : 1U,
               .lengthFrames =
                   Is(*tone, "no-end") ? std::numeric_limits<std::uint64_t>::max() : tone->frames,
               .ctype = 0x1F000,
               .limited = 0};
    *error = BASS_DECODER_OK;
    return tone.release();
}

std::size_t Read(void* source, float* out, std::size_t frames)
{
    Tone& tone = *static_cast<Tone*>(source);
    if (Is(tone, "throw-read"))
        throw std::runtime_error("read");
    const float sample = Is(tone, "no-numbers") ? std::numeric_limits<float>::quiet_NaN() : 0.25f;
    for (std::size_t i = 0; i < frames; ++i)
        out[i] = sample;
    if (Is(tone, "too-much"))
        return frames + 1000000;
    const std::uint64_t left = tone.frames - tone.position;
    const std::size_t got = left < frames ? static_cast<std::size_t>(left) : frames;
    tone.position += got;
    return got;
}

int Seek(void* source, std::uint64_t frame)
{
    Tone& tone = *static_cast<Tone*>(source);
    if (Is(tone, "throw-seek"))
        throw std::runtime_error("seek");
    tone.position = frame;
    return 1;
}

void Close(void* source)
{
    const std::unique_ptr<Tone> tone(static_cast<Tone*>(source));
    if (Is(*tone, "throw-close"))
        throw std::runtime_error("close");
}

constexpr BASS_PLUGINFORM Formats[] = {
    {.ctype = 0x1F000, .name = "Tone",   .exts = "*.tone;*.ton"},
    {.ctype = 0x1F001, .name = "Tone 2", .exts = "*.tn2"       }
};

constexpr BASS_DECODER Decoder = {.name = "Tone",
                                  .masks = "*.tone",
                                  .kind = BASS_DECODER_STREAM,
                                  .probe = &Probe,
                                  .open = &Open,
                                  .read = &Read,
                                  .seek = &Seek,
                                  .close = &Close};

} // namespace

extern "C" {
// NOLINTNEXTLINE(readability-identifier-naming): the name that the engine asks for
__attribute__((visibility("default"))) extern const BASS_PLUGIN BASS_PluginTable;
}

const BASS_PLUGIN BASS_PluginTable = {.abi = BASS_PLUGIN_ABI,
                                      .size = sizeof(BASS_PLUGIN),
                                      .version = 0x01020304,
                                      .formatCount = VELMO_FORMAT_COUNT,
                                      .formats = VELMO_FORMAT_COUNT == 0 ? nullptr : Formats,
                                      .decoder = &Decoder};
