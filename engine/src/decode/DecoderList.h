/// Which decoders there are, and in which order they are asked.
///
/// A decoder's probe looks for the magic bytes of its format, so for most files one of them says
/// yes and the order does not matter. It does for formats without magic bytes, which are asked
/// after all that have some:
///   1. WAV, AIFF, Ogg Vorbis: certain within twelve bytes, and the files met most besides
///   MPEG;
///   2. modules: some kinds are recognised by what is plausible;
///   3. decoders of plugins, in the order of their loading;
///   4. MPEG, where frames may begin anywhere: takes whatever nobody else has claimed, if frame
///   headers follow each other.
#pragma once

#include "bass_plugin.h"

#include "decode/FileWindow.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace velmo::engine {

/// Opens the file that `sound` begins with, without any tags, as `BASS_DECODER`'s `open` does.
using OpenSoundFunction = void* (*) (FileWindow sound,
                                     std::uint32_t deviceRate,
                                     BASS_SOURCE_FORMAT* format,
                                     int* error) noexcept;

/// A decoder of the engine's own. It takes over the file that the engine has looked at: to open a
/// file once more costs as much as to read its head.
struct BuiltinDecoder
{
    BASS_DECODER table;
    OpenSoundFunction openSound;
};

/// A decoder that can be asked. `owner` keeps the table and its code in memory: the library of a
/// plugin, shared by the list and the open sources; null for the engine's own. `openSound` is null
/// for those of plugins.
struct DecoderEntry
{
    const BASS_DECODER* decoder = nullptr;
    std::shared_ptr<const void> owner;
    OpenSoundFunction openSound = nullptr;
};

/// All decoders in the order above. Any thread.
std::vector<DecoderEntry> ListDecoders(std::span<const DecoderEntry> ofPlugins = {});

} // namespace velmo::engine
