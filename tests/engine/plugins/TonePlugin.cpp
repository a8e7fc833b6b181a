// A plugin for tests: a file of its own is the text "TONE", a count of frames and a word that says
// how the decoder behaves. The sound is mono at 44.1 kHz, all samples 0.25.
#include "bass_plugin.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

constexpr std::uint64_t Endless = std::numeric_limits<std::uint64_t>::max();
constexpr float NoNumber = std::numeric_limits<float>::quiet_NaN();

struct Tone
{
    std::uint64_t frames = 0; ///< that are left
    std::uint64_t length = 0;
    std::string manner;

    bool Is(const char* wanted) const { return manner == wanted; }
    void MayThrow(const char* wanted) const
    {
        if (Is(wanted))
            throw std::runtime_error(manner);
    }
};

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
    auto tone = std::make_unique<Tone>();
    std::string mark;
    std::ifstream(path) >> mark >> tone->length >> tone->manner;
    tone->frames = tone->length;
    tone->MayThrow("throw-open");
    *format = {.sampleRate = tone->Is("no-rate") ? 0U : 44100U,
               .channels = tone->Is("no-channels") ? 0U : 1U,
               .lengthFrames = tone->Is("no-end") ? Endless : tone->length,
               .ctype = 0x1F000,
               .limited = 0};
    *error = BASS_DECODER_OK;
    return tone.release();
}

std::size_t Read(void* source, float* out, std::size_t frames)
{
    Tone& tone = *static_cast<Tone*>(source);
    tone.MayThrow("throw-read");
    std::fill_n(out, frames, tone.Is("no-numbers") ? NoNumber : 0.25f);
    if (tone.Is("too-much"))
        return frames + 1000000;
    const std::size_t got = std::min<std::uint64_t>(tone.frames, frames);
    tone.frames -= got;
    return got;
}

int Seek(void* source, std::uint64_t frame)
{
    Tone& tone = *static_cast<Tone*>(source);
    tone.MayThrow("throw-seek");
    tone.frames = tone.length - frame;
    return 1;
}

void Close(void* source)
{
    const std::unique_ptr<Tone> tone(static_cast<Tone*>(source));
    tone->MayThrow("throw-close");
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
__attribute__((visibility("default"))) extern const BASS_PLUGIN BASS_PluginTable;
}

const BASS_PLUGIN BASS_PluginTable = {.abi = BASS_PLUGIN_ABI,
                                      .size = sizeof(BASS_PLUGIN),
                                      .version = 0x01020304,
                                      .formatCount = 2,
                                      .formats = Formats,
                                      .decoder = &Decoder};
