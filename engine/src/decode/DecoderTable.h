/// Makes the C table of a decoder from a C++ class.
#pragma once

#include "bass_plugin.h"

#include "decode/DecoderList.h"
#include "decode/FileWindow.h"
#include "decode/Result.h"
#include "decode/SoundStart.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace velmo::engine {

/// The functions of a `BASS_DECODER` for the class `T`, which has `BASS_SOURCE_FORMAT Format()
/// const`, `std::size_t Read(float*, std::size_t)` and `bool Seek(std::uint64_t)`, both noexcept
/// and as the table describes them. `OpenFile` is a function that takes a `FileWindow` at the
/// sound's start and the device's rate, and gives a `Result<std::unique_ptr<T>>`; what it throws is
/// caught here.
template<typename T, auto OpenFile>
struct DecoderFunctions
{
    static void* Open(const char* path,
                      std::uint32_t deviceRate,
                      BASS_SOURCE_FORMAT* format,
                      int* error) noexcept
    {
        Result<File> file = File::Open(path);
        *error = file.error;
        if (!file)
            return nullptr;
        const std::uint64_t start = SoundStart(file.value);
        return OpenSound(FileWindow(std::move(file.value), start), deviceRate, format, error);
    }

    /// The same for a file that is open already; see `BuiltinDecoder`.
    static void* OpenSound(FileWindow sound,
                           std::uint32_t deviceRate,
                           BASS_SOURCE_FORMAT* format,
                           int* error) noexcept
    {
        try {
            Result<std::unique_ptr<T>> source = OpenFile(std::move(sound), deviceRate);
            *error = source.error;
            if (!source)
                return nullptr;
            *format = source.value->Format();
            return source.value.release();
        } catch (...) {
            // No memory: the file may be well, but it cannot be opened.
            *error = BASS_DECODER_CANNOT_OPEN;
            return nullptr;
        }
    }

    static std::size_t Read(void* source, float* out, std::size_t frames) noexcept
    {
        return static_cast<T*>(source)->Read(out, frames);
    }

    static int Seek(void* source, std::uint64_t frame) noexcept
    {
        return static_cast<T*>(source)->Seek(frame) ? 1 : 0;
    }

    static void Close(void* source) noexcept
    {
        const std::unique_ptr<T> owner(static_cast<T*>(source));
    }
};

/// What a decoder's table says besides its functions; see `BASS_DECODER`.
struct DecoderText
{
    const char* name;
    const char* masks;
    std::uint32_t kind;
    int (*probe)(const std::uint8_t* head, std::size_t size);
};

/// The whole table.
template<typename T, auto OpenFile>
constexpr BASS_DECODER MakeDecoder(const DecoderText& text)
{
    using Functions = DecoderFunctions<T, OpenFile>;
    return {.name = text.name,
            .masks = text.masks,
            .kind = text.kind,
            .probe = text.probe,
            .open = &Functions::Open,
            .read = &Functions::Read,
            .seek = &Functions::Seek,
            .close = &Functions::Close};
}

/// The same for a decoder of the engine's own.
template<typename T, auto OpenFile>
constexpr BuiltinDecoder MakeBuiltin(const DecoderText& text)
{
    return {.table = MakeDecoder<T, OpenFile>(text),
            .openSound = &DecoderFunctions<T, OpenFile>::OpenSound};
}

} // namespace velmo::engine
