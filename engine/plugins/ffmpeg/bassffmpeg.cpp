// The plugin itself is small and links none of FFmpeg's libraries, which are many: it tells its
// files by their first bytes and has a second object beside it decode them, ffmpeg/decoder.so,
// which is mapped when the first such file is opened. That one stays mapped for the process's life,
// since not all of the libraries below it can be taken away.
#include "ContainerKind.h"
#include "PluginDecoders.h"
#include "PluginExport.h"
#include "bass.h"

#include <array>
#include <atomic>
#include <string>

#include <dlfcn.h>

namespace velmo::engine {
namespace {

constexpr std::array Formats = {
    BASS_PLUGINFORM{
                    .ctype = BASS_CTYPE_STREAM_MP4,  .name = "MPEG-4 Audio",        .exts = "*.m4a;*.m4b;*.mp4;*.3gp"},
    BASS_PLUGINFORM{.ctype = BASS_CTYPE_STREAM_AAC,  .name = "AAC",                 .exts = "*.aac"                  },
    BASS_PLUGINFORM{
                    .ctype = BASS_CTYPE_STREAM_ALAC, .name = "Apple Lossless",      .exts = "*.m4a;*.alac"           },
    BASS_PLUGINFORM{
                    .ctype = BASS_CTYPE_STREAM_WMA,  .name = "Windows Media Audio", .exts = "*.wma;*.asf"            },
    BASS_PLUGINFORM{.ctype = BASS_CTYPE_STREAM_APE,  .name = "Monkey's Audio",      .exts = "*.ape"                  },
    BASS_PLUGINFORM{.ctype = BASS_CTYPE_STREAM_MPC,  .name = "Musepack",            .exts = "*.mpc;*.mpp"            },
    BASS_PLUGINFORM{.ctype = BASS_CTYPE_STREAM_TTA,  .name = "True Audio",          .exts = "*.tta"                  },
    BASS_PLUGINFORM{
                    .ctype = BASS_CTYPE_STREAM_AC3,  .name = "Dolby Digital",       .exts = "*.ac3;*.eac3"           },
};

/// The decoder of the second object, null until it's mapped.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): the table has no context
constinit std::atomic<const BASS_DECODER*> theDecoder = nullptr;

/// Path of the second object: it lies in a folder beside this one.
std::string SecondObjectPath()
{
    Dl_info info = {};
    if (dladdr(&BASS_PluginTable, &info) == 0 || info.dli_fname == nullptr)
        return {};
    const std::string own = info.dli_fname;
    return own.substr(0, own.rfind('/') + 1) + "ffmpeg/decoder.so";
}

/// Maps it where that hasn't been done; null where it or a library below it is missing. Several
/// threads may do so at once: they get the same.
const BASS_DECODER* FindDecoder() noexcept
{
    const BASS_DECODER* decoder = theDecoder.load(std::memory_order_acquire);
    if (decoder != nullptr)
        return decoder;
    try {
        void* const object =
            dlopen(SecondObjectPath().c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
        const void* const symbol =
            object == nullptr ? nullptr : dlsym(object, "BASS_FfmpegDecoder");
        if (symbol != nullptr)
            decoder = *static_cast<const BASS_DECODER* const*>(symbol);
    } catch (...) {
        return nullptr; // no memory for the path
    }
    theDecoder.store(decoder, std::memory_order_release);
    return decoder;
}

int Probe(const std::uint8_t* head, std::size_t size) noexcept
{
    return TellContainer({head, size}) == ContainerKind::None ? 0 : 1;
}

void* Open(const char* path,
           std::uint32_t deviceRate,
           BASS_SOURCE_FORMAT* format,
           int* error) noexcept
{
    const BASS_DECODER* const decoder = FindDecoder();
    if (decoder != nullptr)
        return decoder->open(path, deviceRate, format, error);
    *error = BASS_DECODER_BAD_FORMAT;
    return nullptr;
}

// What is open has been opened by it.

std::size_t Read(void* source, float* out, std::size_t frames) noexcept
{
    return FindDecoder()->read(source, out, frames);
}

int Seek(void* source, std::uint64_t frame) noexcept
{
    return FindDecoder()->seek(source, frame);
}

void Close(void* source) noexcept
{
    FindDecoder()->close(source);
}

constexpr BASS_DECODER LazyDecoder = {.name = "FFmpeg",
                                      .masks = "*.m4a;*.m4b;*.mp4;*.3gp;*.aac;*.alac;*.wma;*.asf;"
                                               "*.ape;*.mpc;*.mpp;*.tta;*.ac3;*.eac3",
                                      .kind = BASS_DECODER_STREAM,
                                      .probe = &Probe,
                                      .open = &Open,
                                      .read = &Read,
                                      .seek = &Seek,
                                      .close = &Close};

} // namespace
} // namespace velmo::engine

constinit const BASS_PLUGIN BASS_PluginTable =
    velmo::engine::PluginTable(velmo::engine::Formats, velmo::engine::LazyDecoder);
